#pragma once

#include "print/engine/data_file.h"
#include "print/ledger/ledger_rows.h"

#include <QStringList>
#include <span>

/// The pattern as the screen offers it, and the file name of its layout.
QString ledgerPatternName(LedgerPattern pattern);
QString ledgerLayout(LedgerPattern pattern);

/// 同意データ: the data's name for the engine, whose file is named after it.
QString ledgerDataName();

/// A filter that a list had: "医師" and the doctor's name. A nameless one did not limit the list.
struct LedgerFilter {
    QString caption, name;
};
/// 検索名称: "医師：山田　太郎　　施設：中央病院".
QString ledgerSearchName(std::span<const LedgerFilter> filters);

/// Whether the ledger cannot hold a row: a deformity correction whose period is not entered.
bool lacksDeformityPeriod(const LedgerRow &row);
/// The patients of such rows as "IDNo. name", each once, for
/// "下記の利用者は変形徒手の期間が入力されていないため抽出できません。".
QStringList withoutDeformityPeriod(std::span<const LedgerRow> rows);

/// Puts rows into the order that the pattern's layout is made for: by institution and doctor, by
/// practitioner; else, and among equals, they keep theirs. Rows that name none come last.
void orderLedger(std::vector<LedgerRow> &rows, const LedgerOrder &order);

/// The 30 columns of a ledger's record.
const QStringList &ledgerColumns();
/// The data file of a ledger in the rows' order; rows that lack a deformity period are left out.
DataFile ledgerData(std::span<const LedgerRow> rows, const LedgerOrder &order, const QDate &today);
