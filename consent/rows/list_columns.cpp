#include "consent/rows/list_columns.h"

#include "db/tables/patient/consent_words.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

std::span<const ListColumnInfo> listColumns() {
    using enum CellKind;
    using C = ListColumn;
    static const std::array<ListColumnInfo, size_t(ListColumn::Count)> columns{{
        {C::Target, u"対象"_s, Tick, true, 3, u"印刷・メールなどの対象にする行（保存されません）"_s},
        {C::Number, u"IDNo."_s, Number, false, 4, {}},
        {C::Name, u"利用者名"_s, Text, false, 8, u"並べ替えはかな順です"_s},
        {C::Kind, u"施術区分"_s, Text, false, 5, {}},
        {C::ConsentEnd, u"同意期間終了日"_s, Date, false, 13,
         u"要加療期間の終了日。14日以内は▲、過ぎた行は■"_s},
        {C::Doctor, u"担当医師"_s, Text, false, 7, {}},
        {C::Received, consentCaption(u"iGetFlg"), Tick, true, 3,
         u"新しい同意を受領した行。「同意更新」で更新されます"_s},
        {C::Reconsent, consentCaption(u"tSaiDouiDay"), Date, true, 6,
         u"入力すると次回の要加療期間を計算します"_s},
        {C::NextStart, consentCaption(u"tSaiDouiKaryoS"), Date, true, 6, u"次回の要加療期間の開始日"_s},
        {C::NextEnd, consentCaption(u"tSaiDouiKaryoE"), Date, true, 6, u"次回の要加療期間の終了日"_s},
        {C::Requested, consentCaption(u"iOutputFlg"), Tick, true, 3, u"同意の依頼を出力した行"_s},
        {C::Contact, consentCaption(u"iRenrakuFlg"), Tick, true, 3, u"メールで連絡する利用者"_s},
        {C::Sent, consentCaption(u"iSendFlg"), Text, false, 4, {}},
        {C::Remark, consentCaption(u"cItiranBikou"), Text, true, 14, u"一覧備考"_s},
        {C::Method, consentCaption(u"iDouiIraiType"), Choice, true, 7,
         u"未選択の行には病院の依頼方法を（ ）で示します"_s},
        {C::OwnMethods, u"依頼ボタン"_s, Button, false, 5,
         u"行の個別依頼方法を登録する画面を開きます（Space・Enter）"_s},
        {C::Letter, u"同意依頼書種別"_s, Text, false, 7, u"依頼書を出力するときに選ばれる種類"_s},
        {C::Hospital, u"病院名"_s, Text, false, 11, {}},
        {C::Period, u"要加療期間"_s, Date, false, 13, u"現在の同意の要加療期間"_s},
        {C::Procedure, consentCaption(u"iDouiShubetsu"), Text, false, 3, u"同意の手順（書面・口頭）"_s},
        {C::FirstTreatment, u"初療年月日"_s, Date, false, 6, {}},
        {C::HospitalNumber, u"病院No"_s, Number, false, 4, {}},
        {C::PlaceZip, u"施術場所(〒)"_s, Text, false, 6, {}},
        {C::PlaceAddress, u"施術場所(住所)"_s, Text, false, 16, {}},
        {C::ReceiptZip, u"領収書/請求書 送付先(〒)"_s, Text, false, 6, {}},
        {C::ReceiptAddress, u"領収書/請求書 送付先(住所)"_s, Text, false, 16, {}},
        {C::ReceiptTel, u"領収書/請求書 送付先(TEL)"_s, Text, false, 8, {}},
        {C::ReceiptFax, u"領収書/請求書 送付先(FAX)"_s, Text, false, 8, {}},
        {C::ReceiptMobile, u"領収書/請求書 送付先(携帯)"_s, Text, false, 8, {}},
        {C::ReceiptAddressee, u"領収書/請求書 送付先(宛名)"_s, Text, false, 8, {}},
        {C::ContactZip, u"連絡先 (〒)"_s, Text, false, 6, {}},
        {C::ContactAddress, u"連絡先 (住所)"_s, Text, false, 16, {}},
        {C::ContactTel, u"連絡先 (TEL)"_s, Text, false, 8, {}},
        {C::ContactFax, u"連絡先 (FAX)"_s, Text, false, 8, {}},
        {C::ContactMobile, u"連絡先 (携帯)"_s, Text, false, 8, {}},
        {C::ContactAddressee, u"連絡先 (宛名)"_s, Text, false, 8, {}},
        {C::HospitalAddress, u"病院住所"_s, Text, false, 16, {}},
        {C::Diagnosis, consentCaption(u"cDouiByoumei"), Text, false, 10, {}},
        {C::Treatment, u"施術部位/内容"_s, Text, false, 14, {}},
        {C::State, u"要加療途中"_s, Text, false, 6, u"現在の要加療期間の今日の状態"_s},
        {C::OnPaper, u"用紙で依頼"_s, Text, false, 5, u"依頼書を病院または医師に出力した行"_s},
        {C::ToHospital, consentCaption(u"iDouiHospOutFlg"), Tick, true, 4,
         u"依頼書を病院に出力した行。次の依頼書のあて先になります"_s},
        {C::ToDoctor, consentCaption(u"iDouiIsiOutFlg"), Tick, true, 4, u"依頼書を医師に出力した行"_s},
        {C::HospitalMethod, u"病院依頼"_s, Text, false, 7, u"病院別の同意書依頼方法"_s},
        {C::OwnRequest, consentCaption(u"cKobetuDouiIrai"), Text, false, 10,
         u"行の個別依頼方法。「依頼ボタン」で登録します"_s},
    }};
    return columns;
}

std::span<const ListColumn> listItems() {
    using enum ListColumn;
    static const std::array<ListColumn, size_t(ListColumn::Count)> items{
        Target,         Contact,    Sent,           Received,      Procedure,        Number,
        Name,           Kind,       FirstTreatment, ConsentEnd,    Reconsent,        Period,
        HospitalNumber, Hospital,   Doctor,         Method,        Remark,           OnPaper,
        ToHospital,     ToDoctor,   HospitalMethod, OwnRequest,    Requested,        NextStart,
        NextEnd,        OwnMethods, Letter,         PlaceZip,      PlaceAddress,     ReceiptZip,
        ReceiptAddress, ReceiptTel, ReceiptFax,     ReceiptMobile, ReceiptAddressee, ContactZip,
        ContactAddress, ContactTel, ContactFax,     ContactMobile, ContactAddressee, HospitalAddress,
        Diagnosis,      Treatment,  State};
    return items;
}

QString listItemName(ListColumn column) {
    return column == ListColumn::ConsentEnd ? u"期間終了日"_s : listColumn(int(column)).caption;
}
