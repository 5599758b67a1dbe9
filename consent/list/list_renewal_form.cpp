#include "consent/list/list_renewal_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/list/list_renewal.h"
#include "consent/rules/renewal_permit.h"
#include "consent/rules/rules_query.h"
#include "db/adodb.h"
#include "widgets/wait_message_form.h"

#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

namespace {

bool permitted(const ListRenewalRequest &request) {
    const ErrorsSince errors(request.db);
    request.db.iConnect();
    const Result<int> day = readUpdateReferenceDay(request.db, request.environment.branch);
    if (!day) {
        request.environment.messages.fail(errors.text(), u"DB-error"_s);
        return false;
    }
    const RenewalPermit permit = renewalPermit(request.environment.clock.today(), request.rangeStart, *day);
    if (!permit.permitted)
        request.environment.messages.fail(permit.refusal);
    return permit.permitted;
}

QList<RenewalResult> renewWithProgress(const ListRenewalRequest &request, const QList<RenewalRow> &rows) {
    frmWaitMsg wait(request.parent);
    wait.showProgress(u"同意を更新しています。"_s, frmWaitMsg::Cancel::Allowed);
    request.progress.setRange(0, int(rows.size()));
    request.progress.setVisible(true);
    const QList<RenewalResult> results = RenewalRun(request.db).renew(rows, [&](int done, int total) {
        request.progress.setValue(done);
        wait.setProgress(done, total);
        return !wait.cancelled();
    });
    request.progress.setVisible(false);
    return results;
}

} // namespace

std::optional<QList<RenewalResult>> renewReceived(const ListRenewalRequest &request) {
    Messages &messages = request.environment.messages;
    if (!permitted(request))
        return std::nullopt;
    // What is renewed is what the user sees before the question.
    QList<RenewalRow> rows = rowsToRenew(request.model);
    if (rows.isEmpty()) {
        messages.note(
            u"「受領」にチェックされた行がありません。更新する行の「受領」にチェックしてください。"_s);
        return std::nullopt;
    }
    const int hidden = request.model.receivedOutOfSight();
    if (!messages.ask(renewalQuestion(RenewalRun::examine(rows), hidden), u"同意更新の確認"_s) ||
        !request.save())
        return std::nullopt;
    takeSaved(rows, request.model);
    const QList<RenewalResult> results = renewWithProgress(request, rows);
    QString text = u"更新が終了しました。\r\n\r\n"_s + renewalSummary(results);
    if (hidden > 0)
        text += u"\r\n\r\n絞り込みで表示していない受領 %L1 件は、更新していません。"_s.arg(hidden);
    if (countOutcome(results, RenewalOutcome::Failed) > 0)
        messages.fail(text);
    else if (countOutcome(results, RenewalOutcome::Renewed) == results.size())
        messages.note(text.replace(u"\r\n\r\n"_s, u"　"_s));
    else
        messages.warn(text);
    return results;
}
