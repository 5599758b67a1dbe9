#include "consent/requests/request_printing.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/settings.h"
#include "print/batch/print_messages.h"
#include "print/request_letter/letter_messages.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool askAboutGone(Messages &messages, const LetterJob &job, std::span<const RequestRow> rows) {
    QStringList gone;
    for (const size_t order : job.goneOrders())
        gone.append(rows[order].who());
    return gone.isEmpty() ||
           messages.ask(u"次の行は他の端末で更新または削除されたため、依頼書を出力できません。\r\n\r\n"_s +
                            gone.join(u"\r\n"_s) + u"\r\n\r\n残りの依頼書を出力します。よろしいですか？"_s,
                        u"同意依頼書"_s);
}

bool askAboutPractitioners(Messages &messages, const LetterJob &job, const LetterOptions &options) {
    if (!options.printPractitioner)
        return true;
    const QStringList without = withoutPractitioner(job.source(), options);
    return without.isEmpty() ||
           messages.ask(u"施術者データがありません。\r\n\r\n"_s + without.join(u"\r\n"_s) +
                            u"\r\n\r\n施術者氏名を空欄のまま出力します。よろしいですか？"_s,
                        u"同意依頼書"_s);
}

// Everything that can be found out before a letter leaves.
bool mayOutput(Messages &messages, const LetterJob &job, std::span<const RequestRow> rows,
               const LetterOptions &options) {
    if (job.source().rows.empty()) {
        messages.warn(u"該当する同意依頼書データがありません。"_s);
        return false;
    }
    if (!job.source().hasCompany) {
        messages.warn(u"本社データがありません。"_s);
        return false;
    }
    if (const QString layout = job.missingLayout(); !layout.isEmpty()) {
        messages.show(layoutMissing(layout));
        return false;
    }
    return askAboutGone(messages, job, rows) && askAboutPractitioners(messages, job, options);
}

bool confirmPrint(Messages &messages, const QString &question) {
    const Message note = oralNotPrinted();
    if (!question.isEmpty())
        return messages.ask(note.text + u"\r\n\r\n"_s + question, u"依頼印刷"_s);
    return messages.show(note) == Answer::Ok;
}

void markRows(Messages &messages, LetterJob &job) {
    QStringList overtaken;
    if (job.iMark(&overtaken) != 0)
        messages.show(letterMarksFailed(job.sErrMsg()));
    else if (!overtaken.isEmpty())
        messages.show(letterRowsOvertaken(overtaken));
}

} // namespace

std::vector<LetterOrder> letterOrders(std::span<const RequestRow> rows) {
    std::vector<LetterOrder> orders;
    for (const RequestRow &row : rows)
        orders.push_back({row.key, row.facts.askedDoctor, row.toHospital, letterKindLayout(row.kind)});
    return orders;
}

LetterOptions keptLetterOptions(const Folders &folders, const QDate &today) {
    const Settings settings(folders);
    LetterOptions options;
    options.day = today;
    options.grouped = settings.isOn(Setting::依頼書出力方式);
    options.printPractitioner = settings.isOn(Setting::施術者氏名の印字);
    const int practitioner = settings.number(Setting::施術者氏名選択);
    options.practitioner = practitioner >= 0 && practitioner < LetterRow::practitioners ? practitioner : 0;
    return options;
}

bool keepLetterOptions(const Folders &folders, const LetterOptions &options, QString *reason) {
    Settings settings(folders);
    if (settings.iSwitch(Setting::依頼書出力方式, options.grouped) == 0 &&
        settings.iSwitch(Setting::施術者氏名の印字, options.printPractitioner) == 0 &&
        settings.iWrite(Setting::施術者氏名選択, options.practitioner) == 0)
        return true;
    *reason = settings.sErrMsg();
    return false;
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

LetterOutcome outputRequests(Environment &environment, cT_ADODB &db, std::span<const RequestRow> rows,
                             const LetterRun &run) {
    Messages &messages = environment.messages;
    if (rows.empty()) {
        messages.show(nothingToPrint());
        return LetterOutcome::Stopped;
    }
    LetterJob job(environment, db);
    if (job.iRead(letterOrders(rows)) != 0) {
        messages.fail(job.sErrMsg(), u"DB-error"_s);
        return LetterOutcome::Stopped;
    }
    const bool print = run.way == LetterOutput::Print;
    if (!mayOutput(messages, job, rows, run.options) || (print && !confirmPrint(messages, run.question)))
        return LetterOutcome::Stopped;
    if (job.iOutput(run.options, run.way, run.startWait) != 0) {
        if (!job.sErrMsg().isEmpty())
            messages.show(printFailed(job.sErrMsg()));
        return LetterOutcome::Stopped;
    }
    // The letters have left: nothing may come between that and the marks.
    if (print)
        markRows(messages, job);
    if (!job.touched().isEmpty())
        messages.show(textsTouched(job.touched()));
    return print ? LetterOutcome::Printed : LetterOutcome::Shown;
}
