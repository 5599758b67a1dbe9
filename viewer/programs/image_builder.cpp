#include "viewer/programs/image_builder.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "viewer/command/job_document.h"
#include "viewer/finished/document_file.h"
#include "viewer/programs/program_arguments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 longestHead = 64; // bytes, enough to know a finished document

/// Clears the output's place. Why that cannot be done; empty when it is.
QString clearOutput(const QString &path) {
    QFile file(path);
    const QString name = QDir::toNativeSeparators(path);
    if (file.exists() && file.size() > 0 &&
        (!file.open(QIODevice::ReadOnly) || !isDocumentFile(file.read(longestHead))))
        return u"「%1」は作成済み文書ではないため、上書きしません。"_s.arg(name);
    file.close();
    if (file.exists() && !file.remove())
        return u"前回の文書「%1」を削除できません。%2"_s.arg(name, file.errorString());
    return {};
}

/// Whether merged printing has already written its second command file, which has the output shown.
bool isSecondStep(const Job &job, const QString &folder, const QString &output) {
    return job.reports.size() == 1 && job.reports[0].sources.empty() &&
           jobPath(folder, job.reports[0].layout).compare(output, Qt::CaseInsensitive) == 0;
}

FinishedDocument build(const QString &commandFile, const QString &output) {
    Problem problem;
    const std::optional<Job> job = loadJob(commandFile, &problem);
    if (!job)
        return {{}, {problem.sentence()}};
    const QString folder = QFileInfo(commandFile).absolutePath();
    if (isSecondStep(*job, folder, output)) {
        problem = {QDir::toNativeSeparators(commandFile), 0, 0,
                   u"コマンドファイルは、読み込む前に次の印刷指示に書き換えられました。"
                   "帳票をまとめられませんでした。"_s};
        return {{}, {problem.sentence()}};
    }
    const LoadedJob loaded = loadReports(*job, folder);
    return {loaded.document(), loaded.notes + loaded.failures};
}

BuildOutcome buildInto(const QString &output, const QString &commandFile) {
    if (const QString obstacle = clearOutput(output); !obstacle.isEmpty())
        return {BuildResult::NothingBuilt, {obstacle}};
    const FinishedDocument finished = build(commandFile, output);
    BuildOutcome outcome{BuildResult::Built, finished.notes};
    if (finished.document.reports().empty())
        outcome.result = BuildResult::NothingBuilt;
    else if (!finished.notes.isEmpty())
        outcome.result = BuildResult::SomeLeftOut;
    Problem problem;
    if (!writeDocumentFile(finished, output, &problem)) {
        outcome.result = BuildResult::NothingBuilt;
        outcome.messages.append(problem.sentence());
    }
    return outcome;
}

Result<> writeErrors(const QString &path, const QStringList &messages) {
    QString text;
    for (QString message : messages)
        text += message.replace(u"\r\n"_s, u"　"_s) + u"\r\n"_s;
    return writeFileWhole(path, encode932(text).bytes, FileUse::Private); // they name patients
}

QString fullPath(const QString &name) {
    return jobPath(QDir::currentPath(), name);
}

} // namespace

BuildOutcome runImageBuilder(const QStringList &arguments) {
    const auto parsed = parseArguments(arguments, {u"/c"_s, u"/err"_s});
    if (!parsed || parsed->file.isEmpty() || parsed->option(u"/c"_s).isEmpty())
        return {BuildResult::WrongUsage,
                {u"使い方： wfrimg10 出力文書 /c コマンドファイル [/err エラーファイル]"_s}};
    const QString errors = parsed->option(u"/err"_s);
    const auto tell = [&](const QStringList &messages) {
        return errors.isEmpty() ? Result<>() : writeErrors(fullPath(errors), messages);
    };
    if (const Result<> told = tell({}); !told)
        return {BuildResult::NothingBuilt, {told.reason()}};

    BuildOutcome outcome = buildInto(fullPath(parsed->file), fullPath(parsed->option(u"/c"_s)));
    if (outcome.messages.isEmpty())
        return outcome;
    if (const Result<> told = tell(outcome.messages); !told)
        outcome.messages.append(told.reason());
    return outcome;
}
