// The request screen, opened from the consent list and worked by its controls.

#include "consent/list/list_grid.h"
#include "consent/requests/request_rows_model.h"
#include "consent/screens/consent_list_form.h"
#include "tests/list/list_fixture.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class RequestFormTest : public ListTest {
protected:
    RequestFormTest() {
        database.run(u"INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, iType) VALUES (1, 1, 1, 0)"_s);
        for (const int number : {1, 2}) {
            patient(number, u"利用者%1"_s.arg(number), u"ﾘ"_s);
            consent(number, u"2026/12/31"_s);
        }
        for (int kind = 0; kind < letterKinds; ++kind)
            EXPECT_TRUE(
                QFile(programFolder.filePath(letterKindLayout(LetterKind(kind)))).open(QIODevice::WriteOnly));
        EXPECT_EQ(form.iInit(database.db, 0), 0);
        showActive(form);
        grid = form.findChild<ListGrid *>(u"ssDouiD"_s);
    }
    void tickTarget(int row) {
        grid->goTo(row, int(ListColumn::Target));
        QTest::keyClick(grid, Qt::Key_Space);
    }
    void command(const QString &name) { form.findChild<QPushButton *>(name)->click(); }
    bool isMarked(int number) const {
        return database.value(u"SELECT iOutputFlg FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %1"_s.arg(number)) ==
               u"1"_s;
    }
    // Opens the request screen and works it while it is open.
    void request(const std::function<void(QWidget &)> &work) {
        QTimer opened;
        opened.setSingleShot(true);
        QObject::connect(&opened, &QTimer::timeout, [&] { work(*QApplication::activeModalWidget()); });
        opened.start(0);
        command(u"cmdIrai"_s);
    }

    frm同意書管理 form{environment};
    ListGrid *grid = nullptr;
};

TEST_F(RequestFormTest, PrintsWhatIsChosenAndTheListShowsIt) {
    tickTarget(0);
    tickTarget(1);
    messages.answers = {Answer::Yes, Answer::Ok}; // no practitioner; the note about oral consents
    request([&](QWidget &screen) {
        EXPECT_EQ(screen.objectName(), u"frm同意依頼"_s);
        auto *rows = screen.findChild<Grid *>(u"ssIrai"_s);
        EXPECT_EQ(screen.findChild<QLabel *>(u"lblState"_s)->text(), u"2 件（マッサージ継続 2 件）"_s);
        rows->setFocus();
        rows->goTo(1, RequestRowsModel::Paper);
        QTest::keyClick(rows, Qt::Key_Space);
        rows->goTo(0, RequestRowsModel::Kind);
        rows->model()->setData(rows->currentIndex(), int(LetterKind::DoctorChanged), Qt::EditRole);
        screen.findChild<QCheckBox *>(u"chkMatome"_s)->setChecked(true);
        screen.findChild<DateBox *>(u"imD_Output"_s)->setText(u"R8.13.1"_s);
        screen.findChild<QPushButton *>(u"cmdPrint"_s)->click();
        EXPECT_TRUE(messages.shown.value(0).text.startsWith(u"出力日"_s));
        messages.answers = {Answer::Yes, Answer::Ok};
        screen.findChild<DateBox *>(u"imD_Output"_s)->setText(u"R8.11.30"_s);
        screen.findChild<QPushButton *>(u"cmdPrint"_s)->click();
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_TRUE(isMarked(1));
    EXPECT_FALSE(isMarked(2)) << "not wanted on paper";
    EXPECT_EQ(grid->model()->index(0, int(ListColumn::Requested)).data(Qt::CheckStateRole), Qt::Checked);
    QFile commands(programFolder.filePath(u"WfdCom.dat"_s));
    ASSERT_TRUE(commands.open(QIODevice::ReadOnly));
    EXPECT_TRUE(commands.readAll().contains("CARE04"));
    request([&](QWidget &screen) {
        EXPECT_TRUE(screen.findChild<QCheckBox *>(u"chkMatome"_s)->isChecked()) << "the last choice";
        QTest::keyClick(&screen, Qt::Key_Escape);
    });
}

TEST_F(RequestFormTest, NothingTickedIsSaidAndPrintingAtOnceAsks) {
    request([](QWidget &) { ADD_FAILURE() << "opened without a row"; });
    command(u"cmdPrint"_s);
    ASSERT_EQ(messages.shown.size(), 2);
    for (const Message &message : messages.shown)
        EXPECT_EQ(message.text, u"出力するデータがありません。"_s);
    tickTarget(1);
    messages.answers = {Answer::No};
    command(u"cmdPrint"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"マッサージ継続 1 件"_s));
    EXPECT_FALSE(isMarked(2));
    messages.answers = {Answer::Yes, Answer::Yes};
    QTest::keyClick(&form, Qt::Key_F11);
    EXPECT_TRUE(isMarked(2));
}
