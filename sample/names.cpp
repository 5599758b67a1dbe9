#include "sample/names.h"

#include "app/base/text.h"

#include <QList>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

struct Reading {
    QString text;
    QString kana;
};

const QList<Reading> &families() {
    static const QList<Reading> list = {
        {u"佐藤"_s, u"サトウ"_s},     {u"鈴木"_s, u"スズキ"_s},     {u"高橋"_s, u"タカハシ"_s},
        {u"田中"_s, u"タナカ"_s},     {u"伊藤"_s, u"イトウ"_s},     {u"渡邊"_s, u"ワタナベ"_s},
        {u"渡辺"_s, u"ワタナベ"_s},   {u"山本"_s, u"ヤマモト"_s},   {u"中村"_s, u"ナカムラ"_s},
        {u"小林"_s, u"コバヤシ"_s},   {u"加藤"_s, u"カトウ"_s},     {u"吉田"_s, u"ヨシダ"_s},
        {u"山田"_s, u"ヤマダ"_s},     {u"佐々木"_s, u"ササキ"_s},   {u"山口"_s, u"ヤマグチ"_s},
        {u"松本"_s, u"マツモト"_s},   {u"井上"_s, u"イノウエ"_s},   {u"木村"_s, u"キムラ"_s},
        {u"林"_s, u"ハヤシ"_s},       {u"斎藤"_s, u"サイトウ"_s},   {u"齋藤"_s, u"サイトウ"_s},
        {u"清水"_s, u"シミズ"_s},     {u"山崎"_s, u"ヤマザキ"_s},   {u"森"_s, u"モリ"_s},
        {u"池田"_s, u"イケダ"_s},     {u"橋本"_s, u"ハシモト"_s},   {u"阿部"_s, u"アベ"_s},
        {u"石川"_s, u"イシカワ"_s},   {u"小川"_s, u"オガワ"_s},     {u"石井"_s, u"イシイ"_s},
        {u"後藤"_s, u"ゴトウ"_s},     {u"長谷川"_s, u"ハセガワ"_s}, {u"近藤"_s, u"コンドウ"_s},
        {u"坂本"_s, u"サカモト"_s},   {u"遠藤"_s, u"エンドウ"_s},   {u"青木"_s, u"アオキ"_s},
        {u"藤井"_s, u"フジイ"_s},     {u"西村"_s, u"ニシムラ"_s},   {u"福田"_s, u"フクダ"_s},
        {u"太田"_s, u"オオタ"_s},     {u"三浦"_s, u"ミウラ"_s},     {u"岡本"_s, u"オカモト"_s},
        {u"松田"_s, u"マツダ"_s},     {u"中島"_s, u"ナカジマ"_s},   {u"金子"_s, u"カネコ"_s},
        {u"藤原"_s, u"フジワラ"_s},   {u"原田"_s, u"ハラダ"_s},     {u"和田"_s, u"ワダ"_s},
        {u"竹内"_s, u"タケウチ"_s},   {u"小野"_s, u"オノ"_s},       {u"中山"_s, u"ナカヤマ"_s},
        {u"石田"_s, u"イシダ"_s},     {u"上田"_s, u"ウエダ"_s},     {u"森田"_s, u"モリタ"_s},
        {u"原"_s, u"ハラ"_s},         {u"柴田"_s, u"シバタ"_s},     {u"酒井"_s, u"サカイ"_s},
        {u"宮本"_s, u"ミヤモト"_s},   {u"横山"_s, u"ヨコヤマ"_s},   {u"勅使河原"_s, u"テシガワラ"_s},
        {u"小鳥遊"_s, u"タカナシ"_s}, {u"五十嵐"_s, u"イガラシ"_s}, {u"菅原"_s, u"スガワラ"_s},
    };
    return list;
}

const QList<Reading> &oldForms() {
    static const QList<Reading> list = {
        {u"髙橋"_s, u"タカハシ"_s}, {u"髙田"_s, u"タカダ"_s},   {u"髙木"_s, u"タカギ"_s},
        {u"山﨑"_s, u"ヤマザキ"_s}, {u"宮﨑"_s, u"ミヤザキ"_s}, {u"岩﨑"_s, u"イワサキ"_s},
        {u"𠮷田"_s, u"ヨシダ"_s},   {u"𠮷野"_s, u"ヨシノ"_s},   {u"濵田"_s, u"ハマダ"_s},
    };
    return list;
}

const QList<Reading> &givenNames(Sex sex, bool elder) {
    static const QList<Reading> elderMen = {
        {u"清"_s, u"キヨシ"_s},     {u"正雄"_s, u"マサオ"_s},     {u"茂"_s, u"シゲル"_s},
        {u"一郎"_s, u"イチロウ"_s}, {u"勇"_s, u"イサム"_s},       {u"実"_s, u"ミノル"_s},
        {u"昭二"_s, u"ショウジ"_s}, {u"義雄"_s, u"ヨシオ"_s},     {u"武"_s, u"タケシ"_s},
        {u"三郎"_s, u"サブロウ"_s}, {u"弘"_s, u"ヒロシ"_s},       {u"進"_s, u"ススム"_s},
        {u"忠雄"_s, u"タダオ"_s},   {u"八十吉"_s, u"ヤソキチ"_s}, {u"久"_s, u"ヒサシ"_s},
    };
    static const QList<Reading> elderWomen = {
        {u"和子"_s, u"カズコ"_s}, {u"幸子"_s, u"サチコ"_s},   {u"節子"_s, u"セツコ"_s},
        {u"ハナ"_s, u"ハナ"_s},   {u"キヨ"_s, u"キヨ"_s},     {u"トメ"_s, u"トメ"_s},
        {u"文子"_s, u"フミコ"_s}, {u"千代"_s, u"チヨ"_s},     {u"美代子"_s, u"ミヨコ"_s},
        {u"房江"_s, u"フサエ"_s}, {u"よし江"_s, u"ヨシエ"_s}, {u"静枝"_s, u"シズエ"_s},
        {u"貞子"_s, u"サダコ"_s}, {u"久子"_s, u"ヒサコ"_s},   {u"ミツ"_s, u"ミツ"_s},
    };
    static const QList<Reading> men = {
        {u"誠"_s, u"マコト"_s},     {u"隆"_s, u"タカシ"_s},   {u"健一"_s, u"ケンイチ"_s},
        {u"和彦"_s, u"カズヒコ"_s}, {u"浩二"_s, u"コウジ"_s}, {u"学"_s, u"マナブ"_s},
        {u"大輔"_s, u"ダイスケ"_s}, {u"直樹"_s, u"ナオキ"_s}, {u"哲也"_s, u"テツヤ"_s},
        {u"修"_s, u"オサム"_s},     {u"剛"_s, u"ツヨシ"_s},   {u"翔太"_s, u"ショウタ"_s},
    };
    static const QList<Reading> women = {
        {u"恵子"_s, u"ケイコ"_s}, {u"由美子"_s, u"ユミコ"_s}, {u"真由美"_s, u"マユミ"_s},
        {u"智子"_s, u"トモコ"_s}, {u"裕子"_s, u"ユウコ"_s},   {u"香織"_s, u"カオリ"_s},
        {u"陽子"_s, u"ヨウコ"_s}, {u"さくら"_s, u"サクラ"_s}, {u"美穂"_s, u"ミホ"_s},
        {u"奈緒"_s, u"ナオ"_s},   {u"典子"_s, u"ノリコ"_s},   {u"明美"_s, u"アケミ"_s},
    };
    if (sex == Sex::Man)
        return elder ? elderMen : men;
    return elder ? elderWomen : women;
}

QString hiragana(const QString &katakana) {
    constexpr char16_t distance = u'ァ' - u'ぁ';
    QString text = katakana;
    for (QChar &c : text)
        if (c >= u'ァ' && c <= u'ヶ')
            c = QChar(c.unicode() - distance);
    return text;
}

} // namespace

PersonName makeName(Random &random, Sex sex, int birthYear) {
    const Reading &family = random.below(12) == 0 ? random.pick(oldForms()) : random.pick(families());
    const Reading &given = random.pick(givenNames(sex, birthYear < 1950));
    return {family.text + u'　' + given.text, family.kana + u'　' + given.kana, family.text};
}

const QList<Town> &sampleTowns() {
    static const QList<Town> towns = {
        {u"9921010"_s, u"若葉市"_s, u"中央"_s, u"ﾜｶﾊﾞｼ"_s, u"ﾁｭｳｵｳ"_s},
        {u"9921110"_s, u"若葉市"_s, u"桜台"_s, u"ﾜｶﾊﾞｼ"_s, u"ｻｸﾗﾀﾞｲ"_s},
        {u"9921210"_s, u"若葉市"_s, u"緑が丘"_s, u"ﾜｶﾊﾞｼ"_s, u"ﾐﾄﾞﾘｶﾞｵｶ"_s},
        {u"9922010"_s, u"美浜市"_s, u"港町"_s, u"ﾐﾊﾏｼ"_s, u"ﾐﾅﾄﾏﾁ"_s},
        {u"9922110"_s, u"美浜市"_s, u"本町"_s, u"ﾐﾊﾏｼ"_s, u"ﾎﾝﾏﾁ"_s},
        {u"9922210"_s, u"美浜市"_s, u"字大字上ノ原"_s, u"ﾐﾊﾏｼ"_s, u"ｱｻﾞｵｵｱｻﾞｳｴﾉﾊﾗ"_s},
        {u"9923010"_s, u"南青葉郡川辺町"_s, u"東"_s, u"ﾐﾅﾐｱｵﾊﾞｸﾞﾝｶﾜﾍﾞﾏﾁ"_s, u"ﾋｶﾞｼ"_s},
        {u"9923110"_s, u"南青葉郡杉野村"_s, u"大字下杉野"_s, u"ﾐﾅﾐｱｵﾊﾞｸﾞﾝｽｷﾞﾉﾑﾗ"_s, u"ｵｵｱｻﾞｼﾓｽｷﾞﾉ"_s},
    };
    return towns;
}

Place makePlace(Random &random) {
    static const QList<QString> buildings = {u"コーポひまわり"_s, u"メゾン桜台"_s, u"県営若葉団地３号棟"_s,
                                             u"グリーンハイツ緑が丘"_s, u"第二青空荘"_s};
    const Town &town = random.pick(sampleTowns());
    Place place;
    place.postcode = town.code.first(3) + u'-' + town.code.mid(3);
    place.line1 = u"緑川県%1%2丁目%3－%4"_s.arg(town.city + town.name,
                                                toFullWidth(QString::number(random.between(1, 8))),
                                                toFullWidth(QString::number(random.between(1, 30))),
                                                toFullWidth(QString::number(random.between(1, 25))));
    if (random.percent(25))
        place.line2 =
            random.pick(buildings) + toFullWidth(QString::number(random.between(101, 508))) + u"号室"_s;
    return place;
}

QString makeTelephone(Random &random) {
    return u"0999-%1-%2"_s.arg(random.between(20, 99)).arg(random.between(0, 9999), 4, 10, QChar(u'0'));
}

QString kanaOfSomeKind(Random &random, const QString &katakana) {
    const int kind = random.below(20);
    if (kind == 0)
        return toHalfWidth(katakana);
    return kind == 1 ? hiragana(katakana) : katakana;
}

} // namespace sample
