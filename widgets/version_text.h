#pragma once

#include <QString>

class Folders;

/// The program's version and where this installation keeps what, for who helps with it: database (never a
/// password), folders, system.
QString installationText(const Folders &folders);

/// What is new in this version, from CHANGES.ja.md.
QString changesText();

/// What a start has to say of versions, mostly nothing: that another PC works with a newer one, or, once for
/// each user after an update, that there is news to read. Notes which version works here.
QString versionNews(const Folders &folders);

/// The licence of the program and of what it uses.
QString licenceText();
