#include "print/request_letter/letters.h"

#include "app/base/dates.h"
#include "db/tables/patient_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView longDate = u"gggee年mm月dd日";

QString doctorCode(const LetterOrder &order, const LetterRow &row) {
    return order.doctor.isEmpty() ? row.doctor : order.doctor;
}

QString diagnosisText(const LetterRow &row) {
    const QString diseases = row.acupuncture ? diseasesText(row.diseases, row.otherDisease) : QString();
    return diseases.isEmpty() ? row.diagnosis : diseases;
}

// A new consent is needed from the day after the running period on, unless it is there already.
QDate reacquisitionDay(const LetterRow &row) {
    return row.reconsent.isValid() || !row.period.end.isValid() ? row.reconsent : row.period.end.addDays(1);
}

QString patientLine(const LetterRow &row) {
    QString line = row.name + u" 様"_s;
    if (row.birthday.isValid())
        line += u"　"_s + formatDate(row.birthday, u"ggge年m月d日") + u"生"_s;
    if (row.period.end.isValid())
        line += u"　要加療期間 "_s + formatDate(row.period.end, u"ggge年m月d日") + u"まで"_s;
    return line + (row.key.iHenkeiFlg == 1 ? u"（変形徒手）"_s : QString());
}

QString sexText(int sex) {
    return sex == 1 ? u"男"_s : sex == 2 ? u"女"_s : QString();
}

// A letter has room for one practitioner: patients of different ones get none.
QString practitioner(const Letter &letter, const LetterSource &source, int which) {
    const QString &first = source.rows[letter.rows.front()].staff[size_t(which)];
    for (const size_t row : letter.rows)
        if (source.rows[row].staff[size_t(which)] != first)
            return {};
    return first;
}

/// The lines that say whom a letter goes to: a doctor at an institution, or the institution itself. A letter
/// has one honorific.
struct Heading {
    QString doctor, institution;
};

Heading headingOf(const Addressee &addressee, bool toHospital) {
    if (!addressee.institution.isEmpty() && (toHospital || addressee.doctor.isEmpty()))
        return {{}, addressee.institution + u"　御中"_s};
    return {addressee.doctor.isEmpty() ? QString() : addressee.doctor + u"　先生御侍史"_s,
            addressee.institution};
}

/// What letters share that can be one; empty for a row that names nobody.
QString sharedBy(const LetterOrder &order, const LetterRow &row, const LetterSource &source) {
    const Addressee addressee = letterAddressee(order, row, source);
    const auto [doctor, institution] = headingOf(addressee, order.toHospital);
    if (doctor.isEmpty() && institution.isEmpty())
        return {};
    return QStringList{order.layout,        doctor,
                       institution,         addressee.zip,
                       addressee.address(), row.acupuncture ? u"1"_s : u"0"_s}
        .join(u'\n');
}

} // namespace

Addressee letterAddressee(const LetterOrder &order, const LetterRow &row, const LetterSource &source) {
    const QString code = doctorCode(order, row);
    KnownDoctor known = source.doctors.value(code);
    if (code == row.doctor) {
        known.notedName = row.notedDoctor;
        known.notedInstitution = row.notedInstitution;
        known.notedAddress = row.notedAddress;
    }
    return addresseeOf(known);
}

std::vector<Letter> arrangeLetters(std::span<const LetterOrder> orders, const LetterSource &source,
                                   bool grouped) {
    std::vector<Letter> letters;
    QHash<QString, size_t> open; // letters that take more patients, by what their rows share
    for (size_t i = 0; i < source.rows.size(); ++i) {
        const LetterRow &row = source.rows[i];
        const QString shared = sharedBy(orders[row.order], row, source);
        const auto letter = grouped && !shared.isEmpty() ? open.constFind(shared) : open.constEnd();
        if (letter != open.constEnd() && letters[*letter].rows.size() < Letter::mostPatients) {
            letters[*letter].rows.push_back(i);
            continue;
        }
        open.insert(shared, letters.size());
        letters.push_back({{i}});
    }
    return letters;
}

const QStringList &letterColumns() {
    static const QStringList columns{
        u"出力日"_s,       u"医者名"_s,     u"施術開始日"_s,   u"患者氏名"_s,    u"生年月日"_s,
        u"会社名"_s,       u"会社住所"_s,   u"会社電話番号"_s, u"会社FAX番号"_s, u"責任者"_s,
        u"要加療期間至"_s, u"患者住所"_s,   u"利用者ID"_s,     u"病院名"_s,      u"要加療期間自"_s,
        u"同意再取得日"_s, u"医師まとめ"_s, u"施術区分"_s,     u"生年月日ymd"_s, u"生年月日元号"_s,
        u"性別"_s,         u"備考"_s,       u"主担当"_s,       u"傷病名"_s,      u"施術者印字"_s,
        u"まとめ1"_s,      u"まとめ2"_s,    u"まとめ3"_s,      u"まとめ4"_s,     u"まとめ5"_s,
        u"まとめ6"_s,      u"まとめ7"_s,    u"まとめ8"_s,      u"まとめ9"_s,     u"まとめ10"_s,
        u"病院郵便番号"_s, u"病院住所"_s};
    return columns;
}

std::vector<DataValue> letterRecord(const Letter &letter, std::span<const LetterOrder> orders,
                                    const LetterSource &source, const LetterOptions &options) {
    const LetterRow &row = source.rows[letter.rows.front()];
    const LetterOrder &order = orders[row.order];
    const Addressee addressee = letterAddressee(order, row, source);
    const auto [doctor, institution] = headingOf(addressee, order.toHospital);
    const LetterCompany &company = source.company;
    const bool grouped = letter.rows.size() > 1;
    std::vector<DataValue> record{
        formatDate(options.day, longDate),
        doctor,
        formatDate(row.firstTreatment, longDate),
        row.name,
        formatDate(row.birthday, longDate),
        company.name,
        company.address,
        company.telephone,
        company.fax,
        company.head,
        formatDate(row.period.end, longDate),
        row.address,
        QString::number(row.key.patient.nIDNo),
        institution,
        formatDate(row.period.start, longDate),
        formatDate(reacquisitionDay(row), longDate),
        qint64(grouped),
        row.acupuncture ? u"(鍼灸)"_s : u"(マッサージ)"_s,
        formatDate(row.birthday, u"e年m月d日"),
        formatDate(row.birthday, u"g"),
        sexText(row.sex),
        options.remark,
        practitioner(letter, source, options.practitioner),
        diagnosisText(row),
        qint64(options.printPractitioner),
    };
    for (size_t i = 0; i < Letter::mostPatients; ++i)
        record.push_back(grouped && i < letter.rows.size() ? patientLine(source.rows[letter.rows[i]])
                                                           : QString());
    record.push_back(addressee.zip);
    record.push_back(addressee.address());
    return record;
}

QStringList withoutPractitioner(const LetterSource &source, const LetterOptions &options) {
    QStringList patients;
    for (const LetterRow &row : source.rows)
        if (row.staff[size_t(options.practitioner)].isEmpty())
            patients.append(letterWho(row));
    patients.removeDuplicates();
    return patients;
}

QString letterWho(const LetterRow &row) {
    return patientText(row.key.patient.nIDNo, row.name);
}
