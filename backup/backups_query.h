#pragma once

#include "app/base/result.h"

/// How many consents an embedded database file holds; a failure says why it cannot be read.
Result<qint64> countConsents(const QString &file);
