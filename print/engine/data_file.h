#pragma once

#include "app/base/result.h"

#include <QStringList>
#include <span>
#include <variant>
#include <vector>

/// A field of a data file: a text, which is written in double quotes, or a number, which is written bare.
using DataValue = std::variant<QString, qint64>;

/// A data file for the report engine: header row, then records; code page 932, CR LF. A double quote inside a
/// text becomes ＂, a line break a blank.
class DataFile {
public:
    explicit DataFile(const QStringList &header);

    /// A record has as many values as the header; the caller sees to that.
    void add(std::span<const DataValue> record);
    int count() const { return m_count; }
    /// What write() writes.
    const QByteArray &bytes() const { return m_bytes; }
    /// Writes the file whole beside its place and moves it over.
    Result<> write(const QString &path) const;
    /// Texts in which a character that the code page lacks was replaced, each once.
    const QStringList &touched() const { return m_touched; }

private:
    void addText(const QString &text);
    void endLine();

    QByteArray m_bytes;
    qsizetype m_columns;
    int m_count = 0;
    QStringList m_touched;
};
