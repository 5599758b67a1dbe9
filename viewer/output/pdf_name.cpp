#include "viewer/output/pdf_name.h"

#include "app/base/person_items.h"
#include "viewer/document/document.h"

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longest = 100; ///< bytes of a part: systems allow 255 in all

/// Without the signs that one of the systems refuses, since the folder may be shared by PCs of several, and
/// without unseen ones, some of which turn a name round.
QString safe(const QString &text) {
    QString name;
    qsizetype bytes = 0;
    for (const char32_t c : text.toUcs4()) {
        const QChar::Category category = QChar::category(c);
        if (category == QChar::Other_Format)
            continue;
        const QString whole = QString::fromUcs4(&c, 1);
        const bool refused = category == QChar::Other_Control || category == QChar::Separator_Line ||
                             category == QChar::Separator_Paragraph || u"\\/:*?\"<>|"_s.contains(whole);
        const QString written = refused ? u"_"_s : whole;
        bytes += written.toUtf8().size();
        if (bytes > longest)
            break;
        name += written;
    }
    return name.trimmed();
}

template <class Items> QString firstOf(const DataTable &table, int row, const Items &items) {
    for (const QStringView item : items)
        if (const int column = table.column(item); column >= 0)
            return table.value(row, column);
    return {};
}

struct Persons {
    QSet<QString> numbers; ///< names where they have none
    QString first, last;   ///< names
    int records = 0;

    QString text() const {
        if (numbers.isEmpty())
            return u"%1件"_s.arg(records);
        return numbers.size() == 1 && !last.isEmpty() ? last : u"%1名"_s.arg(numbers.size());
    }
};

Persons personsOf(const Document &document) {
    Persons persons;
    for (const Report &report : document.reports())
        for (const ReportSource &source : report.sources)
            for (int row = 0; row < source.table->rowCount(); ++row, ++persons.records) {
                persons.last = firstOf(*source.table, row, personNameItems);
                if (persons.records == 0)
                    persons.first = persons.last;
                const QString number = firstOf(*source.table, row, personNumberItems);
                persons.numbers.insert(number.isEmpty() ? persons.last : number);
            }
    persons.numbers.remove(QString());
    return persons;
}

} // namespace

QString documentKind(const Document &document) {
    QSet<QString> titles;
    for (const Report &report : document.reports())
        titles.insert(report.layout->title);
    return titles.size() == 1 ? *titles.begin() : QString();
}

QString documentPersons(const Document &document) {
    return personsOf(document).text();
}

QString documentSpan(const Document &document) {
    const Persons persons = personsOf(document);
    return persons.numbers.size() > 1 && !persons.first.isEmpty()
               ? u"%1 ～ %2、%3"_s.arg(persons.first, persons.last, persons.text())
               : persons.text();
}

QString pdfNameOf(const Document &document, const QDate &day) {
    QString kind = safe(documentKind(document));
    if (kind.isEmpty())
        kind = safe(document.title());
    if (kind.isEmpty())
        kind = u"帳票"_s;
    return u"%1_%2_%3.pdf"_s.arg(kind, safe(documentPersons(document)), day.toString(u"yyyyMMdd"));
}
