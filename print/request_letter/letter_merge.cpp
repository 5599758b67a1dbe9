#include "print/request_letter/letter_merge.h"

#include "print/engine/command_file.h"
#include "print/engine/image_builder.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::minutes builderTimeOut{2};

CommandFile commandsFor(const QString &dataName, std::span<const LetterSheet> sheets,
                        const QStringList &files) {
    CommandFile file;
    for (size_t i = 0; i < sheets.size(); ++i) {
        if (i > 0)
            file.add(u"AddReport"_s);
        file.add(u"SetTitle,"_s + CommandFile::text(dataName + QString::number(i + 1)));
        file.addSource(dataName, files[qsizetype(i)], false);
        file.add(u"SetReport,"_s + file.path(sheets[i].layout));
    }
    return file;
}

QString whyNotMerged(const BuilderEnd &end) {
    if (!end.reason.isEmpty())
        return end.reason;
    return end.kind == BuilderEnd::TimedOut
               ? u"帳票の作成が終わらないため中止しました。"_s
               : u"帳票を作成できませんでした（終了コード %1）。"_s.arg(end.exitCode);
}

} // namespace

Result<QString> mergeLetters(const Environment &environment, const QString &dataName,
                             std::span<const LetterSheet> sheets, PrintFiles &files,
                             const std::function<bool()> &goOn) {
    QStringList written;
    for (const LetterSheet &sheet : sheets) {
        const Result<QString> file =
            files.write(u"%1%2.csv"_s.arg(dataName).arg(written.size() + 1), sheet.data);
        if (!file)
            return file;
        written += *file;
    }
    const QString folder = files.folder() + QDir::separator();
    const QString commands = folder + u"IraiCom.dat"_s;
    const QString document = folder + dataName + u".wfd"_s;
    if (const Result<> done = commandsFor(dataName, sheets, written).write(commands); !done)
        return Failure{done.reason()};
    const BuilderEnd end =
        runImageBuilder(environment, document, commands, builderTimeOut, goOn, folder + u"err.txt"_s);
    if (end.kind == BuilderEnd::Built)
        return document;
    return end.kind == BuilderEnd::GivenUp ? Result<QString>(QString()) : Failure{whyNotMerged(end)};
}
