#include "print/mail/mail_settings.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/text.h"
#include "print/mail/mail_address.h"
#include "print/mail/mail_text.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int tlsPort = 465;
constexpr int submissionPort = 587;
constexpr int longestTimeout = 600;

/// Reads the keys of one file and keeps the first thing that is wrong.
class MailIni {
public:
    explicit MailIni(const Folders &folders) : m_folders(folders) {
        if (m_ini.iInit(Folders::file(folders.data(), u"mail.ini"_s)) != 0)
            m_problem = m_ini.sErrMsg();
    }

    const QString &problem() const { return m_problem; }

    MailSettings read() {
        MailSettings settings;
        readLogin(settings.server);
        readServer(settings.server);
        settings.senderName = text(u"送信元名"_s);
        settings.senderAddress = text(u"送信元メールアドレス"_s);
        settings.subject = text(u"メール件名"_s);
        if (const QString why = whyNoAddress(settings.senderAddress); !why.isEmpty())
            wrong(u"送信元メールアドレス"_s, why);
        return settings;
    }

private:
    QString text(const QString &key) const {
        return cutAtNul(m_ini.csGetProfileString(u"MAIL"_s, key)).trimmed();
    }

    void wrong(const QString &key, const QString &why) {
        if (m_problem.isEmpty())
            m_problem = u"メール設定ファイル（%1）の「%2」が正しくありません。%3"_s.arg(
                QDir::toNativeSeparators(m_ini.path()), key, why);
    }

    void readServer(MailServer &server) {
        server.host = text(u"メールサーバ"_s);
        static const QRegularExpression host(u"^([A-Za-z0-9._-]+|[0-9A-Fa-f:]*:[0-9A-Fa-f:.]+)$"_s);
        if (!host.match(server.host).hasMatch())
            wrong(u"メールサーバ"_s, u"サーバーの名前かIPアドレスを半角で入力してください。"_s);

        bool number = true;
        const QString port = text(u"ポート"_s);
        if (!port.isEmpty())
            server.port = port.toInt(&number);
        if (!number || server.port < 1 || server.port > 65535)
            wrong(u"ポート"_s, u"1～65535の番号を入力してください。"_s);

        const QString timeout = text(u"タイムアウト"_s);
        if (!timeout.isEmpty())
            server.timeout = timeout.toInt(&number);
        if (!number || server.timeout < 1)
            wrong(u"タイムアウト"_s, u"1以上の秒数を入力してください。"_s);
        server.timeout = std::min(server.timeout, longestTimeout);

        readSecurity(server);
    }

    // User names hold neither sign, passwords may hold both.
    void readLogin(MailServer &server) {
        const QString login = text(u"ログイン"_s);
        static const QRegularExpression parts(u"^([^: \\t]+)[: \\t](.+)$"_s);
        const QRegularExpressionMatch match = parts.match(login);
        server.user = match.captured(1);
        server.password = match.captured(2).trimmed();
        if (!login.isEmpty() && (!match.hasMatch() || server.password.isEmpty()))
            wrong(u"ログイン"_s, u"「ユーザー名:パスワード」の形で入力してください。"_s);
    }

    void readSecurity(MailServer &server) {
        const QString security = text(u"暗号化"_s).toUpper();
        if (security == u"TLS" || (security.isEmpty() && server.port == tlsPort))
            server.security = MailSecurity::Tls;
        else if (security == u"STARTTLS" ||
                 (security.isEmpty() && (server.port == submissionPort || !server.user.isEmpty())))
            server.security = MailSecurity::StartTls;
        else if (security == u"なし")
            server.security = MailSecurity::None;
        else if (!security.isEmpty())
            wrong(u"暗号化"_s, u"なし、STARTTLS、TLS のどれかを入力してください。"_s);

        const QString file = text(u"認証局ファイル"_s);
        if (file.isEmpty())
            return;
        server.authorities = QDir::isAbsolutePath(file) ? file : Folders::file(m_folders.data(), file);
        if (!QFileInfo(server.authorities).isFile())
            wrong(u"認証局ファイル"_s,
                  u"ファイル（%1）が見つかりません。"_s.arg(QDir::toNativeSeparators(server.authorities)));
    }

    const Folders &m_folders;
    clsOplIniFile m_ini;
    QString m_problem;
};

} // namespace

QString MailServer::argument() const {
    return u"%1:%2:%3"_s.arg(host).arg(port).arg(timeout);
}

QString MailSettings::senderArgument() const {
    const QString login = server.user.isEmpty() ? QString() : server.user + u":****"_s;
    return u"%1<%2>\t%3"_s.arg(onOneLine(senderName), senderAddress, login);
}

Result<MailSettings> readMailSettings(const Folders &folders) {
    MailIni ini(folders);
    MailSettings settings;
    if (ini.problem().isEmpty())
        settings = ini.read();
    if (ini.problem().isEmpty())
        return settings;
    return Failure{ini.problem()};
}
