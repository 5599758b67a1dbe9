#include "db/column_names.h"

#include "app/base/folders.h"
#include "app/base/profile_lines.h"
#include "db/dialect/column_rewriting.h"
#include "db/recordset.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr OptionalColumn columns[] = {
    {u"RIYOUSHA", u"tBirthday", u"同意書・依頼書の生年月日、利用者登録"},
    {u"RIYOUSHA", u"cZokugara", u"同意書の続柄、利用者登録"},
    {u"RIYOUSHA", u"tHatsubyou", u"同意書の発病年月日、利用者登録"},
    {u"RIYOUSHA", u"iOuryouUmu", u"同意書の往療の有無、利用者登録"},
    {u"RIYOUSHA", u"iOuryouRiyuu1", u"同意書の往療の理由、利用者登録"},
    {u"RIYOUSHA", u"iOuryouRiyuu2", u"同意書の往療の理由、利用者登録"},
    {u"RIYOUSHA", u"iOuryouRiyuu3", u"同意書の往療の理由、利用者登録"},
    {u"RIYOUSHA", u"cOuryouRiyuuSonota", u"同意書の往療の理由（その他）、利用者登録"},
    {u"RIYOUSHA", u"iHokouType", u"同意書の歩行の状況、利用者登録"},
    {u"RIYOUSHA", u"iKaigodo", u"同意書の要介護度、利用者登録"},
    {u"RIYOUSHA", u"nCareManeCd", u"ケアマネージャー"},
    {u"RIYOUSHA", u"cCareManeName", u"ケアマネージャー"},
    {u"HOKENJA", u"cHokenJNameKana", u"保険者検索のカナ"},
    {u"KYOTEN", u"cYubinNo", u"同意書の拠点の郵便番号"},
    {u"KYOTEN", u"cAddress1", u"同意書の拠点の住所"},
    {u"KYOTEN", u"cAddress2", u"同意書の拠点の住所"},
    {u"KYOTEN", u"cTelNo", u"同意書の拠点の電話番号"},
    {u"KYOTEN", u"cFaxNo", u"同意書の拠点のFAX番号"},
};

bool equal(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

template <class Entries> auto find(Entries &entries, QStringView table, QStringView column) {
    return std::ranges::find_if(entries, [&](const ColumnNames::Entry &entry) {
        return equal(entry.column->table, table) && equal(entry.column->column, column);
    });
}

bool isName(const QString &text) {
    static const QRegularExpression name(u"^[\\p{L}_][\\p{L}\\p{N}\\p{M}_]{0,127}$"_s);
    return name.match(text).hasMatch();
}

} // namespace

std::span<const OptionalColumn> optionalColumns() {
    return columns;
}

bool ColumnNames::Entry::isOurs() const {
    return equal(inForce, column->column);
}

ColumnNames::ColumnNames() {
    for (const OptionalColumn &column : columns)
        m_entries.push_back({&column, column.column.toString(), column.column.toString()});
}

Result<> ColumnNames::set(const QString &table, const QString &column, const QString &theirs) {
    const auto entry = find(m_entries, table, column);
    if (entry == m_entries.end())
        return Failure{u"%1.%2 は、名前を指定できる列ではありません。"_s.arg(table, column)};
    if (!theirs.isEmpty() && !isName(theirs))
        return Failure{
            u"%1.%2 の列名「%3」に使えない文字があります。文字・数字・_ で指定してください。"_s.arg(
                table, column, theirs)};
    entry->said = entry->inForce = theirs;
    return {};
}

void ColumnNames::settle(const Recordset &found) {
    QHash<QString, QHash<QString, QString>> tables; // folded names, to the spelling
    for (int row = 0; row < found.rowCount(); ++row)
        tables[found.text(row, 0).toUpper()].insert(found.text(row, 1).toUpper(), found.text(row, 1));
    for (Entry &entry : m_entries) {
        const auto table = tables.constFind(entry.column->table.toString().toUpper());
        entry.inForce = table == tables.cend() ? entry.said : table->value(entry.said.toUpper());
    }
    m_settled = true;
    m_ours = std::ranges::all_of(m_entries, &Entry::isOurs);
}

QString ColumnNames::inForce(QStringView table, QStringView column) const {
    const auto entry = find(m_entries, table, column);
    return entry == m_entries.end() ? column.toString() : entry->inForce;
}

// One pass: every statement is looked at, until it is known that the database has all of them.
bool ColumnNames::concerns(const QString &sql) {
    struct Named {
        unsigned asTable = 0, asColumn = 0; ///< a bit for each table
    };
    static const QHash<QStringView, Named> names = [] {
        QHash<QStringView, Named> all;
        QList<QStringView> tables;
        for (const OptionalColumn &column : columns) {
            if (!tables.contains(column.table))
                tables += column.table;
            const unsigned bit = 1u << tables.indexOf(column.table);
            all[column.table].asTable |= bit;
            all[column.column].asColumn |= bit;
        }
        return all;
    }();
    Named found;
    const auto isOfName = [](QChar c) { return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'_'); };
    for (qsizetype at = 0; at < sql.size();) {
        qsizetype end = at;
        while (end < sql.size() && isOfName(sql[end]))
            ++end;
        if (end - at >= 6) { // the shortest of them
            const auto name = names.constFind(QStringView(sql).sliced(at, end - at));
            found.asTable |= name == names.cend() ? 0 : name->asTable;
            found.asColumn |= name == names.cend() ? 0 : name->asColumn;
        }
        at = end + 1;
    }
    return (found.asTable & found.asColumn) != 0;
}

QString ColumnNames::applied(const QString &sql) const {
    std::vector<TheirColumn> theirs;
    for (const Entry &entry : m_entries)
        if (!entry.isOurs())
            theirs.push_back(
                {entry.column->table.toString().toUpper().toStdString(),
                 entry.column->column.toString().toUpper().toStdString(),
                 entry.inForce.isEmpty() ? std::string() : u"[%1]"_s.arg(entry.inForce).toStdString()});
    return theirs.empty() ? sql : QString::fromUtf8(withTheirNames(sql.toUtf8(), theirs));
}

ColumnNamesRead readColumnNames(const Folders &folders) {
    ColumnNamesRead read;
    QFile file(Folders::file(folders.data(), u"列名.ini"_s));
    if (!file.exists())
        return read;
    if (!file.open(QIODevice::ReadOnly)) {
        read.oddities +=
            u"「%1」を読めません。%2"_s.arg(QDir::toNativeSeparators(file.fileName()), file.errorString());
        return read;
    }
    const QByteArray bytes = file.readAll();
    const ProfileLines lines(bytes);
    QString table;
    for (const ProfileLines::Line &line : lines.lines()) {
        if (line.kind == ProfileLines::Kind::Section)
            table = lines.text(line.name);
        else if (line.kind == ProfileLines::Kind::Key)
            if (const Result<> set = read.names.set(table, lines.text(line.name), lines.text(line.value));
                !set)
                read.oddities += set.reason();
    }
    return read;
}
