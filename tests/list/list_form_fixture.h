#pragma once

#include "consent/list/list_grid.h"
#include "consent/screens/consent_list_form.h"
#include "tests/list/list_fixture.h"

#include <QApplication>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

/// The list's window over three rows that end in its first range.
class ListFormTest : public ListTest {
protected:
    ListFormTest() {
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number),
                    QStringList{u"ﾔﾏﾀﾞ"_s, u"スズキ"_s, u"やまもと"_s}[number - 1]);
            consent(number, u"2026/12/31"_s);
        }
    }
    ~ListFormTest() override {
        QSettings(QSettings::IniFormat, QSettings::UserScope, u"douisho"_s, u"windows"_s).clear();
    }
    // Opened as the launcher does, but not waiting.
    void open() {
        form = std::make_unique<frm同意書管理>(environment);
        ASSERT_EQ(form->iInit(database.db, 0), 0) << form->sErrMsg().toStdString();
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        grid = form->findChild<ListGrid *>(u"ssDouiD"_s);
    }
    template <class W> W *control(const QString &name) {
        W *found = form->findChild<W *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QString at(int row, ListColumn column) const {
        return grid->model()->index(row, int(column)).data().toString();
    }
    void go(int row, ListColumn column) {
        grid->setFocus();
        grid->goTo(row, int(column));
    }
    // Types into the current cell and leaves its editor by Enter.
    void type(const QString &text) {
        QTest::keyClicks(grid, text.left(1));
        QWidget *editor = QApplication::focusWidget();
        QTest::keyClicks(editor, text.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        // The editor hands its value over after the key has been dealt with.
        QApplication::processEvents();
    }
    // Chooses in the dialog of F9 and leaves it by a key.
    void chooseOrder(Qt::Key inOrders, Qt::Key leave) {
        QTimer::singleShot(0, [=] {
            QWidget *dialog = QApplication::activeModalWidget();
            QTest::keyClick(dialog->findChild<QWidget *>(u"lstOrder"_s), inOrders);
            QTest::keyClick(dialog, leave);
        });
        control<QPushButton>(u"cmdDspOrder"_s)->click();
    }
    bool isTarget(int row) const {
        return grid->model()->index(row, int(ListColumn::Target)).data(Qt::CheckStateRole) == Qt::Checked;
    }
    QString stored(int number, const QString &column) const {
        return database.value(u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %2"_s.arg(column).arg(number));
    }

    std::unique_ptr<frm同意書管理> form;
    ListGrid *grid = nullptr;
};
