#include "app/base/folders.h"
#include "db/tables/schema.h"
#include "import/import_job.h"
#include "tests/odbc/postgres_server.h"
#include "tests/odbc/slow_line.h"

#include <QTemporaryDir>
#include <future>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const PostgresServer &server() {
    static const PostgresServer ofRun;
    EXPECT_EQ(ofRun.problem().toStdString(), "");
    return ofRun;
}

/// Two programs on a real server.
class ImportsAtOnce : public testing::Test {
protected:
    ImportsAtOnce() {
        connect(db, server().port());
        EXPECT_TRUE(makeSchema(db));
        for (const QString &table : {u"KYOTEN"_s, u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"DOUIKIROKU"_s})
            run(u"DELETE FROM "_s + table);
        run(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES (1, 1, '本院', 1)"_s);
    }
    void connect(cT_ADODB &to, quint16 port) const {
        QString text = server().connectionString();
        text.replace(u"Port=%1;"_s.arg(server().port()), u"Port=%1;"_s.arg(port));
        EXPECT_EQ(to.iInit(text), 0);
        EXPECT_EQ(to.iConnect(), 0) << to.sErrMsg().toStdString();
    }
    void run(const QString &sql) { EXPECT_EQ(db.iExecSQL(sql), 0) << db.sErrMsg().toStdString(); }
    QString value(const QString &sql) {
        Recordset rows;
        EXPECT_EQ(db.iOpenRecSet(rows, sql), 0) << db.sErrMsg().toStdString();
        return rows.rowCount() == 0 ? QString() : rows.text(0, 0);
    }
    static ImportJob patients(const QString &name, int count) {
        QString text = u"氏名,生年月日,電話,担当\n"_s;
        for (int i = 0; i < count; ++i)
            text += u"%1%2,%3/1/1,0999-%2,\n"_s.arg(name).arg(i).arg(1920 + i % 40);
        return jobOf(ImportKind::Patients, text);
    }
    static ImportJob jobOf(ImportKind kind, const QString &text) {
        ImportJob job{.kind = kind,
                      .file = *CsvFile::fromBytes(text.toUtf8(), u"名簿"_s),
                      .columns = {},
                      .branch = {1, 1}};
        job.columns = recogniseColumns(job.description(), job.file);
        return job;
    }
    ImportOutcome import(cT_ADODB &by, const ImportJob &job, ImportRows rows = ImportRows::All) const {
        const Result<ImportPlan> plan = tryImport(job, by, folders);
        EXPECT_TRUE(plan) << plan.reason().toStdString();
        return plan ? writeImport(job, by, folders, *plan, rows, folder.filePath(u"残り.csv"_s))
                    : ImportOutcome();
    }

    QTemporaryDir folder;
    Folders folders{folder.path()};
    cT_ADODB db;
};

} // namespace

TEST_F(ImportsAtOnce, GiveEachPatientANumberOfHisOwnOnARealServer) {
    constexpr int count = 250;
    const auto imported = [this](const QString &name) {
        cT_ADODB own;
        connect(own, server().port());
        return import(own, patients(name, count));
    };
    auto other = std::async(std::launch::async, imported, u"乙"_s);
    const ImportOutcome mine = imported(u"甲"_s), theirs = other.get();
    EXPECT_EQ(mine.kind, ImportOutcome::Done) << mine.text.toStdString();
    EXPECT_EQ(theirs.kind, ImportOutcome::Done) << theirs.text.toStdString();
    for (const QString &table : {u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"DOUIKIROKU"_s})
        EXPECT_EQ(value(u"SELECT COUNT(*) FROM "_s + table), QString::number(2 * count));
    EXPECT_EQ(value(u"SELECT MAX(nIDNo) FROM RIYOUSHA"_s), QString::number(2 * count));

    // The same once more changes nothing; a consent for each follows.
    EXPECT_EQ(import(db, patients(u"甲"_s, count)).plan.count(PlannedRow::Same), count);
    QString consents = u"番号,同意日,傷病名,施術部位\n"_s;
    for (int number = 1; number <= count; ++number)
        consents += u"%1,R8.5.1,腰痛症,体幹\n"_s.arg(number);
    const ImportOutcome done = import(db, jobOf(ImportKind::Consents, consents));
    EXPECT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_EQ(value(u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1"_s),
              QString::number(count));
}

// Which of two namesakes is told of must not depend on where the server keeps their rows.
TEST_F(ImportsAtOnce, HoldToTheirTrialThoughTheServerMovesWhatItLocks) {
    run(u"INSERT INTO DOCTOR (cIDNo, cName) VALUES ('7', '甲'), ('8', '甲')"_s);
    const ImportOutcome done =
        import(db, jobOf(ImportKind::Doctors, u"番号,医師名,電話\n7,甲,0999-1\n,甲,0999-2\n"_s),
               ImportRows::RightOnes);
    EXPECT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_EQ(value(u"SELECT cTelNo FROM DOCTOR WHERE cIDNo = '7'"_s), u"0999-1"_s);
}

TEST_F(ImportsAtOnce, TakeFewTripsToAFarServer) {
    constexpr int count = 1000;
    SlowLine line(server().port(), std::chrono::milliseconds(1));
    cT_ADODB far;
    connect(far, line.port());
    const ImportOutcome done = import(far, patients(u"丙"_s, count));
    EXPECT_EQ(done.kind, ImportOutcome::Done) << done.text.toStdString();
    EXPECT_LT(line.roundTrips(), 110);
}
