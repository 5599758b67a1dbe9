#include "app/program.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/processes.h"
#include "app/screens.h"
#include "backup/daily_backup.h"
#include "print/engine/work_folder.h"

#include <QApplication>
#include <QDir>

using namespace Qt::Literals::StringLiterals;

int runProgram(Messages &messages) {
    Folders folders(Folders::programFolderOfThisRun());
    QDir::setCurrent(folders.program());

    Clock clock;
    SystemProcesses processes;
    Environment environment{folders, clock, messages, processes, {}};
    QtTextInput input;
    QtScreens screens(environment);
    clearWorkFolder(environment);
    DailyBackup backup(environment);
    backup.begin();
    const int code = Launch(environment, input, screens).run(QCoreApplication::arguments().mid(1).join(u' '));
    clearWorkFolder(environment);
    return code;
}
