#include "backup/daily_backup.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/platform/files.h"
#include "backup/backups.h"
#include "db/connection_settings.h"

#include <QDir>
#include <QTimer>
#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longEnoughOld = 7;       // days
constexpr int afterFirstPaint = 2'000; // milliseconds
constexpr int betweenLooks = 3'600'000;

QString networkText(const QString &file) {
    return platform::isOnNetworkDrive(file)
               ? u"データベースがネットワークドライブにあります。何台かで同時に使うと壊れることがあります。"
                 "このPCのディスクに移すか、PostgreSQLかSQL Serverを使ってください。（%1）"_s.arg(
                     QDir::toNativeSeparators(file))
               : QString();
}

QString ageText(const QDate &newest, const QDate &today) {
    if (!newest.isValid())
        return u"バックアップは一つもありません。"_s;
    const qint64 days = newest.daysTo(today);
    return days > longEnoughOld
               ? u"最後のバックアップは %1（%2日前）です。"_s.arg(newest.toString(u"yyyy/MM/dd")).arg(days)
               : QString();
}

/// What there is to say; empty when all is well.
QString care(const Backups &backups, const QDate &today, const std::stop_token &stop) {
    const Result<> made = backups.makeDaily(today, stop);
    QStringList said;
    if (!made)
        said = {u"データベースのバックアップを作成できません。"_s, made.reason()};
    // A colleague who is making the first one is no reason to say that there is none.
    if (const QDate newest = backups.newest(today); newest.isValid() || !made)
        said.append(ageText(newest, today));
    said.removeAll(QString());
    return said.join(u"\r\n"_s);
}

} // namespace

DailyBackup::DailyBackup(Environment &environment) : m_environment(environment) {}

void DailyBackup::begin() {
    QTimer::singleShot(afterFirstPaint, this, [this] { look(); });
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] { look(); });
    timer->start(betweenLooks);
}

void DailyBackup::wait() {
    if (m_work.joinable())
        m_work.join();
}

void DailyBackup::look() {
    const QDate today = m_environment.clock.today();
    const Result<QString> connection = readConnectionString(m_environment.folders);
    const std::optional<QString> file = connection ? embeddedFile(*connection) : std::nullopt;
    if (m_day == today || !file)
        return;
    const bool first = !m_day.isValid();
    m_day = today;
    m_work =
        std::jthread([=, this, backups = Backups(m_environment.folders, *file)](const std::stop_token &stop) {
            QStringList said{first ? networkText(*file) : QString(), care(backups, today, stop)};
            said.removeAll(QString());
            if (!said.isEmpty() && !stop.stop_requested())
                QMetaObject::invokeMethod(
                    this, [this, said] { m_environment.messages.note(said.join(u"\r\n"_s)); },
                    Qt::QueuedConnection);
        });
}
