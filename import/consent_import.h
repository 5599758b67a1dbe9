#pragma once

#include "consent/record/drafts_save.h"
#include "consent/rules/period_basis.h"
#include "import/import_job.h"

#include <optional>

/// Plans and writes consents. A consent of the file and one of the database are the same when patient, record
/// date and kind are. What the file says nothing of is proposed as the entry form does: content, diagnosis
/// and doctor from the consent before, the period by the rule.
class ConsentImport {
public:
    /// @param folders hold the practice's settings; all must outlive the object
    ConsentImport(const ImportJob &job, cT_ADODB &db, const Folders &folders)
        : m_job(job), m_db(db), m_folders(folders) {}

    /// Reads what the rows lean on and plans them.
    Result<ImportPlan> plan();
    /// The patients whose consents the last plan would write.
    std::vector<PatientKey> patients(const ImportPlan &plan) const;
    /// Writes what was planned last, but for refused rows, with the newest marks.
    Result<> write(RecordWrite &write, const ImportPlan &plan, const ImportProgress &progress) const;
    /// Refuses the rows whose texts the database has not kept; gives how many.
    Result<int> refuseLost(ImportPlan &plan) const;

private:
    struct Row {
        FileRow read;
        qint32 patient = 0;
    };

    Result<> readBasis(const std::vector<Row> &rows);
    int findPatient(FileRow &row) const;
    void planRow(Row &row, PlannedRow &planned);
    void place(DraftSave &save, const Row &row, PlannedRow &planned) const;
    ConsentDraft newOne(const Row &row, PlannedRow &planned) const;
    const ConsentDraft *consentBefore(qint32 patient, const QDate &day) const;
    bool isAcupuncture(qint32 patient) const;
    QString enter(ConsentDraft &draft, const QHash<QString, QString> &values, bool acupuncture) const;
    void proposePeriod(ConsentDraft &draft, const std::vector<ConsentDraft> &others,
                       PlannedRow &planned) const;
    void compare(const DraftSave &save, const Row &row, PlannedRow &planned) const;

    const ImportJob &m_job;
    cT_ADODB &m_db;
    const Folders &m_folders;
    ReferenceRows m_references;
    std::map<qint32, std::vector<ConsentDraft>> m_consents; ///< by patient, planned ones among them
    std::map<qint32, PeriodBasis> m_basis;
    std::optional<PeriodBasisReader> m_reader; ///< keeps the days off that the bases name
    std::map<int, DraftSave> m_planned;        ///< by row of the file
    std::set<std::array<qint32, 4>> m_targets; ///< of what was planned: patient and key
};
