#include "consent/record/entry_save.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Among the rows that the table object holds, the stored one aside.
bool recordDateIsFree(cT_RIYOUSHA_DOUI_REC &table, const ConsentRowKey &target, const ConsentDraft *stored) {
    return std::ranges::none_of(table.records(), [&](const ConsentDraft &row) {
        return !(stored && row.key() == stored->key()) && sameRecordDate(row.key(), target);
    });
}

/// An empty remark becomes Null.
QString sqlSetRemark(const ConsentRowKey &row, const QString &remark, const QString &computer) {
    return u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = "_s + sqlTextOrNull(remark) + u", cPcName = "_s +
           sqlText(computer) + u", tUpDateTime = GetDate() WHERE "_s + sqlWhere(row);
}

void setKey(ConsentDraft &row, const ConsentRowKey &key) {
    row.nDate = key.nDate;
    row.iHenkeiFlg = key.iHenkeiFlg;
    row.nHenkeiDouiDate = key.nHenkeiDouiDate;
}

} // namespace

RowOutcome saveDraft(cT_ADODB &db, const ConsentDraft &draft, const ConsentDraft *stored,
                     ConsentRowKey &key) {
    RowChange change(db, draft);
    if (!change.ready())
        return change.failed(u"データ追加エラー"_s, u"データ追加"_s);
    ConsentDraft now;
    if (stored) {
        if (const RowOutcome found = change.find(*stored, Compared::Entered, now);
            found.kind != RowOutcome::Done)
            return found;
    }
    ConsentDraft row = registeredRow(draft, stored ? &now : nullptr);
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(db);
    const ConsentRowKey target = draftKey(draft, stored);
    if (table.iDataReadGrid(draft) != 0)
        return change.failed(u"iGetDouiData() でエラー"_s);
    if (!recordDateIsFree(table, target, stored))
        return {RowOutcome::Taken, recordDateTaken()};
    setKey(row, target);

    if (stored && table.iData削除(&now, -1, false) != 0)
        return change.failed(
            (isDeformity(now) ? u"delOldDataHenkei()でエラー"_s : u"delOldData()でエラー"_s) +
                u"\r\n旧データ削除エラー"_s,
            u"旧データ削除"_s, table.sErrMsg());
    if (table.iDataInsert(&row, -1, false) != 0)
        return change.failed(u"データ追加エラー"_s, u"データ追加"_s, table.sErrMsg());
    key = target;
    return change.finish();
}

RowOutcome deleteConsent(cT_ADODB &db, const ConsentDraft &seen) {
    const QString label = u"btnDel_Click()でエラー"_s;
    RowChange change(db, seen);
    if (!change.ready())
        return change.failed(label);
    ConsentDraft now;
    if (const RowOutcome found = change.find(seen, Compared::All, now); found.kind != RowOutcome::Done)
        return found;
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(db);
    if (table.iData削除(&now, -1, false) != 0)
        return change.failed(label, {}, table.sErrMsg());
    return change.finish();
}

RowOutcome saveRemark(cT_ADODB &db, const ConsentDraft &seen, const QString &remark) {
    const QString label = u"btnKakutei_Click()でエラー"_s;
    RowChange change(db, seen);
    if (!change.ready())
        return change.failed(label);
    ConsentDraft now;
    if (const RowOutcome found = change.find(seen, Compared::Remark, now); found.kind != RowOutcome::Done)
        return found;
    if (db.iExecSQL(sqlSetRemark(now.key(), remark, db.csGetComputerName())) != 0)
        return change.failed(label);
    return change.commit();
}
