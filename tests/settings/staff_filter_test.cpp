// The practitioners who limit the list, in order, and what is printed of it.

#include "consent/list/list_grid.h"
#include "consent/screens/consent_list_form.h"
#include "consent/screens/list_screens.h"
#include "consent/settings/staff_filter_form.h"
#include "print/ledger/ledger.h"
#include "print/renewal_list/renewal_query.h"
#include "tests/list/list_fixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class StaffFilterTest : public ListTest {
protected:
    StaffFilterTest() {
        database.run(u"INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 5, '佐藤'),"
                     " (1, 1, 6, '鈴木'), (1, 1, 7, '田中'), (2, 1, 8, '他店')"_s);
        for (int number = 1; number <= 4; ++number) {
            patient(number, u"利用者%1"_s.arg(number), u"ｶﾅ"_s, u"nTantou = %1"_s.arg(4 + number));
            consent(number, u"2026/12/31"_s);
        }
    }
    // Types the numbers into the dialog and leaves it.
    static void choose(const QStringList &numbers, bool inOrder) {
        QTimer::singleShot(0, [=] {
            QWidget *dialog = QApplication::activeModalWidget();
            auto *code = dialog->findChild<QLineEdit *>(u"numTantou"_s);
            for (const QString &number : numbers) {
                QTest::keyClicks(code, number);
                QTest::keyClick(code, Qt::Key_Return);
                QApplication::processEvents();
            }
            dialog->findChild<QCheckBox *>(u"chkJun"_s)->setChecked(inOrder);
            QTest::mouseClick(dialog->findChild<QPushButton *>(u"cmdSelect"_s), Qt::LeftButton);
        });
    }
};

TEST_F(StaffFilterTest, NumbersAreLookedUpAndPutInOrder) {
    frmTantouExtra form(environment, database.db);
    form.iControlInit({{u"5"_s, u"佐藤"_s}, {u"6"_s, u"鈴木"_s}}, false);
    auto *up = form.findChild<QPushButton *>(u"cmdSort_0"_s);
    const auto first = [&] { return form.staff().front().name; };
    EXPECT_EQ(form.vCheckStaff(u"007"_s).row, (CodeName{u"7"_s, u"田中"_s}));
    for (const QString &number : {u"99"_s, u"8"_s})
        EXPECT_EQ(form.vCheckStaff(number).reason, u"該当施術者なし"_s) << number.toStdString();
    EXPECT_EQ(form.iTantouSort(1), -1) << "the last one";
    EXPECT_EQ(messages.shown.back().text, u"これ以上の下への移動はできません。"_s);
    EXPECT_EQ(messages.shown.back().title, u"カーソル移動"_s);
    EXPECT_EQ(first(), u"佐藤"_s);
    up->click();
    EXPECT_EQ(first(), u"鈴木"_s);
    up->click();
    EXPECT_EQ(messages.shown.back().text, u"これ以上の上への移動はできません。"_s);
    EXPECT_EQ(first(), u"鈴木"_s);
    database.run(u"ALTER TABLE STAFF RENAME TO GONE"_s);
    const CodeLookup failed = form.vCheckStaff(u"5"_s);
    EXPECT_TRUE(failed.failed);
    EXPECT_TRUE(failed.reason.startsWith(u"施術者の検索に失敗しました"_s));
    EXPECT_TRUE(failed.reason.endsWith(u"csInpKey_Staff() でエラー"_s));
}

TEST_F(StaffFilterTest, TheListIsLimitedOrderedAndSaysSo) {
    frm同意書管理 form(environment);
    ASSERT_EQ(form.iInit(database.db, 0), 0);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    auto *grid = form.findChild<ListGrid *>(u"ssDouiD"_s);
    auto *told = form.findChild<QLabel *>(u"lblTantou"_s);
    const auto numbers = [&] {
        QStringList texts;
        for (int row = 0; row < grid->model()->rowCount(); ++row)
            texts += grid->model()->index(row, int(ListColumn::Number)).data().toString();
        return texts.join(u',');
    };
    EXPECT_FALSE(told->isVisible());
    choose({u"7"_s, u"5"_s}, false);
    form.findChild<QAction *>(u"mnTantouExtra"_s)->trigger();
    EXPECT_EQ(numbers(), u"1,3"_s);
    EXPECT_TRUE(told->isVisible());
    EXPECT_TRUE(told->text().contains(u"田中、佐藤"_s));
    choose({}, true);
    form.findChild<QAction *>(u"mnTantouExtra"_s)->trigger();
    EXPECT_EQ(numbers(), u"3,1"_s) << "in the order chosen";
    QTest::mouseClick(form.findChild<QPushButton *>(u"but_Clear"_s), Qt::LeftButton);
    EXPECT_EQ(numbers(), u"1,2,3,4"_s);
    EXPECT_FALSE(told->isVisible());
}

TEST_F(StaffFilterTest, DocumentsThatGoByPractitionersComeInTheirOrder) {
    std::vector<LedgerRow> rows(3);
    for (int i = 0; i < 3; ++i) {
        rows[size_t(i)].staffNumber = 5 + i;
        rows[size_t(i)].staff[0] = QString::number(5 + i);
    }
    LedgerOrder order;
    order.pattern = LedgerPattern::Staff;
    order.staff = {7, 5};
    orderLedger(rows, order);
    EXPECT_EQ(rows[0].staffNumber, 7);
    EXPECT_EQ(rows[1].staffNumber, 5);

    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoE = '2026/11/30'"_s);
    RenewalListQuery query;
    query.branch = environment.branch;
    query.patients = {1, 2, 3, 4};
    query.today = clock.today();
    query.options.month = clock.today();
    query.options.order = RenewalListOptions::Order::Practitioner;
    query.staff = {7, 5};
    for (const auto pageBreak :
         {RenewalListOptions::PageBreak::None, RenewalListOptions::PageBreak::Practitioner}) {
        query.options.pageBreak = pageBreak;
        const Result<std::vector<DueConsent>> due = readDueConsents(database.db, query);
        ASSERT_TRUE(due) << due.reason().toStdString();
        ASSERT_EQ(due->size(), 4U);
        EXPECT_EQ((*due)[0].patient, 3);
        EXPECT_EQ((*due)[1].patient, 1);
    }
}
