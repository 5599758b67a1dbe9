#include "import/master_import.h"

#include "app/base/codepage932.h"
#include "app/base/text.h"
#include "db/tables/masters/caremane.h"
#include "masters/master_description.h"

#include <algorithm>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

/// In the order of their numbers, so that no two programs wait for each other.
QStringList codesOf(const ImportPlan &plan, PlannedRow::State state) {
    QStringList codes;
    for (const PlannedRow &row : plan.rows)
        if (row.state == state)
            codes += row.code;
    const auto number = [](const QString &code) { return code.toLongLong(); };
    if (!std::ranges::is_sorted(codes, {}, number))
        std::ranges::sort(codes, {}, number);
    return codes;
}

} // namespace

std::optional<MasterKind> masterOf(ImportKind kind) {
    switch (kind) {
    case ImportKind::Facilities:
        return MasterKind::Facility;
    case ImportKind::Doctors:
        return MasterKind::Doctor;
    case ImportKind::Staff:
        return MasterKind::Staff;
    case ImportKind::Counsellors:
        return MasterKind::Counsellor;
    case ImportKind::Patients:
        return MasterKind::Patient;
    case ImportKind::CareManagers:
    case ImportKind::Consents:
        break;
    }
    return {};
}

MasterImport::MasterImport(const ImportJob &job, cT_ADODB &db, LoggedTransaction &transaction)
    : m_job(job), m_description(job.description()), m_db(db), m_transaction(transaction) {
    for (const ImportField &field : m_description.fields)
        if (field.inSub)
            m_subColumns.insert(field.column);
}

Result<> MasterImport::execute(const QStringList &statements) {
    const ErrorsSince errors(m_db);
    QList<qint64> affected;
    return statements.isEmpty() || m_db.iExecSQLs(statements, affected) == 0
               ? Result<>()
               : Failure{errors.text().trimmed()};
}

Result<> MasterImport::lock(const ImportPlan &plan) {
    if (const Result<> locked = execute({lockImportsSql()}); !locked)
        return locked;
    const QStringList codes = codesOf(plan, PlannedRow::Changed);
    for (qsizetype at = 0; at < codes.size(); at += mostRowsAStatement)
        if (const Result<> locked =
                execute({lockRowsSql(m_description, m_job.branch, codes.mid(at, mostRowsAStatement))});
            !locked)
            return locked;
    return {};
}

Result<> MasterImport::watch(const ImportPlan &plan, PlannedRow::State state) {
    const QStringList codes = codesOf(plan, state);
    for (qsizetype at = 0; at < codes.size(); at += mostRowsAStatement)
        for (const auto &[table, where] : writtenConditions(
                 m_description, m_job.branch, codes.mid(at, mostRowsAStatement), state == PlannedRow::New))
            if (const Result<> watched = m_transaction.watch(table, where); !watched)
                return watched;
    return {};
}

Result<> MasterImport::giveNumbers(ImportPlan &plan) {
    const Result<Recordset> highest = readRows(m_db, highestCodeSql(m_description, m_job.branch));
    if (!highest)
        return Failure{highest.reason().trimmed()};
    qint64 next = highest->number(0, 0);
    for (const PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::New)
            next = std::max(next, row.code.toLongLong());
    for (PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::New && row.code.isEmpty())
            row.code = QString::number(++next);
    return next <= std::numeric_limits<qint32>::max() ? Result<>() : Failure{u"番号が足りません。"_s};
}

RowToWrite MasterImport::part(const PlannedRow &row, bool sub) const {
    RowToWrite part{row.code, {}};
    for (const auto &[column, value] : row.values.asKeyValueRange())
        if (isInSub(column) == sub)
            part.values.insert(column, value);
    // What is neither would be in no list of either treatment.
    if (!sub && m_description.kind == ImportKind::Patients && row.state == PlannedRow::New &&
        !part.values.contains(u"iSejutsuKubun"_s))
        part.values.insert(u"iSejutsuKubun"_s, u"0"_s);
    return part;
}

Result<> MasterImport::insert(const ImportPlan &plan, bool sub, const ImportProgress &progress) {
    std::vector<RowToWrite> rows;
    std::set<QString> columns;
    for (const PlannedRow &row : plan.rows) {
        if (row.state != PlannedRow::New)
            continue;
        rows.push_back(part(row, sub));
        for (const auto &[column, value] : rows.back().values.asKeyValueRange())
            columns.insert(column);
    }
    const auto number = [](const RowToWrite &row) { return row.code.toLongLong(); };
    if (!std::ranges::is_sorted(rows, {}, number))
        std::ranges::sort(rows, {}, number);
    const QStringList list(columns.begin(), columns.end());
    const QString computer = m_db.csGetComputerName();
    for (size_t at = 0; at < rows.size(); at += size_t(mostRowsAStatement)) {
        const auto end = std::min(rows.size(), at + size_t(mostRowsAStatement));
        const std::vector<RowToWrite> some(rows.begin() + qsizetype(at), rows.begin() + qsizetype(end));
        if (const Result<> done =
                execute({insertRowsSql(m_description, m_job.branch, sub, list, some, computer)});
            !done)
            return done;
        if (progress && !progress(int(end), int(rows.size())))
            return Failure{importStopped()};
    }
    return {};
}

Result<> MasterImport::insertBesidePatients(const ImportPlan &plan, const ImportProgress &progress) {
    const bool sub = std::ranges::none_of(plan.rows, [&](const PlannedRow &row) {
        return row.state == PlannedRow::New && !part(row, true).values.isEmpty();
    });
    if (!sub)
        if (const Result<> done = insert(plan, true, progress); !done)
            return done;
    const QStringList codes = codesOf(plan, PlannedRow::New);
    for (qsizetype at = 0; at < codes.size(); at += mostRowsAStatement)
        if (const Result<> done = execute(insertBesidePatientsSql(
                m_job.branch, codes.mid(at, mostRowsAStatement), sub, m_db.csGetComputerName()));
            !done)
            return done;
    return {};
}

QStringList MasterImport::updates(const PlannedRow &row) const {
    const QString computer = m_db.csGetComputerName();
    const RowToWrite own = part(row, false), sub = part(row, true);
    QStringList statements;
    if (!own.values.isEmpty())
        statements += updateRowSql(m_description, m_job.branch, false, own, computer);
    if (!sub.values.isEmpty())
        statements += row.withoutSub ? insertRowsSql(m_description, m_job.branch, true, sub.values.keys(),
                                                     {sub}, computer)
                                     : updateRowSql(m_description, m_job.branch, true, sub, computer);
    return statements;
}

bool MasterImport::isRepeated(const PlannedRow &row) const {
    if (!m_job.copy)
        return false;
    if (m_job.kind == ImportKind::CareManagers)
        return row.values.contains(u"cName"_s);
    const std::optional<MasterKind> kind = masterOf(m_job.kind);
    return kind && std::ranges::any_of(describeMaster(*kind).repeated,
                                       [&](const QString &column) { return row.values.contains(column); });
}

// As the masters' forms do where the user wants it: names and addresses go on to those who repeat them.
Result<> MasterImport::updateCopied(const PlannedRow &row) {
    if (m_job.kind == ImportKind::CareManagers) {
        if (const Result<> done = execute(updates(row)); !done)
            return done;
        cT_CAREMANE table;
        table.iInit(m_db);
        cD_CAREMANE record;
        record.nIDNo = row.code.toInt();
        record.cName = row.values.value(u"cName"_s);
        const QString named = u"RIYOUSHA.nCareManeCd = "_s + QString::number(record.nIDNo);
        if (const Result<> watched = m_transaction.watch(u"RIYOUSHA", named); !watched)
            return watched;
        return table.iDataUpdate_ToRiyousha(&record) == 0 ? Result<>() : Failure{table.sErrMsg()};
    }
    const auto store = makeMasterStore(*masterOf(m_job.kind), m_db);
    const Result<std::optional<MasterValues>> before = store->read(row.code);
    if (!before || !*before)
        return Failure{before.reason()};
    if (const Result<> done = execute(updates(row)); !done)
        return done;
    const Result<std::optional<MasterValues>> now = store->read(row.code);
    if (!now || !*now)
        return Failure{now.reason()};
    const Result<> watched = store->watchCopies(m_transaction, row.code);
    return watched ? store->copy(**before, **now) : watched;
}

Result<> MasterImport::write(ImportPlan &plan, const ImportProgress &progress) {
    if (const Result<> given = giveNumbers(plan); !given)
        return given;
    for (const auto state : {PlannedRow::New, PlannedRow::Changed})
        if (const Result<> watched = watch(plan, state); !watched)
            return watched;
    if (const Result<> done = insert(plan, false, progress); !done)
        return done;
    if (m_description.kind == ImportKind::Patients)
        if (const Result<> done = insertBesidePatients(plan, progress); !done)
            return done;
    std::vector<const PlannedRow *> changed;
    for (const PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::Changed)
            changed.push_back(&row);
    std::ranges::sort(changed, {}, [](const PlannedRow *row) { return row->code.toLongLong(); });
    QStringList statements;
    for (size_t at = 0; at < changed.size(); ++at) {
        const bool repeated = isRepeated(*changed[at]);
        if (!repeated)
            statements += updates(*changed[at]);
        const bool last = at + 1 == changed.size();
        if (repeated || last || statements.size() >= mostRowsAStatement) {
            if (const Result<> done = execute(statements); !done)
                return done;
            statements.clear();
            if (progress && !progress(int(at), int(changed.size())))
                return Failure{importStopped()};
        }
        if (repeated)
            if (const Result<> done = updateCopied(*changed[at]); !done)
                return done;
    }
    return {};
}

// A server that keeps texts in a code page of its own turns what that lacks into '?' without a word.
Result<int> MasterImport::refuseLost(ImportPlan &plan) {
    QHash<QString, PlannedRow *> doubtful;
    std::set<QString> columns;
    for (PlannedRow &row : plan.rows) {
        if (row.state != PlannedRow::New && row.state != PlannedRow::Changed)
            continue;
        for (const auto &[column, value] : std::as_const(row.values).asKeyValueRange())
            if (!isInSub(column) && !fits932(value)) {
                doubtful.insert(row.code, &row);
                columns.insert(column);
            }
    }
    const QStringList codes = doubtful.keys(), list(columns.begin(), columns.end());
    int lost = 0;
    for (qsizetype at = 0; at < codes.size(); at += mostRowsAStatement) {
        const Result<Recordset> rows = readRows(
            m_db, writtenRowsSql(m_description, m_job.branch, list, codes.mid(at, mostRowsAStatement)));
        if (!rows)
            return Failure{rows.reason().trimmed()};
        for (int found = 0; found < rows->rowCount(); ++found) {
            PlannedRow &row = *doubtful.value(rows->text(found, 0).trimmed());
            for (qsizetype i = 0; i < list.size(); ++i)
                if (const QString value = row.values.value(list[i]);
                    !value.isEmpty() && trimRight(rows->text(found, int(i) + 1)) != value)
                    row.faults += u"データベースに保存できない文字があります：%1"_s.arg(value);
            lost += !row.faults.isEmpty();
            if (!row.faults.isEmpty())
                row.state = PlannedRow::Refused;
        }
    }
    return lost;
}
