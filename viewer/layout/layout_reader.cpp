#include "viewer/layout/layout_reader.h"

#include "viewer/layout/blocks.h"
#include "viewer/layout/paper.h"
#include "viewer/layout/shape_reader.h"
#include "viewer/layout/tag.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype largestLayout = 4 << 20; // bytes

class Reader {
public:
    explicit Reader(const QString &text) : m_text(text), m_xml(text) {}

    std::optional<Layout> read();
    Problem problem;

private:
    struct PendingSection {
        Section section;
        std::vector<BlockPart> parts;
    };

    /// Offsets must not go back.
    Tag::Place placeOf(qsizetype offset);
    qsizetype offset() const;
    bool failAsXml();
    bool next();
    Tag tag() const;
    void readLayout();
    void readSheet(Tag &tag);
    void readMargins(Tag &tag);
    void readChild();
    void readSection(Section::Kind kind);
    void readBlock();
    void readWatermark();
    std::vector<BlockPart> readParts();
    void readPart(std::vector<BlockPart> &parts);
    void readContent(TextBox &box);
    void readEmpty(const QString &element);
    bool closed(Tag &tag);
    bool resolve();
    bool checkSections();
    bool fail(Tag::Place place, const QString &text);
    bool failed() const { return !problem.text.isEmpty(); }

    const QString &m_text;
    QXmlStreamReader m_xml;
    Tag::Place m_place;      ///< of the token that was read last
    qsizetype m_offset = 0;  ///< where it begins
    qsizetype m_counted = 0; ///< up to here lines have been counted
    Tag::Place m_counter{1, 1};
    Layout m_layout;
    TextDefaults m_defaults;
    Tag::Place m_root;
    Blocks m_blocks;
    std::vector<PendingSection> m_sections;
};

bool Reader::fail(Tag::Place place, const QString &text) {
    if (!failed())
        problem = {{}, place.line, place.column, text};
    return false;
}

Tag::Place Reader::placeOf(qsizetype offset) {
    for (; m_counted < std::min(offset, m_text.size()); ++m_counted) {
        if (m_text[m_counted] == u'\n')
            m_counter = {m_counter.line + 1, 1};
        else if (!m_text[m_counted].isLowSurrogate())
            ++m_counter.column;
    }
    return m_counter;
}

qsizetype Reader::offset() const {
    return std::min<qsizetype>(m_xml.characterOffset(), m_text.size());
}

bool Reader::failAsXml() {
    return fail(placeOf(offset()), u"XMLとして読めません。"_s + m_xml.errorString());
}

/// Reads the next tag. False at the end and when something is wrong.
bool Reader::next() {
    while (!failed()) {
        qsizetype begin = offset();
        switch (m_xml.readNext()) {
        case QXmlStreamReader::Invalid:
            return failAsXml();
        case QXmlStreamReader::DTD:
            return fail(placeOf(m_text.indexOf(u"<!DOCTYPE"_s)), u"DOCTYPEは使えません。"_s);
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::Characters:
            while (begin < m_text.size() && m_text[begin].isSpace())
                ++begin;
            if (!m_xml.isWhitespace())
                return fail(placeOf(begin), u"ここに文字は書けません。文字は<text>の中に書きます。"_s);
            break;
        case QXmlStreamReader::StartElement:
        case QXmlStreamReader::EndElement:
            // The reader may have looked ahead of the tag before it read it, never behind it.
            m_offset = std::max<qsizetype>(m_text.lastIndexOf(u'<', offset() - 1), 0);
            m_place = placeOf(m_offset);
            return true;
        default:
            break;
        }
    }
    return false;
}

Tag Reader::tag() const {
    const qsizetype end = offset();
    return Tag(m_xml.qualifiedName().toString(), m_xml.attributes(), m_place,
               QStringView(m_text).mid(m_offset, end - m_offset));
}

bool Reader::closed(Tag &tag) {
    if (const auto &found = tag.close())
        return fail({found->line, found->column}, found->text);
    return true;
}

std::optional<Layout> Reader::read() {
    if (next())
        readLayout();
    while (next()) {
    }
    if (!failed() && resolve() && checkSections())
        return m_layout;
    return {};
}

void Reader::readLayout() {
    if (m_xml.qualifiedName() != "layout"_L1) {
        fail(m_place, u"レイアウトは<layout>で始まります。"_s);
        return;
    }
    m_root = m_place;
    Tag root = tag();
    if (root.required(u"version") != u"1")
        root.fail(u"version", u"この版のレイアウトは読めません（version=\"1\"だけ）。"_s);
    m_layout.title = root.text(u"title");
    m_layout.dataName = root.text(u"data");
    readSheet(root);
    readMargins(root);
    m_defaults = {root.text(u"font", u"明朝"_s), root.number(u"size", limits::fontSize, 10.5)};
    if (!closed(root))
        return;
    while (next() && m_xml.isStartElement())
        readChild();
}

void Reader::readSheet(Tag &root) {
    m_layout.landscape =
        root.choice<bool>(u"orientation", false, {{u"portrait", false}, {u"landscape", true}});
    m_layout.paperGiven = root.has(u"paper");
    if (!m_layout.paperGiven)
        return;
    const QString name = root.text(u"paper");
    const auto sheet = paperSize(name);
    if (!sheet)
        root.fail(u"paper", u"用紙「%1」はありません。"_s.arg(name.left(40)));
    else
        m_layout.paper = m_layout.landscape ? sheet->transposed() : *sheet;
}

void Reader::readMargins(Tag &root) {
    if (!root.has(u"margins"))
        return;
    const QStringList words = root.text(u"margins").split(u' ', Qt::SkipEmptyParts);
    std::vector<double> sides;
    for (const QString &word : words) {
        bool isNumber = false;
        const double side = word.toDouble(&isNumber);
        if (isNumber && side >= 0 && side <= limits::length.most)
            sides.push_back(side);
    }
    if (words.size() == 4 && sides.size() == 4)
        m_layout.margins = {sides[3], sides[0], sides[1], sides[2]};
    else
        root.fail(u"margins", u"属性marginsには上・右・下・左の4つの数を書きます。"_s);
}

void Reader::readChild() {
    const QStringView name = m_xml.qualifiedName();
    if (name == "page"_L1)
        readSection(Section::Page);
    else if (name == "head"_L1)
        readSection(Section::Head);
    else if (name == "group"_L1)
        readSection(Section::Group);
    else if (name == "detail"_L1)
        readSection(Section::Detail);
    else if (name == "foot"_L1)
        readSection(Section::Foot);
    else if (name == "block"_L1)
        readBlock();
    else if (name == "watermark"_L1)
        readWatermark();
    else
        fail(m_place, u"<layout>の中に<%1>は置けません。"_s.arg(name));
}

void Reader::readSection(Section::Kind kind) {
    Tag opening = tag();
    Section section;
    section.kind = kind;
    section.line = opening.place().line;
    if (kind != Section::Page)
        section.height = opening.number(u"height", limits::height);
    if (kind == Section::Head)
        section.first = opening.choice(u"first", Section::Every,
                                       {{u"only", Section::OnlyFirst}, {u"not", Section::NotFirst}});
    if (kind == Section::Group) {
        section.by = opening.required(u"by");
        section.newPage = opening.yes(u"new-page");
        section.repeated = opening.yes(u"repeat", true);
        section.when = readWhen(opening);
    }
    if (closed(opening))
        m_sections.push_back({std::move(section), readParts()});
}

void Reader::readBlock() {
    Tag opening = tag();
    const QString name = opening.required(u"name");
    if (!closed(opening))
        return;
    if (!m_blocks.add(name, readParts()))
        fail(opening.place(), u"ブロック「%1」が2つあります。"_s.arg(name));
}

void Reader::readWatermark() {
    Tag opening = tag();
    if (m_layout.watermark)
        opening.fail({}, u"<watermark>は1つだけ置けます。"_s);
    m_layout.watermark = Watermark{opening.required(u"text"), opening.required(u"item"), {}};
    opening.required(u"equals");
    m_layout.watermark->values = opening.list(u"equals");
    if (closed(opening))
        readEmpty(opening.name());
}

std::vector<BlockPart> Reader::readParts() {
    std::vector<BlockPart> parts;
    while (next() && m_xml.isStartElement())
        readPart(parts);
    return parts;
}

void Reader::readPart(std::vector<BlockPart> &parts) {
    Tag opening = tag();
    BlockPart part;
    part.line = opening.place().line;
    part.column = opening.place().column;
    if (opening.name() == "use"_L1) {
        part.block = opening.required(u"block");
        part.offset = {opening.number(u"x", limits::position, 0), opening.number(u"y", limits::position, 0)};
    } else if (isShape(opening.name())) {
        part.element.shape = readShape(opening, m_defaults);
        part.element.line = part.line;
    } else {
        fail(opening.place(), u"要素<%1>はありません。"_s.arg(opening.name()));
        return;
    }
    if (const auto when = readWhen(opening))
        part.element.when.push_back(*when);
    if (!closed(opening))
        return;
    if (auto *box = std::get_if<TextBox>(&part.element.shape); box && part.block.isEmpty())
        readContent(*box);
    else
        readEmpty(opening.name());
    parts.push_back(std::move(part));
}

/// Takes away the file's own line breaks and the blanks beside them; those written as &#10; are still signs.
QString withoutFileBreaks(QStringView content) {
    QString joined;
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    const auto lines = content.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringView line = lines[i];
        while (i > 0 && !line.isEmpty() && isBlank(line.front()))
            line = line.sliced(1);
        while (i + 1 < lines.size() && !line.isEmpty() && isBlank(line.back()))
            line.chop(1);
        joined += line;
    }
    return joined;
}

void Reader::readContent(TextBox &box) {
    const Tag::Place place = m_place;
    const qsizetype begin = offset();
    qsizetype end = begin;
    do {
        end = offset();
        m_xml.readNext();
    } while (m_xml.isCharacters() || m_xml.isComment());
    if (!m_xml.isEndElement()) {
        if (m_xml.hasError())
            failAsXml();
        else
            fail(place, u"<text>の中に要素は置けません。"_s);
        return;
    }
    const QString content = withoutFileBreaks(QStringView(m_text).mid(begin, end - begin));
    // Read by themselves, the signs written as &#10; and &lt; are told from those of the file.
    QXmlStreamReader signs(u"<t>"_s + content + u"</t>"_s);
    signs.readNextStartElement();
    if (const auto pieces = readPieces(signs.readElementText()))
        box.pieces = *pieces;
    else
        fail(place, pieces.reason());
}

void Reader::readEmpty(const QString &element) {
    if (next() && !m_xml.isEndElement())
        fail(m_place, u"<%1>の中に要素は置けません。"_s.arg(element));
}

bool Reader::resolve() {
    for (PendingSection &pending : m_sections) {
        if (const auto found = m_blocks.resolve(pending.parts, &pending.section.elements))
            return fail({found->line, found->column}, found->text);
        m_layout.sections.push_back(std::move(pending.section));
    }
    return true;
}

bool Reader::checkSections() {
    if (m_layout.sections.empty())
        return fail(m_root, u"<page>も<detail>もありません。"_s);
    const bool list = m_layout.isList();
    bool hasDetail = false;
    double height = m_layout.margins.top() + m_layout.margins.bottom();
    for (const Section &section : m_layout.sections) {
        if (list && section.kind == Section::Page)
            return fail({section.line, 0},
                        u"<page>と一覧の<head>・<group>・<detail>・<foot>は一緒に使えません。"_s);
        hasDetail = hasDetail || section.kind == Section::Detail;
        if (section.first != Section::OnlyFirst)
            height += section.height;
    }
    if (list && !hasDetail)
        return fail(m_root, u"一覧には<detail>が必要です。"_s);
    if (list && height > m_layout.paper.height() && m_layout.paperGiven)
        return fail(m_root,
                    u"余白と<head>・<group>・<detail>・<foot>の高さの合計が用紙の高さを超えています。"_s);
    return true;
}

/// The text with LF line ends; none when the bytes are not UTF-8.
std::optional<QString> decode(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return {};
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

} // namespace

std::optional<Layout> readLayout(const QByteArray &xml, const QString &name, Problem *problem) {
    std::optional<Layout> layout;
    Problem found;
    if (xml.size() > largestLayout) {
        found.text = u"レイアウトが大きすぎます（4MBまで）。"_s;
    } else if (const auto text = decode(xml); !text) {
        found.text = u"UTF-8で書かれていません。"_s;
    } else {
        Reader reader(*text);
        layout = reader.read();
        found = reader.problem;
    }
    if (layout) {
        layout->name = name;
        layout->source = xml;
    } else if (problem) {
        *problem = found;
        problem->file = name;
    }
    return layout;
}
