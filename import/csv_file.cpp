#include "import/csv_file.h"

#include "app/base/codepage932.h"

#include <QFile>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestCell = 64 * 1024;
constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

/// Files that are no CSV, by their first bytes.
QString otherKind(const QByteArray &bytes) {
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("\xD0\xCF\x11\xE0"))
        return u"Excelのブックです。Excelで開き、CSV形式で保存してから選んでください。"_s;
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return u"Unicodeテキスト（UTF-16）です。CSV（UTF-8）形式で保存し直してから選んでください。"_s;
    return {};
}

Failure refused(const QString &name, const QString &why) {
    return {u"「%1」を読み込めません。\r\n%2"_s.arg(name, why)};
}

/// Tab where the first line has more of them than commas.
char delimiterOf(QByteArrayView bytes) {
    const auto end = std::ranges::find_if(bytes, [](char c) { return c == '\n' || c == '\r'; });
    return std::count(bytes.begin(), end, '\t') > std::count(bytes.begin(), end, ',') ? '\t' : ',';
}

QString joinedQuotes(QString text) {
    return text.replace(u"\"\""_s, u"\""_s);
}

} // namespace

Result<CsvFile> CsvFile::open(const QString &path, const ImportProgress &progress) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(path, file.errorString());
    if (file.size() > mostBytes)
        return refused(path, u"ファイルが大きすぎます（%L1 MB）。%L2 MBまでに分けてください。"_s
                                 .arg(file.size() / 1024 / 1024)
                                 .arg(mostBytes / 1024 / 1024));
    constexpr qint64 block = 4 * 1024 * 1024;
    QByteArray bytes;
    bytes.reserve(file.size());
    while (!file.atEnd()) {
        bytes += file.read(block);
        if (file.error() != QFile::NoError)
            return refused(path, file.errorString());
        if (progress && !progress(int(bytes.size() / 1024), int(file.size() / 1024)))
            return refused(path, u"読み込みを中止しました。"_s);
    }
    return fromBytes(std::move(bytes), path, progress);
}

Result<CsvFile> CsvFile::fromBytes(QByteArray bytes, const QString &name, const ImportProgress &progress) {
    if (const QString kind = otherKind(bytes); !kind.isEmpty())
        return refused(name, kind);
    CsvFile file;
    const bool marked = bytes.startsWith(utf8Mark);
    if (marked || looksLikeUtf8(bytes))
        file.m_encoding = CsvEncoding::Utf8;
    file.m_begin = marked ? utf8Mark.size() : 0;
    file.m_delimiter = delimiterOf(QByteArrayView(bytes).sliced(file.m_begin));
    file.m_bytes = std::move(bytes);
    if (const Result<> found = file.findRows(name, progress); !found)
        return Failure{found.reason()};
    return file;
}

Result<> CsvFile::findRows(const QString &name, const ImportProgress &progress) {
    Scan row;
    quint32 line = 1;
    for (qsizetype at = m_begin; at < m_bytes.size(); at = row.next, line += row.lines) {
        scan(at, row);
        if (row.fault == RowFault::QuoteNotClosed || row.fault == RowFault::CellTooLong)
            return refused(
                name,
                u"%L1 行目で始まる「\"」が閉じていません。その行の「\"」を直してください。"_s.arg(line));
        if (row.fault == RowFault::TooManyCells)
            return refused(name, u"%L1 行目の列が多すぎます（%L2 列まで）。"_s.arg(line).arg(mostCells));
        const bool empty =
            std::ranges::all_of(row.cells, [this](QByteArrayView cell) { return decoded(cell).isEmpty(); });
        if (empty)
            continue;
        if (rowCount() == mostRows)
            return refused(name, u"%L1 行を超えています。ファイルを分けてください。"_s.arg(mostRows));
        m_rows.push_back({quint32(at), line});
        if (progress && rowCount() % 5000 == 0 && !progress(int(at / 1024), int(m_bytes.size() / 1024)))
            return refused(name, u"読み込みを中止しました。"_s);
    }
    return m_rows.empty() ? refused(name, u"ファイルに行がありません。"_s) : Result<>();
}

qsizetype CsvFile::skipLineEnd(qsizetype at) const {
    return at + (m_bytes[at] == '\r' && at + 1 < m_bytes.size() && m_bytes[at + 1] == '\n' ? 2 : 1);
}

// No sign looked for here is the second byte of a character in either encoding.
qsizetype CsvFile::scanQuoted(qsizetype at, Scan &row) const {
    for (++at; at < m_bytes.size(); ++at) {
        if (m_bytes[at] == '\n' || (m_bytes[at] == '\r' && skipLineEnd(at) == at + 1))
            ++row.lines;
        if (m_bytes[at] != '"')
            continue;
        if (at + 1 >= m_bytes.size() || m_bytes[at + 1] != '"')
            return at + 1;
        ++at;
    }
    row.fault = RowFault::QuoteNotClosed;
    return at;
}

void CsvFile::scan(qsizetype at, Scan &row) const {
    row.cells.clear();
    row.lines = 1;
    row.fault = RowFault::None;
    const auto endsCell = [this](char c) { return c == m_delimiter || c == '\n' || c == '\r'; };
    for (bool more = true; more;) {
        const qsizetype begin = at;
        if (at < m_bytes.size() && m_bytes[at] == '"') {
            at = scanQuoted(at, row);
            if (row.fault == RowFault::None && at < m_bytes.size() && !endsCell(m_bytes[at]))
                row.fault = RowFault::TextAfterQuote;
        }
        while (at < m_bytes.size() && !endsCell(m_bytes[at]))
            ++at;
        if (row.fault == RowFault::None && at - begin > longestCell)
            row.fault = RowFault::CellTooLong;
        if (row.cells.size() == mostCells)
            row.fault = RowFault::TooManyCells;
        row.cells.emplace_back(m_bytes.constData() + begin, at - begin);
        more = at < m_bytes.size() && m_bytes[at] == m_delimiter && row.fault != RowFault::TooManyCells;
        at += more;
    }
    row.next = at < m_bytes.size() ? skipLineEnd(at) : at;
}

QString CsvFile::decoded(QByteArrayView raw) const {
    const auto text = [this](QByteArrayView bytes) {
        return m_encoding == CsvEncoding::Utf8 ? QString::fromUtf8(bytes) : decode932(bytes);
    };
    if (raw.size() >= 2 && raw.front() == '"' && raw.back() == '"')
        return joinedQuotes(text(raw.sliced(1, raw.size() - 2))).trimmed();
    // ="0123" is how spread-sheets are told to keep the zeros.
    if (raw.size() >= 3 && raw.startsWith("=\"") && raw.back() == '"')
        return text(raw.sliced(2, raw.size() - 3)).trimmed();
    return text(raw).trimmed();
}

CsvFile::Cells CsvFile::cells(int row) const {
    const auto at = qsizetype(m_rows[size_t(row)].at);
    Scan found;
    scan(at, found);
    Cells cells;
    cells.texts.reserve(qsizetype(found.cells.size()));
    bool readable = true;
    for (const QByteArrayView cell : found.cells) {
        cells.texts.append(decoded(cell));
        readable = readable && !cells.texts.back().contains(QChar::ReplacementCharacter);
    }
    if (found.fault == RowFault::TextAfterQuote)
        cells.fault = u"「\"」の後に文字があります"_s;
    else if (QByteArrayView(m_bytes).sliced(at, found.next - at).contains('\0'))
        cells.fault = u"NUL文字があります"_s;
    else if (!readable)
        cells.fault = u"読めない文字があります"_s;
    return cells;
}

QByteArray CsvFile::encoded(const QString &text) const {
    QString quoted = text;
    quoted.replace(u'"', u"\"\""_s);
    quoted = u'"' + quoted + u'"';
    return m_encoding == CsvEncoding::Utf8 ? quoted.toUtf8() : encode932(quoted).bytes;
}

QByteArray CsvFile::rest(const std::vector<Rest> &rows, int reasonAt) const {
    QByteArray bytes = m_bytes.left(m_begin);
    size_t width = 0;
    Scan row;
    for (const auto &[number, reason] : rows) {
        scan(m_rows[size_t(number)].at, row);
        if (reasonAt >= 0 && size_t(reasonAt) < row.cells.size())
            row.cells.erase(row.cells.begin() + reasonAt);
        // The first one, of the headings, says how many there are.
        width = width == 0 ? row.cells.size() : width;
        row.cells.resize(std::max(width, row.cells.size()));
        for (const QByteArrayView cell : row.cells)
            bytes.append(cell).append(m_delimiter);
        bytes += encoded(reason) + "\r\n";
    }
    return bytes;
}
