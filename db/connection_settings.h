#pragma once

#include "app/base/result.h"

class Folders;

/// The connection string of adodb.ini in the program folder, or why there is none.
Result<QString> readConnectionString(const Folders &folders);
