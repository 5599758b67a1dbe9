#include "history/screens/row_names_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A server refuses statements of some ten thousand literals.
constexpr qsizetype mostCodes = 1000;

struct Source {
    ColumnKind kind;
    QString table, code, name;
    bool isNumber; ///< otherwise the code is a text
    bool ofBranch = false;
};

const std::vector<Source> &sources() {
    static const std::vector<Source> all{
        {ColumnKind::Doctor, u"DOCTOR"_s, u"cIDNo"_s, u"cName"_s, false},
        {ColumnKind::Facility, u"SISETSU"_s, u"nIDNo"_s, u"cShamei1"_s, true},
        {ColumnKind::Staff, u"STAFF"_s, u"nIDNo"_s, u"cName"_s, true, true},
        {ColumnKind::Counsellor, u"SOUDAN"_s, u"nIDNo"_s, u"cName"_s, true, true},
        {ColumnKind::Insurer, u"HOKENJA"_s, u"cHokenNo"_s, u"cHokenJName"_s, false},
        {ColumnKind::Layout, u"SHINSEISYO"_s, u"nIDNo"_s, u"cDispName"_s, true}};
    return all;
}

// What is no number is the code of no row.
QString literalsOf(const Source &source, const QSet<QString> &codes) {
    QStringList literals;
    for (const QString &code : codes) {
        bool isNumber = false;
        const qint32 number = code.toInt(&isNumber);
        if (!source.isNumber)
            literals += sqlText(code);
        else if (isNumber)
            literals += sqlNumber(number);
    }
    return literals.join(u", "_s);
}

} // namespace

Result<RowNames> readRowNames(cT_ADODB &db, const Branch &branch, const RowCodes &codes) {
    RowNames names;
    for (const Source &source : sources()) {
        const auto wanted = codes.find(source.kind);
        const QString literals = wanted == codes.end() ? QString() : literalsOf(source, wanted->second);
        if (literals.isEmpty())
            continue;
        QStringList conditions;
        if (wanted->second.size() <= mostCodes)
            conditions += source.code + u" IN ("_s + literals + u')';
        if (source.ofBranch)
            conditions += sqlWhere(branch, source.table);
        const Result<Recordset> rows =
            readRows(db, u"SELECT "_s + source.code + u", "_s + source.name + u" FROM "_s + source.table +
                             (conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" and "_s)));
        if (!rows)
            return Failure{rows.reason()};
        for (int row = 0; row < rows->rowCount(); ++row)
            names[source.kind].insert(rows->text(row, 0).trimmed(), rows->text(row, 1).trimmed());
    }
    return names;
}
