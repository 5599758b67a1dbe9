#pragma once

#include "app/base/branch.h"
#include "import/import_kind.h"

#include <QHash>

/// The columns that are read of a kind's rows, without the number: of its fields, and what repeats others.
QStringList storedColumns(const ImportDescription &description);

/// The rows of a kind in the order of their numbers: number, storedColumns, and last the number again where
/// RIYOUSHA_SUB has a row (of other kinds always).
QString storedRowsSql(const ImportDescription &description, const Branch &branch);

/// Makes every other import wait for the end of the transaction, so that no two take one number: an update
/// that changes nothing of the branches.
QString lockImportsSql();

/// Keeps others from writing rows until the transaction ends, in the order of their numbers.
/// @param codes at least one, at most mostRowsAStatement
QString lockRowsSql(const ImportDescription &description, const Branch &branch, const QStringList &codes);
inline constexpr qsizetype mostRowsAStatement = 200;

QString highestCodeSql(const ImportDescription &description, const Branch &branch);

/// One row's values by column; a column that is not there becomes Null.
struct RowToWrite {
    QString code;
    QHash<QString, QString> values;
};

/// Inserts rows, each with the columns given and who wrote it.
/// @param sub into RIYOUSHA_SUB
QString insertRowsSql(const ImportDescription &description, const Branch &branch, bool sub,
                      const QStringList &columns, const std::vector<RowToWrite> &rows,
                      const QString &computer);
/// What new patients get beside their rows, as the patient's form makes it: the month in which their period
/// settings are kept, and the second row.
/// @param sub the second row too
QStringList insertBesidePatientsSql(const Branch &branch, const QStringList &patients, bool sub,
                                    const QString &computer);
QString updateRowSql(const ImportDescription &description, const Branch &branch, bool sub,
                     const RowToWrite &row, const QString &computer);

/// Tables whose rows are written with those of a kind, each with their condition.
/// @param news new rows: what stands beside a new patient says nothing that his own row's record does not
QList<std::pair<QString, QString>> writtenConditions(const ImportDescription &description,
                                                     const Branch &branch, const QStringList &codes,
                                                     bool news);

/// Some columns of some rows, to be compared with what was written.
QString writtenRowsSql(const ImportDescription &description, const Branch &branch, const QStringList &columns,
                       const QStringList &codes);
