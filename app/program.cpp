#include "app/program.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/processes.h"
#include "app/screens.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

void speakJapanese(QTranslator &translator) {
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    if (translator.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
    // The desktop's font stays; these stand in for the characters that it lacks, Japanese shapes first.
    QFont::insertSubstitutions(QApplication::font().family(),
                               {u"Noto Sans CJK JP"_s, u"Yu Gothic UI"_s, u"Meiryo UI"_s});
}

int runProgram(Messages &messages) {
    Folders folders(Folders::programFolderOfThisRun());
    QDir::setCurrent(folders.program());

    Clock clock;
    SystemProcesses processes;
    Environment environment{folders, clock, messages, processes, {}};
    QtTextInput input;
    QtScreens screens(environment);
    return Launch(environment, input, screens).run(QCoreApplication::arguments().mid(1).join(u' '));
}
