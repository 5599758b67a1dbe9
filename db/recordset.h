#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

/// The rows of one SELECT, read whole. Texts lie in a few large blocks; a QString is made only when a cell is
/// looked at. Rows and columns count from 0.
class Recordset {
public:
    enum class Encoding { Utf8, Utf16 };

    bool isOpen() const { return m_open; }
    int rowCount() const {
        if (m_cells.empty())
            return 0;
        return int((m_cells.size() - 1) * rowsInPart + m_cells.back().size() / size_t(m_columns.size()));
    }
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
    /// Whether two cells of recordsets of one connection hold the same; Null is only Null.
    static bool sameCell(const Recordset &left, int leftRow, const Recordset &right, int rightRow,
                         int column);
    /// Null, empty and impossible dates give an invalid one.
    QDate date(int row, int column) const;

    void close() { *this = Recordset(); }

    /// @name For providers
    /// A provider opens with the column names and then appends cells row by row.
    ///@{
    void open(const QStringList &columns, Encoding encoding);
    /// How many rows are likely to come; a hint.
    void reserve(size_t rows) { m_cells.reserve(rows / rowsInPart + 1); }
    void appendNull() { append(); }
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
            const char *text; ///< in one of the blocks
        };
        quint32 length = 0; ///< of the text, in bytes
        Kind kind = Kind::Null;
    };

    const Cell &cell(int row, int column) const {
        return m_cells[size_t(row) / rowsInPart]
                      [size_t(row) % rowsInPart * size_t(m_columns.size()) + size_t(column)];
    }
    Cell &append() {
        if (m_cells.empty() || m_cells.back().size() == rowsInPart * size_t(m_columns.size()))
            beginPart();
        return m_cells.back().emplace_back();
    }
    void beginPart();
    char *roomFor(size_t bytes);
    QString textOf(const Cell &cell) const;

    bool m_open = false;
    Encoding m_encoding = Encoding::Utf8;
    QStringList m_columns;
    // In parts, so that a growing recordset is never moved: that took a tenth of reading the consent list.
    static constexpr size_t rowsInPart = 256;
    std::vector<std::vector<Cell>> m_cells;
    std::vector<std::shared_ptr<char[]>> m_blocks; ///< never changed once written; copies share them
    char *m_free = nullptr;                        ///< in the last block
    size_t m_freeBytes = 0;
};
