#pragma once

#include "db/tables/patient/consent_words.h"

#include <QHash>
#include <vector>

/// A table of which a history is kept, as the office calls it and its columns.
class TableWords {
public:
    /// Of a table that the program does not know its own name is all that there is.
    explicit TableWords(const QString &table);

    const QString &noun() const { return m_noun; }
    /// What the key beside patient and branch is the code of.
    ColumnKind keyKind() const { return m_keyKind; }

    /// A column that the program does not know is called by its name.
    ColumnWords of(const QString &column) const;
    /// Where a column stands among the others; those that nobody knows come last.
    int placeOf(const QString &column) const;

    /// The columns by which a new or a deleted row is told.
    bool tells(const QString &column) const { return m_telling.contains(column, Qt::CaseInsensitive); }

private:
    void add(const ColumnWords &words);

    QString m_noun;
    ColumnKind m_keyKind = ColumnKind::Text;
    QStringList m_telling;
    std::vector<ColumnWords> m_words;
    QHash<QString, int> m_places; ///< by the columns' names in small letters
};
