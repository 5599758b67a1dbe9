#pragma once

#include "import/import_columns.h"

class Folders;

/// How the files of one kind name their columns, kept by the practice under names: one for each program that
/// such files come from.
class ImportTypes {
public:
    ImportTypes(const Folders &folders, ImportKind kind)
        : m_folders(folders), m_description(describeImport(kind)) {}

    /// In the order in which they were first kept.
    QStringList names() const;
    /// A name that is there already is given the new columns.
    Result<> keep(const QString &name, const ImportColumns &columns) const;
    /// Assigns the columns as they were kept; false, and nothing changed, when the file lacks one of them.
    bool apply(const QString &name, ImportColumns &columns) const;

private:
    QString section(const QString &name) const { return m_description.noun + u'：' + name; }

    const Folders &m_folders;
    const ImportDescription &m_description;
};
