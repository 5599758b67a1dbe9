#pragma once

#include <QByteArray>
#include <algorithm>
#include <string>
#include <vector>

/// Changes of a text that are collected in any order and made at once.
class Edits {
public:
    void replace(size_t at, size_t length, std::string text) {
        m_edits.push_back({at, length, length > 0 ? Place::Instead : Place::Behind, std::move(text)});
    }
    /// Behind what ends at `at`; what comes first stands first.
    void close(size_t at, std::string text) { m_edits.push_back({at, 0, Place::Behind, std::move(text)}); }
    /// In front of what begins at `at`; what comes later opens further out and stands first.
    void open(size_t at, std::string text) {
        m_edits.insert(m_edits.begin(), {at, 0, Place::Before, std::move(text)});
    }

    QByteArray applied(const QByteArray &text) {
        if (m_edits.empty())
            return text;
        std::ranges::stable_sort(m_edits, [](const Edit &a, const Edit &b) {
            return a.at != b.at ? a.at < b.at : a.place < b.place;
        });
        QByteArray out;
        out.reserve(text.size() + 64);
        size_t from = 0;
        for (const Edit &e : m_edits) {
            if (e.at < from)
                continue;
            out.append(text.constData() + from, qsizetype(e.at - from));
            out.append(e.text.data(), qsizetype(e.text.size()));
            from = e.at + e.length;
        }
        return out.append(text.constData() + from, text.size() - qsizetype(from));
    }

private:
    enum class Place { Behind, Before, Instead };
    struct Edit {
        size_t at;
        size_t length;
        Place place;
        std::string text;
    };
    std::vector<Edit> m_edits;
};
