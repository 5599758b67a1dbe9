#include "print/request_letter/letter_merge.h"

#include "app/base/codepage932.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/processes.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::minutes builderTimeOut{2};

bool writeCommands(const QString &path, const QString &dataName, std::span<const LetterSheet> sheets,
                   QString *reason) {
    CommandFile file;
    for (size_t i = 0; i < sheets.size(); ++i) {
        if (i > 0)
            file.add(u"AddReport"_s);
        file.add(u"SetTitle,"_s + CommandFile::text(dataName + QString::number(i + 1)));
        file.addSource(dataName, sheets[i].file, false);
        file.add(u"SetReport,"_s + file.path(sheets[i].layout));
    }
    return file.write(path, reason);
}

/// What the builder left about its failure.
QString builderError(const QString &path, const ProcessEnd &end) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        if (const QString text = decode932(file.readAll()).trimmed(); !text.isEmpty())
            return text;
    return end.how == ProcessEnd::TimedOut
               ? u"帳票の作成が終わらないため中止しました。"_s
               : u"帳票を作成できませんでした（終了コード %1）。"_s.arg(end.exitCode);
}

} // namespace

QString mergeLetters(const Environment &environment, const QString &dataName,
                     std::span<const LetterSheet> sheets, const std::function<bool()> &goOn,
                     QString *reason) {
    const QString folder = engineWorkFolder(environment);
    const QString commands = folder + u"IraiCom.dat"_s;
    const QString document = folder + dataName + u".wfd"_s;
    const QString errors = folder + u"err.txt"_s;
    const QString builder = findEngineProgram(environment, EngineProgram::ImageBuilder, reason);
    if (builder.isEmpty() || !writeCommands(commands, dataName, sheets, reason))
        return {};
    // What an earlier run left must not be taken for this one's.
    QFile::remove(errors);
    QFile::remove(document);
    const ProcessEnd end =
        environment.processes.run(builder, {document, u"/c"_s, commands, u"/err"_s, errors},
                                  environment.folders.program(), builderTimeOut, goOn);
    if (end.succeeded() && QFile::exists(document))
        return document;
    if (end.how != ProcessEnd::GivenUp)
        *reason = builderError(errors, end);
    return {};
}
