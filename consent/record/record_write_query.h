#pragma once

#include "db/tables/keys.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <vector>

class Recordset;

/// A column and what is written into it, as SQL.
struct ColumnValue {
    QString column;
    QString value;
};

/// All columns that are known of the patients' consents.
QString sqlStanding(const std::vector<PatientKey> &patients);

/// Makes every other program that writes the patient's consents wait for the end of the transaction: the
/// patient's own row is there whatever becomes of his consents.
QString sqlLockPatient(const PatientKey &patient);

/// @name Conditions, without a WHERE of their own
///@{
/// One row. On a massage row nHenkeiDouiDate says nothing.
QString sqlOfRow(const ConsentRowKey &row);
/// The same while it is the newest of its kind.
QString sqlOfNewest(const ConsentRowKey &row);
/// All rows of the patients.
QString sqlOfPatients(const std::vector<PatientKey> &patients);
/// All rows of a patient's date, whatever their kind.
QString sqlOfDate(const PatientKey &patient, qint32 nDate);
/// Nobody has written the row since it was read. An empty time: it had none.
QString sqlUnchangedSince(const QString &updateTime);
///@}

/// The key and iSendFlg of the patients' rows.
QString sqlSendFlags(const std::vector<PatientKey> &patients);

/// The key that stands in the first six columns of a row.
ConsentRowKey keyAt(const Recordset &rows, int row);

/// The columns that say which computer wrote a row and when.
QList<ColumnValue> auditColumns(const QString &computer);

QString sqlChange(const QString &where, const QList<ColumnValue> &columns);
QString sqlInsert(const QList<ColumnValue> &columns);
/// Copies the one row that fits; each column takes its value.
QString sqlInsertCopy(const QString &where, const QList<ColumnValue> &columns);
QString sqlRemove(const QString &where);

/// @name Newest marks of one kind (iHenkeiFlg) of row
/// The search takes only rows whose claim flag is exactly 0; the marking takes Null as well.
///@{
/// Of each patient and kind the rows that may be the newest, the newest last.
QString sqlUsableRows(const std::vector<PatientKey> &patients);
std::vector<ConsentRowKey> newestRows(const Recordset &rows);
/// The other rows that bear the mark, and the found ones while they do not: rows whose mark stays are not
/// written, so that colleagues who edit them are not told of a change. Those of all patients at once: a
/// server that checks what columns may hold prepares that anew for every statement.
QString sqlWronglyNewest(const std::vector<ConsentRowKey> &newest);
QString sqlNotYetNewest(const std::vector<ConsentRowKey> &newest);
///@}
