#pragma once

#include <QString>

class Folders;

/// The connection string of adodb.ini in the program folder; empty, with a reason for the user, when there is
/// none.
QString readConnectionString(const Folders &folders, QString *reason);
