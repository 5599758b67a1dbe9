#include "print/consent_screens/sample_document.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/qr_code.h"
#include "print/engine/wfd_print_exe.h"
#include "print/request_letter/letters.h"

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString sampleFlag = u"見本フラグ"_s;
constexpr qint32 patientNumber = 12345;

/// The invented consent began half a year before the day of printing, on a first of the month.
Period runningPeriod(const QDate &today) {
    const QDate start = QDate(today.year(), today.month(), 1).addMonths(-5);
    return {start, start.addMonths(6).addDays(-1)};
}

/// A field is a text, a number or, as a text, a date.
using Fields = std::map<F, DataValue>;

Fields personFields(bool acupuncture) {
    return {{F::KyotenCd, 1},
            {F::KyotenEb, 1},
            {F::Number, patientNumber},
            {F::Name, u"見本　花子"_s},
            {F::Address1, u"緑川県若葉市見本町1丁目2－3"_s},
            {F::Address2, u"見本荘101号"_s},
            {F::Birthday, u"1942/05/03"_s},
            {F::Sex, 2},
            {F::Relation, u"本人"_s},
            {F::Kind, qint64(acupuncture)},
            {F::Onset, u"2019/04/10"_s},
            {F::VisitsNeeded, 1},
            {F::VisitReason1, 1},
            {F::CareDegree, 5},
            {F::Staff, 1},
            {F::StaffName, u"見本　施術者"_s},
            {F::BranchName, u"見本院"_s},
            {F::DoctorName, u"見本　医師"_s},
            {F::DoctorHospital, u"見本病院"_s},
            {F::DoctorAddress1, u"緑川県若葉市病院町4丁目5－6"_s},
            {F::DoctorTelephone, u"0999-00-0000"_s}};
}

Fields treatmentFields(bool acupuncture) {
    if (acupuncture)
        return {{F::DiagnosisAcupuncture, u"腰痛症"_s},
                {F::Disease5, 1},
                {F::Needle, 1},
                {F::Moxa, 1},
                {F::NeedleElectric, 1}};
    return {{F::DiagnosisMassage, u"脳梗塞後遺症"_s},
            {F::Part1, 1},
            {F::Part2, 1},
            {F::Part4, 1},
            {F::Warmth, 1},
            {F::ParalysisRightArm, 1},
            {F::ParalysisRightLeg, 1},
            {F::RightShoulder, 1},
            {F::RightKnee, 1}};
}

Fields consentFields(const QDate &today, bool again) {
    const Period period = runningPeriod(today);
    Fields fields{{F::ConsentKey, dateKey(period.start)},
                  {F::ConsentDay, dateText(period.start)},
                  {F::PeriodStart, dateText(period.start)},
                  {F::PeriodEnd, dateText(period.end)}};
    if (again)
        fields.insert({F::FirstTreatment, dateText(period.start.addYears(-1))});
    return fields;
}

FormRecords recordsOf(const Fields &fields) {
    QStringList names;
    for (int field = 0; field < int(F::Count); ++field)
        names += QString::number(field);
    Recordset rows;
    rows.open(names, Recordset::Encoding::Utf16);
    for (int field = 0; field < int(F::Count); ++field) {
        const auto found = fields.find(F(field));
        if (found == fields.end())
            rows.appendNull();
        else if (const auto *text = std::get_if<QString>(&found->second))
            rows.appendText(text->utf16(), size_t(text->size()) * sizeof(char16_t));
        else
            rows.appendInteger(std::get<qint64>(found->second));
    }
    return FormRecords(std::move(rows));
}

cD_CORP sampleCompany() {
    cD_CORP company;
    company.cShamei1 = u"見本治療院"_s;
    company.cDaihyo = u"見本　代表"_s;
    company.cYubinNo = u"999-0000"_s;
    company.cAddress1 = u"緑川県若葉市中央7丁目8－9"_s;
    company.cTelNo = u"0999-00-0001"_s;
    company.cFaxNo = u"0999-00-0002"_s;
    return company;
}

LetterRow sampleRow(bool acupuncture, const QDate &today) {
    LetterRow row;
    row.key = {{1, 1, patientNumber}, dateKey(runningPeriod(today).start), 0, 0};
    row.name = u"見本　花子"_s;
    row.address = u"緑川県若葉市見本町1丁目2－3　見本荘101号"_s;
    row.birthday = QDate(1942, 5, 3);
    row.period = runningPeriod(today);
    row.firstTreatment = row.period.start;
    row.sex = 2;
    row.acupuncture = acupuncture;
    row.diagnosis = acupuncture ? u"腰痛症"_s : u"脳梗塞後遺症"_s;
    row.notedDoctor = u"見本　医師"_s;
    row.notedInstitution = u"見本病院"_s;
    row.notedAddress = u"緑川県若葉市病院町4丁目5－6"_s;
    row.staff.fill(u"見本　施術者"_s);
    return row;
}

LetterCompany letterCompany() {
    const cD_CORP company = sampleCompany();
    return {company.cShamei1, company.cAddress1, company.cTelNo, company.cFaxNo, company.cDaihyo};
}

Result<> put(const QStringList &columns, std::vector<DataValue> values, const DocumentNames &names,
             cls_WfdPrintExe &engine) {
    DataFile data(columns + QStringList{sampleFlag});
    values.push_back(qint64(1));
    data.add(values);
    return engine.iWriteData(1, names.data, data, names.file) == 0 ? Result<>() : Failure{engine.sErrMsg()};
}

} // namespace

SampleContents SampleContents::of(const ConsentLayoutSettings &settings) {
    const auto shown = [](const Nullable<short> &setting, bool otherwise) {
        return setting.isNull() ? otherwise : setting != 0;
    };
    const SampleContents usual;
    return {shown(settings.iDouiDispSejyutu, usual.treatment),
            shown(settings.iDouiDispIshidata, usual.doctor),
            shown(settings.iDouiDispRiyouNo, usual.patientNumber)};
}

Result<> writeSampleForm(const Environment &environment, const RegisteredForm &layout,
                         const SampleContents &contents, const DocumentNames &names,
                         cls_WfdPrintExe &engine) {
    const QDate today = environment.clock.today();
    Fields fields = personFields(layout.acupuncture);
    fields.merge(treatmentFields(layout.acupuncture));
    fields.merge(consentFields(today, layout.again));
    const FormRecords rows = recordsOf(fields);
    const FormChoice choice{layout.file,        layout.number,   layout.again,          false,
                            contents.treatment, contents.doctor, contents.patientNumber};
    const cD_CORP company = sampleCompany();
    std::vector<DataValue> values =
        consentFormValues({rows, 0, 0, choice, &company, &company, u"車椅子"_s, today, today});
    const Result<QString> picture = engine.files().write(u"見本QR.bmp"_s, qrPicture(u"見本"_s));
    if (!picture)
        return Failure{picture.reason()};
    values[size_t(qrColumn())] = *picture;
    return put(consentFormColumns(), std::move(values), names, engine);
}

Result<> writeSampleLetter(const Environment &environment, const RegisteredForm &layout,
                           const DocumentNames &names, cls_WfdPrintExe &engine) {
    const QDate today = environment.clock.today();
    LetterSource source;
    source.rows = {sampleRow(layout.acupuncture, today)};
    source.company = letterCompany();
    source.hasCompany = true;
    const LetterOrder order{.row = source.rows[0].key, .layout = layout.file};
    LetterOptions options;
    options.day = today;
    return put(letterColumns(), letterRecord({{0}}, {&order, 1}, source, options), names, engine);
}
