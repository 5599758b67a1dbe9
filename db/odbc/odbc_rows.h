#pragma once

#include "db/odbc/odbc_api.h"
#include "db/provider.h"
#include "db/recordset.h"

#include <QList>
#include <vector>

/// Reads the result set of an executed statement into a Recordset, a block of rows a call.
///
/// A column's reported size is a hint: drivers say 0 or 2 GB for unbounded texts, and too little for
/// computed ones. Texts are bound with room for a usual value; one that did not fit is fetched again by
/// itself where the driver can read single cells of a block. Where it cannot, rows come one at a time as
/// soon as a text without a trusty bound is among the columns, and everything from that column on is
/// fetched in order, cell by cell, which is the least that every driver can do.
class OdbcRowReader {
public:
    OdbcRowReader(SQLHSTMT statement, bool readsCellsOfBlocks)
        : m_statement(statement), m_readsCellsOfBlocks(readsCellsOfBlocks) {}

    /// False leaves the reasons in errors(), and rows that are not complete.
    bool readAll(Recordset &rows);

    const QList<ProviderError> &errors() const { return m_errors; }

private:
    enum class Kind : quint8 { Integer, Bit, Real, Decimal, Timestamp, Text };
    struct Column {
        QString name;
        Kind kind = Kind::Text;
        SQLULEN size = 0;     ///< in characters as the driver reports it
        size_t capacity = 0;  ///< bytes at `offset`
        size_t offset = 0;    ///< of the value in a row of the block
        size_t indicator = 0; ///< of its length or null indicator
        bool bound = true;
    };

    bool failed();
    bool describe();
    bool describeColumn(SQLUSMALLINT number, Column &column);
    void chooseCapacities();
    bool bind();
    bool appendBlock(Recordset &rows, size_t count);
    bool appendRow(Recordset &rows, size_t row);
    bool appendCell(Recordset &rows, size_t row, SQLUSMALLINT number);
    bool appendText(Recordset &rows, size_t row, SQLUSMALLINT number, SQLLEN length);
    bool fetchCell(size_t row, SQLUSMALLINT number, SQLLEN &length);
    bool fetchText(SQLUSMALLINT number, bool &isNull);

    char *rowStart(size_t row) { return m_block.data() + row * m_rowBytes; }

    SQLHSTMT m_statement;
    bool m_readsCellsOfBlocks;
    std::vector<Column> m_columns;
    std::vector<char> m_block; ///< rows of values and indicators
    size_t m_rowBytes = 0;
    size_t m_blockRows = 1;
    std::vector<SQLUSMALLINT> m_rowStatus;
    SQLULEN m_fetched = 0;
    std::vector<char> m_longText;
    size_t m_longTextBytes = 0;
    QList<ProviderError> m_errors;
};
