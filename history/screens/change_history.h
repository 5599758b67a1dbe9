#pragma once

#include "history/screens/change_text.h"

class Folders;

/// Which part of the history is looked at.
enum class HistoryScope { Row, Patient, All };

/// The change history as a screen shows it. Knows no window.
class ChangeHistory {
public:
    /// @param row the consent under the cursor; nDate 0: the patient alone; nothing: neither
    ChangeHistory(cT_ADODB &db, const Folders &folders, const Branch &branch,
                  const std::optional<ConsentRowKey> &row)
        : m_db(db), m_folders(folders), m_branch(branch), m_row(row) {}

    /// Why there is none to be looked at; empty where there is.
    QString whyNone() const;

    bool has(HistoryScope scope) const;
    /// The narrowest there is.
    HistoryScope narrowest() const;

    /// Reads the newest entries. What was read before is gone after a failure too.
    Result<> read(HistoryScope scope, const LogQuestion &question);
    /// Reads twice as many.
    Result<> readMore();

    const std::vector<ChangeText> &texts() const { return m_texts; }
    /// There are older ones.
    bool hasMore() const { return m_more; }

private:
    Result<> readAgain();

    static constexpr int first = 500;

    cT_ADODB &m_db;
    const Folders &m_folders;
    Branch m_branch;
    std::optional<ConsentRowKey> m_row;
    HistoryScope m_scope = HistoryScope::All;
    LogQuestion m_question;
    int m_most = first;
    std::vector<ChangeText> m_texts;
    bool m_more = false;
};
