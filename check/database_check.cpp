#include "check/database_check.h"

#include "check/uses.h"
#include "db/adodb.h"
#include "db/column_names.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

enum class Family { Text, Whole, Real, Date, Other };

struct TypeKind {
    Family family;
    int width; ///< bytes of a whole number
};

/// By the names that the three engines give their types.
TypeKind kindOf(const QString &type) {
    const QString name = type.section(u'(', 0, 0).trimmed().toUpper();
    static const QHash<QString, TypeKind> kinds{
        {u"BIT"_s, {Family::Whole, 0}},
        {u"BOOLEAN"_s, {Family::Whole, 0}},
        {u"TINYINT"_s, {Family::Whole, 1}},
        {u"SMALLINT"_s, {Family::Whole, 2}},
        {u"INT"_s, {Family::Whole, 4}},
        {u"INTEGER"_s, {Family::Whole, 4}},
        {u"BIGINT"_s, {Family::Whole, 8}},
        {u"DECIMAL"_s, {Family::Real, 8}},
        {u"NUMERIC"_s, {Family::Real, 8}},
        {u"MONEY"_s, {Family::Real, 8}},
        {u"FLOAT"_s, {Family::Real, 8}},
        {u"REAL"_s, {Family::Real, 8}},
        {u"DOUBLE PRECISION"_s, {Family::Real, 8}},
    };
    if (const auto found = kinds.constFind(name); found != kinds.cend())
        return *found;
    if (name.contains(u"CHAR") || name.contains(u"TEXT"))
        return {Family::Text, 0};
    if (name.startsWith(u"DATE") || name.startsWith(u"TIMESTAMP") || name == u"SMALLDATETIME")
        return {Family::Date, 0};
    return {Family::Other, 0};
}

QString captionOf(Family family) {
    switch (family) {
    case Family::Text:
        return u"文字"_s;
    case Family::Whole:
        return u"整数"_s;
    case Family::Real:
        return u"小数"_s;
    case Family::Date:
        return u"日付"_s;
    case Family::Other:
        break;
    }
    return u"その他"_s;
}

QString declared(const SchemaColumn &column) {
    return column.length > 0 ? u"%1(%2)"_s.arg(column.type).arg(column.length) : column.type;
}

/// Whether what the program keeps in a column fits one of another type.
bool takes(const TypeKind &found, const TypeKind &wanted) {
    return found.family == wanted.family || (wanted.family == Family::Whole && found.family == Family::Real);
}

class Checker {
public:
    Checker(const Catalogue &catalogue, const ColumnNames &names) : m_catalogue(catalogue), m_names(names) {}

    std::vector<Finding> check(const std::vector<SchemaTable> &schema) {
        for (const SchemaTable &table : schema)
            checkTable(table);
        return std::move(m_findings);
    }

private:
    void add(Finding::Kind kind, const QString &table, const QString &column, const QString &uses,
             const QString &text = {}, const QString &remedy = {}) {
        m_findings.push_back({kind, table, column, text, uses, remedy});
    }

    void checkTable(const SchemaTable &table) {
        const QString uses = usesOfTable(table.name);
        const auto found = m_catalogue.tables.constFind(table.name.toUpper());
        if (found == m_catalogue.tables.cend())
            return add(Finding::NoTable, table.name, {}, uses, u"表がありません。"_s,
                       u"接続先（adodb.ini）と、接続する利用者がこの表を読めるかを確かめてください。"_s);
        for (const SchemaColumn &column : table.columns)
            checkColumn(table, column, *found, uses);
        for (const SchemaIndex &index : table.indexes)
            checkIndex(table.name, index);
    }

    void checkColumn(const SchemaTable &table, const SchemaColumn &column,
                     const QHash<QString, Catalogue::Column> &columns, const QString &uses) {
        const auto optional = std::ranges::find_if(m_names.entries(), [&](const ColumnNames::Entry &entry) {
            return entry.column->table == table.name && entry.column->column == column.name;
        });
        const bool isOptional = optional != m_names.entries().end();
        const QString used = isOptional ? optional->column->usedIn.toString() : uses;
        const QString name = isOptional ? optional->said : column.name;
        if (name.isEmpty())
            return add(Finding::DeclaredNone, table.name, column.name, used,
                       u"列名.ini で、ないものとしています。"_s);
        const auto found = columns.constFind(name.toUpper());
        if (found == columns.cend())
            return addMissing(table.name, column, name, isOptional, used);
        if (const auto [kind, text] = misfit(column, *found); kind != Finding::There)
            return add(kind, table.name, column.name, used, text, remedyOf(kind, table.name, name, column));
        if (name.compare(column.name, Qt::CaseInsensitive) != 0)
            return add(Finding::Renamed, table.name, column.name, used,
                       u"列名.ini の「%1」を使います。"_s.arg(name));
        add(Finding::There, table.name, column.name, used);
    }

    void addMissing(const QString &table, const SchemaColumn &column, const QString &name, bool optional,
                    const QString &uses) {
        if (!optional)
            return add(Finding::NoColumn, table, column.name, uses, u"列がありません。"_s,
                       u"ALTER TABLE %1 ADD %2 %3;"_s.arg(table, column.name, declared(column)));
        const QString text = name == column.name
                                 ? u"列がありません。空として扱います。"_s
                                 : u"列名.ini の「%1」がありません。空として扱います。"_s.arg(name);
        add(Finding::NoOptional, table, column.name, uses, text,
            u"列名.ini の [%1] に %2=（この列の名前）と書いてください。列がなければ %2= と書きます。"_s.arg(
                table, column.name));
    }

    static std::pair<Finding::Kind, QString> misfit(const SchemaColumn &column,
                                                    const Catalogue::Column &found) {
        const TypeKind wanted = kindOf(column.type);
        const TypeKind there = kindOf(found.type);
        if (!takes(there, wanted))
            return {Finding::OtherType, u"%1の列であるべきところ、%2（%3）です。"_s.arg(
                                            captionOf(wanted.family), captionOf(there.family), found.type)};
        if (there.family == Family::Whole && there.width < wanted.width)
            return {Finding::TooShort, u"%1 が必要なところ、%2 です。"_s.arg(column.type, found.type)};
        if (found.length > 0 && found.length < column.length)
            return {Finding::TooShort,
                    u"%1 文字必要なところ、%2 文字です。"_s.arg(column.length).arg(found.length)};
        return {Finding::There, {}};
    }

    static QString remedyOf(Finding::Kind kind, const QString &table, const QString &name,
                            const SchemaColumn &column) {
        if (kind == Finding::TooShort)
            return u"ALTER TABLE %1 ALTER COLUMN %2 %3;"_s.arg(table, name, declared(column));
        return u"列の型を %1 にするか、別の列であれば接続先を確かめてください。"_s.arg(declared(column));
    }

    /// Any index that begins with the columns serves, in whichever order they stand.
    void checkIndex(const QString &table, const SchemaIndex &wanted) {
        const auto indexes = m_catalogue.indexes.value(table.toUpper());
        const auto serves = [&](const QStringList &columns) {
            QStringList front = columns.mid(0, wanted.columns.size());
            QStringList needed = wanted.columns;
            for (QString &name : needed)
                name = m_names.inForce(table, name);
            for (QStringList *list : {&front, &needed}) {
                for (QString &name : *list)
                    name = name.toUpper();
                list->sort();
            }
            return front == needed;
        };
        const QString columns = wanted.columns.join(u", "_s);
        const QString uses = usesOfTable(table) + u"（速さ）"_s;
        if (std::ranges::any_of(indexes, serves) || !isThere(table, wanted))
            return add(Finding::There, table, columns, uses);
        add(Finding::NoIndex, table, columns, uses, u"この列の索引がありません。遅くなります。"_s,
            wanted.primaryKey ? u"CREATE UNIQUE INDEX IX_%1_KEY ON %1 (%2);"_s.arg(table, columns)
                              : u"CREATE INDEX %1 ON %2 (%3);"_s.arg(wanted.name, table, columns));
    }

    bool isThere(const QString &table, const SchemaIndex &index) const {
        return std::ranges::all_of(index.columns,
                                   [&](const QString &column) { return m_names.has(table, column); });
    }

    const Catalogue &m_catalogue;
    const ColumnNames &m_names;
    std::vector<Finding> m_findings;
};

} // namespace

Catalogue readCatalogue(const Recordset &columns, const Recordset &indexes) {
    Catalogue catalogue;
    for (int row = 0; row < columns.rowCount(); ++row) {
        const QString type = columns.text(row, 2);
        const int length = columns.isNull(row, 3) ? type.section(u'(', 1).section(u')', 0, 0).toInt()
                                                  : int(columns.number(row, 3));
        catalogue.tables[columns.text(row, 0).toUpper()].insert(columns.text(row, 1).toUpper(),
                                                                {type, length});
    }
    for (int row = 0; row < indexes.rowCount(); ++row)
        catalogue.indexes[indexes.text(row, 0).toUpper()][indexes.text(row, 1)] +=
            indexes.text(row, 2).remove(u'"');
    return catalogue;
}

std::vector<Finding> checkCatalogue(const std::vector<SchemaTable> &schema, const Catalogue &catalogue,
                                    const ColumnNames &names) {
    return Checker(catalogue, names).check(schema);
}

Result<std::vector<Finding>> checkDatabase(cT_ADODB &db) {
    const ErrorsSince errors(db);
    Recordset columns;
    Recordset indexes;
    if (db.iConnect() != 0 || db.iOpenColumns(columns) != 0 || db.iOpenIndexes(indexes) != 0)
        return Failure{errors.text().trimmed()};
    std::vector<Finding> findings =
        checkCatalogue(programSchema(), readCatalogue(columns, indexes), db.columnNames());
    for (Finding &finding : findings)
        if (finding.remedy.endsWith(u';'))
            finding.remedy = inDialect(db.dialect(), finding.remedy);
    return findings;
}

QString captionOf(Finding::Kind kind) {
    switch (kind) {
    case Finding::There:
        return u"ある"_s;
    case Finding::Renamed:
        return u"別名"_s;
    case Finding::DeclaredNone:
        return u"なしと指定"_s;
    case Finding::NoIndex:
        return u"索引なし"_s;
    case Finding::NoOptional:
        return u"ない（任意）"_s;
    case Finding::TooShort:
        return u"短い"_s;
    case Finding::OtherType:
        return u"型が違う"_s;
    case Finding::NoColumn:
        return u"ない"_s;
    case Finding::NoTable:
        return u"表がない"_s;
    }
    return {};
}

QString summaryOf(const std::vector<Finding> &findings) {
    const auto serious = std::ranges::count_if(findings, &Finding::isSerious);
    const auto troubles = std::ranges::count_if(findings, &Finding::isTrouble);
    const QString checked = u"表・列・索引 %L1 件を確認しました。"_s.arg(findings.size());
    if (troubles == 0)
        return checked + u"このデータベースで使えます。"_s;
    if (serious == 0)
        return checked + u"使えますが、%L1 件の注意があります。"_s.arg(troubles);
    return checked +
           u"%L1 件は直さないと使えない画面・帳票があります。ほかに %L2 件の注意があります。"_s.arg(serious)
               .arg(troubles - serious);
}

QString reportOf(const std::vector<Finding> &findings) {
    QString text = summaryOf(findings) + u'\n';
    for (const Finding &finding : findings)
        if (finding.isTrouble())
            text += u"\n%1  %2 %3\n  %4\n"_s.arg(captionOf(finding.kind), finding.table, finding.column,
                                                 detailOf(finding).replace(u"\n"_s, u"\n  "_s));
    return text;
}

QString detailOf(const Finding &finding) {
    QStringList lines{finding.text};
    if (finding.isTrouble())
        lines += {u"影響："_s + finding.uses, u"対処："_s + finding.remedy};
    return lines.join(u'\n');
}
