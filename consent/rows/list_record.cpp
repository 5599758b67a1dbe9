#include "consent/rows/list_record.h"

#include <array>

namespace {

constexpr std::array<const char16_t *, size_t(ListField::Count)> names{
    u"iKyotenCd",
    u"iKyotenEb",
    u"nIDNo",
    u"cName",
    u"cNameKana",
    u"iSejutsuKubun",
    u"tSyoryoDay",
    u"cYubinNo",
    u"cAdress1",
    u"cAdress2",
    u"DKnDate",
    u"DKiHenkeiFlg",
    u"DKnHenkeiDouiDate",
    u"DKtDouiDay1",
    u"DKtDouiKaryoS1",
    u"DKtDouiKaryoE1",
    u"DKnDouiUpMonth",
    u"DKcDouiByoumei",
    u"DKiSejutuBui1",
    u"DKiSejutuBui2",
    u"DKiSejutuBui3",
    u"DKiSejutuBui4",
    u"DKiSejutuBui5",
    u"DKiOnan",
    u"DKiDenki",
    u"DKiHKHariUmu",
    u"DKiHKKyuUmu",
    u"DKiHKDekiUmu",
    u"DKiDouiShubetsu",
    u"DKiSendFlg",
    u"DKiRenrakuFlg",
    u"DKiOutputFlg",
    u"DKiGetFlg",
    u"DKiOutputFlgHenkei",
    u"DKiGetFlgHenkei",
    u"DKiDouiHospOutFlg",
    u"DKiDouiIsiOutFlg",
    u"DKtSaiDouiDay",
    u"DKtSaiDouiKaryoS",
    u"DKtSaiDouiKaryoE",
    u"DKtDouiDayTempHenkei",
    u"DKtdouiKaryoSTempHenkei",
    u"DKtdouiKaryoETempHenkei",
    u"DKiDouiIraiType",
    u"DKcKobetuDouiIrai",
    u"DKcItiranBikou",
    u"DKtUpDateTime",
    u"DKcIsiCd",
    u"DKiReceptDisabledFlg",
    u"DKcDouiIsiName1",
    u"DKcDouiIsiKikan1",
    u"cIsiName1",
    u"cIsiKikan",
    u"cAddress1",
    u"cAddress2",
    u"nSisetsuCodeNew",
    u"cSisetsuName1",
    u"DouiIrai1",
    u"cYubinNoS0Ryosyu",
    u"cJusyo1S0Ryosyu",
    u"cJusyo2S0Ryosyu",
    u"cTelS0Ryosyu",
    u"cFaxS0Ryosyu",
    u"cKeitaiS0Ryosyu",
    u"cAtenaS0Ryosyu",
    u"cYubinNoS0Renraku",
    u"cJusyo1S0Renraku",
    u"cJusyo2S0Renraku",
    u"cTelS0Renraku",
    u"cFaxS0Renraku",
    u"cKeitaiS0Renraku",
    u"cAtenaS0Renraku",
};

} // namespace

ListRecords::ListRecords(Recordset rows) : FieldRows(std::move(rows), names) {}

Nullable<short> ListRecords::nullable(int record, ListField field) const {
    return isNull(record, field) ? Nullable<short>() : Nullable<short>(short(number(record, field)));
}

QString ListRecords::who(int record) const {
    return patientText(number(record, ListField::Number), text(record, ListField::Name));
}

ConsentRowKey ListRecords::key(int record) const {
    return {{short(number(record, ListField::KyotenCd)), short(number(record, ListField::KyotenEb)),
             qint32(number(record, ListField::Number))},
            int(number(record, ListField::DateKey)),
            short(number(record, ListField::Deformity)),
            int(number(record, ListField::DeformityKey))};
}

Period ListRecords::period(int record) const {
    return {date(record, ListField::PeriodStart), date(record, ListField::PeriodEnd)};
}

RunningConsent ListRecords::running(int record) const {
    return {key(record).patient, isDeformity(record), int(number(record, ListField::Months)),
            date(record, ListField::ConsentDay), period(record)};
}

bool ListRecords::answeredAsMassage(int record) const {
    return isDeformity(record) && isAnsweredAsMassage(date(record, ListField::ReconsentDeformity),
                                                      date(record, ListField::Reconsent));
}

ConsentRowValues ListRecords::values(int record) const {
    using F = ListField;
    ConsentRowValues values;
    values.contact = nullable(record, F::Contact);
    values.requested = nullable(record, either(record, F::Requested, F::RequestedDeformity));
    values.received = nullable(record, either(record, F::Received, F::ReceivedDeformity));
    values.method = nullable(record, F::Method);
    values.hospitalOut = nullable(record, F::HospitalOut);
    values.doctorOut = nullable(record, F::DoctorOut);
    values.reconsent = date(record, ofAnswer(record, F::Reconsent, F::ReconsentDeformity));
    values.nextStart = date(record, ofAnswer(record, F::NextStart, F::NextStartDeformity));
    values.nextEnd = date(record, ofAnswer(record, F::NextEnd, F::NextEndDeformity));
    values.remark = text(record, F::Remark);
    values.ownRequest = text(record, F::OwnRequest);
    return values;
}

RowMarks ListRecords::marks(int record) const {
    using F = ListField;
    return {isDeformity(record), flag(record, F::Contact),
            flag(record, either(record, F::Requested, F::RequestedDeformity)),
            flag(record, either(record, F::Received, F::ReceivedDeformity))};
}

ReadRow ListRecords::row(int record) const {
    using F = ListField;
    const auto odd = [&](F massage, F deformity) {
        const F field = ofAnswer(record, massage, deformity);
        return date(record, field).isValid() ? QString() : text(record, field);
    };
    return {key(record),
            values(record),
            text(record, F::UpdateTime),
            odd(F::Reconsent, F::ReconsentDeformity),
            odd(F::NextStart, F::NextStartDeformity),
            odd(F::NextEnd, F::NextEndDeformity),
            answeredAsMassage(record),
            {date(record, F::ConsentDay), period(record), text(record, F::ConsentDoctorCode),
             text(record, F::ConsentDoctor), text(record, F::ConsentHospital), text(record, F::Diagnosis),
             nullable(record, F::Procedure), nullable(record, F::ClaimsDisabled)}};
}
