#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace setup {

/// Where a file of an installation lies.
enum class Place { Program, Data };

/// A text file of an installation, before it is encoded.
struct TextFile {
    Place place;
    QString name; ///< below its folder, parts separated by "/"
    QString text; ///< lines end in CR LF
};

/// Lines as they end in settings files.
QString lines(const QStringList &list);

struct MailSender {
    QString name, address;
};

/// The settings files of a new installation without that of the connection, Massage.ini first.
/// @param edition follows the name in Version.ini; may be empty
/// @param branch lines of Massage.ini that name it; without them it is the first one in use
QList<TextFile> settingsFiles(const QString &edition, const MailSender &sender,
                              const QStringList &branch = {});

} // namespace setup
