#pragma once

#include "app/base/massage_ini.h"

#include <QString>

/// The suite's folders. System folders are named by lines of Massage.ini in the program folder; a
/// relative value is taken below the program folder, a missing line means the program folder itself.
class Folders {
public:
    /// @param program the program folder; Massage.ini is read there, now (missing: every folder is the
    /// program folder)
    explicit Folders(const QString &program);

    /// $DOUISHO_FOLDER when set, else the folder of the executable. Of a program that was installed for all
    /// who use the PC: a folder of this user's own, which may not be there yet.
    static QString programFolderOfThisRun();

    const QString &program() const { return m_program; }
    QString system() const { return systemFolder(u"SYSTEM_SYS"); }
    QString temporary() const { return systemFolder(u"SYSTEM_TMP"); }
    QString icons() const { return systemFolder(u"SYSTEM_ICON"); }
    QString data() const { return systemFolder(u"SYSTEM_DATA"); }

    /// A folder by its line of Massage.ini, full path without closing separator.
    QString systemFolder(QStringView key) const;

    /// Full path of a file in a folder; where there is a file or folder whose name differs in case only, that
    /// one. Backslashes in `name` separate folders.
    static QString file(const QString &folder, const QString &name);

private:
    QString m_program;
    MassageIni m_settings;
};
