#include "export/make_csv.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "export/grid_table.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString cleaned(QString text) {
    if (text.contains(u'\r') || text.contains(QChar(u'\0')))
        text.remove(u"\r\n"_s).remove(u'\r').remove(QChar(u'\0'));
    return text;
}

/// Joins cells to lines.
class Lines {
public:
    explicit Lines(const CsvFormat &format) : m_format(format) {}

    void add(const QStringList &cells) {
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i > 0)
                m_text += QChar(m_format.delimiter);
            addCell(cells[i], cells.size() == 1);
        }
        m_text += u"\r\n";
    }
    const QString &text() const { return m_text; }

private:
    void addCell(const QString &cell, bool alone) {
        QString text = cleaned(cell);
        // A line without any sign is none to a reader.
        if (!m_format.quoted && !needsQuotes(text) && !(alone && text.isEmpty())) {
            m_text += text;
            return;
        }
        if (text.contains(u'"'))
            text.replace(u'"', u"\"\""_s);
        m_text += u'"';
        m_text += text;
        m_text += u'"';
    }
    bool needsQuotes(const QString &text) const {
        return (m_text.isEmpty() && text.startsWith(u"ID")) || std::ranges::any_of(text, [this](QChar c) {
                   return c == m_format.delimiter || c == u'"' || c == u'\n';
               });
    }

    const CsvFormat &m_format;
    QString m_text;
};

QString cellName(int line, const QString &heading, const QString &text) {
    constexpr qsizetype most = 40; // characters that tell which text it is
    QString shown = text.size() > most ? text.left(most) + u"…"_s : text;
    shown.replace(u'\n', u' ');
    return (line == 0 ? u"見出し"_s : u"%L1 行目 %2"_s.arg(QString::number(line), heading)) + u"「"_s +
           shown + u"」"_s;
}

/// Calls work(line, heading, text) for each cell; headings are line 0.
template <class Work> void forEachCell(const GridTable &table, bool headings, Work work) {
    const QStringList names = table.headings();
    if (headings)
        for (const QString &name : names)
            work(0, name, name);
    for (size_t row = 0; row < table.rows.size(); ++row)
        for (qsizetype column = 0; column < names.size(); ++column)
            work(int(row) + 1, names[column], table.rows[row][column]);
}

bool isFormula(const QString &text) {
    if (text.size() < 2 || !u"=+-@"_s.contains(text.front()))
        return false;
    bool number = false;
    text.toDouble(&number);
    return !number;
}

} // namespace

namespace modMakeCsv {

QByteArray bytes(const GridTable &table, const CsvFormat &format) {
    Lines lines(format);
    if (format.headings)
        lines.add(table.headings());
    for (const QStringList &row : table.rows)
        lines.add(row);
    return format.encoding == CsvEncoding::Utf8 ? "\xEF\xBB\xBF" + lines.text().toUtf8()
                                                : encode932(lines.text()).bytes;
}

Result<> write(const QString &path, const GridTable &table, const CsvFormat &format) {
    return writeFileWhole(path, bytes(table, format));
}

QStringList lostCharacters(const GridTable &table, bool headings) {
    QStringList lost;
    forEachCell(table, headings, [&](int line, const QString &heading, const QString &text) {
        if (fits932(text))
            return;
        if (const QStringList losses = replacements932(text); !losses.isEmpty())
            lost.append(cellName(line, heading, text) + u"の"_s + losses.join(u"、"_s));
    });
    return lost;
}

QStringList formulas(const GridTable &table) {
    QStringList found;
    forEachCell(table, false, [&](int line, const QString &heading, const QString &text) {
        if (isFormula(text))
            found.append(cellName(line, heading, text));
    });
    return found;
}

} // namespace modMakeCsv
