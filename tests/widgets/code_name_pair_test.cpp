#include "widgets/code_name_pair.h"

#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/code_box.h"
#include "widgets/enter_moves_on.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

CodeLookup known(const QString &code) {
    if (code.toInt() == 5)
        return {{u"5"_s, u"佐藤医院"_s}, {}, false};
    if (code.toInt() == 6)
        return {{u"6"_s, u"鈴木医院"_s}, {}, false};
    return CodeLookup::refused(u"ありません。"_s);
}

/// A code pair as a form has it, and a box behind it.
struct PairForm : QWidget {
    PairForm() {
        auto *layout = new QVBoxLayout(this);
        for (QWidget *part : std::initializer_list<QWidget *>{&code, &name, &button, &next})
            layout->addWidget(part);
        code.setFocus();
        showActive(*this);
    }
    void type(const QString &text) {
        code.setFocus();
        code.selectAll();
        typeText(&code, text);
    }
    void leave() {
        QTest::keyClick(&code, Qt::Key_Tab);
        QCoreApplication::processEvents();
    }

    RecordedMessages messages;
    std::optional<CodeName> picked;
    int opened = 0;
    CodeBox code;
    QLineEdit name;
    QPushButton button;
    QLineEdit next;
    CodeNamePair *pair = new CodeNamePair(&code, &name, &button,
                                          {known,
                                           [this](QWidget *) {
                                               ++opened;
                                               return picked;
                                           }},
                                          messages);
};

} // namespace

TEST(CodeBox, TakesDigitsInAnyWidthAndNothingElse) {
    struct Case {
        QString typed;
        QString held;
    };
    const Case cases[] = {{u"123"_s, u"123"_s},   {u"１２３"_s, u"123"_s}, {u"0０7"_s, u"007"_s},
                          {u"1'2%3"_s, u"123"_s}, {u"-5"_s, u"5"_s},       {u"一2"_s, u"2"_s},
                          {u"٣4"_s, u"4"_s}};
    CodeBox box;
    for (const Case &c : cases) {
        box.clear();
        typeText(&box, c.typed);
        EXPECT_EQ(box.text(), c.held) << c.typed.toStdString();
    }
    box.clear();
    box.insert(u" ００12 "_s); // pasted with its blanks
    EXPECT_EQ(box.text(), u"0012"_s);
    EXPECT_EQ(box.number(), 12);
    box.setNumber(0);
    EXPECT_EQ(box.text(), QString());
}

TEST(CodeNamePair, LooksUpOnEnterAndMovesBehindItsOwnControls) {
    PairForm form;
    QSignalSpy changed(form.pair, &CodeNamePair::changed);
    form.type(u"００5"_s);
    QTest::keyClick(&form.code, Qt::Key_Return);
    EXPECT_EQ(form.code.text(), u"5"_s) << "the code as the table writes it";
    EXPECT_EQ(form.name.text(), u"佐藤医院"_s);
    EXPECT_TRUE(form.next.hasFocus());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(form.messages.shown.isEmpty());
}

TEST(CodeNamePair, SaysAWrongCodeAndKeepsTheFocusOnce) {
    PairForm form;
    form.pair->setRow({u"5"_s, u"佐藤医院"_s});
    QSignalSpy changed(form.pair, &CodeNamePair::changed);
    form.type(u"99"_s);
    QTest::keyClick(&form.code, Qt::Key_Return);
    ASSERT_EQ(form.messages.shown.size(), 1);
    EXPECT_EQ(form.messages.shown.at(0).text, u"ありません。"_s);
    EXPECT_EQ(form.messages.shown.at(0).icon, MessageIcon::Exclamation);
    EXPECT_TRUE(form.code.hasFocus());
    EXPECT_EQ(form.code.text(), u"99"_s);
    EXPECT_EQ(form.name.text(), QString());
    EXPECT_EQ(changed.count(), 1) << "what hangs on the former row must go with it";
    EXPECT_EQ(form.pair->row(), CodeName());

    form.leave();
    EXPECT_EQ(form.messages.shown.size(), 1) << "nobody may be held in the box";
    EXPECT_FALSE(form.code.hasFocus());
    EXPECT_FALSE(form.pair->settle()) << "but a command finds the code still wrong";
    EXPECT_EQ(form.messages.shown.size(), 2);
    EXPECT_TRUE(form.code.hasFocus());

    form.type(u"98"_s);
    form.leave();
    EXPECT_EQ(form.messages.shown.size(), 3);
    EXPECT_TRUE(form.code.hasFocus());
}

TEST(CodeNamePair, TheNameNeverStandsBesideAnotherCode) {
    PairForm form;
    form.pair->setRow({u"5"_s, u"佐藤医院"_s});
    form.type(u"56"_s);
    EXPECT_EQ(form.name.text(), QString());
    QTest::keyClick(&form.code, Qt::Key_Backspace);
    EXPECT_EQ(form.name.text(), u"佐藤医院"_s) << "typed back to the code in force";
    form.type(u"6"_s);
    EXPECT_TRUE(form.pair->settle());
    EXPECT_EQ(form.name.text(), u"鈴木医院"_s);

    QSignalSpy changed(form.pair, &CodeNamePair::changed);
    form.code.clear();
    form.leave();
    EXPECT_EQ(form.name.text(), QString());
    EXPECT_EQ(form.pair->row(), CodeName());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(form.messages.shown.isEmpty()) << "an empty code is no mistake";
}

TEST(CodeNamePair, TakesWhatThePickListGives) {
    PairForm form;
    form.picked = CodeName{u"77"_s, u"高橋"_s};
    form.type(u"99"_s);
    QTest::mouseClick(&form.button, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.code.text(), u"77"_s);
    EXPECT_EQ(form.name.text(), u"高橋"_s);
    EXPECT_TRUE(form.messages.shown.isEmpty()) << "the pick list was the answer to the wrong code";
    form.picked = std::nullopt;
    QTest::keyClick(&form.code, Qt::Key_Down);
    EXPECT_EQ(form.opened, 2);
    EXPECT_EQ(form.code.text(), u"77"_s) << "left without a choice";
    EXPECT_TRUE(form.code.hasFocus());
}

TEST(CodeNamePair, AFormThatClosesSaysNothing) {
    PairForm form;
    QObject::connect(&form.button, &QPushButton::clicked, &form, &QWidget::close);
    form.pair->setSearch({known, {}});
    form.type(u"99"_s);
    QTest::mouseClick(&form.button, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_TRUE(form.messages.shown.isEmpty());
}

TEST(EnterMovesOn, GoesOnUnlessTheBoxKeepsTheKey) {
    PairForm form;
    new EnterMovesOn(&form); // behind the pair, so its filter comes first
    form.type(u"99"_s);
    QTest::keyClick(&form.code, Qt::Key_Return);
    EXPECT_TRUE(form.code.hasFocus()) << "wrong code";
    form.type(u"5"_s);
    QTest::keyClick(&form.code, Qt::Key_Return);
    EXPECT_TRUE(form.next.hasFocus());
    QTest::keyClick(&form.next, Qt::Key_Return);
    EXPECT_TRUE(form.code.hasFocus()) << "round to the first";
}
