#include "import/import_kind.h"

#include "db/tables/keys.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

using F = ImportField;

// Fields that several kinds have.

F number(const QString &column, const QString &headings) {
    return {u"番号"_s, column, F::Number, 10, u"IDNo|ID|No|コード|CD|"_s + headings, u"|"_s};
}

F name(const QString &column, int bytes, const QString &headings, const QString &example) {
    return {u"氏名"_s, column, F::Name, bytes, u"名前|お名前|漢字氏名|氏名漢字|name|"_s + headings, example};
}

F kana(const QString &column, int bytes, const QString &headings, const QString &example) {
    return {u"カナ"_s,
            column,
            F::Kana,
            bytes,
            u"フリガナ|氏名カナ|カナ氏名|氏名フリガナ|名前カナ|ヨミ|よみがな|読み|kana|"_s + headings,
            example};
}

F part(const QString &caption, const F &whole, const QString &headings) {
    F field{caption, whole.column, whole.kind, whole.bytes, headings};
    field.part = true;
    return field;
}

void addNames(std::vector<F> &fields, const QString &noun, const QString &example,
              const QString &kanaExample) {
    fields.push_back(name(u"cName"_s, 40, u"%1名|%1氏名|%1"_s.arg(noun), example));
    fields.push_back(part(u"姓"_s, fields.back(), u"氏|苗字|名字|姓漢字|氏漢字"_s));
    fields.push_back(part(u"名"_s, *(fields.end() - 2), u"名漢字|下の名前"_s));
    fields.push_back(
        kana(u"cNameKana"_s, 40, u"%1名カナ|%1カナ|%1名フリガナ|%1フリガナ"_s.arg(noun), kanaExample));
    fields.push_back(part(u"セイ"_s, fields.back(), u"姓カナ|姓フリガナ|氏カナ"_s));
    fields.push_back(part(u"メイ"_s, *(fields.end() - 2), u"名カナ|名フリガナ"_s));
}

/// @param spelling of the columns' names: Address, or Adress in the older tables
void addAddress(std::vector<F> &fields, const QString &spelling) {
    fields.push_back(
        {u"郵便番号"_s, u"cYubinNo"_s, F::Typed, 8, u"〒|郵便|郵便番号1|zip"_s, u"992-1010|992-1011"_s});
    fields.push_back({u"住所"_s, u"c"_s + spelling + u"1"_s, F::Text, 80, u"住所1|現住所|自宅住所|所在地"_s,
                      u"緑川県若葉市中央1-2-3|緑川県若葉市本町4-5"_s});
    for (const auto &[caption, headings] :
         {std::pair(u"都道府県"_s, u"住所都道府県"_s), std::pair(u"市区町村"_s, u"市町村|住所市区町村"_s),
          std::pair(u"町名番地"_s, u"番地|町域|町名・番地"_s)})
        fields.push_back(
            part(caption, *std::ranges::find(fields, u"c"_s + spelling + u"1"_s, &F::column), headings));
    fields.push_back({u"建物など"_s, u"c"_s + spelling + u"2"_s, F::Text, 80,
                      u"住所2|建物|建物名|方書|マンション名"_s, u"|若葉ハイツ101"_s});
}

void addTelephones(std::vector<F> &fields, bool mobile) {
    fields.push_back({u"電話"_s, u"cTelNo"_s, F::Typed, 20,
                      u"TEL|電話番号|自宅電話|電話1|連絡先|連絡先電話番号"_s,
                      u"0999-00-0001|0999-00-0002"_s});
    fields.push_back({u"FAX"_s, u"cFaxNo"_s, F::Typed, 20, u"FAX番号|ファックス|ファクス"_s});
    if (mobile)
        fields.push_back({u"携帯電話"_s, u"cMobNo"_s, F::Typed, 20, u"携帯|携帯番号|携帯電話番号|電話2"_s});
}

F reference(const QString &caption, const QString &column, ImportKind target, const QString &headings,
            std::vector<FollowingColumn> follows = {}) {
    F field{caption, column, F::Reference, 0, headings};
    field.target = target;
    field.follows = std::move(follows);
    return field;
}

F suspended(const QString &headings) {
    F field{u"停止"_s, u"iChusiFlg"_s, F::Choice, 0, u"中止|退職|休止|"_s + headings};
    field.choices = {{0, u"いいえ|0|在職|×|有効"_s}, {1, u"はい|1|○|停止|退職|休止|中止"_s}};
    return field;
}

F sex() {
    F field{u"性別"_s, u"iSexKubun"_s, F::Choice, 0, u"男女"_s, u"女|男"_s};
    field.choices = {{1, u"男|男性|M|1|♂"_s}, {2, u"女|女性|F|2|♀"_s}};
    return field;
}

F reason() {
    return {u"取り込めない理由"_s, {}, F::Reason};
}

// The kinds.

ImportDescription facilities() {
    ImportDescription it{
        ImportKind::Facilities, u"医療機関・施設"_s, u"SISETSU"_s, u"nIDNo"_s, false, {}, true, {}};
    it.fields = {number(u"nIDNo"_s, u"施設番号|施設コード|医療機関番号|医療機関コード"_s),
                 name(u"cShamei1"_s, 80, u"名称|施設名|医療機関名|病院名|事業所名|医療機関|施設|名称1"_s,
                      u"若葉病院|緑の里"_s),
                 kana(u"cShameiKana1"_s, 80, u"名称カナ|施設名カナ|医療機関名カナ"_s,
                      u"ワカバビョウイン|ミドリノサト"_s),
                 {u"名称2"_s, u"cShamei2"_s, F::Text, 80, u"診療科|部署"_s},
                 {u"略称"_s, u"cShamei1Ryaku"_s, F::Text, 80, u"略名"_s},
                 {u"種別"_s, u"cSisetsuType"_s, F::Text, 40, u"種類|区分|施設種別"_s, u"医療機関|入居施設"_s},
                 {u"代表者"_s, u"cDaihyo"_s, F::Text, 40, u"代表者名|院長|施設長"_s},
                 {u"代表者カナ"_s, u"cDaihyoKana"_s, F::Text, 40}};
    addAddress(it.fields, u"Address"_s);
    it.fields.push_back({u"住所カナ"_s, u"cAddressKana"_s, F::Text, 160, u"住所フリガナ"_s});
    addTelephones(it.fields, false);
    it.fields.push_back({u"依頼方法"_s, u"cDouiIrai"_s, F::Text, 200, u"同意依頼方法"_s});
    it.fields.push_back({u"備考"_s, u"cComment"_s, F::Memo, 400, u"メモ|コメント"_s});
    return it;
}

ImportDescription doctors() {
    ImportDescription it{ImportKind::Doctors, u"医師"_s, u"DOCTOR"_s, u"cIDNo"_s, false,
                         u"cKikan"_s,         false,     {}};
    it.fields = {number(u"cIDNo"_s, u"医師番号|医師ID|医師No"_s)};
    addNames(it.fields, u"医師"_s, u"三浦　一|森　花子"_s, u"ミウラ　ハジメ|モリ　ハナコ"_s);
    F institution = reference(u"医療機関"_s, u"iSisetsuCode"_s, ImportKind::Facilities,
                              u"医療機関名|病院|病院名|施設|施設名|勤務先|所属"_s,
                              {{u"cKikan"_s, u"cShamei1"_s}, {u"cKikanKana"_s, u"cShameiKana1"_s}});
    institution.nameColumn = u"cKikan"_s;
    institution.bytes = 80;
    institution.example = u"若葉病院|本町医院"_s;
    it.fields.push_back(institution);
    it.fields.push_back({u"医師コード"_s, u"cCode"_s, F::Typed, 20, u"保険医番号"_s});
    it.fields.push_back({u"代表者"_s, u"cDaihyo"_s, F::Text, 40, u"院長"_s});
    addAddress(it.fields, u"Address"_s);
    addTelephones(it.fields, true);
    it.fields.push_back(
        {u"メール1"_s, u"cMail1"_s, F::Typed, 100, u"メール|メールアドレス|Eメール|E-mail|mail"_s});
    it.fields.push_back({u"メール2"_s, u"cMail2"_s, F::Typed, 100});
    it.fields.push_back({u"Web"_s, u"cWeb"_s, F::Typed, 200, u"URL|ホームページ"_s});
    return it;
}

ImportDescription staff() {
    ImportDescription it{ImportKind::Staff, u"施術者"_s, u"STAFF"_s, u"nIDNo"_s, true,
                         u"sBirthday"_s,    true,        {}};
    it.fields = {number(u"nIDNo"_s, u"施術者番号|職員番号|スタッフ番号|社員番号"_s)};
    addNames(it.fields, u"施術者"_s, u"高橋　健|中村　葵"_s, u"タカハシ　ケン|ナカムラ　アオイ"_s);
    it.fields.front().headings += u"|職員番号"_s;
    it.fields[1].headings += u"|職員名|職員氏名|スタッフ名|担当者名"_s;
    it.fields.push_back({u"略称"_s, u"cNameRyaku"_s, F::Text, 40, u"略名"_s});
    it.fields.push_back(sex());
    it.fields.push_back({u"生年月日"_s, u"sBirthday"_s, F::Date, 0, u"誕生日"_s});
    addAddress(it.fields, u"Adress"_s);
    addTelephones(it.fields, true);
    it.fields.push_back({u"メール"_s, u"cEmail"_s, F::Typed, 100, u"メールアドレス|Eメール|E-mail|mail"_s});
    it.fields.push_back({u"資格"_s, u"cSikaku"_s, F::Text, 60, u"資格名|免許"_s,
                         u"あん摩マッサージ指圧師|はり師・きゅう師"_s});
    it.fields.push_back({u"登録番号"_s, u"cTourokuNo"_s, F::Typed, 20, u"登録記号番号|免許番号"_s});
    it.fields.push_back({u"入社日"_s, u"sNyusyaDay"_s, F::Date, 0, u"入職日|採用日"_s});
    it.fields.push_back(suspended({}));
    return it;
}

ImportDescription counsellors() {
    ImportDescription it{ImportKind::Counsellors, u"相談員"_s, u"SOUDAN"_s, u"nIDNo"_s, true,
                         u"nSisetsuCode"_s,       true,        {}};
    it.fields = {number(u"nIDNo"_s, u"相談員番号|相談員ID"_s)};
    addNames(it.fields, u"相談員"_s, u"小林　茂|加藤　恵"_s, u"コバヤシ　シゲル|カトウ　メグミ"_s);
    it.fields.push_back(reference(u"施設"_s, u"nSisetsuCode"_s, ImportKind::Facilities,
                                  u"施設名|事業所|事業所名|勤務先|所属|医療機関"_s));
    addAddress(it.fields, u"Adress"_s);
    addTelephones(it.fields, true);
    it.fields.push_back({u"メール1"_s, u"cMail1"_s, F::Typed, 100,
                         u"メール|メールアドレス|Eメール|E-mail|mail"_s,
                         u"soudan1@example.jp|soudan2@example.jp"_s});
    it.fields.push_back({u"メール2"_s, u"cMail2"_s, F::Typed, 100});
    it.fields.push_back(suspended({}));
    return it;
}

ImportDescription careManagers() {
    ImportDescription it{ImportKind::CareManagers,
                         u"ケアマネージャー"_s,
                         u"CAREMANE"_s,
                         u"nIDNo"_s,
                         false,
                         u"nSisetsuCode"_s,
                         true,
                         {}};
    it.fields = {number(u"nIDNo"_s, u"ケアマネ番号|ケアマネージャー番号"_s)};
    addNames(it.fields, u"ケアマネージャー"_s, u"吉田　稔|山口　梓"_s, u"ヨシダ　ミノル|ヤマグチ　アズサ"_s);
    it.fields[1].headings += u"|ケアマネ|ケアマネ名|ケアマネジャー|介護支援専門員"_s;
    it.fields.push_back(sex());
    it.fields.back().example.clear();
    it.fields.push_back({u"生年月日"_s, u"sBirthday"_s, F::Date, 0, u"誕生日"_s});
    it.fields.push_back(
        reference(u"施設"_s, u"nSisetsuCode"_s, ImportKind::Facilities, u"施設名|勤務先|所属"_s));
    it.fields.push_back(reference(u"事業所"_s, u"iJigyosyoCode"_s, ImportKind::Facilities,
                                  u"事業所名|居宅介護支援事業所|居宅"_s));
    addAddress(it.fields, u"Adress"_s);
    addTelephones(it.fields, true);
    it.fields.push_back({u"メール"_s, u"cMail"_s, F::Typed, 100, u"メールアドレス|Eメール|E-mail|mail"_s});
    it.fields.push_back(suspended({}));
    return it;
}

F inSub(F field) {
    field.inSub = true;
    return field;
}

ImportDescription patients() {
    ImportDescription it{
        ImportKind::Patients, u"利用者"_s, u"RIYOUSHA"_s, u"nIDNo"_s, true, u"tBirthday"_s, false, {}};
    it.fields = {number(
        u"nIDNo"_s,
        u"利用者番号|利用者ID|利用者No|利用者コード|患者番号|患者ID|患者No|患者コード|カルテ番号|カルテNo"_s)};
    addNames(it.fields, u"利用者"_s, u"山田　花子|佐藤　太郎"_s, u"ヤマダ　ハナコ|サトウ　タロウ"_s);
    it.fields[1].headings += u"|患者名|患者氏名|患者"_s;
    it.fields[4].headings += u"|患者名カナ|患者カナ|患者名フリガナ|患者フリガナ"_s;
    it.fields.push_back(
        {u"生年月日"_s, u"tBirthday"_s, F::Date, 0, u"誕生日|生年"_s, u"昭和20年1月2日|1938/11/03"_s});
    it.fields.push_back(sex());
    addAddress(it.fields, u"Adress"_s);
    it.fields.push_back({u"電話"_s, u"cTelNo"_s, F::Typed, 20,
                         u"TEL|電話番号|自宅電話|電話1|連絡先|連絡先電話番号"_s,
                         u"0999-00-0001|0999-00-0002"_s});
    F treatment{u"施術"_s,           u"iSejutsuKubun"_s, F::Choice, 0, u"施術区分|施術種別|施術内容"_s,
                u"マッサージ|鍼灸"_s};
    treatment.choices = {{0, u"マッサージ|マッサ|あんま|あん摩|あんまマッサージ|0"_s},
                         {1, u"鍼灸|はりきゅう|はり・きゅう|はり|きゅう|針灸|1"_s}};
    it.fields.push_back(treatment);
    it.fields.push_back(
        {u"初療日"_s, u"tSyoryoDay"_s, F::Date, 0, u"初診日|施術開始日|開始日|利用開始日"_s, u"R7.4.1|"_s});
    it.fields.push_back({u"発病日"_s, u"tHatsubyou"_s, F::Date, 0, u"発症日|発病年月日|負傷日"_s});
    it.fields.push_back({u"終了日"_s, u"tExpireDay"_s, F::Date, 0, u"施術終了日|契約終了日|利用終了日"_s});
    F degree{u"要介護度"_s, u"iKaigodo"_s, F::Choice, 0, u"介護度|要介護"_s, u"要介護3|"_s};
    degree.choices = {{0, u"なし|自立|非該当"_s},  {1, u"要支援1|支援1|支1"_s}, {2, u"要支援2|支援2|支2"_s},
                      {3, u"要介護1|介護1|介1"_s}, {4, u"要介護2|介護2|介2"_s}, {5, u"要介護3|介護3|介3"_s},
                      {6, u"要介護4|介護4|介4"_s}, {7, u"要介護5|介護5|介5"_s}};
    it.fields.push_back(degree);
    it.fields.push_back({u"続柄"_s, u"cZokugara"_s, F::Text, 10, u"本人家族"_s});
    it.fields.push_back(reference(u"担当"_s, u"nTantou"_s, ImportKind::Staff,
                                  u"担当者|施術者|担当施術者|主担当|担当者名|施術者名"_s));
    for (int i = 2; i <= mostPractitioners; ++i)
        it.fields.push_back(reference(u"担当%1"_s.arg(i), u"nTantou%1"_s.arg(i), ImportKind::Staff,
                                      u"担当者%1|施術者%1|副担当%1"_s.arg(i)));
    it.fields.push_back(reference(u"医師"_s, u"nDouiIsiCd"_s, ImportKind::Doctors,
                                  u"同意医師|主治医|医師名|かかりつけ医|同意医"_s,
                                  {{u"cDouiIsiName1"_s, u"cName"_s},
                                   {u"cDouiIsiKikan1"_s, u"cKikan"_s},
                                   {u"cDouiIsiAdd1"_s, u"cAddress1"_s},
                                   {u"iSisetsuCode"_s, u"iSisetsuCode"_s}}));
    it.fields.push_back(inSub(
        reference(u"病院"_s, u"iSisetsuCode"_s, ImportKind::Facilities, u"医療機関|病院名|医療機関名"_s)));
    it.fields.push_back(inSub(reference(u"施設"_s, u"iAddressSisetsuCd"_s, ImportKind::Facilities,
                                        u"入居施設|施設名|入所施設|入居先"_s,
                                        {{u"nSisetsuCd"_s, u"nIDNo"_s},
                                         {u"cSisetsuName"_s, u"cShamei1"_s},
                                         {u"cSisetsuAddress"_s, u"cAddress1+cAddress2"_s}})));
    it.fields.push_back(reference(u"ケアマネージャー"_s, u"nCareManeCd"_s, ImportKind::CareManagers,
                                  u"ケアマネ|ケアマネジャー|介護支援専門員|担当ケアマネ|ケアマネ名"_s,
                                  {{u"cCareManeName"_s, u"cName"_s}}));
    it.fields.push_back(
        inSub(reference(u"相談員"_s, u"iSoudaninId"_s, ImportKind::Counsellors, u"相談員名|担当相談員"_s)));
    it.fields.push_back({u"保険者番号"_s, u"cHokenNo"_s, F::Typed, 8, u"保険者No"_s});
    it.fields.push_back({u"保険者名"_s, u"cHokenJName"_s, F::Text, 60, u"保険者"_s});
    it.fields.push_back(
        {u"記号番号"_s, u"cHokenKigouNo"_s, F::Typed, 40, u"被保険者記号番号|保険証記号番号|記号・番号"_s});
    it.fields.push_back(
        {u"介護保険番号"_s, u"cKaigoHokenNo"_s, F::Typed, 10, u"介護被保険者番号|介護保険被保険者番号"_s});
    it.fields.push_back({u"備考"_s, u"cDouiItiranBikou"_s, F::Memo, 400, u"一覧備考|メモ|コメント"_s});
    return it;
}

ImportDescription consents() {
    ImportDescription it{ImportKind::Consents, u"同意"_s, u"RIYOUSHA_DOUI_REC"_s, {}, true, {}, false, {}};
    const auto day = [](const QString &caption, const QString &column, const QString &headings,
                        const QString &example = {}) {
        return F{caption, column, F::Date, 0, headings, example};
    };
    const auto tick = [](const QString &caption, const QString &column, const QString &headings) {
        F field{caption, column, F::Choice, 0, headings};
        field.choices = {{0, u"なし|0|×|無|いいえ|-"_s}, {1, u"あり|1|○|◯|●|✓|レ|有|はい"_s}};
        return field;
    };
    it.fields = {
        number(u"nIDNo"_s, u"利用者番号|利用者ID|利用者No|利用者コード|患者番号|患者ID|患者No|患者コード"_s),
        name(u"cName"_s, 0, u"利用者名|利用者氏名|利用者|患者名|患者氏名|患者"_s, u"山田　花子|佐藤　太郎"_s),
        kana(u"cNameKana"_s, 0, u"利用者名カナ|利用者カナ|患者名カナ|患者カナ"_s, {}),
        day(u"生年月日"_s, u"tBirthday"_s, u"誕生日"_s, u"昭和20年1月2日|1938/11/03"_s),
        day(u"同意日"_s, u"tDouiDay"_s, u"同意年月日|同意取得日|取得日"_s, u"R8.5.20|2026/06/01"_s),
        day(u"診察日"_s, u"tShinsatsuDay"_s, u"診察年月日"_s),
        day(u"加療開始"_s, u"tDouiKaryoS"_s,
            u"要加療開始|要加療期間開始|加療期間開始|有効期間開始|期間開始|開始日|期間自"_s, u"R8.6.1|"_s),
        day(u"加療終了"_s, u"tDouiKaryoE"_s,
            u"要加療終了|要加療期間終了|加療期間終了|有効期間終了|有効期限|期間終了|終了日|期限|期間至"_s,
            u"R8.11.30|"_s)};
    F months{u"月数"_s, u"nDouiUpMonth"_s, F::Choice, 0, u"期間月数|か月|有効月数"_s};
    for (int i = 1; i <= 12; ++i)
        months.choices.push_back({i, u"%1|%1か月|%1ヶ月|%1カ月|%1ヵ月|%1月"_s.arg(i)});
    it.fields.push_back(months);
    F doctor =
        reference(u"医師"_s, u"cIsiCd"_s, ImportKind::Doctors, u"同意医師|医師名|同意医|医師番号|主治医"_s,
                  {{u"cDouiIsiName"_s, u"cName"_s},
                   {u"cDouiIsiKikan"_s, u"cKikan"_s},
                   {u"cDouiIsiAdd"_s, u"cAddress1"_s}});
    doctor.example = u"三浦　一|森　花子"_s;
    it.fields.push_back(doctor);
    it.fields.push_back({u"医療機関"_s, u"cDouiIsiKikan"_s, F::Text, 80, u"医療機関名|病院|病院名"_s});
    it.fields.push_back(
        {u"傷病名"_s, u"cDouiByoumei"_s, F::Text, 200, u"病名|診断名|疾患名"_s, u"脳梗塞後遺症|腰痛症"_s});
    F kind{u"区分"_s, u"iHenkeiFlg"_s, F::Choice, 0, u"同意区分|施術区分|種別|施術"_s};
    kind.choices = {{0, u"マッサージ|マッサ|あん摩|鍼灸|はりきゅう|通常|0"_s},
                    {1, u"変形徒手|変形徒手矯正術|変形|1"_s}};
    it.fields.push_back(kind);
    F procedure{u"同意方法"_s, u"iDouiShubetsu"_s, F::Choice, 0, u"書面口頭|手続き"_s};
    procedure.choices = {{0, u"書面|文書|同意書|0"_s}, {1, u"口頭|1"_s}};
    it.fields.push_back(procedure);
    it.fields.push_back({u"施術部位"_s, u"施術部位"_s, F::Text, 0, u"部位"_s, u"体幹、右上肢|"_s});
    it.fields.push_back(tick(u"体幹"_s, u"iSejutuBui1"_s, u"躯幹"_s));
    it.fields.push_back(tick(u"右上肢"_s, u"iSejutuBui2"_s, {}));
    it.fields.push_back(tick(u"左上肢"_s, u"iSejutuBui3"_s, {}));
    it.fields.push_back(tick(u"右下肢"_s, u"iSejutuBui4"_s, {}));
    it.fields.push_back(tick(u"左下肢"_s, u"iSejutuBui5"_s, {}));
    it.fields.push_back(tick(u"温罨法"_s, u"iOnan"_s, u"温あん法"_s));
    it.fields.push_back(tick(u"電気光線"_s, u"iDenki"_s, u"電気光線器具|電療"_s));
    it.fields.push_back(tick(u"はり"_s, u"iHKHariUmu"_s, u"鍼"_s));
    it.fields.back().example = u"|○"_s;
    it.fields.push_back(tick(u"きゅう"_s, u"iHKKyuUmu"_s, u"灸"_s));
    it.fields.push_back(tick(u"電気鍼"_s, u"iHKDekiUmu"_s, u"電気はり"_s));
    it.fields.push_back({u"一覧備考"_s, u"cItiranBikou"_s, F::Memo, 400, u"備考|メモ"_s});
    return it;
}

ImportDescription described(ImportKind kind) {
    switch (kind) {
    case ImportKind::Facilities:
        return facilities();
    case ImportKind::Doctors:
        return doctors();
    case ImportKind::Staff:
        return staff();
    case ImportKind::Counsellors:
        return counsellors();
    case ImportKind::CareManagers:
        return careManagers();
    case ImportKind::Patients:
        return patients();
    case ImportKind::Consents:
        break;
    }
    return consents();
}

} // namespace

int ImportDescription::field(QStringView column) const {
    const auto found = std::ranges::find(fields, column, &ImportField::column);
    return found == fields.end() ? -1 : int(found - fields.begin());
}

QString ImportDescription::nameColumn() const {
    return std::ranges::find(fields, ImportField::Name, &ImportField::kind)->column;
}

QString ImportDescription::kanaColumn() const {
    return std::ranges::find(fields, ImportField::Kana, &ImportField::kind)->column;
}

const ImportDescription &describeImport(ImportKind kind) {
    static const auto all = [] {
        std::array<ImportDescription, importKinds> descriptions;
        for (int i = 0; i < importKinds; ++i) {
            descriptions[size_t(i)] = described(ImportKind(i));
            descriptions[size_t(i)].fields.push_back(reason());
        }
        return descriptions;
    }();
    return all[size_t(kind)];
}
