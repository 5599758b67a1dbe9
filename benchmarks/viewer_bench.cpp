// How long a person waits for the first page: a command file with 1,000 consent forms beside one with a
// single form, from reading the command file to the painted page in the viewer's window.

#include "app/base/codepage932.h"
#include "benchmarks/figures.h"
#include "viewer/command/job_document.h"
#include "viewer/layout/layout_reader.h"
#include "viewer/window/page_view.h"
#include "viewer/window/viewer_form.h"

#include <QApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int manyPages = 1000;
constexpr int repetitions = 9;

QByteArray readAll(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        stop(u"Cannot read "_s + path);
    return file.readAll();
}

void writeText(const QString &path, const QString &text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(encode932(text).bytes) < 0)
        stop(u"Cannot write "_s + path);
}

/// A command file that shows so many consent forms.
QString makeCommand(const QTemporaryDir &folder, int pages) {
    const QString layout = u"" DOUISHO_LAYOUTS "/同意書_マッサージ初回.wfd"_s;
    Problem problem;
    const std::optional<Layout> read = readLayout(readAll(layout), layout, &problem);
    if (!read)
        stop(problem.sentence());
    const QStringList items = read->items();
    QString data = u'"' + items.join(u"\",\""_s) + u"\"\r\n"_s;
    for (int i = 0; i < pages; ++i)
        data += u'"' + QStringList(items.size(), u"値%1"_s.arg(i)).join(u"\",\""_s) + u"\"\r\n"_s;
    const QString name = folder.filePath(QString::number(pages));
    writeText(name + u".csv"_s, data);
    writeText(name + u".dat"_s, u"FileName,\"%1\"\r\nSetDataText,\"同意書データ\",\"%2.csv\"\r\n"
                                "PrintPaper, A4\r\nShowWindow,2\r\n"_s.arg(layout, name));
    return name + u".dat"_s;
}

/// Notes that a widget has been painted.
class PaintWatch : public QObject {
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

double firstPage(const QString &command, int pages) {
    return millisecondsOf([&] {
        Job job;
        Problem problem;
        const std::optional<Document> document = loadCommandFile(command, &job, &problem);
        if (!document || document->pageCount() != pages)
            stop(u"The document has not the pages that it should have. "_s + problem.sentence());
        ViewerForm form(*document, {}, {});
        PaintWatch watch;
        form.findChild<PageView *>()->viewport()->installEventFilter(&watch);
        form.show();
        while (!watch.painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // The filter sees the event first: painting is over when it has been delivered.
    });
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    const QString one = makeCommand(folder, 1);
    const QString many = makeCommand(folder, manyPages);
    std::vector<double> oneTimes, manyTimes;
    for (int i = 0; i <= repetitions; ++i) {
        oneTimes.push_back(firstPage(one, 1));
        manyTimes.push_back(firstPage(many, manyPages));
        if (i == 0) { // warms the caches
            oneTimes.clear();
            manyTimes.clear();
        }
    }
    Figures figures;
    figures.compare("first page of 1,000 on screen", median(manyTimes), "of one", median(oneTimes), 1.5);
    return figures.exitCode();
}
