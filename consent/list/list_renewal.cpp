#include "consent/list/list_renewal.h"

#include "app/base/dates.h"
#include "consent/list/list_model.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

QList<RenewalRow> rowsToRenew(const ConsentListModel &model) {
    QList<RenewalRow> rows;
    for (const int record : model.receivedRecords()) {
        const ConsentRowValues values = model.values(record);
        rows.append({model.records().key(record),
                     model.records().text(record, ListField::Name),
                     model.records().date(record, ListField::ConsentDay),
                     {values.reconsent, {values.nextStart, values.nextEnd}},
                     true});
    }
    return rows;
}

QString renewalSummary(const QList<RenewalResult> &results) {
    constexpr qsizetype most = 20; // lines that a message box can show
    const qsizetype renewed = countOutcome(results, RenewalOutcome::Renewed);
    QString text = u"更新した同意：%L1 件"_s.arg(renewed);
    if (renewed == results.size())
        return text;
    QStringList lines;
    for (const RenewalResult &result : results)
        if (result.outcome != RenewalOutcome::Renewed)
            lines.append(u"%1 %2　%3"_s.arg(QString::number(result.row.key.patient.nIDNo), result.row.name,
                                            result.reason));
    text += u"\r\n更新しなかった同意：%L1 件\r\n\r\n"_s.arg(lines.size()) + lines.mid(0, most).join(u"\r\n");
    if (lines.size() > most)
        text += u"\r\n他 %L1 件"_s.arg(lines.size() - most);
    return text;
}
