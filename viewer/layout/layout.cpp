#include "viewer/layout/layout.h"

#include <QSet>
#include <algorithm>

namespace {

/// Names in the order in which they are met, each once.
class Names {
public:
    void add(const QString &name) {
        if (!name.isEmpty() && !m_seen.contains(name)) {
            m_seen.insert(name);
            m_names.append(name);
        }
    }
    const QStringList &all() const { return m_names; }

private:
    QSet<QString> m_seen;
    QStringList m_names;
};

void addItems(const Element &element, Names &names) {
    for (const ShowWhen &when : element.when)
        names.add(when.item);
    if (const auto *text = std::get_if<TextBox>(&element.shape)) {
        for (const TextPiece &piece : text->pieces)
            if (piece.isItem)
                names.add(piece.text);
    } else if (const auto *mark = std::get_if<MarkShape>(&element.shape)) {
        names.add(mark->item);
    } else if (const auto *image = std::get_if<ImageBox>(&element.shape)) {
        names.add(image->item);
    }
}

} // namespace

bool Layout::isList() const {
    return std::any_of(sections.begin(), sections.end(),
                       [](const Section &section) { return section.kind != Section::Page; });
}

QStringList Layout::items() const {
    Names names;
    for (const Section &section : sections) {
        names.add(section.by);
        for (const Element &element : section.elements)
            addItems(element, names);
    }
    if (watermark)
        names.add(watermark->item);
    return names.all();
}
