#include "setup/ini_files.h"

using namespace Qt::Literals::StringLiterals;

namespace setup {

QString lines(const QStringList &list) {
    return list.join(u"\r\n"_s) + u"\r\n"_s;
}

namespace {

TextFile inData(const QString &name, const QStringList &list) {
    return {Place::Data, name, lines(list)};
}

TextFile massageIni(const QStringList &branch) {
    return {Place::Program, u"Massage.ini"_s,
            lines(QStringList{u"SYSTEM_SYS=SYS"_s, u"SYSTEM_TMP=TMP"_s, u"SYSTEM_ICON=ICON"_s,
                              u"SYSTEM_DATA=DATA"_s} +
                  branch)};
}

TextFile patientSettings() {
    return inData(u"患者管理設定.ini"_s,
                  {u"[同意記録]"_s, u"変形連動=0"_s, u"祝日考慮=0"_s, u"前回取得日連動=0"_s,
                   u"同意書自動計算デフォルト=1,1,1"_s, u"埼玉口頭同意=0"_s, u"同意印刷本社No=0"_s,
                   u"[同意書管理]"_s, u"一覧並び順=0"_s, u"利用者並び順=0"_s, u"[ENTRY]"_s, u"新潟対応=0"_s,
                   u"埼玉口頭同意=0"_s, u"同意記録=0"_s});
}

TextFile printSettings() {
    return inData(u"印刷設定.ini"_s, {u"[同意書]"_s,
                                      u"施術区分=0"_s,
                                      u"ソート順=0"_s,
                                      u"出力様式=0"_s,
                                      u"出力様式2=0"_s,
                                      u"施術内容出力=1"_s,
                                      u"同意医師欄出力=1"_s,
                                      u"同意書式設定を参照しない=0"_s,
                                      u"印刷会社情報=1"_s,
                                      u"利用者個別設定=1"_s,
                                      u"医師個別設定=0"_s,
                                      u"利用者ID="_s,
                                      u"提出日付=0"_s,
                                      u"[同意依頼書]"_s,
                                      u"出力方式=0"_s,
                                      u"施術者氏名の印字=1"_s,
                                      u"施術者氏名選択=0"_s,
                                      u"[同意書更新リスト]"_s,
                                      u"帳票様式=0"_s,
                                      u"リスト抽出条件=0"_s,
                                      u"改ページ条件=0"_s,
                                      u"並び順=0"_s,
                                      u"変形リスト抽出期間=1"_s,
                                      u"施術経過報告=0"_s,
                                      u"施術キャンセル日出力=0"_s,
                                      u"利用者ID出力=1"_s,
                                      u"WEB作成の抽出期間を優先=0"_s,
                                      u"[同意記録管理]"_s,
                                      u"施術経過報告書帳票種類=0"_s});
}

TextFile requestMethods() {
    const QStringList methods = {u"用紙郵送"_s, u"ＦＡＸ"_s, u"本人持参"_s, u"訪問時に手渡し"_s, u"電話"_s};
    QStringList list = {u"[依頼方法リスト]"_s, u"NUM=%1"_s.arg(methods.size())};
    for (qsizetype i = 0; i < methods.size(); ++i)
        list.append(u"LIST%1=%2"_s.arg(i + 1, 3, 10, QChar(u'0')).arg(methods.at(i)));
    return inData(u"同意依頼方法list.ini"_s, list);
}

/// All twenty-two items of the list are shown.
TextFile displaySettings() {
    return inData(u"同意管理表示設定.ini"_s,
                  {u"[同意記録項目]"_s, u"表示="_s + QStringList(22, u"1"_s).join(u',')});
}

TextFile mailSettings(const MailSender &sender) {
    return inData(u"mail.ini"_s,
                  {u"[MAIL]"_s, u"メールサーバ=localhost"_s, u"ポート=25"_s, u"タイムアウト=30"_s,
                   u"ログイン="_s, u"送信元名="_s + sender.name, u"送信元メールアドレス="_s + sender.address,
                   u"メール件名=同意書のお知らせ"_s, u"暗号化="_s});
}

TextFile diagnoses() {
    return inData(u"傷病名List.txt"_s,
                  {u"脳梗塞後遺症"_s, u"脳出血後遺症"_s, u"パーキンソン病"_s, u"変形性膝関節症"_s,
                   u"関節リウマチ"_s, u"廃用症候群"_s, u"脊柱管狭窄症"_s, u"変形性股関節症"_s, u"頸髄損傷"_s,
                   u"大腿骨頸部骨折術後"_s, u"筋萎縮性側索硬化症"_s});
}

} // namespace

QList<TextFile> settingsFiles(const QString &edition, const MailSender &sender, const QStringList &branch) {
    return {massageIni(branch),
            {Place::Program, u"Version.ini"_s,
             lines({u"[Version]"_s, (u"Version=同意書管理 "_s + edition).trimmed()})},
            patientSettings(),
            printSettings(),
            requestMethods(),
            displaySettings(),
            mailSettings(sender),
            diagnoses(),
            inData(u"nippou.ini"_s, {u"[日報]"_s}),
            inData(u"DataFile.ini"_s, {u"[LAST_DIR_NAME]="_s, u"[LAST_FILE_NAME]="_s, u"[FILE_TYPE]=0"_s,
                                       u"[FILE_DELIMIT]=0"_s, u"[FILE_ETC]=0"_s, u"[FILE_OPN]=0"_s})};
}

} // namespace setup
