#include "print/request_letter/letter_messages.h"

using namespace Qt::Literals::StringLiterals;

Message letterMarksFailed(const QString &reason) {
    return {u"依頼書は出力しましたが、「依頼」の印を保存できませんでした。"
            "一覧で「依頼」にチェックして保存してください。\r\n"_s +
                reason,
            MessageIcon::Critical, u"DB-error"_s};
}

Message letterRowsOvertaken(const QStringList &rows) {
    return {u"次の行は、依頼書の出力中に他の端末で変更または削除されました。"
            "依頼書の内容と「依頼」の印を確認してください。\r\n\r\n"_s +
                rows.join(u"\r\n"_s),
            MessageIcon::Exclamation,
            {}};
}
