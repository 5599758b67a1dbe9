#include "import/import_job.h"

#include "app/base/file_write.h"
#include "consent/record/record_write.h"
#include "db/column_names.h"
#include "import/consent_import.h"
#include "import/master_import.h"
#include "masters/master_description.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString importOperation = u"データの取込"_s;

ImportOutcome failed(const QString &reason) {
    return {ImportOutcome::Failed, reason.isEmpty() ? u"データベースに書き込めません。"_s : reason, {}, {}};
}

// Known once something was read. The reasons of an earlier import are nobody's column.
bool isThere(const cT_ADODB &db, const ImportDescription &description, const ImportField &field) {
    return field.kind == ImportField::Reason ||
           db.columnNames().has(field.inSub ? u"RIYOUSHA_SUB"_s : description.table, field.column);
}

/// @param shown a plan of the same job, which still holds while nothing that it leans on has changed; may be
/// null
Result<ImportPlan> planned(const ImportJob &job, cT_ADODB &db, const Folders &folders,
                           const ImportPlan *shown) {
    const Result<ReferenceRows> stored = readReferenceRows(db, job.kind, job.branch);
    if (!stored)
        return Failure{stored.reason()};
    // Which server it is, is known once something was read.
    if (const auto kind = masterOf(job.kind); kind && !isKeptHere(*kind, folders, db))
        return Failure{u"業務システムで登録する設定です。ここで登録するときは、"
                       "設定の「利用者などを登録する」を入れてください。"_s};
    size_t leansOn = 0;
    for (const auto &[kind, rows] : *stored)
        leansOn = rows.fingerprint(leansOn);
    if (shown && shown->leansOn == leansOn)
        return *shown;
    QStringList missing;
    ImportColumns columns = job.columns;
    for (int &field : columns.fields)
        if (field >= 0 && !isThere(db, job.description(), job.description().fields[size_t(field)])) {
            missing += job.description().fields[size_t(field)].caption;
            field = -1;
        }
    ImportPlan plan = planImport(job.description(), job.file, columns, job.unknown, *stored);
    plan.missing = missing;
    plan.leansOn = leansOn;
    return plan;
}

QByteArray restOf(const ImportJob &job, const ImportPlan &plan) {
    std::vector<CsvFile::Rest> rows;
    if (job.columns.headed)
        rows.push_back({0, job.description().fields.back().caption});
    for (const PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::Refused)
            rows.push_back({row.row, plannedText(row)});
    return job.file.rest(rows, job.columns.reasonColumn(job.description()));
}

/// A file that goes again unless what it belongs to was committed.
class RestFile {
public:
    ~RestFile() {
        if (!m_path.isEmpty() && !m_kept)
            QFile::remove(m_path);
    }
    Result<> write(const QString &path, const QByteArray &bytes) {
        const Result<> written = writeFileWhole(path, bytes, FileUse::Private);
        if (written)
            m_path = path;
        return written;
    }
    QString keep() {
        m_kept = true;
        return m_path;
    }

private:
    QString m_path;
    bool m_kept = false;
};

class Writer {
public:
    Writer(const ImportJob &job, cT_ADODB &db, const Folders &folders, const ImportPlan &shown,
           ImportRows rows, const QString &path, const ImportProgress &progress)
        : m_job(job),
          m_db(db),
          m_folders(folders),
          m_shown(shown),
          m_rows(rows),
          m_path(path),
          m_progress(progress) {}

    // A number that a program without our lock took meanwhile, or a deadlock: once more from the beginning.
    // What the database could not keep is left out of the next attempt.
    ImportOutcome write() {
        constexpr int attempts = 3;
        ImportOutcome outcome;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            m_again = false;
            outcome = attempted();
            if (!m_again)
                break;
        }
        return outcome;
    }

private:
    ImportOutcome attempted() { return m_job.kind == ImportKind::Consents ? consents() : masters(); }

    ImportOutcome masters() {
        LoggedTransaction transaction(m_db, {importOperation});
        MasterImport import(m_job, m_db, transaction);
        if (!transaction.begun())
            return failed(transaction.said().trimmed());
        if (const Result<> locked = import.lock(m_shown); !locked)
            return again(locked.reason());
        return carriedOut(
            planned(m_job, m_db, m_folders, &m_shown),
            [&](ImportPlan &plan) { return import.write(plan, m_progress); },
            [&](ImportPlan &plan) { return import.refuseLost(plan); }, [&] { return transaction.commit(); });
    }

    ImportOutcome consents() {
        RecordWrite write(m_db, {importOperation});
        ConsentImport import(m_job, m_db, m_folders);
        if (const Result<> locked = write.lock(import.patients(m_shown)); !locked)
            return again(locked.reason());
        return carriedOut(
            import.plan(), [&](ImportPlan &plan) { return import.write(write, plan, m_progress); },
            [&](ImportPlan &plan) { return import.refuseLost(plan); }, [&] { return write.commit(); });
    }

    // Under the lock: what was shown must still hold.
    template <class Write, class RefuseLost, class Commit>
    ImportOutcome carriedOut(Result<ImportPlan> now, const Write &write, const RefuseLost &refuseLost,
                             const Commit &commit) {
        if (!now)
            return again(now.reason());
        if (now->rows != m_shown.rows)
            return overtaken(std::move(*now));
        for (PlannedRow &row : now->rows)
            if (const auto lost = m_lost.constFind(row.row); lost != m_lost.constEnd()) {
                row.state = PlannedRow::Refused;
                row.faults = *lost;
            }
        if (const Result<> written = write(*now); !written)
            return written.reason() == importStopped() ? failed(written.reason()) : again(written.reason());
        const Result<int> lost = refuseLost(*now);
        if (!lost)
            return again(lost.reason());
        return *lost > 0 ? withoutLost(*now) : finished(std::move(*now), commit);
    }

    static ImportOutcome overtaken(ImportPlan now) {
        return {ImportOutcome::Overtaken,
                u"試した後にデータベースの内容が変わったため、登録していません。もう一度確かめてください。"_s,
                std::move(now),
                {}};
    }

    ImportOutcome again(const QString &reason) {
        m_again = true;
        return failed(reason);
    }

    ImportOutcome withoutLost(const ImportPlan &plan) {
        for (const PlannedRow &row : plan.rows)
            if (row.state == PlannedRow::Refused)
                m_lost.insert(row.row, row.faults);
        m_again = m_rows == ImportRows::RightOnes;
        ImportPlan shown = m_shown;
        for (size_t i = 0; i < shown.rows.size(); ++i)
            if (plan.rows[i].state == PlannedRow::Refused)
                shown.rows[i] = plan.rows[i];
        return {ImportOutcome::Refused,
                u"データベースに保存できない文字がある行があるため、登録していません。"_s,
                std::move(shown),
                {}};
    }

    template <class Commit> ImportOutcome finished(ImportPlan plan, const Commit &commit) {
        RestFile rest;
        if (plan.count(PlannedRow::Refused) > 0)
            if (const Result<> written = rest.write(m_path, restOf(m_job, plan)); !written)
                return failed(written.reason() + u"\r\n登録していません。"_s);
        if (const Result<> committed = commit(); !committed)
            return failed(committed.reason());
        return {ImportOutcome::Done, {}, std::move(plan), rest.keep()};
    }

    const ImportJob &m_job;
    cT_ADODB &m_db;
    const Folders &m_folders;
    const ImportPlan &m_shown;
    ImportRows m_rows;
    QString m_path;
    const ImportProgress &m_progress;
    QHash<int, QStringList> m_lost; ///< by row of the file
    bool m_again = false;
};

} // namespace

Result<ImportPlan> tryImport(const ImportJob &job, cT_ADODB &db, const Folders &folders) {
    return job.kind == ImportKind::Consents ? ConsentImport(job, db, folders).plan()
                                            : planned(job, db, folders, nullptr);
}

ImportOutcome writeImport(const ImportJob &job, cT_ADODB &db, const Folders &folders, const ImportPlan &shown,
                          ImportRows rows, const QString &path, const ImportProgress &progress) {
    if (rows == ImportRows::All && shown.count(PlannedRow::Refused) > 0)
        return {ImportOutcome::Refused, u"取り込めない行があるため、登録していません。"_s, shown, {}};
    return Writer(job, db, folders, shown, rows, path, progress).write();
}

QString importStopped() {
    return u"中止しました。何も登録していません。"_s;
}

QString restPathFor(const QString &path) {
    const QFileInfo file(path);
    const QString stem = file.path() + u'/' + file.completeBaseName();
    const QString ending = file.suffix().isEmpty() ? u"csv"_s : file.suffix();
    QString free = u"%1_未取込.%2"_s.arg(stem, ending);
    for (int i = 2; QFile::exists(free); ++i)
        free = u"%1_未取込%2.%3"_s.arg(stem).arg(i).arg(ending);
    return free;
}
