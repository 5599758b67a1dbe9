#pragma once

#include "sample/random.h"

#include <QList>
#include <QString>

namespace sample {

enum class Sex { Man = 1, Woman = 2 };

/// A person's name as the suite keeps it: family and given name parted by a full-width blank.
struct PersonName {
    QString full;
    QString kana;
    QString family;
};

/// A place in the made-up prefecture of the sample.
struct Place {
    QString postcode; ///< 000-0000
    QString line1;    ///< prefecture, town and block
    QString line2;    ///< building and room, often empty
};

/// A town of that prefecture, with readings as postal codes give them: half-width.
struct Town {
    QString code; ///< seven digits
    QString city, name, cityKana, kana;
};
const QList<Town> &sampleTowns();

/// A name of someone born in that year. One in twelve or so bears an old character form (髙, 﨑, 𠮷).
PersonName makeName(Random &random, Sex sex, int birthYear);

Place makePlace(Random &random);
QString makeTelephone(Random &random);

/// Kana as the suite's data mixes it: mostly katakana, sometimes half-width, sometimes hiragana.
QString kanaOfSomeKind(Random &random, const QString &katakana);

} // namespace sample
