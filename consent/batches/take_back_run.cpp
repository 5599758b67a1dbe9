#include "consent/batches/take_back_run.h"

#include "consent/batches/take_back_query.h"
#include "consent/record/record_write.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "history/batch.h"
#include "history/history_query.h"

#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Newest marks of so many patients go in one statement.
constexpr size_t mostMarked = 50;
/// Patients in one condition: servers refuse statements of some ten thousand literals.
constexpr size_t mostPatients = 1000;

template <class Each> Result<> inParts(const std::vector<PatientKey> &patients, size_t most, Each each) {
    for (size_t first = 0; first < patients.size(); first += most) {
        const size_t count = std::min(most, patients.size() - first);
        const std::vector<PatientKey> some(&patients[first], &patients[first] + count);
        if (const Result<> done = each(some); !done)
            return done;
    }
    return {};
}

/// Each once.
std::vector<PatientKey> once(const std::vector<PatientKey> &patients) {
    std::set<std::tuple<short, short, qint32>> keys;
    for (const PatientKey &patient : patients)
        keys.emplace(patient.iKyotenCd, patient.iKyotenEb, patient.nIDNo);
    std::vector<PatientKey> result;
    for (const auto &[office, part, number] : keys)
        result.push_back({office, part, number});
    return result;
}

/// The patients of the units that fit.
template <class Fits> std::vector<PatientKey> patientsOfUnits(const TakeBackPlan &plan, Fits fits) {
    std::vector<PatientKey> patients;
    for (const TakeBackUnit &unit : plan.units)
        if (fits(unit))
            patients.push_back(unit.patient);
    return once(patients);
}

bool goesBack(const TakeBackUnit &unit) {
    return unit.goesBack();
}

bool isLeft(const TakeBackUnit &unit) {
    return !unit.goesBack() && !unit.isDone();
}

Result<Recordset> readSaying(cT_ADODB &db, const QString &sql) {
    Result<Recordset> rows = readRows(db, sql);
    return rows ? std::move(rows) : Failure{rows.reason().trimmed()};
}

Result<StandingRows> standingRows(cT_ADODB &db, const std::vector<PatientKey> &patients) {
    StandingRows standing;
    const Result<> read =
        inParts(patients, mostPatients, [&](const std::vector<PatientKey> &some) -> Result<> {
            Result<Recordset> rows = readSaying(db, sqlStanding(some));
            if (!rows)
                return Failure{rows.reason()};
            standing.add(*std::move(rows));
            return {};
        });
    return read ? Result<StandingRows>(std::move(standing)) : Failure{read.reason()};
}

/// Which rows of a batch, and of those that took it back, were taken back.
class RowTakers {
public:
    /// Reads those of a batch, those of its takers and so on.
    Result<> read(cT_ADODB &db, qint32 batch) {
        for (std::vector<qint32> batches{batch}; !batches.empty();) {
            const Result<Recordset> rows = readSaying(db, sqlTakenRows(batches));
            if (!rows)
                return Failure{rows.reason()};
            batches.clear();
            for (const TakenRow &row : takenRows(*rows)) {
                // Only a later run can take one back; of rows that say otherwise there might be a circle.
                if (row.batch <= row.takesBack)
                    continue;
                QSet<QString> &identities = m_rows[row.takesBack][row.batch];
                if (identities.isEmpty())
                    batches.push_back(row.batch);
                identities.insert(row.identity);
            }
        }
        return {};
    }

    bool isBack(qint32 batch, const QString &identity) const { return takerOf(batch, identity) != 0; }
    /// The last batch that took rows of this one back, and holds for one of them; 0: none.
    qint32 takerOf(qint32 batch, const std::vector<WrittenRow> &rows) const {
        qint32 last = 0;
        for (const WrittenRow &row : rows)
            last = std::max(last, takerOf(batch, row.identity()));
        return last;
    }

private:
    qint32 takerOf(qint32 batch, const QString &identity) const {
        const auto takers = m_rows.find(batch);
        if (takers != m_rows.end())
            for (auto taker = takers->second.rbegin(); taker != takers->second.rend(); ++taker)
                if (taker->second.contains(identity) && !isBack(taker->first, identity))
                    return taker->first;
        return 0;
    }

    std::map<qint32, std::map<qint32, QSet<QString>>> m_rows; ///< of a batch by its takers
};

QList<ColumnValue> valuesBefore(const WrittenRow &row) {
    QList<ColumnValue> columns;
    for (auto value = row.values.begin(); value != row.values.end(); ++value)
        columns.append({value.key(), sqlText(value->before)});
    return columns;
}

// A sibling program, which knows nothing of the lock, may write a row at the last moment: none fits then.
void writeBack(RecordWrite &write, const WrittenRow &row) {
    const QString asSeen = sqlWhere(*row.consent) + u" AND "_s + sqlUnchangedSince(row.standing);
    if (!row.wasThere)
        write.remove(asSeen);
    else if (!row.isThere)
        write.restore(valuesBefore(row));
    else
        write.change(asSeen, valuesBefore(row), Audit::Untouched);
}

/// Who wrote a row last with a program that keeps no history, the row itself may say.
void noteSilentWriters(TakeBackProposal &proposal, const StandingRows &standing) {
    for (const TakeBackUnit *unit : proposal.plan.left()) {
        const WrittenRow &row = proposal.plan.rows[unit->because];
        const auto place = row.consent ? standing.find(*row.consent) : std::nullopt;
        if (unit->stay != RowStay::Overtaken || !place)
            continue;
        const QString time = timeText(standing.value(*place, u"tUpDateTime"_s));
        if (time > std::max(timeText(row.time), proposal.writers[row.identity()].time))
            proposal.writers[row.identity()] = {time, standing.value(*place, u"cPcName"_s), {}};
    }
}

bool movesMarks(const WrittenRow &row) {
    return row.cameOrWent() || row.values.contains(u"iNewestFlg"_s);
}

} // namespace

QString takeBackOperation(bool part) {
    return part ? u"処理の取消（一部）"_s : u"処理の取消"_s;
}

Result<TakeBackProposal> TakeBack::propose(qint32 number) {
    const Result<std::optional<BatchInfo>> batch = readBatch(m_db, m_branch, number);
    if (!batch)
        return Failure{batch.reason()};
    if (!*batch)
        return Failure{u"処理番号%1 は、この事業所の処理にありません。"_s.arg(number)};
    Result<TakeBackPlan> found = plan(number);
    if (!found)
        return Failure{found.reason()};
    TakeBackProposal proposal{.batch = **batch, .taker = {}, .plan = *std::move(found)};
    // A run that was broken off never said how many rows it came to.
    if (proposal.batch.rows == 0)
        proposal.batch.rows = qint32(proposal.plan.units.size());
    if (const Result<> read = readLeft(proposal); !read)
        return Failure{read.reason()};
    return proposal;
}

Result<TakeBackPlan> TakeBack::plan(qint32 batch) {
    const Result<Recordset> records = readSaying(m_db, sqlRecordsOfBatch(batch));
    if (!records)
        return Failure{records.reason()};
    std::vector<WrittenRow> rows = writtenRows(batchRecords(*records));
    std::vector<PatientKey> patients;
    std::ranges::transform(rows, std::back_inserter(patients), &WrittenRow::patient);
    const Result<StandingRows> standing = standingRows(m_db, once(patients));
    if (!standing)
        return Failure{standing.reason()};
    RowTakers takers;
    if (const Result<> read = takers.read(m_db, batch); !read)
        return Failure{read.reason()};
    const qint32 taker = takers.takerOf(batch, rows);
    TakeBackPlan plan = planTakeBack(std::move(rows), *standing,
                                     [&](const QString &identity) { return takers.isBack(batch, identity); });
    plan.taker = taker;
    return plan;
}

Result<> TakeBack::readLeft(TakeBackProposal &proposal) {
    const TakeBackPlan &plan = proposal.plan;
    if (plan.taker != 0) {
        const Result<std::optional<BatchInfo>> taker = readBatch(m_db, m_branch, plan.taker);
        if (!taker)
            return Failure{taker.reason()};
        proposal.taker = *taker;
    }
    const auto read = [&](const std::vector<PatientKey> &some) -> Result<> {
        const Result<Recordset> names = readSaying(m_db, sqlPatientNames(some));
        const Result<Recordset> later =
            readSaying(m_db, sqlWritersSince(some, plan.rows.front().time, proposal.batch.number));
        if (!names || !later)
            return Failure{names ? later.reason() : names.reason()};
        for (int i = 0; i < names->rowCount(); ++i)
            proposal.names.insert(qint32(names->number(i, 0)), names->text(i, 1));
        for (const Writer &writer : writers(*later))
            proposal.writers.insert(writer.identity,
                                    {timeText(writer.time), writer.computer, writer.operation});
        return {};
    };
    const std::vector<PatientKey> patients = patientsOfUnits(plan, isLeft);
    if (const Result<> done = inParts(patients, mostPatients, read); !done)
        return done;
    const Result<StandingRows> standing = standingRows(m_db, patients);
    if (!standing)
        return Failure{standing.reason()};
    noteSilentWriters(proposal, *standing);
    return {};
}

Result<bool> TakeBack::take(const TakeBackProposal &agreed) {
    Result<std::optional<Batch>> batch =
        Batch::begin(m_db, m_branch, takeBackOperation(agreed.isPart()), agreed.batch.number);
    if (!batch)
        return Failure{batch.reason()};
    if (!*batch)
        return Failure{batchesAreKept(m_db).reason()};
    return againAfterDeadlock(m_db, [&] { return takeOnce(agreed, **batch); });
}

Result<bool> TakeBack::takeOnce(const TakeBackProposal &agreed, Batch &batch) {
    RecordWrite write(m_db, batch.operation());
    const std::vector<PatientKey> patients = patientsOfUnits(agreed.plan, goesBack);
    if (const Result<> locked = write.lock(patients); !locked)
        return Failure{locked.reason()};
    const Result<TakeBackPlan> now = plan(agreed.batch.number);
    if (!now)
        return Failure{now.reason()};
    if (!now->sameAs(agreed.plan))
        return false;
    if (const Result<> restored = restore(write, *now); !restored)
        return Failure{restored.reason()};
    if (const Result<> finished = batch.finish(now->goingBack()); !finished)
        return Failure{finished.reason()};
    const Result<> committed = write.commit();
    return committed ? Result<bool>(true) : Failure{committed.reason()};
}

// What goes goes first: what comes may bear its key.
Result<> TakeBack::restore(RecordWrite &write, const TakeBackPlan &plan) {
    std::vector<const WrittenRow *> rows;
    for (const TakeBackUnit &unit : plan.units)
        if (unit.goesBack())
            for (const size_t row : unit.rows)
                rows.push_back(&plan.rows[row]);
    std::ranges::stable_partition(rows, [](const WrittenRow *row) { return !row->wasThere; });
    std::vector<PatientKey> marked;
    for (const WrittenRow *row : rows) {
        writeBack(write, *row);
        if (movesMarks(*row))
            marked.push_back(row->patient);
    }
    const Result<QList<qint64>> written = write.send();
    if (!written)
        return Failure{written.reason()};
    if (std::ranges::any_of(*written, [](qint64 count) { return count != 1; }))
        return Failure{u"取り消しの途中で、同意が他のプログラムに変更されました。何も取り消していません。"
                       "もう一度お試しください。"_s};
    return inParts(once(marked), mostMarked, [&](const std::vector<PatientKey> &some) -> Result<> {
        const Result<std::vector<ConsentRowKey>> done = write.markNewest(some);
        return done ? Result<>() : Failure{done.reason()};
    });
}
