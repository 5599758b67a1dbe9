#pragma once

#include "viewer/layout/layout.h"
#include "viewer/problem.h"

#include <QByteArray>

/// Reads a layout; the format stands in docs/layout-format.md.
/// @param name file name for messages
/// @param problem filled with line and column when it is none
std::optional<Layout> readLayout(const QByteArray &xml, const QString &name, Problem *problem);
