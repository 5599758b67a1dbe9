#include "print/engine/data_file.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "print/engine/engine_text.h"

DataFile::DataFile(const QStringList &header) : m_columns(header.size()) {
    for (const QString &name : header)
        addText(name);
    endLine();
}

void DataFile::add(std::span<const DataValue> record) {
    Q_ASSERT(qsizetype(record.size()) == m_columns);
    for (const DataValue &value : record) {
        if (const auto *text = std::get_if<QString>(&value)) {
            addText(*text);
        } else {
            m_bytes += QByteArray::number(std::get<qint64>(value));
            m_bytes += ',';
        }
    }
    endLine();
    ++m_count;
}

Result<> DataFile::write(const QString &path) const {
    return writeFileWhole(path, m_bytes, FileUse::Private);
}

void DataFile::addText(const QString &text) {
    const Encoded932 encoded = encode932(engineText(text));
    if (encoded.touched && !m_touched.contains(text))
        m_touched.append(text);
    m_bytes += '"';
    m_bytes += encoded.bytes;
    m_bytes += "\",";
}

void DataFile::endLine() {
    // The last field's separator gives way to the line end.
    m_bytes.chop(1);
    m_bytes += "\r\n";
}
