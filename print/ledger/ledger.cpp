#include "print/ledger/ledger.h"

#include "app/base/dates.h"
#include "app/base/text.h"

#include <algorithm>
#include <tuple>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView monthPattern = u"gggee年mm月";

struct PatternInfo {
    QString name, layout;
};

const PatternInfo &infoOf(LedgerPattern pattern) {
    static const std::array<PatternInfo, ledgerPatterns> patterns{{
        {u"利用者別"_s, u"同意管理同意台帳01.wfd"_s},
        {u"依頼・受取"_s, u"同意管理同意台帳02.wfd"_s},
        {u"医療機関・医師別"_s, u"同意管理同意台帳03.wfd"_s},
        {u"担当者別"_s, u"同意管理同意台帳04.wfd"_s},
    }};
    return patterns[size_t(pattern)];
}

/// Kinds of consent in the order in which the title names them.
constexpr std::array<QStringView, 3> kindNames{u"マッサージ", u"針灸", u"変形徒手"};

size_t kindOf(const LedgerRow &row) {
    return row.isDeformity() ? 2 : row.kind == TreatmentKind::Massage ? 0 : 1;
}

/// 同意種別タイトル: the kinds that stand in the ledger.
QString kindsTitle(std::span<const LedgerRow> rows) {
    std::array<bool, kindNames.size()> held{};
    for (const LedgerRow &row : rows)
        if (!lacksDeformityPeriod(row))
            held[kindOf(row)] = true;
    QString title;
    for (size_t i = 0; i < held.size(); ++i)
        if (held[i])
            title = joined(title, kindNames[i].toString(), u"・");
    return title;
}

QString procedureText(const LedgerRow &row) {
    return !row.hasConsent() ? QString() : row.oral ? u"口頭"_s : u"書面"_s;
}

/// Which month of the consent today lies in; a month that has begun counts.
QString elapsedText(const QDate &consentDay, const QDate &today) {
    if (!consentDay.isValid() || consentDay > today)
        return {};
    const int months = (today.year() - consentDay.year()) * 12 + today.month() - consentDay.month();
    return u"%1か月目"_s.arg(consentDay.addMonths(months) <= today ? months + 1 : months);
}

/// The consents' table keeps marks, not days, of what was sent and received.
QString markText(bool marked, const QString &done, const QString &absent) {
    return marked ? done : absent;
}

/// What all records of a ledger have alike.
struct Heading {
    QString month, kinds, from, to;
};

std::vector<DataValue> recordOf(const LedgerRow &row, qint64 number, const LedgerOrder &order,
                                const Heading &heading, const QDate &today) {
    return {
        qint64(1),
        heading.month,
        order.searchName,
        procedureText(row),
        number,
        qint64(row.key.patient.nIDNo),
        row.name,
        row.consentDay.isValid() ? dateText(row.consentDay) : u"同意日無"_s,
        dateText(row.period.end),
        dateText(row.reconsent),
        elapsedText(row.consentDay, today),
        row.staff[0],
        markText(row.requested, u"依頼済"_s, u"依頼日無"_s),
        markText(row.contacted, u"連絡済"_s, u"予備１無"_s),
        markText(row.mailed, u"送信済"_s, u"予備２無"_s),
        markText(row.received, u"受取済"_s, u"受け取り日無"_s),
        row.staff[1],
        row.staff[2],
        row.staff[3],
        row.staff[4],
        kindNames[kindOf(row)].toString(),
        heading.kinds,
        heading.from,
        heading.to,
        row.doctor,
        row.doctorName,
        row.institutionName,
        row.institution == 0 ? QString() : QString::number(row.institution),
        row.institutionMethod,
        row.ownMethod,
    };
}

} // namespace

QString ledgerPatternName(LedgerPattern pattern) {
    return infoOf(pattern).name;
}

QString ledgerLayout(LedgerPattern pattern) {
    return infoOf(pattern).layout;
}

QString ledgerDataName() {
    return u"同意データ"_s;
}

QString ledgerSearchName(std::span<const LedgerFilter> filters) {
    QString text;
    for (const LedgerFilter &filter : filters)
        if (!filter.name.isEmpty())
            text = joined(text, filter.caption + u'：' + filter.name, u"　　");
    return text;
}

bool lacksDeformityPeriod(const LedgerRow &row) {
    return row.isDeformity() && !(row.correction.start.isValid() && row.correction.end.isValid());
}

QStringList withoutDeformityPeriod(std::span<const LedgerRow> rows) {
    QStringList patients;
    for (const LedgerRow &row : rows)
        if (lacksDeformityPeriod(row))
            patients.append(patientText(row.key.patient.nIDNo, row.name));
    patients.removeDuplicates();
    return patients;
}

void orderLedger(std::vector<LedgerRow> &rows, const LedgerOrder &order) {
    // Doctors' codes are numbers kept as texts.
    const auto byInstitution = [](const LedgerRow &row) {
        return std::tuple(row.institution == 0, row.institution, row.institutionName, row.doctor.isEmpty(),
                          row.doctor.size(), row.doctor, row.doctorName);
    };
    const auto byStaff = [&](const LedgerRow &row) {
        const auto first = std::ranges::find(order.staff, row.staffNumber) - order.staff.begin();
        return std::tuple(row.staff[0].isEmpty(), first, row.staffNumber);
    };
    if (order.pattern == LedgerPattern::Institutions)
        std::ranges::stable_sort(rows, {}, byInstitution);
    if (order.pattern == LedgerPattern::Staff)
        std::ranges::stable_sort(rows, {}, byStaff);
}

const QStringList &ledgerColumns() {
    static const QStringList columns{
        u"枠線描画"_s, u"何月分"_s,           u"検索名称"_s,       u"種別"_s,           u"No"_s,
        u"患者ID"_s,   u"患者名"_s,           u"同意日"_s,         u"同意書期限"_s,     u"新同意日"_s,
        u"経過"_s,     u"担当者"_s,           u"依頼日"_s,         u"予備1"_s,          u"予備2"_s,
        u"受取日"_s,   u"担当者2"_s,          u"担当者3"_s,        u"担当者4"_s,        u"担当者5"_s,
        u"同意種別"_s, u"同意種別タイトル"_s, u"出力対象月From"_s, u"出力対象月To"_s,   u"医師ID"_s,
        u"医師名"_s,   u"機関名"_s,           u"機関ID"_s,         u"病院別依頼方法"_s, u"個別依頼方法"_s};
    return columns;
}

DataFile ledgerData(std::span<const LedgerRow> rows, const LedgerOrder &order, const QDate &today) {
    DataFile file(ledgerColumns());
    const QDate month = order.period.start.isValid() ? order.period.start : today;
    const Heading heading{formatDate(month, monthPattern), kindsTitle(rows),
                          formatDate(order.period.start, monthPattern),
                          formatDate(order.period.end, monthPattern)};
    for (const LedgerRow &row : rows)
        if (!lacksDeformityPeriod(row))
            file.add(recordOf(row, file.count() + 1, order, heading, today));
    return file;
}
