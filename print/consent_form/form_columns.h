#pragma once

#include <QStringList>

/// The 100 items of the consent form's data file, in order.
const QStringList &consentFormColumns();
