#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

/// The signs of a data file, as bytes. A quote of 0 means that nothing is quoted.
struct FieldSigns {
    char separator = ',';
    char quote = '"';
    bool utf8 = false; ///< the text is UTF-8, not code page 932

    QString decode(QByteArrayView bytes) const;
    qsizetype characterLength(QByteArrayView bytes, qsizetype at) const;
};

enum class FieldFault { None, QuoteNotClosed, TextAfterQuote, TooMany };

/// More than any document has.
constexpr size_t mostFields = 4096;

/// Where the line that holds `at` ends: at its line end or behind the last byte.
qsizetype lineEnd(QByteArrayView bytes, qsizetype at);
/// The beginning of the next line.
qsizetype nextLine(QByteArrayView bytes, qsizetype lineEnd);

/// Where the field that begins at `at` of a line ends: at its separator or at the line's end.
qsizetype fieldEnd(QByteArrayView line, qsizetype at, FieldSigns signs, FieldFault *fault);

/// The fields of a line as they stand in it. Stops at the first fault.
/// @param fields filled anew, so that a reader of many lines keeps one list
/// @return where the field at fault begins, or −1
qsizetype splitFields(QByteArrayView line, FieldSigns signs, std::vector<QByteArrayView> *fields,
                      FieldFault *fault);

/// A field's text: without its quotes (a doubled quote inside means one) and, when it has none, without the
/// blanks around it.
QString fieldText(QByteArrayView field, FieldSigns signs);
