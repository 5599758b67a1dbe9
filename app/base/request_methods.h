#pragma once

#include "app/base/result.h"

#include <QStringList>

class Folders;

/// The practice's list of ways to ask for a consent, from 同意依頼方法list.ini.
/// A row's method number is 0 for none, otherwise the position in this list counted from 1.
struct RequestMethods {
    /// Entries that the file may have.
    static constexpr int most = 500;

    QStringList texts;      ///< an empty one: the number stands for nothing
    QStringList oddities{}; ///< what was wrong in the file and how it was read, in the user's words

    /// The text of a method number; empty for 0 and for numbers that the list does not have.
    QString text(int number) const {
        return number >= 1 && number <= texts.size() ? texts[number - 1] : QString();
    }
    /// How a row itself says it is to be asked for: its own texts, else the method chosen for it.
    QString ofRow(const QString &own, int number) const { return own.isEmpty() ? text(number) : own; }
};

/// Reads the list; without the file it is empty. Entries keep their number whatever NUM says and whatever is
/// missing between them.
Result<RequestMethods> readRequestMethods(const Folders &folders);

/// Writes the list whole; comments and what the list does not know stay in the file. The texts must be such
/// as the file can hold, see whyMethodIsWrong(). A failure leaves the file as it was.
Result<> writeRequestMethods(const Folders &folders, const QStringList &texts);

/// A typed text as the file will hold it: without blanks round it, in characters of code page 932.
QString normalMethod(const QString &typed);

/// Why a normal text cannot be an entry, in the user's words; empty when it can.
QString whyMethodIsWrong(const QString &text);
