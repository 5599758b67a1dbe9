#include "db/recordset.h"

#include "app/base/dates.h"

#include <algorithm>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

int Recordset::column(QStringView name) const {
    for (int i = 0; i < columnCount(); ++i)
        if (m_columns[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QString Recordset::textOf(const Cell &cell) const {
    if (cell.length == 0)
        return u""_s;
    if (m_encoding == Encoding::Utf8)
        return QString::fromUtf8(cell.text, qsizetype(cell.length));
    // A block of UTF-16 holds texts of even lengths only, so that the cast is aligned.
    return QString(reinterpret_cast<const QChar *>(cell.text), qsizetype(cell.length / 2));
}

QString Recordset::text(int row, int column) const {
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return QString::number(c.integer);
    case Kind::Real:
        return QString::number(c.real, 'g', 15);
    case Kind::Text:
        return textOf(c);
    }
    return {};
}

qint64 Recordset::number(int row, int column) const {
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null:
        return 0;
    case Kind::Integer:
        return c.integer;
    case Kind::Real:
        return qint64(c.real);
    case Kind::Text:
        return qint64(textOf(c).trimmed().toDouble());
    }
    return 0;
}

double Recordset::real(int row, int column) const {
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null:
        return 0;
    case Kind::Integer:
        return double(c.integer);
    case Kind::Real:
        return c.real;
    case Kind::Text:
        return textOf(c).trimmed().toDouble();
    }
    return 0;
}

bool Recordset::sameCell(const Recordset &left, int leftRow, const Recordset &right, int rightRow,
                         int column) {
    const Cell &one = left.cell(leftRow, column);
    const Cell &other = right.cell(rightRow, column);
    if (one.kind != other.kind || one.length != other.length)
        return false;
    switch (one.kind) {
    case Kind::Null:
        return true;
    case Kind::Integer:
    case Kind::Real: // bit by bit: an untouched number does not change
        return one.integer == other.integer;
    case Kind::Text:
        return one.length == 0 || std::memcmp(one.text, other.text, one.length) == 0;
    }
    return false;
}

QDate Recordset::date(int row, int column) const {
    const Cell &c = cell(row, column);
    if (c.kind != Kind::Text || c.length == 0)
        return {};
    // Read in place: a list of ten thousand rows has several dates a row.
    if (m_encoding == Encoding::Utf8)
        return dateFromDatabase(QLatin1StringView(c.text, qsizetype(c.length)));
    return dateFromDatabase(QStringView(reinterpret_cast<const QChar *>(c.text), qsizetype(c.length / 2)));
}

void Recordset::open(const QStringList &columns, Encoding encoding) {
    close();
    m_open = true;
    m_columns = columns;
    m_encoding = encoding;
}

void Recordset::beginPart() {
    const bool first = m_cells.empty();
    m_cells.emplace_back();
    // Most recordsets are a row or two; one that has filled a part will fill more.
    if (!first)
        m_cells.back().reserve(rowsInPart * size_t(m_columns.size()));
}

// Blocks double from a page to a megabyte; a longer text gets one of its own.
char *Recordset::roomFor(size_t bytes) {
    if (bytes > m_freeBytes) {
        constexpr size_t smallest = 4096, steps = 8;
        const size_t size = std::max(bytes, smallest << std::min(m_blocks.size(), steps));
        m_free = m_blocks.emplace_back(std::make_shared_for_overwrite<char[]>(size)).get();
        m_freeBytes = size;
    }
    char *room = m_free;
    m_free += bytes;
    m_freeBytes -= bytes;
    return room;
}

void Recordset::appendInteger(qint64 value) {
    Cell &c = append();
    c.integer = value;
    c.kind = Kind::Integer;
}

void Recordset::appendReal(double value) {
    Cell &c = append();
    c.real = value;
    c.kind = Kind::Real;
}

void Recordset::appendText(const void *data, size_t bytes) {
    Cell &c = append();
    c.length = quint32(bytes);
    c.kind = Kind::Text;
    if (bytes == 0)
        return;
    char *room = roomFor(bytes);
    std::memcpy(room, data, bytes);
    c.text = room;
}
