#pragma once

#include "app/base/codepage932.h"
#include "app/base/file_write.h"

#include <span>
#include <variant>
#include <vector>

/// A field of a data file: a text, which is written in double quotes, or a number, which is written bare.
using DataValue = std::variant<QString, qint64>;

class Folders;

/// A text of which code page 932 lacks characters, and whose it is.
struct ReplacedText {
    QString whose;
    QString text;
};

/// A data file for the report engine: header row, then records; code page 932, CR LF. A double quote inside a
/// text becomes ＂, a line break a blank. Where characters are lost, a twin in UTF-8 keeps them.
class DataFile {
public:
    explicit DataFile(const QStringList &header);

    /// A record has as many values as the header; the caller sees to that.
    void add(std::span<const DataValue> record);
    int count() const { return m_count; }
    /// What write() writes, but for near characters.
    const QByteArray &bytes() const { return m_bytes; }
    /// Writes the file with the installation's near characters, and its twin beside it where one is needed.
    Result<> write(const QString &path, const Folders &folders, FileWriter how = writeFileWhole) const;
    /// Whether there are characters to keep.
    bool hasTwin() const { return m_hasTwin; }
    /// Texts that the code page cannot hold as they are.
    const std::vector<ReplacedText> &replaced() const { return m_replaced; }

private:
    void addText(const QString &text);
    QString whose(std::span<const DataValue> record) const;
    void append(QByteArrayView ascii);
    void endLine();

    QStringList m_header;
    QByteArray m_bytes;
    QByteArray m_unicode; ///< the same in UTF-8, from the first lost character on
    bool m_hasTwin = false;
    int m_count = 0;
    std::vector<ReplacedText> m_replaced;
};
