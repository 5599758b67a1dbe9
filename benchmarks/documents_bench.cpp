// Documents of ten thousand rows: gathering them and writing their data file beside a bare loop that runs the
// same query and writes the same bytes, and the memory that they take as a PDF.

#include "benchmarks/bare_database.h"
#include "benchmarks/figures.h"
#include "benchmarks/pdf_memory.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/folders.h"
#include "db/adodb.h"
#include "db/dialect/dialect.h"
#include "print/ledger/ledger.h"
#include "print/ledger/ledger_query.h"
#include "print/renewal_list/renewal_query.h"
#include "sample/installation.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate day(2026, 11, 21);
constexpr int patients = 20'000; ///< three of five belong to the branch
constexpr size_t rows = 10'000;
constexpr int repetitions = 7;
constexpr double allowedRatio = 2.0;

/// A document whose rows lie in one data file.
struct ListDocument {
    const char *name;
    QString sql; ///< that its rows are read with
    std::function<DataFile()> make;
    QString dataName, layout;
};

void writeBare(const QString &path, const QByteArray &bytes) {
    std::FILE *file = std::fopen(path.toUtf8().constData(), "wb");
    if (!file || std::fwrite(bytes.constData(), 1, size_t(bytes.size()), file) != size_t(bytes.size()))
        stop(u"bare loop"_s);
    std::fclose(file);
}

void measure(Figures &figures, const ListDocument &document, const BareDatabase &bare,
             const QTemporaryDir &folder) {
    const QByteArray sql = inDialect(SqlDialect::Embedded, document.sql.toUtf8());
    const QString path = folder.filePath(document.dataName + u".csv"_s);
    std::vector<double> ours, bares;
    QByteArray bytes;
    int records = 0;
    for (int i = 0; i <= repetitions; ++i) {
        ours.push_back(millisecondsOf([&] {
            const DataFile file = document.make();
            const Result<> written = file.write(path, Folders(folder.path()));
            if (size_t(file.count()) < rows || !written)
                stop(u"%1 records %2"_s.arg(file.count()).arg(written.reason()));
            records = file.count();
            bytes = file.bytes();
        }));
        bares.push_back(millisecondsOf([&] {
            bare.stepThrough(sql);
            writeBare(path + u".bare"_s, bytes);
        }));
        if (i == 0) { // warms the caches
            ours.clear();
            bares.clear();
        }
    }
    std::printf("%s: %d records, medians of %d\n", document.name, records, repetitions);
    figures.compare("gathering and writing the data", median(ours), "bare loop", median(bares), allowedRatio);
    const QString command = folder.filePath(u"document.dat"_s);
    const QByteArray lines =
        encode932(u"FileName,\"%1\"\r\nSetDataText,\"%2\",\"%3\"\r\nShowWindow,2\r\n"_s.arg(
                      document.layout, document.dataName, path))
            .bytes;
    if (const Result<> written = writeFileWhole(command, lines); !written)
        stop(written.reason());
    checkPdfMemory(figures, "  as a PDF", command, folder.filePath(u"document.pdf"_s));
}

/// The newest consents of the branch, as the list hands them over.
std::vector<ConsentRowKey> newestRows(cT_ADODB &db) {
    Recordset found;
    if (db.iOpenRecSet(found,
                       u"SELECT TOP %1 nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate FROM RIYOUSHA_DOUI_REC"
                       " WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND iNewestFlg = 1"
                       " ORDER BY tDouiKaryoE, nIDNo"_s.arg(rows)) != 0)
        stop(db.sErrMsg());
    std::vector<ConsentRowKey> keys;
    for (int row = 0; row < found.rowCount(); ++row)
        keys.push_back({{1, 1, qint32(found.number(row, 0))},
                        qint32(found.number(row, 1)),
                        short(found.number(row, 2)),
                        qint32(found.number(row, 3))});
    return keys;
}

ListDocument ledgerOf(cT_ADODB &db, const Folders &folders) {
    LedgerOrder order{.branch = {1, 1}, .pattern = LedgerPattern::Requests, .rows = newestRows(db)};
    const Result<RequestMethods> methods = readRequestMethods(folders);
    if (!methods)
        stop(methods.reason());
    order.methods = *methods;
    const auto make = [&db, order] {
        const Result<Ledger> ledger = readLedger(db, order);
        if (!ledger)
            stop(ledger.reason());
        return ledgerData(ledger->rows, order, day);
    };
    return {"ledger", ledgerSql(order), make, ledgerDataName(),
            Folders::file(folders.system(), ledgerLayout(order.pattern))};
}

/// The renewal list of all patients of the branch, a sheet a practitioner.
ListDocument renewalListOf(cT_ADODB &db, const Folders &folders) {
    RenewalListQuery query;
    query.branch = {1, 1};
    query.options.month = QDate(2020, 1, 1);
    query.options.pageBreak = RenewalListOptions::PageBreak::Practitioner;
    query.options.pattern = RenewalListOptions::Pattern::Table;
    query.today = day;
    Recordset found;
    if (db.iOpenRecSet(found,
                       u"SELECT DISTINCT nIDNo FROM RIYOUSHA_DOUI_REC WHERE iKyotenCd = 1 AND iKyotenEb = 1"
                       " AND iNewestFlg = 1 ORDER BY nIDNo"_s) != 0)
        stop(db.sErrMsg());
    for (int row = 0; row < found.rowCount(); ++row)
        query.patients.insert(qint32(found.number(row, 0)));
    const auto lines = [&db](const RenewalListQuery &asked) {
        const Result<std::vector<DueConsent>> due = readDueConsents(db, asked);
        if (!due)
            stop(due.reason());
        return renewalLines(*due);
    };
    return {"renewal list", renewalListSql(query), [=] { return renewalData(lines(query), query.options); },
            u"同意データ"_s, Folders::file(folders.system(), query.options.layout())};
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    if (const std::optional<int> done = asPdfWriter(QCoreApplication::arguments()))
        return *done;
    const QTemporaryDir temporary;
    const QString folder = temporary.filePath(u"installation"_s);
    const sample::SampleResult made =
        sample::makeInstallation({.folder = folder, .day = day, .patients = patients, .programs = {}});
    if (made.outcome != sample::SampleOutcome::Made)
        stop(made.sentence);
    const QString database = folder + u"/DATA/douisho.db"_s;
    const Folders folders(folder);
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + database);
    if (db.iConnect() != 0)
        stop(db.sErrMsg());
    const BareDatabase bare(database);
    Figures figures;
    measure(figures, ledgerOf(db, folders), bare, temporary);
    measure(figures, renewalListOf(db, folders), bare, temporary);
    return figures.exitCode();
}
