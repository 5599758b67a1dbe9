#pragma once

#include <QByteArray>

namespace setup {

/// Pictures of the installation as bytes of BMP files.
/// @name Tick cells, 32 × 32.
///@{
QByteArray tickOff();
QByteArray tickOn();
///@}

/// Wall-paper of the background form, 1280 × 800 with a palette of greens and blues.
QByteArray wallPaper();

} // namespace setup
