#include "consent/requests/request_printing.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "archive/sent_run.h"
#include "consent/record/sent_marks.h"
#include "print/batch/print_messages.h"
#include "print/engine/wfd_print_exe.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// Everything that can be found out before a letter leaves, in one box.
bool mayOutput(Messages &messages, const LetterJob &job, const LetterRun &run) {
    const LetterCheck check = job.check();
    if (check.refusal) {
        messages.show(*check.refusal);
        return false;
    }
    const bool print = run.way == LetterOutput::Print;
    const PrintWay way = print ? PrintWay::Print : PrintWay::Preview;
    Message oral = oralNotPrinted(job.oralRows());
    QStringList parts = check.notes;
    if (print)
        parts += run.note;
    parts.removeAll(QString());
    if (parts.isEmpty()) {
        oral.text += u"\r\n\r\n"_s + job.extent().text(way);
        return !print || messages.show(oral) == Answer::Ok;
    }
    if (print)
        parts.prepend(oral.text);
    parts += job.extent().question(way);
    return messages.ask(parts.join(u"\r\n\r\n"_s), print ? u"依頼印刷"_s : u"同意依頼書"_s);
}

} // namespace

std::vector<LetterOrder> letterOrders(std::span<const RequestRow> rows) {
    std::vector<LetterOrder> orders;
    for (const RequestRow &row : rows)
        orders.push_back({row.key, row.facts.askedDoctor, row.toHospital, letterKindLayout(row.kind), row.who,
                          continuesConsent(row.kind)});
    return orders;
}

std::vector<RequestRow> onPaper(std::span<const RequestRow> rows) {
    std::vector<RequestRow> wanted;
    std::ranges::copy_if(rows, std::back_inserter(wanted), &RequestRow::onPaper);
    return wanted;
}

QString kindSummary(std::span<const RequestRow> rows) {
    QStringList kinds;
    for (int i = 0; i < letterKinds; ++i)
        if (const auto count = std::ranges::count(rows, LetterKind(i), &RequestRow::kind))
            kinds.append(letterKindName(LetterKind(i)) + u" %L1 件"_s.arg(count));
    return kinds.join(u"、"_s);
}

QString requestedSummary(std::span<const RequestRow> rows) {
    const auto again = std::ranges::count(rows, true, &RequestRow::requested);
    return again == 0 ? QString() : u"うち依頼済み %L1 件"_s.arg(again);
}

std::optional<Message> markRequests(cT_ADODB &db, const std::vector<LetterMark> &letters,
                                    const Operation &operation) {
    std::vector<SentRequest> requests;
    for (const LetterMark &letter : letters)
        requests.push_back({letter.row, letter.updateTime, letter.toHospital});
    const Result<std::vector<size_t>> overtaken = markRequested(db, requests, operation);
    if (!overtaken)
        return Message{u"依頼書は出力しましたが、「依頼」の印を保存できませんでした。"
                       "一覧で「依頼」にチェックして保存してください。\r\n"_s +
                           overtaken.reason(),
                       MessageIcon::Critical, u"DB-error"_s};
    if (overtaken->empty())
        return {};
    QStringList rows;
    for (const size_t letter : *overtaken)
        rows.append(letters[letter].who);
    return Message{u"次の行は、依頼書の出力中に他の端末で変更または削除されました。"
                   "依頼書の内容と「依頼」の印を確認してください。\r\n\r\n"_s +
                       rows.join(u"\r\n"_s),
                   MessageIcon::Exclamation,
                   {}};
}

LetterOutcome outputRequests(Environment &environment, cT_ADODB &db, std::span<const RequestRow> rows,
                             const LetterRun &run) {
    Messages &messages = environment.messages;
    if (rows.empty()) {
        messages.show(nothingToPrint());
        return LetterOutcome::Stopped;
    }
    LetterJob job(environment, db);
    if (const Result<> read = job.read(letterOrders(rows), run.options); !read) {
        messages.fail(read.reason(), u"DB-error"_s);
        return LetterOutcome::Stopped;
    }
    const bool print = run.way == LetterOutput::Print;
    SentRun sent(environment, db, u"依頼書印刷"_s);
    if (!mayOutput(messages, job, run))
        return LetterOutcome::Stopped;
    const Result<bool> output = job.output(run.way, run.startWait, print ? &sent : nullptr);
    if (!output)
        messages.show(printFailed(output.reason()));
    if (!output || !*output)
        return LetterOutcome::Stopped;
    // The letters have left: nothing may come between that and the marks.
    const std::optional<Message> note =
        print ? markRequests(db, job.marks(), sent.operation()) : std::nullopt;
    if (note)
        messages.show(*note);
    noteUnkept(messages, sent.finish(std::ssize(job.source().rows), std::ssize(job.letters())));
    return print ? LetterOutcome::Printed : LetterOutcome::Shown;
}
