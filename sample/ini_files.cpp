#include "sample/ini_files.h"

#include "sample/names.h"

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

/// The towns in the form in which postal codes are given out; the last one goes over two lines.
setup::TextFile postalCodes() {
    const auto line = [](const QString &code, const QString &cityKana, const QString &kana,
                         const QString &city, const QString &town) {
        return uR"(99999,"992  ","%1","ﾐﾄﾞﾘｶﾜｹﾝ","%2","%3","緑川県","%4","%5",0,0,0,0,0,0)"_s.arg(
            code, cityKana, kana, city, town);
    };
    QStringList list;
    for (const Town &town : sampleTowns())
        list += line(town.code, town.cityKana, town.kana, town.city, town.name);
    list += line(u"9921000"_s, u"ﾜｶﾊﾞｼ"_s, u"ｲｶﾆｹｲｻｲｶﾞﾅｲﾊﾞｱｲ"_s, u"若葉市"_s, u"以下に掲載がない場合"_s);
    list += line(u"9921310"_s, u"ﾜｶﾊﾞｼ"_s, u"ｺｳｷﾀﾞｲ(1-5ﾁｮｳﾒ)"_s, u"若葉市"_s, u"光樹台（１～５丁目）"_s);
    list += line(u"9921320"_s, u"ﾜｶﾊﾞｼ"_s, u"ｺｳｷﾀﾞｲ(6-9ﾁｮｳﾒ､"_s, u"若葉市"_s,
                 u"光樹台（６～９丁目、１０丁目１番～"_s);
    list += line(u"9921320"_s, u"ﾜｶﾊﾞｼ"_s, u"10ﾁｮｳﾒ)"_s, u"若葉市"_s, u"２０番）"_s);
    return {setup::Place::Data, u"郵便番号/KEN_ALL.CSV"_s, setup::lines(list)};
}

} // namespace

QList<setup::TextFile> settingsFiles(const QString &connection) {
    QList<setup::TextFile> files = setup::settingsFiles(
        u"見本"_s, {u"ひなた訪問治療院"_s, u"doui@example.jp"_s}, {u"KYOTEN_CD=1"_s, u"KYOTEN_EB=1"_s});
    files.append({setup::Place::Program, u"adodb.ini"_s,
                  setup::lines({u"[接続情報]"_s, u"接続情報="_s + connection})});
    files.append(postalCodes());
    return files;
}

} // namespace sample
