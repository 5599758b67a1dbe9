#pragma once

#include <QSizeF>
#include <QStringView>
#include <optional>

/// The sheet of a paper's name (A3, A4, A5, B4, B5, 角2, 長3, はがき, or "240x332" for width x height in mm),
/// upright, in millimetres. None for another name or a size no sheet has.
std::optional<QSizeF> paperSize(QStringView name);
