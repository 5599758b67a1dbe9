#include "viewer/data/fields.h"

#include "app/base/codepage932.h"

namespace {

qsizetype skipBlanks(QByteArrayView line, qsizetype at, char separator) {
    while (at < line.size() && line[at] == ' ' && separator != ' ')
        ++at;
    return at;
}

/// Behind the closing quote of the text that begins behind its opening quote; −1 when there is none.
qsizetype closingQuote(QByteArrayView line, qsizetype at, FieldSigns signs) {
    while (at < line.size()) {
        if (line[at] != signs.quote)
            at += signs.characterLength(line, at);
        else if (at + 1 < line.size() && line[at + 1] == signs.quote)
            at += 2;
        else
            return at + 1;
    }
    return -1;
}

} // namespace

QString FieldSigns::decode(QByteArrayView bytes) const {
    return utf8 ? QString::fromUtf8(bytes) : decode932(bytes);
}

// In UTF-8 no byte of a longer character is one of the signs.
qsizetype FieldSigns::characterLength(QByteArrayView bytes, qsizetype at) const {
    return utf8 ? 1 : characterLength932(bytes, at);
}

qsizetype lineEnd(QByteArrayView bytes, qsizetype at) {
    while (at < bytes.size() && bytes[at] != '\n' && bytes[at] != '\r')
        ++at;
    return at;
}

qsizetype nextLine(QByteArrayView bytes, qsizetype lineEnd) {
    const bool pair = lineEnd + 1 < bytes.size() && bytes[lineEnd] == '\r' && bytes[lineEnd + 1] == '\n';
    return lineEnd + (pair ? 2 : 1);
}

qsizetype fieldEnd(QByteArrayView line, qsizetype at, FieldSigns signs, FieldFault *fault) {
    qsizetype end = skipBlanks(line, at, signs.separator);
    *fault = FieldFault::None;
    if (signs.quote != 0 && end < line.size() && line[end] == signs.quote) {
        end = closingQuote(line, end + 1, signs);
        if (end < 0) {
            *fault = FieldFault::QuoteNotClosed;
            return line.size();
        }
        end = skipBlanks(line, end, signs.separator);
        if (end < line.size() && line[end] != signs.separator)
            *fault = FieldFault::TextAfterQuote;
        return end;
    }
    while (end < line.size() && line[end] != signs.separator)
        end += signs.characterLength(line, end);
    return end;
}

qsizetype splitFields(QByteArrayView line, FieldSigns signs, std::vector<QByteArrayView> *fields,
                      FieldFault *fault) {
    fields->clear();
    for (qsizetype at = 0;;) {
        const qsizetype end = fieldEnd(line, at, signs, fault);
        if (fields->size() == mostFields)
            *fault = FieldFault::TooMany;
        if (*fault != FieldFault::None)
            return at;
        fields->push_back(line.sliced(at, end - at));
        if (end >= line.size())
            return -1;
        at = end + 1;
    }
}

QString fieldText(QByteArrayView field, FieldSigns signs) {
    QByteArrayView bare = field;
    while (bare.startsWith(' '))
        bare = bare.sliced(1);
    while (bare.endsWith(' '))
        bare.chop(1);
    if (signs.quote == 0 || bare.size() < 2 || bare[0] != signs.quote)
        return signs.decode(bare);
    const QString quoted = signs.decode(bare.sliced(1, bare.size() - 2));
    const QChar sign = QLatin1Char(signs.quote);
    if (!quoted.contains(sign))
        return quoted;
    QString text;
    text.reserve(quoted.size());
    for (qsizetype i = 0; i < quoted.size(); ++i) {
        text += quoted[i];
        if (quoted[i] == sign && i + 1 < quoted.size() && quoted[i + 1] == sign)
            ++i;
    }
    return text;
}
