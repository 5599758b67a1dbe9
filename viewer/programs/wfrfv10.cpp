#include "app/base/platform/desktop.h"
#include "app/base/unicode_twin.h"
#include "app/desktop/japanese.h"
#include "app/desktop/key_help.h"
#include "app/desktop/message_form.h"
#include "app/desktop/program_icon.h"
#include "viewer/programs/viewer_program.h"

#include <QApplication>
#include <QFileInfo>
#include <QTranslator>
#include <cstdio>
#include <exception>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether nobody would see a window. Another platform that the user names is believed.
bool hasNoDisplay() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty())
        return platform.startsWith("offscreen") || platform.startsWith("minimal");
    return !platform::hasDisplay();
}

/// The viewer host's name asks for a window that fills the screen; links keep the name they were started by.
bool isViewerHost(const char *program) {
    return QFileInfo(QString::fromLocal8Bit(program))
               .completeBaseName()
               .compare(u"WrVb6Viewer"_s, Qt::CaseInsensitive) == 0;
}

/// An exception out of an event handler would end the program without a word.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception &error) {
            std::fprintf(stderr, "%s\n", error.what());
            if (!hasNoDisplay())
                QtMessages().fail(u"予期しないエラーが発生しました。帳票の画面を閉じます。\r\n"_s +
                                  QString::fromLocal8Bit(error.what()));
            exit(EXIT_FAILURE);
        }
        return true;
    }
};

} // namespace

int main(int argc, char **argv) {
    const bool headless = hasNoDisplay();
    if (headless)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    QCoreApplication::setApplicationName(u"wfrfv10"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(UnicodeTwin::mark));
    QTranslator translator;
    speakJapanese(translator);
    showIcon(u"viewer"_s, u"wfrfv10"_s);
    const KeyHelp help;
    return runViewer({QCoreApplication::arguments().mid(1), headless, isViewerHost(argv[0])});
}
