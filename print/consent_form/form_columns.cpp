#include "print/consent_form/form_columns.h"

#include "print/consent_form/form_values.h"

using namespace Qt::Literals::StringLiterals;
using namespace form_values;

namespace {

struct Column {
    QStringView name;
    DataValue (*value)(X x);
};

constexpr QStringView qrName = u"QRコード";

constexpr Column columns[] = {
    {u"患者ID", number<F::Number>},
    {u"患者名", text<F::Name>},
    {u"住所", address<F::Address1, F::Address2>},
    {u"生年月日", dayOfEra<F::Birthday>},
    {u"生年月日元号", era<F::Birthday>},
    {u"部位1", treatmentFlag<F::Part1>},
    {u"部位2", treatmentFlag<F::Part2>},
    {u"部位3", treatmentFlag<F::Part3>},
    {u"部位4", treatmentFlag<F::Part4>},
    {u"部位5", treatmentFlag<F::Part5>},
    {u"温按法あり", treatmentFlag<F::Warmth>},
    {u"電気あり", treatmentFlag<F::Electric>},
    {u"はりあり", treatmentFlag<F::Needle>},
    {u"きゅうあり", treatmentFlag<F::Moxa>},
    {u"鍼灸電気あり", treatmentFlag<F::NeedleElectric>},
    {u"傷病名", diagnosis},
    {u"麻痺", paralysis},
    {u"拘縮", contracture},
    {u"施術種類", kind},
    {u"発病年月日", onset},
    {u"発病年月日元号", era<F::Onset>},
    {u"備考", remark},
    {u"保険医療機関名", hospital},
    {u"保険医師所在地", hospitalAddress},
    {u"保険医氏名", doctor},
    {u"提出年月日", [](X x) -> DataValue { return longDate(x.submitted); }},
    {u"施術内容表示", [](X x) -> DataValue { return qint64(x.choice.treatment); }},
    {u"鍼灸傷病コード", diseaseCode},
    {u"鍼灸傷病名", diseaseNames},
    {u"初診年月日", dayOfEra<F::FirstTreatment>},
    {u"初診年月日元号", era<F::FirstTreatment>},
    {u"要加療期間・開始日", day<F::PeriodStart>},
    {u"要加療期間・終了日", day<F::PeriodEnd>},
    {u"施術師名", text<F::StaffName>},
    {u"施術所名称", practiceName},
    {u"所在地", practiceAddress},
    {u"コメント", comment},
    {u"保険医電話番号", doctorTelephone},
    {u"施術所郵便番号", practice<&cD_CORP::cYubinNo, F::BranchPostcode>},
    {u"施術所電話番号", practice<&cD_CORP::cTelNo, F::BranchTelephone>},
    {u"病院ID", hospitalNumber},
    {u"施術場所番号", numberOrEmpty<F::HomeNumber>},
    {u"施術場所住所", place},
    {u"往療の必要性", visits},
    {u"歩行タイプ", number<F::Walking>},
    {u"筋萎縮", muscles},
    {u"症状その他CHK", hasSymptom},
    {u"症状その他(内容)", symptom},
    {u"鍼灸傷病1", disease<1>},
    {u"鍼灸傷病2", disease<2>},
    {u"鍼灸傷病3", disease<3>},
    {u"鍼灸傷病4", disease<4>},
    {u"鍼灸傷病5", disease<5>},
    {u"鍼灸傷病6", disease<6>},
    {u"鍼灸傷病7", disease<7>},
    {u"次回同意年月日", day<F::NextDay>},
    {u"次回要加療期間開始", day<F::NextStart>},
    {u"次回要加療期間終了", day<F::NextEnd>},
    {u"次回同意期間", periodOf<F::NextStart, F::NextEnd>},
    {u"主担当ID", numberOrEmpty<F::Staff>},
    {u"同意書再取得予定期間", reacquisition},
    {u"印刷社名〒", sender<&cD_CORP::cYubinNo>},
    {u"印刷社名電話", sender<&cD_CORP::cTelNo>},
    {u"印刷社名住所", senderAddress},
    {u"印刷社名", senderName},
    {u"印刷社名代表", sender<&cD_CORP::cDaihyo>},
    {u"印刷年月日", [](X x) -> DataValue { return longDate(x.today); }},
    {u"発病日付判定", onsetKnown},
    {u"印刷社名FAX", sender<&cD_CORP::cFaxNo>},
    {u"利用者続柄", text<F::Relation>},
    {u"再同意フラグ", [](X x) -> DataValue { return qint64(x.choice.again); }},
    {u"性別", sex},
    {u"歩行状態", [](X x) -> DataValue { return x.walking; }},
    {u"要介護度", careDegree},
    {u"往療理由1", flag<F::VisitReason1>},
    {u"往療理由2", flag<F::VisitReason2>},
    {u"往療理由3", flag<F::VisitReason3>},
    {u"理由その他", text<F::VisitReasonOther>},
    {u"麻痺躯幹", treatmentFlag<F::ParalysisTrunk>},
    {u"麻痺右上肢", treatmentFlag<F::ParalysisRightArm>},
    {u"麻痺左上肢", treatmentFlag<F::ParalysisLeftArm>},
    {u"麻痺右下肢", treatmentFlag<F::ParalysisRightLeg>},
    {u"麻痺左下肢", treatmentFlag<F::ParalysisLeftLeg>},
    {u"拘縮右肩", treatmentFlag<F::RightShoulder>},
    {u"拘縮右肘", treatmentFlag<F::RightElbow>},
    {u"拘縮右手首", treatmentFlag<F::RightWrist>},
    {u"拘縮右股関節", treatmentFlag<F::RightHip>},
    {u"拘縮右膝", treatmentFlag<F::RightKnee>},
    {u"拘縮右足首", treatmentFlag<F::RightAnkle>},
    {u"拘縮左肩", treatmentFlag<F::LeftShoulder>},
    {u"拘縮左肘", treatmentFlag<F::LeftElbow>},
    {u"拘縮左手首", treatmentFlag<F::LeftWrist>},
    {u"拘縮左股関節", treatmentFlag<F::LeftHip>},
    {u"拘縮左膝", treatmentFlag<F::LeftKnee>},
    {u"拘縮左足首", treatmentFlag<F::LeftAnkle>},
    {u"拘縮その他", contractureOther},
    {u"症状その他", symptom},
    {qrName, [](X) -> DataValue { return QString(); }},
    {u"拠点名", text<F::BranchName>},
    {u"利用者ID表示", [](X x) -> DataValue { return qint64(x.choice.patientNumber); }},
};
static_assert(std::size(columns) == 100);

} // namespace

const QStringList &consentFormColumns() {
    static const QStringList names = [] {
        QStringList list;
        for (const Column &column : columns)
            list += column.name.toString();
        return list;
    }();
    return names;
}

qsizetype qrColumn() {
    static const qsizetype position = consentFormColumns().indexOf(qrName);
    return position;
}

std::vector<DataValue> consentFormValues(const FormSource &source) {
    std::vector<DataValue> values;
    values.reserve(std::size(columns));
    for (const Column &column : columns)
        values.push_back(column.value(source));
    return values;
}
