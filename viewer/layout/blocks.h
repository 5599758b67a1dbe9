#pragma once

#include "viewer/layout/layout.h"
#include "viewer/problem.h"

#include <QHash>

/// What stands in a section or block as it was read: an element, or the use of a block.
struct BlockPart {
    QString block; ///< empty: the element
    QPointF offset;
    Element element; ///< of a use, only its conditions
    int line = 0, column = 0;
};

/// The named blocks of a layout.
class Blocks {
public:
    /// False when there is one of that name already.
    bool add(const QString &name, std::vector<BlockPart> parts);

    /// Puts the blocks' elements in the place of their uses.
    /// @return what is wrong: an unknown block, one that comes back to itself, too much of it
    std::optional<Problem> resolve(const std::vector<BlockPart> &parts, std::vector<Element> *elements);

private:
    struct Place {
        QPointF offset;
        std::vector<ShowWhen> when;
    };

    void append(const std::vector<BlockPart> &parts, const Place &place, std::vector<Element> *elements);
    void use(const BlockPart &part, const Place &place, std::vector<Element> *elements);
    void fail(const BlockPart &part, const QString &text);

    QHash<QString, std::vector<BlockPart>> m_blocks;
    QStringList m_open; ///< blocks that are being put in place, the innermost last
    int m_steps = 0;    ///< parts looked at so far
    std::optional<Problem> m_problem;
};
