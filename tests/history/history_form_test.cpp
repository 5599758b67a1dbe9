#include "history/log_tables.h"
#include "history/screens/history_form.h"
#include "history/screens/prepare_form.h"
#include "tests/history/history_fixture.h"
#include "widgets/grid.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

class HistoryFormTest : public HistoryTest {
protected:
    void open(const std::optional<ConsentRowKey> &row) {
        form = std::make_unique<ChangeHistoryForm>(environment, database.db, row);
        ASSERT_EQ(form->iInit(), 0) << form->sErrMsg().toStdString();
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    template <class W> W *control(const QString &name) { return form->findChild<W *>(name); }
    QAbstractItemModel *rows() { return control<Grid>(u"ssRireki"_s)->model(); }
    QAbstractItemModel *lines() { return control<Grid>(u"ssHenkou"_s)->model(); }
    /// Presses a key whose button goes down and up; the number of rows that come of it.
    int rowsAfter(Qt::Key key, int expected) {
        QTest::keyClick(form.get(), key);
        (void)QTest::qWaitFor([&] { return rows()->rowCount() == expected; }, 2000);
        return rows()->rowCount();
    }

    std::unique_ptr<ChangeHistoryForm> form;
};

} // namespace

TEST_F(HistoryFormTest, KeysWidenTheHistoryFromTheRowToEverythingAndEnterNarrowsItAgain) {
    record({.changes = u"{\"iGetFlg\":[\"0\",\"1\"]}"_s});
    record(
        {.changes = u"{\"iGetFlg\":[\"1\",\"0\"],\"iOutputFlg\":[\"1\",\"0\"]}"_s, .key = u"20250401/0/0"_s});
    record({.changes = u"{}"_s, .patient = u"8"_s});
    record({.changes = u"{}"_s, .patient = u"8"_s, .time = u"2026/01/01 00:00:00"_s});
    open(ConsentRowKey{{1, 1, 7}, 20260401, 0, 0});
    EXPECT_EQ(rows()->rowCount(), 1);
    EXPECT_EQ(rowsAfter(Qt::Key_F3, 2), 2);
    EXPECT_EQ(lines()->rowCount(), 2) << "of the newest, which is the current one";
    QTest::keyClick(control<Grid>(u"ssRireki"_s), Qt::Key_Down);
    EXPECT_EQ(lines()->index(0, 2).data().toString(), u"済"_s);
    EXPECT_EQ(rowsAfter(Qt::Key_F7, 3), 3) << "of the last month";
    auto *patient = control<QLineEdit>(u"txtRiyousha"_s);
    patient->setFocus();
    QTest::keyClicks(patient, u"8"_s);
    QTest::keyClick(patient, Qt::Key_Return);
    ASSERT_EQ(rows()->rowCount(), 1);
    EXPECT_EQ(rows()->index(0, 4).data().toString(), u"8 鈴木　花子　同意 2026/04/01"_s);
}

TEST_F(HistoryFormTest, TheNewestComeFirstAndTheRestWhenAsked) {
    database.run(u"WITH RECURSIVE N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N WHERE i < 501)"
                 " INSERT INTO DOUISHO_LOG (cWrite, iSeq, tTime, cPcName, cOperation, cTable, iKyotenCd,"
                 " iKyotenEb, nIDNo, cKey, iKind, cChanges) SELECT 1000 + i, 1, '2026/11/20', 'PC' || i, '-',"
                 " 'RIYOUSHA', 1, 1, 7, '', 2, '{}' FROM N"_s);
    open(std::nullopt);
    EXPECT_EQ(rows()->rowCount(), 500);
    EXPECT_EQ(rows()->index(0, 1).data().toString(), u"PC501"_s);
    EXPECT_EQ(rowsAfter(Qt::Key_F8, 501), 501);
    EXPECT_EQ(control<QLabel>(u"lblKensu"_s)->text(), u"501 件"_s);
}

TEST_F(HistoryFormTest, WhereThereIsNoHistoryALineSaysWhatToDo) {
    database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 2"_s);
    showChangeHistory(environment, database.db, std::nullopt, nullptr);
    database.run(u"DROP TABLE DOUISHO_LOG_INFO"_s);
    showChangeHistory(environment, database.db, std::nullopt, nullptr);
    settleLog(database.db); // refused: the rest of the tables is in the way
    showChangeHistory(environment, database.db, std::nullopt, nullptr);
    ASSERT_EQ(messages.notes.size(), 3);
    EXPECT_TRUE(messages.notes[0].contains(u"新しい版"_s)) << messages.notes[0].toStdString();
    EXPECT_TRUE(messages.notes[1].contains(u"次の保存"_s)) << messages.notes[1].toStdString();
    EXPECT_TRUE(messages.notes[2].contains(u"「変更履歴の準備」"_s)) << messages.notes[2].toStdString();
}

TEST_F(HistoryTest, ThePreparationMakesTheTablesAndHandsOverTheirStatements) {
    for (const QString &table :
         {u"DOUISHO_LOG"_s, u"DOUISHO_LOG_BATCH"_s, u"DOUISHO_LOG_DOCUMENT"_s, u"DOUISHO_LOG_INFO"_s})
        database.run(u"DROP TABLE "_s + table);
    HistoryPrepareForm form(environment, database.db);
    ASSERT_EQ(form.iInit(), 0) << form.sErrMsg().toStdString();
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    const auto *state = form.findChild<QLabel *>(u"lblJyotai"_s);
    EXPECT_TRUE(state->text().contains(u"表がデータベースにない"_s));
    QTest::keyClick(&form, Qt::Key_F7);
    EXPECT_TRUE(
        QTest::qWaitFor([] { return QGuiApplication::clipboard()->text().contains(u"DOUISHO_LOG ("_s); }));
    QTest::keyClick(&form, Qt::Key_F5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return state->text().startsWith(u"変更履歴を記録しています"_s); }));
    EXPECT_FALSE(form.findChild<QPushButton *>(u"cmdMake"_s)->isEnabled());

    database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 2"_s);
    QTest::keyClick(&form, Qt::Key_F4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return state->text().contains(u"新しい版"_s); }));
    EXPECT_FALSE(form.findChild<QPushButton *>(u"cmdMake"_s)->isEnabled());
}
