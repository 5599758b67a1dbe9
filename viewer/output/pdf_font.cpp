#include "viewer/output/pdf_font.h"

#include "viewer/output/cff.h"

#include <QCryptographicHash>
#include <array>
#include <cmath>
#include <hb-subset.h>

namespace {

/// All that a PDF reader wants of a font; no more of it is read.
constexpr std::array<const char *, 10> tables{"CFF ", "cvt ", "fpgm", "glyf", "head",
                                              "hhea", "hmtx", "loca", "maxp", "prep"};

template <auto destroy> struct Destroy {
    template <class Type> void operator()(Type *object) const { destroy(object); }
};
using Blob = std::unique_ptr<hb_blob_t, Destroy<hb_blob_destroy>>;
using FontFile = std::unique_ptr<hb_face_t, Destroy<hb_face_destroy>>;
using SubsetInput = std::unique_ptr<hb_subset_input_t, Destroy<hb_subset_input_destroy>>;

/// The tables that a program needs, owned by the face: of a table that is asked for anew each time, HarfBuzz
/// goes on reading what it has let go.
FontFile tablesOf(const QRawFont &font, const QByteArray &cff) {
    FontFile face(hb_face_builder_create());
    for (const char *name : tables) {
        const hb_tag_t tag = hb_tag_from_string(name, -1);
        auto *bytes = new QByteArray(tag == HB_TAG('C', 'F', 'F', ' ') ? cff : font.fontTable(name));
        const Blob blob(hb_blob_create(bytes->constData(), unsigned(bytes->size()), HB_MEMORY_MODE_READONLY,
                                       bytes, [](void *data) { delete static_cast<QByteArray *>(data); }));
        if (hb_blob_get_length(blob.get()) > 0) // of nothing, the bytes are gone already
            hb_face_builder_add_table(face.get(), tag, blob.get());
    }
    return face;
}

QByteArray bytesOf(hb_blob_t *blob) {
    unsigned size = 0;
    const char *bytes = hb_blob_get_data(blob, &size);
    return QByteArray(bytes, qsizetype(size));
}

qint16 number16(const QByteArray &table, qsizetype at) {
    return at + 1 < table.size() ? qint16(quint8(table[at]) << 8 | quint8(table[at + 1])) : qint16(0);
}

/// The space that all signs of the font take, in thousandths of its size.
QByteArray boundingBox(const QRawFont &font) {
    constexpr qsizetype unitsPlace = 18, boxPlace = 36;
    const QByteArray head = font.fontTable("head");
    const double scale = 1000.0 / std::max<int>(number16(head, unitsPlace), 1);
    QByteArray box = "[";
    for (qsizetype i = 0; i < 4; ++i)
        pdf::append(box, number16(head, boxPlace + 2 * i) * scale, 0);
    return box + "]";
}

} // namespace

PdfFont::PdfFont(PdfFile &file, const Face &face)
    : m_file(file),
      m_face(face),
      m_object(file.reserve()),
      m_cff(face.font().fontTable("CFF ")),
      m_numbers(glyphNumbers(m_cff)) {}

quint16 PdfFont::code(quint32 glyph, char32_t sign) {
    const quint16 code = m_numbers && glyph < m_numbers->size() ? (*m_numbers)[glyph] : quint16(glyph);
    if (!m_uses.contains(code))
        m_uses.insert(code, {glyph, sign});
    return code;
}

QByteArray PdfFont::subset() const {
    const FontFile font = tablesOf(m_face.font(), m_cff);
    const SubsetInput input(hb_subset_input_create_or_fail());
    if (!input)
        return {};
    for (const Use &use : m_uses)
        hb_set_add(hb_subset_input_glyph_set(input.get()), use.glyph);
    hb_subset_input_set_flags(input.get(), m_numbers
                                               ? HB_SUBSET_FLAGS_NO_HINTING
                                               : HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_RETAIN_GIDS);
    const FontFile smaller(hb_subset_or_fail(font.get(), input.get()));
    if (!smaller)
        return {};
    const Blob blob(isCff() ? hb_face_reference_table(smaller.get(), HB_TAG('C', 'F', 'F', ' '))
                            : hb_face_reference_blob(smaller.get()));
    return bytesOf(blob.get());
}

int PdfFont::addProgram() {
    const QByteArray program = subset();
    return isCff() ? m_file.addStream("/Subtype /CIDFontType0C", program)
                   : m_file.addStream("/Length1 " + QByteArray::number(program.size()), program);
}

/// With the mark of a font that is not there whole: six letters that differ with the glyphs.
QByteArray PdfFont::name() const {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const Use &use : m_uses)
        hash.addData(QByteArray::number(use.glyph) + ' ');
    QByteArray name;
    for (const char byte : hash.result().first(6))
        name += char('A' + quint8(byte) % 26);
    name += '+';
    const QString plain = m_face.font().familyName() + u'-' + m_face.font().styleName();
    for (const QChar c : plain)
        if (c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-'))
            name += c.toLatin1();
    return name;
}

/// Signs that are not as wide as high.
QByteArray PdfFont::widths() const {
    QByteArray widths = "[";
    for (auto use = m_uses.begin(); use != m_uses.end(); ++use) {
        const auto advances = m_face.font().advancesForGlyphIndexes({use->glyph}, QRawFont::UseDesignMetrics);
        const double width = advances.isEmpty() ? 1000 : advances[0].x() * 1000 / Face::unitsPerEm;
        if (std::lround(width) == 1000)
            continue;
        widths += QByteArray::number(use.key()) + " [";
        pdf::append(widths, width, 2);
        widths += "] ";
    }
    return widths + "]";
}

/// The table by which a reader finds and copies the signs.
QByteArray PdfFont::meanings() const {
    constexpr int mostInBlock = 100;
    QByteArray map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                     "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                     "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                     "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    auto left = int(m_uses.size());
    int inBlock = 0;
    for (auto use = m_uses.begin(); use != m_uses.end(); ++use) {
        if (inBlock == 0)
            map += QByteArray::number(std::min(left, mostInBlock)) + " beginbfchar\n";
        map += '<';
        pdf::appendHex(map, use.key());
        map += "> <";
        for (const QChar c : QString::fromUcs4(&use->sign, 1))
            pdf::appendHex(map, c.unicode());
        map += ">\n";
        --left;
        inBlock = inBlock + 1 == mostInBlock ? 0 : inBlock + 1;
        if (inBlock == 0 || left == 0)
            map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

void PdfFont::write() {
    const QByteArray fontName = name();
    const QByteArray program = (isCff() ? "/FontFile3 " : "/FontFile2 ") + pdf::reference(addProgram());
    const int descriptor =
        m_file.add("<< /Type /FontDescriptor /FontName /" + fontName + " /Flags 4 /FontBBox " +
                   boundingBox(m_face.font()) +
                   " /ItalicAngle 0 /Ascent 880 /Descent -120 /CapHeight 700 /StemV 80 " + program + " >>");
    const QByteArray kind = isCff() ? "/CIDFontType0" : "/CIDFontType2 /CIDToGIDMap /Identity";
    const int descendant = m_file.add(
        "<< /Type /Font /Subtype " + kind + " /BaseFont /" + fontName +
        " /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> /FontDescriptor " +
        pdf::reference(descriptor) + " /DW 1000 /W " + widths() + " >>");
    const int map = m_file.addStream({}, meanings());
    m_file.write(m_object, "<< /Type /Font /Subtype /Type0 /BaseFont /" + fontName +
                               " /Encoding /Identity-H /DescendantFonts [" + pdf::reference(descendant) +
                               "] /ToUnicode " + pdf::reference(map) + " >>");
}
