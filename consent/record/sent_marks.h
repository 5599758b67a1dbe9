#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"
#include "db/tables/nullable.h"
#include "history/operation.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// A row whose request left as a letter.
struct SentRequest {
    ConsentRowKey row;
    QString updateTime; ///< tUpDateTime as it was when the letter was read; empty: the row had none
    bool toHospital = false;
};

/// Marks rows whose letters have left, in one transaction: that of the row's kind, and where the letter went.
/// @return positions of the rows that a colleague changed, removed or renewed since the letter was read;
/// those that are still the newest are marked all the same, since their letters have left
Result<std::vector<size_t>> markRequested(cT_ADODB &db, const std::vector<SentRequest> &requests,
                                          const Operation &operation = {QStringLiteral("依頼書印刷")});

/// The consents of a patient's date: a mail tells of them together, whatever their kind.
struct NoticeOfDate {
    PatientKey patient;
    qint32 nDate = 0;
    bool again = false; ///< the user knows of a mail that told of them, and sends another one
};

/// What was claimed for a mail, so that it can be given back.
struct MailClaim {
    struct Row {
        ConsentRowKey key;
        Nullable<short> before; ///< iSendFlg
    };
    std::vector<Row> rows;
    /// Positions of the dates of which a colleague's mail tells, or whose rows are gone; nothing is claimed
    /// then.
    std::vector<size_t> overtaken;
};

/// Sets iSendFlg of the rows before a mail tells of them, all or none, so that no colleague sends another one
/// meanwhile; two who send again, knowing of the first mail, both do. The audit columns stay as they are:
/// colleagues' open edits are not overtaken by a mail.
Result<MailClaim> claimForMail(cT_ADODB &db, const std::vector<NoticeOfDate> &dates,
                               const Operation &operation = {QStringLiteral("メール送信")});

/// Takes the marks of a claim back after its mail has not left. Rows that were removed or moved meanwhile are
/// left out.
Result<> giveBack(cT_ADODB &db, const MailClaim &claim,
                  const Operation &operation = {QStringLiteral("メールの取消")});
