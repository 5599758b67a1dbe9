#include "app/base/processes.h"
#include "app/desktop/japanese.h"
#include "app/desktop/message_form.h"
#include "app/desktop/program_icon.h"
#include "sample/menu/menu_window.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// $DOUISHO_FOLDER, else the folder in which the menu was called. There it is a link, so the folder of the
/// executable is another one.
QString installationFolder(const QString &calledAs) {
    const QString named = qEnvironmentVariable("DOUISHO_FOLDER");
    if (!named.isEmpty())
        return named;
    const QFileInfo called(calledAs);
    const bool inInstallation = called.dir().exists(u"Massage.ini"_s);
    return inInstallation ? called.absolutePath() : QDir::currentPath();
}

} // namespace

int main(int argc, char **argv) {
    QApplication app(argc, argv);
    QTranslator translator;
    speakJapanese(translator);
    showIcon(u"douisho"_s, u"douisho"_s);
    const QString folder = installationFolder(QFile::decodeName(argv[0]));
    qputenv("DOUISHO_FOLDER", QFile::encodeName(folder)); // for the program that is started
    SystemProcesses processes;
    QtMessages messages;
    const MenuFolders folders{folder, {QCoreApplication::applicationDirPath(), folder}};
    MenuWindow menu(folders, processes, messages, app.arguments().value(1) == u"2");
    menu.show();
    return app.exec();
}
