#pragma once

#include "print/ledger/ledger_rows.h"
#include "print/management/management_document.h"
#include "print/management/management_query.h"

class cT_ADODB;
struct Environment;

/// Whose ledger is wanted.
struct LedgerTargets {
    std::vector<ManagementRow> rows;
    bool fromMasters = false; ///< the rows stand for their patients, with or without a consent
};

/// Reads the ledger of the targets and says who is left out of it.
/// @param order its pattern, its period and how its heading names the search
Result<ManagementDocument> ledgerDocument(const Environment &environment, cT_ADODB &db,
                                          const LedgerTargets &targets, LedgerOrder order);
