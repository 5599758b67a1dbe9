// What was sent is kept and shown again: the store, and a run from its print to the pages shown years later.

#include "app/base/unicode_twin.h"
#include "archive/sent_documents.h"
#include "archive/sent_form.h"
#include "archive/sent_run.h"
#include "print/batch/run_extent.h"
#include "print/engine/data_file.h"
#include "print/engine/wfd_print_exe.h"
#include "print/mail/mail_message.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "viewer/command/job_document.h"
#include "widgets/grid.h"

#include <QDir>
#include <QDirIterator>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>
#include <sys/stat.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ArchiveTest : public testing::Test {
protected:
    QStringList files() const {
        QStringList found;
        for (QDirIterator all(archive.folder(), {u"*.z"_s}, QDir::Files, QDirIterator::Subdirectories);
             all.hasNext();)
            found += all.next();
        return found;
    }
    static QByteArray bytesOf(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString &path, const QByteArray &bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size())
            << path.toStdString();
    }
    static void age(const QString &path, int months) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(QDateTime::currentDateTime().addMonths(-months).addDays(-1),
                                     QFileDevice::FileModificationTime));
    }
    QString reasonOf(const QByteArray &content) const {
        return archive.read(Archive::nameOf(content)).reason();
    }

    TestInstallation practice;
    Archive archive{practice.folders};
};

TEST_F(ArchiveTest, KeepsAContentOnceAndMendsADamagedOne) {
    const QByteArray content = QByteArray("同意書").repeated(1000);
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(archive.store(content));
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(archive.size().documents, 1);
    EXPECT_LT(archive.size().bytes, content.size() / 10);
    EXPECT_EQ(*archive.read(Archive::nameOf(content)), content);

    const QByteArray sound = bytesOf(files()[0]);
    QByteArray turned = sound;
    turned[turned.size() / 2] = char(turned[turned.size() / 2] ^ 1);
    for (const QByteArray &damaged : {turned, sound.first(40), sound.first(2), QByteArray(),
                                      qCompress("another's"), QByteArray(8, '\xFF')}) {
        write(files()[0], damaged);
        EXPECT_TRUE(reasonOf(content).contains(u"壊れている"_s)) << reasonOf(content).toStdString();
        ASSERT_TRUE(archive.store(content));
        EXPECT_EQ(*archive.read(Archive::nameOf(content)), content);
    }
    QFile::remove(files()[0]);
    EXPECT_TRUE(reasonOf(content).contains(u"保管期間が過ぎたか"_s));
    QDir(archive.folder()).removeRecursively();
    EXPECT_TRUE(reasonOf(content).contains(u"保管フォルダ"_s));
    EXPECT_TRUE(archive.read({}).reason().contains(u"保管されていません"_s));

    QByteArray random(200'000, 0);
    for (char &byte : random)
        byte = char(rand());
    const SmallDisk full(50'000);
    EXPECT_TRUE(archive.store(random).reason().contains(u"ディスクの空き"_s));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(ArchiveTest, TidiesWhatNobodySentForYearsOnceAWeek) {
    const QDateTime now = QDateTime::currentDateTime();
    for (const char *content : {"old", "sent again", "young"})
        ASSERT_TRUE(archive.store(content));
    for (const QString &file : files())
        if (!file.contains(Archive::nameOf("young")))
            age(file, 60);
    ASSERT_TRUE(archive.store("sent again"));
    EXPECT_EQ(archive.tidy(0, now), 0) << "for ever";
    EXPECT_EQ(archive.tidy(61, now), 0);
    EXPECT_EQ(archive.tidy(60, now), 0) << "looked a moment ago";
    QFile::remove(archive.folder() + u"/整理"_s);
    EXPECT_EQ(archive.tidy(60, now.addYears(-30)), 0) << "this PC's clock";
    QFile::remove(archive.folder() + u"/整理"_s);
    EXPECT_EQ(archive.tidy(60, now.addYears(30)), 1) << "this PC's clock";
    EXPECT_FALSE(archive.read(Archive::nameOf("old")));
    EXPECT_TRUE(archive.read(Archive::nameOf("sent again")));
    EXPECT_TRUE(archive.read(Archive::nameOf("young")));
}

TEST_F(ArchiveTest, LosesNothingThatIsSentAgainWhileItIsTidied) {
    ASSERT_TRUE(archive.store("sent again"));
    const QString file = files()[0];
    for (int round = 0; round < 150; ++round) {
        age(file, 60);
        QFile::remove(archive.folder() + u"/整理"_s);
        std::thread colleague([this] { archive.tidy(60, QDateTime::currentDateTime()); });
        const Result<> stored = archive.store("sent again");
        colleague.join();
        ASSERT_TRUE(stored) << stored.reason().toStdString();
        ASSERT_TRUE(archive.read(Archive::nameOf("sent again"))) << round;
    }
}

/// A practice whose viewer is ours, with a layout.
class Sent : public ArchiveTest {
protected:
    Sent() {
        write(practice.programFolder.filePath(u"wfrfv10.exe"_s), UnicodeTwin::mark);
        putLayout(u"依頼書"_s);
    }
    void putLayout(const QString &title) const {
        write(at(u"書式.wfd"_s),
              u"<layout version='1' paper='A4' title='%1'><page><text x='10' y='10' w='90' "
              "h='8'>%1</text><text x='10' y='20' w='90' h='8'>{利用者名}</text>"
              "<image x='10' y='40' w='20' h='20' item='印'/></page></layout>"_s.arg(title)
                  .toUtf8());
    }
    QString at(const QString &name) const { return practice.programFolder.filePath(name); }
    /// Prints a page for each name. @param picture a file of the run's own
    QString print(SentRun &run, const QStringList &names, bool picture = true) {
        cls_WfdPrintExe engine(practice.environment, &run);
        engine.iInit(at(u"書式.wfd"_s), u"依頼書"_s);
        const QString file = picture ? *engine.files().write(u"印.png"_s, "picture") : QString();
        DataFile data({u"利用者ID"_s, u"利用者名"_s, u"印"_s});
        for (const QString &name : names)
            data.add(std::vector<DataValue>{names.indexOf(name) + 1, name, file});
        PageCount before;
        before.add(at(u"書式.wfd"_s), u"データ"_s, data);
        EXPECT_EQ(before.pages(), names.size()) << "what is told before";
        EXPECT_EQ(engine.iWriteData(1, u"データ"_s, data), 0);
        EXPECT_EQ(engine.iPrintBk(), 0) << engine.sErrMsg().toStdString();
        return run.finish(names.size(), names.size());
    }
    /// What the viewer that was started last shows, a text a page.
    QStringList shown() {
        Job job;
        Problem problem;
        const auto document =
            loadCommandFile(practice.processes.started.back().arguments.back(), &job, &problem);
        if (!document)
            return {problem.sentence()};
        QStringList pages;
        for (int page = 0; page < document->pageCount(); ++page) {
            QStringList texts;
            for (const TextRun &run : document->texts(page))
                texts += run.text;
            pages += texts.join(u' ');
        }
        for (const Report &report : document->reports())
            for (const QByteArray &picture : *report.pictures)
                pages += QString::fromLatin1(picture);
        return pages;
    }
    void show() { showSent(nullptr, practice.environment, database.db, 1, u"依頼書印刷"_s); }

    TestDatabase database;
};

TEST_F(Sent, ShowsTheVeryPagesAgainWhenLayoutAndDataAreOthers) {
    {
        SentRun run(practice.environment, database.db, u"依頼書印刷"_s);
        EXPECT_EQ(print(run, {u"髙橋　花子"_s, u"𠮷田"_s}), QString());
    }
    EXPECT_EQ(database.rows(u"SELECT cKind, nRows, nDocuments, nPages FROM DOUISHO_LOG_BATCH"_s),
              QStringList{u"依頼書印刷|2|2|2"_s});
    EXPECT_EQ(database.rows(u"SELECT nBatch, iNo, cTitle, nPages FROM DOUISHO_LOG_DOCUMENT"_s),
              QStringList{u"1|1|依頼書　髙橋　花子 ～ 𠮷田、2名|2"_s});
    putLayout(u"新しい書式"_s);
    for (const QString &file : QDir(practice.programFolder.path()).entryList({u"*.csv*"_s}))
        QFile::remove(at(file));
    show();
    EXPECT_EQ(practice.messages.said(), QStringList());
    EXPECT_EQ(shown(), (QStringList{u"依頼書 髙橋　花子"_s, u"依頼書 𠮷田"_s, u"picture"_s}));

    write(files()[0], "damaged");
    show();
    EXPECT_TRUE(practice.messages.said().value(0).contains(u"壊れている"_s));
    EXPECT_EQ(practice.processes.started.size(), 2) << "nothing is shown of it";
}

TEST_F(Sent, APrintIsNeverHeldUpByTheArchive) {
    SentRun first(practice.environment, database.db, u"依頼書印刷"_s);
    ASSERT_EQ(print(first, {u"山田"_s}, false), QString());
    const QString object = files()[0];
    QFile::remove(object);
    ASSERT_EQ(mkfifo(QFile::encodeName(object).constData(), 0600), 0); // who opens it waits for ever

    SentRun second(practice.environment, database.db, u"依頼書印刷"_s, 100ms);
    EXPECT_TRUE(print(second, {u"山田"_s}, false).contains(u"保管なし：保管フォルダ"_s));
    EXPECT_EQ(database.value(u"SELECT cContent FROM DOUISHO_LOG_DOCUMENT WHERE nBatch = 2"_s).trimmed(),
              QString());
    const SentDocument document = readSentDocuments(database.db, 1)->front();
    EXPECT_TRUE(keptContent(archive, document, 100ms).reason().contains(u"応答がありません"_s));

    QFile::remove(object);
    QDir(archive.folder()).removeRecursively();
    write(archive.folder(), "a file in its place");
    SentRun third(practice.environment, database.db, u"依頼書印刷"_s);
    EXPECT_TRUE(print(third, {u"山田"_s}).contains(u"保管なし"_s));
    EXPECT_EQ(practice.processes.started.size(), 3) << "all were printed";
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG_BATCH WHERE nRows = 1"_s), u"3"_s);
}

TEST_F(Sent, WithoutAHistoryPrintsGoOutAndNothingIsKept) {
    database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 99"_s);
    SentRun run(practice.environment, database.db, u"依頼書印刷"_s);
    EXPECT_EQ(print(run, {u"山田"_s}), QString());
    EXPECT_EQ(practice.processes.started.size(), 1);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(Sent, MailsAreReadAndChosenDocumentsShown) {
    SentRun run(practice.environment, database.db, u"メール送信"_s);
    for (const QString &name : {u"佐藤　花子"_s, u"髙橋 =?UTF-8?B?WA==?="_s})
        run.addMail(name, mailBytes({{u"同意書係"_s, u"a@example.jp"_s},
                                     {name, u"b@example.jp"_s},
                                     u"お知らせ　"_s + name,
                                     u"期限が近づいています。\r\n"_s + name + u" 様"_s,
                                     practice.clock.now(),
                                     QUuid::createUuid()}));
    print(run, {u"山田"_s});
    QStringList mails;
    QTimer::singleShot(0, [&] {
        auto *form = QApplication::activeModalWidget();
        auto *grid = form->findChild<Grid *>(u"ssSent"_s);
        auto *text = form->findChild<QPlainTextEdit *>(u"txtMail"_s);
        for (int row = 0; row < 2; ++row) {
            grid->goTo(row, 0);
            mails += text->toPlainText();
        }
        grid->goTo(2, 0);
        EXPECT_FALSE(text->isVisible());
        pressButton(*form, Qt::Key_F5);
        pressButton(*form, Qt::Key_F12);
    });
    show();
    ASSERT_EQ(mails.size(), 2);
    EXPECT_TRUE(mails[0].contains(u"件名：お知らせ　佐藤　花子\n"_s)) << mails[0].toStdString();
    EXPECT_TRUE(mails[0].endsWith(u"期限が近づいています。\n佐藤　花子 様\n"_s)) << mails[0].toStdString();
    EXPECT_TRUE(mails[1].contains(u"件名：お知らせ　髙橋 =?UTF-8?B?WA==?=\n"_s)) << mails[1].toStdString();
    EXPECT_TRUE(mails[1].endsWith(u"髙橋 =?UTF-8?B?WA==?= 様\n"_s)) << mails[1].toStdString();
    EXPECT_EQ(shown(), (QStringList{u"依頼書 山田"_s, u"picture"_s}));

    QLabel line;
    showArchiveSize(practice.environment, &line);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !line.text().isEmpty(); }));
    EXPECT_EQ(line.text(), u"保管している文書：3件、2 kB（5年分まで）"_s);
}

} // namespace
