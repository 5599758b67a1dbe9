// From the start of the program to the visible list, as whole processes: the program on its sample
// installation of 300 patients, beside a Qt window that holds nothing but one grid and the rows of the same
// query. Each run is this executable again, told by the environment what to be.

#include "app/base/folders.h"
#include "app/desktop/japanese.h"
#include "app/desktop/message_form.h"
#include "app/program.h"
#include "benchmarks/bare_database.h"
#include "benchmarks/figures.h"
#include "consent/rows/list_query.h"
#include "db/dialect/dialect.h"
#include "sample/installation.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patients = 300;
constexpr int repetitions = 15;
constexpr int emptyList = 3; // exit code
constexpr const char *role = "DOUISHO_START_BENCH";

/// Ends the process when the grid of that name has been painted for the first time.
class EndAtFirstPaint : public QObject {
public:
    explicit EndAtFirstPaint(const QString &grid) : m_grid(grid) {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() != QEvent::Paint || !watched->parent() || watched->parent()->objectName() != m_grid)
            return false;
        const auto *view = qobject_cast<QAbstractItemView *>(watched->parent());
        if (view && view->viewport() == watched) {
            const int code = view->model()->rowCount() > 0 ? EXIT_SUCCESS : emptyList;
            // The filter sees the event first; the queue is looked at when painting is done.
            QMetaObject::invokeMethod(
                this, [code] { std::_Exit(code); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    QString m_grid;
    int m_code = emptyList;
};

int beProgram(int argc, char **argv) {
    QtMessages messages;
    QApplication application(argc, argv);
    QTranslator translator;
    speakJapanese(translator);
    EndAtFirstPaint end(u"ssDouiD"_s);
    application.installEventFilter(&end);
    return runProgram(messages);
}

class BareModel : public QAbstractTableModel {
public:
    explicit BareModel(std::vector<QStringList> rows) : m_rows(std::move(rows)) {}
    int rowCount(const QModelIndex &) const override { return int(m_rows.size()); }
    int columnCount(const QModelIndex &) const override {
        return m_rows.empty() ? 0 : int(m_rows.front().size());
    }
    QVariant data(const QModelIndex &index, int wanted) const override {
        return wanted == Qt::DisplayRole ? m_rows[size_t(index.row())][index.column()] : QVariant();
    }

private:
    std::vector<QStringList> m_rows;
};

int beBare(int argc, char **argv) {
    QApplication application(argc, argv);
    EndAtFirstPaint end(u"bare"_s);
    application.installEventFilter(&end);
    ListFilter filter;
    filter.setDefaultRange(QDate::currentDate());
    filter.lapsedBefore = QDate::currentDate();
    const BareDatabase database(QApplication::arguments().value(1));
    BareModel model(database.read(inDialect(SqlDialect::Embedded, listSql({1, 1}, filter).toUtf8())));
    QMainWindow window;
    auto *view = new QTableView;
    view->setObjectName(u"bare"_s);
    view->setModel(&model);
    window.setCentralWidget(view);
    window.showMaximized();
    return QApplication::exec();
}

/// Milliseconds of one process of that role, from its start to its end.
double timeOf(const QString &part, const QString &folder, const QString &argument) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(role), part);
    environment.insert(u"DOUISHO_FOLDER"_s, folder);
    QProcess process;
    process.setProcessEnvironment(environment);
    const double milliseconds = millisecondsOf([&] {
        process.start(QCoreApplication::applicationFilePath(), {argument});
        process.waitForFinished();
    });
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != EXIT_SUCCESS)
        stop(u"%1 ended with %2: %3"_s.arg(part)
                 .arg(process.exitCode())
                 .arg(QString::fromUtf8(process.readAllStandardError())));
    return milliseconds;
}

int measure(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const sample::SampleResult made = sample::makeInstallation(
        {.folder = folder.path(), .day = QDate::currentDate(), .patients = patients, .programs = {}});
    if (made.outcome != sample::SampleOutcome::Made)
        stop(made.sentence);

    const QString database = Folders(folder.path()).data() + u"/douisho.db"_s;
    const QString listMode = u"1"_s; // on the program's command line
    std::vector<double> program, bare;
    for (int i = 0; i <= repetitions; ++i) {
        program.push_back(timeOf(u"program"_s, folder.path(), listMode));
        bare.push_back(timeOf(u"bare"_s, folder.path(), database));
        if (i == 0) { // warms the caches
            program.clear();
            bare.clear();
        }
    }
    Figures figures;
    figures.compare("start to visible list", median(program), "bare window", median(bare), 1.15);
    return figures.exitCode();
}

} // namespace

int main(int argc, char **argv) {
    const QByteArray part = qgetenv(role);
    return part == "program" ? beProgram(argc, argv)
           : part == "bare"  ? beBare(argc, argv)
                             : measure(argc, argv);
}
