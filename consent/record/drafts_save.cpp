#include "consent/record/drafts_save.h"

#include "db/tables/keys_query.h"

Result<std::vector<ConsentDraft>> readConsents(cT_ADODB &db, const Branch &branch,
                                               const std::set<qint32> &patients) {
    const ErrorsSince errors(db);
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(db);
    if (db.iConnect() != 0 || table.iDataReadGrid(branch, patients) != 0)
        return Failure{errors.text().trimmed()};
    return table.records();
}

Result<> registerDrafts(RecordWrite &write, std::span<const DraftSave *const> drafts) {
    std::vector<PatientKey> patients;
    for (const auto *save : drafts) {
        const ConsentDraft *stored = save->stored ? &*save->stored : nullptr;
        ConsentDraft row = registeredRow(save->draft, stored);
        const ConsentRowKey target = draftKey(save->draft, stored);
        row.nDate = target.nDate;
        row.iHenkeiFlg = target.iHenkeiFlg;
        row.nHenkeiDouiDate = target.nHenkeiDouiDate;
        if (stored)
            write.remove(sqlWhere(stored->key()));
        write.insert(row);
        if (patients.empty() || patients.back() != row)
            patients.push_back(row);
    }
    if (const Result<QList<qint64>> sent = write.send(); !sent)
        return Failure{sent.reason()};
    const Result<std::vector<ConsentRowKey>> marked = write.markNewest(patients);
    return marked ? Result<>() : Failure{marked.reason()};
}
