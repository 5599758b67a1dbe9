#include "consent/batches/take_back_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/batches/take_back_text.h"
#include "db/adodb.h"
#include "widgets/wait_message_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Fewer rows are written before a window could be read; one that goes as it comes may take the keys along.
constexpr qsizetype worthWaiting = 200;

Result<bool> takeWaiting(TakeBack &work, const TakeBackProposal &agreed, QWidget *parent) {
    std::optional<frmWaitMsg> wait;
    if (agreed.plan.goingBack() >= worthWaiting)
        wait.emplace(parent).showProgress(u"処理を取り消しています。"_s);
    return work.take(agreed);
}

} // namespace

bool takeBackBatch(const Environment &environment, cT_ADODB &db, qint32 batch, QWidget *parent) {
    const QString title = u"処理の取消"_s;
    const QDate today = environment.clock.today();
    Messages &messages = environment.messages;
    TakeBack work(db, environment.branch);
    for (QString before;; before = u"確かめている間に、他のＰＣで同意が変更されました。\r\n\r\n"_s) {
        const Result<TakeBackProposal> proposal = work.propose(batch);
        if (!proposal) {
            messages.fail(proposal.reason(), title);
            return false;
        }
        if (proposal->plan.goingBack() == 0) {
            const QString why = before + takeBackRefusal(*proposal, today);
            proposal->isPart() || !before.isEmpty() ? messages.warn(why, title) : messages.note(why);
            return false;
        }
        if (!messages.ask(before + takeBackQuestion(*proposal, today), title, Answer::No))
            return false;
        const Result<bool> taken = takeWaiting(work, *proposal, parent);
        if (!taken) {
            messages.fail(u"処理を取り消せませんでした。何も取り消していません。\r\n"_s + taken.reason(),
                          title);
            return false;
        }
        if (*taken) {
            messages.note(takenBackText(*proposal, today));
            return true;
        }
    }
}

bool takeBackLastBatch(const Environment &environment, cT_ADODB &db, QWidget *parent) {
    const QString nothing = u"元に戻す操作はありません。"_s;
    if (db.history().kind != HistoryState::Kept && !batchesAreKept(db)) {
        environment.messages.note(nothing);
        return false;
    }
    const Result<std::optional<BatchInfo>> last =
        readLastBatch(db, environment.branch, db.csGetComputerName(), environment.clock.today());
    if (!last) {
        environment.messages.fail(last.reason(), u"処理の取消"_s);
        return false;
    }
    if (!*last) {
        environment.messages.note(nothing);
        return false;
    }
    return takeBackBatch(environment, db, (*last)->number, parent);
}
