#include "consent/rows/list_view.h"

#include "app/base/text.h"

#include <algorithm>

namespace {

QString comparable(const QString &text) {
    return foldForSearch(text).removeIf([](QChar c) { return c.isSpace(); });
}

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

void ListNarrowing::forget() {
    m_names.clear();
    m_kanas.clear();
}

void ListNarrowing::prepare(const ListRecords &records) {
    const auto count = size_t(records.count());
    if (m_names.size() == count)
        return;
    forget();
    m_names.reserve(count);
    m_kanas.reserve(count);
    for (int record = 0; record < records.count(); ++record) {
        m_names.push_back(comparable(records.text(record, ListField::Name)));
        m_kanas.push_back(comparable(records.text(record, ListField::NameKana)));
    }
}

bool ListNarrowing::set(const QString &name, const QString &kana) {
    const QString newName = comparable(name), newKana = comparable(kana);
    if (newName == m_name && newKana == m_kana)
        return false;
    m_name = newName;
    m_kana = newKana;
    return true;
}

bool ListNarrowing::hides(int record) const {
    return (!m_name.isEmpty() && !m_names[size_t(record)].contains(m_name)) ||
           (!m_kana.isEmpty() && !m_kanas[size_t(record)].contains(m_kana));
}

void orderRecords(std::vector<int> &shown, ListColumn column, bool descending,
                  const std::function<ListRow(int)> &rowOf, const std::function<bool(int)> &isTarget) {
    const auto key = [&](int record) { return cellSortKey(rowOf(record), column); };
    const CellKind kind = listColumn(int(column)).kind;
    if (column == ListColumn::Target)
        orderBy<bool>(shown, descending, isTarget);
    else if (kind == CellKind::Number || kind == CellKind::Tick)
        orderBy<qint64>(shown, descending, [&](int record) { return key(record).toLongLong(); });
    else
        orderBy<QString>(shown, descending, [&](int record) { return key(record).toString(); });
}
