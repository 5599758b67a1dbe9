#pragma once

#include "sample/consents.h"
#include "sample/masters.h"

#include <optional>

namespace sample {

class BulkDatabase;

/// A patient with everything that the tables keep of him.
struct Patient {
    Branch branch;
    int id = 0;
    PersonName name;
    QString kana; ///< in the kind of kana that the row is kept in
    Sex sex = Sex::Woman;
    QDate birthday;
    Place place;
    QString telephone;
    TreatmentContent content;
    QDate firstTreatment;
    QDate onset; ///< invalid: unknown
    std::optional<int> outcome;
    QDate expires; ///< invalid: under treatment
    QList<int> staff;
    const Doctor *doctor = nullptr;           ///< null: none entered
    const Doctor *secondDoctor = nullptr;     ///< null: one doctor only
    const Doctor *earlierDoctor = nullptr;    ///< of the older massage consents; null: the same
    const Doctor *correctionDoctor = nullptr; ///< of the deformity corrections; null: the same
    const Facility *home = nullptr;           ///< null: lives at home
    const Counsellor *counsellor = nullptr;
    const CareManager *careManager = nullptr;
    const Insurer *insurer = nullptr;
    int careDegree = 0; ///< CODE category 3
    bool hasSubRow = true;
    bool hasPeriodSettings = true;
    bool ownLayouts = false;
    QDate secondDay; ///< of the second consent; invalid: none
    QDateTime updated;
    QList<Consent> consents;

    const Consent &newestConsent() const;
    const Doctor *doctorOf(const Consent &consent) const;
};

/// Makes patients one at a time, in the order of their keys. In every twenty of them each course occurs.
class PatientMaker {
public:
    PatientMaker(Random &random, const Masters &masters, QDate day);

    /// The next patient of a branch.
    Patient make(Branch branch, int id);

private:
    struct Cast {
        Course course;
        bool acupuncture;
        bool deformity;
    };
    /// Who works in a branch.
    struct Pool {
        Branch branch;
        QList<int> staff;
        QList<const Counsellor *> counsellors;
    };
    Cast nextCast();
    void givePerson(Patient &patient);
    void giveContent(Patient &patient);
    void giveCare(Patient &patient);
    void giveHistory(Patient &patient, Course course);
    void giveOtherDoctors(Patient &patient) const;

    Random &m_random;
    const Masters &m_masters;
    QDate m_day;
    QList<Pool> m_pools;
    QList<Cast> m_block;
};

/// Makes the patients and writes them with their sub-rows, consents and period settings. Three of five
/// belong to the first branch; numbers run through both.
void loadPatients(BulkDatabase &db, Random &random, const Masters &masters, int count, QDate day);

} // namespace sample
