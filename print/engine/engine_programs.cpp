#include "print/engine/engine_programs.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/job_ticket.h"
#include "app/base/processes.h"
#include "app/base/unicode_twin.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

/// As the engine installs them.
QString fileName(EngineProgram which) {
    switch (which) {
    case EngineProgram::Viewer:
        return u"wfrfv10.exe"_s;
    case EngineProgram::ImageBuilder:
        return u"wfrimg10.exe"_s;
    case EngineProgram::ActiveXViewer:
        return u"WrVb6Viewer.exe"_s;
    }
    return {};
}

} // namespace

QString engineWorkFolder(const Environment &environment) {
    const QString folder = QDir::toNativeSeparators(environment.folders.temporary());
    return folder.endsWith(QDir::separator()) ? folder : folder + QDir::separator();
}

Result<QString> findEngineProgram(const Environment &environment, EngineProgram which) {
    const QString &folder = environment.folders.program();
    const QString name = fileName(which);
    const QString program = environment.processes.find(name, folder);
    if (program.isEmpty())
        return Failure{
            u"帳票プログラム「%1」が見つかりません。\r\nフォルダ「%2」に入っているか確認してください。"_s.arg(
                name, QDir::toNativeSeparators(folder))};
    return program;
}

bool isOwnViewer(const Environment &environment) {
    const Result<QString> program = findEngineProgram(environment, EngineProgram::Viewer);
    QFile file(program ? *program : QString());
    const auto *bytes = file.open(QIODevice::ReadOnly) ? file.map(0, file.size()) : nullptr;
    return bytes && QByteArrayView(bytes, file.size()).contains(UnicodeTwin::mark);
}

Result<qint64> startEngineProgram(const Environment &environment, EngineProgram which,
                                  const QStringList &arguments) {
    const Result<QString> program = findEngineProgram(environment, which);
    if (!program)
        return Failure{program.reason()};
    qint64 id = JobTicket::unknown;
    const WindowStyle style =
        which == EngineProgram::ActiveXViewer ? WindowStyle::Maximized : WindowStyle::Minimized;
    if (environment.processes.start(*program, arguments, environment.folders.program(), &id, style))
        return id;
    return Failure{u"帳票プログラム「%1」を起動できません。"_s.arg(QDir::toNativeSeparators(*program))};
}
