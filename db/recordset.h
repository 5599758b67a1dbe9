#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

/// The rows of one SELECT, read whole. Texts lie in one block; a QString is made only when a cell is
/// looked at. Rows and columns count from 0.
class Recordset {
public:
    enum class Encoding { Utf8, Utf16 };

    bool isOpen() const { return m_open; }
    int rowCount() const { return m_columns.empty() ? 0 : int(m_cells.size() / size_t(m_columns.size())); }
    int columnCount() const { return int(m_columns.size()); }
    const QStringList &columns() const { return m_columns; }

    /// Position of a column by its name, ASCII case ignored (the first of equal names); −1 when there is
    /// none.
    int column(QStringView name) const;

    bool isNull(int row, int column) const { return cell(row, column).kind == Kind::Null; }
    /// Null gives a null QString; numbers are written out.
    QString text(int row, int column) const;
    /// Null and texts that begin with no number give 0; fractions are cut.
    qint64 number(int row, int column) const;
    double real(int row, int column) const;
    /// Null, empty and impossible dates give an invalid one.
    QDate date(int row, int column) const;

    void close() { *this = Recordset(); }

    /// @name For providers
    /// A provider opens with the column names and then appends cells row by row.
    ///@{
    void open(const QStringList &columns, Encoding encoding);
    void reserve(size_t rows, size_t textBytes);
    void appendNull();
    void appendInteger(qint64 value);
    void appendReal(double value);
    /// @param bytes length in bytes, of UTF-16 too
    void appendText(const void *data, size_t bytes);
    ///@}

private:
    enum class Kind : quint8 { Null, Integer, Real, Text };
    struct Cell {
        union {
            qint64 integer = 0;
            double real;
            quint64 offset; ///< into the block, in bytes
        };
        quint32 length = 0; ///< of the text, in bytes
        Kind kind = Kind::Null;
    };

    const Cell &cell(int row, int column) const {
        return m_cells[size_t(row) * size_t(m_columns.size()) + size_t(column)];
    }
    QString textOf(const Cell &cell) const;

    bool m_open = false;
    Encoding m_encoding = Encoding::Utf8;
    QStringList m_columns;
    std::vector<Cell> m_cells;
    std::vector<char> m_block;
};
