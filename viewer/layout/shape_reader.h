#pragma once

#include "app/base/result.h"
#include "viewer/layout/layout.h"
#include "viewer/layout/tag.h"

/// The elements of a layout, each from its tag. What is wrong is left in the tag.

/// Font and size of texts that name none.
struct TextDefaults {
    QString font;
    double size; // points
};

namespace limits {
constexpr Tag::Range position{-2000, 2000}; // mm
constexpr Tag::Range length{0, 2000};       // mm
constexpr Tag::Range height{0.5, 2000};     // mm, of sections
constexpr Tag::Range fontSize{1, 400};      // points
} // namespace limits

bool isShape(QStringView element);
/// The pieces of a text come from its content, by readPieces.
decltype(Element::shape) readShape(Tag &tag, const TextDefaults &defaults);

/// The condition of an element, none when it has no `when`.
std::optional<ShowWhen> readWhen(Tag &tag);

/// Splits "…{患者名}…" into words and items. A failure tells of a brace that is not closed or holds no item.
Result<std::vector<TextPiece>> readPieces(const QString &content);
