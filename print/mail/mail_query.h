#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"

#include <QString>
#include <optional>
#include <vector>

class cT_ADODB;

/// A consent row of which a counsellor is told, as the caller knows it.
struct MailRow {
    PatientKey patient;
    QString name; ///< the patient's
    qint32 nDate = 0;
    bool sent = false; ///< iSendFlg: a mail has told of it before

    /// "IDNo. name", on one line.
    QString who() const;
};

/// A counsellor (相談員) to whom mails go. The active ones are read without their branch: number, name and
/// address together tell them apart.
struct Counsellor {
    qint32 nIDNo = 0;
    QString cName;
    QString cMail1;

    /// "name（address）", on one line.
    QString who() const;

    friend bool operator==(const Counsellor &, const Counsellor &) = default;
};

/// The counsellor whom a patient has, in the patient's branch.
struct PatientCounsellor {
    PatientKey patient;
    Counsellor counsellor;
};

/// Reads the active counsellors in the order of their numbers.
Result<std::vector<Counsellor>> readCounsellors(cT_ADODB &db);

/// Reads the counsellors of the rows' patients; a patient without one is left out.
Result<std::vector<PatientCounsellor>> readPatientCounsellors(cT_ADODB &db, const std::vector<MailRow> &rows);
