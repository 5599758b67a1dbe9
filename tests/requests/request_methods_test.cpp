// The request method list: its file, right and wrong, and its editing.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/request_methods.h"
#include "consent/requests/method_list.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

class RequestMethodsTest : public testing::Test {
protected:
    RequestMethodsTest() { QDir(program.path()).mkdir(u"DATA"_s); }

    void write(const QString &text) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(encode932(u"; 一覧\r\n[依頼方法リスト]\r\n"_s + text).bytes);
    }
    QString bytes() const {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return decode932(file.readAll());
    }
    RequestMethods read() {
        const Result<RequestMethods> methods = readRequestMethods(folders);
        EXPECT_EQ(methods.reason(), u""_s);
        return methods ? *methods : RequestMethods();
    }

    QTemporaryDir program;
    Folders folders{program.path()};
    QString path = program.filePath(u"DATA/同意依頼方法list.ini"_s);
};

TEST_F(RequestMethodsTest, EntriesKeepTheirNumberWhateverTheFileSays) {
    struct Case {
        QString file;
        QStringList texts;
        int oddities;
    };
    const Case cases[] = {
        {u"NUM=2\r\nLIST001=郵送\r\nLIST002=FAX\r\n"_s, {u"郵送"_s, u"FAX"_s}, 0},
        {u"NUM=0\r\n"_s, {}, 0},
        {u"NUM=1\r\nLIST002=FAX\r\nLIST001=郵送\r\n"_s, {u"郵送"_s, u"FAX"_s}, 1},
        {u"NUM=9\r\nLIST001=郵送\r\n"_s, {u"郵送"_s}, 1},
        {u"NUM=abc\r\nLIST001=郵送\r\n"_s, {u"郵送"_s}, 1},
        {u"NUM=3\r\nLIST001=郵送\r\nLIST003=電話\r\n"_s, {u"郵送"_s, u""_s, u"電話"_s}, 1},
        {u"NUM=3\r\nLIST001=郵送\r\nLIST002=\r\nLIST003=電話\r\n"_s, {u"郵送"_s, u""_s, u"電話"_s}, 0},
    };
    for (const Case &c : cases) {
        write(c.file);
        EXPECT_EQ(read().texts, c.texts) << c.file.toStdString();
        EXPECT_EQ(read().oddities.size(), c.oddities) << c.file.toStdString();
    }
}

TEST_F(RequestMethodsTest, FiveHundredCountAndTheNextIsTold) {
    QString text = u"NUM=501\r\n"_s;
    for (int i = 1; i <= 501; ++i)
        text += u"LIST%1=方法%2\r\n"_s.arg(i, 3, 10, QChar(u'0')).arg(i);
    write(text);
    const RequestMethods methods = read();
    ASSERT_EQ(methods.texts.size(), 500);
    EXPECT_EQ(methods.text(500), u"方法500"_s);
    EXPECT_TRUE(methods.oddities.join(u""_s).contains(u"LIST501"_s));
    MethodList list(methods.texts, {});
    EXPECT_TRUE(list.add(u"もう一つ"_s).contains(u"500"_s)) << "told when reached";
    EXPECT_EQ(list.texts().size(), 500);
}

TEST_F(RequestMethodsTest, WritingKeepsOrderCommentsAndOtherLines) {
    write(u"NUM=3\r\nLIST001=郵送\r\nLIST002=FAX\r\nLIST003=電話\r\nMEMO=残す\r\n"_s);
    ASSERT_TRUE(writeRequestMethods(folders, {u"郵送"_s, u""_s}));
    EXPECT_EQ(bytes(), u"; 一覧\r\n[依頼方法リスト]\r\nNUM=2\r\nLIST001=郵送\r\nLIST002=\r\nMEMO=残す\r\n"_s);
    EXPECT_EQ(read().texts, (QStringList{u"郵送"_s, u""_s}));
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(writeRequestMethods(folders, {u"手渡し"_s}));
    EXPECT_EQ(read().texts, QStringList{u"手渡し"_s});
    ASSERT_TRUE(QDir(program.filePath(u"DATA"_s)).removeRecursively());
    EXPECT_TRUE(writeRequestMethods(folders, {u"手渡し"_s}).reason().contains(u"同意依頼方法list.ini"_s));
}

TEST(MethodListTest, NumbersThatRowsUseKeepTheirEntry) {
    MethodList list({u"郵送"_s, u"FAX"_s, u"手渡し"_s, u"電話"_s}, {{2, 7}});
    EXPECT_TRUE(list.move(0, 1).contains(u"FAX"_s)) << "2 is used";
    EXPECT_EQ(list.move(3, -1), u""_s);
    EXPECT_EQ(list.texts(), (QStringList{u"郵送"_s, u"FAX"_s, u"電話"_s, u"手渡し"_s}));
    list.remove(3);
    EXPECT_EQ(list.texts().size(), 3) << "the last one, unused, goes";
    list.remove(0);
    EXPECT_EQ(list.texts(), (QStringList{u""_s, u"FAX"_s, u"電話"_s})) << "no other number moves";
    EXPECT_EQ(list.add(u" 持参 "_s), u""_s);
    EXPECT_EQ(list.texts().last(), u"持参"_s);
    list.remove(1);
    EXPECT_EQ(list.newMeanings({{2, 7}, {3, 1}}).size(), 2)
        << "2 was removed, and 3 came into use while another entry moved there";
    list = MethodList({u"郵送"_s, u"FAX"_s}, {{2, 1}});
    list.remove(1);
    EXPECT_EQ(list.texts(), (QStringList{u"郵送"_s, u""_s})) << "else a new entry would take its meaning";
    for (const QString &wrong : {u""_s, u"　"_s, u"郵送"_s, u"a,b"_s, u"\"FAX\""_s, QString(128, u'国')})
        EXPECT_NE(list.add(wrong), u""_s) << wrong.toStdString();
}

TEST(OwnMethodsTest, AreJoinedByCommasAndEmptyIsEmpty) {
    EXPECT_EQ(storedOwnMethods({}), u""_s);
    EXPECT_FALSE(storedOwnMethods({}).isNull()) << "an empty text, not Null";
    EXPECT_EQ(storedOwnMethods({u"郵送"_s, u"FAX"_s}), u"郵送,FAX"_s);
    EXPECT_EQ(ownMethodsOf(u",郵送, ,FAX,"_s), (QStringList{u"郵送"_s, u"FAX"_s}));
}
