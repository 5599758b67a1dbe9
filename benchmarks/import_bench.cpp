// Imports ten thousand patients from a file into the embedded database, from the file's first byte to the
// commit, the trial included, beside the same rows inserted by the bare engine in one transaction. At most
// three times as long is allowed, the records of the history on either side; then the same file once more,
// which changes nothing.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "benchmarks/figures.h"
#include "db/adodb.h"
#include "db/sqlite/functions.h"
#include "history/log_tables.h"
#include "import/import_job.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patients = 10'000;
constexpr int repetitions = 5;
constexpr double allowedRatio = 3.0;

QStringList patient(int number) {
    const QStringList names{u"山田"_s, u"佐藤"_s, u"鈴木"_s, u"高橋"_s, u"渡辺"_s};
    const QStringList kana{u"ヤマダ"_s, u"サトウ"_s, u"スズキ"_s, u"タカハシ"_s, u"ワタナベ"_s};
    const int name = number % 5;
    return {names[name] + u"　花子%1"_s.arg(number / 5),
            kana[name] + u"　ハナコ%1"_s.arg(number / 5),
            u"%1/%2/%3"_s.arg(1925 + number % 30)
                .arg(1 + number % 12, 2, 10, QChar(u'0'))
                .arg(1 + number % 28, 2, 10, QChar(u'0')),
            QString::number(1 + number % 2),
            u"0999-%1"_s.arg(number, 6, 10, QChar(u'0')),
            u"992-1010"_s,
            u"緑川県若葉市中央%1-%2"_s.arg(number % 9).arg(number % 30),
            u"若葉ハイツ%1"_s.arg(number % 300)};
}

class Bare {
public:
    explicit Bare(const QString &path) {
        if (sqlite3_open(path.toUtf8().constData(), &m_handle) != SQLITE_OK ||
            addServerFunctions(m_handle, m_time) != SQLITE_OK)
            stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
        run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
    }
    ~Bare() { sqlite3_close(m_handle); }
    Bare(const Bare &) = delete;
    Bare &operator=(const Bare &) = delete;

    void run(const QByteArray &sql) {
        if (sqlite3_exec(m_handle, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }
    void insert(const QByteArray &sql, const std::vector<QStringList> &rows) {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_handle, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
            stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
        for (size_t row = 0; row < rows.size(); ++row) {
            sqlite3_bind_int64(statement, 1, qint64(row) + 1);
            int parameter = 2;
            for (const QString &text : rows[row])
                if (parameter <= sqlite3_bind_parameter_count(statement))
                    sqlite3_bind_text16(statement, parameter++, text.utf16(), int(text.size() * 2),
                                        SQLITE_STATIC);
            if (sqlite3_step(statement) != SQLITE_DONE)
                stop(QString::fromUtf8(sqlite3_errmsg(m_handle)));
            sqlite3_reset(statement);
        }
        sqlite3_finalize(statement);
    }

private:
    sqlite3 *m_handle = nullptr;
    StatementTime m_time;
};

double bareInserts(const QString &path, const std::vector<QStringList> &rows) {
    Bare bare(path);
    return millisecondsOf([&] {
        bare.run("BEGIN IMMEDIATE");
        bare.insert("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, tBirthday, "
                    "iSexKubun, cTelNo,"
                    " cYubinNo, cAdress1, cAdress2, iSejutsuKubun, cPcName, tUpDateTime) VALUES (1, 1, ?, ?, "
                    "?, ?, ?, ?,"
                    " ?, ?, ?, 0, 'BENCH', GetDate())",
                    rows);
        bare.insert("INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, cPcName, tUpDateTime)"
                    " VALUES (1, 1, ?, 'BENCH', GetDate())",
                    rows);
        bare.insert(
            "INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, cPcName, tUpDateTime)"
            " VALUES (1, 1, ?, '2026/11', 1, 'BENCH', GetDate())",
            rows);
        bare.insert(
            "INSERT INTO DOUISHO_LOG (cWrite, iSeq, tTime, cPcName, cOperation, cTable, iKyotenCd,"
            " iKyotenEb, nIDNo, cKey, iKind, cChanges) VALUES ('bench', ?1, GetDate(), 'BENCH', 'BENCH',"
            " 'RIYOUSHA', 1, 1, ?1, '', 1, '{\"cName\":[null,\"' || ?2 || '\"],\"cNameKana\":[null,\"'"
            " || ?3 || '\"],\"tBirthday\":[null,\"' || ?4 || '\"],\"iSexKubun\":[null,\"' || ?5 ||"
            " '\"],\"cTelNo\":[null,\"' || ?6 || '\"],\"cYubinNo\":[null,\"' || ?7 ||"
            " '\"],\"cAdress1\":[null,\"' || ?8 || '\"],\"cAdress2\":[null,\"' || ?9 || '\"]}')",
            rows);
        bare.run("COMMIT");
    });
}

/// @param news how many rows are new
double import(const QString &database, const QString &path, const Folders &folders, int news) {
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + database);
    if (db.iConnect() != 0)
        stop(db.sErrMsg());
    // To the commit; what was held is freed afterwards.
    ImportJob job;
    job.branch = {1, 1};
    Result<ImportPlan> plan = ImportPlan();
    ImportOutcome outcome;
    return millisecondsOf([&] {
        Result<CsvFile> file = CsvFile::open(path);
        if (!file)
            stop(file.reason());
        job.file = std::move(*file);
        job.columns = recogniseColumns(job.description(), job.file);
        plan = tryImport(job, db, folders);
        if (!plan || plan->count(PlannedRow::New) != news)
            stop(u"trial: "_s + plan.reason());
        outcome = writeImport(job, db, folders, *plan, ImportRows::All, {});
        if (outcome.kind != ImportOutcome::Done)
            stop(outcome.text);
    });
}

void writeFile(const QString &path, const std::vector<QStringList> &rows) {
    QString text = u"氏名,フリガナ,生年月日,性別,電話番号,郵便番号,住所,建物名\r\n"_s;
    for (const QStringList &row : rows)
        text += row.join(u',') + u"\r\n"_s;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(encode932(text).bytes) < 0)
        stop(file.errorString());
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const Folders folders(folder.path());
    const QString original = folder.filePath(u"original.db"_s), path = folder.filePath(u"名簿.csv"_s);
    QFile schema(QStringLiteral(DOUISHO_SCHEMA));
    if (!schema.open(QIODevice::ReadOnly))
        stop(schema.errorString());
    {
        Bare bare(original);
        bare.run(schema.readAll());
        bare.run("PRAGMA journal_mode = DELETE");
        cT_ADODB db;
        db.iInit(u"Provider=SQLite;Data Source="_s + original);
        if (const Result<bool> made = makeLogTables(db); !made)
            stop(made.reason());
        db.iDisConnect();
        bare.run("PRAGMA journal_mode = DELETE");
    }
    std::vector<QStringList> rows;
    for (int number = 0; number < patients; ++number)
        rows.push_back(patient(number));
    writeFile(path, rows);

    std::vector<double> ours, theirs, again;
    for (int i = 0; i < repetitions; ++i) {
        const QString bare = folder.filePath(u"bare%1"_s.arg(i)),
                      program = folder.filePath(u"program%1"_s.arg(i));
        QFile::copy(original, bare);
        QFile::copy(original, program);
        theirs.push_back(bareInserts(bare, rows));
        ours.push_back(import(program, path, folders, patients));
        again.push_back(import(program, path, folders, 0));
    }
    Figures figures;
    figures.compare("10,000 patients imported from a file", median(ours), "bare inserts", median(theirs),
                    allowedRatio);
    figures.note("the same file again, nothing to write", median(again));
    return figures.exitCode();
}
