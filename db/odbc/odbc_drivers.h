#pragma once

#include <QStringList>

/// Names of the drivers that the driver manager knows.
QStringList installedOdbcDrivers();

/// Why a connection by this driver failed, when it is because the driver is not installed, and what to do;
/// empty otherwise, and for a library's path.
QString whyDriverIsMissing(const QString &driver, const QStringList &installed);
