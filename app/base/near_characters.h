#pragma once

#include "app/base/codepage932.h"

class Folders;

/// The characters that stand in, on paper, for those which code page 932 lacks: the built-in ones, and over
/// them the lines of 近似文字.txt in the data folder. That is a text in UTF-8 with lines such as 𠮷=吉; empty
/// lines and lines that begin with # say nothing.
struct NearCharacters {
    NearTexts texts;
    /// What is wrong with the file, a sentence a line that is not used.
    QStringList faults;

    static NearCharacters read(const Folders &folders);
    static NearCharacters builtIn();

    static QString fileName() { return QStringLiteral("近似文字.txt"); }
    /// The built-in ones as such a file, for a practice to extend.
    static QString builtInFile();
};
