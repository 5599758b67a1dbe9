#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/processes.h"
#include "app/screens.h"
#include "widgets/qt_messages.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <exception>

using namespace Qt::Literals::StringLiterals;

namespace {

/// An exception out of an event handler would end the program without a word. The operation that threw is
/// given up, the user is told, and the windows stay.
class Application : public QApplication {
public:
    Application(int &argc, char **argv, Messages &messages)
        : QApplication(argc, argv), m_messages(messages) {}

    bool notify(QObject *receiver, QEvent *event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception &error) {
            m_messages.fail(u"予期しないエラーが発生しました。\r\n"_s + QString::fromLocal8Bit(error.what()));
        }
        return true;
    }

private:
    Messages &m_messages;
};

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

} // namespace

int main(int argc, char **argv) {
    QtMessages messages;
    Application application(argc, argv, messages);
    QCoreApplication::setApplicationName(u"douisho"_s);
    // Between two message boxes no window is open; the run ends by itself, not by that.
    QApplication::setQuitOnLastWindowClosed(false);
    QTranslator translator;
    speakJapanese(translator);
    try {
        return runProgram(messages);
    } catch (const std::exception &error) {
        messages.fail(u"予期しないエラーが発生しました。\r\n"_s + QString::fromLocal8Bit(error.what()));
        return 1;
    }
}
