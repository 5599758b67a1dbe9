#include "viewer/layout/paper.h"

#include <QString>
#include <array>

namespace {

struct Paper {
    QStringView name;
    double width, height;
};

constexpr double smallest = 20, largest = 2000; // mm

constexpr std::array<Paper, 8> papers{{
    {u"A3", 297, 420},
    {u"A4", 210, 297},
    {u"A5", 148, 210},
    {u"B4", 257, 364},
    {u"B5", 182, 257},
    {u"角2", 240, 332},
    {u"長3", 120, 235},
    {u"はがき", 100, 148},
}};

std::optional<double> side(QStringView text) {
    bool isNumber = false;
    const double length = text.toDouble(&isNumber);
    if (!isNumber || !(length >= smallest && length <= largest))
        return {};
    return length;
}

} // namespace

std::optional<QSizeF> paperSize(QStringView name) {
    const QStringView wanted = name.trimmed();
    for (const Paper &paper : papers)
        if (wanted.compare(paper.name, Qt::CaseInsensitive) == 0)
            return QSizeF(paper.width, paper.height);
    const qsizetype times = wanted.indexOf(u'x');
    if (times < 0)
        return {};
    const auto width = side(wanted.first(times));
    const auto height = side(wanted.sliced(times + 1));
    if (!width || !height)
        return {};
    return QSizeF(*width, *height);
}
