#include "print/mail/smtp_reply.h"

#include "print/mail/mail_text.h"

#include <algorithm>
#include <curl/curl.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString whyLineFailed(const MailServer &server, int code) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return u"が見つかりません。mail.ini の「メールサーバ」を確認してください。"_s;
    case CURLE_COULDNT_CONNECT:
        return u"に接続できません。サーバーの状態と mail.ini の「ポート」を確認してください。"_s;
    case CURLE_OPERATION_TIMEDOUT:
        return u"から %1 秒以内に応答がありませんでした。"_s.arg(server.timeout);
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
        return u"の証明書を確認できません。mail.ini の「メールサーバ」が証明書の名前と同じか確認してください。"_s;
    case CURLE_SSL_CACERT_BADFILE:
        return u"の証明書を確認するための、認証局のファイルを読めません。"_s;
    case CURLE_USE_SSL_FAILED:
        return u"は暗号化（STARTTLS）に対応していません。mail.ini の「ポート」と「暗号化」を確認してください。"_s;
    case CURLE_SSL_CONNECT_ERROR:
        return u"と暗号化した通信を始められません。mail.ini の「ポート」と「暗号化」を確認してください。"_s;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_WEIRD_SERVER_REPLY:
        return u"との接続が途中で切れました。"_s;
    default:
        return u"へ送信できませんでした。"_s + QString::fromLatin1(curl_easy_strerror(CURLcode(code)));
    }
}

} // namespace

bool SmtpReply::wantsLogin() const {
    constexpr int codes[] = {454, 530, 534, 535, 538};
    return std::ranges::find(codes, code) != std::end(codes);
}

SmtpReply smtpReply(const QByteArray &line) {
    return {line.left(3).toInt(), onOneLine(QString::fromUtf8(line)).left(200)};
}

QString whySmtpFailed(const MailServer &server, int code, const SmtpReply &reply) {
    const QString name = u"メールサーバー（%1:%2）"_s.arg(server.host).arg(server.port);
    if (code == CURLE_LOGIN_DENIED || reply.wantsLogin())
        return name + u"にログインできません。mail.ini の「ログイン」を確認してください。"_s +
               (reply.refuses() ? u"（%1）"_s.arg(reply.text) : QString());
    if (reply.refuses())
        return name + u"が受け付けませんでした。（%1）"_s.arg(reply.text);
    return name + whyLineFailed(server, code);
}
