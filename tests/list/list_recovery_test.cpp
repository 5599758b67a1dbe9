// Nothing that was typed is lost: rows that a colleague wrote meanwhile, and runs that ended without saving.

#include "consent/list/unsaved_rows.h"
#include "consent/merge/merge_form.h"
#include "tests/list/list_form_fixture.h"

#include "widgets/date_box.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QTableView>

class ListRecoveryTest : public ListFormTest {
protected:
    ListRecoveryTest() {
        QDir(folder()).removeRecursively();
        QObject::connect(&m_looks, &QTimer::timeout, [this] { look(); });
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2026/11/20 10:00:00.000'"_s);
    }
    static QString folder() {
        const QSettings windows(QSettings::IniFormat, QSettings::UserScope, u"douisho"_s, u"windows"_s);
        return QFileInfo(windows.fileName()).path() + u"/unsaved"_s;
    }
    static QStringList kept(const QString &ending = u".unsaved"_s) {
        return QDir(folder()).entryList({u"*"_s + ending}, QDir::Files);
    }
    void colleague(int number, const QString &set) {
        ++m_minute;
        database.run(
            u"UPDATE RIYOUSHA_DOUI_REC SET %1, cPcName = 'PC-2', tUpDateTime = '2026/11/21 08:%2:00.000'"
            " WHERE nIDNo = %3"_s.arg(set)
                .arg(m_minute, 2, 10, QChar(u'0'))
                .arg(number));
    }
    // As an input method does it.
    void enterText(int row, const QString &text) {
        const QModelIndex cell = grid->model()->index(row, int(ListColumn::Remark));
        EXPECT_TRUE(grid->model()->setData(cell, text, Qt::EditRole));
    }
    void save() {
        // The window of the question before has ended.
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        messages.shown.clear();
        messages.answers = {Answer::Yes};
        QTest::keyClick(form.get(), Qt::Key_F5);
    }
    // What the user does in the next window with overtaken rows; several are several windows.
    void decide(std::vector<std::function<void(QWidget *)>> acts) {
        m_acts = std::move(acts);
        m_seen = 0;
        m_looks.start(0);
    }
    void look() {
        QWidget *window = QApplication::activeModalWidget();
        if (!window || !QTest::qWaitForWindowActive(window))
            return;
        m_looks.stop();
        m_acts[m_seen++](window);
        if (m_seen < m_acts.size())
            m_looks.start(0);
    }
    static void enter(QWidget *window) { QTest::keyClick(window, Qt::Key_Return); }
    static void press(QWidget *window, const QString &name) {
        window->findChild<QPushButton *>(name)->click();
    }
    static QString cellOf(QWidget *window, int row, int column) {
        return window->findChild<QTableView *>(u"ssKoumoku"_s)->model()->index(row, column).data().toString();
    }
    // The run ends without a word: its file stays, and nobody holds it.
    void crash() {
        ASSERT_TRUE(QTest::qWaitFor([] { return kept().size() == 1; }));
        const QString path = folder() + u'/' + kept().front();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        form.reset();
        QFile::remove(path);
        QFile::remove(path + u".lock"_s);
        QFile again(path);
        ASSERT_TRUE(again.open(QIODevice::WriteOnly));
        again.write(content);
    }
    // The next start, with the answers to what it asks.
    void start(std::deque<Answer> answers) {
        messages.shown.clear();
        messages.answers = std::move(answers);
        open();
        QApplication::processEvents();
    }

    size_t m_seen = 0;

private:
    QTimer m_looks;
    std::vector<std::function<void(QWidget *)>> m_acts;
    int m_minute = 0;
};

TEST_F(ListRecoveryTest, WhatBothWroteInOtherColumnsIsMergedByOneKey) {
    open();
    enterText(0, u"電話済み"_s);
    enterText(1, u"FAX"_s);
    colleague(1, u"iRenrakuFlg = 1, cDouiIsiName = '別医師'"_s);
    decide({[](QWidget *window) {
        EXPECT_TRUE(
            window->findChild<QLabel *>(u"lblWritten"_s)->text().contains(u"PC-2　2026/11/21 08:01"_s));
        const QStringList columns{cellOf(window, 0, 0), cellOf(window, 1, 0), cellOf(window, 2, 0)};
        EXPECT_EQ(columns, (QStringList{u"連絡"_s, u"備考"_s, u"担当医師"_s}));
        EXPECT_EQ(cellOf(window, 0, MergeColumnsModel::Theirs), u"● チェックあり"_s);
        EXPECT_EQ(cellOf(window, 1, MergeColumnsModel::Typed), u"● 電話済み"_s);
        enter(window);
    }});
    save();
    EXPECT_EQ(m_seen, 1u);
    EXPECT_EQ(messages.notes.back(), u"保存しました。"_s);
    EXPECT_EQ(stored(1, u"cItiranBikou || '|' || iRenrakuFlg"_s), u"電話済み|1"_s);
    EXPECT_EQ(stored(2, u"cItiranBikou"_s), u"FAX"_s);
}

TEST_F(ListRecoveryTest, WhatCollidesIsDecidedAndComparedOnceMore) {
    open();
    for (const int row : {0, 1, 2})
        enterText(row, u"入力%1"_s.arg(row + 1));
    for (const int number : {1, 2})
        colleague(number, u"cItiranBikou = '同僚'"_s);
    decide({[&](QWidget *window) {
                enter(window);
                EXPECT_TRUE(window->isVisible()) << "not before everything is decided";
                QTest::keyClick(window->findChild<QTableView *>(u"ssKoumoku"_s), Qt::Key_Space);
                QTest::keyClick(window, Qt::Key_Return);
                QTest::keyClick(window, Qt::Key_Return);
                EXPECT_TRUE(window->isVisible());
                press(window, u"cmdTheirs"_s);
                colleague(1, u"cItiranBikou = '同僚、二度目'"_s);
                enter(window);
            },
            [](QWidget *window) {
                EXPECT_EQ(cellOf(window, 0, MergeColumnsModel::Read), u"同僚"_s);
                EXPECT_EQ(cellOf(window, 0, MergeColumnsModel::Theirs), u"● 同僚、二度目"_s);
                press(window, u"cmdTyped"_s);
                enter(window);
            }});
    save();
    EXPECT_EQ(m_seen, 2u);
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"入力1"_s);
    EXPECT_EQ(stored(2, u"cItiranBikou"_s), u"同僚"_s);
    EXPECT_EQ(stored(3, u"cItiranBikou"_s), u"入力3"_s);
}

TEST_F(ListRecoveryTest, ARowThatHasGoneIsSaidAndItsInputCanBeCopied) {
    open();
    for (const int row : {0, 1, 2})
        enterText(row, u"入力%1"_s.arg(row + 1));
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s);
    colleague(2, u"iNewestFlg = 0"_s);
    // Left, all is as it was.
    decide({[](QWidget *window) { press(window, u"cmdEnd"_s); }});
    save();
    EXPECT_EQ(stored(3, u"cItiranBikou"_s), u"NULL"_s);
    EXPECT_TRUE(control<QLabel>(u"lblStatus"_s)->text().contains(u"3 行"_s));
    decide({[](QWidget *window) {
        const auto *rows = window->findChild<QTableView *>(u"ssGyou"_s)->model();
        EXPECT_TRUE(rows->index(0, 1).data().toString().startsWith(u"削除されたか"_s));
        EXPECT_TRUE(rows->index(1, 1).data().toString().startsWith(u"更新され"_s));
        press(window, u"cmdCopy"_s);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), u"1 利用者1　備考 入力1"_s);
        enter(window);
    }});
    save();
    EXPECT_EQ(stored(3, u"cItiranBikou"_s), u"入力3"_s);
    EXPECT_EQ(stored(2, u"cItiranBikou"_s), u"NULL"_s);
    EXPECT_EQ(grid->model()->rowCount(), 1);
}

TEST_F(ListRecoveryTest, ReadAgainARowIsMergedTooAndNothingGoesUnasked) {
    open();
    enterText(0, u"入力"_s);
    colleague(1, u"cItiranBikou = '同僚'"_s);
    messages.answers = {Answer::No};
    decide({[](QWidget *window) {
        press(window, u"cmdEnd"_s);
        EXPECT_TRUE(window->isVisible()) << "what was typed would be lost";
        press(window, u"cmdTyped"_s);
        enter(window);
    }});
    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(m_seen, 1u);
    EXPECT_EQ(at(0, ListColumn::Remark), u"入力"_s);
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"同僚"_s);
    save();
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"入力"_s);
}

TEST_F(ListRecoveryTest, WhatACrashLeftIsOfferedOverTheSameRowsAndGoesWhenSaved) {
    // Outside of the range that a start begins with.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoE = '2027/08/31' WHERE nIDNo = 2"_s);
    database.run(u"UPDATE RIYOUSHA SET tExpireDay = '2026/11/01' WHERE nIDNo = 2"_s);
    open();
    control<DateBox>(u"imD_KikanTo"_s)->setDate({2027, 12, 31});
    control<QCheckBox>(u"chkEndKanja"_s)->setChecked(true);
    QTest::keyClick(form.get(), Qt::Key_F4);
    go(0, ListColumn::Reconsent);
    type(u"2026/11/20"_s);
    enterText(1, u"改行\"、𠮷"_s);
    go(2, ListColumn::Received);
    QTest::keyClick(grid, Qt::Key_Space);
    crash();
    EXPECT_EQ(QFileInfo(folder()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());

    // Put off, it stays; a second window leaves alone what the first one holds.
    start({Answer::Cancel});
    EXPECT_EQ(messages.shown.front().title, u"復元"_s);
    EXPECT_TRUE(messages.shown.front().text.contains(u"3 行あります（2026/11/21 09:00）"_s));
    EXPECT_TRUE(messages.shown.front().text.contains(u"2 利用者2"_s));
    form.reset();
    colleague(3, u"cItiranBikou = '同僚'"_s);
    messages.answers = {Answer::Yes};
    form = std::make_unique<frm同意書管理>(environment);
    decide({[](QWidget *window) {
        EXPECT_EQ(cellOf(window, 0, MergeColumnsModel::Caption), u"受領"_s);
        enter(window);
    }});
    ASSERT_EQ(form->iInit(database.db, 0), 0);
    form->show();
    grid = form->findChild<ListGrid *>(u"ssDouiD"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_seen == 1 && !QApplication::activeModalWidget(); }));
    ASSERT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/11/20"_s);
    EXPECT_EQ(at(1, ListColumn::Remark), u"改行\"、𠮷"_s);
    EXPECT_EQ(kept().size(), 1) << "kept for the next crash";
    frm同意書管理 second(environment);
    messages.shown.clear();
    ASSERT_EQ(second.iInit(database.db, 0), 0);
    QApplication::processEvents();
    EXPECT_TRUE(messages.shown.isEmpty());

    save();
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2026/11/20"_s);
    EXPECT_EQ(stored(2, u"cItiranBikou"_s), u"改行\"、𠮷"_s);
    EXPECT_EQ(stored(3, u"cItiranBikou || '|' || iGetFlg"_s), u"同僚|1"_s);
    EXPECT_TRUE(kept().isEmpty());
}

TEST_F(ListRecoveryTest, WhatIsThrownAwayIsGoneAndADamagedFileIsSetAside) {
    open();
    enterText(0, u"入力"_s);
    crash();
    start({Answer::No});
    EXPECT_TRUE(kept().isEmpty());
    EXPECT_EQ(at(0, ListColumn::Remark), QString());

    enterText(0, u"入力"_s);
    crash();
    QFile file(folder() + u'/' + kept().front());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(file.size() - 40);
    file.write("x");
    file.close();
    start({});
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_TRUE(messages.shown.front().text.contains(u"内容が壊れています。"_s));
    EXPECT_EQ(kept(u".damaged"_s).size(), 1);
    EXPECT_TRUE(kept().isEmpty());

    enterText(0, u"もう一度"_s);
    EXPECT_TRUE(QTest::qWaitFor([] { return kept().size() == 1; }));
    QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(kept().isEmpty()) << "nothing is unsaved any more";
}

TEST(UnsavedRows, ComeBackWithEveryValue) {
    const ConsentRowValues read{short(1),     {}, short(0), short(2),    {}, short(1),
                                {2026, 1, 1}, {}, {},       u"改行\n"_s, {}};
    const ConsentRowValues now{{},           short(1),     short(1),     {}, short(0), {},
                               {2026, 2, 1}, {2026, 2, 2}, {2026, 2, 3}, {}, u"依頼"_s};
    const RunningRow running{
        {2026, 3, 1}, {{2026, 3, 2}, {2026, 3, 3}}, u"12"_s, u"医師"_s, u"病院"_s, u"傷病"_s, short(1),
        short(2)};
    const UnsavedRows kept{u"db 1-1"_s,
                           {{2026, 11, 21}, {9, 0}},
                           true,
                           {{{{{{1, 2, 3}, 20251120, 1, 20251121},
                               read,
                               u"2026/11/20 10:00:00.123"_s,
                               u"奇1"_s,
                               u"奇2"_s,
                               u"奇3"_s,
                               true,
                               running},
                              now},
                             u"3 利用者"_s}}};
    const Result<UnsavedRows> back = unsavedRows(toBytes(kept));
    ASSERT_TRUE(back && back->rows.size() == 1) << back.reason().toStdString();
    const TypedRow &row = back->rows.front(), &was = kept.rows.front();
    EXPECT_TRUE(row.now.same(now) && row.read.values.same(read) && row.read.running.same(running));
    EXPECT_TRUE(rowIdentity(row.read.key) == rowIdentity(was.read.key) && row.read.answeredAsMassage);
    const auto texts = [](const TypedRow &of) {
        return QStringList{of.who, of.read.updateTime, of.read.oddReconsent, of.read.oddStart,
                           of.read.oddEnd};
    };
    EXPECT_EQ(texts(row), texts(was));
    EXPECT_TRUE(back->database == kept.database && back->time == kept.time && back->ended);
}
