#pragma once

#include "consent/rows/list_cells.h"

#include <functional>
#include <vector>

/// Narrows a list to the patients whose name and kana contain what was typed; case, width, kana kind and
/// blanks are ignored.
class ListNarrowing {
public:
    /// The records changed: what was prepared of them is forgotten.
    void forget();
    /// Folds the records' names once, so that a key stroke only compares.
    void prepare(const ListRecords &records);
    /// @return false when these texts narrow as the ones before do
    bool set(const QString &name, const QString &kana);

    bool isSet() const { return !m_name.isEmpty() || !m_kana.isEmpty(); }
    /// Whether a record is narrowed away; its names must have been prepared.
    bool hides(int record) const;

private:
    QString m_name; ///< folded
    QString m_kana; ///< folded
    std::vector<QString> m_names;
    std::vector<QString> m_kanas;
};

/// Puts records into the order of a column; equal cells keep the order that they came in.
/// @param rowOf a record as it is shown
/// @param isTarget whether a record is ticked 対象
void orderRecords(std::vector<int> &shown, ListColumn column, bool descending,
                  const std::function<ListRow(int)> &rowOf, const std::function<bool(int)> &isTarget);
