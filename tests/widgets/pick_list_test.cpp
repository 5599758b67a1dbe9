#include "widgets/pick_list_form.h"

#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/grid.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>
#include <new>

using namespace Qt::Literals::StringLiterals;

namespace {

Recordset recordset(const QList<QStringList> &lines) {
    Recordset rows;
    rows.open({u"code"_s, u"name"_s, u"kana"_s, u"tel"_s}, Recordset::Encoding::Utf8);
    for (const QStringList &line : lines) {
        for (const QString &cell : line) {
            const QByteArray bytes = cell.toUtf8();
            cell.isNull() ? rows.appendNull() : rows.appendText(bytes.constData(), size_t(bytes.size()));
        }
    }
    return rows;
}

const QList<QStringList> &people() {
    static const QList<QStringList> lines{
        {u"2"_s, u"山田　太郎"_s, u"ﾔﾏﾀﾞ ﾀﾛｳ"_s, u"03-1234-5678"_s},
        {u"10"_s, u"髙橋 一郎"_s, u"タカハシ　イチロウ"_s, u"045-111-2222"_s},
        {u"100"_s, u"O'Brien"_s, u"オブライエン"_s, QString()},
        {u"11"_s, u"50%引き"_s, u"はまだ\nタケシ"_s, u"０３－９９９９"_s},
    };
    return lines;
}

class TestList : public PickListForm {
public:
    explicit TestList(Messages &port) : PickListForm(port) {
        setColumns({{u"コード"_s, u"code"_s, true},
                    {u"名前"_s, u"name"_s},
                    {u"カナ"_s, u"kana"_s},
                    {u"TEL"_s, u"tel"_s}},
                   u"code"_s, u"name"_s);
    }
    using PickListForm::refresh;
    CodeName taken() const {
        CodeName row;
        vGetSeledInf(row);
        return row;
    }

    QList<QStringList> lines = people();
    QString failure;
    bool exhausted = false;

    Grid *table() const { return findChild<Grid *>(u"ssList"_s); }
    QLineEdit *box() const { return findChild<QLineEdit *>(u"txtShibori"_s); }
    QStringList codes() const {
        QStringList shown;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            shown << table()->model()->index(row, 0).data().toString();
        return shown;
    }

protected:
    Result<Recordset> readList() override {
        if (exhausted)
            throw std::bad_alloc();
        if (!failure.isEmpty())
            return Failure{failure};
        return recordset(lines);
    }
    QString emptyText() const override { return u"該当なし"_s; }
};

struct ShownList {
    ShownList() {
        EXPECT_EQ(list.iInit(), 0);
        showActive(list);
    }
    const QLabel *nothing() const { return list.findChild<QLabel *>(u"lblEmpty"_s); }

    RecordedMessages messages;
    TestList list{messages};
};

} // namespace

TEST(PickList, NarrowsWhileTyping) {
    struct Case {
        QString typed;
        QStringList codes;
    };
    const Case cases[] = {
        {u"やまだ"_s, {u"2"_s}},
        {u"ヤマダタロウ"_s, {u"2"_s}},
        {u"ﾊﾏﾀﾞ"_s, {u"11"_s}},
        {u"ハマタ"_s, {}},
        {u"山田太郎"_s, {u"2"_s}},
        {u"山田 たろう"_s, {u"2"_s}},
        {u"たろう　山田"_s, {u"2"_s}},
        {u"0312345678"_s, {u"2"_s}},
        {u"03-1234"_s, {u"2"_s}},
        {u"039999"_s, {u"11"_s}},
        {u"03-9999"_s, {u"11"_s}},
        {u"０３－１２"_s, {u"2"_s}},
        {u"10"_s, {u"10"_s, u"100"_s}},
        {u"１０"_s, {u"10"_s, u"100"_s}},
        {u"o'b"_s, {u"100"_s}},
        {u"Ｏ’"_s, {}},
        {u"%"_s, {u"11"_s}},
        {u"_"_s, {}},
        {u" - "_s, {u"2"_s, u"10"_s, u"100"_s, u"11"_s}},
    };
    ShownList s;
    for (const Case &c : cases) {
        s.list.box()->clear();
        typeText(s.list.box(), c.typed);
        EXPECT_EQ(s.list.codes(), c.codes) << c.typed.toStdString();
    }
}

TEST(PickList, CountsAndKeepsTheFirstRowCurrent) {
    ShownList s;
    const auto *count = s.list.findChild<QLabel *>(u"lblKensu"_s);
    EXPECT_EQ(count->text(), u"4 件"_s);
    typeText(s.list.box(), u"10"_s);
    EXPECT_EQ(count->text(), u"2 / 4 件"_s);
    QTest::keyClick(s.list.box(), Qt::Key_Return);
    EXPECT_EQ(s.list.taken(), (CodeName{u"10"_s, u"髙橋 一郎"_s}));
    EXPECT_EQ(s.list.result(), QDialog::Accepted);
}

TEST(PickList, ATypedNumberIsACodeFirst) {
    ShownList s;
    s.list.lines = {{u"2"_s, u"山田"_s, u"ヤマダ"_s, u"03-5555"_s},
                    {u"55"_s, u"髙橋"_s, u"タカハシ"_s, u"045-1"_s},
                    {u"155"_s, u"鈴木"_s, u"スズキ"_s, {}}};
    s.list.refresh();
    s.list.table()->sortByColumn(1, Qt::AscendingOrder);
    typeText(s.list.box(), u"５５"_s);
    EXPECT_EQ(s.list.codes().value(0), u"55"_s) << "whatever the order";
    EXPECT_EQ(s.list.codes().size(), 3);
    EXPECT_EQ(s.list.table()->currentIndex().row(), 0);
    QTest::keyClick(s.list.box(), Qt::Key_Return);
    EXPECT_EQ(s.list.taken(), (CodeName{u"55"_s, u"髙橋"_s}));
}

TEST(PickListModel, PutsTheBestHitFirst) {
    PickListModel model;
    model.setColumns({{u"コード"_s, u"code"_s, true},
                      {u"名前"_s, u"name"_s},
                      {u"カナ"_s, u"kana"_s, false, true},
                      {u"TEL"_s, u"tel"_s}},
                     u"code"_s, u"name"_s);
    model.setRows(recordset({{u"1"_s, u"森 高子"_s, u"モリ　タカコ"_s, u"12"_s},
                             {u"120"_s, u"高田"_s, u"タカダ"_s, u"5"_s},
                             {u"112"_s, u"山高"_s, u"ヤマタカ"_s, u"6"_s},
                             {u"12"_s, u"髙井"_s, u"タカイ"_s, u"髙台"_s},
                             {u"7"_s, u"林"_s, u"ハヤシ"_s, u"高台12-1"_s},
                             {u"3"_s, u"12番館"_s, u"バンカン"_s, QString()}}));
    const std::pair<QString, QString> cases[] = {
        {u"12"_s, u"12 120 3 1 112 7"_s}, {u"高"_s, u"120 12 1 112 7"_s},    {u"たか"_s, u"120 12 1 112"_s},
        {u"もり たかこ"_s, u"1"_s},       {u"高 12"_s, u"12 120 1 112 7"_s}, {u""_s, u"1 120 112 12 7 3"_s}};
    for (const auto &[typed, codes] : cases) {
        model.narrow(typed);
        QStringList shown;
        for (int row = 0; row < model.rowCount(); ++row)
            shown += model.at(row).code;
        EXPECT_EQ(shown.join(u' '), codes) << typed.toStdString();
    }
}

TEST(PickList, ANumberThatIsNoCodeTakesNobodyUnseen) {
    ShownList s;
    typeText(s.list.box(), u"1234"_s); // in a telephone number
    QTest::keyClick(s.list.box(), Qt::Key_Return);
    EXPECT_TRUE(s.list.isVisible());
    EXPECT_TRUE(s.list.table()->hasFocus());
    QTest::keyClick(s.list.table(), Qt::Key_Return);
    EXPECT_EQ(s.list.taken().code, u"2"_s);
}

TEST(PickList, IsWorkedByKeysAlone) {
    ShownList s;
    EXPECT_TRUE(s.list.box()->hasFocus());
    QTest::keyClick(s.list.box(), Qt::Key_Down);
    EXPECT_TRUE(s.list.table()->hasFocus());
    EXPECT_EQ(s.list.table()->currentIndex().row(), 1) << "the first row is current from the start";
    QTest::keyClick(s.list.table(), Qt::Key_End);
    typeText(s.list.table(), u"1"_s);
    EXPECT_TRUE(s.list.box()->hasFocus());
    EXPECT_EQ(s.list.box()->text(), u"1"_s);
    QTest::keyClick(s.list.box(), Qt::Key_Down);
    QTest::keyClick(s.list.table(), Qt::Key_Backspace);
    EXPECT_EQ(s.list.box()->text(), QString());
    QTest::keyClick(s.list.box(), Qt::Key_Down);
    QTest::keyClick(s.list.table(), Qt::Key_Up);
    QTest::keyClick(s.list.table(), Qt::Key_Up);
    EXPECT_TRUE(s.list.box()->hasFocus()) << "up from the first row";
    QTest::keyClick(s.list.box(), Qt::Key_Down);
    QTest::keyClick(s.list.table(), Qt::Key_Return);
    EXPECT_EQ(s.list.taken().code, u"10"_s);
    EXPECT_EQ(s.list.seledRow(), 1);
}

TEST(PickList, SaysThatNoRowIsSelected) {
    ShownList s;
    typeText(s.list.box(), u"誰もいない"_s);
    EXPECT_EQ(s.nothing()->text(), u"「誰もいない」を含む行はありません。"_s);
    QTest::mouseClick(s.list.findChild<QPushButton *>(u"cmdSelect"_s), Qt::LeftButton);
    ASSERT_EQ(s.messages.shown.size(), 1);
    EXPECT_EQ(s.messages.shown.at(0).text, u"有効な行が選択されていません！"_s);
    EXPECT_TRUE(s.list.isVisible());
}

TEST(PickList, AFailureKeepsTheFormerRows) {
    ShownList s;
    typeText(s.list.box(), u"10"_s);
    s.list.failure = u"接続が切れました"_s;
    QTest::keyClick(&s.list, Qt::Key_F4);
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.messages.shown.size() == 1; }));
    EXPECT_EQ(s.messages.shown.at(0).icon, MessageIcon::Critical);
    EXPECT_EQ(s.list.codes(), (QStringList{u"10"_s, u"100"_s}));

    s.list.exhausted = true;
    EXPECT_FALSE(s.list.refresh());
    EXPECT_TRUE(s.messages.shown.at(1).text.startsWith(u"システムエラーが発生しました！\r"_s));

    s.list.exhausted = false;
    s.list.failure.clear();
    s.list.lines.clear();
    EXPECT_FALSE(s.list.refresh());
    EXPECT_EQ(s.messages.shown.size(), 2) << "an empty list says so in the place of its rows";
    EXPECT_TRUE(s.nothing()->isVisible());
    EXPECT_EQ(s.nothing()->text(), u"該当なし"_s);
}

TEST(PickListModel, SortsByValueAndByReadingAndBack) {
    PickListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setColumns({{u"コード"_s, u"code"_s, true}, {u"カナ"_s, u"kana"_s}}, u"code"_s, u"name"_s);
    model.setRows(recordset(people()));
    const auto codes = [&model] {
        QStringList shown;
        for (int row = 0; row < model.rowCount(); ++row)
            shown << model.at(row).code;
        return shown.join(u' ');
    };
    model.sort(0, Qt::DescendingOrder);
    EXPECT_EQ(codes(), u"100 11 10 2"_s) << "by number, not by text";
    model.sort(1, Qt::AscendingOrder);
    EXPECT_EQ(codes(), u"100 10 11 2"_s) << "オ タ は ﾔ: width and kana kind do not part them";
    model.narrow(u"イ"_s);
    EXPECT_EQ(codes(), u"100 10"_s);
    model.sort(-1, Qt::AscendingOrder);
    EXPECT_EQ(codes(), u"10 100"_s);
    model.setRows(recordset({}));
    EXPECT_EQ(model.at(0), CodeName());
}
