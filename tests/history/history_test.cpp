// What is written leaves its record, whoever writes it and whatever the tables of the history are like.

#include "consent/record/entry_save.h"
#include "consent/record/grid_save.h"
#include "consent/record/renewal_run.h"
#include "consent/record/sent_marks.h"
#include "consent/settings/period_types_query.h"
#include "history/batch.h"
#include "history/log_tables.h"
#include "history/logged_transaction.h"
#include "masters/master_entry.h"
#include "print/consent_screens/consent_screens_query.h"
#include "tests/consent/consent_rows.h"
#include "tests/history/replayed_log.h"
#include "tests/masters/practice.h"
#include "tests/support/failing_provider.h"

#include <future>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr PatientKey patient{1, 1, 1};
constexpr ConsentRowKey row{patient, 20260701, 0, 0};

class History : public MasterPractice {
protected:
    bool saved(const QString &remark) {
        return ::saveRemark(database.db, stored(), remark).kind == RowOutcome::Done &&
               value(u"cItiranBikou"_s) == remark;
    }
    QString value(const QString &column) const {
        return database.value(u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE nDate = 20260701"_s.arg(column));
    }
    int records() const { return database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG"_s).toInt(); }
    void dropTables() const {
        for (const QString &table :
             {u"DOUISHO_LOG"_s, u"DOUISHO_LOG_BATCH"_s, u"DOUISHO_LOG_DOCUMENT"_s, u"DOUISHO_LOG_INFO"_s})
            database.run(u"DROP TABLE "_s + table);
    }
    ConsentDraft stored() {
        const auto consents = readConsents(database.db, patient);
        EXPECT_TRUE(consents) << consents.reason().toStdString();
        return consents->back();
    }
    bool saveMaster(MasterKind kind, const QString &code, const QString &column, const QString &text) {
        const MasterDescription description = describeMaster(kind, {1, 1});
        MasterEntry entry(description, database.db);
        EXPECT_TRUE(code.isEmpty() ? entry.openNew() : entry.open(code));
        entry.setValue(column, text);
        const MasterOutcome outcome = entry.save(!code.isEmpty());
        EXPECT_EQ(outcome.kind, MasterOutcome::Done) << outcome.text.toStdString();
        return outcome.kind == MasterOutcome::Done;
    }
    bool removeMaster(MasterKind kind, const QString &code) {
        const MasterDescription description = describeMaster(kind, {1, 1});
        MasterEntry entry(description, database.db);
        EXPECT_TRUE(entry.open(code));
        return entry.remove(*entry.uses()).kind == MasterOutcome::Done;
    }
};

} // namespace

// Applied to the rows as they were, the records give the rows as they are: nothing is missing, nothing too
// much.
TEST_F(History, EveryKindOfWriteLeavesExactlyWhatItChanged) {
    database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 1, iReceptDisabledFlg = 0, tDouiDay = '2026/07/01',"
        " tSaiDouiDay = '2026/10/01', tSaiDouiKaryoS = '2026/10/01', tSaiDouiKaryoE = '2027/03/31'"
        " WHERE nDate = 20260701;"
        "INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo) VALUES (1, 1, 1, '2026/07', "
        "1);"
        "INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName, nSisetsuCode) VALUES (1, 1, 7, '相談', 5);"
        "INSERT INTO CAREMANE (nIDNo, cName, nSisetsuCode) VALUES (9, 'ケアマネ', 5)"_s);
    ReplayedLog log(database.db);
    QStringList done;
    const auto did = [&](const QString &operation, bool good) {
        done += operation;
        EXPECT_TRUE(good) << operation.toStdString();
    };
    const auto expectAgreement = [&] {
        EXPECT_EQ(log.disagreement().toStdString(), "");
        EXPECT_EQ(log.operations(), done);
    };
    RowEdit edit;
    edit.read.key = row;
    edit.read.values.reconsent = {2026, 10, 1};
    edit.read.values.nextStart = {2026, 10, 1};
    edit.read.values.nextEnd = {2027, 3, 31};
    edit.now = edit.read.values;
    edit.now.remark = u"引用\"符\\と\n改行、𠮷'田"_s;
    edit.now.received = short(1);
    const auto saved = saveRows(database.db, {edit}, {u"一覧の保存"_s});
    did(u"一覧の保存"_s, saved && saved->empty());
    did(u"依頼書印刷"_s, bool(markRequested(database.db, {{row, value(u"tUpDateTime"_s), true}})));
    const auto claim = claimForMail(database.db, {{patient, 20260701}});
    did(u"メール送信"_s, claim && claim->overtaken.empty());
    did(u"メールの取消"_s, bool(giveBack(database.db, *claim)));
    const QList<RenewalResult> renewed =
        RenewalRun(database.db)
            .renew({{.key = row,
                     .name = {},
                     .consentDate = {2026, 7, 1},
                     .reConsent = {{2026, 10, 1}, {{2026, 10, 1}, {2027, 3, 31}}}}});
    did(u"同意更新"_s, countOutcome(renewed, RenewalOutcome::Renewed) == 1);
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG WHERE nBatch = 1 AND iKind = 1"_s), u"1"_s);
    EXPECT_EQ(
        database.value(u"SELECT nRows FROM DOUISHO_LOG_BATCH WHERE nBatch = 1 AND cKind = '同意更新'"_s),
        u"1"_s);
    ConsentDraft draft = stored();
    did(u"備考編集"_s, ::saveRemark(database.db, draft, {}).kind == RowOutcome::Done);
    const ConsentDraft before = draft = stored();
    draft.cDouiByoumei = u"神経痛"_s;
    draft.tDouiDay = {2026, 10, 2};
    ConsentRowKey key;
    did(u"同意の修正"_s, saveDraft(database.db, draft, &before, key).kind == RowOutcome::Done);
    draft.tDouiDay = {2027, 4, 1};
    did(u"同意の登録"_s, saveDraft(database.db, draft, nullptr, key).kind == RowOutcome::Done);
    did(u"同意の削除"_s, deleteConsent(database.db, stored()).kind == RowOutcome::Done);

    expectAgreement();
    did(u"医師の修正"_s, saveMaster(MasterKind::Doctor, u"12"_s, u"cName"_s, u"新しい医師"_s));
    did(u"医師の登録"_s, saveMaster(MasterKind::Doctor, {}, u"cName"_s, u"別の医師"_s));
    did(u"医師の削除"_s, removeMaster(MasterKind::Doctor, u"121"_s));
    did(u"医療機関・施設の修正"_s, saveMaster(MasterKind::Facility, u"5"_s, u"cShamei1"_s, u"新病院"_s));
    did(u"利用者の登録"_s, saveMaster(MasterKind::Patient, {}, u"cName"_s, u"新しい人"_s));
    did(u"利用者の修正"_s, saveMaster(MasterKind::Patient, u"5"_s, u"nDouiIsiCd"_s, u"3"_s));
    did(u"利用者の削除"_s, removeMaster(MasterKind::Patient, u"5"_s));
    did(u"相談員の修正"_s, saveMaster(MasterKind::Counsellor, u"7"_s, u"cTelNo"_s, u"0999"_s));
    did(u"施術者の登録"_s, saveMaster(MasterKind::Staff, {}, u"cName"_s, u"施術者"_s));

    expectAgreement();
    ConsentLayoutSettings settings;
    settings.iSaiDouiON = short(1);
    did(u"会社の同意書式"_s, bool(storeCompanyLayouts(database.db, {1, 1}, {}, settings)));
    did(u"利用者の同意書式"_s, bool(storePatientLayouts(database.db, {1, 1, 2}, {}, settings)));
    did(u"医師の同意書式"_s, bool(writeDoctorLayouts(database.db, u"3"_s, false, settings)));
    PeriodTypeTable types{{}, *readPatientTypes(database.db, {1, 1})};
    ASSERT_EQ(types.patients.size(), 1u);
    types.patients[0].now = {u"1"_s, u"2"_s, u"1"_s};
    did(u"同意管理設定"_s, bool(savePeriodTypes(database.db, folders, {1, 1}, types, {})));
    expectAgreement();
}

TEST_F(History, TablesAreMadeAtTheFirstWriteAndNoneButOursAreEverTouched) {
    dropTables();
    // Whoever looks for them first keeps nobody from making them.
    EXPECT_EQ(lookAtLog(database.db).kind, HistoryState::Missing);
    EXPECT_TRUE(untoldHistoryState(database.db).isEmpty());
    EXPECT_TRUE(saved(u"一"_s));
    EXPECT_EQ(records(), 1);
    EXPECT_TRUE(untoldHistoryState(database.db).isEmpty());

    // A newer version's are left alone, and that is told once.
    database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 2"_s);
    database.db.history() = {};
    EXPECT_TRUE(saved(u"二"_s));
    EXPECT_EQ(*Batch::begin(database.db, {1, 1}, u"同意更新"_s), std::nullopt);
    EXPECT_EQ(records(), 1);
    EXPECT_FALSE(untoldHistoryState(database.db).isEmpty());
    EXPECT_TRUE(untoldHistoryState(database.db).isEmpty());
    EXPECT_TRUE(historyStateText(database.db.history()).contains(u"新しい版"_s));

    // Half of them, or another's of that name: nothing is recorded and everything works.
    for (const QString &fault : {u"ALTER TABLE DOUISHO_LOG DROP COLUMN cOperation"_s,
                                 u"DROP TABLE DOUISHO_LOG_BATCH"_s, u"DROP TABLE DOUISHO_LOG"_s}) {
        database.run(u"UPDATE DOUISHO_LOG_INFO SET iVersion = 1;"_s + fault);
        database.db.history() = {};
        EXPECT_TRUE(saved(fault)) << fault.toStdString();
        EXPECT_EQ(database.db.history().kind, HistoryState::Unfit) << fault.toStdString();
    }
}

TEST_F(History, RowsWrittenByHandAndTablesThatGoMeanwhileBreakNothing) {
    database.run(
        u"DELETE FROM DOUISHO_LOG_INFO;"
        "INSERT INTO DOUISHO_LOG (cWrite, iSeq, tTime, cOperation, cTable, cKey, iKind, cChanges) VALUES"
        " ('x', -1, '2026/01/01 00:00:00', '', '?', '', 99, '{]');"
        "INSERT INTO DOUISHO_LOG_BATCH (nBatch, tTime, cKind, nRows, nDocuments, nPages) VALUES"
        " (2147483647, '2026/01/01 00:00:00', '?', -1, -1, -1),"
        " (-5, '2026/01/01 00:00:00', '?', -1, -1, -1)"_s);
    EXPECT_TRUE(saved(u"一"_s));
    const auto batch = Batch::begin(database.db, {1, 1}, u"同意更新"_s);
    ASSERT_TRUE(batch && *batch) << batch.reason().toStdString();
    EXPECT_EQ((*batch)->number(), 1);

    // A look that fails says nothing of the tables: it is taken again.
    FailingConnection other(database.connectionString(), 3);
    other.db.history() = {};
    EXPECT_EQ(lookAtLog(other.db).kind, HistoryState::Unknown);
    EXPECT_EQ(settleLog(other.db).kind, HistoryState::Kept);

    // The write or run that finds a table gone fails as a whole; the next one knows.
    database.run(u"DROP TABLE DOUISHO_LOG; DROP TABLE DOUISHO_LOG_BATCH"_s);
    EXPECT_FALSE(saved(u"二"_s));
    EXPECT_EQ(value(u"cItiranBikou"_s), u"一"_s);
    EXPECT_TRUE(saved(u"三"_s));
    EXPECT_FALSE(Batch::begin(other.db, {1, 1}, u"同意更新"_s));
    EXPECT_EQ(*Batch::begin(other.db, {1, 1}, u"同意更新"_s), std::nullopt);
}

TEST_F(History, TwoProgramsMakeTheTablesAndTakeNumbersAtOnce) {
    dropTables();
    const auto take = [this] {
        cT_ADODB db;
        db.iInit(database.connectionString());
        EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
        std::set<qint32> numbers;
        for (int i = 0; i < 5; ++i) {
            const auto batch = Batch::begin(db, {1, 1}, u"同意更新"_s);
            EXPECT_TRUE(batch && *batch)
                << batch.reason().toStdString() << historyStateText(db.history()).toStdString();
            if (batch && *batch)
                numbers.insert((*batch)->number());
        }
        return numbers;
    };
    auto other = std::async(std::launch::async, take);
    std::set<qint32> all = take();
    all.merge(other.get());
    EXPECT_EQ(all, (std::set<qint32>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG_INFO"_s), u"1"_s);
}
