// Putting out request letters from a real database: what leaves, what is said, and which rows are marked.

#include "app/base/codepage932.h"
#include "consent/requests/request_printing.h"
#include "consent/rows/given_consents_query.h"
#include "tests/list/list_fixture.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

struct PatientWait : LetterWait {
    bool goOn() override { return true; }
};

} // namespace

class RequestOutputTest : public ListTest {
protected:
    RequestOutputTest() {
        database.run(
            u"INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, iType, cShamei1) VALUES (1, 1, 1, 0, '本社');"
            "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 5, '佐藤')"_s);
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number), u"ﾘ"_s, u"nTantou = 5"_s);
            consent(number, u"2026/12/31"_s,
                    number == 3 ? u"iHenkeiFlg = 1, iDouiShubetsu = 1"_s : QString());
        }
        for (int kind = 0; kind < letterKinds; ++kind)
            put(letterKindLayout(LetterKind(kind)), {});
        EXPECT_EQ(list.iSearch(), 0);
        std::vector<ConsentRowKey> keys;
        std::vector<ListRow> listed;
        for (int record = 0; record < 3; ++record) {
            keys.push_back(model.records().key(record));
            listed.push_back(model.row(record));
        }
        rows = requestRows(listed, *readGivenConsents(database.db, environment.branch, keys));
    }
    void put(const QString &name, const QByteArray &bytes) {
        QFile file(QDir(programFolder.path()).absoluteFilePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QString file(const QString &name) {
        QFile data(QDir(programFolder.path()).absoluteFilePath(name));
        return data.open(QIODevice::ReadOnly) ? decode932(data.readAll()) : QString();
    }
    LetterOutcome output(LetterOutput way = LetterOutput::Print) {
        return outputRequests(
            environment, database.db, rows,
            {keptLetterOptions(folders, clock.today()), way, [] { return std::make_unique<PatientWait>(); }});
    }
    QStringList marks() {
        return database.rows(u"SELECT nIDNo, iOutputFlg, iOutputFlgHenkei, iDouiHospOutFlg, iDouiIsiOutFlg"
                             " FROM RIYOUSHA_DOUI_REC ORDER BY nIDNo"_s);
    }
    QString said() const { return messages.shown.isEmpty() ? QString() : messages.shown.back().text; }

    std::vector<RequestRow> rows;
    const QStringList unmarked{u"1|NULL|NULL|NULL|NULL"_s, u"2|NULL|NULL|NULL|NULL"_s,
                               u"3|NULL|NULL|NULL|NULL"_s};
};

TEST_F(RequestOutputTest, LettersOfOneKindGoToTheViewerAndTheirRowsAreMarked) {
    rows.pop_back();
    rows[1].toHospital = true;
    ASSERT_EQ(output(), LetterOutcome::Printed);
    EXPECT_EQ(messages.shown.size(), 1);
    EXPECT_EQ(said(), u"同意手順：口頭の場合は、同意書が印刷されませんので、ご注意ください。\r\n\r\n"
                      "対象 2 件：依頼書 2 通を印刷します。"_s);
    ASSERT_EQ(processes.started.size(), 1);
    const QString commands = file(u"WfdCom.dat"_s);
    EXPECT_TRUE(commands.contains(u"Title,\"同意書印刷\"\r\nSetDataText,\"同意依頼書\","_s));
    EXPECT_TRUE(commands.endsWith(u"PrintOutFromDialog\r\n"_s));
    EXPECT_EQ(file(u"同意依頼書.csv"_s).count(u"\r\n"_s), 3);
    EXPECT_EQ(marks(), (QStringList{u"1|1|NULL|NULL|1"_s, u"2|1|NULL|1|NULL"_s, unmarked[2]}));
    EXPECT_NE(database.value(u"SELECT tUpDateTime FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s), u"NULL"_s);
}

TEST_F(RequestOutputTest, SeveralKindsBecomeOneDocument) {
    QString reports; // as the builder found them
    processes.act = [&](const RecordedProcesses::Start &start) {
        put(start.arguments[0], "document");
        reports = file(start.arguments[2]);
        return ProcessEnd{ProcessEnd::Exited, 0};
    };
    ASSERT_EQ(output(), LetterOutcome::Printed) << said().toStdString();
    EXPECT_TRUE(said().contains(u"ご注意ください。\r\n\r\n口頭の利用者：\r\n3 利用者3\r\n\r\n対象 3 件"_s))
        << said().toStdString();
    EXPECT_EQ(processes.started.size(), 2) << "image builder, then viewer";
    EXPECT_EQ(reports.count(u"AddReport"_s), 1);
    EXPECT_TRUE(reports.contains(u"CARE02_変継続.wfd\""_s));
    EXPECT_TRUE(file(u"WfdCom.dat"_s).contains(u"同意依頼書.wfd\"\r\n"_s));
    EXPECT_EQ(marks().last(), u"3|NULL|1|NULL|1"_s) << "oral, and yet a letter";

    processes.act = [&](const RecordedProcesses::Start &start) {
        put(start.arguments[4], encode932(u"レイアウトの3行目"_s).bytes);
        return ProcessEnd{ProcessEnd::Exited, 1};
    };
    database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET iOutputFlg = NULL, iOutputFlgHenkei = NULL, iDouiIsiOutFlg = NULL"_s);
    EXPECT_EQ(output(), LetterOutcome::Stopped);
    EXPECT_EQ(said(), u"帳票の印刷に失敗しました。[レイアウトの3行目]"_s);
    messages.shown.clear();
    processes.act = [](const RecordedProcesses::Start &) { return ProcessEnd{ProcessEnd::GivenUp, 0}; };
    EXPECT_EQ(output(), LetterOutcome::Stopped);
    EXPECT_EQ(messages.shown.size(), 1) << "the note about oral consents; the user gave up";
    EXPECT_EQ(marks(), unmarked);
}

TEST_F(RequestOutputTest, NothingIsMarkedUnlessTheLettersLeft) {
    rows.pop_back();
    struct Case {
        const char *what;
        std::function<void()> spoil;
        QString text;
    };
    const Case cases[] = {
        {"refused", [&] { messages.answers = {Answer::Cancel}; }, u"同意手順：口頭の場合は、"_s},
        {"program", [&] { processes.missing = QStringList{u"wfrfv10.exe"_s}; },
         u"帳票の印刷に失敗しました。["_s},
        {"layout", [&] { QFile::remove(programFolder.filePath(letterKindLayout(rows[0].kind))); },
         u"同意書（同意依頼書_CARE02_マ継続.wfd）が存在しません。\r\n処理を中止します。"_s},
        {"company", [&] { database.run(u"DELETE FROM CORP"_s); }, u"本社データがありません。"_s},
        {"rows", [&] { database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0"_s); },
         u"該当する同意依頼書データがありません。"_s},
        {"none", [&] { rows.clear(); }, u"出力するデータがありません。"_s},
    };
    ASSERT_EQ(output(LetterOutput::Preview), LetterOutcome::Shown);
    EXPECT_TRUE(messages.shown.isEmpty());
    for (const Case &c : cases) {
        c.spoil();
        EXPECT_EQ(output(), LetterOutcome::Stopped) << c.what;
        EXPECT_TRUE(said().startsWith(c.text)) << said().toStdString();
    }
    EXPECT_EQ(marks(), unmarked);
}

TEST_F(RequestOutputTest, RowsThatColleaguesTookAreNamedAndTheOthersMarked) {
    rows.pop_back();
    patient(4, u"担当なし"_s, u"ﾀ"_s);
    consent(4, u"2026/12/31"_s);
    RequestRow without = rows[0];
    without.key.patient.nIDNo = 4;
    rows.push_back(without);
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s);
    messages.answers = {Answer::Yes};
    ASSERT_EQ(output(), LetterOutcome::Printed);
    ASSERT_EQ(messages.shown.size(), 1);
    const QString asked = messages.shown[0].text;
    EXPECT_TRUE(asked.contains(u"1 利用者1"_s)) << "gone before anything was printed";
    EXPECT_TRUE(asked.contains(u"施術者データがありません。"_s) && asked.contains(u"4 担当なし"_s));
    EXPECT_EQ(marks().first(), u"2|1|NULL|NULL|1"_s);
}

TEST_F(RequestOutputTest, RowsThatColleaguesChangeMeanwhileAreMarkedAndNamed) {
    processes.act = [&](const RecordedProcesses::Start &start) {
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2026/11/21 10:00:00' WHERE nIDNo = 2"_s);
        put(start.arguments[0], "document");
        return ProcessEnd{ProcessEnd::Exited, 0};
    };
    ASSERT_EQ(output(), LetterOutcome::Printed);
    EXPECT_TRUE(said().endsWith(u"\r\n2 利用者2"_s)) << said().toStdString();
    EXPECT_EQ(marks()[1], u"2|1|NULL|NULL|1"_s) << "its letter has left all the same";
}

TEST_F(RequestOutputTest, WhatCannotBePrintedIsAskedAboutBeforeTheLetterLeaves) {
    rows.pop_back();
    database.run(
        u"UPDATE RIYOUSHA SET cName = '𠮷田' WHERE nIDNo = 1; UPDATE RIYOUSHA SET cName = '−' WHERE nIDNo = 2"_s);
    messages.answers = {Answer::No};
    EXPECT_EQ(output(), LetterOutcome::Stopped);
    EXPECT_TRUE(said().contains(u"1　𠮷田：「𠮷」→「吉」\r\n2　−：「−」→「－」"_s)) << said().toStdString();
    EXPECT_TRUE(processes.started.isEmpty());
    EXPECT_EQ(marks(), unmarked);
}

TEST_F(RequestOutputTest, AMissingLayoutNamesAllPatientsOfItsLetters) {
    rows.pop_back();
    QFile::remove(programFolder.filePath(letterKindLayout(rows[0].kind)));
    LetterOptions options;
    options.grouped = true;
    EXPECT_EQ(outputRequests(environment, database.db, rows, {options, LetterOutput::Print, {}}),
              LetterOutcome::Stopped);
    EXPECT_TRUE(said().contains(u"1 利用者1\r\n2 利用者2"_s)) << said().toStdString();
}
