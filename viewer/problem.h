#pragma once

#include <QString>

/// What is wrong with a file, for the user.
struct Problem {
    QString file;   ///< path or name; may be empty
    int line = 0;   ///< from 1; 0 when no line is meant
    int column = 0; ///< from 1; 0 when the line as a whole is meant
    QString text;   ///< a sentence

    /// "file（3行 5文字目）：text"
    QString sentence() const;
};
