#include "print/mail/mail_send.h"

#include "print/mail/smtp_reply.h"

#include <QDir>
#include <QSysInfo>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <curl/curl.h>
#include <future>
#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A mail takes this many answers' time at most, however slowly the server drips them.
constexpr long answersInMail = 10;

struct CurlCleanup {
    void operator()(CURL *curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

bool curlIsReady() {
    // The library wants to be set up once, before any thread uses it.
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

/// One mail on its way: what goes out and what came back.
struct Delivery {
    QByteArray rest;         ///< of the message
    bool begun = false;      ///< the server has been given the first byte
    bool handedOver = false; ///< and the last
    QByteArray lastReply;
    const std::atomic<bool> &stop;
};

size_t giveBytes(char *buffer, size_t size, size_t count, void *target) {
    auto &delivery = *static_cast<Delivery *>(target);
    const qsizetype length = std::min(qsizetype(size * count), delivery.rest.size());
    std::copy_n(delivery.rest.constData(), length, buffer);
    delivery.rest.remove(0, length);
    delivery.begun = true;
    delivery.handedOver = delivery.rest.isEmpty();
    return size_t(length);
}

// The server's farewell (221) says nothing about the mail.
size_t keepReply(const char *line, size_t size, size_t count, void *target) {
    const QByteArray reply = QByteArray(line, qsizetype(size * count)).trimmed();
    if (!reply.startsWith("221"))
        static_cast<Delivery *>(target)->lastReply = reply;
    return size * count;
}

size_t dropBody(const char *, size_t size, size_t count, void *) {
    return size * count;
}

// What has begun is finished: a mail cut off could have been taken all the same.
int mayStop(void *target, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    const auto &delivery = *static_cast<Delivery *>(target);
    return delivery.stop && !delivery.begun ? 1 : 0;
}

// Servers refuse a greeting with a computer's Japanese name.
QByteArray greetingName() {
    const QByteArray name = QSysInfo::machineHostName().toUtf8();
    const bool plain = !name.isEmpty() && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '.';
    });
    return plain ? name : QByteArray("localhost");
}

QByteArray urlOf(const MailServer &server) {
    const QByteArray scheme = server.security == MailSecurity::Tls ? "smtps://" : "smtp://";
    const QByteArray host = server.host.toLatin1();
    return scheme + (host.contains(':') ? '[' + host + ']' : host) + ':' + QByteArray::number(server.port) +
           '/' + greetingName();
}

long tlsUse(MailSecurity security) {
    switch (security) {
    case MailSecurity::None:
        return CURLUSESSL_NONE;
    case MailSecurity::Offered:
        return CURLUSESSL_TRY;
    case MailSecurity::StartTls:
    case MailSecurity::Tls:
        break;
    }
    return CURLUSESSL_ALL;
}

void setServer(CURL *curl, const MailServer &server) {
    curl_easy_setopt(curl, CURLOPT_URL, urlOf(server).constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    curl_easy_setopt(curl, CURLOPT_USE_SSL, tlsUse(server.security));
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
    if (!server.authorities.isEmpty())
        curl_easy_setopt(curl, CURLOPT_CAINFO,
                         QDir::toNativeSeparators(server.authorities).toLocal8Bit().constData());
    if (!server.user.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, server.user.toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, server.password.toUtf8().constData());
    }
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, long(server.timeout));
    curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, long(server.timeout));
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, server.timeout * answersInMail);
    curl_easy_setopt(curl, CURLOPT_FORBID_REUSE, 1L);
}

void setMessage(CURL *curl, Delivery &delivery) {
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, curl_off_t{delivery.rest.size()});
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, giveBytes);
    curl_easy_setopt(curl, CURLOPT_READDATA, &delivery);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, keepReply);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &delivery);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, dropBody);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, mayStop);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &delivery);
}

// Whether the trouble lies before any mail: a line, a certificate, a log-in.
bool serverIsAtFault(CURLcode code, const Delivery &delivery) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_LOGIN_DENIED:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_USE_SSL_FAILED:
        return true;
    case CURLE_OPERATION_TIMEDOUT:
        return !delivery.begun;
    default:
        return false;
    }
}

SendOutcome outcomeOf(const MailServer &server, CURLcode code, const Delivery &delivery) {
    if (code == CURLE_OK)
        return {SendOutcome::Accepted, {}};
    if (code == CURLE_ABORTED_BY_CALLBACK)
        return {SendOutcome::Stopped, u"送信を中止しました。"_s};
    const SmtpReply reply = smtpReply(delivery.lastReply);
    // A refusal is an answer; silence after the last byte is none.
    if (delivery.handedOver && !reply.refuses())
        return {
            SendOutcome::Uncertain,
            whySmtpFailed(server, code, reply) +
                u"本文はすべて送ったため、相手に届いている可能性があります。送り直す前に相手に確認してください。"_s};
    const bool noServer = serverIsAtFault(code, delivery) || reply.wantsLogin();
    return {noServer ? SendOutcome::NoServer : SendOutcome::Failed, whySmtpFailed(server, code, reply)};
}

SendOutcome deliver(const MailServer &server, const QByteArray &from, const QByteArray &to,
                    const QByteArray &message, const std::atomic<bool> &stop) {
    const std::unique_ptr<CURL, CurlCleanup> curl(curl_easy_init());
    const std::unique_ptr<curl_slist, CurlCleanup> recipients(
        curl_slist_append(nullptr, ('<' + to + '>').constData()));
    if (!curl || !recipients)
        return {SendOutcome::Failed, whySmtpFailed(server, CURLE_OUT_OF_MEMORY, {})};
    Delivery delivery{message, false, false, {}, stop};
    setServer(curl.get(), server);
    setMessage(curl.get(), delivery);
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_FROM, ('<' + from + '>').constData());
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
    return outcomeOf(server, curl_easy_perform(curl.get()), delivery);
}

} // namespace

// The library waits for the answer to a message, and for the farewell, without handing control back, also
// through its own event interface. So it works on a thread of its own while this one goes on painting.
SendOutcome sendMail(const MailServer &server, const QByteArray &from, const QByteArray &to,
                     const QByteArray &message, const std::function<bool()> &goOn) {
    if (!curlIsReady())
        return {SendOutcome::Failed, whySmtpFailed(server, CURLE_FAILED_INIT, {})};
    try {
        std::atomic<bool> stop = false;
        std::future<SendOutcome> outcome =
            std::async(std::launch::async, [&] { return deliver(server, from, to, message, stop); });
        while (outcome.wait_for(20ms) != std::future_status::ready)
            stop = !goOn() || stop; // after a stop, too: windows go on painting
        return outcome.get();
    } catch (const std::exception &fault) {
        return {SendOutcome::Failed, u"メールサーバー（%1）への送信を始められませんでした。%2"_s.arg(
                                         server.argument(), QString::fromLocal8Bit(fault.what()))};
    }
}
