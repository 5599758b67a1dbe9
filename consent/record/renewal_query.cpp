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

/// The columns that count, by their names.
enum Column {
    Branch,
    SubBranch,
    Patient,
    Date,
    Kind,
    DeformityDate,
    ConsentDay,
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
constexpr QStringView columnNames =
    u"iKyotenCd iKyotenEb nIDNo nDate iHenkeiFlg nHenkeiDouiDate tDouiDay tDouiKaryoS tDouiKaryoE iNewestFlg "
    u"iReceptDisabledFlg tUpDateTime cIsiCd cDouiIsiName cDouiIsiKikan cDouiByoumei iDouiShubetsu "
    u"iRenrakuFlg iDouiIraiType iDouiHospOutFlg iDouiIsiOutFlg cItiranBikou cKobetuDouiIrai cPcName "
    u"iOutputFlg iGetFlg tSaiDouiDay tSaiDouiKaryoS tSaiDouiKaryoE iOutputFlgHenkei iGetFlgHenkei "
    u"tDouiDayTempHenkei tdouiKaryoSTempHenkei tdouiKaryoETempHenkei";

/// One row by the columns above.
struct Row {
    const Recordset &rows;
    const std::vector<int> &positions;
    int row;

    int at(int column) const { return positions[size_t(column)]; }
    qint64 number(int column) const { return rows.number(row, at(column)); }
    QDate date(int column) const { return rows.date(row, at(column)); }
    QString text(int column) const { return rows.text(row, at(column)); }
    Nullable<short> flag(int column) const {
        return rows.isNull(row, at(column)) ? Nullable<short>() : Nullable<short>(short(number(column)));
    }
    ConsentRowKey key() const {
        return {{short(number(Branch)), short(number(SubBranch)), qint32(number(Patient))},
                qint32(number(Date)),
                short(number(Kind)),
                qint32(number(DeformityDate))};
    }
};

ReadRow readRow(const Row &row, const ConsentRowKey &key, int marks, int answer) {
    ReadRow read{.key = key,
                 .values = {.contact = row.flag(Contact),
                            .requested = row.flag(marks),
                            .received = row.flag(marks + 1),
                            .method = row.flag(Method),
                            .hospitalOut = row.flag(HospitalOut),
                            .doctorOut = row.flag(DoctorOut),
                            .reconsent = row.date(answer),
                            .nextStart = row.date(answer + 1),
                            .nextEnd = row.date(answer + 2),
                            .remark = row.text(Remark),
                            .ownRequest = row.text(OwnRequest)},
                 .updateTime = row.text(UpdateTime)};
    const auto odd = [&](int column) { return row.date(column).isValid() ? QString() : row.text(column); };
    read.oddReconsent = odd(answer);
    read.oddStart = odd(answer + 1);
    read.oddEnd = odd(answer + 2);
    read.running = {row.date(ConsentDay),  {row.date(PeriodStart), row.date(PeriodEnd)},
                    row.text(Doctor),      row.text(DoctorName),
                    row.text(Institution), row.text(Diagnosis),
                    row.flag(Procedure),   row.flag(ClaimsDisabled)};
    return read;
}

/// As sqlOfRow finds it.
bool isSameRow(const ConsentRowKey &left, const ConsentRowKey &right) {
    return left.patient == right.patient && left.iHenkeiFlg == right.iHenkeiFlg &&
           left.nDate == right.nDate &&
           (left.iHenkeiFlg == 0 || left.nHenkeiDouiDate == right.nHenkeiDouiDate);
}

} // namespace

RenewalSources::RenewalSources(Recordset rows) : m_rows(std::move(rows)) {
    for (const QStringView name : columnNames.split(u' '))
        m_positions.push_back(m_rows.column(name));
    for (int row = 0; row < m_rows.rowCount(); ++row)
        m_keys.push_back(Row{m_rows, m_positions, row}.key());
}

RenewalSource RenewalSources::find(const ConsentRowKey &key) const {
    RenewalSource source;
    for (size_t i = 0; i < m_keys.size(); ++i) {
        const ConsentRowKey &found = m_keys[i];
        if (found.patient != key.patient || found.iHenkeiFlg != key.iHenkeiFlg)
            continue;
        const Row row{m_rows, m_positions, int(i)};
        if (found.nDate > key.nDate && row.flag(ClaimsDisabled).same(short(0)))
            source.later = std::max(source.later, found.nDate);
        if (!isSameRow(found, key))
            continue;
        ++source.rows;
        const bool deformity = key.iHenkeiFlg != 0;
        const bool temporary =
            deformity && !isAnsweredAsMassage(row.date(Answer + OfDeformity), row.date(Answer));
        const int answer = temporary ? Answer + OfDeformity : Answer;
        source.columns = temporary ? ReConsentColumns::TemporaryHenkei : ReConsentColumns::Own;
        source.read = readRow(row, key, deformity ? Requested + OfDeformity : Requested, answer);
        source.read.answeredAsMassage = deformity && !temporary;
        source.computer = row.text(Computer);
        const ConsentRowValues &values = source.read.values;
        source.row = {.key = key,
                      .name = {},
                      .consentDate = row.date(ConsentDay),
                      .reConsent = {values.reconsent, {values.nextStart, values.nextEnd}},
                      .newest = row.number(Newest) == 1};
    }
    return source;
}

bool RenewalSources::isThere(const ConsentRowKey &key) const {
    return std::ranges::any_of(m_keys, [&](const ConsentRowKey &found) { return isSameRow(found, key); });
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
