#include "consent/record/sent_marks.h"

#include "consent/record/record_write.h"
#include "db/sql_text.h"

#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Row> std::vector<PatientKey> patientsOf(const std::vector<Row> &rows, auto patient) {
    std::vector<PatientKey> patients;
    std::ranges::transform(rows, std::back_inserter(patients), patient);
    return patients;
}

QList<ColumnValue> requestMarks(const SentRequest &request) {
    return {{request.row.iHenkeiFlg == 1 ? u"iOutputFlgHenkei"_s : u"iOutputFlg"_s, u"1"_s},
            {request.toHospital ? u"iDouiHospOutFlg"_s : u"iDouiIsiOutFlg"_s, u"1"_s}};
}

/// Gives whether the row was overtaken.
Result<bool> markOne(RecordWrite &write, const SentRequest &request) {
    const QString newest = sqlOfNewest(request.row);
    const QList<ColumnValue> marks = requestMarks(request);
    const Result<qint64> unchanged =
        write.change(newest + u" and "_s + sqlUnchangedSince(request.updateTime), marks);
    if (!unchanged)
        return Failure{unchanged.reason()};
    if (*unchanged > 0)
        return false;
    const Result<qint64> changed = write.change(newest, marks);
    return changed ? Result<bool>(true) : Failure{changed.reason()};
}

bool isSent(const MailClaim::Row &row) {
    return row.before == 1;
}

/// The rows of one date.
Result<std::vector<MailClaim::Row>> sendFlags(RecordWrite &write, const NoticeOfDate &date) {
    Recordset found;
    if (const Result<> read = write.read(found, sqlSendFlags(sqlOfDate(date.patient, date.nDate))); !read)
        return Failure{read.reason()};
    std::vector<MailClaim::Row> rows;
    for (int i = 0; i < found.rowCount(); ++i) {
        const auto number = [&](int column) { return found.number(i, column); };
        rows.push_back({{date.patient, qint32(number(0)), short(number(1)), qint32(number(2))}, {}});
        if (!found.isNull(i, 3))
            rows.back().before = short(number(3));
    }
    return rows;
}

} // namespace

Result<std::vector<size_t>> markRequested(cT_ADODB &db, const std::vector<SentRequest> &requests) {
    RecordWrite write(db);
    if (const Result<> locked =
            write.lock(patientsOf(requests, [](const SentRequest &request) { return request.row.patient; }));
        !locked)
        return Failure{locked.reason()};
    std::vector<size_t> order(requests.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::sort(order, isBefore, [&](size_t i) { return requests[i].row; });
    std::vector<size_t> overtaken;
    for (const size_t i : order) {
        const Result<bool> marked = markOne(write, requests[i]);
        if (!marked)
            return Failure{marked.reason()};
        if (*marked)
            overtaken.push_back(i);
    }
    if (const Result<> committed = write.commit(); !committed)
        return Failure{committed.reason()};
    std::ranges::sort(overtaken);
    return overtaken;
}

Result<MailClaim> claimForMail(cT_ADODB &db, const std::vector<NoticeOfDate> &dates) {
    RecordWrite write(db);
    if (const Result<> locked =
            write.lock(patientsOf(dates, [](const NoticeOfDate &date) { return date.patient; }));
        !locked)
        return Failure{locked.reason()};
    MailClaim claim;
    for (size_t i = 0; i < dates.size(); ++i) {
        const Result<std::vector<MailClaim::Row>> rows = sendFlags(write, dates[i]);
        if (!rows)
            return Failure{rows.reason()};
        if (rows->empty() || (!dates[i].again && std::ranges::all_of(*rows, isSent)))
            claim.overtaken.push_back(i);
        std::ranges::remove_copy_if(*rows, std::back_inserter(claim.rows), isSent);
    }
    if (!claim.overtaken.empty()) {
        claim.rows.clear();
        return claim;
    }
    std::ranges::sort(claim.rows, isBefore, &MailClaim::Row::key);
    for (const MailClaim::Row &row : claim.rows)
        if (const Result<qint64> marked =
                write.change(sqlOfRow(row.key), {{u"iSendFlg"_s, u"1"_s}}, Audit::Untouched);
            !marked)
            return Failure{marked.reason()};
    if (const Result<> committed = write.commit(); !committed)
        return Failure{committed.reason()};
    return claim;
}

Result<> giveBack(cT_ADODB &db, const MailClaim &claim) {
    RecordWrite write(db);
    if (const Result<> locked =
            write.lock(patientsOf(claim.rows, [](const MailClaim::Row &row) { return row.key.patient; }));
        !locked)
        return locked;
    for (const MailClaim::Row &row : claim.rows)
        if (const Result<qint64> given = write.change(
                sqlOfRow(row.key), {{u"iSendFlg"_s, row.before.isNull() ? u"Null"_s : sqlNumber(row.before)}},
                Audit::Untouched);
            !given)
            return Failure{given.reason()};
    return write.commit();
}
