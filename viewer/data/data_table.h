#pragma once

#include "viewer/data/fields.h"
#include "viewer/problem.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

/// How a data file separates its fields.
struct DataFormat {
    QChar separator = u',';
    QChar quote = u'"';
    bool header = true; ///< the first line holds the item names; without it they are 項目1, 項目2 …
    bool utf8 = false;  ///< the text is UTF-8, of a data file's twin
};

/// One record, its fields found once. Refers to the table's bytes.
class DataRecord {
public:
    /// Empty when there is no such column.
    QString value(int column) const;

private:
    friend class DataTable;
    std::vector<QByteArrayView> m_fields; ///< as they stand in the file, quotes and all
    FieldSigns m_signs;
};

/// The records of a data file (code page 932, or the twin's UTF-8; CR LF, LF or CR ends a line, empty lines
/// do not count). Only the bytes and where each record begins are kept; a value is decoded when it is looked
/// at.
class DataTable {
public:
    /// Reads the file's twin where one belongs to it. Null with a problem when the file cannot be read, a
    /// record has too few or too many fields, a quoted text does not end, or the bytes are no text of the
    /// code page.
    static std::shared_ptr<const DataTable> open(const QString &path, const DataFormat &format,
                                                 Problem *problem);
    static std::shared_ptr<const DataTable> fromBytes(const QByteArray &bytes, const QString &name,
                                                      const DataFormat &format, Problem *problem);

    const QStringList &columns() const { return m_columns; }
    /// −1 when there is none of that name.
    int column(QStringView name) const;
    int rowCount() const { return int(m_rows.size()); }
    QString value(int row, int column) const;
    /// For a reader of many values of one record.
    DataRecord record(int row) const;

    const QByteArray &bytes() const { return m_bytes; }
    const DataFormat &format() const { return m_format; }

private:
    QByteArray m_bytes;
    DataFormat m_format;
    QStringList m_columns;
    std::vector<quint32> m_rows; ///< where each record begins
};
