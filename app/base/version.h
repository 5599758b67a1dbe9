#pragma once

#include <QString>

class Folders;

/// The version text, key Version in section Version of Version.ini in the program folder; without it, a
/// sentence that says what is missing.
QString programVersion(const Folders &folders);
