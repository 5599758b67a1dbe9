#include "consent/screens/list_commands.h"

#include "consent/screens/consent_list_form.h"
#include "consent/screens/list_work.h"
#include "consent/screens/settings_screens.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

// The list always has its first state; of the history there is no other.
ListCommand stateCommand(const QString &action, RowState state, const QString &key) {
    const RowStateInfo &info = rowState(state);
    return {QString(),
            action,
            info.caption,
            key,
            info.hint,
            ListCommand::View,
            state == RowState::All ? ListCommand::Nothing : ListCommand::NewestView,
            state};
}

ListCommand rangeCommand(const QString &action, QuickRange range, const QString &key) {
    const QuickRangeInfo &info = quickRangeInfo(range);
    return {QString(), action, info.caption, key, info.hint, ListCommand::View, ListCommand::Nothing, range};
}

} // namespace

std::span<const ListCommand> listCommands() {
    using enum ListCommand::Menu;
    using enum ListCommand::Needs;
    using Form = frm同意書管理;
    static const std::array commands{
        ListCommand{u"cmdNew"_s, u"mnF01"_s, u"新規"_s, u"F1"_s,
                    u"選択した利用者の同意を新しく登録する画面を開きます"_s, Consent, Nothing,
                    openNewConsent},
        ListCommand{u""_s, u"mnNewRiyousha"_s, u"利用者を選んで新規"_s, u"Ctrl+F1"_s,
                    u"一覧にない利用者を選び、その同意を新しく登録する画面を開きます"_s, Consent, Nothing,
                    openNewConsentOfPicked},
        ListCommand{u"cmdEdit"_s, u"mnF02"_s, u"修正"_s, u"F2"_s,
                    u"選択した行の同意記録を修正する画面を開きます"_s, Consent, Row, openConsent},
        ListCommand{u"cmdDelete"_s, u""_s, u"履歴・削除"_s, u"F3"_s,
                    u"選択した利用者の同意履歴を開きます。記録の削除と履歴の印刷ができます"_s, Consent, Row,
                    openHistory},
        ListCommand{u""_s, u"mnF04"_s, u"検索"_s, u"F4"_s, u"条件に合う同意を検索します"_s, Consent, Nothing,
                    &ListWork::searchAsked},
        ListCommand{u"cmdUpdate"_s, u""_s, u"再読込"_s, u"Shift+F4"_s,
                    u"変更中の内容を残したまま、最新のデータを読み直します"_s, Consent, Nothing,
                    &ListWork::reread},
        ListCommand{u"cmdSave"_s, u"mnF05"_s, u"保存"_s, u"F5"_s, u"変更した行を保存します"_s, Consent,
                    NewestView, &ListWork::saveAsked},
        ListCommand{u"cmdGet"_s, u"mnF06"_s, u"同意更新"_s, u"F6"_s,
                    u"受領にチェックした行の同意を、再同意日と次回の要加療期間で更新します"_s, Consent,
                    NewestRows, &ListWork::renew},
        ListCommand{u"cmdHenji"_s, u""_s, u"返事の入力"_s, u"Ctrl+R"_s,
                    u"戻ってきた同意書を、利用者を番号・カナで探しながら続けて受領・登録します"_s, Consent,
                    Nothing, openAnswers},
        ListCommand{u"cmdAllCheck"_s, u""_s, u"対象 全選択"_s, u"F7"_s,
                    u"表示中の行の「対象」をすべて付けます。すべて付いているときは外します"_s, Consent, Rows,
                    &ListWork::tickAllTargets},
        ListCommand{u"cmdAllCheckGet"_s, u""_s, u"受領 全選択"_s, u"F8"_s,
                    u"表示中の行の「受領」をすべて付けます。すべて付いているときは外します"_s, Consent,
                    NewestRows, &ListWork::tickAllReceived},
        ListCommand{
            u""_s, u"mnUndo"_s, u"元に戻す"_s, u"Ctrl+Z"_s,
            u"保存していない入力とチェックを、新しいものから順に元に戻します。なければ、このＰＣの最後の処理を取り消せます"_s,
            Consent, Nothing, &ListWork::undo},
        ListCommand{u""_s, u"mnRedo"_s, u"やり直す"_s, u"Ctrl+Y"_s,
                    u"元に戻した入力とチェックを、もう一度行います"_s, Consent, Nothing, &ListWork::redo},
        ListCommand{u""_s, u"mnRestoreRow"_s, u"行を元に戻す"_s, u"Ctrl+U"_s,
                    u"選択した行の保存していない変更を、読み込んだときの内容に戻します"_s, Consent, NewestRow,
                    &ListWork::restoreRows},
        ListCommand{
            u""_s, u"mnShori"_s, u"処理の一覧"_s, u"Ctrl+J"_s,
            u"同意更新・印刷・メール送信を、いつ・どのＰＣで・何件したかを表示します。処理を取り消せます"_s,
            Consent, Nothing, openBatches},
        ListCommand{u"cmdBikou"_s, u""_s, u"備考編集"_s, u"Ctrl+B"_s,
                    u"一覧備考を広い画面で編集します。備考はこの一覧でも入力できます"_s, Consent, NewestRow,
                    openRemark},
        ListCommand{u""_s, u"mnHenkeiRestart"_s, u"変形徒手の期間を再開"_s, u""_s,
                    u"選択した変形徒手の行の期間を新しくし、依頼と受領の印を消します"_s, Consent, NewestRow,
                    restartDeformity},
        ListCommand{u""_s, u"mnHenkouRireki"_s, u"変更履歴"_s, u"Ctrl+H"_s,
                    u"選択した行の同意を、いつ、どのPCで、どう変更したかを表示します"_s, Consent, Nothing,
                    openChangeHistory},
        stateCommand(u"mnState1"_s, RowState::All, u"Alt+1"_s),
        stateCommand(u"mnState2"_s, RowState::Lapsed, u"Alt+2"_s),
        stateCommand(u"mnState3"_s, RowState::DueSoon, u"Alt+3"_s),
        stateCommand(u"mnState4"_s, RowState::NotRequested, u"Alt+4"_s),
        stateCommand(u"mnState5"_s, RowState::Waiting, u"Alt+5"_s),
        stateCommand(u"mnState6"_s, RowState::Received, u"Alt+6"_s),
        stateCommand(u"mnState7"_s, RowState::NotContacted, u"Alt+7"_s),
        rangeCommand(u"mnRange1"_s, QuickRange::ThisMonth, u"Ctrl+1"_s),
        rangeCommand(u"mnRange2"_s, QuickRange::NextMonth, u"Ctrl+2"_s),
        rangeCommand(u"mnRange3"_s, QuickRange::ThreeMonths, u"Ctrl+3"_s),
        rangeCommand(u"mnRange4"_s, QuickRange::ThisAndNext, u"Ctrl+4"_s),
        rangeCommand(u"mnRange5"_s, QuickRange::SinceLastMonth, u"Ctrl+5"_s),
        ListCommand{u"cmdDspOrder"_s, u""_s, u"並び順"_s, u"F9"_s, u"一覧と利用者の並び順を選びます"_s,
                    Settings, Nothing, &ListWork::chooseOrder},
        ListCommand{u""_s, u"mnSortColumn"_s, u"この列で並べ替え"_s, u"Shift+F9"_s,
                    u"カーソルのある列で並べ替えます。もう一度で逆順、三度目で元の順に戻ります"_s, Settings,
                    Row, &Form::sortByColumn},
        ListCommand{u""_s, u"mnFold"_s, u"条件とボタンをたたむ"_s, u"Shift+F11"_s,
                    u"条件とボタンを一行にまとめ、一覧を広く表示します。もう一度で元に戻ります"_s, Settings,
                    Nothing, &Form::toggleFolded},
        ListCommand{u"cmdIrai"_s, u""_s, u"同意依頼"_s, u"Ctrl+I"_s,
                    u"対象の利用者の同意依頼書を、種類やあて先を確かめて出力します"_s, Request, NewestRows,
                    openRequests},
        ListCommand{u"cmdAddIrai"_s, u""_s, u"依頼方法"_s, u"Ctrl+Shift+I"_s,
                    u"依頼方法の一覧と、選択した行の個別の依頼方法を編集します"_s, Request, Nothing,
                    openRequestMethods},
        ListCommand{u"cmdMail"_s, u""_s, u"メール"_s, u"Ctrl+M"_s,
                    u"対象の利用者（連絡にチェックした方）の相談員へ、同意書のお知らせをメールで送ります"_s,
                    Request, NewestRows, openMailScreen},
        ListCommand{u"cmdPrint"_s, u"mnF11"_s, u"依頼印刷"_s, u"F11"_s,
                    u"対象の利用者の依頼書を、前回の設定ですぐに印刷します"_s, Request, NewestRows,
                    printRequests},
        ListCommand{u"CmdPrintDouisho"_s, u""_s, u"同意書印刷"_s, u"Ctrl+P"_s,
                    u"対象の利用者の同意書を印刷します"_s, Print, NewestRows, openConsentForms},
        ListCommand{u"CmdPrintSet"_s, u""_s, u"セット印刷"_s, u"Ctrl+Shift+P"_s,
                    u"対象の利用者の同意書・同意依頼書・封筒をまとめて印刷します"_s, Print, NewestRows,
                    openSetPrint},
        ListCommand{u""_s, u"mnDouiSyosikiSet"_s, u"利用者の同意書式"_s, u"Ctrl+L"_s,
                    u"選択した利用者の同意書・同意依頼書の書式を決め、1人分を印刷します"_s, Print, Row,
                    openPatientConsentForms},
        ListCommand{u"CmdDouishoList"_s, u""_s, u"同意書台帳"_s, u"Ctrl+D"_s,
                    u"対象の行（なければ表示中のすべて）の同意台帳・封筒・依頼書・更新リストを印刷します"_s,
                    Print, NewestRows, openManagementPrint},
        ListCommand{u""_s, u"mnDouishoMst"_s, u"利用者を選んで同意書"_s, u"Ctrl+Shift+F"_s,
                    u"一覧にない利用者も選んで、同意書を印刷します"_s, Print, Nothing,
                    openMasterConsentForms},
        ListCommand{u""_s, u"mnDouishoListMst"_s, u"利用者・医師などを選んで台帳・封筒"_s, u"Ctrl+Shift+D"_s,
                    u"利用者・医師・医療機関などを選んで、同意台帳・封筒・依頼書・更新リストを印刷します"_s,
                    Print, Nothing, openMasterManagementPrint},
        ListCommand{u""_s, u"mnKoushinList"_s, u"更新リスト"_s, u"Ctrl+K"_s,
                    u"対象の利用者（なければ表示中のすべて）のうち、同意の期間が切れる方の一覧を印刷します"_s,
                    Print, NewestRows, openRenewalList},
        ListCommand{u"cmdCsv"_s, u""_s, u"CSV出力"_s, u"Ctrl+Shift+S"_s,
                    u"表示中の一覧を、列の順序と絞り込みのままCSVファイルに保存します"_s, Print, Rows,
                    &Form::saveCsv},
        ListCommand{u""_s, u"mnListPrint"_s, u"一覧印刷"_s, u"Ctrl+Shift+L"_s,
                    u"表示中の一覧を、列の順序と絞り込みのまま表にして印刷します"_s, Print, Rows,
                    &Form::printList},
        ListCommand{u"cmdSeal"_s, u""_s, u"シール"_s, u""_s, u"シール印刷プログラムを起動します"_s, Print,
                    Nothing, &Form::startSeal},
        ListCommand{u""_s, u"mnIshi"_s, u"医師マスタ"_s, u"Ctrl+Shift+M"_s,
                    u"医師の一覧を開きます。登録・修正・削除・印刷・CSV出力ができます"_s, Settings, Nothing,
                    openDoctors},
        ListCommand{u""_s, u"mnSisetsu"_s, u"医療機関・施設マスタ"_s, u""_s,
                    u"医療機関・施設の一覧を開きます。登録・修正・削除・CSV出力ができます"_s, Settings,
                    Nothing, openFacilities},
        ListCommand{u""_s, u"mnRiyousha"_s, u"利用者マスタ"_s, u"Ctrl+Shift+K"_s,
                    u"利用者の一覧を開きます。登録・修正・削除・CSV出力ができます"_s, Settings, Nothing,
                    openPatients},
        ListCommand{u""_s, u"mnSoudan"_s, u"相談員マスタ"_s, u""_s,
                    u"相談員の一覧を開きます。登録・修正・削除・CSV出力ができます"_s, Settings, Nothing,
                    openCounsellors},
        ListCommand{u""_s, u"mnStaff"_s, u"施術者マスタ"_s, u""_s,
                    u"施術者の一覧を開きます。登録・修正・削除・CSV出力ができます"_s, Settings, Nothing,
                    openStaff},
        ListCommand{
            u""_s, u"mnTorikomi"_s, u"データの取込"_s, u"Ctrl+O"_s,
            u"利用者・医師・同意などをCSVファイルから取り込みます。登録する前に、行ごとの結果を確かめられます"_s,
            Settings, Nothing, openImport},
        ListCommand{u""_s, u"mnDouiSettei"_s, u"同意管理設定"_s, u"Ctrl+T"_s,
                    u"利用者ごとの期間の計算方法を設定します"_s, Settings, Nothing, openPeriodSettings},
        ListCommand{u""_s, u"mnDouiSyosikiKaisya"_s, u"会社の同意書式"_s, u"Ctrl+Shift+Y"_s,
                    u"会社として使用する同意書・同意依頼書の書式と、印字する内容を設定します"_s, Settings,
                    Nothing, openCompanyConsentForms},
        ListCommand{u""_s, u"mnKoumoku"_s, u"表示項目"_s, u"Ctrl+Shift+H"_s,
                    u"一覧に表示する項目、順序、幅と、左に固定する項目を選びます"_s, Settings, Nothing,
                    &Form::chooseColumns},
        ListCommand{u""_s, u"mnTantouExtra"_s, u"施術者で絞り込み"_s, u"Ctrl+Shift+T"_s,
                    u"何人かの施術者の利用者だけを、選んだ順に表示します"_s, Settings, Nothing,
                    &ListWork::chooseStaff},
        ListCommand{u""_s, u"mnRyoukin"_s, u"料金"_s, u"Ctrl+Shift+R"_s,
                    u"年月ごとの療養費の単価を表示し、距離から往療料を調べ、往療費の区分を編集します"_s,
                    Settings, Nothing, openFees},
        ListCommand{u""_s, u"mnDbKakunin"_s, u"データベースの確認"_s, u""_s,
                    u"データベースに、使う表・列・索引がそろっているかを確かめます"_s, Settings, Nothing,
                    openDatabaseCheck},
        ListCommand{u""_s, u"mnRirekiJunbi"_s, u"変更履歴の準備"_s, u""_s,
                    u"変更履歴が記録されているかを確かめ、記録する表を作成します"_s, Settings, Nothing,
                    openHistoryPreparation},
        ListCommand{u""_s, u"mnBackup"_s, u"バックアップの復元"_s, u"Ctrl+Shift+B"_s,
                    u"毎日のバックアップから一つを選び、新しいデータベースファイルに復元します"_s, Settings,
                    Nothing, openBackups},
        ListCommand{u""_s, u"mnPeriodNotFollowByHenkei"_s, u"変形徒手の期間を連動"_s, u""_s,
                    u"マッサージの再同意日を同じ利用者の変形徒手の行にも入力します"_s, Settings, Nothing,
                    ListLink{Setting::変形連動, &LinkOptions::deformity}},
        ListCommand{u""_s, u"mnHoliday"_s, u"祝日を考慮"_s, u""_s,
                    u"次回の要加療期間の開始日を、日曜日と祝日を避けて決めます"_s, Settings, Nothing,
                    ListLink{Setting::祝日考慮, &LinkOptions::holidays}},
        ListCommand{u""_s, u"mnSameDouiDay"_s, u"前回取得日に連動"_s, u""_s,
                    u"受領にチェックしたとき、前回の同意日から再同意日を提案します"_s, Settings, Nothing,
                    ListLink{Setting::前回取得日連動, &LinkOptions::previousDay}},
        ListCommand{u""_s, u"mnMasterTouroku"_s, u"利用者などを登録する"_s, u""_s,
                    u"利用者・相談員・施術者を、業務システムではなくこのプログラムで登録します"_s, Settings,
                    Nothing, ListLink{Setting::利用者登録, nullptr}},
        ListCommand{u""_s, u"mnDispHelp"_s, u"一覧の見かた"_s, u"Shift+F1"_s, u"印とキー操作を説明します"_s,
                    Help, Nothing, &Form::showHelp},
        ListCommand{u""_s, u"mnKeyPrint"_s, u"キー一覧の印刷"_s, u""_s,
                    u"この画面のキーを、1枚の用紙にまとめて印刷します"_s, Help, Nothing, &Form::printKeys},
        ListCommand{u""_s, u"mnVersion"_s, u"バージョン情報"_s, u"Ctrl+Shift+V"_s,
                    u"プログラムのバージョンと、新しくなったところを表示します"_s, Help, Nothing,
                    &Form::showVersion},
        ListCommand{u"cmdMenu"_s, u"mnF12S"_s, u"メニュー"_s, u"Shift+F12"_s,
                    u"この画面を閉じて、メニューに戻ります"_s, Leave, Nothing, &Form::reject},
        ListCommand{u"cmdEnd"_s, u"mnF12"_s, u"終了"_s, u"F12"_s, u"この画面を閉じます"_s, Leave, Nothing,
                    &Form::reject},
    };
    return commands;
}

QString listMenuCaption(ListCommand::Menu menu) {
    switch (menu) {
    case ListCommand::Consent:
        return u"同意(&A)"_s;
    case ListCommand::View:
        return u"表示(&V)"_s;
    case ListCommand::Request:
        return u"依頼(&I)"_s;
    case ListCommand::Print:
        return u"印刷(&P)"_s;
    case ListCommand::Settings:
        return u"設定(&S)"_s;
    case ListCommand::Help:
        return u"説明(&Z)"_s;
    case ListCommand::Leave:
        return u"終了(&X)"_s;
    }
    return {};
}

QList<KeyLine> listGridKeys() {
    return {{u"Space"_s, u"チェック（選択した行はまとめて）"_s},
            {u"Shift+↑、Shift+↓"_s, u"行の選択を広げる"_s},
            {u"Shift+Space"_s, u"行を選択する"_s},
            {u"Ctrl+A"_s, u"すべての行を選択する"_s},
            {u"Tab、Shift+Tab"_s, u"次の入力項目、前の入力項目"_s},
            {u"Ctrl+Tab"_s, u"一覧の外へ"_s},
            {u"Enter、文字・数字"_s, u"入力（日付は 1121、今日、+6m も可）"_s},
            {u"Delete"_s, u"項目を空にする"_s},
            {u"Ctrl+↓"_s, u"条件から一覧の先頭へ"_s},
            {u"Esc"_s, u"入力をやめる、条件から一覧へ戻る"_s},
            {u"見出しのクリック"_s, u"並べ替え、逆順、元の順"_s}};
}

QString listHelp() {
    QString help = u"■ 要加療期間が終了しています\r\n▲ 要加療期間の終了まで14日以内です\r\n"
                   "色の付いた枠は、変更してまだ保存していない項目です\r\n\r\n"_s;
    for (const KeyLine &line : listGridKeys())
        help += line.keys + u'　' + line.what + u"\r\n"_s;
    return help + u"期間にマウスを置くと、期間の決まり方を表示します"_s;
}
