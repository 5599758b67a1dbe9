#pragma once

#include "consent/record/renewal_row.h"

#include <QString>

class Recordset;

/// Where a row keeps the doctor's answer.
enum class ReConsentColumns { Own, TemporaryHenkei };

/// Makes every other program that touches the patient's consents wait for the end of the transaction.
QString sqlLockPatient(const PatientKey &patient);

/// The source row's columns that a renewal looks at, for sourceRow().
QString sqlRenewalSource(const ConsentRowKey &source);
/// The answer on a deformity-correction row is the request's own where one is entered.
RenewalRow sourceRow(const Recordset &rows, const ConsentRowKey &key, ReConsentColumns &columns);

/// How many rows a renewal onto the key would replace.
QString sqlCountTarget(const ConsentRowKey &target);
QString sqlDeleteTarget(const ConsentRowKey &target);

/// Copies the source row onto the new key: the answer becomes consent date and period, answer and request
/// marks start empty, all else stays as it is. Deformity correction also leaves the request method and the
/// list remark behind.
QString sqlRenewedCopy(const ConsentRowKey &source, const ConsentRowKey &target, ReConsentColumns columns,
                       const QString &computer);

/// Clears the request and received marks of the rows of a date and sets the deformity-correction period.
QString sqlRestartHenkei(const PatientKey &patient, qint32 nDate, const Period &period,
                         const QString &computer);

/// @name Newest marks of one kind (iHenkeiFlg) of row
/// The search takes only rows whose claim flag is exactly 0; the marking takes Null as well.
///@{
QString sqlFindNewest(const PatientKey &patient, short iHenkeiFlg);
/// Key of the row found; false when there is none.
bool newestRow(const Recordset &rows, const PatientKey &patient, short iHenkeiFlg, ConsentRowKey &key);
/// Clears the marks of all other rows, and sets that of the found one; rows whose mark stays are not
/// written, so that colleagues who edit them are not told of a change.
QString sqlClearNewest(const ConsentRowKey &newest, const QString &computer);
QString sqlMarkNewest(const ConsentRowKey &newest, const QString &computer);
///@}
