#include "consent/rows/list_order.h"

#include <algorithm>

namespace {

template <class Key>
void orderBy(std::vector<int> &shown, bool descending, const std::function<Key(int)> &keyOf) {
    std::vector<std::pair<Key, int>> keys;
    keys.reserve(shown.size());
    for (const int record : shown)
        keys.emplace_back(keyOf(record), record);
    std::stable_sort(keys.begin(), keys.end(), [descending](const auto &a, const auto &b) {
        return descending ? b.first < a.first : a.first < b.first;
    });
    std::transform(keys.begin(), keys.end(), shown.begin(), [](const auto &key) { return key.second; });
}

} // namespace

void orderRecords(std::vector<int> &shown, ListColumn column, bool descending, const ListRecords &records,
                  const ListContext &context, const std::function<ConsentRowValues(int)> &valuesOf,
                  const std::function<bool(int)> &isTarget) {
    const auto key = [&](int record) {
        const ConsentRowValues values = valuesOf(record);
        return cellSortKey({records, record, values, context}, column);
    };
    const CellKind kind = listColumn(int(column)).kind;
    if (column == ListColumn::Target)
        orderBy<bool>(shown, descending, isTarget);
    else if (kind == CellKind::Number || kind == CellKind::Tick)
        orderBy<qint64>(shown, descending, [&](int record) { return key(record).toLongLong(); });
    else
        orderBy<QString>(shown, descending, [&](int record) { return key(record).toString(); });
}
