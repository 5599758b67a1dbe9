#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

/// The numbers by which a CID-keyed CFF font program calls its glyphs (CIDs), one a glyph. None when the
/// program goes by glyph index, or is damaged.
std::optional<std::vector<quint16>> glyphNumbers(const QByteArray &cff);
