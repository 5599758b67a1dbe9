#include "db/tables/masters/caremane.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/corp.h"
#include "db/tables/masters/corp_sub.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/hokenja.h"
#include "db/tables/masters/kyoten.h"
#include "db/tables/masters/shinseisyo.h"
#include "db/tables/masters/sisetsu.h"
#include "db/tables/masters/soudan.h"
#include "db/tables/masters/staff.h"
#include "db/tables/patient/riyousha.h"
#include "db/tables/patient/riyousha_doui_rec.h"
#include "db/tables/patient/riyousha_sub.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Texts have room for their length only, in units of UTF-16; 0: of another table.
void fill(short &field, int seed, int) {
    field = static_cast<short>(100 + seed);
}
void fill(qint32 &field, int seed, int) {
    field = 70000 + seed;
}
void fill(Nullable<short> &field, int seed, int) {
    field = static_cast<short>(seed - 1000);
}
void fill(Nullable<qint32> &field, int seed, int) {
    field = 70000 + seed;
}
void fill(Nullable<double> &field, int seed, int) {
    field = 139.25 + seed;
}
void fill(QString &field, int seed, int length) {
    field = (QString::number(seed) + u"'髙𠮷ﾔ ﾏ%"_s).left(length > 0 ? length : 20);
    if (field.back().isHighSurrogate() || field.back() == u' ')
        field.chop(1);
}
void fill(QDate &field, int seed, int) {
    field = QDate(2026, 11, 21).addDays(seed);
}

template <class R> void fillColumn(R &record, const TableColumn<R> &column, int seed) {
    static const QList<SuiteColumn> columns = suiteColumns(R::table().name.toString());
    const auto known = std::ranges::find_if(columns, [&](const SuiteColumn &suite) {
        return column.name.compare(suite.name, Qt::CaseInsensitive) == 0;
    });
    const int length = known == columns.end() ? 0 : known->length;
    std::visit([&](auto member) { fill(record.*member, seed, length); }, column.member);
}

/// The key of all tests, the other columns Null. With a position, the key column there has another value.
template <class R> R keyed(int differing = -1) {
    R record;
    int position = 0;
    for (const TableColumn<R> &column : R::table().columns) {
        if (column.use == ColumnUse::Key)
            fillColumn(record, column, position == differing ? position + 1 : position);
        ++position;
    }
    return record;
}

/// The same key, and a value of its own in every other column. Seeds from 200 on, so as not to meet the
/// key's values; another seed gives other values.
template <class R> R filled(int seed) {
    R record = keyed<R>();
    for (const TableColumn<R> &column : R::table().columns)
        if (column.use != ColumnUse::Key)
            fillColumn(record, column, seed++);
    return record;
}

/// "column=literal" of the columns that are written as the record has them.
template <class R> QStringList written(const R &record) {
    const QStringList literals = R::table().literals(record);
    QStringList list;
    for (qsizetype i = 0; i < literals.size(); ++i) {
        const TableColumn<R> &column = R::table().columns[size_t(i)];
        if (column.use == ColumnUse::Key || column.use == ColumnUse::Value)
            list += column.name.toString() + u'=' + literals[i];
    }
    return list;
}

template <class R> class RoundTrip : public testing::Test {
protected:
    struct AnyTable : Table<R> {
        using Table<R>::at;
    };

    void SetUp() override {
        if (std::is_same_v<R, cD_CORP_SUB>)
            database.run(
                u"insert into KYOTEN (iKyotenCd, iKyotenEb) values (100, 101), (101, 101), (100, 102)"_s);
        table.iInit(database.db);
    }

    /// Inserts rows whose key differs in one column each; returns their number.
    int insertNeighbours() {
        int count = 0;
        for (size_t i = 0; i < R::table().columns.size(); ++i) {
            if (R::table().columns[i].use != ColumnUse::Key)
                continue;
            const R neighbour = keyed<R>(int(i));
            EXPECT_EQ(table.iDataInsert(&neighbour, -1, true), 0) << table.sErrMsg().toStdString();
            ++count;
        }
        return count;
    }

    QString count() { return database.value(u"select count(*) from "_s + R::table().name.toString()); }

    TestDatabase database;
    AnyTable table;
};

using Records = testing::Types<cD_CODE, cD_DOCTOR, cD_SISETSU, cD_STAFF, cD_CAREMANE, cD_SHINSEISYO,
                               cD_SOUDAN, cD_KYOTEN, cD_HOKENJA, cD_CORP, cD_CORP_SUB, cD_RIYOUSHA,
                               cD_RIYOUSHA_SUB, cD_RIYOUSHA_DOUI_REC, cD_DOUIKIROKU>;
TYPED_TEST_SUITE(RoundTrip, Records);

// A column that the record lacks would be lost when a row is written anew.
TYPED_TEST(RoundTrip, TheRecordHasEveryColumnOfTheSchema) {
    QStringList record;
    for (const TableColumn<TypeParam> &column : TypeParam::table().columns)
        if (column.use != ColumnUse::Joined)
            record += column.name.toString().toLower();
    Recordset rows;
    ASSERT_EQ(this->database.db.iOpenRecSet(rows, u"select * from "_s + TypeParam::table().name.toString()),
              0);
    QStringList schema;
    for (const QString &name : rows.columns())
        schema += name.toLower();
    record.sort();
    schema.sort();
    EXPECT_EQ(record, schema);
}

TYPED_TEST(RoundTrip, NoTwoColumnsShareAMember) {
    const TypeParam record = filled<TypeParam>(200);
    QStringList literals = TypeParam::table().literals(record);
    EXPECT_EQ(literals.removeDuplicates(), 0);
}

TYPED_TEST(RoundTrip, RowsComeBackAsTheyWereWritten) {
    using R = TypeParam;
    auto &rows = this->table;
    const int neighbours = this->insertNeighbours();
    const R first = filled<R>(200);
    const R second = filled<R>(600);
    const R nulls = keyed<R>();

    ASSERT_EQ(rows.iDataInsert(&first, 0, true), 0) << rows.sErrMsg().toStdString();
    ASSERT_EQ(rows.nデータ数(), 1);
    EXPECT_EQ(written(*rows.at(0)), written(first));
    ASSERT_EQ(rows.iDataRead(&nulls), 0) << rows.sErrMsg().toStdString();
    ASSERT_EQ(rows.nデータ数(), 1);
    EXPECT_EQ(written(*rows.at(0)), written(first));

    ASSERT_EQ(rows.iDataUpdate(&second, 0, true), 0) << rows.sErrMsg().toStdString();
    EXPECT_EQ(written(*rows.at(0)), written(second));
    ASSERT_EQ(rows.iDataUpdate(&nulls, -1, true), 0) << rows.sErrMsg().toStdString();
    EXPECT_EQ(written(*rows.at(0)), written(second)) << "not from the array";
    ASSERT_EQ(rows.iDataRead(&nulls), 0);
    EXPECT_EQ(written(*rows.at(0)), written(nulls));

    ASSERT_EQ(rows.iData削除(&nulls, 0, true), 0);
    EXPECT_EQ(rows.nデータ数(), 0);
    ASSERT_EQ(rows.iDataRead(&nulls), 0);
    EXPECT_EQ(rows.nデータ数(), 0);
    EXPECT_EQ(this->count(), QString::number(neighbours));
}

TYPED_TEST(RoundTrip, EveryWriteIsSignedAndTheEntryShowsIt) {
    using R = TypeParam;
    auto &rows = this->table;
    const R record = filled<R>(200);
    ASSERT_EQ(rows.iDataInsert(&record, 0, true), 0) << rows.sErrMsg().toStdString();
    ASSERT_EQ(rows.iDataUpdate(rows.at(0), 0, true), 0) << rows.sErrMsg().toStdString();
    const TableText text = R::table().text();
    for (size_t i = 0; i < text.columns.size(); ++i) {
        if (!text.columns[i].isAudit())
            continue;
        const QString name = text.columns[i].name.toString();
        const QString stored = this->database.value(u"select %1 from %2"_s.arg(name, text.name.toString()));
        EXPECT_EQ(R::table().literals(*rows.at(0))[qsizetype(i)], sqlLiteral(stored));
        if (text.columns[i].use == ColumnUse::PcName)
            EXPECT_EQ(stored, this->database.db.csGetComputerName());
        else
            EXPECT_TRUE(stored.contains(QString::number(QDate::currentDate().year())))
                << stored.toStdString();
    }
}

TYPED_TEST(RoundTrip, ARefusedInsertChangesNothing) {
    using R = TypeParam;
    auto &rows = this->table;
    const R first = filled<R>(200);
    const R second = filled<R>(600);
    ASSERT_EQ(rows.iDataInsert(&first, 0, true), 0) << rows.sErrMsg().toStdString();
    EXPECT_EQ(rows.iDataInsert(&second, 1, true), -1);
    EXPECT_FALSE(rows.sErrMsg().isEmpty());
    EXPECT_EQ(rows.nデータ数(), 1);
    EXPECT_EQ(this->count(), u"1"_s);
    // The transaction is over, so the next write works.
    EXPECT_EQ(rows.iDataUpdate(&second, 0, true), 0) << rows.sErrMsg().toStdString();
}

} // namespace
