#include "consent/rows/list_narrowing.h"

#include "app/base/text.h"

namespace {

QString comparable(const QString &text) {
    return foldForSearch(text).removeIf([](QChar c) { return c.isSpace(); });
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
