#include "sample/menu/menu_window.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class Menu : public testing::Test {
protected:
    void show(bool printingFirst = false) {
        m_window =
            std::make_unique<MenuWindow>(MenuFolders{m_folder.path(), {u"/nowhere"_s, m_folder.path()}},
                                         m_processes, m_messages, printingFirst);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    }
    void addProgram() {
        QFile file(QDir(m_folder.path()).filePath(u"douisho"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir m_folder;
    RecordedProcesses m_processes;
    RecordedMessages m_messages;
    std::unique_ptr<MenuWindow> m_window;
};

TEST_F(Menu, StartsTheProgramInTheModeOfTheKeyAndGoes) {
    addProgram();
    struct Case {
        bool printingFirst;
        Qt::Key key;
        QString mode;
    };
    const QList<Case> cases = {
        {false, Qt::Key_F1, u"1"_s},    {false, Qt::Key_F2, u"0"_s}, {false, Qt::Key_Return, u"1"_s},
        {true, Qt::Key_Return, u"0"_s}, {true, Qt::Key_F1, u"1"_s},
    };
    for (const Case &c : cases) {
        m_processes.started.clear();
        show(c.printingFirst);
        QTest::keyClick(m_window.get()->focusWidget(), c.key);
        ASSERT_EQ(m_processes.started.size(), 1);
        EXPECT_EQ(m_processes.started.front().program, QDir(m_folder.path()).filePath(u"douisho"_s));
        EXPECT_EQ(m_processes.started.front().arguments, QStringList{c.mode});
        EXPECT_EQ(m_processes.started.front().folder, m_folder.path());
        EXPECT_FALSE(m_window->isVisible());
    }
}

TEST_F(Menu, StaysAndTellsWhenTheProgramIsMissing) {
    show();
    QTest::mouseClick(m_window->findChild<QPushButton *>(u"cmdList"_s), Qt::LeftButton);
    ASSERT_EQ(m_messages.shown.size(), 1);
    EXPECT_EQ(m_messages.shown.front().text, u"実行ファイルが見つかりません。"_s);
    EXPECT_EQ(m_messages.shown.front().title, u"実行ファイルエラー！"_s);
    EXPECT_TRUE(m_window->isVisible());
}

} // namespace
