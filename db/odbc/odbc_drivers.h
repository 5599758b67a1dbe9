#pragma once

#include <QStringList>

/// Names of the drivers that the driver manager knows.
QStringList installedOdbcDrivers();
