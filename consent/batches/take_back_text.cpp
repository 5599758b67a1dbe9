#include "consent/batches/take_back_text.h"

#include "db/tables/patient_text.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Lines that a message box can show.
constexpr qsizetype most = 20;

QString writerText(const LaterWriter &writer, const QDate &today) {
    QStringList parts{shortTime(writer.time, today), writer.computer, writer.operation};
    parts.removeAll(QString());
    return parts.isEmpty() ? QString() : u"（"_s + parts.join(u' ') + u'）';
}

QString stayText(const TakeBackUnit &unit, const WrittenRow &row) {
    switch (unit.stay) {
    case RowStay::Overtaken:
        return u"その後に変更されました"_s;
    case RowStay::Gone:
        return u"その後に削除されました"_s;
    case RowStay::ThereAgain:
        return u"同じ日付の同意が、その後に登録されました"_s;
    case RowStay::Unreadable:
        return u"変更の記録が壊れているか、この版では取り消せません（%1 %2）"_s.arg(row.table, row.key);
    case RowStay::None:
    case RowStay::AlreadyBack:
        break;
    }
    return {};
}

QString unitText(const TakeBackProposal &proposal, const TakeBackUnit &unit, const QDate &today) {
    const WrittenRow &row = proposal.plan.rows[unit.because];
    const bool deformity = row.consent && row.consent->iHenkeiFlg == 1;
    return patientText(unit.patient.nIDNo, proposal.names.value(unit.patient.nIDNo)) +
           (deformity ? u"（変形徒手）"_s : QString()) + u'　' + stayText(unit, row) +
           writerText(proposal.writers.value(row.identity()), today);
}

QString leftText(const TakeBackProposal &proposal, const QDate &today) {
    QStringList lines;
    for (const TakeBackUnit *unit : proposal.plan.left())
        lines += unitText(proposal, *unit, today);
    QString text = lines.mid(0, most).join(u"\r\n"_s);
    if (lines.size() > most)
        text += u"\r\n他 %L1 件"_s.arg(lines.size() - most);
    return text;
}

/// What happens to the rows that go back.
QString effectText(const TakeBackPlan &plan) {
    qsizetype made = 0, erased = 0, changed = 0;
    for (const TakeBackUnit &unit : plan.units)
        for (const size_t place : unit.goesBack() ? unit.rows : std::vector<size_t>()) {
            const WrittenRow &row = plan.rows[place];
            ++(row.wasThere ? row.isThere ? changed : erased : made);
        }
    QStringList parts;
    if (made > 0)
        parts += u"この処理でできた同意 %L1 件を消します。"_s.arg(made);
    if (erased > 0)
        parts += u"この処理で消えた同意 %L1 件を、元のとおりに戻します。"_s.arg(erased);
    if (changed > 0)
        parts += u"この処理で変わった同意 %L1 件を、印とともに元の内容に戻します。"_s.arg(changed);
    return parts.join(u"\r\n"_s);
}

QString paperText(const BatchInfo &batch) {
    if (batch.kind == u"メール送信")
        return u"送ったメールそのものは戻りません。"_s;
    return batch.documents > 0 || batch.kind.contains(u"印刷") ? u"印刷した用紙そのものは戻りません。"_s
                                                               : QString();
}

} // namespace

QString takeBackQuestion(const TakeBackProposal &proposal, const QDate &today) {
    QStringList parts{batchText(proposal.batch, today) + u"を取り消します。"_s, effectText(proposal.plan)};
    if (const QString paper = paperText(proposal.batch); !paper.isEmpty())
        parts += paper;
    QString text = parts.join(u"\r\n"_s);
    if (const auto left = proposal.plan.left().size(); left > 0)
        return text + u"\r\n\r\n次の %L1 件は元に戻せません。\r\n\r\n"_s.arg(left) +
               leftText(proposal, today) +
               u"\r\n\r\nこれらを除いて、残りの %L1 件を取り消します。よろしいですか？"_s.arg(
                   proposal.plan.goingBack());
    return text + u"\r\n\r\nよろしいですか？"_s;
}

QString takeBackRefusal(const TakeBackProposal &proposal, const QDate &today) {
    const QString batch = batchText(proposal.batch, today);
    if (proposal.isPart())
        return batch + u"は取り消せません。\r\n\r\n"_s + leftText(proposal, today);
    if (proposal.taker)
        return batch + u"は、すでに取り消されています（処理番号%1、%2 %3）。"_s.arg(
                           QString::number(proposal.taker->number), shortTime(proposal.taker->time, today),
                           proposal.taker->computer);
    return batch + u"では同意が変わっていないため、取り消すものがありません。"_s;
}

QString takenBackText(const TakeBackProposal &proposal, const QDate &today) {
    const QString batch = batchText(proposal.batch, today);
    return proposal.isPart() ? batch + u"のうち %L1 件を取り消しました。"_s.arg(proposal.plan.goingBack())
                             : batch + u"を取り消しました。"_s;
}
