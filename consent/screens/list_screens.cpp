#include "consent/screens/list_screens.h"
#include "consent/screens/mail_claims.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/answers/answers_form.h"
#include "consent/batches/batches_form.h"
#include "consent/entry/entry_form.h"
#include "consent/entry/history_form.h"
#include "consent/entry/remark_form.h"
#include "consent/list/list_restart_form.h"
#include "consent/record/renewal.h"
#include "consent/requests/request_form.h"
#include "consent/requests/request_methods_form.h"
#include "consent/requests/request_printing.h"
#include "consent/rows/given_consents_query.h"
#include "history/screens/history_form.h"
#include "print/batch/print_messages.h"
#include "print/consent_form/consent_print_form.h"
#include "print/ledger/ledger.h"
#include "print/mail/mail_send_form.h"
#include "print/management/management_master_form.h"
#include "print/renewal_list/renewal_list_form.h"
#include "print/set_print/set_print_form.h"
#include "search/patient_search_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Shows a form that was initialised; says why when it could not be.
template <class Form> bool accepted(const ListOpening &opening, Form &form, short status) {
    if (status == 0)
        return form.exec() == QDialog::Accepted || form.isOvertaken();
    opening.environment.messages.fail(form.sErrMsg());
    // The row may be gone: the list is read again.
    return true;
}

bool openNewConsentOf(const ListOpening &opening, const PatientKey &patient) {
    frmDouiRecordEdit form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, patient));
}

PatientKey pickPatient(const ListOpening &opening) {
    MasterEditor editor(opening.environment, opening.db);
    cls患者検索 search(opening.db, opening.environment);
    editor.offer(search, MasterKind::Patient);
    if (search.iDspStart(opening.parent) != 0)
        opening.environment.messages.fail(search.CsErrStr());
    const Branch &office = opening.environment.branch;
    return {office.iKyotenCd, office.iKyotenEb, qint32(search.nSeledCD)};
}

/// "絞り込みで…", or nothing when all ticked rows are shown.
QString outOfSightText(const ListOpening &opening) {
    return opening.targetsOutOfSight == 0
               ? QString()
               : u"絞り込みで表示していない対象 %L1 件は含みません。"_s.arg(opening.targetsOutOfSight);
}

std::vector<ConsentRowKey> keysOfTargets(const ListOpening &opening) {
    std::vector<ConsentRowKey> keys;
    for (const ListRow &row : opening.targets)
        keys.push_back(row.key());
    return keys;
}

/// The targets with the letter that is proposed for each; nothing when there are none or they cannot be read,
/// which has been said.
std::vector<RequestRow> requestsOfTargets(const ListOpening &opening) {
    const std::vector<ConsentRowKey> keys = keysOfTargets(opening);
    if (keys.empty()) {
        opening.environment.messages.note(nothingToPrint().text);
        return {};
    }
    const Result<GivenConsents> consents = readGivenConsents(opening.db, opening.environment.branch, keys);
    if (!consents) {
        opening.environment.messages.fail(consents.reason(), u"DB-error"_s);
        return {};
    }
    return requestRows(opening.targets, *consents);
}

/// The targets that may be mailed. Those without the contact mark are refused and named, a few of them: that
/// is enough to see what they have in common; the others are proposed. Nothing when the user stops.
std::vector<ListRow> mayBeMailed(const ListOpening &opening) {
    constexpr qsizetype named = 10;
    std::vector<ListRow> rows;
    QStringList names;
    for (const ListRow &row : opening.targets)
        if (row.values.contact == 1)
            rows.push_back(row);
        else
            names.append(row.who() + (row.isDeformity() ? u"（変形徒手）"_s : QString()));
    if (names.isEmpty())
        return rows;
    const qsizetype more = names.size() - named;
    const QString refusal = u"「連絡」にチェックがない利用者が「対象」に選ばれています。\r\n"
                            "該当利用者の「対象」を外して下さい。\r\n\r\n"_s +
                            names.mid(0, named).join(u"\r\n"_s) +
                            (more > 0 ? u"\r\nほか %1 件"_s.arg(more) : QString());
    Messages &messages = opening.environment.messages;
    if (rows.empty())
        messages.warn(refusal);
    else if (!messages.ask(refusal + u"\r\n\r\n「連絡」にチェックがある %1 件だけを送信の対象にしますか？"
                                     "（残りの %2 件は送信しません）"_s.arg(rows.size())
                                         .arg(names.size()),
                           u"メール送信"_s))
        rows.clear();
    return rows;
}

std::vector<MailRow> mailRows(const std::vector<ListRow> &rows) {
    std::vector<MailRow> mails;
    for (const ListRow &row : rows)
        mails.push_back(
            {row.key().patient, row.text(ListColumn::Name), row.key().nDate, row.flag(ListField::Sent)});
    return mails;
}

std::vector<qint32> patientsOf(const std::vector<ListRow> &rows) {
    std::vector<qint32> patients;
    for (const ListRow &row : rows)
        patients.push_back(row.key().patient.nIDNo);
    return patients;
}

std::vector<ManagementRow> managementRows(const std::vector<ListRow> &rows) {
    std::vector<ManagementRow> result;
    for (const ListRow &row : rows)
        result.push_back({row.key(), row.who(), row.values.requested != 0, row.values.hospitalOut == 1});
    return result;
}

/// Told before letters are printed without the request screen.
QString printNote(std::span<const RequestRow> rows, const QString &note = {}) {
    QStringList lines{kindSummary(rows), requestedSummary(rows), note};
    lines.removeAll(QString());
    return lines.join(u"\r\n"_s);
}

/// What the request screen would propose for the rows; nothing where that cannot be read, which has been
/// said.
std::vector<RequestRow> requestsOf(const ListOpening &opening, const std::vector<ManagementRow> &rows) {
    std::vector<ConsentRowKey> keys;
    for (const ManagementRow &row : rows)
        keys.push_back(row.key);
    const Result<GivenConsents> consents = readGivenConsents(opening.db, opening.environment.branch, keys);
    if (!consents) {
        opening.environment.messages.fail(consents.reason(), u"DB-error"_s);
        return {};
    }
    std::vector<RequestRow> requests;
    for (const ManagementRow &row : rows) {
        RequestRow &request = requests.emplace_back();
        request.key = row.key;
        request.who = row.who;
        request.requested = row.requested;
        request.toHospital = row.toHospital;
        request.facts = consents->factsOf(row.key);
        request.kind = proposeLetterKind(request.facts);
    }
    return requests;
}

/// The request screen's letters with its last choices.
PutOutLetters lettersOf(const ListOpening &opening, bool &written) {
    return [&](const std::vector<ManagementRow> &rows, PrintWay way, QWidget *parent) -> QString {
        Environment &environment = opening.environment;
        const std::vector<RequestRow> requests = requestsOf(opening, rows);
        if (requests.empty())
            return {};
        switch (outputRequests(environment, opening.db, requests,
                               {keptLetterOptions(environment.folders, environment.clock.today()),
                                way == PrintWay::Print ? LetterOutput::Print : LetterOutput::Preview,
                                letterWait(parent), printNote(requests)})) {
        case LetterOutcome::Stopped:
            break;
        case LetterOutcome::Shown:
            return u"プレビューを表示しました。「依頼」の印は、印刷したときに付きます。"_s;
        case LetterOutcome::Printed:
            written = true;
            return u"依頼書を印刷しました。"_s;
        }
        return {};
    };
}

bool openSet(const ListOpening &opening, SetPrintStart start) {
    Environment &environment = opening.environment;
    std::vector<ConsentRowKey> rows = keysOfTargets(opening);
    if (rows.empty()) {
        environment.messages.note(u"印刷する利用者を指定してください。"_s);
        return false;
    }
    bool written = false;
    SetPrintCaller caller;
    caller.letter = keptLetterOptions(environment.folders, environment.clock.today());
    caller.orders = [&] { return letterOrders(requestsOfTargets(opening)); };
    caller.mark = [&](const std::vector<LetterMark> &letters, const Operation &operation) {
        written = true;
        return markRequests(opening.db, letters, operation);
    };
    frmSetInsatsuDoui form(environment, opening.db, opening.parent);
    if (form.iInit(std::move(rows), std::move(caller), start) != 0) {
        environment.messages.fail(form.sErrMsg());
        return false;
    }
    form.exec();
    return written;
}

} // namespace

bool openNewConsent(const ListOpening &opening) {
    if (!opening.current)
        return openNewConsentOfPicked(opening);
    return openNewConsentOf(opening, opening.current->key().patient);
}

bool openNewConsentOfPicked(const ListOpening &opening) {
    const PatientKey patient = pickPatient(opening);
    return patient.nIDNo != 0 && openNewConsentOf(opening, patient);
}

bool openConsent(const ListOpening &opening) {
    frmDouiRecordEdit form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, opening.current->key()));
}

bool openHistory(const ListOpening &opening) {
    frmDouiRecord form(opening.environment, opening.parent);
    if (form.iInit(opening.db, opening.current->key().patient) != 0) {
        opening.environment.messages.fail(form.sErrMsg());
        return true; // the patient may be gone
    }
    form.goTo(opening.current->key());
    form.exec();
    return form.isChanged();
}

bool openChangeHistory(const ListOpening &opening) {
    showChangeHistory(opening.environment, opening.db,
                      opening.current ? std::optional(opening.current->key()) : std::nullopt, opening.parent);
    return false;
}

bool openRemark(const ListOpening &opening) {
    if (opening.current->isDeformity()) {
        opening.environment.messages.note(
            u"変形徒手の行に備考はありません。マッサージの行を選択してください。"_s);
        return false;
    }
    frmEditBikouDoui form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, opening.current->key()));
}

bool restartDeformity(const ListOpening &opening) {
    Messages &messages = opening.environment.messages;
    const ListRow &row = *opening.current;
    if (!row.isDeformity()) {
        messages.note(u"変形徒手の行を選択してください。"_s);
        return false;
    }
    const QDate today = opening.environment.clock.today();
    const auto months = int(qMax<qint64>(1, row.records.number(row.record, ListField::Months)));
    RestartForm form(row.who(), {today, today.addMonths(months).addDays(-1)}, opening.environment.clock,
                     opening.parent);
    if (form.exec() != QDialog::Accepted)
        return false;
    const Period period = form.period();
    if (!messages.ask(u"%1\r\n変形徒手の期間を %2～%3 で再開します。\r\n"
                      "この同意の依頼と受領の印は、すべて消えます。よろしいですか？"_s.arg(
                          row.who(), dateText(period.start), dateText(period.end)),
                      u"変形徒手の期間の再開"_s))
        return false;
    ConsentRenewal renewal(opening.db, {u"変形徒手の期間の再開"_s});
    const ReadRow &seen = *opening.seen;
    if (renewal.iDataHenkeiDouiMake(seen.key.patient, seen.key.nDate, period, &seen) != 0) {
        renewal.refused() ? messages.warn(renewal.sErrMsg()) : messages.fail(renewal.sErrMsg());
        return true; // the row is another one by now, or gone
    }
    messages.note(u"%1　変形徒手の期間を再開しました。"_s.arg(row.who()));
    return true;
}

bool openRequestMethods(const ListOpening &opening) {
    RequestMethodsForm form(opening.environment, opening.db, opening.parent);
    std::optional<MethodsRow> row;
    if (opening.current && opening.current->mayOwnMethods())
        row = {*opening.seen, opening.current->who()};
    if (form.iInit(row, u"（変形徒手と履歴の行には登録できません）"_s) != 0) {
        opening.environment.messages.failIn(form.sErrMsg(), u"dataLoadRiyousha()でエラー");
        return false;
    }
    form.exec();
    return form.written();
}

bool openRequests(const ListOpening &opening) {
    std::vector<RequestRow> rows = requestsOfTargets(opening);
    if (rows.empty())
        return false;
    frm同意依頼 form(opening.environment, opening.db, opening.parent);
    if (form.iInit(std::move(rows), outOfSightText(opening)) != 0) {
        opening.environment.messages.warn(form.sErrMsg());
        return false;
    }
    form.exec();
    return form.written();
}

bool openAnswers(const ListOpening &opening) {
    AnswersForm form(opening.environment, opening.db, opening.parent);
    if (form.iInit() != 0) {
        opening.environment.messages.fail(form.sErrMsg(), u"DB-error"_s);
        return false;
    }
    form.exec();
    return form.written();
}

bool openBatches(const ListOpening &opening) {
    BatchesForm form(opening.environment, opening.db, opening.parent);
    if (form.iInit() != 0) {
        opening.environment.messages.warn(form.sErrMsg());
        return false;
    }
    form.exec();
    return form.written();
}

bool printRequests(const ListOpening &opening) {
    const std::vector<RequestRow> rows = requestsOfTargets(opening);
    if (rows.empty())
        return false;
    const LetterOptions options =
        keptLetterOptions(opening.environment.folders, opening.environment.clock.today());
    return outputRequests(opening.environment, opening.db, rows,
                          {options, LetterOutput::Print, letterWait(opening.parent),
                           printNote(rows, outOfSightText(opening))}) == LetterOutcome::Printed;
}

bool openMailScreen(const ListOpening &opening) {
    Messages &messages = opening.environment.messages;
    if (opening.targets.empty()) {
        messages.note(u"出力するデータがありません。"_s);
        return false;
    }
    const std::vector<ListRow> rows = mayBeMailed(opening);
    if (rows.empty())
        return false;
    RecordMailClaims claims(opening.environment, opening.db);
    frmMailSend form(opening.environment, opening.parent);
    if (form.Init(opening.db, claims, mailRows(rows)) != 0) {
        messages.failIn(form.sErrMsg(), u"Init()でエラー");
        return false;
    }
    form.exec();
    return form.rowsChanged();
}

bool openConsentForms(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::ConsentForms);
}

bool openSetPrint(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::AsLastTime);
}

bool openRenewalList(const ListOpening &opening) {
    const bool ticked = !opening.targets.empty();
    const std::vector<qint32> patients = patientsOf(ticked ? opening.targets : opening.shown());
    frm同意書更新リスト印刷 form(opening.environment, opening.parent);
    const QString which =
        ticked ? u"（「対象」にチェックした利用者）"_s : u"（一覧に表示しているすべての利用者）"_s;
    form.Init(opening.db, patients, which + outOfSightText(opening), opening.staff);
    form.exec();
    return false;
}

bool openManagementPrint(const ListOpening &opening) {
    std::vector<LedgerFilter> filters;
    for (const FilterName &filter : opening.filters)
        filters.push_back({filter.caption, filter.name});
    bool written = false;
    frm同意書管理印刷 form(opening.environment, opening.db, opening.parent);
    if (form.iInit({managementRows(opening.targets), managementRows(opening.shown()),
                    opening.targetsOutOfSight, ledgerSearchName(filters), opening.staff},
                   lettersOf(opening, written)) != 0) {
        opening.environment.messages.warn(form.sErrMsg());
        return false;
    }
    form.exec();
    return written;
}

bool openMasterManagementPrint(const ListOpening &opening) {
    bool written = false;
    frm同意書管理印刷_mst form(opening.environment, opening.db, opening.parent);
    form.iInit(lettersOf(opening, written));
    form.exec();
    return written;
}

bool openMasterConsentForms(const ListOpening &opening) {
    frm同意書印刷_mst form(opening.environment, opening.parent);
    if (form.iInit(opening.db, {}, {}, {}, 0) == 0)
        form.exec();
    return false;
}
