#include "consent/record/renewal_query.h"

#include "consent/record/record_write.h"
#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// In the order in which a complete row is copied.
constexpr QStringView copiedColumns =
    u"iKyotenCd iKyotenEb nIDNo nDate iSejutuBui1 iSejutuBui2 iSejutuBui3 iSejutuBui4 iSejutuBui5 "
    u"iOnan iDenki iHKHariUmu iHKKyuUmu iHKDekiUmu iHKDispDenkiHariUmu iHKDispDenkiOnKyuUmu "
    u"iHKDispDenkiKousenUmu tOnanSday tOnanEday tDenkiSday tDenkiEday tHenkeSday tHenKeEday "
    u"tHKHariSday tHKHariEday tHKKyuSday tHKKyuEday tHKDenkiSday tHKDenkiEday cIsiCd cDouiIsiName "
    u"cDouiIsiKikan cDouiIsiAdd cDouiByoumei tDouiDay tDouiKaryoS tDouiKaryoE nDouiUpMonth cByoumeiM "
    u"iHKSyobyou01Flg iHKSyobyou02Flg iHKSyobyou03Flg iHKSyobyou04Flg iHKSyobyou05Flg "
    u"iHKSyobyou06Flg iHKSyobyou07Flg cByoumeiH iHKSyobyouChkL iHKSyobyouChkR iNewestFlg tSaiDouiDay "
    u"tSaiDouiKaryoS tSaiDouiKaryoE cKobetuDouiIrai iDouiIraiType iDouiHospOutFlg iDouiIsiOutFlg "
    u"cItiranBikou iDouishoSaishutokuKikan iOutputFlg iGetFlg iOutputFlgHenkei iGetFlgHenkei "
    u"tDouiDayTempHenkei tdouiKaryoSTempHenkei tdouiKaryoETempHenkei iHenkeiFlg nHenkeiDouiDate "
    u"iDouiShubetsu iReceptDisabledFlg iRenrakuFlg iSendFlg iMahiKukan iMahiMigiue iMahiHidariue "
    u"iMahiMigishita iMahiHidarishita iKousyukuMigikata iKousyukuMigihiji iKousyukuMigitekubi "
    u"iKousyukuMigikokannsetu iKousyukuMigihiza iKousyukuMigiashikubi iKousyukuHidarikata "
    u"iKousyukuHidarihiji iKousyukuHidaritekubi iKousyukuHidarikokannsetu iKousyukuHidarihiza "
    u"iKousyukuHidariashikubi iKousyukuSonota cKousyukuSonotaStr cSyoujyouSonotaStr";

bool leftBehindByHenkei(QStringView column) {
    return column == u"cKobetuDouiIrai" || column == u"cItiranBikou" || column == u"iDouiIraiType";
}

// Columns that do not simply take the source's value.
QHash<QStringView, QString> changedColumns(const ConsentRowKey &target, ReConsentColumns columns) {
    const bool own = columns == ReConsentColumns::Own;
    const QString none = u"Null"_s;
    const QString unmarked = u"0"_s;
    return {{u"nDate", sqlNumber(target.nDate)},
            {u"tDouiDay", own ? u"tSaiDouiDay"_s : u"tDouiDayTempHenkei"_s},
            {u"tDouiKaryoS", own ? u"tSaiDouiKaryoS"_s : u"tdouiKaryoSTempHenkei"_s},
            {u"tDouiKaryoE", own ? u"tSaiDouiKaryoE"_s : u"tdouiKaryoETempHenkei"_s},
            {u"tSaiDouiDay", none},
            {u"tSaiDouiKaryoS", none},
            {u"tSaiDouiKaryoE", none},
            {u"tDouiDayTempHenkei", none},
            {u"tdouiKaryoSTempHenkei", none},
            {u"tdouiKaryoETempHenkei", none},
            {u"iNewestFlg", unmarked},
            {u"iOutputFlg", unmarked},
            {u"iGetFlg", unmarked},
            {u"iOutputFlgHenkei", unmarked},
            {u"iGetFlgHenkei", unmarked},
            {u"iDouiHospOutFlg", unmarked},
            {u"iDouiIsiOutFlg", unmarked},
            {u"iHenkeiFlg", sqlNumber(target.iHenkeiFlg)},
            {u"nHenkeiDouiDate", sqlNumber(target.nHenkeiDouiDate)}};
}

/// The columns of sqlRenewalSources, in their order; the key stands before them.
enum Column {
    ConsentDay = 6,
    PeriodStart,
    PeriodEnd,
    Newest,
    ClaimsDisabled,
    UpdateTime,
    Doctor,
    DoctorName,
    Institution,
    Diagnosis,
    Procedure,
    Contact,
    Method,
    HospitalOut,
    DoctorOut,
    Remark,
    OwnRequest,
    Computer,
    // A massage row's, then a deformity-correction row's.
    Requested,
    Received,
    Answer, ///< date, start and end
    OfDeformity = 5
};

Nullable<short> flagAt(const Recordset &rows, int row, int column) {
    return rows.isNull(row, column) ? Nullable<short>() : Nullable<short>(short(rows.number(row, column)));
}

ReadRow readRow(const Recordset &rows, int row, const ConsentRowKey &key, int marks, int answer) {
    const auto flag = [&](int column) { return flagAt(rows, row, column); };
    const auto date = [&](int column) { return rows.date(row, column); };
    const auto text = [&](int column) { return rows.text(row, column); };
    ReadRow read{.key = key,
                 .values = {.contact = flag(Contact),
                            .requested = flag(marks),
                            .received = flag(marks + 1),
                            .method = flag(Method),
                            .hospitalOut = flag(HospitalOut),
                            .doctorOut = flag(DoctorOut),
                            .reconsent = date(answer),
                            .nextStart = date(answer + 1),
                            .nextEnd = date(answer + 2),
                            .remark = text(Remark),
                            .ownRequest = text(OwnRequest)},
                 .updateTime = text(UpdateTime)};
    const auto odd = [&](int column) { return date(column).isValid() ? QString() : text(column); };
    read.oddReconsent = odd(answer);
    read.oddStart = odd(answer + 1);
    read.oddEnd = odd(answer + 2);
    read.running = {date(ConsentDay),  {date(PeriodStart), date(PeriodEnd)},
                    text(Doctor),      text(DoctorName),
                    text(Institution), text(Diagnosis),
                    flag(Procedure),   flag(ClaimsDisabled)};
    return read;
}

/// As sqlOfRow finds it.
bool isSameRow(const ConsentRowKey &left, const ConsentRowKey &right) {
    return left.patient == right.patient && left.iHenkeiFlg == right.iHenkeiFlg &&
           left.nDate == right.nDate &&
           (left.iHenkeiFlg == 0 || left.nHenkeiDouiDate == right.nHenkeiDouiDate);
}

} // namespace

QString sqlRenewalSources(const std::vector<ConsentRowKey> &sources) {
    const qint32 from = std::ranges::min(sources, {}, &ConsentRowKey::nDate).nDate;
    return u"SELECT iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, tDouiDay, tDouiKaryoS,"
           " tDouiKaryoE, iNewestFlg, iReceptDisabledFlg, tUpDateTime, cIsiCd, cDouiIsiName,"
           " cDouiIsiKikan, cDouiByoumei, iDouiShubetsu, iRenrakuFlg, iDouiIraiType, iDouiHospOutFlg,"
           " iDouiIsiOutFlg, cItiranBikou, cKobetuDouiIrai, cPcName, iOutputFlg, iGetFlg, tSaiDouiDay,"
           " tSaiDouiKaryoS, tSaiDouiKaryoE, iOutputFlgHenkei, iGetFlgHenkei, tDouiDayTempHenkei,"
           " tdouiKaryoSTempHenkei, tdouiKaryoETempHenkei FROM RIYOUSHA_DOUI_REC WHERE "_s +
           sqlOfPatients(patientsOf(sources, &ConsentRowKey::patient)) +
           u" and RIYOUSHA_DOUI_REC.nDate >= "_s + sqlNumber(from);
}

RenewalSource renewalSource(const Recordset &rows, const ConsentRowKey &key) {
    RenewalSource source;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const ConsentRowKey found = keyAt(rows, row);
        if (found.patient != key.patient || found.iHenkeiFlg != key.iHenkeiFlg)
            continue;
        if (found.nDate > key.nDate && flagAt(rows, row, ClaimsDisabled).same(short(0)))
            source.later = std::max(source.later, found.nDate);
        if (!isSameRow(found, key))
            continue;
        ++source.rows;
        const bool deformity = key.iHenkeiFlg != 0;
        const bool temporary =
            deformity && !isAnsweredAsMassage(rows.date(row, Answer + OfDeformity), rows.date(row, Answer));
        const int answer = temporary ? Answer + OfDeformity : Answer;
        source.columns = temporary ? ReConsentColumns::TemporaryHenkei : ReConsentColumns::Own;
        source.read = readRow(rows, row, key, deformity ? Requested + OfDeformity : Requested, answer);
        source.read.answeredAsMassage = deformity && !temporary;
        source.computer = rows.text(row, Computer);
        const ConsentRowValues &values = source.read.values;
        source.row = {.key = key,
                      .name = {},
                      .consentDate = rows.date(row, ConsentDay),
                      .reConsent = {values.reconsent, {values.nextStart, values.nextEnd}},
                      .newest = rows.number(row, Newest) == 1};
    }
    return source;
}

bool isThere(const Recordset &rows, const ConsentRowKey &key) {
    for (int row = 0; row < rows.rowCount(); ++row)
        if (isSameRow(keyAt(rows, row), key))
            return true;
    return false;
}

QList<ColumnValue> renewedColumns(const ConsentRowKey &source, const ConsentRowKey &target,
                                  ReConsentColumns columns) {
    const QHash<QStringView, QString> changed = changedColumns(target, columns);
    QList<ColumnValue> all;
    for (const QStringView name : copiedColumns.split(u' '))
        if (source.iHenkeiFlg == 0 || !leftBehindByHenkei(name))
            all.append({name.toString(), changed.value(name, name.toString())});
    return all;
}

QList<ColumnValue> restartedColumns(const Period &period) {
    const QString no = u"0"_s;
    return {{u"iOutputFlg"_s, no},
            {u"iGetFlg"_s, no},
            {u"iDouiHospOutFlg"_s, no},
            {u"iDouiIsiOutFlg"_s, no},
            {u"iOutputFlgHenkei"_s, no},
            {u"iGetFlgHenkei"_s, no},
            {u"tHenkeSday"_s, sqlDate(period.start)},
            {u"tHenKeEday"_s, sqlDate(period.end)}};
}
