#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"
#include "print/management/management_envelopes.h"

#include <QHash>
#include <span>

class cT_ADODB;
struct Environment;

/// A consent that documents of the management screens are made for.
struct ManagementRow {
    ConsentRowKey key;
    QString who;             ///< "IDNo. name"
    bool requested = false;  ///< a letter was output already
    bool toHospital = false; ///< whom that went to
};

/// Whom the rows' envelopes go to: doctors and institutions as the consents name them, the rest as the
/// patients do.
Result<EnvelopeWishes> readWishes(const Environment &environment, cT_ADODB &db,
                                  EnvelopeDestination destination, std::span<const ManagementRow> rows);

/// The same for rows picked from the destination's own master.
/// @param codes as the master writes them
Result<EnvelopeWishes> readMasterWishes(const Environment &environment, cT_ADODB &db,
                                        EnvelopeDestination destination, const QStringList &codes);

/// Newest consents by their patients; who has none is not among them.
using NewestRows = QHash<qint32, std::vector<ManagementRow>>;
/// Reads those of the patients; others may be among them.
Result<NewestRows> readNewestRows(const Environment &environment, cT_ADODB &db,
                                  std::span<const qint32> patients);
