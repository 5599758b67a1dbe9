#pragma once

#include <QStringList>
#include <QStringView>
#include <optional>
#include <vector>

/// A reader of its own, strict as RFC 4180: nothing where a reader might stumble, such as a quote inside a
/// cell that is not quoted, a sign behind a closing quote, or a line that does not end in CR LF.
inline std::optional<std::vector<QStringList>> readCsv(QStringView text, QChar delimiter) {
    std::vector<QStringList> rows;
    QStringList row;
    qsizetype at = 0;
    while (at < text.size()) {
        QString cell;
        if (text[at] == u'"') {
            for (++at;; ++at) {
                if (at >= text.size())
                    return std::nullopt;
                if (text[at] != u'"')
                    cell += text[at];
                else if (at + 1 < text.size() && text[at + 1] == u'"')
                    cell += text[++at];
                else
                    break;
            }
            ++at;
        } else {
            while (at < text.size() && text[at] != delimiter && text[at] != u'\r') {
                if (text[at] == u'"' || text[at] == u'\n' || text[at].isNull())
                    return std::nullopt;
                cell += text[at++];
            }
        }
        row.append(cell);
        if (at < text.size() && text[at] == delimiter) {
            ++at;
            continue;
        }
        if (text.mid(at, 2) != u"\r\n")
            return std::nullopt;
        at += 2;
        rows.push_back(std::exchange(row, {}));
    }
    return row.isEmpty() ? std::optional(rows) : std::nullopt;
}
