#pragma once

#include "import/stored_rows.h"

/// Finds out whether a row of the file is somebody who is in the database, or in an earlier row of the file.
class Identity {
public:
    Identity(const ImportDescription &description, const StoredRows &stored);

    struct Found {
        int stored = -1; ///< −1: new
        QString fault = {};
        QString note = {};
    };
    /// Remembers the row for those behind it, unless it is at fault.
    /// @param code the file's number, empty without one
    /// @param line of the file
    Found find(const QString &code, const QHash<QString, QString> &values, int line);

private:
    /// A row of the database, or of the file (stored −1).
    struct Person {
        QString code, name, kana, second; ///< as they are compared
        QString shownSecond;
        int stored = -1;
        int line = 0; ///< of the file, where it has named the person; 0: not yet
    };
    enum class Agreement { Same, Different, Unclear };

    Person personOf(const QString &code, const QHash<QString, QString> &values) const;
    size_t add(Person person);
    Agreement agreement(const Person &left, const Person &right) const;
    Found byCode(const Person &person, size_t known) const;
    Found byName(const Person &person) const;
    QString who(const Person &person) const;
    Found remembered(const Found &found, const Person &person, int line);

    const ImportDescription &m_description;
    std::vector<Person> m_people; ///< those of the database first, in their order
    QHash<QString, size_t> m_byCode;
    QHash<QString, std::vector<size_t>> m_byName, m_byReading;
};
