#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// How many consent rows use each method number.
using MethodUses = QHash<int, int>;

/// The request method list while it is edited. Consent rows store an entry's number, so a number that rows
/// use keeps its entry: it cannot be moved, and a removed one leaves its number empty. New entries come at
/// the end. Operations that may refuse give why, in the user's words, or an empty text when they are done.
class MethodList {
public:
    MethodList() = default;
    MethodList(const QStringList &texts, const MethodUses &uses);

    /// Entries count from 0; their numbers from 1.
    const QStringList &texts() const { return m_texts; }
    int uses(int entry) const { return m_uses.value(entry + 1); }

    QString add(const QString &typed);
    QString change(int entry, const QString &typed);
    /// Removes the entry where its number is the last and no row uses it; elsewhere the number stays empty.
    void remove(int entry);
    /// Exchanges an entry with the one above (by −1) or below (by 1).
    QString move(int entry, int by);

    bool changed() const { return m_texts != m_read; }
    /// Numbers that rows use and that would come to mean something else, as "3　ＦＡＸ → メール（12 件）".
    /// @param uses as they are now: rows may have come to use a number since the list was opened
    QStringList newMeanings(const MethodUses &uses) const;

private:
    QString whyNot(const QString &text, int except) const;
    QString whyFixed(int entry) const;

    QStringList m_read;
    QStringList m_texts;
    MethodUses m_uses;
};

/// The individual methods of a row, as it stores them, joined with ",".
QStringList ownMethodsOf(const QString &stored);
/// An empty list gives an empty text.
QString storedOwnMethods(const QStringList &methods);
