#pragma once

#include "db/tables/keys.h"
#include "masters/master_store.h"

/// The rows of the list, in the order of their numbers: the columns of the master, and `patients`, `doctors`,
/// `letters` beside them.
QString masterListSql(MasterKind kind, const Branch &branch);

/// Counts of those who name the row: consents, patients, doctors.
QString masterUsesSql(MasterKind kind, const Branch &branch, const QString &code);

/// An update that changes nothing, so that the row is the transaction's.
QString masterLockSql(MasterKind kind, const Branch &branch, const QString &code);

/// The same for a row that is still to be made: the rows of the offices are there.
QString masterLockNewSql(MasterKind kind, const Branch &branch);

/// The same for the patients whom copies reach: copies go through them more than once, and whoever writes
/// patients in the order of their keys meanwhile would wait for the copies, and they for him.
QString masterLockPatientsSql(MasterKind kind, const QString &code);

/// Rows of a table, by a condition.
struct TouchedRows {
    QStringView table;
    QString where;
};
/// What is written with a row of a master: the row itself and, of a patient, what stands beside it.
QList<TouchedRows> masterRows(MasterKind kind, const Branch &branch, const QString &code);
/// The rows that copies of it reach; copying changes nothing of what they are found by.
QList<TouchedRows> masterCopies(MasterKind kind, const QString &code);

/// Brings a facility's name, address and telephone to its doctors, each item where the doctor's row repeats
/// what the facility had before: what a doctor has of his own stays.
/// @return statements to be run one after the other; none when nothing of that changed
QStringList facilityToDoctorsSql(const MasterValues &before, const MasterValues &now,
                                 const QString &computer);

/// The month from whose types a new patient's periods are reckoned: without types, as the practice does.
QString newPatientMonthSql(const PatientKey &patient, const QString &computer);

/// @return statements that delete what else belongs to a patient without consents, to be run before his own
/// row goes
QStringList removePatientSql(const PatientKey &patient);
