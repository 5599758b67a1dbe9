#pragma once

#include "db/tables/keys.h"

#include <QString>
#include <array>

/// What a master has of a doctor's institution.
struct KnownInstitution {
    QString name, zip, address1, address2, telephone;
};

/// All that is known of the doctor whom a document is for.
struct KnownDoctor {
    QString name;
    KnownInstitution own;                              ///< as the doctor's row has it
    KnownInstitution institution;                      ///< the institution's own row
    QString notedName, notedInstitution, notedAddress; ///< as the consent keeps them
};

/// A doctor and an institution as letters, envelopes and consent forms print them.
struct Addressee {
    QString doctor, institution, zip, address1, address2, telephone;

    /// Both lines of the address in one.
    QString address() const;

    friend bool operator==(const Addressee &, const Addressee &) = default;
};

/// The one order for all documents, item by item: the doctor's row, the institution's, what the consent
/// noted. Both lines of an address and its postal code come from the same place.
Addressee addresseeOf(const KnownDoctor &known);

/// The marked diseases of acupuncture joined with "、", the seventh in its own words; empty when none is
/// marked.
QString diseasesText(const std::array<bool, 7> &marked, const QString &other);

/// The diagnosis for all documents: the one for the kind of treatment, else the consent's. Acupuncture is
/// given for its marked diseases first (diseasesText).
QString diagnosisOf(const QString &ofKind, const QString &ofConsent);

/// The period of a deformity correction: the one that the consent records for it, else, on a correction's own
/// row, the row's.
Period correctionPeriodOf(const Period &recorded, const Period &ofRow, bool isCorrection);

/// The re-consent date of a row: a correction's own, else, as the list shows it, the one that massage rows
/// have.
QDate reconsentOf(bool isCorrection, const QDate &own, const QDate &ofRow);

/// Two lines of an address or two parts of a name in one, an ideographic space between them.
QString joinedLines(const QString &first, const QString &second);
