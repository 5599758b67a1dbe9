#include "print/batch/print_messages.h"

#include "print/batch/batch_print.h"
#include "print/engine/wfd_print_exe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString newLine = u"\r\n"_s;

QString stateText(BatchChunk::State state) {
    switch (state) {
    case BatchChunk::State::SomeFailed:
        return u"一部を作成できませんでした。"_s;
    case BatchChunk::State::BuilderMissing:
        return u"帳票イメージ作成プログラムがありません。"_s;
    case BatchChunk::State::BuilderFailed:
        return u"帳票イメージの作成に失敗しました。"_s;
    case BatchChunk::State::BuilderHung:
        return u"帳票イメージの作成が時間内に終わりませんでした。"_s;
    case BatchChunk::State::ViewerMissing:
        return u"帳票を表示できませんでした。"_s;
    case BatchChunk::State::NotWritten:
        return u"作業フォルダに書き込めませんでした。"_s;
    case BatchChunk::State::FolderBusy:
        return u"作業フォルダを使用できませんでした。"_s;
    case BatchChunk::State::Done:
        break;
    }
    return {};
}

/// "1 組目（1　甲 ～ 120　乙、100 件）"
QString chunkName(const BatchChunk &chunk) {
    const QString name = u"%1 組目"_s.arg(chunk.number);
    return chunk.reports == 0
               ? name
               : name + u"（%1 ～ %2、%3 件）"_s.arg(chunk.first, chunk.last, QString::number(chunk.reports));
}

/// What went wrong with chunks as a whole, or with reports that nobody can name.
QStringList faults(const BatchResult &result) {
    QStringList lines;
    for (const BatchChunk &chunk : result.chunks) {
        if (chunk.state == BatchChunk::State::Done)
            continue;
        QStringList reasons{stateText(chunk.state)};
        if (!chunk.reason.isEmpty())
            reasons += chunk.reason;
        lines += chunkName(chunk) + newLine + printFailed(reasons.join(newLine)).text;
        if (chunk.endsBatch())
            lines += u"この組から後は出力していません。"_s;
    }
    return lines;
}

QStringList failedReports(const BatchResult &result) {
    QStringList subjects;
    for (const BatchChunk &chunk : result.chunks)
        subjects += chunk.failed;
    return subjects;
}

QString cancelledAfter(const BatchResult &result) {
    return result.chunks.empty() || result.chunks.back().last.isEmpty()
               ? u"中止しました。"_s
               : u"「%1」までで中止しました。"_s.arg(result.chunks.back().last);
}

} // namespace

void addMessagePart(QString &text, const QString &heading, const QStringList &names) {
    if (!names.isEmpty())
        text += (text.isEmpty() ? QString() : newLine + newLine) + heading + newLine + names.join(newLine);
}

Message layoutMissing(const QString &layout) {
    return {u"同意書（"_s + layout + u"）が存在しません。"_s + newLine + u"処理を中止します。"_s,
            MessageIcon::Exclamation, u"ファイルエラー"_s};
}

Message oralNotPrinted(const QStringList &rows) {
    QString text = u"同意手順：口頭の場合は、同意書が印刷されませんので、ご注意ください。"_s;
    addMessagePart(text, u"口頭の利用者："_s, rows);
    return {text, MessageIcon::Exclamation, {}, MessageButtons::OkCancel, Answer::Ok};
}

Message printFailed(const QString &reason) {
    return {u"帳票の印刷に失敗しました。"_s + u'[' + reason + u']', MessageIcon::Critical, {}};
}

Message nothingToPrint() {
    return {u"出力するデータがありません。"_s, MessageIcon::Information, {}};
}

Message batchSummary(const BatchResult &result) {
    QString text = u"%1 件中 %2 件を出力しました。"_s.arg(result.asked).arg(result.reports());
    if (result.cancelled)
        text += newLine + cancelledAfter(result);
    addMessagePart(text, u"書式ファイルがないため、印刷できない帳票："_s, result.missingLayouts);
    addMessagePart(text, u"作成できなかった帳票："_s, failedReports(result));
    addMessagePart(text, u"失敗した組："_s, faults(result));
    return {text, result.allPrinted() ? MessageIcon::Information : MessageIcon::Exclamation, {}};
}

QString putOutText(const QString &what, PrintWay way) {
    return what + (way == PrintWay::Preview ? u"のプレビューを表示しました。"_s : u"を出力しました。"_s);
}
