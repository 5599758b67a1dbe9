#pragma once

#include <QStringList>

class Folders;

/// The practice's list of ways to ask for a consent, from 同意依頼方法list.ini.
/// A row's method number is 0 for none, otherwise the position in this list counted from 1.
struct RequestMethods {
    QStringList texts;

    /// The text of a method number; empty for 0 and for numbers that the list does not have.
    QString text(int number) const {
        return number >= 1 && number <= texts.size() ? texts[number - 1] : QString();
    }
};

/// Reads the list; without the file it is empty. At most 500 entries count.
/// @param reason filled when the file is there but cannot be read
RequestMethods readRequestMethods(const Folders &folders, QString *reason);
