#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"
#include "print/documents/addressee.h"
#include "print/engine/data_file.h"
#include "print/engine/wfd_print_exe.h"
#include "print/renewal_list/renewal_options.h"

#include <vector>

struct Environment;

/// A consent that runs out, with its patient.
struct DueConsent {
    qint32 patient = 0;
    QString name, kana;
    bool acupuncture = false;
    QDate firstTreatment;
    bool isCorrection = false; ///< the consent is of a deformity correction
    Period period;
    Period correction; ///< of the deformity correction; empty: none
    QDate consentDay, examined;
    QString doctor; ///< code; empty: none
    KnownDoctor known;
    qint32 institution = 0;            ///< the doctor's; 0: none
    QString institutionMethod, method; ///< how the institution and this row are asked
    qint32 staff = 0;                  ///< the responsible one; 0: nobody
    QString staffName;
    qint32 counsellor = 0; ///< 0: nobody
    QString counsellorName;
};

/// One line a patient: a deformity correction goes with the patient's other consent where both come from the
/// same doctor at the same place, and has a line of its own where another doctor has to be asked. A patient
/// stands where the first of the rows stands.
std::vector<DueConsent> renewalLines(const std::vector<DueConsent> &rows);

/// Months from the first treatment to the month given, both counted; 0 where it comes later or is not known.
int monthsBegun(const QDate &firstTreatment, const QDate &month);

/// The 31 columns of the data file, and the file with one record a line.
const QStringList &renewalColumns();
DataFile renewalData(const std::vector<DueConsent> &lines, const RenewalListOptions &options);

/// Writes 同意書更新データ.csv into the work folder and hands it to the engine with the layout chosen.
Result<> printRenewalList(const Environment &environment, const DataFile &data,
                          const RenewalListOptions &options, PrintWay way, HandedDocuments *sent);
