#pragma once

#include <QString>

class Folders;

/// Where this installation keeps what, for who helps with it: database (never a password), folders, system.
QString installationText(const Folders &folders);

/// The licence of the program and of what it uses.
QString licenceText();
