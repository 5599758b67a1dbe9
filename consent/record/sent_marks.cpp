#include "consent/record/sent_marks.h"

#include "consent/record/record_write.h"
#include "db/sql_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QList<ColumnValue> requestMarks(const SentRequest &request) {
    return {{request.row.iHenkeiFlg == 1 ? u"iOutputFlgHenkei"_s : u"iOutputFlg"_s, u"1"_s},
            {request.toHospital ? u"iDouiHospOutFlg"_s : u"iDouiIsiOutFlg"_s, u"1"_s}};
}

bool isSent(const MailClaim::Row &row) {
    return row.before == 1;
}

Result<std::vector<MailClaim::Row>> sendFlags(RecordWrite &write, const std::vector<PatientKey> &patients) {
    Recordset found;
    if (const Result<> read = write.read(found, sqlSendFlags(patients)); !read)
        return Failure{read.reason()};
    std::vector<MailClaim::Row> rows;
    for (int i = 0; i < found.rowCount(); ++i) {
        rows.push_back({keyAt(found, i), {}});
        if (!found.isNull(i, 6))
            rows.back().before = short(found.number(i, 6));
    }
    return rows;
}

std::vector<MailClaim::Row> rowsOf(const NoticeOfDate &date, const std::vector<MailClaim::Row> &all) {
    std::vector<MailClaim::Row> rows;
    std::ranges::copy_if(all, std::back_inserter(rows), [&](const MailClaim::Row &row) {
        return row.key.patient == date.patient && row.key.nDate == date.nDate;
    });
    return rows;
}

// Those that were not overtaken are marked first, so that the others are known.
Result<std::vector<size_t>> markOnce(cT_ADODB &db, const std::vector<SentRequest> &requests,
                                     const Operation &operation) {
    RecordWrite write(db, operation);
    if (const Result<> locked =
            write.lock(patientsOf(requests, [](const SentRequest &request) { return request.row.patient; }));
        !locked)
        return Failure{locked.reason()};
    const std::vector<size_t> order =
        inWritingOrder(requests, [](const SentRequest &request) { return request.row; });
    for (const size_t i : order)
        write.change(sqlOfNewest(requests[i].row) + u" and "_s + sqlUnchangedSince(requests[i].updateTime),
                     requestMarks(requests[i]));
    const Result<QList<qint64>> unchanged = write.send();
    if (!unchanged)
        return Failure{unchanged.reason()};
    std::vector<size_t> overtaken;
    for (size_t place = 0; place < order.size(); ++place) {
        if ((*unchanged)[qsizetype(place)] > 0)
            continue;
        const SentRequest &request = requests[order[place]];
        write.change(sqlOfNewest(request.row), requestMarks(request));
        overtaken.push_back(order[place]);
    }
    if (const Result<> committed = write.commit(); !committed)
        return Failure{committed.reason()};
    std::ranges::sort(overtaken);
    return overtaken;
}

Result<MailClaim> claimOnce(cT_ADODB &db, const std::vector<NoticeOfDate> &dates,
                            const Operation &operation) {
    RecordWrite write(db, operation);
    const std::vector<PatientKey> patients =
        patientsOf(dates, [](const NoticeOfDate &date) { return date.patient; });
    if (const Result<> locked = write.lock(patients); !locked)
        return Failure{locked.reason()};
    const Result<std::vector<MailClaim::Row>> all = sendFlags(write, patients);
    if (!all)
        return Failure{all.reason()};
    MailClaim claim;
    for (size_t i = 0; i < dates.size(); ++i) {
        const std::vector<MailClaim::Row> rows = rowsOf(dates[i], *all);
        if (rows.empty() || (!dates[i].again && std::ranges::all_of(rows, isSent)))
            claim.overtaken.push_back(i);
        std::ranges::remove_copy_if(rows, std::back_inserter(claim.rows), isSent);
    }
    if (!claim.overtaken.empty()) {
        claim.rows.clear();
        return claim;
    }
    std::ranges::sort(claim.rows, isBefore, &MailClaim::Row::key);
    for (const MailClaim::Row &row : claim.rows)
        write.change(sqlOfRow(row.key), {{u"iSendFlg"_s, u"1"_s}}, Audit::Untouched);
    if (const Result<> committed = write.commit(); !committed)
        return Failure{committed.reason()};
    return claim;
}

Result<> giveBackOnce(cT_ADODB &db, const MailClaim &claim, const Operation &operation) {
    RecordWrite write(db, operation);
    if (const Result<> locked =
            write.lock(patientsOf(claim.rows, [](const MailClaim::Row &row) { return row.key.patient; }));
        !locked)
        return locked;
    for (const MailClaim::Row &row : claim.rows)
        write.change(sqlOfRow(row.key),
                     {{u"iSendFlg"_s, row.before.isNull() ? u"Null"_s : sqlNumber(row.before)}},
                     Audit::Untouched);
    return write.commit();
}

} // namespace

Result<std::vector<size_t>> markRequested(cT_ADODB &db, const std::vector<SentRequest> &requests,
                                          const Operation &operation) {
    return againAfterDeadlock(db, [&] { return markOnce(db, requests, operation); });
}

Result<MailClaim> claimForMail(cT_ADODB &db, const std::vector<NoticeOfDate> &dates,
                               const Operation &operation) {
    return againAfterDeadlock(db, [&] { return claimOnce(db, dates, operation); });
}

Result<> giveBack(cT_ADODB &db, const MailClaim &claim, const Operation &operation) {
    return againAfterDeadlock(db, [&] { return giveBackOnce(db, claim, operation); });
}
