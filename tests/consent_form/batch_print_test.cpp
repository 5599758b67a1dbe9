#include "app/base/codepage932.h"
#include "app/base/processes.h"
#include "app/base/unicode_twin.h"
#include "print/batch/batch_documents.h"
#include "print/batch/batch_print.h"
#include "print/consent_form/form_files.h"
#include "tests/consent_form/practice.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <filesystem>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using State = BatchChunk::State;

namespace {

void makeOlder(const QString &path, int seconds) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds), QFileDevice::FileModificationTime);
}

/// Batches of reports whose builder and viewer are scripted.
struct Batch : testing::Test {
    Batch() { builderDoes(0); }

    /// The builder leaves its document, and ends so.
    void builderDoes(int exitCode, const QString &errors = {}) {
        practice.processes.act = [this, exitCode, errors](const RecordedProcesses::Start &start) {
            commands.append(practice.written(u"Com.dat"_s));
            practice.addFile(start.arguments.at(0));
            practice.addFile(start.arguments.at(4), encode932(errors).bytes);
            return ProcessEnd{ProcessEnd::Exited, exitCode};
        };
    }

    BatchResult run(int reports, const BatchPrint::Progress &goOn = {}) {
        return runIn(practice.environment, reports, goOn);
    }

    BatchResult runIn(Environment &environment, int reports, const BatchPrint::Progress &goOn = {}) {
        const auto make = [this](int position, PrintFiles &) -> Result<BatchReport> {
            if (position == notWritten)
                return Failure{u"満杯です"_s};
            return BatchReport{u"利用者%1"_s.arg(position),
                               u"同意書"_s,
                               consentFormDataName(),
                               practice.work(u"%1_同意書データ.csv"_s.arg(position)),
                               qrImageItem(),
                               practice.system(position == withoutLayout ? u"無い.wfd"_s : u"M再.wfd"_s)};
        };
        return BatchPrint(environment, order).run({reports, make}, goOn);
    }

    QString document(int number) const {
        return practice.work(u"Output%1.wfd"_s.arg(number, 4, 10, QChar(u'0')));
    }

    Practice practice;
    BatchOrder order;
    QStringList commands; ///< Com.dat as the builder found it
    int withoutLayout = -1;
    int notWritten = -1;
};

TEST_F(Batch, FilesAndCommandLines) {
    const BatchResult result = run(2);
    EXPECT_TRUE(result.allPrinted());
    EXPECT_EQ(commands.value(0), uR"(SetTitle,"同意書1"
SetImageField,"QRコード"
SetDataText,同意書データ,"%1"
SetReport,"%3"
AddReport
SetTitle,"同意書2"
SetImageField,"QRコード"
SetDataText,同意書データ,"%2"
SetReport,"%3"
)"_s.arg(practice.work(u"0_同意書データ.csv"_s), practice.work(u"1_同意書データ.csv"_s),
         practice.system(u"M再.wfd"_s))
                                     .replace(u"\n"_s, u"\r\n"_s));
    ASSERT_EQ(practice.processes.started.size(), 2);
    EXPECT_EQ(practice.processes.started[0].arguments,
              QStringList({document(1), u"/c"_s, practice.work(u"Com.dat"_s), u"/err"_s,
                           practice.work(u"err.txt"_s)}));
    EXPECT_EQ(practice.processes.started[1].arguments,
              QStringList({u"/c"_s, practice.work(u"cmdSetPrint.dat"_s)}));
    EXPECT_EQ(
        practice.written(u"cmdSetPrint.dat"_s),
        u"FileName,\"%1\"\r\nTitle,\"セット印刷\"\r\nPrintPaper, A4\r\nPrintOut\r\n"_s.arg(document(1)));

    order = {.commandFile = u"DouiCom.dat"_s, .paper = BatchPaper::Custom, .preview = true};
    run(1);
    EXPECT_TRUE(QFile::exists(practice.work(u"DouiCom.dat"_s)));
    EXPECT_TRUE(practice.written(u"cmdSetPrint.dat"_s).endsWith(u"PrintPaper, #256\r\nShowWindow,2\r\n"_s));
}

TEST_F(Batch, ChunksOfAHundredWithOneRunningNumber) {
    EXPECT_EQ(run(100).chunks.size(), 1u);
    commands.clear();
    withoutLayout = 7;
    const BatchResult result = run(102);
    ASSERT_EQ(result.chunks.size(), 2u);
    EXPECT_EQ(result.chunks[1].reports, 1);
    EXPECT_EQ(commands.value(1).count(u"AddReport"_s), 0);
    const QString second = QFileInfo(practice.processes.started.back().arguments[1]).fileName();
    EXPECT_TRUE(second.startsWith(u"cmdSetPrint0002-"_s)) << second.toStdString();
    EXPECT_TRUE(practice.written(second).contains(result.chunks[1].document));
    EXPECT_TRUE(commands.value(1).contains(u"\"同意書101\""_s));
    EXPECT_EQ(result.missingLayouts, QStringList(u"利用者7（無い.wfd）"_s));
    EXPECT_TRUE(result.left(0) && result.left(6) && result.left(8) && result.left(101));
    EXPECT_FALSE(result.left(7));
    EXPECT_EQ(result.reports(), 101);
    EXPECT_FALSE(result.allPrinted());
}

TEST_F(Batch, APreviewIsOneWindow) {
    order.preview = true;
    EXPECT_EQ(run(250).reports(), 100) << "the first chunk, of a viewer that takes one document";
    EXPECT_TRUE(BatchPrint::previewQuestion(practice.environment, 250).contains(u"はじめの 100 件"_s));
    practice.addFile(practice.folders.program() + u"/wfrfv10.exe"_s, UnicodeTwin::mark);
    EXPECT_EQ(BatchPrint::previewQuestion(practice.environment, 250), QString());
    practice.processes.started.clear();
    const BatchResult result = run(250);
    EXPECT_TRUE(result.allPrinted());
    ASSERT_EQ(practice.processes.started.size(), 4) << "three builders and a viewer";
    QStringList documents;
    for (const BatchChunk &chunk : result.chunks)
        documents += u"FileName,\"%1\""_s.arg(chunk.document);
    EXPECT_TRUE(practice.written(u"cmdSetPrint.dat"_s)
                    .startsWith(documents.join(u"\r\nAddReport\r\n"_s) + u"\r\nTitle,"_s));

    practice.processes.started.clear();
    const BatchResult stopped = run(250, [](int done, int) { return done < 100; });
    EXPECT_EQ(stopped.reports(), 100) << "what was built is shown";
    EXPECT_EQ(practice.processes.started.size(), 2);
}

TEST_F(Batch, WhatGoesWrongWithAChunk) {
    const auto ends = [this](ProcessEnd::How how) {
        practice.processes.act = [how](const RecordedProcesses::Start &) { return ProcessEnd{how, 0}; };
    };
    struct Case {
        const char *name;
        std::function<void()> prepare;
        QList<State> chunks;
        int reports;
    };
    const Case cases[] = {
        {"some reports fail",
         [this] { builderDoes(3, u"帳票12（11_同意書データ.csv）：x"_s); },
         {State::SomeFailed, State::SomeFailed},
         99}, // of the second chunk it does not say which
        {"nothing is built",
         [this] { builderDoes(1, u"M"_s); },
         {State::BuilderFailed, State::BuilderFailed},
         0},
        {"crash", [&] { ends(ProcessEnd::Crashed); }, {State::BuilderFailed, State::BuilderFailed}, 0},
        {"ends without a document",
         [&] { ends(ProcessEnd::Exited); },
         {State::BuilderFailed, State::BuilderFailed},
         0},
        {"hangs", [&] { ends(ProcessEnd::TimedOut); }, {State::BuilderHung, State::BuilderHung}, 0},
        {"no builder",
         [this] { practice.processes.missing = {u"wfrimg10.exe"_s}; },
         {State::BuilderMissing},
         0},
        {"no viewer", [this] { practice.processes.missing = {u"wfrfv10.exe"_s}; }, {State::ViewerMissing}, 0},
        {"work folder full", [this] { notWritten = 100; }, {State::Done, State::NotWritten}, 100},
    };
    for (const Case &c : cases) {
        builderDoes(0);
        practice.processes.missing.clear();
        c.prepare();
        const BatchResult result = run(101);
        QList<State> states;
        for (const BatchChunk &chunk : result.chunks)
            states.append(chunk.state);
        EXPECT_EQ(states, c.chunks) << c.name;
        EXPECT_EQ(result.reports(), c.reports) << c.name;
        EXPECT_EQ(result.left(0), c.reports > 0) << c.name;
        EXPECT_FALSE(result.left(11) && states[0] == State::SomeFailed) << c.name;
        EXPECT_FALSE(result.left(100)) << c.name;
        EXPECT_FALSE(result.allPrinted()) << c.name;
        for (int number = 1; number <= 2; ++number)
            QFile::remove(document(number));
    }
}

TEST_F(Batch, StopsBetweenChunks) {
    int asked = 0;
    const BatchResult result = run(250, [&asked](int done, int all) {
        ++asked;
        EXPECT_EQ(all, 250);
        return done < 100;
    });
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.reports(), 100);
    EXPECT_TRUE(result.left(99));
    EXPECT_FALSE(result.left(100));
    EXPECT_EQ(asked, 2);
}

/// Viewers that print for a minute: until somebody has looked for the third time.
class SlowViewers : public RecordedProcesses {
public:
    explicit SlowViewers(QString folder) : m_folder(std::move(folder)) {}

    bool start(const QString &program, const QStringList &arguments, const QString &folder, qint64 *id,
               WindowStyle style) override {
        if (program.endsWith(u"wfrfv10.exe")) {
            EXPECT_EQ(looks, 0) << "the viewer before still prints";
            looks = 3;
            *id = 1 + started.size();
        }
        return RecordedProcesses::start(program, arguments, folder, id, style);
    }
    bool runs(qint64 id) const override {
        for (const QFileInfo &ticket : QDir(m_folder).entryInfoList({u"*.ticket"_s}))
            makeOlder(ticket.filePath(), 60);
        return id > 0 && looks > 0 && --looks > 0;
    }

    mutable int looks = 0;

private:
    QString m_folder;
};

TEST_F(Batch, PaperComesInTheOrderOfTheChunks) {
    SlowViewers viewers(practice.work({}));
    viewers.act = practice.processes.act;
    Environment environment{practice.folders, practice.clock, practice.messages, viewers, {1, 1}};
    EXPECT_TRUE(runIn(environment, 301).allPrinted());
    EXPECT_EQ(viewers.started.size(), 8) << "four chunks, each with a builder and a viewer";
}

// Another user's may be replaced, not written.
TEST_F(Batch, CommandFilesThatLieThereAreNotWrittenInto) {
    practice.addFile(practice.work(u"cmdSetPrint.dat"_s), "old");
    std::filesystem::create_hard_link(practice.work(u"cmdSetPrint.dat"_s).toStdString(),
                                      practice.work(u"same"_s).toStdString());
    EXPECT_TRUE(run(1).allPrinted());
    EXPECT_EQ(practice.written(u"same"_s), u"old");
}

TEST_F(Batch, ADocumentThatMayStillBeReadIsLeft) {
    for (int number = 1; number <= 3; ++number) {
        practice.addFile(document(number));
        makeOlder(document(number), number == 2 ? 60 : 660);
    }
    const BatchResult result = run(101);
    ASSERT_EQ(result.chunks.size(), 2u);
    EXPECT_FALSE(QFile::exists(document(1)));
    EXPECT_TRUE(QFile::exists(document(2)));
    EXPECT_EQ(result.chunks[0].document, document(3)) << "a batch's numbers follow one another";
    EXPECT_EQ(result.chunks[1].document, document(4));
}

// Real programs: a builder that never ends is killed, and the next chunk is tried.
TEST_F(Batch, ABuilderThatHangsIsEnded) {
    const QString program = practice.folders.program() + u"/wfrimg10.exe"_s;
    practice.addFile(program, "#!/bin/sh\nsleep 60\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    SystemProcesses processes;
    Environment environment{practice.folders, practice.clock, practice.messages, processes, {1, 1}};
    order.builderTimeout = std::chrono::milliseconds(200);
    const auto make = [this](int, PrintFiles &) -> Result<BatchReport> {
        BatchReport report;
        report.layout = practice.system(u"M再.wfd"_s);
        return report;
    };
    const BatchResult result = BatchPrint(environment, order).run({101, make}, {});
    ASSERT_EQ(result.chunks.size(), 2u);
    EXPECT_EQ(result.chunks[0].state, State::BuilderHung);
    EXPECT_EQ(result.chunks[1].state, State::BuilderHung);
}

} // namespace
