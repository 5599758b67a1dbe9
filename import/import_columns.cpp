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

QString ImportColumns::heading(int column) const {
    return headed ? firstRow.value(column) : u"列%1"_s.arg(column + 1);
}

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
    columns.firstRow = first;
    columns.fields.assign(size_t(first.size()), -1);
    for (qsizetype i = 0; i < first.size(); ++i) {
        const int field = known.value(plainHeading(first[i]), -1);
        if (field >= 0 && columns.columnOf(field) < 0)
            columns.fields[size_t(i)] = field;
        columns.headed = columns.headed || field >= 0;
    }
    return columns;
}

QString whyColumnsFail(const ImportDescription &description, const ImportColumns &columns) {
    const auto has = [&](QStringView column) {
        return std::ranges::any_of(columns.fields, [&](int field) {
            return field >= 0 && description.fields[size_t(field)].column == column;
        });
    };
    if (description.kind == ImportKind::Consents && !has(u"tDouiDay"))
        return u"「同意日」の列を選んでください。"_s;
    if (description.kind == ImportKind::Consents && has(u"nIDNo"))
        return {};
    const QString name = description.nameColumn();
    return has(name) ? QString()
                     : u"「%1」の列を選んでください。"_s.arg(
                           description.fields[size_t(description.field(name))].caption);
}
