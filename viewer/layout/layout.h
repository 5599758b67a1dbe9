#pragma once

#include <QByteArray>
#include <QColor>
#include <QMarginsF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

/// A report layout as it was read: what stands where, in millimetres. It knows neither data nor painter.

/// Shows an element only when an item's value is one of `values` (or none of them, when `inverted`).
struct ShowWhen {
    QString item;
    QStringList values; ///< empty: when the value is filled
    bool inverted = false;
};

struct Stroke {
    enum Style { Solid, Dash, Dot };
    double width = 0.2; ///< mm; 0 draws none
    Style style = Solid;
    QColor color = Qt::black;
};

/// A piece of a text: words as they stand, or the value of an item.
struct TextPiece {
    QString text; ///< words, or the item's name
    bool isItem = false;
};

struct TextBox {
    QRectF area;
    std::vector<TextPiece> pieces;
    QString font;       ///< family name; 明朝 and ゴシック stand for the machine's own
    double size = 10.5; ///< points
    bool bold = false;
    QColor color = Qt::black;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    bool justify = false; ///< spreads the characters over the width
    /// Where a text may go on in a new line.
    enum class Wrap {
        No,
        Yes,  ///< as Japanese is set
        Parts ///< behind blanks alone: what an address or a name consists of stays whole
    };
    Wrap wrap = Wrap::No;
    bool shrink = false; ///< the text is set smaller until it fits; it is never cut
    bool vertical = false;
    double lineHeight = 1.3; ///< of the font size
};

struct LineShape {
    QPointF from, to;
    Stroke stroke;
};

struct BoxShape {
    enum Kind { Rectangle, Ellipse };
    Kind kind = Rectangle;
    QRectF area;
    Stroke stroke;
    std::optional<QColor> fill;
    double radius = 0; ///< of a rectangle's corners
};

/// Drawn when the item has one of the values: a circle round one printed era, a tick in a box.
struct MarkShape {
    enum Kind { Circle, Tick, Cross, Strike };
    Kind kind = Circle;
    QRectF area;
    QString item;
    QStringList values;
    Stroke stroke;
};

struct ImageBox {
    QRectF area;
    QString file; ///< beside the layout, or
    QString item; ///< whose value is the path of the picture
};

struct Element {
    std::vector<ShowWhen> when; ///< all of them: its own and those of the uses it came through
    std::variant<TextBox, LineShape, BoxShape, MarkShape, ImageBox> shape;
    int line = 0; ///< of the layout file, for messages
};

struct Section {
    enum Kind {
        Page,   ///< a whole sheet for every record; positions count from the paper's corner
        Head,   ///< at the top of every sheet of a list
        Group,  ///< before the records that share the value of `by`
        Detail, ///< one record
        Foot    ///< at the bottom of every sheet of a list
    };
    Kind kind = Page;
    enum First { Every, OnlyFirst, NotFirst };
    double height = 0;   ///< mm; not of a page
    First first = Every; ///< Head: on which sheets
    QString by;
    bool newPage = false;         ///< Group: begins a new sheet when the value changes
    bool repeated = true;         ///< Group: shown again at the top of the next sheet
    std::optional<ShowWhen> when; ///< Group: takes no room where it does not hold
    int line = 0;
    std::vector<Element> elements; ///< blocks are resolved
};

struct Watermark {
    QString text; ///< 見本
    QString item; ///< shown when the item's value is one of the values
    QStringList values;
};

struct Layout {
    QString name;      ///< file name, for messages
    QByteArray source; ///< the bytes that were read, which a finished document carries
    QString title;
    QString dataName; ///< the source whose records are printed; empty: the first
    QSizeF paper{210, 297};
    bool paperGiven = false;           ///< false: the command file's paper decides
    bool landscape = false;            ///< already applied to `paper` when that is given
    QMarginsF margins{10, 10, 10, 10}; ///< of lists
    std::vector<Section> sections;
    std::optional<Watermark> watermark;

    bool isList() const;
    /// Every item that the layout names, once.
    QStringList items() const;
    /// Those that the data should have: not what only a condition asks for, nor what is shown only when it is
    /// there.
    QStringList neededItems() const;
};
