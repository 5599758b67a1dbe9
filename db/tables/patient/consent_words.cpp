#include "db/tables/patient/consent_words.h"

#include "db/tables/patient/acupuncture_diseases.h"

#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

class Words {
public:
    Words &text(const QString &column, const QString &caption) { return add({column, caption}); }
    Words &date(const QString &column, const QString &caption) {
        return add({column, caption, ColumnKind::Date});
    }
    Words &period(const QString &first, const QString &last, const QString &caption) {
        return date(first, caption + u"の開始日"_s).date(last, caption + u"の終了日"_s);
    }
    Words &flag(const QString &column, const QString &caption,
                const QStringList &choices = {u"なし"_s, u"あり"_s}) {
        return add({column, caption, ColumnKind::Flag, choices});
    }
    Words &add(const ColumnWords &column) {
        all.push_back(column);
        return *this;
    }

    std::vector<ColumnWords> all;
};

void addConsent(Words &words) {
    words.date(u"tDouiDay"_s, u"同意日"_s)
        .date(u"tShinsatsuDay"_s, u"診察日"_s)
        .period(u"tDouiKaryoS"_s, u"tDouiKaryoE"_s, u"要加療期間"_s)
        .add({u"nDouiUpMonth"_s, u"月数"_s, ColumnKind::Months})
        .flag(u"iDouiShubetsu"_s, u"手順"_s, {u"書面"_s, u"口頭"_s})
        .flag(u"iReceptDisabledFlg"_s, u"請求に使用しない"_s)
        .add({u"cIsiCd"_s, u"医師"_s, ColumnKind::Doctor})
        .text(u"cDouiIsiName"_s, u"医師名"_s)
        .text(u"cDouiIsiKikan"_s, u"医療機関"_s)
        .text(u"cDouiIsiAdd"_s, u"所在地"_s)
        .text(u"cDouiByoumei"_s, u"傷病名"_s)
        .text(u"cByoumeiM"_s, u"マッサージの傷病名"_s)
        .text(u"cMasByoumei"_s, u"マッサージの傷病名の補足"_s)
        .text(u"cByoumeiH"_s, u"鍼灸の傷病名"_s);
}

void addListColumns(Words &words) {
    const QStringList done{u"未"_s, u"済"_s};
    words.date(u"tSaiDouiDay"_s, u"再同意日"_s)
        .date(u"tSaiDouiKaryoS"_s, u"要加療開始"_s)
        .date(u"tSaiDouiKaryoE"_s, u"要加療終了"_s)
        .flag(u"iOutputFlg"_s, u"依頼"_s, done)
        .flag(u"iGetFlg"_s, u"受領"_s, done)
        .flag(u"iRenrakuFlg"_s, u"連絡"_s)
        .flag(u"iSendFlg"_s, u"送信状況"_s, {u"未送信"_s, u"送信済"_s})
        .text(u"cItiranBikou"_s, u"備考"_s)
        .add({u"iDouiIraiType"_s, u"依頼方法"_s, ColumnKind::Method})
        .text(u"cKobetuDouiIrai"_s, u"個別依頼方法"_s)
        .flag(u"iDouiHospOutFlg"_s, u"病院選択"_s)
        .flag(u"iDouiIsiOutFlg"_s, u"医師選択"_s)
        .flag(u"iOutputFlgHenkei"_s, u"依頼（変形徒手）"_s, done)
        .flag(u"iGetFlgHenkei"_s, u"受領（変形徒手）"_s, done)
        .date(u"tDouiDayTempHenkei"_s, u"再同意日（変形徒手）"_s)
        .date(u"tDouiKaryoSTempHenkei"_s, u"要加療開始（変形徒手）"_s)
        .date(u"tDouiKaryoETempHenkei"_s, u"要加療終了（変形徒手）"_s)
        .add({u"iDouishoSaishutokuKikan"_s, u"再取得までの月数"_s, ColumnKind::Months})
        .flag(u"iNewestFlg"_s, u"最新の同意の印"_s);
}

void addTreatments(Words &words) {
    const QString parts[] = {u"躯幹"_s, u"右上肢"_s, u"左上肢"_s, u"右下肢"_s, u"左下肢"_s};
    for (int part = 0; part < 5; ++part)
        words.flag(u"iSejutuBui%1"_s.arg(part + 1), parts[part] + u"の施術"_s);
    words.flag(u"iOnan"_s, u"温罨法"_s)
        .period(u"tOnanSday"_s, u"tOnanEday"_s, u"温罨法"_s)
        .flag(u"iDenki"_s, u"電気光線器具"_s)
        .period(u"tDenkiSday"_s, u"tDenkiEday"_s, u"電気光線器具"_s)
        .period(u"tHenkeSday"_s, u"tHenKeEday"_s, u"変形徒手"_s)
        .flag(u"iHKHariUmu"_s, u"はり"_s)
        .period(u"tHKHariSday"_s, u"tHKHariEday"_s, u"はり"_s)
        .flag(u"iHKKyuUmu"_s, u"きゅう"_s)
        .period(u"tHKKyuSday"_s, u"tHKKyuEday"_s, u"きゅう"_s)
        .flag(u"iHKDekiUmu"_s, u"電気鍼"_s)
        .period(u"tHKDenkiSday"_s, u"tHKDenkiEday"_s, u"電気鍼"_s)
        .flag(u"iHKDispDenkiHariUmu"_s, u"電気鍼の印字"_s)
        .flag(u"iHKDispDenkiOnKyuUmu"_s, u"電気温灸器の印字"_s)
        .flag(u"iHKDispDenkiKousenUmu"_s, u"電気光線器具の印字"_s);
    for (size_t disease = 0; disease < acupunctureDiseaseNames.size(); ++disease)
        words.flag(u"iHKSyobyou0%1Flg"_s.arg(disease + 1), acupunctureDiseaseNames[disease].toString());
    words.flag(u"iHKSyobyou07Flg"_s, u"鍼灸のその他の傷病名"_s)
        .flag(u"iHKSyobyouChkR"_s, u"患側 右"_s)
        .flag(u"iHKSyobyouChkL"_s, u"患側 左"_s);
}

void addFindings(Words &words) {
    const std::pair<QString, QString> paralysed[] = {{u"Kukan"_s, u"躯幹"_s},
                                                     {u"Migiue"_s, u"右上肢"_s},
                                                     {u"Hidariue"_s, u"左上肢"_s},
                                                     {u"Migishita"_s, u"右下肢"_s},
                                                     {u"Hidarishita"_s, u"左下肢"_s}};
    for (const auto &[column, part] : paralysed)
        words.flag(u"iMahi"_s + column, part + u"の筋麻痺・筋萎縮"_s);
    const std::pair<QString, QString> joints[] = {{u"kata"_s, u"肩"_s},     {u"hiji"_s, u"肘"_s},
                                                  {u"tekubi"_s, u"手首"_s}, {u"kokannsetu"_s, u"股関節"_s},
                                                  {u"hiza"_s, u"膝"_s},     {u"ashikubi"_s, u"足首"_s}};
    for (const bool right : {true, false})
        for (const auto &[column, joint] : joints)
            words.flag((right ? u"iKousyukuMigi"_s : u"iKousyukuHidari"_s) + column,
                       (right ? u"右"_s : u"左"_s) + joint + u"の拘縮"_s);
    words.flag(u"iKousyukuSonota"_s, u"その他の関節の拘縮"_s)
        .text(u"cKousyukuSonotaStr"_s, u"拘縮のその他"_s)
        .text(u"cSyoujyouSonotaStr"_s, u"症状・病名のその他"_s);
}

std::vector<ColumnWords> makeWords() {
    Words words;
    addConsent(words);
    addListColumns(words);
    addTreatments(words);
    addFindings(words);
    return words.all;
}

} // namespace

std::span<const ColumnWords> consentWords() {
    static const std::vector<ColumnWords> words = makeWords();
    return words;
}

QString consentCaption(QStringView column) {
    const auto words = consentWords();
    const auto found = std::ranges::find(words, column, &ColumnWords::column);
    return found == words.end() ? QString() : found->caption;
}
