#pragma once

#include "db/tables/keys.h"

#include <QHash>
#include <QString>
#include <array>
#include <span>
#include <vector>

/// A consent row that a letter is to be printed for.
struct LetterOrder {
    ConsentRowKey row;
    QString doctor; ///< code of the doctor who is asked; empty: the one that the row names
    bool toHospital = false;
    QString layout; ///< file name
};

/// What a letter says about one consent row and its patient.
struct LetterRow {
    /// A patient's practitioners: the responsible one and four more.
    static constexpr int practitioners = 5;

    ConsentRowKey key;
    size_t order = 0;   ///< position of its order
    QString updateTime; ///< of the row, as the database gave it; empty: none
    QString name, address;
    QDate birthday, firstTreatment;
    int sex = 0; ///< 1 man, 2 woman
    bool acupuncture = false;
    Period period;   ///< the running one
    QDate reconsent; ///< entered already, or invalid
    QString diagnosis, massageDiagnosis, acupunctureDiagnosis, otherDisease;
    std::array<bool, 7> diseases{};                      ///< of acupuncture, the last is another one
    QString doctor;                                      ///< code; empty: none
    QString doctorName, institution, institutionAddress; ///< as the consent keeps them
    std::array<QString, practitioners> staff;
};

/// A doctor and the institution that letters go to.
struct LetterDoctor {
    QString name, institution, zip, address;
};

/// The sender.
struct LetterCompany {
    QString name, address, telephone, fax, head;
};

/// All that a run of letters is made of.
struct LetterSource {
    std::vector<LetterRow> rows;          ///< in the order of the orders; rows that are gone are missing
    QHash<QString, LetterDoctor> doctors; ///< by code
    LetterCompany company;
    bool hasCompany = false;
};
