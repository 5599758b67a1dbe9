#include "print/request_letter/letter_merge.h"

#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/image_builder.h"

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

QString whyNotMerged(const BuilderEnd &end) {
    if (!end.reason.isEmpty())
        return end.reason;
    return end.kind == BuilderEnd::TimedOut
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
    if (!writeCommands(commands, dataName, sheets, reason))
        return {};
    const BuilderEnd end = runImageBuilder(environment, document, commands, builderTimeOut, goOn);
    if (end.kind == BuilderEnd::Built)
        return document;
    if (end.kind != BuilderEnd::GivenUp)
        *reason = whyNotMerged(end);
    return {};
}
