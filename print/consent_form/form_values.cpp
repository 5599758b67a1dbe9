#include "print/consent_form/form_values.h"

#include "db/tables/patient/acupuncture_diseases.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <functional>
#include <span>

using namespace Qt::Literals::StringLiterals;

namespace form_values {

namespace {

const QString separator = u"、"_s;

struct Named {
    F field;
    QStringView name;
};

constexpr Named paralysisParts[] = {
    {F::ParalysisTrunk, u"躯幹"},      {F::ParalysisRightArm, u"右上肢"}, {F::ParalysisLeftArm, u"左上肢"},
    {F::ParalysisRightLeg, u"右下肢"}, {F::ParalysisLeftLeg, u"左下肢"},
};

constexpr Named joints[] = {
    {F::RightShoulder, u"右肩"}, {F::RightElbow, u"右肘"}, {F::RightWrist, u"右手首"},
    {F::RightHip, u"右股関節"},  {F::RightKnee, u"右膝"},  {F::RightAnkle, u"右足首"},
    {F::LeftShoulder, u"左肩"},  {F::LeftElbow, u"左肘"},  {F::LeftWrist, u"左手首"},
    {F::LeftHip, u"左股関節"},   {F::LeftKnee, u"左膝"},   {F::LeftAnkle, u"左足首"},
};

/// The flag of an acupuncture disease, counted from 0.
constexpr F diseaseFlag(size_t disease) {
    return F(int(F::Disease1) + int(disease));
}

QStringList marked(X x, std::span<const Named> fields) {
    QStringList names;
    if (x.choice.treatment)
        for (const Named &field : fields)
            if (x.rows.flag(x.record, field.field))
                names += field.name.toString();
    return names;
}

/// Empty without the doctor's block.
Addressee addressee(X x) {
    return doctorShown(x) ? addresseeOf(x.rows.doctor(x.record)) : Addressee();
}

std::array<bool, 7> markedDiseases(X x) {
    std::array<bool, 7> marked{};
    for (size_t disease = 0; disease < marked.size(); ++disease)
        marked[disease] = x.rows.flag(x.record, diseaseFlag(disease));
    return marked;
}

QString diagnosisInWords(X x) {
    if (x.rows.isNull(x.record, F::ConsentKey))
        return textOf<F::SummaryDiagnosis>(x);
    return diagnosisOf(x.rows.isAcupuncture(x.record) ? textOf<F::DiagnosisAcupuncture>(x)
                                                      : textOf<F::DiagnosisMassage>(x),
                       textOf<F::Diagnosis>(x));
}

/// Where no disease is marked: those of the diagnosis that have a number by it, the rest as the seventh.
void readWords(Diseases &diseases, const QString &diagnosis) {
    static const QRegularExpression separators(u"[、，,・／/　\\s]+"_s);
    QStringList rest;
    for (const QString &word : diagnosis.split(separators, Qt::SkipEmptyParts)) {
        const auto name = std::ranges::find(acupunctureDiseaseNames, QStringView(word));
        if (name == acupunctureDiseaseNames.end())
            rest += word;
        else
            diseases.marked[size_t(name - acupunctureDiseaseNames.begin())] = true;
    }
    if (diseases.other.isEmpty())
        diseases.other = rest.join(separator);
    diseases.marked.back() = !diseases.other.isEmpty();
}

QString contractureOtherText(X x) {
    const bool shown = x.choice.treatment && x.rows.flag(x.record, F::ContractureOther);
    return shown ? textOf<F::ContractureOtherText>(x) : QString();
}

} // namespace

QString shortDate(const QDate &date) {
    return formatDate(date, u"e年m月d日");
}

QString longDate(const QDate &date) {
    return formatDate(date, u"ggge年m月d日");
}

QString period(const QDate &start, const QDate &end) {
    return start.isValid() || end.isValid() ? longDate(start) + u'～' + longDate(end) : QString();
}

/// A doctor who writes by hand gets the block blank.
bool doctorShown(X x) {
    return x.choice.doctor && !x.rows.flag(x.record, F::HandWriting);
}

DataValue paralysis(X x) {
    return marked(x, paralysisParts).join(separator);
}

DataValue contracture(X x) {
    QStringList parts = marked(x, joints);
    if (const QString other = contractureOtherText(x); !other.isEmpty())
        parts += other;
    return parts.join(separator);
}

DataValue contractureOther(X x) {
    return contractureOtherText(x);
}

DataValue muscles(X x) {
    return qint64(!marked(x, paralysisParts).isEmpty());
}

DataValue kind(X x) {
    return x.rows.isAcupuncture(x.record) ? u"鍼灸"_s : u"マッサージ"_s;
}

DataValue diagnosis(X x) {
    const QString marked = x.rows.isAcupuncture(x.record)
                               ? diseasesText(markedDiseases(x), textOf<F::SymptomOther>(x))
                               : QString();
    return marked.isEmpty() ? diagnosisInWords(x) : marked;
}

Diseases diseases(X x) {
    Diseases diseases;
    if (!x.choice.treatment)
        return diseases;
    diseases.marked = markedDiseases(x);
    diseases.other = textOf<F::SymptomOther>(x);
    const bool none = std::ranges::none_of(diseases.marked, std::identity());
    if (none && x.rows.isAcupuncture(x.record))
        readWords(diseases, diagnosisInWords(x));
    return diseases;
}

DataValue onset(X x) {
    const QDate date = x.rows.date(x.record, F::Onset);
    return date.isValid() ? shortDate(date) : u"不詳"_s;
}

DataValue onsetKnown(X x) {
    return qint64(x.rows.date(x.record, F::Onset).isValid());
}

/// The form has no item for the period of a correction.
DataValue remark(X x) {
    if (!x.choice.treatment)
        return QString();
    const auto days = [&x](F start, F end) {
        return Period{x.rows.date(x.correction, start), x.rows.date(x.correction, end)};
    };
    const Period correction =
        correctionPeriodOf(days(F::CorrectionStart, F::CorrectionEnd), days(F::PeriodStart, F::PeriodEnd),
                           x.rows.flag(x.correction, F::IsCorrection));
    return correction == Period() ? QString()
                                  : u"変形徒手矯正術　"_s + period(correction.start, correction.end);
}

/// Where the signed form goes back to.
DataValue comment(X x) {
    if (!x.sender || x.sender->cMailDestination.isEmpty())
        return QString();
    const QString &postcode = x.sender->cMailDestinationZipNo;
    return u"返送先　"_s + (postcode.isEmpty() ? QString() : u"〒%1　"_s.arg(postcode)) +
           x.sender->cMailDestination;
}

DataValue hospital(X x) {
    return addressee(x).institution;
}

DataValue hospitalAddress(X x) {
    return addressee(x).address();
}

DataValue doctor(X x) {
    return addressee(x).doctor;
}

DataValue doctorTelephone(X x) {
    return addressee(x).telephone;
}

DataValue hospitalNumber(X x) {
    return doctorShown(x) ? numberOrEmpty<F::HospitalNumber>(x) : DataValue(QString());
}

DataValue diseaseCode(X x) {
    const std::array<bool, 7> marked = diseases(x).marked;
    const auto first = std::ranges::find(marked, true);
    return first == marked.end() ? qint64(0) : qint64{first - marked.begin() + 1};
}

/// The seventh disease is another one, told in words elsewhere.
DataValue diseaseNames(X x) {
    std::array<bool, 7> named = diseases(x).marked;
    named.back() = false;
    return diseasesText(named, {});
}

DataValue practiceName(X x) {
    return x.practice ? joinedLines(x.practice->cShamei1, x.practice->cShamei2) : textOf<F::BranchName>(x);
}

DataValue practiceAddress(X x) {
    return x.practice ? joinedLines(x.practice->cAddress1, x.practice->cAddress2)
                      : addressOf<F::BranchAddress1, F::BranchAddress2>(x);
}

/// A home that the patient lives in, otherwise the patient's own address.
DataValue place(X x) {
    const QString home = addressOf<F::HomeAddress1, F::HomeAddress2>(x);
    return home.isEmpty() ? addressOf<F::Address1, F::Address2>(x) : home;
}

DataValue visits(X x) {
    if (x.rows.isNull(x.record, F::VisitsNeeded))
        return qint64(0);
    return x.rows.flag(x.record, F::VisitsNeeded) ? qint64(1) : qint64(2);
}

DataValue symptom(X x) {
    return diseases(x).other;
}

DataValue hasSymptom(X x) {
    return qint64(!diseases(x).other.isEmpty());
}

DataValue reacquisition(X x) {
    const QString days =
        period(x.rows.date(x.record, F::ReacquireFrom), x.rows.date(x.record, F::ReacquireTo));
    const qint64 months = x.rows.number(x.record, F::ReacquireMonths);
    return days.isEmpty() && months > 0 ? u"%1ヶ月"_s.arg(months) : days;
}

DataValue senderName(X x) {
    return x.sender ? joinedLines(x.sender->cShamei1, x.sender->cShamei2) : QString();
}

DataValue senderAddress(X x) {
    return x.sender ? joinedLines(x.sender->cAddress1, x.sender->cAddress2) : QString();
}

DataValue sex(X x) {
    const qint64 code = x.rows.number(x.record, F::Sex);
    return code == 1 ? u"男"_s : code == 2 ? u"女"_s : QString();
}

DataValue careDegree(X x) {
    static const std::array degrees{u"要支援1"_s, u"要支援2"_s, u"要介護1"_s, u"要介護2"_s,
                                    u"要介護3"_s, u"要介護4"_s, u"要介護5"_s};
    const qint64 degree = x.rows.number(x.record, F::CareDegree);
    return degree >= 1 && degree <= qint64(degrees.size()) ? degrees[size_t(degree - 1)] : QString();
}

} // namespace form_values
