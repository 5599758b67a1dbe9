#include "print/renewal_list/renewal_list.h"

#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"

#include <QMultiHash>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isAskedTogether(const DueConsent &a, const DueConsent &b) {
    return a.isCorrection != b.isCorrection && a.doctor == b.doctor &&
           addresseeOf(a.known) == addresseeOf(b.known);
}

/// The correction's period joins the line; all else is the other consent's.
DueConsent together(const DueConsent &a, const DueConsent &b) {
    DueConsent line = a.isCorrection ? b : a;
    line.correction = (a.isCorrection ? a : b).correction;
    return line;
}

QString pageBreakName(RenewalListOptions::PageBreak pageBreak) {
    using enum RenewalListOptions::PageBreak;
    return pageBreak == Practitioner ? u"主担当施術者"_s : pageBreak == Counsellor ? u"相談員"_s : u"なし"_s;
}

qint32 pageBreakId(const DueConsent &line, RenewalListOptions::PageBreak pageBreak) {
    using enum RenewalListOptions::PageBreak;
    return pageBreak == Practitioner ? line.staff : pageBreak == Counsellor ? line.counsellor : 0;
}

DataValue filledNumber(qint64 number) {
    return number == 0 ? DataValue(QString()) : DataValue(number);
}

} // namespace

std::vector<DueConsent> renewalLines(const std::vector<DueConsent> &rows) {
    std::vector<DueConsent> lines;
    QMultiHash<qint32, size_t> places; // by patient
    for (const DueConsent &row : rows) {
        const auto [first, end] = places.equal_range(row.patient);
        const auto place = std::find_if(first, end, [&](size_t i) { return isAskedTogether(lines[i], row); });
        if (place != end) {
            lines[*place] = together(lines[*place], row);
            continue;
        }
        places.insert(row.patient, lines.size());
        lines.push_back(row);
    }
    return lines;
}

int monthsBegun(const QDate &firstTreatment, const QDate &month) {
    if (!firstTreatment.isValid())
        return 0;
    return qMax(0, (month.year() - firstTreatment.year()) * 12 + month.month() - firstTreatment.month() + 1);
}

const QStringList &renewalColumns() {
    static const QStringList columns{
        u"枠線描画"_s,     u"何月分"_s,         u"検索内容"_s,       u"改ページ条件"_s,
        u"改ページID"_s,   u"主担当施術者ID"_s, u"主担当施術者名"_s, u"相談員ID"_s,
        u"相談員名"_s,     u"明細No"_s,         u"利用者ID"_s,       u"利用者名"_s,
        u"利用者カナ"_s,   u"施術区分"_s,       u"施術区分表示"_s,   u"変形徒手有無"_s,
        u"要加療期間自"_s, u"要加療期間至"_s,   u"変形徒手期間自"_s, u"変形徒手期間至"_s,
        u"同意日"_s,       u"診察日"_s,         u"初療日"_s,         u"初療日からの経過月"_s,
        u"医師ID"_s,       u"医師名"_s,         u"医療機関ID"_s,     u"医療機関名"_s,
        u"医療機関住所"_s, u"病院別依頼方法"_s, u"個別依頼方法"_s};
    return columns;
}

DataFile renewalData(const std::vector<DueConsent> &lines, const RenewalListOptions &options) {
    DataFile data(renewalColumns());
    const QString month = options.monthText();
    const QString description = options.description();
    const QString pageBreak = pageBreakName(options.pageBreak);
    qint32 page = 0;
    qint64 number = 0; // begins anew on the sheet of somebody else
    for (const DueConsent &line : lines) {
        const qint32 id = pageBreakId(line, options.pageBreak);
        number = id == page ? number + 1 : 1;
        page = id;
        const Addressee addressee = addresseeOf(line.known);
        const DataValue record[] = {qint64(1),
                                    month,
                                    description,
                                    pageBreak,
                                    filledNumber(id),
                                    filledNumber(line.staff),
                                    line.staffName,
                                    filledNumber(line.counsellor),
                                    line.counsellorName,
                                    number,
                                    qint64(line.patient),
                                    line.name,
                                    line.kana,
                                    qint64(line.acupuncture),
                                    line.acupuncture ? u"鍼灸"_s : u"マッサージ"_s,
                                    line.correction == Period() ? u"無"_s : u"有"_s,
                                    dateText(line.period.start),
                                    dateText(line.period.end),
                                    dateText(line.correction.start),
                                    dateText(line.correction.end),
                                    dateText(line.consentDay),
                                    dateText(line.examined),
                                    dateText(line.firstTreatment),
                                    filledNumber(monthsBegun(line.firstTreatment, options.month)),
                                    line.doctor,
                                    addressee.doctor,
                                    filledNumber(line.institution),
                                    addressee.institution,
                                    addressee.address(),
                                    line.institutionMethod,
                                    line.method};
        data.add(record);
    }
    return data;
}

Result<> printRenewalList(const Environment &environment, const DataFile &data,
                          const RenewalListOptions &options, PrintWay way, HandedDocuments *sent) {
    cls_WfdPrintExe engine(environment, sent);
    engine.iInit(Folders::file(environment.folders.system(), options.layout()), u"同意書書更新リスト印刷"_s);
    if (engine.iWriteData(1, u"同意データ"_s, data, u"同意書更新データ.csv"_s) != 0 ||
        engine.iPutOut(way) != 0)
        return Failure{engine.sErrMsg()};
    return {};
}
