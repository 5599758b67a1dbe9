#include "tests/import/import_fixture.h"

#include "app/base/codepage932.h"

using namespace Qt::Literals::StringLiterals;

ImportTest::ImportTest() {
    database.run(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES (1, 1, '本院', 1);"
                 "INSERT INTO SISETSU (nIDNo, cShamei1, cAddress1) VALUES (5, '甲病院', '中央1'), (6, "
                 "'乙荘', '本町2');"
                 "INSERT INTO DOCTOR (cIDNo, cName, cKikan, iSisetsuCode, cAddress1) VALUES ('3', '三浦 一', "
                 "'甲病院', 5, '中央1'),"
                 " ('4', '森 花', '甲病院', 5, '中央1'), ('12', '森　花', '丙医院', NULL, NULL);"
                 "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 9, '高橋　健');"
                 "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, tBirthday, cTelNo, "
                 "cAdress1) VALUES"
                 " (1, 1, 7, '山﨑　花子', 'ヤマザキ　ハナコ', '1945/01/02', '0999-1', '中央1'),"
                 " (1, 1, 8, '佐藤　太郎', 'サトウ　タロウ', NULL, NULL, NULL),"
                 " (1, 2, 9, '他院　花子', 'タイン　ハナコ', '1930/01/01', NULL, NULL)"_s);
}

ImportJob ImportTest::jobOf(ImportKind kind, const QByteArray &bytes) const {
    Result<CsvFile> file = CsvFile::fromBytes(bytes, u"試し.csv"_s);
    EXPECT_TRUE(file) << file.reason().toStdString();
    ImportJob job{.kind = kind, .file = file ? std::move(*file) : CsvFile(), .columns = {}, .branch = {1, 1}};
    job.columns = recogniseColumns(job.description(), job.file);
    return job;
}

ImportJob ImportTest::job(ImportKind kind, const QString &text, bool utf8) const {
    return jobOf(kind, utf8 ? text.toUtf8() : encode932(text).bytes);
}

QStringList ImportTest::said(const ImportPlan &plan) {
    QStringList texts;
    for (const PlannedRow &row : plan.rows) {
        const QString states[] = {u"新規"_s, u"変更"_s, u"同じ"_s, u"×"_s};
        const QString text = states[row.state] + u' ' + plannedText(row);
        texts += text.trimmed();
    }
    return texts;
}

QStringList ImportTest::tried(const ImportJob &job) {
    const Result<ImportPlan> plan = tryImport(job, database.db, folders);
    EXPECT_TRUE(plan) << plan.reason().toStdString();
    return plan ? said(*plan) : QStringList();
}

ImportOutcome ImportTest::written(const ImportJob &job, ImportRows rows) {
    const Result<ImportPlan> plan = tryImport(job, database.db, folders);
    EXPECT_TRUE(plan) << plan.reason().toStdString();
    return writeImport(job, database.db, folders, plan ? *plan : ImportPlan(), rows,
                       database.folder() + u"/残り.csv"_s);
}
