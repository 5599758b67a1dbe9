#include "masters/postal_codes.h"

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView folderName = u"郵便番号";
// Columns of the data.
constexpr int codeAt = 2, kanaAt = 3, namesAt = 6, columns = 9;

bool isBlankOrHyphen(QChar c) {
    return c.isSpace() || u"-－‐−ー〒"_s.contains(c);
}

/// Cells of a line; quotes inside quotes are no part of this data.
void split(QStringView line, std::vector<QStringView> &cells) {
    cells.clear();
    qsizetype begin = 0;
    bool quoted = false;
    for (qsizetype i = 0; i <= line.size(); ++i) {
        if (i < line.size() && line[i] == u'"')
            quoted = !quoted;
        if (i < line.size() && (line[i] != u',' || quoted))
            continue;
        QStringView cell = line.mid(begin, i - begin);
        if (cell.size() >= 2 && cell.startsWith(u'"') && cell.endsWith(u'"'))
            cell = cell.mid(1, cell.size() - 2);
        cells.push_back(cell);
        begin = i + 1;
        if (cells.size() == columns)
            return;
    }
}

bool isSound(const std::vector<QStringView> &cells) {
    return cells.size() == columns && cells[codeAt].size() == 7 &&
           std::ranges::all_of(cells[codeAt], [](QChar c) { return c >= u'0' && c <= u'9'; }) &&
           !cells[namesAt].isEmpty() && !cells[namesAt + 1].isEmpty() &&
           std::ranges::none_of(cells, [](QStringView cell) { return cell.contains(QChar(0xFFFD)); });
}

bool isOpen(const QString &town) {
    return town.count(u'（') > town.count(u'）');
}

/// Texts in the place of a town's name that name none.
bool namesNoTown(const QString &town) {
    return town == u"以下に掲載がない場合" || town.endsWith(u"の次に番地がくる場合") ||
           (town.endsWith(u"一円") && town.size() > 2);
}

void finish(PostalPlace &place) {
    if (const qsizetype bracket = place.town.indexOf(u'（'); bracket >= 0) {
        place.note = place.town.mid(bracket + 1);
        if (place.note.endsWith(u'）'))
            place.note.chop(1);
        place.town.truncate(bracket);
    }
    if (namesNoTown(place.town))
        place.town.clear();
}

/// The same text again shares its memory: a prefecture has thousands of lines.
void assign(QString &text, QString &last, QStringView cell) {
    if (last != cell)
        last = cell.toString();
    text = last;
}

QString readingOf(const std::vector<QStringView> &cells) {
    QStringView town = cells[kanaAt + 2];
    for (const QChar bracket : {u'(', u'（'})
        if (const qsizetype at = town.indexOf(bracket); at >= 0)
            town = town.first(at);
    const bool none = namesNoTown(cells[namesAt + 2].toString());
    return cells[kanaAt].toString() + cells[kanaAt + 1].toString() + (none ? QString() : town.toString());
}

QString withoutBlanks(QString text) {
    return text.removeIf([](QChar c) { return c.isSpace(); });
}

/// How much of an address a place covers, 0 when the address does not lie in it.
qsizetype covered(const PostalPlace &place, const QString &address) {
    const QString local = place.city + place.town;
    if (address.startsWith(place.prefecture))
        return QStringView(address).mid(place.prefecture.size()).startsWith(local) ? local.size() : 0;
    return address.startsWith(local) ? local.size() : 0;
}

} // namespace

std::vector<PostalPlace> PostalCodes::withCode(const QString &digits) const {
    const auto begin = std::ranges::lower_bound(places, digits, {}, &PostalPlace::code);
    const auto end = std::find_if_not(begin, places.end(),
                                      [&](const PostalPlace &p) { return p.code.startsWith(digits); });
    return {begin, end};
}

std::vector<PostalPlace> PostalCodes::ofAddress(const QString &address) const {
    const QString wanted = withoutBlanks(address);
    std::vector<PostalPlace> found;
    qsizetype most = 1;
    for (const PostalPlace &place : places) {
        const qsizetype length = covered(place, wanted);
        if (length > most) {
            most = length;
            found.clear();
        }
        if (length == most)
            found.push_back(place);
    }
    if (found.empty())
        std::ranges::copy_if(places, std::back_inserter(found),
                             [&](const PostalPlace &p) { return p.address().contains(wanted); });
    return found;
}

PostalCodes parsePostalCodes(const QString &text) {
    PostalCodes codes;
    QString prefecture, city;
    std::vector<QStringView> cells;
    bool open = false;
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = text.indexOf(u'\n', begin);
        if (end < 0)
            end = text.size();
        const QStringView line = QStringView(text).mid(begin, end - begin).trimmed();
        begin = end + 1;
        if (line.isEmpty() || line == QChar(0x1A)) // old programs close a file with it
            continue;
        split(line, cells);
        if (!isSound(cells)) {
            ++codes.skipped;
            continue;
        }
        if (open && codes.places.back().code == cells[codeAt]) {
            codes.places.back().town += cells[namesAt + 2];
        } else {
            PostalPlace &place = codes.places.emplace_back();
            place.code = cells[codeAt].toString();
            assign(place.prefecture, prefecture, cells[namesAt]);
            assign(place.city, city, cells[namesAt + 1]);
            place.town = cells[namesAt + 2].toString();
            place.kana = readingOf(cells);
        }
        open = isOpen(codes.places.back().town);
    }
    for (PostalPlace &place : codes.places)
        finish(place);
    std::ranges::stable_sort(codes.places, {}, &PostalPlace::code);
    return codes;
}

Result<const PostalCodes *> PostalBook::codes() {
    const QString folder = Folders::file(m_folders.data(), folderName.toString());
    QFileInfo newest;
    for (const QString &name : {u"KEN_ALL.CSV"_s, u"utf_ken_all.csv"_s})
        if (const QFileInfo file(Folders::file(folder, name));
            file.isFile() && (!newest.isFile() || file.lastModified() > newest.lastModified()))
            newest = file;
    if (!newest.isFile())
        return Failure{
            u"郵便番号データがありません。\r\n日本郵便のホームページから「住所の郵便番号（CSV形式）」"
            "の全国一括を取得し、KEN_ALL.CSV または utf_ken_all.csv を次のフォルダに置いてください。\r\n"
            "（%1）"_s.arg(QDir::toNativeSeparators(folder))};
    if (m_codes && m_path == newest.filePath() && m_changed == newest.lastModified())
        return &*m_codes;
    const QString name = QDir::toNativeSeparators(newest.filePath());
    QFile file(newest.filePath());
    if (!file.open(QIODevice::ReadOnly))
        return Failure{u"郵便番号データ「%1」を読み込めません。\r\n%2"_s.arg(name, file.errorString())};
    const QByteArray bytes = file.readAll();
    PostalCodes read = parsePostalCodes(looksLikeUtf8(bytes) ? QString::fromUtf8(bytes).remove(QChar(0xFEFF))
                                                             : decode932(bytes));
    if (read.places.empty())
        return Failure{u"郵便番号データ「%1」に、読み込める行がありません。"_s.arg(name)};
    m_codes = std::move(read);
    m_path = newest.filePath();
    m_changed = newest.lastModified();
    if (m_codes->skipped > 0)
        m_oddity = u"郵便番号データ「%1」の %L2 行が壊れているため、除いて検索します。"_s.arg(name).arg(
            m_codes->skipped);
    return &*m_codes;
}

QString PostalBook::takeOddity() {
    return std::exchange(m_oddity, {});
}

QString postalDigits(const QString &typed) {
    QString digits = toHalfWidth(typed).removeIf(isBlankOrHyphen);
    const bool sound = std::ranges::all_of(digits, [](QChar c) { return c >= u'0' && c <= u'9'; });
    return sound ? digits : QString();
}

QString postalText(const QString &digits) {
    return digits.size() > 3 ? digits.first(3) + u'-' + digits.mid(3) : digits;
}
