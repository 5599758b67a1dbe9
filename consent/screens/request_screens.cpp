#include "consent/screens/request_screens.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/requests/given_consents_query.h"
#include "consent/requests/letter_wait_form.h"
#include "consent/requests/request_form.h"
#include "consent/requests/request_methods_form.h"
#include "consent/requests/request_printing.h"
#include "db/adodb.h"
#include "print/batch/print_messages.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A row's individual methods are written as its method is: not on rows that the list does not write.
bool mayOwnMethods(const ConsentListModel &model, int record) {
    const QModelIndex method = model.index(model.rowOfRecord(record), int(ListColumn::Method));
    return method.isValid() && model.flags(method).testFlag(Qt::ItemIsEditable);
}

/// "絞り込みで…", or nothing when all ticked rows are shown.
QString outOfSightText(const ConsentListModel &model) {
    const int hidden = targetsOutOfSight(model);
    return hidden == 0 ? QString() : u"絞り込みで表示していない対象 %L1 件は含みません。"_s.arg(hidden);
}

} // namespace

std::vector<RequestRow> tickedRows(const ListOpening &opening) {
    std::vector<ConsentRowKey> keys;
    for (const int record : opening.model.targetRecords())
        keys.push_back(opening.model.records().key(record));
    if (keys.empty()) {
        opening.environment.messages.show(nothingToPrint());
        return {};
    }
    const ErrorsSince errors(opening.db);
    std::vector<GivenConsent> consents;
    if (readGivenConsents(opening.db, opening.environment.branch, keys, consents) != 0) {
        opening.environment.messages.fail(errors.text(), u"DB-error"_s);
        return {};
    }
    return requestRows(opening.model, consents);
}

bool openRequestMethods(const ListOpening &opening) {
    RequestMethodsForm form(opening.environment, opening.db, opening.parent);
    std::optional<MethodsRow> row;
    if (opening.currentRecord >= 0 && mayOwnMethods(opening.model, opening.currentRecord))
        row = {opening.model.records().row(opening.currentRecord), opening.model.who(opening.currentRecord)};
    if (form.iInit(row, u"（変形徒手と履歴の行には登録できません）"_s) != 0) {
        opening.environment.messages.failIn(form.sErrMsg(), u"dataLoadRiyousha()でエラー");
        return false;
    }
    form.exec();
    return form.written();
}

bool openRequests(const ListOpening &opening) {
    std::vector<RequestRow> rows = tickedRows(opening);
    if (rows.empty())
        return false;
    frm同意依頼 form(opening.environment, opening.db, opening.parent);
    if (form.iInit(std::move(rows), outOfSightText(opening.model)) != 0) {
        opening.environment.messages.warn(form.sErrMsg());
        return false;
    }
    form.exec();
    return form.written();
}

bool printRequests(const ListOpening &opening) {
    const std::vector<RequestRow> rows = tickedRows(opening);
    if (rows.empty())
        return false;
    const LetterOptions options =
        keptLetterOptions(opening.environment.folders, opening.environment.clock.today());
    QString question =
        u"対象 %L1 件の依頼書を印刷します（"_s.arg(rows.size()) + kindSummary(rows) + u"）。"_s;
    for (const QString &more : {requestedSummary(rows), outOfSightText(opening.model)})
        if (!more.isEmpty())
            question += u"\r\n"_s + more;
    question += u"\r\nよろしいですか？"_s;
    return outputRequests(opening.environment, opening.db, rows,
                          {options, LetterOutput::Print, letterWait(opening.parent), question}) ==
           LetterOutcome::Printed;
}
