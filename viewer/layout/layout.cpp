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

QStringList contentItems(const Element &element) {
    QStringList items;
    if (const auto *text = std::get_if<TextBox>(&element.shape)) {
        for (const TextPiece &piece : text->pieces)
            if (piece.isItem)
                items.append(piece.text);
    } else if (const auto *mark = std::get_if<MarkShape>(&element.shape)) {
        items.append(mark->item);
    } else if (const auto *image = std::get_if<ImageBox>(&element.shape)) {
        items.append(image->item);
    }
    return items;
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
        if (section.when)
            names.add(section.when->item);
        for (const Element &element : section.elements) {
            for (const ShowWhen &when : element.when)
                names.add(when.item);
            for (const QString &item : contentItems(element))
                names.add(item);
        }
    }
    if (watermark)
        names.add(watermark->item);
    return names.all();
}

QStringList Layout::neededItems() const {
    Names names;
    const auto isAskedFor = [this](const Element &element, const QString &item) {
        return (watermark && watermark->item == item) ||
               std::any_of(element.when.begin(), element.when.end(),
                           [&item](const ShowWhen &when) { return when.item == item; });
    };
    for (const Section &section : sections) {
        names.add(section.by);
        for (const Element &element : section.elements)
            for (const QString &item : contentItems(element))
                if (!isAskedFor(element, item))
                    names.add(item);
    }
    return names.all();
}
