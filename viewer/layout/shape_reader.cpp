#include "viewer/layout/shape_reader.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

using Shape = decltype(Element::shape);

constexpr Tag::Range lineWidth{0, 50};    // mm
constexpr Tag::Range lineHeight{0.5, 10}; // of the font size

/// Values that are no column's.
constexpr std::array<QStringView, 4> builtIn{u"#page", u"#pages", u"#record", u"#today"};

bool isItemName(QStringView name) {
    if (name.isEmpty() || name.contains(u'{') || name.contains(u'\n'))
        return false;
    return name[0] != u'#' || std::find(builtIn.begin(), builtIn.end(), name) != builtIn.end();
}

QString readItem(Tag &tag, QStringView attribute) {
    const QString item = tag.text(attribute);
    if (!isItemName(item))
        tag.fail(attribute, u"「%1」は項目の名前ではありません。"_s.arg(item));
    return item;
}

QRectF readArea(Tag &tag) {
    const double x = tag.number(u"x", limits::position);
    const double y = tag.number(u"y", limits::position);
    const double w = tag.number(u"w", limits::length);
    const double h = tag.number(u"h", limits::length);
    return {x, y, w, h};
}

Stroke readStroke(Tag &tag, double width = 0.2) {
    Stroke stroke;
    stroke.width = tag.number(u"width", lineWidth, width);
    stroke.style = tag.choice(u"style", Stroke::Solid,
                              {{u"solid", Stroke::Solid}, {u"dash", Stroke::Dash}, {u"dot", Stroke::Dot}});
    stroke.color = tag.color(u"color", Qt::black);
    return stroke;
}

Shape readText(Tag &tag, const TextDefaults &defaults) {
    TextBox box;
    box.area = readArea(tag);
    box.font = tag.text(u"font", defaults.font);
    box.size = tag.number(u"size", limits::fontSize, defaults.size);
    box.bold = tag.yes(u"bold");
    box.color = tag.color(u"color", Qt::black);
    enum Across { Left, Center, Right, Justify };
    const Across across = tag.choice(
        u"align", Left, {{u"left", Left}, {u"center", Center}, {u"right", Right}, {u"justify", Justify}});
    constexpr std::array<Qt::AlignmentFlag, 4> flags{Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                                     Qt::AlignLeft};
    box.justify = across == Justify;
    box.alignment =
        flags[size_t(across)] |
        tag.choice(u"valign", Qt::AlignVCenter,
                   {{u"top", Qt::AlignTop}, {u"middle", Qt::AlignVCenter}, {u"bottom", Qt::AlignBottom}});
    using enum TextBox::Wrap;
    box.wrap = tag.choice(u"wrap", No, {{u"no", No}, {u"yes", Yes}, {u"parts", Parts}});
    box.shrink = tag.yes(u"shrink");
    box.vertical = tag.yes(u"vertical");
    box.lineHeight = tag.number(u"line-height", lineHeight, box.lineHeight);
    return box;
}

Shape readLine(Tag &tag, const TextDefaults &) {
    LineShape line;
    line.from.setX(tag.number(u"x1", limits::position));
    line.from.setY(tag.number(u"y1", limits::position));
    line.to.setX(tag.number(u"x2", limits::position));
    line.to.setY(tag.number(u"y2", limits::position));
    line.stroke = readStroke(tag);
    return line;
}

Shape readBox(Tag &tag, const TextDefaults &) {
    BoxShape box;
    box.kind = tag.name() == "rect"_L1 ? BoxShape::Rectangle : BoxShape::Ellipse;
    box.area = readArea(tag);
    box.stroke = readStroke(tag);
    if (tag.has(u"fill"))
        box.fill = tag.color(u"fill", Qt::white);
    if (box.kind == BoxShape::Rectangle)
        box.radius = tag.number(u"radius", limits::length, 0);
    return box;
}

Shape readMark(Tag &tag, const TextDefaults &) {
    MarkShape mark;
    mark.area = readArea(tag);
    tag.required(u"item");
    mark.item = readItem(tag, u"item");
    tag.required(u"equals");
    mark.values = tag.list(u"equals");
    mark.kind = tag.choice(u"shape", MarkShape::Circle,
                           {{u"circle", MarkShape::Circle},
                            {u"tick", MarkShape::Tick},
                            {u"cross", MarkShape::Cross},
                            {u"strike", MarkShape::Strike}});
    mark.stroke.width = tag.number(u"width", lineWidth, 0.35);
    mark.stroke.color = tag.color(u"color", Qt::black);
    return mark;
}

Shape readImage(Tag &tag, const TextDefaults &) {
    ImageBox image;
    image.area = readArea(tag);
    if (tag.has(u"file") == tag.has(u"item"))
        tag.fail({}, u"<image>には属性fileかitemのどちらか一方が必要です。"_s);
    else if (tag.has(u"file"))
        image.file = tag.required(u"file");
    else
        image.item = readItem(tag, u"item");
    return image;
}

struct ShapeKind {
    QStringView element;
    Shape (*read)(Tag &, const TextDefaults &);
};

constexpr std::array<ShapeKind, 6> kinds{{
    {u"text", readText},
    {u"line", readLine},
    {u"rect", readBox},
    {u"ellipse", readBox},
    {u"mark", readMark},
    {u"image", readImage},
}};

const ShapeKind *kindOf(QStringView element) {
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [element](const ShapeKind &k) { return k.element == element; });
    return kind == kinds.end() ? nullptr : kind;
}

} // namespace

bool isShape(QStringView element) {
    return kindOf(element) != nullptr;
}

Shape readShape(Tag &tag, const TextDefaults &defaults) {
    return kindOf(tag.name())->read(tag, defaults);
}

std::optional<ShowWhen> readWhen(Tag &tag) {
    // A mark's own values decide about the mark, not about the condition.
    const bool isMark = tag.name() == "mark"_L1;
    if (!tag.has(u"when"))
        return {};
    ShowWhen when;
    when.item = readItem(tag, u"when");
    when.inverted = tag.has(u"not");
    if (when.inverted && !isMark && tag.has(u"equals"))
        tag.fail(u"not", u"属性equalsとnotは同時に使えません。"_s);
    if (when.inverted)
        when.values = tag.list(u"not");
    else if (!isMark)
        when.values = tag.list(u"equals");
    return when;
}

Result<std::vector<TextPiece>> readPieces(const QString &content) {
    std::vector<TextPiece> pieces;
    QString words;
    for (qsizetype at = 0; at < content.size();) {
        if (content[at] != u'{') {
            words += content[at++];
            continue;
        }
        if (content.mid(at + 1, 1) == u'{') {
            words += u'{';
            at += 2;
            continue;
        }
        const qsizetype end = content.indexOf(u'}', at);
        const QString item = end < 0 ? QString() : content.mid(at + 1, end - at - 1).trimmed();
        if (!isItemName(item))
            return Failure{end < 0 ? u"「{」が閉じていません。「{」そのものは「{{」と書きます。"_s
                                   : u"「{%1}」は項目ではありません。"_s.arg(item)};
        if (!words.isEmpty())
            pieces.push_back({std::exchange(words, {}), false});
        pieces.push_back({item, true});
        at = end + 1;
    }
    if (!words.isEmpty())
        pieces.push_back({words, false});
    return pieces;
}
