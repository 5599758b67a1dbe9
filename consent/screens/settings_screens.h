#pragma once

#include "consent/screens/list_screens.h"

/// @name Masters, from which the list's texts come
///@{
bool openDoctors(const ListOpening &opening);
bool openFacilities(const ListOpening &opening);
bool openPatients(const ListOpening &opening);
bool openCounsellors(const ListOpening &opening);
bool openStaff(const ListOpening &opening);
///@}

/// Patients, masters and consents from a file.
bool openImport(const ListOpening &opening);

/// Unit prices and visit fees.
bool openFees(const ListOpening &opening);
bool openDatabaseCheck(const ListOpening &opening);
/// Whether changes are recorded, and the tables that it takes.
bool openHistoryPreparation(const ListOpening &opening);
/// Restores a backup of the embedded database into a new file.
bool openBackups(const ListOpening &opening);

/// How the patients' periods are reckoned; the list is always read again.
bool openPeriodSettings(const ListOpening &opening);

/// The layouts of consent forms that the company uses.
bool openCompanyConsentForms(const ListOpening &opening);
/// The same for the current row's patient, who is also printed for there.
bool openPatientConsentForms(const ListOpening &opening);
