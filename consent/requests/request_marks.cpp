#include "consent/requests/request_marks.h"

#include "consent/record/sent_marks.h"

using namespace Qt::Literals::StringLiterals;

std::optional<Message> markRequests(cT_ADODB &db, const std::vector<LetterMark> &letters) {
    std::vector<SentRequest> requests;
    for (const LetterMark &letter : letters)
        requests.push_back({letter.row, letter.updateTime, letter.toHospital});
    const Result<std::vector<size_t>> overtaken = markRequested(db, requests);
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
