#pragma once

#include "app/base/file_write.h"

#include <QString>

/// The lines of a command file for the report engine; code page 932, CR LF.
class CommandFile {
public:
    /// A line as it stands; its arguments come from text() and path().
    void add(const QString &line);
    /// Names a data source of the layout. @param headerless its file has no header row
    void addSource(const QString &name, const QString &path, bool headerless);
    /// The line added last once more.
    void repeatLast();

    /// A text argument in its quotes, made safe for them.
    static QString text(const QString &text);
    /// A path argument in its quotes. A path that the engine could not read back makes write() fail.
    QString path(const QString &path);

    /// Writes the file for its owner alone. A failure names the file, or the path that cannot be passed on.
    Result<> write(const QString &path, FileWriter how = writeFileWhole) const;

private:
    QString m_text;
    QString m_last;
    QString m_unfitPath;
};
