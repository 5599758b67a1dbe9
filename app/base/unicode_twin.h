#pragma once

#include <QByteArray>
#include <QString>

/// The same data file once more, in UTF-8: it lies beside a data file some of whose characters code page 932
/// lacks, and is read by our viewer and image builder alone. Its first line tells the bytes that it belongs
/// to, and its own: one that an earlier document left says nothing about another's data, and one that is cut
/// off nothing at all.
namespace UnicodeTwin {

/// The twin's place.
inline QString pathFor(const QString &dataFile) {
    return dataFile + QStringLiteral(".utf8");
}
/// @param data the data file's bytes
/// @param text the same in UTF-8
QByteArray of(QByteArrayView data, QByteArrayView text);
/// The text of the twin that lies beside a data file; empty when there is none or it is another's.
QByteArray textBeside(const QString &dataFile, QByteArrayView data);

/// Stands in programs that read twins, by which they are told from others of their name.
inline constexpr char mark[] = "douisho: reads the Unicode twins of data files, 1";

} // namespace UnicodeTwin
