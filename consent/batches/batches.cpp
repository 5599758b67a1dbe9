#include "consent/batches/batches.h"

#include "app/base/dates.h"
#include "consent/batches/batches_query.h"
#include "consent/batches/take_back_run.h"
#include "db/adodb.h"
#include "history/log_tables.h"

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Which runs were taken back, and by which.
class Takers {
public:
    explicit Takers(std::vector<BatchInfo> takers) {
        for (BatchInfo &taker : takers) // the last one first
            m_takers[taker.takesBack.value_or(0)].push_back(std::move(taker));
    }

    /// The last that took a run back and was not taken back itself.
    const BatchInfo *of(qint32 batch) const {
        const auto takers = m_takers.find(batch);
        if (takers != m_takers.end())
            for (const BatchInfo &taker : takers->second)
                // A run can only be taken back by a later one.
                if (taker.number > batch && !isBack(taker.number))
                    return &taker;
        return nullptr;
    }

private:
    bool isBack(qint32 batch) const {
        const BatchInfo *taker = of(batch);
        return taker && taker->kind != takeBackOperation(true);
    }

    std::map<qint32, std::vector<BatchInfo>> m_takers;
};

Result<std::vector<BatchInfo>> read(cT_ADODB &db, const QString &sql) {
    const Result<Recordset> rows = readRows(db, sql);
    return rows ? Result<std::vector<BatchInfo>>(batchesIn(*rows)) : Failure{rows.reason().trimmed()};
}

/// The runs, each with what became of it.
Result<std::vector<BatchInfo>> readWithTakers(cT_ADODB &db, const Branch &branch, const QString &condition) {
    if (const Result<> kept = batchesAreKept(db); !kept)
        return Failure{kept.reason()};
    Result<std::vector<BatchInfo>> batches = read(db, sqlBatches(branch, condition));
    if (!batches || batches->empty())
        return batches;
    Result<std::vector<BatchInfo>> takers = read(db, sqlBatches(branch, sqlTookBack()));
    if (!takers)
        return takers;
    const Takers all(*std::move(takers));
    for (BatchInfo &batch : *batches)
        if (const BatchInfo *taker = all.of(batch.number)) {
            batch.takenBackBy = taker->number;
            batch.partly = taker->kind == takeBackOperation(true);
        }
    return batches;
}

} // namespace

Result<> batchesAreKept(cT_ADODB &db) {
    const ErrorsSince errors(db);
    if (db.iConnect() != 0)
        return Failure{errors.text().trimmed()};
    const HistoryState &state = settleLog(db);
    if (state.kind == HistoryState::Kept)
        return {};
    const QString text = u"変更履歴が記録されていないため、処理の一覧と取消は使えません。"
                         "「設定」の「変更履歴の準備」をご覧ください。"_s;
    return Failure{state.reason.isEmpty() ? text : text + u"\r\n"_s + state.reason};
}

Result<std::vector<BatchInfo>> readBatches(cT_ADODB &db, const Branch &branch, const QDate &from,
                                           const QDate &to) {
    return readWithTakers(db, branch, sqlOfDays(from, to));
}

Result<std::optional<BatchInfo>> readBatch(cT_ADODB &db, const Branch &branch, qint32 number) {
    const Result<std::vector<BatchInfo>> found = readWithTakers(db, branch, sqlOfNumber(number));
    if (!found)
        return Failure{found.reason()};
    return found->empty() ? std::optional<BatchInfo>() : found->front();
}

Result<std::optional<BatchInfo>> readLastBatch(cT_ADODB &db, const Branch &branch, const QString &computer,
                                               const QDate &day) {
    const Result<std::vector<BatchInfo>> found = readWithTakers(
        db, branch,
        sqlOfDays(day, day) + u" AND "_s + sqlOfComputer(computer) + u" AND "_s + sqlChangedRows());
    if (!found)
        return Failure{found.reason()};
    for (const BatchInfo &batch : *found)
        if (!batch.takesBack && (!batch.takenBackBy || batch.partly))
            return std::optional(batch);
    return std::optional<BatchInfo>();
}

QString shortTime(const QString &time, const QDate &today) {
    const QString minutes = time.left(u"yyyy/mm/dd hh:mm"_s.size());
    return minutes.startsWith(dateText(today)) ? minutes.mid(u"yyyy/mm/dd "_s.size()) : minutes;
}

QString batchText(const BatchInfo &batch, const QDate &today) {
    return u"処理番号%1 %2（%3、%L4件）"_s.arg(batch.number)
        .arg(batch.kind, shortTime(batch.time, today))
        .arg(batch.rows);
}
