#pragma once

#include "db/tables/keys.h"
#include "print/documents/addressee.h"

#include <QHash>
#include <QString>
#include <array>
#include <span>
#include <vector>

/// A consent row that a letter is to be printed for.
struct LetterOrder {
    ConsentRowKey row;
    QString doctor{}; ///< code of the doctor who is asked; empty: the one that the row names
    bool toHospital = false;
    QString layout{};       ///< file name
    QString who{};          ///< "IDNo. name", for messages
    bool continues = false; ///< a consent of the same treatment: what is asked for is a re-consent
};

/// What a letter says about one consent row and its patient.
struct LetterRow {
    ConsentRowKey key;
    size_t order = 0;   ///< position of its order
    QString updateTime; ///< of the row, as the database gave it; empty: none
    QString name, address;
    QDate birthday, firstTreatment;
    int sex = 0; ///< 1 man, 2 woman
    bool acupuncture = false;
    bool oral = false;
    Period period;   ///< the running one
    QDate reconsent; ///< entered already, or invalid
    QString diagnosis, otherDisease;
    std::array<bool, 7> diseases{};                      ///< of acupuncture, the last is another one
    QString doctor;                                      ///< code; empty: none
    QString notedDoctor, notedInstitution, notedAddress; ///< as the consent keeps them
    std::array<QString, mostPractitioners> staff;
};

/// The sender.
struct LetterCompany {
    QString name, address, telephone, fax, head;
};

using LetterDoctors = QHash<QString, KnownDoctor>; ///< by code

/// All that a run of letters is made of.
struct LetterSource {
    std::vector<LetterRow> rows; ///< in the order of the orders; rows that are gone are missing
    LetterDoctors doctors;
    LetterCompany company;
    bool hasCompany = false;
};
