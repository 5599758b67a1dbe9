#include "import/import_columns.h"

#include "app/base/text.h"

#include <QHash>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Without case, width, kana kind, blanks and signs; a long vowel is no sign.
QString plainHeading(const QString &heading) {
    QString plain = foldForSearch(heading);
    plain.removeIf(
        [](QChar c) { return c.isSpace() || (c != u'ー' && c != u'〒' && !c.isLetterOrNumber()); });
    return plain;
}

QHash<QString, int> knownHeadings(const ImportDescription &description) {
    QHash<QString, int> known;
    const auto add = [&](const QString &heading, int field) {
        if (const QString plain = plainHeading(heading); !plain.isEmpty() && !known.contains(plain))
            known.insert(plain, field);
    };
    for (size_t i = 0; i < description.fields.size(); ++i)
        add(description.fields[i].caption, int(i));
    for (size_t i = 0; i < description.fields.size(); ++i)
        for (const QString &heading : description.fields[i].headings.split(u'|'))
            add(heading, int(i));
    return known;
}

} // namespace

int ImportColumns::columnOf(int field) const {
    const auto found = std::ranges::find(fields, field);
    return field < 0 || found == fields.end() ? -1 : int(found - fields.begin());
}

void ImportColumns::assign(int column, int field) {
    if (const int before = columnOf(field); before >= 0)
        fields[size_t(before)] = -1;
    fields[size_t(column)] = field;
}

int ImportColumns::reasonColumn(const ImportDescription &description) const {
    return columnOf(int(description.fields.size()) - 1);
}

ImportColumns recogniseColumns(const ImportDescription &description, const CsvFile &file) {
    const QHash<QString, int> known = knownHeadings(description);
    const QStringList first = file.cells(0).texts;
    ImportColumns columns;
    columns.fields.assign(size_t(first.size()), -1);
    for (qsizetype i = 0; i < first.size(); ++i) {
        const int field = known.value(plainHeading(first[i]), -1);
        if (field >= 0 && columns.columnOf(field) < 0)
            columns.fields[size_t(i)] = field;
        columns.headed = columns.headed || field >= 0;
    }
    for (qsizetype i = 0; i < first.size(); ++i)
        columns.headings += columns.headed ? first[i] : u"列%1"_s.arg(i + 1);
    return columns;
}

QString whyColumnsFail(const ImportDescription &description, const ImportColumns &columns) {
    const auto isThere = [&](auto wanted) {
        for (const int field : columns.fields)
            if (field >= 0 && wanted(description.fields[size_t(field)]))
                return true;
        return false;
    };
    if (description.kind == ImportKind::Consents) {
        if (!isThere([](const ImportField &field) {
                return field.kind == ImportField::Reference && field.target == ImportKind::Patients;
            }))
            return u"利用者（番号か氏名）の列を選んでください。"_s;
        return isThere([](const ImportField &field) { return field.column == u"tDouiDay"; })
                   ? QString()
                   : u"同意日の列を選んでください。"_s;
    }
    const QString name = description.nameColumn();
    return isThere([&](const ImportField &field) { return field.column == name; })
               ? QString()
               : u"「%1」の列を選んでください。"_s.arg(
                     description.fields[size_t(description.field(name))].caption);
}
