#pragma once

#include <QFileInfo>
#include <QString>

/// Paper codes of the report engine's driver.
namespace PaperCode {
inline constexpr short asBefore = -1; ///< no paper line: the line before it is written again
inline constexpr short a4 = 0;
inline constexpr short a5 = 1;
inline constexpr short b5 = 2;
} // namespace PaperCode

/// The paper that a layout's file name asks for: "_B5", else "_A5", else A4.
inline short paperCodeOf(const QString &layout) {
    const QString name = QFileInfo(layout).fileName();
    if (name.contains(QLatin1String("_B5"), Qt::CaseInsensitive))
        return PaperCode::b5;
    return name.contains(QLatin1String("_A5"), Qt::CaseInsensitive) ? PaperCode::a5 : PaperCode::a4;
}
