#pragma once

#include "import/import_plan.h"

class Folders;

/// What is to be imported, and how.
struct ImportJob {
    ImportKind kind = ImportKind::Patients;
    CsvFile file;
    ImportColumns columns;
    UnknownReference unknown = UnknownReference::Refused;
    /// Changed names and addresses go on to those who repeat them, as the masters' forms offer it.
    bool copy = true;
    Branch branch;

    const ImportDescription &description() const { return describeImport(kind); }
};

/// Which rows are written.
enum class ImportRows {
    All,      ///< none where one is refused
    RightOnes ///< the refused ones go to a file of their own
};

struct ImportOutcome {
    enum Kind {
        Done,
        Refused,   ///< rows cannot be taken; nothing was written
        Overtaken, ///< the database has changed since the trial, nothing was written: `plan` is how it is now
        Failed
    };
    Kind kind = Done;
    QString text = {};
    ImportPlan plan = {};  ///< also of what was done: with the numbers given, and what the database refused
    QString restPath = {}; ///< of the rows that were left; empty: none were
};

/// What the job would do.
/// @param folders hold the practice's settings
Result<ImportPlan> tryImport(const ImportJob &job, cT_ADODB &db, const Folders &folders);

/// Writes what the trial has shown, in one transaction, under a lock that lets one import at a time give
/// numbers. Nothing is written unless the trial still holds.
/// @param path of the file for what is left, with ImportRows::RightOnes
ImportOutcome writeImport(const ImportJob &job, cT_ADODB &db, const Folders &folders, const ImportPlan &shown,
                          ImportRows rows, const QString &path, const ImportProgress &progress = {});

/// The reason of a failure that the user wanted.
QString importStopped();

/// Where what is left of a file goes: beside it, under a name that nothing bears yet.
QString restPathFor(const QString &path);
