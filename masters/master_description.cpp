#include "masters/master_description.h"

using namespace Qt::Literals::StringLiterals;

namespace {

MasterDescription describeDoctors() {
    using enum MasterField::Kind;
    return {MasterKind::Doctor,
            u"医師"_s,
            u"frmMainteIshi02"_s,
            u"frmInputIshi02"_s,
            u"IDNo.を入力してください。"_s,
            u"医師名を入力してください。"_s,
            u"該当の医師データが取得できませんでした。"_s,
            u"cIDNo"_s,
            u"cName"_s,
            u" 4"_s,
            {{u"番号"_s, u"code"_s, true},
             {u"医師名"_s, u"name"_s},
             {u"カナ"_s, u"kana"_s},
             {u"医療機関"_s, u"kikan"_s},
             {u"TEL"_s, u"tel"_s},
             {u"FAX"_s, u"fax"_s},
             {u"利用者数"_s, u"patients"_s, true},
             {u"依頼書設定"_s, u"letters"_s},
             {u"依頼方法"_s, u"irai"_s},
             {u"郵便番号"_s, u"yubin"_s},
             {u"住所"_s, u"address1"_s},
             {u"建物など"_s, u"address2"_s},
             {u"メール"_s, u"mail"_s}},
            {{u"IDNo."_s, u"cIDNo"_s, 10, Code},
             {u"医師コード"_s, u"cCode"_s, 20},
             {u"医師名"_s, u"cName"_s, 40},
             {u"カナ"_s, u"cNameKana"_s, 40},
             {u"医療機関マスタ"_s, u"iSisetsuCode"_s, 10, Facility, true},
             {u"医療機関"_s, u"cKikan"_s, 80},
             {u"カナ"_s, u"cKikanKana"_s, 80},
             {u"代表者"_s, u"cDaihyo"_s, 40},
             {u"カナ"_s, u"cDaihyoKana"_s, 40},
             {u"郵便番号"_s, u"cYubinNo"_s, 8, PostalCode, true},
             {u"住所"_s, u"cAddress1"_s, 80, Address, true},
             {u"建物など"_s, u"cAddress2"_s, 80, Text, true},
             {u"住所カナ"_s, u"cAddressKana"_s, 160, Text, true},
             {u"TEL"_s, u"cTelNo"_s, 20},
             {u"FAX"_s, u"cFaxNo"_s, 20},
             {u"携帯電話"_s, u"cMobNo"_s, 20},
             {u"Web"_s, u"cWeb"_s, 200},
             {u"メール1"_s, u"cMail1"_s, 100},
             {u"メール2"_s, u"cMail2"_s, 100},
             {u"同意書に医師が自筆で記入する（医師欄を印字しない）"_s, u"iHandWritingFlg"_s, 0, Tick, true}},
            {u"cName"_s, u"cKikan"_s, u"cAddress1"_s},
            u"利用者の同意医師（医師名・医療機関・住所）"_s};
}

MasterDescription describeFacilities(const QStringList &methods) {
    using enum MasterField::Kind;
    return {MasterKind::Facility,
            u"医療機関・施設"_s,
            u"frmMainteSisetsu"_s,
            u"frmInputSisetsu"_s,
            u"IDNo.を入力してください。"_s,
            u"名称を入力してください。"_s,
            u"該当の医療機関・施設データが取得できませんでした。"_s,
            u"nIDNo"_s,
            u"cShamei1"_s,
            {},
            {{u"番号"_s, u"code"_s, true},
             {u"名称"_s, u"name"_s},
             {u"カナ"_s, u"kana"_s},
             {u"種別"_s, u"kind"_s},
             {u"TEL"_s, u"tel"_s},
             {u"FAX"_s, u"fax"_s},
             {u"医師数"_s, u"doctors"_s, true},
             {u"入居者数"_s, u"patients"_s, true},
             {u"依頼方法"_s, u"irai"_s},
             {u"郵便番号"_s, u"yubin"_s},
             {u"住所"_s, u"address1"_s},
             {u"建物など"_s, u"address2"_s},
             {u"備考"_s, u"comment"_s}},
            {{u"IDNo."_s, u"nIDNo"_s, 10, Code},
             {u"種別"_s,
              u"cSisetsuType"_s,
              40,
              Suggested,
              false,
              {u"医療機関"_s, u"入居施設"_s, u"居宅介護支援"_s}},
             {u"名称"_s, u"cShamei1"_s, 80},
             {u"カナ"_s, u"cShameiKana1"_s, 80},
             {u"名称2"_s, u"cShamei2"_s, 80},
             {u"カナ"_s, u"cShameiKana2"_s, 80},
             {u"略称"_s, u"cShamei1Ryaku"_s, 80},
             {u"依頼方法"_s, u"cDouiIrai"_s, 200, Suggested, false, methods},
             {u"代表者"_s, u"cDaihyo"_s, 40},
             {u"カナ"_s, u"cDaihyoKana"_s, 40},
             {u"郵便番号"_s, u"cYubinNo"_s, 8, PostalCode, true},
             {u"住所"_s, u"cAddress1"_s, 80, Address, true},
             {u"建物など"_s, u"cAddress2"_s, 80, Text, true},
             {u"住所カナ"_s, u"cAddressKana"_s, 160, Text, true},
             {u"TEL"_s, u"cTelNo"_s, 20},
             {u"FAX"_s, u"cFaxNo"_s, 20},
             {u"備考"_s, u"cComment"_s, 400, Memo, true}},
            {u"cShamei1"_s, u"cShameiKana1"_s, u"cYubinNo"_s, u"cAddress1"_s, u"cAddress2"_s,
             u"cAddressKana"_s, u"cTelNo"_s, u"cFaxNo"_s},
            u"医師（変更前と同じ項目）・利用者・ケアマネージャー・相談員"_s};
}

} // namespace

MasterDescription describeMaster(MasterKind kind, const QStringList &methods) {
    return kind == MasterKind::Doctor ? describeDoctors() : describeFacilities(methods);
}

QString usesText(const MasterUses &uses) {
    QStringList texts;
    if (uses.doctors > 0)
        texts += u"医師 %L1 名"_s.arg(uses.doctors);
    if (uses.consents > 0)
        texts += u"同意記録 %L1 件"_s.arg(uses.consents);
    if (uses.patients > 0)
        texts += u"利用者 %L1 名"_s.arg(uses.patients);
    return texts.join(u"、");
}
