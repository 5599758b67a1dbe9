#pragma once

#include "consent/batches/written_rows.h"
#include "db/recordset.h"

#include <QHash>

#include <algorithm>
#include <functional>

/// Rows of RIYOUSHA_DOUI_REC as they stand now.
class StandingRows {
public:
    struct Place {
        size_t part = 0;
        int row = 0;
    };

    /// @param rows with all columns that the log knows of
    void add(Recordset rows);

    std::optional<Place> find(const ConsentRowKey &key) const;
    bool hasColumn(const QString &column) const { return m_columns.contains(column.toLower()); }
    /// Of a column that is there; a null text is Null.
    QString value(const Place &place, const QString &column) const;
    /// Columns that are not Null.
    qsizetype filled(const Place &place) const;

private:
    std::vector<Recordset> m_parts;
    QHash<QString, Place> m_places; ///< by identity
    QHash<QString, int> m_columns;
};

/// Why a row of a batch does not go back.
enum class RowStay {
    None,        ///< it stands as the batch left it
    AlreadyBack, ///< it was taken back before
    Overtaken,   ///< somebody changed it since
    Gone,        ///< somebody deleted it since
    ThereAgain,  ///< the batch deleted it, and there is one again
    Unreadable   ///< the record is of no use: of another table, of unknown columns, damaged
};

/// Rows that go back together or not at all: those of a patient's kind.
struct TakeBackUnit {
    PatientKey patient;
    std::vector<size_t> rows = {}; ///< places in TakeBackPlan::rows
    RowStay stay = RowStay::None;
    size_t because = 0; ///< the row that keeps it from going back

    bool goesBack() const { return stay == RowStay::None; }
    bool isDone() const { return stay == RowStay::AlreadyBack; }
};

/// What would become of each row of a batch that is taken back now.
struct TakeBackPlan {
    std::vector<WrittenRow> rows;
    std::vector<TakeBackUnit> units; ///< in the order of the batch
    qint32 taker = 0;                ///< the last batch that took rows of this one back, and holds; 0: none

    qsizetype goingBack() const { return std::ranges::count_if(units, &TakeBackUnit::goesBack); }
    /// Neither going nor gone back.
    std::vector<const TakeBackUnit *> left() const;
    /// Whether the same would go back.
    bool sameAs(const TakeBackPlan &other) const;
};

/// @param rows the batch's
/// @param standing the rows of their patients
/// @param isBack whether a later batch has taken a row back, by its identity
TakeBackPlan planTakeBack(std::vector<WrittenRow> rows, const StandingRows &standing,
                          const std::function<bool(const QString &)> &isBack);
