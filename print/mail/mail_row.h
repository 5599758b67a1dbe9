#pragma once

#include "db/tables/keys.h"

#include <QString>

/// A consent row of which a counsellor is told, as the caller knows it.
struct MailRow {
    PatientKey patient;
    QString name; ///< the patient's
    qint32 nDate = 0;
    bool sent = false; ///< iSendFlg: a mail has told of it before

    /// "IDNo. name", on one line.
    QString who() const;
};
