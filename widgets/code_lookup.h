#pragma once

#include <QString>

/// A row of a master table as a form names it: its code and the name beside it.
struct CodeName {
    QString code; ///< as the table writes it, leading noughts included
    QString name;

    friend bool operator==(const CodeName &, const CodeName &) = default;
};

/// What a typed code stands for, or why it stands for nothing.
struct CodeLookup {
    CodeName row;
    QString reason;      ///< a sentence for the user; empty when the code was found
    bool failed = false; ///< the question could not be answered: the reason is no judgement on the code

    bool found() const { return reason.isEmpty(); }
    static CodeLookup refused(const QString &why) { return {{}, why, false}; }
    static CodeLookup failure(const QString &why) { return {{}, why, true}; }
};
