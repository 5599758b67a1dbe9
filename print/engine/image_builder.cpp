#include "print/engine/image_builder.h"

#include "app/base/codepage932.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/engine/engine_programs.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int someLeftOut = 3; // exit code

QString textOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? decode932(file.readAll()).trimmed() : QString();
}

BuilderEnd::Kind kindOf(const ProcessEnd &end, const QString &document, const QString &errors) {
    if (end.how == ProcessEnd::TimedOut)
        return BuilderEnd::TimedOut;
    if (end.how == ProcessEnd::GivenUp)
        return BuilderEnd::GivenUp;
    const bool built = end.how == ProcessEnd::Exited && QFileInfo(document).size() > 0;
    if (!built || (end.exitCode != 0 && end.exitCode != someLeftOut))
        return BuilderEnd::Failed;
    return end.exitCode == 0 && errors.isEmpty() ? BuilderEnd::Built : BuilderEnd::SomeLeftOut;
}

} // namespace

BuilderEnd runImageBuilder(const Environment &environment, const QString &document, const QString &commands,
                           std::chrono::milliseconds timeOut, const std::function<bool()> &goOn,
                           QString errors) {
    BuilderEnd result;
    const Result<QString> program = findEngineProgram(environment, EngineProgram::ImageBuilder);
    if (!program) {
        result.kind = BuilderEnd::Missing;
        result.reason = program.reason();
        return result;
    }
    if (errors.isEmpty())
        errors = engineWorkFolder(environment) + u"err.txt"_s;
    QFile::remove(errors);
    QFile::resize(document, 0); // its name stays taken
    const ProcessEnd end =
        environment.processes.run(*program, {document, u"/c"_s, commands, u"/err"_s, errors},
                                  environment.folders.program(), timeOut, goOn);
    result.reason = textOf(errors);
    result.exitCode = end.exitCode;
    result.kind = kindOf(end, document, result.reason);
    return result;
}
