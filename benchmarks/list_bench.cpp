// The consent list of an office with 200,000 patients: its query beside a bare loop over the engine's C
// interface, and what the user waits for at the screen. `list_bench FOLDER` uses the sample installation in
// that folder, or makes it there; without a folder a temporary one is made.

#include "app/base/codepage932.h"
#include "benchmarks/bare_database.h"
#include "benchmarks/figures.h"
#include "benchmarks/list_screen.h"
#include "consent/list/list_model.h"
#include "consent/rows/list_query.h"
#include "db/adodb.h"
#include "db/dialect/dialect.h"
#include "export/grid_table.h"
#include "export/make_csv.h"
#include "sample/installation.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate day(2026, 11, 21);
constexpr Branch branch{1, 1};
constexpr int patients = 200'000;
constexpr int repetitions = 9;

/// About ten thousand of the sample's consents end in this month; what has lapsed comes along.
ListFilter january() {
    ListFilter filter;
    filter.lapsedBefore = day;
    filter.from = QDate(2027, 1, 1);
    filter.to = QDate(2027, 1, 31);
    return filter;
}

void makeSample(const QString &folder) {
    const sample::SampleResult made =
        sample::makeInstallation({.folder = folder, .day = day, .patients = patients, .programs = {}});
    if (made.outcome != sample::SampleOutcome::Made && made.outcome != sample::SampleOutcome::LeftAsItIs)
        stop(made.sentence);
}

void loadByProgram(cT_ADODB &db, ConsentListModel &model) {
    const ListFilter filter = january();
    Recordset rows;
    if (db.iOpenRecSet(rows, listSql(branch, filter)) != 0)
        stop(db.sErrMsg());
    model.load(std::move(rows), {day, filter.from, filter.to, false, {}, nullptr});
}

/// Joins cells and writes them, nothing else.
template <class Cell> void joinCells(int rows, int columns, const QString &path, Cell cell) {
    QString text;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            text += u'"' + cell(row, column) + u"\","_s;
        text += u"\r\n"_s;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(encode932(text).bytes) < 0)
        stop(file.errorString());
}

/// As the program does: what the user is to be told is looked for first.
void saveTable(const GridTable &table, const QString &path) {
    modMakeCsv::lostCharacters(table, true);
    modMakeCsv::formulas(table);
    if (const Result<> written = modMakeCsv::write(path, table, {}); !written)
        stop(written.reason());
}

/// The three ways to the same rows, in turns, so that a busy machine disturbs all alike.
void measureQuery(Figures &figures, const BareDatabase &bare, cT_ADODB &db, ListScreen &screen) {
    const QByteArray sql = inDialect(SqlDialect::Embedded, listSql(branch, january()).toUtf8());
    std::vector<double> loop, loaded, painted;
    ConsentListModel model;
    size_t rows = 0;
    for (int i = 0; i <= repetitions; ++i) {
        loop.push_back(millisecondsOf([&] { rows = bare.stepThrough(sql); }));
        loaded.push_back(millisecondsOf([&] { loadByProgram(db, model); }));
        painted.push_back(screen.search(january().from, january().to));
        if (size_t(model.records().count()) != rows || screen.rowCount() != model.rowCount())
            stop(u"the three ways found %1 records, %2 and %3 rows of them"_s.arg(rows)
                     .arg(model.rowCount())
                     .arg(screen.rowCount()));
        if (i == 0) { // warms the caches
            loop.clear();
            loaded.clear();
            painted.clear();
        }
    }
    std::printf("%zu records, %d rows of them in the range, %d patients, medians of %d\n", rows,
                model.rowCount(), patients, repetitions);
    figures.compare("query into the grid's model", median(loaded), "bare loop", median(loop), 1.0);
    figures.compare("F4 to painted grid", median(painted), "bare loop", median(loop), 0.9);
}

void measureScrolling(Figures &figures, ListScreen &screen) {
    const std::vector<double> pages = screen.pageDown();
    figures.limit("scroll by one page, slowest page", *std::max_element(pages.begin(), pages.end()), 16);
    figures.note("scroll page by page from top to bottom", std::accumulate(pages.begin(), pages.end(), 0.0));
    std::vector<double> jumps;
    for (int i = 0; i < repetitions; ++i)
        jumps.push_back(screen.jumpToEnd());
    figures.limit("scroll from top to bottom at once", median(jumps), 100);
}

void measureSorting(Figures &figures, ListScreen &screen) {
    double slowest = 0;
    QString slowestColumn;
    for (const ListColumnInfo &info : listColumns()) {
        // Upwards, downwards and back to the order of the query.
        const double up = screen.clickHeader(info.column);
        const double down = screen.clickHeader(info.column);
        screen.clickHeader(info.column);
        if (info.column == ListColumn::Name)
            figures.limit("sort by the patient's name", up, 100);
        if (qMax(up, down) > slowest) {
            slowest = qMax(up, down);
            slowestColumn = info.caption;
        }
    }
    figures.limit(u"sort by the slowest column (%1)"_s.arg(slowestColumn).toUtf8().constData(), slowest, 100);
}

void measureNarrowing(Figures &figures, ListScreen &screen) {
    std::vector<double> first, others;
    // The last stroke back shows all rows again.
    const QString kana = u"ヤマモト"_s;
    std::vector<std::vector<double>> byStroke(size_t(2 * kana.size()));
    for (int i = 0; i < repetitions; ++i) {
        screen.search(january().from, january().to);
        // At once, while the list may still be making its preparations.
        const std::vector<double> strokes = screen.narrowByKana(kana);
        first.push_back(strokes.front());
        others.insert(others.end(), strokes.begin() + 1, strokes.end());
        for (size_t stroke = 0; stroke < strokes.size(); ++stroke)
            byStroke[stroke].push_back(strokes[stroke]);
    }
    std::vector<double> medians;
    for (const std::vector<double> &times : byStroke)
        medians.push_back(median(times));
    figures.limit("narrow by kana, first key stroke", median(first), 10);
    figures.limit("narrow by kana, following key strokes", median(others), 10);
    figures.limit("narrow by kana, the slowest of the strokes",
                  *std::max_element(medians.begin(), medians.end()), 10);
}

/// Ticking all rows and clearing them again, taken back and done again.
void measureTicking(Figures &figures, ListScreen &screen) {
    screen.search(january().from, january().to);
    std::vector<double> ticks, undone;
    for (int i = 0; i < repetitions; ++i) {
        ticks.push_back(screen.tickAll());
        undone.push_back(screen.undo());
        screen.undo(false);
    }
    figures.limit("tick all rows", median(ticks), 20);
    figures.limit("take the ticks of all rows back", median(undone), 20);
}

/// All rows and columns as a file, out of the model and out of a table that was read before, each beside a
/// loop over the same cells.
void measureCsv(Figures &figures, cT_ADODB &db, const QString &path) {
    ConsentListModel model;
    loadByProgram(db, model);
    std::vector<int> columns(size_t(model.columnCount()));
    std::iota(columns.begin(), columns.end(), 0);
    const GridTable read = readTable(model, columns);
    const int rows = model.rowCount(), wide = model.columnCount();
    const QString bare = path + u".bare"_s;
    std::vector<double> loop, saved, tableLoop, tableSaved;
    for (int i = 0; i < repetitions; ++i) {
        loop.push_back(millisecondsOf([&] {
            joinCells(rows, wide, bare,
                      [&](int row, int column) { return model.index(row, column).data().toString(); });
        }));
        saved.push_back(millisecondsOf([&] { saveTable(readTable(model, columns), path); }));
        tableLoop.push_back(millisecondsOf([&] {
            joinCells(rows, wide, bare, [&](int row, int column) { return read.rows[size_t(row)][column]; });
        }));
        tableSaved.push_back(millisecondsOf([&] { saveTable(read, path); }));
    }
    figures.compare("all rows and columns as CSV", median(saved), "bare loop", median(loop), 2.0);
    figures.compare("of them, from texts to file", median(tableSaved), "bare loop", median(tableLoop), 2.0);
}

void checkPlan(Figures &figures, const BareDatabase &bare) {
    const QStringList plan = bare.plan(inDialect(SqlDialect::Embedded, listSql(branch, january()).toUtf8()));
    for (const QString &line : plan)
        std::printf("    %s\n", line.toUtf8().constData());
    figures.check("newest view without a full scan of RIYOUSHA_DOUI_REC",
                  plan.filter(u"SCAN RIYOUSHA_DOUI_REC"_s).isEmpty());
}

} // namespace

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const QTemporaryDir temporary;
    const QString folder = QApplication::arguments().value(1, temporary.path());
    makeSample(folder);

    const QString database = Folders(folder).data() + u"/douisho.db"_s;
    const BareDatabase bare(database);
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + database);
    if (db.iConnect() != 0)
        stop(db.sErrMsg());
    ListScreen screen(folder, day, branch, db);

    Figures figures;
    measureQuery(figures, bare, db, screen);
    measureScrolling(figures, screen);
    measureSorting(figures, screen);
    measureNarrowing(figures, screen);
    measureTicking(figures, screen);
    measureCsv(figures, db, folder + u"/list.csv"_s);
    checkPlan(figures, bare);
    return figures.exitCode();
}
