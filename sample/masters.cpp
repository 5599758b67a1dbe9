#include "sample/masters.h"

#include "app/base/text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

struct Named {
    QString name;
    QString kana;
    QString shortName;
};

const QList<Named> hospitalNames() {
    return {
        {u"医療法人社団緑風会　若葉中央病院"_s, u"ワカバチュウオウビョウイン"_s, u"若葉中央"_s},
        {u"桜台クリニック"_s, u"サクラダイクリニック"_s, u"桜台ＣＬ"_s},
        {u"髙木内科医院"_s, u"タカギナイカイイン"_s, u"髙木内科"_s},
        {u"緑が丘整形外科"_s, u"ミドリガオカセイケイゲカ"_s, u"緑が丘整形"_s},
        {u"美浜市立病院"_s, u"ミハマシリツビョウイン"_s, u"美浜市立"_s},
        {u"港町診療所"_s, u"ミナトマチシンリョウショ"_s, u"港町診療所"_s},
        {u"医療法人青空会　ほんまち在宅クリニック"_s, u"ホンマチザイタククリニック"_s, u"ほんまち在宅"_s},
        {u"山﨑脳神経外科"_s, u"ヤマザキノウシンケイゲカ"_s, u"山﨑脳外"_s},
        {u"川辺町国民健康保険診療所"_s, u"カワベチョウコクミンケンコウホケンシンリョウショ"_s, u"川辺国保"_s},
        {u"すぎの森ホームケアクリニック"_s, u"スギノモリホームケアクリニック"_s, u"すぎの森"_s},
        {u"若葉リハビリテーション病院"_s, u"ワカバリハビリテーションビョウイン"_s, u"若葉リハ"_s},
        {u"上ノ原医院"_s, u"ウエノハライイン"_s, u"上ノ原"_s},
        {u"ひかりペインクリニック"_s, u"ヒカリペインクリニック"_s, u"ひかり"_s},
        {u"南青葉総合病院"_s, u"ミナミアオバソウゴウビョウイン"_s, u"南青葉総合"_s},
        {u"𠮷野クリニック"_s, u"ヨシノクリニック"_s, u"𠮷野ＣＬ"_s},
    };
}

const QList<Named> homeNames() {
    return {
        {u"特別養護老人ホーム　若葉の里"_s, u"ワカバノサト"_s, u"若葉の里"_s},
        {u"介護付有料老人ホーム　メゾン桜台"_s, u"メゾンサクラダイ"_s, u"メゾン桜台"_s},
        {u"グループホーム　ひだまり"_s, u"ヒダマリ"_s, u"ひだまり"_s},
        {u"サービス付き高齢者向け住宅　みなと"_s, u"ミナト"_s, u"みなと"_s},
        {u"ケアハウス　はまなす"_s, u"ハマナス"_s, u"はまなす"_s},
        {u"小規模多機能　かわべの家"_s, u"カワベノイエ"_s, u"かわべの家"_s},
        {u"デイサービス　すぎのこ"_s, u"スギノコ"_s, u"すぎのこ"_s},
        {u"養護老人ホーム　緑寿園"_s, u"リョクジュエン"_s, u"緑寿園"_s},
    };
}

const QList<Named> careOfficeNames() {
    return {
        {u"若葉居宅介護支援事業所"_s, u"ワカバキョタクカイゴシエンジギョウショ"_s, u"若葉居宅"_s},
        {u"桜台ケアプランセンター"_s, u"サクラダイケアプランセンター"_s, u"桜台ケア"_s},
        {u"美浜市地域包括支援センター"_s, u"ミハマシチイキホウカツシエンセンター"_s, u"美浜包括"_s},
        {u"ケアプラン　みちしるべ"_s, u"ケアプランミチシルベ"_s, u"みちしるべ"_s},
        {u"川辺町社会福祉協議会"_s, u"カワベチョウシャカイフクシキョウギカイ"_s, u"川辺社協"_s},
        {u"すぎの介護相談室"_s, u"スギノカイゴソウダンシツ"_s, u"すぎの"_s},
    };
}

Sex anySex(Random &random) {
    return random.percent(50) ? Sex::Man : Sex::Woman;
}

/// The listed names, then the same names with a number behind, as many as asked for.
QList<Facility> makeFacilities(Random &random, Facility::Type type, const QList<Named> &names, int count,
                               int firstId) {
    static const QList<QString> methods = {
        u"用紙郵送"_s, u"ＦＡＸ"_s, u"本人持参"_s, u"訪問時に手渡し"_s, {}};
    QList<Facility> list;
    for (int i = 0; i < count; ++i) {
        const Named &named = names.at(i % names.size());
        const int round = i / static_cast<int>(names.size());
        const QString behind =
            round == 0 ? QString() : u"第%1"_s.arg(toFullWidth(QString::number(round + 1)));
        list.append({firstId + i, type, named.name + behind, named.kana, named.shortName + behind,
                     makeName(random, anySex(random), 1965), makePlace(random), makeTelephone(random),
                     type == Facility::Hospital ? random.pick(methods) : QString()});
    }
    return list;
}

/// Every eighth doctor behind the institutions' own works where the master knows no institution: visiting
/// patients from an office of his own, or from nowhere that anybody entered.
Facility workplace(const Facility &hospital, int doctor) {
    if (doctor % 8 != 0)
        return hospital;
    Facility own = hospital;
    own.id = 0;
    own.name = doctor % 16 == 0 ? u"在宅診療　まつのき"_s : QString();
    own.kana = doctor % 16 == 0 ? u"マツノキ"_s : QString();
    if (own.name.isNull())
        own.place = {};
    return own;
}

QList<Doctor> makeDoctors(Random &random, const QList<Facility> &hospitals, int count) {
    QList<Doctor> list;
    for (int i = 0; i < count; ++i) {
        // Every institution has one; the larger ones, further up in the list, more.
        const int among = i < hospitals.size() ? i : random.below(static_cast<int>(hospitals.size()) / 2);
        list.append({i + 1, makeName(random, random.percent(75) ? Sex::Man : Sex::Woman, 1968),
                     i < hospitals.size() ? hospitals.at(among) : workplace(hospitals.at(among), i + 1),
                     random.percent(10), random.percent(20)});
    }
    return list;
}

QList<Staff> makeStaff(Random &random, int count) {
    QList<Staff> list;
    for (int i = 0; i < count; ++i) {
        const Sex sex = anySex(random);
        const int year = random.between(1962, 1998);
        // The first three of a branch stay active, so that every kind of treatment has somebody.
        const bool suspended = i > 5 && random.percent(15);
        list.append({sampleBranches().at(i % 2), i / 2 + 1, makeName(random, sex, year), sex,
                     QDate(year, 1, 1).addDays(random.below(365)), makePlace(random), makeTelephone(random),
                     i % 6 > 3, suspended});
    }
    return list;
}

QList<Counsellor> makeCounsellors(Random &random, int count) {
    QList<Counsellor> list;
    for (int i = 0; i < count; ++i) {
        const QString mail = random.percent(85) ? u"soudan%1@example.jp"_s.arg(i + 1) : QString();
        list.append({sampleBranches().at(i % 2), i + 1, makeName(random, anySex(random), 1975), mail,
                     makePlace(random), makeTelephone(random), i > 3 && random.percent(15)});
    }
    return list;
}

QList<Insurer> makeInsurers() {
    return {
        {u"00990011"_s, u"若葉市国民健康保険"_s, u"ワカバシコクミンケンコウホケン"_s, 1},
        {u"00990029"_s, u"美浜市国民健康保険"_s, u"ミハマシコクミンケンコウホケン"_s, 1},
        {u"00990037"_s, u"南青葉郡川辺町国民健康保険"_s, u"カワベチョウコクミンケンコウホケン"_s, 1},
        {u"00990045"_s, u"南青葉郡杉野村国民健康保険"_s, u"スギノムラコクミンケンコウホケン"_s, 1},
        {u"01990010"_s, u"全国健康保険協会　緑川支部"_s, u"ゼンコクケンコウホケンキョウカイミドリカワシブ"_s,
         2},
        {u"06990015"_s, u"緑川県機械工業健康保険組合"_s,
         u"ミドリカワケンキカイコウギョウケンコウホケンクミアイ"_s, 2},
        {u"39991011"_s, u"緑川県後期高齢者医療広域連合（若葉市）"_s,
         u"ミドリカワケンコウキコウレイシャワカバシ"_s, 3},
        {u"39991029"_s, u"緑川県後期高齢者医療広域連合（美浜市）"_s,
         u"ミドリカワケンコウキコウレイシャミハマシ"_s, 3},
        {u"39991037"_s, u"緑川県後期高齢者医療広域連合（川辺町）"_s,
         u"ミドリカワケンコウキコウレイシャカワベチョウ"_s, 3},
        {u"39991045"_s, u"緑川県後期高齢者医療広域連合（杉野村）"_s,
         u"ミドリカワケンコウキコウレイシャスギノムラ"_s, 3},
    };
}

} // namespace

const QList<Branch> &sampleBranches() {
    static const QList<Branch> branches = {{1, 1}, {2, 1}};
    return branches;
}

Masters makeMasters(Random &random, int patients) {
    const int beyond = std::max(0, patients - 300);
    Masters masters;
    masters.hospitals =
        makeFacilities(random, Facility::Hospital, hospitalNames(), 15 + std::min(beyond / 200, 400), 1);
    masters.homes =
        makeFacilities(random, Facility::Home, homeNames(), 8 + std::min(beyond / 200, 400), 1001);
    masters.careOffices = makeFacilities(random, Facility::CareOffice, careOfficeNames(), 6, 2001);
    masters.doctors = makeDoctors(random, masters.hospitals, 25 + std::min(beyond / 100, 800));
    masters.staff = makeStaff(random, 16 + std::min(beyond / 100, 600));
    for (int i = 0; i < 12; ++i)
        masters.careManagers.append({i + 1, makeName(random, anySex(random), 1972),
                                     masters.careOffices.at(i % masters.careOffices.size()),
                                     makeTelephone(random)});
    masters.counsellors = makeCounsellors(random, 10);
    masters.insurers = makeInsurers();
    return masters;
}

} // namespace sample
