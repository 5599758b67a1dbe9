#pragma once

#include <QString>

/// The database interface's error number for an SQL state, e.g. −2147217900 for syntax and unknown names;
/// −2147467259 (unspecified) for states without one of their own.
qint32 adoErrorNumber(QStringView sqlState);
