#include "consent/record/entry_save.h"

#include "app/base/dates.h"
#include "consent/record/record_write.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool recordDateIsFree(const std::vector<ConsentDraft> &rows, const ConsentRowKey &target,
                      const ConsentDraft *stored) {
    return std::ranges::none_of(rows, [&](const ConsentDraft &row) {
        return !(stored && row.key() == stored->key()) && sameRecordDate(row.key(), target);
    });
}

void setKey(ConsentDraft &row, const ConsentRowKey &key) {
    row.nDate = key.nDate;
    row.iHenkeiFlg = key.iHenkeiFlg;
    row.nHenkeiDouiDate = key.nHenkeiDouiDate;
}

/// @param label names the routine
RowOutcome failed(const QString &reason, const QString &label, const QString &title = {}) {
    return {RowOutcome::Failed, reason + u"\r\n"_s + label, title};
}

/// Finds the row as it stands now and compares it with what the user saw. `now` is filled when the outcome
/// is Done.
RowOutcome find(RecordWrite &write, const ConsentDraft &seen, Compared columns, ConsentDraft &now) {
    const Result<std::optional<ConsentDraft>> found = write.find(seen.key());
    if (!found)
        return failed(found.reason(), u"iGetDouiData() でエラー"_s);
    if (!*found)
        return {RowOutcome::Overtaken,
                u"この同意は、他の端末で削除されたか日付が変更されています。\r\n何も変更していません。"_s};
    now = **found;
    if (!sameValues(now, seen, columns))
        return {RowOutcome::Overtaken, u"この同意は、表示した後に他の端末で変更されています。\r\n"
                                       "何も変更していません。画面を開き直してください。"_s};
    return {};
}

/// Says so where the mark of the newest row went back to an older one.
QString olderNewest(const std::vector<ConsentRowKey> &newest, const ConsentRowKey &before) {
    const auto now = std::ranges::find(newest, before.iHenkeiFlg, &ConsentRowKey::iHenkeiFlg);
    return now != newest.end() && now->nDate < before.nDate
               ? u"以前の同意（%1）が、この利用者の最新の同意になりました。"_s.arg(
                     dateText(dateFromKey(now->nDate)))
               : QString();
}

/// Marks and commits.
/// @param newest the row that bore the mark, or would; null: it was none
RowOutcome finish(RecordWrite &write, const PatientKey &patient, const ConsentRowKey *newest) {
    const QString label = u"setDouiNewestFlg() でエラー"_s;
    const Result<std::vector<ConsentRowKey>> marked = write.markNewest({patient});
    if (!marked)
        return failed(marked.reason(), label);
    if (const Result<> committed = write.commit(); !committed)
        return failed(committed.reason(), label);
    return {RowOutcome::Done, newest ? olderNewest(*marked, *newest) : QString()};
}

QString removeLabel(const ConsentDraft &row) {
    return (isDeformity(row) ? u"delOldDataHenkei()でエラー"_s : u"delOldData()でエラー"_s) +
           u"\r\n旧データ削除エラー"_s;
}

RowOutcome saveOnce(cT_ADODB &db, const ConsentDraft &draft, const ConsentDraft *stored, ConsentRowKey &key) {
    RecordWrite write(db, {stored ? u"同意の修正"_s : u"同意の登録"_s});
    if (const Result<> locked = write.lock({draft}); !locked)
        return failed(locked.reason(), u"データ追加エラー"_s, u"データ追加"_s);
    ConsentDraft now;
    if (stored)
        if (const RowOutcome found = find(write, *stored, Compared::Entered, now);
            found.kind != RowOutcome::Done)
            return found;
    ConsentDraft row = registeredRow(draft, stored ? &now : nullptr);
    const ConsentRowKey target = draftKey(draft, stored);
    const Result<std::vector<ConsentDraft>> others = write.findAll(draft);
    if (!others)
        return failed(others.reason(), u"iGetDouiData() でエラー"_s);
    if (!recordDateIsFree(*others, target, stored))
        return {RowOutcome::Taken, recordDateTaken()};
    setKey(row, target);

    if (stored) {
        write.remove(sqlWhere(now.key()));
        if (const Result<QList<qint64>> removed = write.send(); !removed)
            return failed(removed.reason(), removeLabel(now), u"旧データ削除"_s);
    }
    write.insert(row);
    if (const Result<QList<qint64>> inserted = write.send(); !inserted)
        return failed(inserted.reason(), u"データ追加エラー"_s, u"データ追加"_s);
    key = target;
    return finish(write, draft, stored && now.iNewestFlg == 1 ? &target : nullptr);
}

RowOutcome deleteOnce(cT_ADODB &db, const ConsentDraft &seen) {
    const QString label = u"btnDel_Click()でエラー"_s;
    RecordWrite write(db, {u"同意の削除"_s});
    if (const Result<> locked = write.lock({seen}); !locked)
        return failed(locked.reason(), label);
    ConsentDraft now;
    if (const RowOutcome found = find(write, seen, Compared::All, now); found.kind != RowOutcome::Done)
        return found;
    write.remove(sqlWhere(now.key()));
    if (const Result<QList<qint64>> removed = write.send(); !removed)
        return failed(removed.reason(), label);
    const ConsentRowKey erased = now.key();
    return finish(write, seen, now.iNewestFlg == 1 ? &erased : nullptr);
}

RowOutcome saveRemarkOnce(cT_ADODB &db, const ConsentDraft &seen, const QString &remark) {
    const QString label = u"btnKakutei_Click()でエラー"_s;
    RecordWrite write(db, {u"備考編集"_s});
    if (const Result<> locked = write.lock({seen}); !locked)
        return failed(locked.reason(), label);
    ConsentDraft now;
    if (const RowOutcome found = find(write, seen, Compared::Remark, now); found.kind != RowOutcome::Done)
        return found;
    write.change(sqlWhere(now.key()), {{u"cItiranBikou"_s, sqlTextOrNull(remark)}});
    const Result<> committed = write.commit();
    return committed ? RowOutcome() : failed(committed.reason(), label);
}

} // namespace

Result<std::vector<ConsentDraft>> readConsents(cT_ADODB &db, const PatientKey &patient) {
    const ErrorsSince errors(db);
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(db);
    if (db.iConnect() != 0 || table.iDataReadGrid(patient) != 0)
        return Failure{errors.text()};
    return table.records();
}

RowOutcome saveDraft(cT_ADODB &db, const ConsentDraft &draft, const ConsentDraft *stored,
                     ConsentRowKey &key) {
    return againAfterDeadlock(db, [&] { return saveOnce(db, draft, stored, key); });
}

RowOutcome deleteConsent(cT_ADODB &db, const ConsentDraft &seen) {
    return againAfterDeadlock(db, [&] { return deleteOnce(db, seen); });
}

RowOutcome saveRemark(cT_ADODB &db, const ConsentDraft &seen, const QString &remark) {
    return againAfterDeadlock(db, [&] { return saveRemarkOnce(db, seen, remark); });
}
