#include "check/uses.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

QString usesOfTable(const QString &table) {
    struct Use {
        QStringView table, screens;
    };
    static constexpr auto uses = std::to_array<Use>({
        {u"KYOTEN", u"起動（拠点）、同意書"},
        {u"CODE", u"同意書の歩行状態などの名称"},
        {u"HOLIDAY", u"要加療期間の計算（祝日を考慮）"},
        {u"CORP", u"依頼書・同意書・封筒の差出人"},
        {u"CORP_SUB", u"会社の同意書式、同意書の登録（標準の傷病名）、更新の許可日"},
        {u"SISETSU", u"一覧、医療機関・施設マスタ、依頼書・同意書・封筒・台帳"},
        {u"DOCTOR", u"一覧、医師マスタ、依頼書・同意書・封筒・台帳"},
        {u"STAFF", u"一覧の施術者、施術者検索、依頼書・同意書・台帳"},
        {u"CAREMANE", u"医療機関・施設マスタ（変更の写し）"},
        {u"SOUDAN", u"一覧の相談員、相談員検索、メール、台帳・封筒"},
        {u"SOUDAN_TANTOU", u"メール（相談員の担当）"},
        {u"HOKENJA", u"保険者検索、一覧の条件、封筒"},
        {u"SHINSEISYO", u"同意書・依頼書の書式"},
        {u"RIYOUSHA", u"一覧、同意の登録・履歴・更新、利用者検索、すべての帳票"},
        {u"RIYOUSHA_SUB", u"一覧、利用者の同意書式、同意書・依頼書・封筒・台帳"},
        {u"RIYOUSHA_DOUI_REC", u"一覧、同意の登録・履歴・更新・返事の入力、すべての帳票"},
        {u"DOUIKIROKU", u"同意管理設定、要加療期間の計算"},
        {u"療養費単価", u"料金"},
        {u"往療費区分", u"料金"},
    });
    const auto found = std::ranges::find_if(uses, [&](const Use &use) { return table == use.table; });
    return found == uses.end() ? QString() : found->screens.toString();
}
