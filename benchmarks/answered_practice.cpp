#include "benchmarks/answered_practice.h"

#include "benchmarks/figures.h"
#include "db/adodb.h"

#include <QStringList>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

static QString consentsOf(int patient) {
    const QString number = QString::number(patient);
    QStringList made;
    for (const auto &[date, day, newest] :
         {std::tuple(u"20241120"_s, u"2024/11/20"_s, 0), std::tuple(u"20250520"_s, u"2025/05/20"_s, 0),
          std::tuple(u"20251120"_s, u"2025/11/20"_s, 1)})
        made += u"(1, 1, %1, %2, 0, 0, %3, 0, %3, '%4', '%4', '2026/05/31', '2026/05/20', '2026/06/01',"
                " '2026/11/30', '腰痛症による歩行困難', '高橋整形外科', '2026/05/21 10:00:00')"_s.arg(
                    number, date, QString::number(newest), day);
    return made.join(u", "_s);
}

void run(cT_ADODB &db, const QString &sql) {
    if (db.iExecSQL(sql) != 0)
        stop(db.sErrMsg());
}

void makeAnswered(cT_ADODB &db, int patients) {
    run(db, u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    run(db, u"DELETE FROM RIYOUSHA"_s);
    QStringList people, consents;
    for (int patient = 1; patient <= patients; ++patient) {
        people += u"(1, 1, %1, '利用者%1', 'リヨウシヤ', 0)"_s.arg(patient);
        consents += consentsOf(patient);
    }
    run(db, u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iTenki) VALUES "_s +
                people.join(u", "));
    run(db, u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate,"
            " iNewestFlg, iReceptDisabledFlg, iGetFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, tSaiDouiDay,"
            " tSaiDouiKaryoS, tSaiDouiKaryoE, cDouiByoumei, cDouiIsiKikan, tUpDateTime) VALUES "_s +
                consents.join(u", "));
}
