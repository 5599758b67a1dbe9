#include "viewer/search/page_text.h"

#include "app/base/text.h"

#include <algorithm>

namespace {

bool isHalfWidth(QChar c) {
    return c < QChar(0x80) || (c >= QChar(0xFF61) && c <= QChar(0xFF9F));
}

int widthOf(QStringView text) {
    int width = 0;
    for (const QChar c : text)
        width += isHalfWidth(c) ? 1 : 2;
    return width;
}

bool isVertical(const TextRun &run) {
    return run.text.size() > 1 && run.area.height() > 1.5 * run.area.width();
}

/// One line of writing: runs side by side whose middles lie within each other.
struct Line {
    QRectF area;
    std::vector<std::pair<double, QString>> parts; ///< by left edge

    bool holds(const QRectF &other) const {
        return other.center().y() > area.top() && other.center().y() < area.bottom();
    }
};

QString textOf(std::vector<Line> &lines) {
    std::ranges::stable_sort(lines, {}, [](const Line &line) { return line.area.center().y(); });
    QStringList texts;
    for (Line &line : lines) {
        std::ranges::stable_sort(line.parts, {}, &std::pair<double, QString>::first);
        QStringList parts;
        for (const auto &part : line.parts)
            parts.append(part.second);
        texts.append(parts.join(u'\t'));
    }
    return texts.join(u'\n');
}

} // namespace

QRectF partOfRun(const TextRun &run, qsizetype from, qsizetype length) {
    const QStringView text(run.text);
    const double all = qMax(1, widthOf(text));
    const double start = widthOf(text.first(from)) / all;
    const double size = widthOf(text.sliced(from, length)) / all;
    const QRectF &area = run.area;
    if (isVertical(run))
        return {area.left(), area.top() + start * area.height(), area.width(), size * area.height()};
    return {area.left() + start * area.width(), area.top(), size * area.width(), area.height()};
}

QList<QRectF> findText(const std::vector<TextRun> &runs, const QString &folded) {
    QList<QRectF> areas;
    for (const TextRun &run : runs) {
        const QString text = foldForSearch(run.text);
        for (qsizetype at = text.indexOf(folded); at >= 0; at = text.indexOf(folded, at + folded.size())) {
            const qsizetype from = unfoldedIndex(run.text, at);
            areas.append(partOfRun(run, from, unfoldedIndex(run.text, at + folded.size()) - from));
        }
    }
    return areas;
}

TextSelection selectText(const std::vector<TextRun> &runs, const QRectF &area) {
    TextSelection selection;
    std::vector<Line> lines;
    for (const TextRun &run : runs) {
        if (!run.area.intersects(area))
            continue;
        qsizetype from = 0, end = run.text.size();
        while (from < end && !area.contains(partOfRun(run, from, 1).center()))
            ++from;
        while (end > from && !area.contains(partOfRun(run, end - 1, 1).center()))
            --end;
        if (from == end)
            continue;
        const QRectF part = partOfRun(run, from, end - from);
        selection.areas.append(part);
        auto line = std::ranges::find_if(lines, [&](const Line &known) { return known.holds(part); });
        if (line == lines.end())
            line = lines.insert(lines.end(), {part, {}});
        line->parts.emplace_back(part.left(), run.text.sliced(from, end - from));
    }
    selection.text = textOf(lines);
    return selection;
}
