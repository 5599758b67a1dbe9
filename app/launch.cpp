#include "app/launch.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/massage_ini.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "app/branch_query.h"
#include "db/adodb.h"
#include "db/column_names.h"
#include "db/connection_settings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Served = 0;
constexpr int NotStarted = 1;

const QString menuProgram = u"Main.exe"_s;
const QString noMode = u"処理モードが設定されていません。"_s;

} // namespace

int Launch::run(const QString &commandLine) {
    m_screens.showBackground();
    if (commandLine.trimmed() == u"--setup")
        return setUpAgain() ? serve(LaunchMode::ConsentList) : Served;

    const bool isNamed = !commandLine.isEmpty();
    if (isNamed && !modeFromCommandLine(commandLine))
        return refuseMode();
    const bool isNew =
        !hasConnectionSettings(m_environment.folders) &&
        m_environment.messages.ask(u"このプログラムはまだ設定されていません。初期設定を始めますか？"_s,
                                   u"初期設定"_s);
    if (isNew && !m_screens.setUp())
        return Served;
    // Nobody who begins with nothing knows of modes.
    if (isNew && !isNamed)
        return serve(LaunchMode::ConsentList);
    const std::optional<LaunchMode> mode = isNamed ? modeFromCommandLine(commandLine) : askForMode();
    return mode ? serve(*mode) : refuseMode();
}

int Launch::refuseMode() {
    m_environment.messages.warn(noMode, u"　エラー！！"_s);
    m_environment.messages.fail(u"起動できません！"_s);
    startSibling(m_environment, menuProgram);
    return NotStarted;
}

int Launch::serve(LaunchMode mode) {
    const Result<QString> connection = readConnectionString(m_environment.folders);
    if (!connection) {
        failStart(connection.reason());
        return NotStarted;
    }
    cT_ADODB db;
    if (!connect(db, *connection) || !findBranch(db))
        return NotStarted;
    return mode == LaunchMode::ConsentList ? serveConsentList(db) : serveConsentPrinting(db);
}

bool Launch::setUpAgain() {
    const bool isThere = hasConnectionSettings(m_environment.folders);
    return (!isThere ||
            m_environment.messages.ask(u"このプログラムは設定済みです。接続先を設定し直しますか？\r\n"
                                       "（いまのデータと、ほかの設定ファイルはそのまま残ります）"_s,
                                       u"初期設定"_s, Answer::No)) &&
           m_screens.setUp();
}

std::optional<LaunchMode> Launch::askForMode() {
    return modeFromAnswer(
        m_input.ask(u"モード番号を入力してください。\r\n"_s + noMode, u"起動エラー！！"_s, u"1"_s));
}

bool Launch::connect(cT_ADODB &db, const QString &connectionString) {
    const ColumnNamesRead names = readColumnNames(m_environment.folders);
    if (!names.oddities.isEmpty())
        m_environment.messages.warn(u"列名.ini の次の行は使いません。直してください。\r\n"_s +
                                    names.oddities.join(u"\r\n"));
    db.setColumnNames(names.names);
    if (db.iInit(connectionString) == 0 && db.iConnect() == 0)
        return true;
    failStart(db.sErrMsg());
    return false;
}

bool Launch::findBranch(cT_ADODB &db) {
    const MassageIni settings(m_environment.folders.program());
    settings.warnIfMissing(m_environment.messages);
    const QString code = settings.value(u"KYOTEN_CD").value_or(QString());
    const QString number = settings.value(u"KYOTEN_EB").value_or(QString());
    if (!code.isEmpty() || !number.isEmpty()) {
        bool codeOk = false;
        bool numberOk = false;
        m_environment.branch = {code.toShort(&codeOk), number.toShort(&numberOk)};
        // Half a branch, or none, must not fall back to another branch's patients.
        if (!codeOk || !numberOk)
            failStart(
                u"Massage.iniの拠点（KYOTEN_CD=%1、KYOTEN_EB=%2）が正しくありません。"_s.arg(code, number));
        return codeOk && numberOk;
    }

    const Result<std::optional<Branch>> first = readFirstUsedBranch(db);
    if (!first)
        failStart(first.reason());
    else if (!*first)
        failStart(u"使用中の拠点がKYOTENに登録されていません。"_s);
    m_environment.branch = first ? first->value_or(Branch{}) : Branch{};
    return first && first->has_value();
}

int Launch::serveConsentList(cT_ADODB &db) {
    auto screen = m_screens.makeConsentList();
    const bool ready = screen->iInit(db, 0) == 0;
    if (ready)
        screen->showModal();
    else
        m_environment.messages.show({screen->sErrMsg(), MessageIcon::None, {}});
    screen.reset();
    startSibling(m_environment, menuProgram);
    return ready ? Served : NotStarted;
}

int Launch::serveConsentPrinting(cT_ADODB &db) {
    auto screen = m_screens.makePrintScreen();
    if (screen->iInit(db, {}, {}, {}, 0) == 0) {
        screen->showModal();
        return Served;
    }
    // The menu program, told by its argument, shows what went wrong; there is no message here.
    screen.reset();
    startSibling(m_environment, menuProgram, {u"2"_s});
    return NotStarted;
}

void Launch::failStart(const QString &reason) {
    // The label is the suite's old one; support staff look for it although no such routine is involved.
    m_environment.messages.failIn(reason, u"iGetKanjaData() でエラー");
}
