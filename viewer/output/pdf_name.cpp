#include "viewer/output/pdf_name.h"

#include "app/base/person_items.h"
#include "viewer/document/document.h"

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longest = 60; ///< characters of a part: systems allow 255 bytes in all

/// Without the signs that one of the systems refuses: the folder may be shared by PCs of several.
QString safe(const QString &text) {
    QString name;
    for (const QChar c : text.left(longest))
        name += c.unicode() < 0x20 || u"\\/:*?\"<>|"_s.contains(c) ? QChar(u'_') : c;
    return name.trimmed();
}

/// The layouts' common title; of several kinds of document the whole's.
QString kindOf(const Document &document) {
    QSet<QString> titles;
    for (const Report &report : document.reports())
        titles.insert(report.layout->title);
    const QString title = titles.size() == 1 ? *titles.begin() : QString();
    return title.isEmpty() ? document.title() : title;
}

template <class Items> QString firstOf(const DataTable &table, int row, const Items &items) {
    for (const QStringView item : items)
        if (const int column = table.column(item); column >= 0)
            return table.value(row, column);
    return {};
}

QString personsOf(const Document &document) {
    QSet<QString> persons; // by number where they have one
    QString name;
    int records = 0;
    for (const Report &report : document.reports())
        for (const ReportSource &source : report.sources)
            for (int row = 0; row < source.table->rowCount(); ++row, ++records) {
                name = firstOf(*source.table, row, personNameItems);
                const QString number = firstOf(*source.table, row, personNumberItems);
                persons.insert(number.isEmpty() ? name : number);
            }
    persons.remove(QString());
    if (persons.isEmpty())
        return u"%1件"_s.arg(records);
    return persons.size() == 1 && !name.isEmpty() ? name : u"%1名"_s.arg(persons.size());
}

} // namespace

QString pdfNameOf(const Document &document, const QDate &day) {
    QString kind = safe(kindOf(document));
    if (kind.isEmpty())
        kind = u"帳票"_s;
    return u"%1_%2_%3.pdf"_s.arg(kind, safe(personsOf(document)), day.toString(u"yyyyMMdd"));
}
