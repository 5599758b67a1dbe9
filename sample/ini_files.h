#pragma once

#include <QDate>
#include <QList>
#include <QString>

namespace sample {

/// A text file of the installation, before it is encoded.
struct TextFile {
    QString path; ///< below the installation folder, parts separated by "/"
    QString text; ///< lines end in CR LF
};

/// Names of the folders below the installation folder.
namespace SampleFolder {
inline constexpr QStringView system = u"SYS";
inline constexpr QStringView temporary = u"TMP";
inline constexpr QStringView icons = u"ICON";
inline constexpr QStringView data = u"DATA";
} // namespace SampleFolder

/// The settings files of an installation whose database lies at the given full path.
QList<TextFile> settingsFiles(const QString &database);

} // namespace sample
