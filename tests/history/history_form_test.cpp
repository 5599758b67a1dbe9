#include "history/screens/history_form.h"
#include "tests/history/history_fixture.h"
#include "widgets/grid.h"

#include <QLabel>
#include <QLineEdit>
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
    void press(Qt::Key key) { QTest::keyClick(form.get(), key); }

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
    press(Qt::Key_F3);
    EXPECT_EQ(rows()->rowCount(), 2);
    EXPECT_EQ(lines()->rowCount(), 2) << "of the newest, which is the current one";
    QTest::keyClick(control<Grid>(u"ssRireki"_s), Qt::Key_Down);
    EXPECT_EQ(lines()->index(0, 2).data().toString(), u"済"_s);
    press(Qt::Key_F7);
    EXPECT_EQ(rows()->rowCount(), 3) << "of the last month";
    auto *patient = control<QLineEdit>(u"txtRiyousha"_s);
    patient->setFocus();
    QTest::keyClicks(patient, u"鈴木"_s);
    QTest::keyClick(patient, Qt::Key_Return);
    EXPECT_EQ(rows()->rowCount(), 1);
    press(Qt::Key_F2);
    EXPECT_EQ(rows()->rowCount(), 1);
    EXPECT_EQ(rows()->index(0, 4).data().toString(), u"7 山田　同意 2026/04/01"_s);
}

TEST_F(HistoryFormTest, TheNewestComeFirstAndTheRestWhenAsked) {
    for (int i = 0; i < 501; ++i)
        record({.changes = u"{}"_s});
    open(std::nullopt);
    EXPECT_EQ(rows()->rowCount(), 500);
    EXPECT_EQ(rows()->index(0, 1).data().toString(), u"PC501"_s);
    press(Qt::Key_F8);
    EXPECT_EQ(rows()->rowCount(), 501);
    EXPECT_EQ(control<QLabel>(u"lblKensu"_s)->text(), u"501 件"_s);
}
