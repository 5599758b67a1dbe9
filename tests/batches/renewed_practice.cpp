#include "tests/batches/renewed_practice.h"

using namespace Qt::Literals::StringLiterals;

RenewedPractice::RenewedPractice(qint32 patients) {
    for (qint32 patient = 1; patient <= patients; ++patient) {
        database.run(u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, iTenki)"
                     " VALUES (1, 1, %1, '利用者%1', 0)"_s.arg(patient));
        for (const short kind : {short(0), short(1)}) {
            if (kind == 1 && patient % 2 != 0)
                continue;
            QMap<QString, QString> literals =
                answered(u"2026/05/20"_s, u"2026/06/01"_s, u"2026/11/30"_s, kind == 1);
            literals.insert({{u"iNewestFlg"_s, u"1"_s},
                             {u"iGetFlg"_s, u"1"_s},
                             {u"iGetFlgHenkei"_s, u"1"_s},
                             {u"iSendFlg"_s, u"NULL"_s},
                             {u"iOutputFlg"_s, u"0"_s},
                             {u"cItiranBikou"_s, u"''"_s},
                             {u"cMasByoumei"_s, u"NULL"_s},
                             {u"tDouiDay"_s, u"'2025/11/20'"_s},
                             {u"tUpDateTime"_s, u"'2026/05/01 08:09:10.123'"_s}});
            consents.insert(before(patient, kind), literals);
        }
    }
}

qint32 RenewedPractice::renew(cT_ADODB &db) const {
    QList<RenewalRow> rows;
    for (const QString &row : database.rows(u"SELECT nIDNo, iHenkeiFlg FROM RIYOUSHA_DOUI_REC"
                                            " WHERE iNewestFlg = 1 AND nDate = 20251120"
                                            " ORDER BY nIDNo, iHenkeiFlg"_s))
        rows.append({.key = before(row.section(u'|', 0, 0).toInt(), row.section(u'|', 1, 1).toShort()),
                     .name = {},
                     .consentDate = {2025, 11, 20},
                     .reConsent = {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}},
                     .newest = true});
    const QList<RenewalResult> results = RenewalRun(db).renew(rows);
    EXPECT_EQ(countOutcome(results, RenewalOutcome::Renewed), rows.size())
        << results.value(0).reason.toStdString();
    return database.value(u"SELECT MAX(nBatch) FROM DOUISHO_LOG_BATCH"_s).toInt();
}

QStringList RenewedPractice::rowsOf(qint32 patient) const {
    return database.rows(
        u"SELECT * FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %1 ORDER BY iHenkeiFlg, nDate"_s.arg(patient));
}
