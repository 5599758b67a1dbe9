#include "print/documents/addressee.h"

#include "db/tables/patient/acupuncture_diseases.h"

#include <QStringList>

#include <algorithm>
#include <initializer_list>

using namespace Qt::Literals::StringLiterals;

namespace {

QString firstFilled(std::initializer_list<QString> texts) {
    const auto *filled = std::find_if(texts.begin(), texts.end(),
                                      [](const QString &text) { return !text.trimmed().isEmpty(); });
    return filled == texts.end() ? QString() : filled->trimmed();
}

/// Where the building begins in an address kept as one line: the first blank behind a house number.
qsizetype buildingOf(const QString &address) {
    bool numbered = false;
    for (qsizetype i = 0; i < address.size(); ++i) {
        numbered = numbered || address[i].isDigit();
        if (numbered && address[i].isSpace())
            return i;
    }
    return address.size();
}

void putAddress(Addressee &addressee, const KnownDoctor &known) {
    for (const KnownInstitution *place : {&known.own, &known.institution})
        if (!firstFilled({place->address1, place->address2}).isEmpty()) {
            addressee.zip = place->zip.trimmed();
            addressee.address1 = place->address1.trimmed();
            addressee.address2 = place->address2.trimmed();
            return;
        }
    const QString noted = known.notedAddress.trimmed();
    const qsizetype building = buildingOf(noted);
    addressee.address1 = noted.left(building);
    addressee.address2 = noted.mid(building).trimmed();
    if (noted.isEmpty())
        addressee.zip = firstFilled({known.own.zip, known.institution.zip});
}

} // namespace

QString Addressee::address() const {
    return joinedLines(address1, address2);
}

Addressee addresseeOf(const KnownDoctor &known) {
    Addressee addressee;
    addressee.doctor = firstFilled({known.name, known.notedName});
    addressee.institution = firstFilled({known.own.name, known.institution.name, known.notedInstitution});
    addressee.telephone = firstFilled({known.own.telephone, known.institution.telephone});
    putAddress(addressee, known);
    return addressee;
}

QString diseasesText(const std::array<bool, 7> &marked, const QString &other) {
    QStringList diseases;
    for (size_t i = 0; i < acupunctureDiseaseNames.size(); ++i)
        if (marked[i])
            diseases.append(acupunctureDiseaseNames[i].toString());
    if (marked.back())
        diseases.append(other.isEmpty() ? u"その他"_s : other);
    return diseases.join(u'、');
}

QString diagnosisOf(const QString &ofKind, const QString &ofConsent) {
    return firstFilled({ofKind, ofConsent});
}

Period correctionPeriodOf(const Period &recorded, const Period &ofRow, bool isCorrection) {
    return recorded == Period() && isCorrection ? ofRow : recorded;
}

QDate reconsentOf(bool isCorrection, const QDate &own, const QDate &ofRow) {
    return isCorrection && own.isValid() ? own : ofRow;
}

QString joinedLines(const QString &first, const QString &second) {
    return first.isEmpty() || second.isEmpty() ? first + second : first + u'　' + second;
}
