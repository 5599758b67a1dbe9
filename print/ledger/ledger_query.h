#pragma once

#include "app/base/result.h"
#include "print/ledger/ledger_rows.h"

class cT_ADODB;

/// The statement that a ledger is read with.
QString ledgerSql(const LedgerOrder &order);

/// Reads what the ledger is made of with one statement. Deformity rows without a period are among the rows
/// whatever period is asked for (withoutDeformityPeriod).
Result<Ledger> readLedger(cT_ADODB &db, const LedgerOrder &order);
