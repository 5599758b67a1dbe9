#pragma once

#include "app/base/branch.h"
#include "sample/names.h"
#include "sample/random.h"

#include <QDate>
#include <QList>
#include <QString>

namespace sample {

class BulkDatabase;

/// A row of SISETSU.
struct Facility {
    enum Type { Hospital = 1, Home = 2, CareOffice = 3 };

    int id; ///< 0: no row of the master
    Type type;
    QString name;
    QString kana;
    QString shortName;
    PersonName head;
    Place place;
    QString telephone;
    QString requestMethod; ///< null: none agreed on
};

struct Doctor {
    int id;
    PersonName name;
    Facility hospital; ///< of two of the first 25 not in the master, one of them without a name
    bool handWriting;  ///< writes by hand, so the form leaves the doctor's block blank
    bool ownLayouts;
};

struct Staff {
    Branch branch;
    int id;
    PersonName name;
    Sex sex;
    QDate birthday;
    Place place;
    QString telephone;
    bool acupuncture;
    bool suspended;
};

struct CareManager {
    int id;
    PersonName name;
    Facility office;
    QString telephone;
};

struct Counsellor {
    Branch branch;
    int id;
    PersonName name;
    QString mail; ///< null: none
    Place place;
    QString telephone;
    bool left;
};

struct Insurer {
    QString number;
    QString name;
    QString kana;
    int kind; ///< 1 national, 2 of companies, 3 of the late elderly
};

/// Everyone and everything that patients refer to.
struct Masters {
    QList<Facility> hospitals;
    QList<Facility> homes;
    QList<Facility> careOffices;
    QList<Doctor> doctors;
    QList<Staff> staff;
    QList<CareManager> careManagers;
    QList<Counsellor> counsellors;
    QList<Insurer> insurers;
};

/// The two branches of the practice.
const QList<Branch> &sampleBranches();

/// 25 doctors in 15 institutions and the like; more for more patients than a practice of that size has.
Masters makeMasters(Random &random, int patients);

/// Writes them, made on the given day.
void loadMasters(BulkDatabase &db, const Masters &masters, QDate day);

/// Writes what does not hang on chance: branches, company, codes, form master, holidays of the five years
/// round the day, unit prices and visit-fee bands.
void loadFixedTables(BulkDatabase &db, QDate day);

} // namespace sample
