#include "print/engine/data_file.h"

#include "app/base/near_characters.h"
#include "app/base/person_items.h"
#include "app/base/unicode_twin.h"
#include "print/engine/engine_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const DataValue &value) {
    const auto *text = std::get_if<QString>(&value);
    return text ? engineText(*text) : QString::number(std::get<qint64>(value));
}

} // namespace

DataFile::DataFile(const QStringList &header) : m_header(header) {
    for (const QString &name : header)
        addText(name);
    endLine();
}

void DataFile::add(std::span<const DataValue> record) {
    Q_ASSERT(qsizetype(record.size()) == m_header.size());
    const size_t before = m_replaced.size();
    for (const DataValue &value : record) {
        if (const auto *text = std::get_if<QString>(&value))
            addText(*text);
        else
            append(QByteArray::number(std::get<qint64>(value)).append(','));
    }
    endLine();
    ++m_count;
    if (m_replaced.size() > before)
        for (const QString who = whose(record); auto &text : std::span(m_replaced).subspan(before))
            text.whose = who;
}

Result<> DataFile::write(const QString &path, const Folders &folders, FileWriter how) const {
    if (!hasTwin())
        return how(path, m_bytes, FileUse::Private);
    const NearTexts near = NearCharacters::read(folders).texts;
    const QByteArray bytes = encode932(nearText932(QString::fromUtf8(m_unicode), near)).bytes;
    if (Result<> written =
            how(UnicodeTwin::pathFor(path), UnicodeTwin::of(bytes, m_unicode), FileUse::Private);
        !written)
        return written;
    return how(path, bytes, FileUse::Private);
}

void DataFile::addText(const QString &text) {
    const QString safe = engineText(text);
    const Encoded932 encoded = encode932(safe);
    if (encoded.touched) {
        m_replaced.push_back({{}, safe});
        if (!hasTwin())
            m_unicode = decode932(m_bytes).toUtf8();
        m_hasTwin = true;
    }
    m_bytes += '"';
    m_bytes += encoded.bytes;
    m_bytes += "\",";
    if (hasTwin())
        m_unicode += '"' + safe.toUtf8() + "\",";
}

/// Number and name; which record it is where it bears none.
QString DataFile::whose(std::span<const DataValue> record) const {
    QStringList parts;
    for (const auto &items : {personNumberItems, personNameItems})
        for (const QStringView item : items)
            if (const qsizetype column = m_header.indexOf(item); column >= 0)
                parts += textOf(record[size_t(column)]);
    parts.removeAll(QString());
    return parts.isEmpty() ? u"%1 件目"_s.arg(m_count) : parts.join(u'　');
}

void DataFile::append(QByteArrayView ascii) {
    m_bytes += ascii;
    if (hasTwin())
        m_unicode += ascii;
}

void DataFile::endLine() {
    // The last field's separator gives way to the line end.
    m_bytes.chop(1);
    if (hasTwin())
        m_unicode.chop(1);
    append("\r\n");
}
