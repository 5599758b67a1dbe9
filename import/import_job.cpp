#include "import/import_job.h"

#include "app/base/file_write.h"
#include "import/master_import.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

ImportOutcome failed(const QString &reason) {
    return {ImportOutcome::Failed, reason.isEmpty() ? u"データベースに書き込めません。"_s : reason, {}, {}};
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
    Writer(const ImportJob &job, cT_ADODB &db, const ImportPlan &shown, ImportRows rows, const QString &path,
           const ImportProgress &progress)
        : m_job(job), m_db(db), m_shown(shown), m_rows(rows), m_path(path), m_progress(progress) {}

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
    ImportOutcome attempted() {
        const ErrorsSince errors(m_db);
        if (m_db.iConnect() != 0)
            return failed(errors.text().trimmed());
        Transaction transaction(m_db);
        MasterImport import(m_job, m_db);
        if (!transaction.begun())
            return failed(errors.text().trimmed());
        if (const Result<> locked = import.lock(m_shown); !locked)
            return again(locked.reason());
        const Result<ReferenceRows> stored = readReferenceRows(m_db, m_job.kind, m_job.branch);
        if (!stored)
            return again(stored.reason());
        ImportPlan now = planImport(m_job.description(), m_job.file, m_job.columns, m_job.unknown, *stored);
        if (now.rows != m_shown.rows)
            return {
                ImportOutcome::Overtaken,
                u"試した後にデータベースの内容が変わったため、登録していません。もう一度確かめてください。"_s,
                std::move(now),
                {}};
        for (PlannedRow &row : now.rows)
            if (const auto lost = m_lost.constFind(row.row); lost != m_lost.constEnd()) {
                row.state = PlannedRow::Refused;
                row.faults = *lost;
            }
        if (const Result<> written = import.write(now, m_progress); !written)
            return m_db.isConnected() && !errors.text().isEmpty() ? again(written.reason())
                                                                  : failed(written.reason());
        const Result<int> lost = import.refuseLost(now);
        if (!lost)
            return again(lost.reason());
        if (*lost > 0)
            return withoutLost(now);
        return finished(transaction, now, errors);
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

    ImportOutcome finished(Transaction &transaction, ImportPlan &plan, const ErrorsSince &errors) {
        RestFile rest;
        if (plan.count(PlannedRow::Refused) > 0)
            if (const Result<> written = rest.write(m_path, restOf(m_job, plan)); !written)
                return failed(written.reason() + u"\r\n登録していません。"_s);
        if (transaction.commit() != 0)
            return failed(errors.text().trimmed());
        return {ImportOutcome::Done, {}, std::move(plan), rest.keep()};
    }

    const ImportJob &m_job;
    cT_ADODB &m_db;
    const ImportPlan &m_shown;
    ImportRows m_rows;
    QString m_path;
    const ImportProgress &m_progress;
    QHash<int, QStringList> m_lost; ///< by row of the file
    bool m_again = false;
};

} // namespace

Result<ImportPlan> tryImport(const ImportJob &job, cT_ADODB &db, const Folders &) {
    const Result<ReferenceRows> stored = readReferenceRows(db, job.kind, job.branch);
    if (!stored)
        return Failure{stored.reason()};
    return planImport(job.description(), job.file, job.columns, job.unknown, *stored);
}

ImportOutcome writeImport(const ImportJob &job, cT_ADODB &db, const Folders &, const ImportPlan &shown,
                          ImportRows rows, const QString &path, const ImportProgress &progress) {
    if (rows == ImportRows::All && shown.count(PlannedRow::Refused) > 0)
        return {ImportOutcome::Refused, u"取り込めない行があるため、登録していません。"_s, shown, {}};
    return Writer(job, db, shown, rows, path, progress).write();
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
