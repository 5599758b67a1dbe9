// The mail screens, opened from the list's rows and worked by keys.

#include "consent/screens/list_screens.h"
#include "print/mail/sending_form.h"
#include "tests/list/list_fixture.h"
#include "tests/mail/smtp_server.h"
#include "tests/widgets/form_keys.h"
#include "widgets/grid.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class MailFormTest : public ListTest {
protected:
    MailFormTest() {
        QDir::setCurrent(programFolder.path());
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number), u"ﾘﾖｳ"_s);
            consent(number, u"2026/12/31"_s, u"iRenrakuFlg = 1, iSendFlg = %1"_s.arg(number == 3));
            database.run(
                u"INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iSoudaninId) VALUES (1, 1, %1, %2)"_s
                    .arg(number)
                    .arg(number == 2 ? 8 : 7));
        }
        database.run(u"INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName, cMail1, iChusiFlg) VALUES"
                     " (1, 1, 7, '佐藤', 'a@example.jp', 0), (1, 1, 8, '鈴木', 'refused@example.jp', 0)"_s);
        EXPECT_EQ(found().size(), 3);
    }
    bool open() {
        ListOpening opening{environment, database.db, {}, 0, {}, nullptr};
        for (const int record : model.targetRecords())
            opening.targets.push_back(model.row(record));
        return openMailScreen(opening);
    }
    /// Does the work when the mail screen is up; it is closed afterwards, whatever happened.
    bool openAnd(const std::function<void(QWidget &form)> &work) {
        QTimer::singleShot(0, [&] {
            QWidget *form = QApplication::activeModalWidget();
            ASSERT_TRUE(form && QTest::qWaitForWindowActive(form));
            const QAbstractItemModelTester tester(form->findChild<Grid *>()->model());
            work(*form);
            form->close();
        });
        return open();
    }
};

} // namespace

TEST_F(MailFormTest, NothingTickedAndMissingContactsAreRefused) {
    EXPECT_FALSE(open());
    EXPECT_EQ(messages.shown.back().text, u"出力するデータがありません。"_s);
    model.tick(model.shownRecords(), ListColumn::Target, true);
    tick(2, ListColumn::Contact, false);
    messages.answers = {Answer::No};
    EXPECT_FALSE(open());
    EXPECT_TRUE(messages.shown.back().text.startsWith(
        u"「連絡」にチェックがない利用者が「対象」に選ばれています。\r\n該当利用者の「対象」を外して下さい。"_s));
    EXPECT_TRUE(messages.shown.back().text.contains(u"利用者2"_s));
    messages.answers = {Answer::Yes};
    EXPECT_FALSE(open());
    EXPECT_TRUE(messages.shown.back().text.endsWith(u"\r\nInit()でエラー"_s)) << "the others are proposed";
}

TEST_F(MailFormTest, SendsByKeysAndMailsNobodyTwice) {
    struct Case {
        QString server, told, lines;
        QStringList marked;
        int before = 1; ///< patients told of before
    };
    const Case cases[] = {
        {u"--fault silent"_s, u"メール送信を中止しました"_s, u"未送信　佐藤"_s, {u"3"_s}},
        {u"--reject refused@example.jp"_s,
         u"メール送信が失敗しました"_s,
         u"送信済　佐藤（a@example.jp）利用者 2 名\n未送信　鈴木"_s,
         {u"1"_s, u"3"_s}},
        {u""_s, u"メール送信が完了しました"_s, u"送信済　鈴木"_s, {u"1"_s, u"2"_s, u"3"_s}, 2},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.server.toStdString());
        const SmtpServer server(c.server);
        writeMailIni(programFolder.path(), server.port());
        EXPECT_EQ(found().size(), 3); // read again, as the list does
        model.tick(model.shownRecords(), ListColumn::Target, true);
        QString lines;
        const bool sent = openAnd([&](QWidget &form) {
            const auto *count = form.findChild<QLabel *>(u"lblKensu"_s);
            EXPECT_EQ(count->text().left(5), c.before == 1 ? u"送信先 2"_s : u"送信先 1"_s)
                << "whose patients have all been told of is left out";
            for (int i = 0; i < 2 && !count->text().startsWith(u"送信先 0"_s); ++i)
                pressButton(form, Qt::Key_F7);
            pressButton(form, Qt::Key_F5);
            EXPECT_EQ(messages.shown.back().text, u"対象相談員を選択してください。"_s);
            pressButton(form, Qt::Key_F7);
            EXPECT_EQ(count->text(), u"送信先 2 件　利用者 3 名"_s);
            EXPECT_TRUE(
                form.findChild<QPlainTextEdit *>()->toPlainText().contains(u"利用者3さん [ID：3]\n以上"_s));

            messages.answers = {Answer::Yes};
            QTimer escape;
            QObject::connect(&escape, &QTimer::timeout, &form, [&] {
                auto *sending = dynamic_cast<frmSending *>(QApplication::activeModalWidget());
                if (!sending || (sending->results().empty() && !c.server.contains(u"silent"_s)))
                    return;
                lines = sending->findChild<QPlainTextEdit *>()->toPlainText();
                QTest::keyClick(sending, Qt::Key_Escape);
            });
            escape.start(100);
            pressButton(form, Qt::Key_F5);
            const QAbstractItemModel &rows = *form.findChild<Grid *>()->model();
            for (int row = 0; row < 2; ++row) // who got a mail cannot be ticked, who got none still is
                EXPECT_EQ(rows.index(row, 0).data(Qt::CheckStateRole).toInt(),
                          int(server.mails().size() > row ? Qt::Unchecked : Qt::Checked));
        });
        EXPECT_EQ(sent, !server.mails().isEmpty());
        EXPECT_TRUE(lines.contains(c.lines)) << lines.toStdString();
        EXPECT_EQ(messages.shown.back().text, c.told);
        EXPECT_EQ(messages.shown.back().title, u"メール送信"_s);
        EXPECT_TRUE(messages.shown[messages.shown.size() - 2].text.contains(
            u"以前に送信済の利用者が %1 名"_s.arg(c.before)));
        EXPECT_EQ(database.rows(u"SELECT nIDNo FROM RIYOUSHA_DOUI_REC WHERE iSendFlg = 1"_s), c.marked);
    }
}
