#include "viewer/data/data_table.h"

#include "app/base/codepage932.h"
#include "app/base/unicode_twin.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 largestFile = qint64(1) << 30; // bytes

/// A sign of a format as a byte; 0 for one that no single byte of text stands for.
char signByte(QChar sign) {
    return sign.unicode() > 0 && sign.unicode() < 0x80 ? char(sign.unicode()) : '\0';
}

FieldSigns signsOf(const DataFormat &format) {
    return {signByte(format.separator), signByte(format.quote), format.utf8};
}

QString sentence(FieldFault fault) {
    switch (fault) {
    case FieldFault::QuoteNotClosed:
        return u"引用符で始まる文字列が閉じていません。"_s;
    case FieldFault::TextAfterQuote:
        return u"引用符を閉じた後に余分な文字があります。"_s;
    case FieldFault::TooMany:
        return u"項目が多すぎます（%1個まで）。"_s.arg(mostFields);
    case FieldFault::None:
        break;
    }
    return {};
}

/// Goes through the lines of a file once and remembers where its records begin.
class RecordFinder {
public:
    RecordFinder(const QByteArray &bytes, const DataFormat &format)
        : m_bytes(bytes), m_format(format), m_signs(signsOf(format)) {}

    bool find() {
        if (!m_format.utf8 && looksLikeUtf8(m_bytes))
            return fail(1, 0, u"UTF-8で書かれています。コードページ932（シフトJIS）で保存してください。"_s);
        for (qsizetype at = 0; at < m_bytes.size();) {
            const qsizetype end = lineEnd(m_bytes, at);
            ++m_line;
            if (end > at && !takeLine(at, QByteArrayView(m_bytes).sliced(at, end - at)))
                return false;
            at = nextLine(m_bytes, end);
        }
        if (m_format.header && m_width < 0)
            return fail(0, 0, u"空のファイルです。1行目に項目名が必要です。"_s);
        return true;
    }

    QStringList columns;
    std::vector<quint32> rows;
    Problem problem;

private:
    bool takeLine(qsizetype at, QByteArrayView line) {
        if (!isText(line))
            return false;
        FieldFault fault = FieldFault::None;
        const qsizetype wrong = splitFields(line, m_signs, &m_fields, &fault);
        if (wrong >= 0)
            return fail(m_line, characterAt(line, wrong), sentence(fault));
        if (m_width < 0)
            takeFirstLine();
        else if (qsizetype(m_fields.size()) != m_width)
            return fail(m_line, 0,
                        u"項目の数が%1個です（%2個のはずです）。"_s.arg(m_fields.size()).arg(m_width));
        if (!m_headerDue)
            rows.push_back(quint32(at));
        m_headerDue = false;
        return true;
    }

    void takeFirstLine() {
        m_width = qsizetype(m_fields.size());
        m_headerDue = m_format.header;
        for (size_t i = 0; i < m_fields.size(); ++i)
            columns.append(m_format.header ? fieldText(m_fields[i], m_signs) : u"項目%1"_s.arg(i + 1));
    }

    bool isText(QByteArrayView line) {
        const auto plain = [](char c) { return c >= 0x20 || c == '\t'; };
        if (std::all_of(line.begin(), line.end(), plain))
            return true;
        const QString text = m_signs.decode(line);
        // A twin is known to be whole: there the sign for what nobody can read is one of the text's own.
        const auto wrong = std::find_if(text.begin(), text.end(), [this](QChar c) {
            return (c == QChar::ReplacementCharacter && !m_format.utf8) || c == QChar::Null;
        });
        if (wrong == text.end())
            return true;
        return fail(m_line, int(wrong - text.begin()) + 1,
                    u"コードページ932（シフトJIS）の文字ではありません。"_s);
    }

    int characterAt(QByteArrayView line, qsizetype at) const {
        return int(m_signs.decode(line.first(at)).size()) + 1;
    }

    bool fail(int line, int column, const QString &text) {
        problem = {{}, line, column, text};
        return false;
    }

    const QByteArray &m_bytes;
    const DataFormat &m_format;
    FieldSigns m_signs;
    std::vector<QByteArrayView> m_fields;
    qsizetype m_width = -1; ///< fields of the first line
    bool m_headerDue = false;
    int m_line = 0;
};

void report(Problem *problem, const Problem &found, const QString &name) {
    if (!problem)
        return;
    *problem = found;
    problem->file = name;
}

} // namespace

QString DataRecord::value(int column) const {
    if (column < 0 || size_t(column) >= m_fields.size())
        return {};
    return fieldText(m_fields[size_t(column)], m_signs);
}

std::shared_ptr<const DataTable> DataTable::open(const QString &path, const DataFormat &format,
                                                 Problem *problem) {
    const QString name = QDir::toNativeSeparators(path);
    const auto fail = [&](const QString &why) {
        report(problem, {{}, 0, 0, why}, name);
        return nullptr;
    };
    if (!QFileInfo(path).isFile())
        return fail(u"データファイルがありません。"_s);
    QFile file(path);
    if (file.size() > largestFile)
        return fail(u"データファイルが大きすぎます（1GBまで）。"_s);
    if (!file.open(QIODevice::ReadOnly))
        return fail(u"データファイルを開けません。"_s + file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(u"データファイルを読めません。"_s + file.errorString());
    const QByteArray unicode = UnicodeTwin::textBeside(path, bytes);
    if (unicode.isEmpty())
        return fromBytes(bytes, name, format, problem);
    DataFormat twin = format;
    twin.utf8 = true;
    return fromBytes(unicode, name, twin, problem);
}

std::shared_ptr<const DataTable> DataTable::fromBytes(const QByteArray &bytes, const QString &name,
                                                      const DataFormat &format, Problem *problem) {
    const auto table = std::make_shared<DataTable>();
    table->m_bytes = bytes;
    table->m_format = format;
    // The mark that ends a text file of old.
    if (table->m_bytes.endsWith('\x1A'))
        table->m_bytes.chop(1);
    RecordFinder finder(table->m_bytes, table->m_format);
    if (!finder.find()) {
        report(problem, finder.problem, name);
        return nullptr;
    }
    table->m_columns = finder.columns;
    table->m_rows = std::move(finder.rows);
    return table;
}

int DataTable::column(QStringView name) const {
    return int(m_columns.indexOf(name));
}

QString DataTable::value(int row, int column) const {
    return record(row).value(column);
}

DataRecord DataTable::record(int row) const {
    DataRecord record;
    if (row < 0 || row >= rowCount())
        return record;
    const FieldSigns signs = signsOf(m_format);
    const qsizetype begin = m_rows[size_t(row)];
    const QByteArrayView line = QByteArrayView(m_bytes).sliced(begin, lineEnd(m_bytes, begin) - begin);
    FieldFault fault = FieldFault::None;
    record.m_fields.reserve(size_t(m_columns.size()));
    splitFields(line, signs, &record.m_fields, &fault);
    record.m_signs = signs;
    return record;
}
