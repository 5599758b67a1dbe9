// A thousand consent forms: their query and files beside a bare loop over the engine's C interface that runs
// the same query and writes the same bytes, and the whole way from the click to the finished documents.

#include "benchmarks/bare_database.h"
#include "benchmarks/figures.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "db/adodb.h"
#include "db/dialect/dialect.h"
#include "print/batch/batch_print.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/form_messages.h"
#include "print/consent_form/form_query.h"
#include "sample/installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate day(2026, 11, 21);
constexpr int patients = 2000; ///< three of five belong to the branch
constexpr int forms = 1000;
constexpr int repetitions = 7;
constexpr double allowedRatio = 2.0;
constexpr double allowedShare = 0.2; ///< of the wait for the documents: all but the image builder

ConsentFormOptions thousand() {
    ConsentFormOptions options{
        .branch = {1, 1}, .master = FormMaster::Practice, .oral = OralForms::OwnLayout};
    for (int number = 1; number <= forms; ++number)
        options.patients.push_back(number);
    return options;
}

GatheredForms gather(cT_ADODB &db) {
    Result<GatheredForms> gathered = gatherConsentForms(db, thousand(), day);
    if (!gathered)
        stop(gathered.reason());
    // One or another consents by word of mouth.
    if (gathered->forms.size() + gathered->leftOut.size() != size_t(forms) || gathered->leftOut.size() > 5)
        stop(u"%1 forms\n"_s.arg(gathered->forms.size()) + patientsLeftOut(gathered->leftOut).text);
    return std::move(*gathered);
}

void write(PrintFiles &files, const GatheredForms &gathered) {
    for (const ConsentForm &form : gathered.forms)
        if (const Result<QString> path = writeConsentFormData(form, files); !path)
            stop(path.reason());
}

/// What the program wrote, to be written again by the yardstick.
std::vector<QByteArray> writtenBytes(const QString &folder) {
    std::vector<QByteArray> files;
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files)) {
        QFile file(entry.filePath());
        if (!file.open(QIODevice::ReadOnly))
            stop(file.errorString());
        files.push_back(file.readAll());
    }
    return files;
}

void writeBare(const QString &folder, const std::vector<QByteArray> &files) {
    for (size_t i = 0; i < files.size(); ++i) {
        const QByteArray path = (folder + u'/' + QString::number(i)).toUtf8();
        std::FILE *file = std::fopen(path.constData(), "wb");
        if (!file ||
            std::fwrite(files[i].constData(), 1, size_t(files[i].size()), file) != size_t(files[i].size()))
            stop(u"bare loop"_s);
        std::fclose(file);
    }
}

class NoMessages : public Messages {
public:
    Answer show(const Message &message) override { return message.defaultAnswer; }
};

void measureData(Figures &figures, Folders &folders, cT_ADODB &db, const BareDatabase &bare) {
    const QByteArray sql = inDialect(SqlDialect::Embedded, consentFormSql(thousand()).toUtf8());
    const QTemporaryDir bareFolder;
    double gathering = 0;
    Clock clock;
    NoMessages messages;
    SystemProcesses processes;
    const Environment environment{folders, clock, messages, processes, {1, 1}};
    // Every run writes new files into a folder of its own, and so does the loop. They stay until the end: a
    // file system that finds room for new files among thousands just deleted would be what is measured.
    std::vector<std::unique_ptr<PrintFiles>> runs;
    const auto print = [&] {
        GatheredForms gathered;
        gathering = millisecondsOf([&] { gathered = gather(db); });
        write(*runs.emplace_back(std::make_unique<PrintFiles>(environment)), gathered);
    };
    print(); // warms the caches
    const std::vector<QByteArray> files = writtenBytes(runs.back()->folder());
    std::vector<double> ours, bares;
    for (int i = 0; i < repetitions; ++i) {
        ours.push_back(millisecondsOf(print));
        bares.push_back(millisecondsOf([&] {
            const QString folder = bareFolder.filePath(QString::number(i));
            QDir().mkdir(folder);
            bare.stepThrough(sql);
            writeBare(folder, files);
        }));
    }
    std::printf("%zu files, medians of %d\n", files.size(), repetitions);
    figures.compare("gathering and writing the data", median(ours), "bare loop", median(bares), allowedRatio);
    figures.note("  of it gathering", gathering);
}

/// The system's programs; the viewer is not started, since it would work beside the image builder.
class BuilderOnly : public SystemProcesses {
public:
    bool start(const QString &, const QStringList &, const QString &, qint64 *, WindowStyle) override {
        return true;
    }
    ProcessEnd run(const QString &program, const QStringList &arguments, const QString &folder,
                   std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) override {
        ProcessEnd end;
        building +=
            millisecondsOf([&] { end = SystemProcesses::run(program, arguments, folder, timeOut, goOn); });
        return end;
    }
    double building = 0;
};

/// What a batch took.
struct Batch {
    double all = 0, writing = 0, building = 0;
};

/// @param dataAreThere written before the clock starts
Batch printBatch(Folders &folders, const GatheredForms &gathered, bool dataAreThere) {
    Clock clock;
    NoMessages messages;
    BuilderOnly processes;
    Environment environment{folders, clock, messages, processes, {1, 1}};
    Batch batch;
    PrintFiles ready(environment);
    std::vector<QString> paths;
    for (const ConsentForm &form : gathered.forms) {
        if (!dataAreThere)
            break;
        const Result<QString> written = writeConsentFormData(form, ready);
        if (!written)
            stop(written.reason());
        paths.push_back(*written);
    }
    const auto make = [&](int position, PrintFiles &files) -> Result<BatchReport> {
        const ConsentForm &form = gathered.forms[size_t(position)];
        BatchReport report;
        Result<QString> written = dataAreThere ? paths[size_t(position)] : QString();
        if (!dataAreThere)
            batch.writing += millisecondsOf([&] { written = writeConsentFormData(form, files); });
        if (!written)
            return Failure{written.reason()};
        report.dataFile = *written;
        report.name = u"同意書"_s;
        report.dataName = consentFormDataName();
        report.imageItem = qrImageItem();
        report.layout = layoutPath(folders, form);
        return report;
    };
    BatchResult result;
    batch.all = millisecondsOf([&] {
        result = BatchPrint(environment, {}).run({int(gathered.forms.size()), make}, {});
    });
    batch.building = processes.building;
    if (!result.allPrinted())
        stop(result.chunks.empty() ? u"no chunk"_s : result.chunks.front().reason);
    return batch;
}

/// Data are written while the builder works on the chunk before, so that the builder's own time is taken from
/// a batch whose data are there already.
void measureDocuments(Figures &figures, Folders &folders, cT_ADODB &db) {
    std::vector<double> all, gathering, writing, building, ours;
    for (int i = 0; i < repetitions; ++i) {
        GatheredForms gathered;
        gathering.push_back(millisecondsOf([&] { gathered = gather(db); }));
        const Batch batch = printBatch(folders, gathered, false);
        all.push_back(gathering.back() + batch.all);
        writing.push_back(batch.writing);
        building.push_back(printBatch(folders, gathered, true).building);
        ours.push_back(all.back() - building.back());
    }
    figures.note("from the click to the finished documents", median(all));
    figures.note("  gathering", median(gathering));
    figures.note("  data files and QR pictures, beside the builder", median(writing));
    figures.note("  image builder alone", median(building));
    std::printf("our share of the wait %.1f %% (allowed %.0f %%)\n", 100 * median(ours) / median(all),
                100 * allowedShare);
    figures.check("our part of the wait is small", median(ours) < allowedShare * median(all));
}

QString madeIn(const QTemporaryDir &place) {
    const QString folder = place.filePath(u"installation"_s);
    const sample::SampleResult made =
        sample::makeInstallation({.folder = folder,
                                  .day = day,
                                  .patients = patients,
                                  .programs = QCoreApplication::applicationDirPath()});
    if (made.outcome != sample::SampleOutcome::Made)
        stop(made.sentence);
    return folder;
}

/// An installation with its database connected.
struct Installation {
    explicit Installation(const QTemporaryDir &place) : root(madeIn(place)), folders(root) {
        clsOplIniFile ini; // see measureData
        ini.iInit(Folders::file(folders.data(), u"douisho.ini"_s));
        if (ini.iWriteProfileString(u"印刷"_s, u"作業ファイルを残す"_s, u"1"_s) != 0)
            stop(ini.sErrMsg());
        db.iInit(u"Provider=SQLite;Data Source="_s + database());
        if (db.iConnect() != 0)
            stop(db.sErrMsg());
    }
    QString database() const { return root + u"/DATA/douisho.db"_s; }

    QString root;
    Folders folders;
    cT_ADODB db;
};

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    Figures figures;
    const QTemporaryDir onDisk;
    Installation installation(onDisk);
    measureData(figures, installation.folders, installation.db, BareDatabase(installation.database()));
    // What the disk takes is in the figure before; here it would hide the program's own share.
    const QTemporaryDir inMemory(u"/dev/shm/douisho-XXXXXX"_s);
    if (!inMemory.isValid())
        stop(inMemory.errorString());
    Installation another(inMemory);
    measureDocuments(figures, another.folders, another.db);
    return figures.exitCode();
}
