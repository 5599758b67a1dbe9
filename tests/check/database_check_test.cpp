#include "check/database_check.h"
#include "check/uses.h"
#include "db/adodb.h"
#include "db/column_names.h"
#include "tests/support/test_database.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

class DatabaseCheck : public testing::Test {
protected:
    std::vector<Finding> troubles() {
        Result<std::vector<Finding>> findings = checkDatabase(database.db);
        EXPECT_TRUE(findings) << qPrintable(findings.reason());
        std::vector<Finding> wrong;
        if (findings)
            std::ranges::copy_if(*findings, std::back_inserter(wrong), &Finding::isTrouble);
        return wrong;
    }

    TestDatabase database;
};

std::set<QString> upper(const QStringList &names) {
    std::set<QString> all;
    for (const QString &name : names)
        all.insert(name.toUpper());
    return all;
}

/// The texts in quotes of a source file, one after the other.
QString literalsOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    static const QRegularExpression literal(u"\"((?:[^\"\\\\\\n]|\\\\.)*)\""_s);
    QString text;
    for (const auto &match : literal.globalMatch(QString::fromUtf8(file.readAll())))
        if (!match.captured(1).endsWith(u".h"))
            text += match.captured(1) + u' ';
    return text;
}

} // namespace

TEST_F(DatabaseCheck, TablesOfTheProgramFit) {
    EXPECT_TRUE(troubles().empty());
    EXPECT_GT(programSchema().size(), 15u);
    for (const SchemaTable &table : programSchema())
        EXPECT_FALSE(usesOfTable(table.name).isEmpty()) << qPrintable(table.name);
}

TEST_F(DatabaseCheck, EachFaultIsFoundWithWhatItTouches) {
    struct Case {
        QString change, table, column;
        Finding::Kind kind;
        QString uses, remedy;
    };
    const QString code = u"DROP TABLE CODE; CREATE TABLE CODE (iBunrui %1, nIDNo INT, cName %2, nIDIndex INT,"
                         " iUseFlg SMALLINT, cBikou NVARCHAR(200), PRIMARY KEY (iBunrui, nIDNo, nIDIndex))"_s;
    for (
        const Case &c : {
            Case{u"DROP TABLE HOLIDAY"_s, u"HOLIDAY"_s, {}, Finding::NoTable, u"祝日"_s, u"adodb.ini"_s},
            Case{u"ALTER TABLE DOCTOR DROP COLUMN cFaxNo"_s, u"DOCTOR"_s, u"cFaxNo"_s, Finding::NoColumn,
                 u"医師マスタ"_s,
                 u"ALTER TABLE DOCTOR ADD cFaxNo NVARCHAR(20) CHECK (length(cFaxNo) <= 20);"_s},
            Case{u"ALTER TABLE RIYOUSHA DROP COLUMN tHatsubyou"_s, u"RIYOUSHA"_s, u"tHatsubyou"_s,
                 Finding::NoOptional, u"発病年月日"_s, u"tHatsubyou="_s},
            Case{code.arg(u"SMALLINT"_s, u"NVARCHAR(99)"_s), u"CODE"_s, u"cName"_s, Finding::TooShort,
                 u"歩行状態"_s, u"NVARCHAR(100)"_s},
            Case{code.arg(u"TINYINT"_s, u"NVARCHAR(100)"_s),
                 u"CODE"_s,
                 u"iBunrui"_s,
                 Finding::TooShort,
                 {},
                 {}},
            Case{code.arg(u"SMALLINT"_s, u"DATETIME"_s), u"CODE"_s, u"cName"_s, Finding::OtherType, {}, {}},
            Case{
                u"DROP INDEX IX_RIYOUSHA_DOUI_REC_END"_s, u"RIYOUSHA_DOUI_REC"_s,
                u"iKyotenCd, iKyotenEb, iNewestFlg, tDouiKaryoE"_s, Finding::NoIndex, u"一覧"_s,
                u"CREATE INDEX IX_RIYOUSHA_DOUI_REC_END ON RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, iNewestFlg, tDouiKaryoE);"_s},
        }) {
        SCOPED_TRACE(qPrintable(c.change));
        TestDatabase other;
        other.run(c.change);
        const auto findings = checkDatabase(other.db);
        ASSERT_TRUE(findings);
        const auto found = std::ranges::find_if(*findings, &Finding::isTrouble);
        ASSERT_NE(found, findings->end());
        EXPECT_EQ(std::ranges::count_if(*findings, &Finding::isTrouble), 1);
        EXPECT_EQ(found->kind, c.kind);
        EXPECT_EQ(found->table + u'.' + found->column, c.table + u'.' + c.column);
        EXPECT_TRUE(found->uses.contains(c.uses)) << qPrintable(found->uses);
        EXPECT_TRUE(found->remedy.contains(c.remedy)) << qPrintable(found->remedy);
    }
}

TEST_F(DatabaseCheck, WhatThePracticeSaysHolds) {
    database.run(u"ALTER TABLE RIYOUSHA RENAME COLUMN nCareManeCd TO nCm;"
                 "ALTER TABLE HOKENJA DROP COLUMN cHokenJNameKana"_s);
    ColumnNames names;
    ASSERT_TRUE(names.set(u"RIYOUSHA"_s, u"nCareManeCd"_s, u"nCm"_s));
    ASSERT_TRUE(names.set(u"HOKENJA"_s, u"cHokenJNameKana"_s, {}));
    database.db.setColumnNames(names);
    EXPECT_TRUE(troubles().empty());
    // A name that the database does not have is one to be mended.
    ASSERT_TRUE(names.set(u"RIYOUSHA"_s, u"nCareManeCd"_s, u"nCm2"_s));
    database.db.setColumnNames(names);
    ASSERT_EQ(troubles().size(), 1u);
    EXPECT_TRUE(troubles().front().text.contains(u"nCm2"));
}

// A statement may name no column that the check does not know.
TEST_F(DatabaseCheck, QueriesNameKnownColumns) {
    QHash<QString, std::set<QString>> tables;
    std::set<QString> known;
    std::vector<SchemaTable> schema = programSchema();
    QFile log(QStringLiteral(DOUISHO_TOP "/history/log_tables.sql"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    std::ranges::move(parseSchema(QString::fromUtf8(log.readAll())), std::back_inserter(schema));
    for (const SchemaTable &table : schema)
        for (const SchemaColumn &column : table.columns) {
            tables[table.name].insert(column.name.toUpper());
            known.insert(column.name.toUpper());
        }
    static const QRegularExpression qualified(u"\\b([A-Z][A-Z_]*[A-Z])\\.([a-z]\\w+)"_s);
    static const QRegularExpression word(u"(?<![\\w.])([cintmd][A-Z]\\w*)"_s);
    static const QRegularExpression alias(u"\\b(?:AS|as) +(\\w+)"_s);
    int files = 0;
    int columns = 0;
    QDirIterator sources(QStringLiteral(DOUISHO_TOP), {u"*_query.cpp"_s}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        const QString path = sources.next();
        if (path.contains(u"/build/") || path.contains(u"/tests/"))
            continue;
        ++files;
        const QString text = literalsOf(path);
        QStringList aliases;
        for (const auto &match : alias.globalMatch(text))
            aliases += match.captured(1);
        const std::set<QString> own = upper(aliases);
        for (const auto &match : qualified.globalMatch(text)) {
            const auto table = tables.constFind(match.captured(1));
            const QString column = match.captured(2).toUpper();
            ++columns;
            EXPECT_TRUE(table != tables.cend() ? table->contains(column)
                                               : known.contains(column) || own.contains(column))
                << qPrintable(path) << ' ' << qPrintable(match.captured());
        }
        for (const auto &match : word.globalMatch(text))
            EXPECT_TRUE(known.contains(match.captured(1).toUpper()) ||
                        own.contains(match.captured(1).toUpper()))
                << qPrintable(path) << ' ' << qPrintable(match.captured());
    }
    EXPECT_GT(files, 20);
    EXPECT_GT(columns, 300);
}
