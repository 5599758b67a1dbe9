#include "tests/renewal_list/renewals.h"

#include "app/base/codepage932.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// 101 everything, with a correction by the same doctor; 102 nothing but a name and what the consent noted;
/// 103 a correction by another doctor; 104 a reversed period, and treated first in the month to come;
/// 105 two rows marked newest; 106 the contract ended; 107 and 108 outcomes 3 and 2; 109 a consent without
/// an end; 110 no newest consent; 111 ended in October; 112 a correction alone. A patient 101 of another
/// branch.
const QString rows = uR"(
update SISETSU set cDouiIrai = '用紙郵送' where nIDNo = 70;
insert into STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) values (1, 1, 7, '腕　二'), (1, 2, 7, '他の拠点');
insert into SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName) values (1, 1, 31, '相談　一'), (1, 1, 32, '相談　二'),
  (1, 2, 32, '他の拠点');
insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iSejutsuKubun, tSyoryoDay, nTantou, tExpireDay,
  iTenki) values
  (1, 1, 101, '全　部', 'ﾍﾞ', 0, '2026/01/31', 7, Null, 0), (1, 2, 101, '他　拠点', 'ｱ', 0, Null, 7, Null, 0),
  (1, 1, 102, '名　だけ', Null, 1, Null, Null, Null, Null), (1, 1, 103, '別　医師', 'ヘ', 0, '2026/11/30', 6, Null, 0),
  (1, 1, 104, '逆　期間', 'ア', 0, '2026/12/01', 6, Null, 0), (1, 1, 105, '二　最新', 'オ', 0, '2025/11/01', 7, Null, 2),
  (1, 1, 106, '契約　終了', 'カ', 0, Null, 6, '2026/11/01', 0), (1, 1, 107, '転帰　三', 'カ', 0, Null, 6, Null, 3),
  (1, 1, 108, '転帰　二', 'ﾍ', 0, Null, 0, Null, 2), (1, 1, 109, '終　なし', 'カ', 0, Null, 6, Null, 0),
  (1, 1, 110, '旧　のみ', 'カ', 0, Null, 6, Null, 0), (1, 1, 111, '十月　末', 'カ', 0, Null, 6, Null, 0),
  (1, 1, 112, '変形　のみ', 'カ', 0, Null, 6, Null, 0);
insert into RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iSoudaninId) values
  (1, 1, 101, 32), (1, 1, 103, 31), (1, 1, 104, 32), (1, 1, 105, 31), (1, 1, 112, 31);
insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, iNewestFlg, tDouiDay,
  tShinsatsuDay, tDouiKaryoS, tDouiKaryoE, cIsiCd, cKobetuDouiIrai, tHenkeSday, tHenKeEday) values
  (1, 1, 101, 20260528, 0, 0, 1, '2026/05/28', '2026/05/27', '2026/06/01', '2026/11/30', '12', 'ＦＡＸ', Null, Null),
  (1, 1, 101, 20261101, 1, 20261101, 1, '2026/11/01', Null, '2026/11/01', '2026/11/15', '12', Null, '2026/11/02', '2026/11/14'),
  (1, 2, 101, 20260528, 0, 0, 1, '2026/05/28', Null, '2026/06/01', '2026/11/30', '12', Null, Null, Null),
  (1, 1, 102, 20260701, 0, 0, 1, Null, Null, Null, '2026/12/31', '99', Null, Null, Null),
  (1, 1, 103, 20260601, 0, 0, 1, Null, Null, '2026/06/01', '2026/12/10', '12', Null, Null, Null),
  (1, 1, 103, 20261101, 1, 20261101, 1, Null, Null, '2026/11/01', '2026/11/30', '13', Null, Null, Null),
  (1, 1, 104, 20260601, 0, 0, 1, Null, Null, '2027/05/01', '2026/11/20', '13', Null, Null, Null),
  (1, 1, 105, 20260601, 0, 0, 1, Null, Null, '2026/06/01', '2026/11/10', '12', Null, Null, Null),
  (1, 1, 105, 20261101, 0, 0, 1, Null, Null, '2026/11/01', '2027/04/30', '12', Null, Null, Null),
  (1, 1, 106, 20260601, 0, 0, 1, Null, Null, Null, '2026/11/30', '12', Null, Null, Null),
  (1, 1, 107, 20260601, 0, 0, 1, Null, Null, Null, '2026/11/30', '12', Null, Null, Null),
  (1, 1, 108, 20260601, 0, 0, 1, Null, Null, Null, '2026/11/01', '', Null, Null, Null),
  (1, 1, 109, 20260601, 0, 0, 1, Null, Null, '2026/06/01', Null, '12', Null, Null, Null),
  (1, 1, 110, 20260601, 0, 0, 0, Null, Null, Null, '2026/11/30', '12', Null, Null, Null),
  (1, 1, 111, 20260601, 0, 0, 1, Null, Null, Null, '2026/10/31', '12', Null, Null, Null),
  (1, 1, 112, 20260601, 0, 0, 1, Null, Null, Null, '2026/10/31', '12', Null, Null, Null),
  (1, 1, 112, 20261101, 1, 20261101, 1, Null, Null, '2026/11/01', '2026/11/21', '12', Null, Null, Null);
update RIYOUSHA_DOUI_REC set cDouiIsiName = '記録の医師', cDouiIsiKikan = '記録の医院', cDouiIsiAdd = '記録の住所',
  iDouiIraiType = 2
  where nIDNo = 102;
)"_s;

} // namespace

Renewals::Renewals() {
    database.run(rows);
}

RenewalListQuery Renewals::query(RenewalListOptions::Range range) const {
    RenewalListOptions options;
    options.month = QDate(2026, 11, 1);
    options.range = range;
    RenewalListQuery query{environment.branch, {}, options, clock.today(), {{u"電話"_s, u"訪問"_s}}};
    for (qint32 number = 101; number <= 112; ++number)
        query.patients.insert(number);
    return query;
}

std::vector<DueConsent> Renewals::lines(const RenewalListQuery &query) {
    const Result<std::vector<DueConsent>> found = readDueConsents(database.db, query);
    EXPECT_TRUE(found) << found.reason().toStdString();
    return found ? renewalLines(*found) : std::vector<DueConsent>();
}

QStringList Renewals::listed(const RenewalListQuery &query) {
    QStringList texts;
    for (const DueConsent &line : lines(query))
        texts += QString::number(line.patient) + u' ' + line.period.end.toString(u"yyyy/MM/dd"_s);
    return texts;
}

QStringList Renewals::record(qint32 patient, const RenewalListOptions &options) {
    RenewalListQuery one = query();
    one.patients = {patient};
    const DataFile data = renewalData(lines(one), options);
    const QStringList texts = decode932(data.bytes()).split(u"\r\n"_s);
    const QStringList names = texts.value(0).split(u',');
    const QStringList fields = texts.value(1).split(u',');
    QStringList record;
    for (qsizetype i = 0; i < names.size(); ++i)
        record += names[i].mid(1).chopped(1) + u'=' + fields.value(i);
    return record;
}
