#pragma once

#include "import/import_columns.h"
#include "import/stored_rows.h"

#include <map>

/// What becomes of references that nothing in the database fits.
enum class UnknownReference {
    Refused,
    LeftEmpty ///< the row is taken without them
};

/// What a column would hold, and what it holds.
struct ImportChange {
    QString caption, before, now;
    friend bool operator==(const ImportChange &, const ImportChange &) = default;
};

/// What becomes of one row of the file.
struct PlannedRow {
    enum State { New, Changed, Same, Refused };
    int row = 0; ///< of the file
    State state = New;
    QString code; ///< of the row in the database; new: as the file gives it, empty where the next free one is
                  ///< taken
    QString name;
    QStringList faults, notes;
    std::vector<ImportChange> changes;
    QHash<QString, QString> values; ///< to be written, by column
    bool withoutSub = false;        ///< a patient who has no row in RIYOUSHA_SUB yet

    friend bool operator==(const PlannedRow &, const PlannedRow &) = default;
};

/// What an import would do, row by row. Nothing is written by it.
struct ImportPlan {
    std::vector<PlannedRow> rows;
    int repeatedHeadings = 0; ///< lines in the midst of the file that repeat its headings
    QStringList missing;      ///< items of the file that this database has no column for: they are left out
    size_t leansOn = 0; ///< fingerprint of the stored rows by which masters were planned: while it is the
                        ///< same, so is the plan
    int count(PlannedRow::State state) const;
};

/// The rows that a kind's references can name, and its own.
using ReferenceRows = std::map<ImportKind, StoredRows>;

/// The rows that a plan leans on: the kind's own and those of the kinds that it names.
Result<ReferenceRows> readReferenceRows(cT_ADODB &db, ImportKind kind, const Branch &branch);

/// Plans an import of masters or patients. A row of the file and one of the database are the same when their
/// numbers are, or by name with what tells two people of one name apart; where that cannot be told, the row
/// is refused.
ImportPlan planImport(const ImportDescription &description, const CsvFile &file, const ImportColumns &columns,
                      UnknownReference unknown, const ReferenceRows &stored);

/// One row in words, for the trial's grid and the file of what was left: the faults, changes and notes.
QString plannedText(const PlannedRow &row);

/// @name Parts of planning that all kinds share
///@{
/// The values of a row of the file as its columns take them, references still as typed.
struct FileRow {
    QHash<QString, QString> values;
    QStringList faults, notes;
};
/// Reads rows of a file by its columns.
class FileRows {
public:
    FileRows(const ImportDescription &description, const CsvFile &file, const ImportColumns &columns);
    int first() const { return m_columns.headed ? 1 : 0; }
    /// Whether a row repeats the headings.
    bool isHeading(const CsvFile::Cells &cells) const;
    FileRow read(const CsvFile::Cells &cells) const;

private:
    void take(FileRow &row, size_t field, const QString &text) const;
    void findSerials(const CsvFile &file);

    const ImportDescription &m_description;
    const ImportColumns &m_columns;
    std::vector<int> m_columnOf; ///< of each field
    std::vector<bool> m_serials;
    QStringList m_headings;
};

/// Puts the number of the row that is named in place of the text, and what follows from it.
void resolveReference(const ImportField &field, const ImportDescription &target, const StoredRows &rows,
                      UnknownReference unknown, FileRow &row);
///@}
