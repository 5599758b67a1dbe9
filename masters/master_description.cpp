#include "masters/master_description.h"

#include "app/base/profile_text.h"
#include "app/base/settings.h"
#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

namespace {

MasterDescription describeDoctors() {
    using enum MasterField::Kind;
    return {MasterKind::Doctor,
            {},
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
            {},
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

MasterDescription describePatients(const Branch &branch) {
    using enum MasterField::Kind;
    const QString riyousha = u"RIYOUSHA"_s;
    return {MasterKind::Patient,
            branch,
            u"利用者"_s,
            u"frmMainteRiyousha"_s,
            u"frmInputRiyousha"_s,
            u"IDNo.を入力してください。"_s,
            u"利用者名を入力してください。"_s,
            u"該当の利用者データが取得できませんでした。"_s,
            u"nIDNo"_s,
            u"cName"_s,
            {},
            {{u"番号"_s, u"code"_s, true},
             {u"利用者名"_s, u"name"_s},
             {u"カナ"_s, u"kana"_s},
             {u"生年月日"_s, u"birthday"_s},
             {u"区分"_s, u"kind"_s},
             {u"同意医師"_s, u"doctor"_s},
             {u"主担当"_s, u"staff"_s},
             {u"入居施設"_s, u"facility"_s},
             {u"相談員"_s, u"counsellor"_s},
             {u"TEL"_s, u"tel"_s},
             {u"郵便番号"_s, u"yubin"_s},
             {u"住所"_s, u"address1"_s},
             {u"建物など"_s, u"address2"_s},
             {u"施術終了日"_s, u"ended"_s}},
            {{u"IDNo."_s, u"nIDNo"_s, 10, Code},
             {u"区分"_s, u"iSejutsuKubun"_s, 5, Choice, false, {u"0 マッサージ"_s, u"1 はり・きゅう"_s}},
             {u"利用者名"_s, u"cName"_s, 40},
             {u"カナ"_s, u"cNameKana"_s, 40},
             {u"生年月日"_s, u"tBirthday"_s, 10, Date, false, {}, riyousha},
             {u"性別"_s, u"iSexKubun"_s, 5, Choice, false, {u"1 男"_s, u"2 女"_s}},
             {u"続柄"_s, u"cZokugara"_s, 10, Suggested, false, {u"本人"_s, u"家族"_s}, riyousha},
             {u"略称"_s, u"cNameRyaku"_s, 40},
             {u"郵便番号"_s, u"cYubinNo"_s, 8, PostalCode, true},
             {u"住所"_s, u"cAdress1"_s, 80, Address, true},
             {u"建物など"_s, u"cAdress2"_s, 80},
             {u"TEL"_s, u"cTelNo"_s, 20},
             {u"保険者"_s, u"cHokenNo"_s, 8, Insurer},
             {u"記号番号"_s, u"cHokenKigouNo"_s, 40},
             {u"同意医師"_s, u"nDouiIsiCd"_s, 10, Doctor},
             {u"入居施設"_s, u"iAddressSisetsuCd"_s, 10, Home},
             {u"主担当"_s, u"nTantou"_s, 10, Staff},
             {u"担当2"_s, u"nTantou2"_s, 10, Staff},
             {u"担当3"_s, u"nTantou3"_s, 10, Staff},
             {u"相談員"_s, u"iSoudaninId"_s, 10, Counsellor},
             {u"初療日"_s, u"tSyoryoDay"_s, 10, Date},
             {u"発病年月日"_s, u"tHatsubyou"_s, 10, Date, false, {}, riyousha},
             {u"施術終了日"_s, u"tExpireDay"_s, 10, Date},
             {u"転帰（番号）"_s, u"iTenki"_s, 5, Number},
             {u"往療"_s, u"iOuryouUmu"_s, 5, Choice, false, {u"1 必要"_s, u"0 不要"_s}, riyousha},
             {u"要介護度"_s,
              u"iKaigodo"_s,
              5,
              Choice,
              false,
              {u"1 要支援1"_s, u"2 要支援2"_s, u"3 要介護1"_s, u"4 要介護2"_s, u"5 要介護3"_s, u"6 要介護4"_s,
               u"7 要介護5"_s},
              riyousha},
             {u"往療理由1（独歩での外出が困難）"_s, u"iOuryouRiyuu1"_s, 0, Tick, false, {}, riyousha},
             {u"往療理由2（認知症、視覚障害など）"_s, u"iOuryouRiyuu2"_s, 0, Tick, false, {}, riyousha},
             {u"往療理由3（その他）"_s, u"iOuryouRiyuu3"_s, 0, Tick, false, {}, riyousha},
             {u"往療理由その他"_s, u"cOuryouRiyuuSonota"_s, 100, Text, false, {}, riyousha},
             {u"歩行状況（番号）"_s, u"iHokouType"_s, 5, Number, false, {}, riyousha},
             {u"標準の傷病名"_s, u"cDouiByoumei1"_s, 200}},
            {},
            {},
            {{u"iSejutsuKubun"_s, u"0"_s}}};
}

MasterDescription describeCounsellors(const Branch &branch) {
    using enum MasterField::Kind;
    return {MasterKind::Counsellor,
            branch,
            u"相談員"_s,
            u"frmMainteSoudan"_s,
            u"frmInputSoudan"_s,
            u"IDNo.を入力してください。"_s,
            u"相談員名を入力してください。"_s,
            u"該当の相談員データが取得できませんでした。"_s,
            u"nIDNo"_s,
            u"cName"_s,
            {},
            {{u"番号"_s, u"code"_s, true},
             {u"相談員名"_s, u"name"_s},
             {u"カナ"_s, u"kana"_s},
             {u"所属"_s, u"facility"_s},
             {u"TEL"_s, u"tel"_s},
             {u"FAX"_s, u"fax"_s},
             {u"携帯電話"_s, u"mobile"_s},
             {u"メール"_s, u"mail"_s},
             {u"状態"_s, u"state"_s}},
            {{u"IDNo."_s, u"nIDNo"_s, 10, Code},
             {u"休止中"_s, u"iChusiFlg"_s, 0, Tick},
             {u"相談員名"_s, u"cName"_s, 40},
             {u"カナ"_s, u"cNameKana"_s, 40},
             {u"所属"_s, u"nSisetsuCode"_s, 10, Facility, true},
             {u"郵便番号"_s, u"cYubinNo"_s, 8, PostalCode, true},
             {u"住所"_s, u"cAdress1"_s, 80, Address, true},
             {u"建物など"_s, u"cAdress2"_s, 80, Text, true},
             {u"TEL"_s, u"cTelNo"_s, 20},
             {u"FAX"_s, u"cFaxNo"_s, 20},
             {u"携帯電話"_s, u"cMobNo"_s, 20},
             {u"メール1"_s, u"cMail1"_s, 100},
             {u"メール2"_s, u"cMail2"_s, 100}},
            {},
            {}};
}

MasterDescription describeStaff(const Branch &branch) {
    using enum MasterField::Kind;
    return {MasterKind::Staff,
            branch,
            u"施術者"_s,
            u"frmMainteStaff"_s,
            u"frmInputStaff"_s,
            u"IDNo.を入力してください。"_s,
            u"施術者名を入力してください。"_s,
            u"該当の施術者データが取得できませんでした。"_s,
            u"nIDNo"_s,
            u"cName"_s,
            {},
            {{u"番号"_s, u"code"_s, true},
             {u"施術者名"_s, u"name"_s},
             {u"カナ"_s, u"kana"_s},
             {u"資格"_s, u"licence"_s},
             {u"TEL"_s, u"tel"_s},
             {u"携帯電話"_s, u"mobile"_s},
             {u"メール"_s, u"mail"_s},
             {u"状態"_s, u"state"_s}},
            {{u"IDNo."_s, u"nIDNo"_s, 10, Code},
             {u"休止中"_s, u"iChusiFlg"_s, 0, Tick},
             {u"施術者名"_s, u"cName"_s, 40},
             {u"カナ"_s, u"cNameKana"_s, 40},
             {u"略称"_s, u"cNameRyaku"_s, 40},
             {u"資格"_s, u"cSikaku"_s, 60},
             {u"登録番号"_s, u"cTourokuNo"_s, 20},
             {u"TEL"_s, u"cTelNo"_s, 20},
             {u"携帯電話"_s, u"cMobNo"_s, 20},
             {u"メール"_s, u"cEmail"_s, 100}},
            {},
            {}};
}

} // namespace

MasterDescription describeMaster(MasterKind kind, const Branch &branch, const QStringList &methods) {
    switch (kind) {
    case MasterKind::Doctor:
        return describeDoctors();
    case MasterKind::Facility:
        return describeFacilities(methods);
    case MasterKind::Patient:
        return describePatients(branch);
    case MasterKind::Counsellor:
        return describeCounsellors(branch);
    case MasterKind::Staff:
        break;
    }
    return describeStaff(branch);
}

bool isKeptHere(MasterKind kind, const Folders &folders, const cT_ADODB &db) {
    if (kind == MasterKind::Doctor || kind == MasterKind::Facility)
        return true;
    const QString said = Settings(folders).text(Setting::利用者登録);
    return said.isEmpty() ? db.dialect() != SqlDialect::SqlServer : profile::number(said) != 0;
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

// A consent without its patient would be in no list, and on no paper.
QString whyKept(const MasterDescription &description, const QString &name, const MasterUses &uses) {
    if (description.kind != MasterKind::Patient || uses.consents == 0)
        return {};
    return u"利用者「%1」には同意記録が %L2 "
           u"件あるため、削除できません。\r\n施術を終えた利用者は、施術終了日を入力すると"
           "一覧に出なくなります。"_s.arg(name)
               .arg(uses.consents);
}
