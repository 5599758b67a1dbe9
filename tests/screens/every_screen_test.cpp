// Every screen that the program opens, as a person who cannot see it, or sees little, meets it.

#include "app/base/ini_file.h"
#include "app/desktop/key_help.h"
#include "app/desktop/key_list.h"
#include "app/forms/input_box.h"
#include "app/forms/message_wait_form.h"
#include "consent/screens/consent_list_form.h"
#include "consent/screens/list_commands.h"
#include "db/adodb.h"
#include "db/column_names.h"
#include "history/log_tables.h"
#include "print/consent_form/consent_print_form.h"
#include "sample/installation.h"
#include "setup/set_up_form.h"
#include "tests/support/test_environment.h"
#include "widgets/wait_message_form.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isPartOfAnother(const QWidget &control) {
    const QWidget *parent = control.parentWidget();
    return qobject_cast<const QComboBox *>(parent) || qobject_cast<const QAbstractSpinBox *>(parent) ||
           qobject_cast<const QLineEdit *>(parent) || control.objectName().startsWith(u"qt_"_s) ||
           qobject_cast<const QHeaderView *>(&control) || control.inherits("QTableCornerButton");
}

/// What a person works with or reads the state of.
bool isControl(QWidget &widget) {
    return qobject_cast<QAbstractButton *>(&widget) || qobject_cast<QLineEdit *>(&widget) ||
           qobject_cast<QTextEdit *>(&widget) || qobject_cast<QPlainTextEdit *>(&widget) ||
           qobject_cast<QComboBox *>(&widget) || qobject_cast<QAbstractSpinBox *>(&widget) ||
           qobject_cast<QAbstractItemView *>(&widget) || qobject_cast<QProgressBar *>(&widget);
}

QString nameOf(QWidget &control) {
    const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&control);
    return spoken ? spoken->text(QAccessible::Name).trimmed() : QString();
}

QStringList nameless(QWidget &window) {
    QStringList names;
    for (QWidget *control : window.findChildren<QWidget *>())
        if (control->window() == &window && isControl(*control) && !isPartOfAnother(*control) &&
            nameOf(*control).isEmpty())
            names.append(control->objectName() + u" ("_s +
                         QString::fromLatin1(control->metaObject()->className()) + u')');
    return names;
}

/// Buttons and labels that are shown narrower or lower than their text.
QStringList clipped(QWidget &window) {
    QStringList names;
    for (QWidget *part : window.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<QLabel *>(part);
        const bool says = qobject_cast<QAbstractButton *>(part) || (label && !label->wordWrap());
        if (!says || part->window() != &window || !part->isVisible() || isPartOfAnother(*part) ||
            part->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            continue;
        const QSize wanted = part->minimumSizeHint();
        if (part->width() < wanted.width() || part->height() < wanted.height())
            names.append(part->objectName());
    }
    return names;
}

/// A common screen of 1920 × 1080 where all is shown half as large again, without a panel and a title.
constexpr QSize screenAtOneAndAHalf(1280, 660);

QSize leastSize(const QWidget &window) {
    return window.minimumSizeHint().expandedTo(window.minimumSize());
}

class EveryScreen : public testing::Test {
protected:
    EveryScreen() {
        sample::makeInstallation({.folder = folder.filePath(u"見本"_s),
                                  .day = QDate(2026, 11, 21),
                                  .patients = 20,
                                  .programs = {},
                                  .server = {}});
        folders = Folders(folder.filePath(u"見本"_s));
        clsOplIniFile ini;
        ini.iInit(Folders::file(folders.program(), u"adodb.ini"_s));
        QDir::setCurrent(folders.program());
        EXPECT_EQ(db.iInit(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s)), 0);
        EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
        EXPECT_TRUE(makeLogTables(db)); // as the first write does
    }

    /// Looks at every window that opens while `open` runs, presses in it the buttons that lead further, and
    /// closes it.
    template <class Look> void walk(const std::function<void()> &open, Look look) {
        QObject life;
        QSet<QWidget *> seen;
        std::function<void()> poll = [&] {
            // Windows over windows: a timer of its own for each, one that is at work does not strike again.
            QTimer::singleShot(5, &life, poll);
            QWidget *window = QApplication::activeModalWidget();
            if (!window || window == list.get() || seen.contains(window) || !window->isVisible())
                return;
            seen.insert(window);
            look(*window);
            for (const QString &name :
                 {u"btnNew"_s, u"cmdNew"_s, u"btnSelIsi"_s, u"btnDouiSyosikiSet"_s, u"btnAddText"_s})
                if (auto *further = window->findChild<QAbstractButton *>(name);
                    further && further->isEnabled())
                    further->click();
            static_cast<QDialog *>(window)->done(QDialog::Rejected);
            seen.remove(window); // another may come to lie there
        };
        poll();
        open();
    }

    /// All screens: the list, what its commands and choices open, the small windows and the screen of mode 0.
    template <class Look> void walkAll(Look look) {
        list = std::make_unique<frm同意書管理>(environment);
        ASSERT_EQ(list->iInit(db, 0), 0) << list->sErrMsg().toStdString();
        list->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(list.get()));
        look(*list);
        QTest::keyClick(list.get(), Qt::Key_F7);
        for (const ListCommand &command : listCommands())
            if (command.menu != ListCommand::Leave && command.name() != u"mnDispHelp"_s)
                walk([&] { run(command); }, look);
        for (const QAbstractButton *choice : list->findChildren<QAbstractButton *>())
            if (choice->objectName().startsWith(u"btnSel"_s))
                walk([&] { const_cast<QAbstractButton *>(choice)->click(); }, look);
        list.reset();
        frm同意書印刷 forms(environment);
        ASSERT_EQ(forms.iInit(db, {}, {}, {}, 0), 0);
        walk([&] { forms.exec(); }, look);
        SetUpForm setUp(environment, {}, {});
        walk([&] { setUp.exec(); }, look);
        InputBox input(u"番号"_s, u"入力"_s, {});
        walk([&] { input.exec(); }, look);
    }
    void run(const ListCommand &command) const {
        for (QAction *action : list->findChildren<QAction *>())
            if (action->objectName() == command.action ||
                (command.action.isEmpty() && action->objectName() == command.button + u"_action"_s))
                action->trigger();
    }

    QTemporaryDir folder;
    Folders folders{folder.path()};
    FixedClock clock{QDate(2026, 11, 21)};
    RecordedMessages messages;
    RecordedProcesses processes;
    Environment environment{folders, clock, messages, processes, {1, 1}};
    cT_ADODB db;
    std::unique_ptr<frm同意書管理> list;
};

} // namespace

TEST_F(EveryScreen, NamesItsControlsAndItself) {
    QHash<QString, QString> titles; // of each kind of window
    walkAll([&](QWidget &window) {
        const QStringList silent = nameless(window);
        EXPECT_TRUE(silent.isEmpty())
            << window.windowTitle().toStdString() << ": " << silent.join(u", "_s).toStdString();
        EXPECT_FALSE(window.windowTitle().isEmpty()) << window.objectName().toStdString();
        EXPECT_EQ(leastSize(window).boundedTo(screenAtOneAndAHalf), leastSize(window))
            << window.windowTitle().toStdString() << ' ' << leastSize(window).height();
        EXPECT_EQ(titles.value(window.windowTitle(), window.objectName()), window.objectName())
            << "two windows of the title " << window.windowTitle().toStdString();
        titles.insert(window.windowTitle(), window.objectName());
    });
    EXPECT_GE(titles.size(), 30) << titles.keys().join(u", "_s).toStdString();
}

TEST_F(EveryScreen, ShowsLargeTextsWhole) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(18);
    QApplication::setFont(large);
    walkAll([&](QWidget &window) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const QStringList cut = clipped(window);
        EXPECT_TRUE(cut.isEmpty()) << window.windowTitle().toStdString() << ": "
                                   << cut.join(u", "_s).toStdString();
    });
    QApplication::setFont(before);
}

TEST_F(EveryScreen, OpensWithoutTheColumnsThatADatabaseMayLack) {
    ASSERT_EQ(db.iExecSQL(u"DROP INDEX IX_RIYOUSHA_CAREMANE"_s), 0);
    for (const OptionalColumn &column : optionalColumns())
        ASSERT_EQ(db.iExecSQL(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(column.table, column.column)), 0)
            << db.sErrMsg().toStdString();
    QSet<QString> windows;
    walkAll([&](QWidget &window) { windows.insert(window.windowTitle()); });
    EXPECT_GE(windows.size(), 30);
    EXPECT_EQ(db.sErrMsg().toStdString(), "");
    for (const Message &message : messages.shown)
        EXPECT_FALSE(message.text.contains(u"列がありません")) << message.text.toStdString();
}

TEST_F(EveryScreen, TheListsKeysAreThoseOfItsCommands) {
    list = std::make_unique<frm同意書管理>(environment);
    ASSERT_EQ(list->iInit(db, 0), 0);
    list->show();
    QStringList shown;
    for (const KeyGroup &group : keysOf(*list))
        for (const KeyLine &line : group.lines) {
            shown.append(line.keys + line.what);
            EXPECT_FALSE(line.what.isEmpty()) << line.keys.toStdString();
        }
    for (const ListCommand &command : listCommands())
        if (!command.key.isEmpty()) {
            const QString line =
                QKeySequence(command.key).toString(QKeySequence::NativeText) + command.caption;
            EXPECT_TRUE(std::ranges::any_of(shown, [&](const QString &one) { return one.startsWith(line); }))
                << command.caption.toStdString();
        }
}
