#pragma once

#include <QByteArray>
#include <QStringList>

namespace setup {

/// The layouts of the practice's documents, by their files' names.
QStringList layoutNames();
QByteArray layoutBytes(const QString &name);

} // namespace setup
