#include "viewer/layout/blocks.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostParts = 50'000; // blocks that use blocks multiply
constexpr qsizetype deepest = 32;

void move(Element &element, QPointF by) {
    if (auto *line = std::get_if<LineShape>(&element.shape)) {
        line->from += by;
        line->to += by;
        return;
    }
    std::visit(
        [by](auto &shape) {
            if constexpr (requires { shape.area; })
                shape.area.translate(by);
        },
        element.shape);
}

} // namespace

bool Blocks::add(const QString &name, std::vector<BlockPart> parts) {
    if (m_blocks.contains(name))
        return false;
    m_blocks.insert(name, std::move(parts));
    return true;
}

std::optional<Problem> Blocks::resolve(const std::vector<BlockPart> &parts, std::vector<Element> *elements) {
    append(parts, {}, elements);
    return m_problem;
}

void Blocks::append(const std::vector<BlockPart> &parts, const Place &place, std::vector<Element> *elements) {
    for (const BlockPart &part : parts) {
        if (++m_steps > mostParts)
            fail(part, u"要素が多すぎます（%1個まで）。"_s.arg(mostParts));
        if (m_problem)
            return;
        if (!part.block.isEmpty()) {
            use(part, place, elements);
            continue;
        }
        Element element = part.element;
        move(element, place.offset);
        element.when.insert(element.when.begin(), place.when.begin(), place.when.end());
        elements->push_back(std::move(element));
    }
}

void Blocks::use(const BlockPart &part, const Place &place, std::vector<Element> *elements) {
    const auto block = m_blocks.constFind(part.block);
    if (block == m_blocks.constEnd())
        return fail(part, u"ブロック「%1」がありません。"_s.arg(part.block));
    if (m_open.contains(part.block))
        return fail(part, u"ブロック「%1」が自分自身に戻ります（%2）。"_s.arg(
                              part.block, (m_open + QStringList(part.block)).join(u" → "_s)));
    if (m_open.size() >= deepest)
        return fail(part, u"ブロックの入れ子が深すぎます（%1段まで）。"_s.arg(deepest));
    Place inner{place.offset + part.offset, place.when};
    inner.when.insert(inner.when.end(), part.element.when.begin(), part.element.when.end());
    m_open.append(part.block);
    append(*block, inner, elements);
    m_open.removeLast();
}

void Blocks::fail(const BlockPart &part, const QString &text) {
    if (!m_problem)
        m_problem = Problem{{}, part.line, part.column, text};
}
