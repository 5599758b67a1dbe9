#pragma once

#include "print/mail/mail_row.h"

#include <optional>
#include <vector>

class cT_ADODB;

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

/// Reads the active counsellors in the order of their numbers. 0, or −1 with the connection's sErrMsg.
short iReadCounsellors(cT_ADODB &db, std::vector<Counsellor> &counsellors);

/// Reads the counsellors of the rows' patients; a patient without one is left out. 0, or −1 with the
/// connection's sErrMsg.
short iReadPatientCounsellors(cT_ADODB &db, const std::vector<MailRow> &rows,
                              std::vector<PatientCounsellor> &counsellors);

/// Reads which of the rows are not as the caller knows them: told of by a colleague's mail, or gone. 0, or −1
/// with the connection's sErrMsg.
short iReadOvertaken(cT_ADODB &db, const std::vector<MailRow> &rows, std::vector<MailRow> &overtaken);

/// Marks one consent row as notified.
/// @param found false when a colleague has removed or moved the row
/// @return 0, or −1 with the connection's sErrMsg
short iMarkSent(cT_ADODB &db, const MailRow &row, bool &found);
