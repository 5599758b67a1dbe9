#pragma once

#include "db/tables/keys.h"

#include <QString>
#include <set>
#include <vector>

/// Conditions joined by " and ", each column qualified by the table, e.g.
/// "RIYOUSHA.iKyotenCd = 1 and RIYOUSHA.iKyotenEb = 1 and RIYOUSHA.nIDNo = 7". No WHERE of their own; an
/// empty table name leaves the columns unqualified.
QString sqlWhere(const Branch &branch, QStringView table);
QString sqlWhere(const PatientKey &patient, QStringView table);
QString sqlWhere(const ConsentRowKey &row, QStringView table = u"RIYOUSHA_DOUI_REC");
/// Rows of any of the patients, in brackets.
QString sqlWhere(const std::vector<PatientKey> &patients, QStringView table);

/// The two tables agree on the branch, on the patient.
QString sqlSameBranch(QStringView left, QStringView right);
QString sqlSamePatient(QStringView left, QStringView right);

/// Left joins of the practitioners of RIYOUSHA.nTantou, nTantou2 … as STAFF1, STAFF2 …
QString sqlPractitionerJoins();

/// @name Patients whom no list shows, by the outcome of their treatment (RIYOUSHA.iTenki)
///@{
/// Condition that leaves them out.
QString sqlIsListed();
/// The same of an outcome that was read, 0 for none.
bool isListed(qint64 outcome);
///@}

/// Newest consents, in RIYOUSHA_DOUI_REC: where old data mark several of a patient's rows of a kind, the
/// last.
QString sqlNewestOfKind();

/// " AND column IN (…)" of at least one number; nothing for more numbers than a statement takes well: then
/// all rows come, and whoever reads them leaves out what was not asked for.
QString sqlAndAmong(QStringView column, const std::set<qint32> &numbers);

/// What to order by so that a column's rows come as these numbers do, all others behind them; empty without
/// numbers.
QString sqlOrderAs(const QString &column, const std::vector<qint32> &numbers);
