#include "consent/record/standing_rows.h"

#include "consent/record/record_write.h"
#include "consent/record/renewal_query.h"
#include "db/adodb.h"

namespace {

StandingRow standingRow(RenewalSource source) {
    if (source.rows == 0)
        return {};
    return {std::move(source.read), source.row.newest, source.computer};
}

} // namespace

Result<std::vector<StandingRow>> readStandingRows(cT_ADODB &db, const std::vector<ConsentRowKey> &keys) {
    constexpr size_t together = 100; // patients that one statement names
    std::vector<StandingRow> standing;
    for (size_t from = 0; from < keys.size(); from += together) {
        const std::vector<ConsentRowKey> some(keys.begin() + long(from),
                                              keys.begin() + long(std::min(from + together, keys.size())));
        Result<Recordset> rows = readRows(db, sqlStanding(patientsOf(some, &ConsentRowKey::patient)));
        if (!rows)
            return Failure{rows.reason()};
        const RenewalSources sources(*std::move(rows));
        for (const ConsentRowKey &key : some)
            standing.push_back(standingRow(sources.find(key)));
    }
    return standing;
}
