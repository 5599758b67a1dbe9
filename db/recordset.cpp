#include "db/recordset.h"

#include "app/base/dates.h"

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
    const char *data = m_block.data() + cell.offset;
    if (m_encoding == Encoding::Utf8)
        return QString::fromUtf8(data, qsizetype(cell.length));
    // The block is kept at even offsets in UTF-16, so that the cast is aligned.
    return QString(reinterpret_cast<const QChar *>(data), qsizetype(cell.length / 2));
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

QDate Recordset::date(int row, int column) const {
    const Cell &c = cell(row, column);
    if (c.kind != Kind::Text || c.length == 0)
        return {};
    // Read in place: a list of ten thousand rows has several dates a row.
    const char *data = m_block.data() + c.offset;
    if (m_encoding == Encoding::Utf8)
        return dateFromDatabase(QLatin1StringView(data, qsizetype(c.length)));
    return dateFromDatabase(QStringView(reinterpret_cast<const QChar *>(data), qsizetype(c.length / 2)));
}

void Recordset::open(const QStringList &columns, Encoding encoding) {
    close();
    m_open = true;
    m_columns = columns;
    m_encoding = encoding;
}

void Recordset::reserve(size_t rows, size_t textBytes) {
    m_cells.reserve(rows * size_t(m_columns.size()));
    m_block.reserve(textBytes);
}

void Recordset::appendNull() {
    m_cells.emplace_back();
}

void Recordset::appendInteger(qint64 value) {
    Cell &c = m_cells.emplace_back();
    c.integer = value;
    c.kind = Kind::Integer;
}

void Recordset::appendReal(double value) {
    Cell &c = m_cells.emplace_back();
    c.real = value;
    c.kind = Kind::Real;
}

void Recordset::appendText(const void *data, size_t bytes) {
    Cell &c = m_cells.emplace_back();
    c.offset = m_block.size();
    c.length = quint32(bytes);
    c.kind = Kind::Text;
    const char *from = static_cast<const char *>(data);
    m_block.insert(m_block.end(), from, from + bytes);
}
