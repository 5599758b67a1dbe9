#include "app/base/folders.h"
#include "app/base/platform/desktop.h"
#include "app/base/version.h"
#include "app/check_command.h"
#include "app/desktop/dark_outlines.h"
#include "app/desktop/japanese.h"
#include "app/desktop/key_help.h"
#include "app/desktop/message_form.h"
#include "app/desktop/program_icon.h"
#include "app/program.h"

#include <QApplication>
#include <QTextStream>
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

} // namespace

int main(int argc, char **argv) {
    platform::useCallersConsole();
    QTextStream out(stdout);
    out.setEncoding(QStringConverter::System); // what consoles and their commands read
    if (argc > 1 && qstrcmp(argv[1], "--version") == 0) {
        out << u"douisho "_s << ownVersion() << Qt::endl;
        return 0;
    }
    if (argc > 1 && qstrcmp(argv[1], "--check") == 0) {
        const QCoreApplication console(argc, argv);
        return runCheckCommand(Folders(Folders::programFolderOfThisRun()), out);
    }
    QtMessages messages;
    Application application(argc, argv, messages);
    QCoreApplication::setApplicationName(u"douisho"_s);
    // Between two message boxes no window is open; the run ends by itself, not by that.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new DarkOutlines); // before the font, which a style sets back for some parts
    QTranslator translator;
    speakJapanese(translator);
    showIcon(u"douisho"_s, u"douisho"_s);
    const KeyHelp help;
    try {
        return runProgram(messages);
    } catch (const std::exception &error) {
        messages.fail(u"予期しないエラーが発生しました。\r\n"_s + QString::fromLocal8Bit(error.what()));
        return 1;
    }
}
