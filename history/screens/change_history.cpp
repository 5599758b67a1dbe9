#include "history/screens/change_history.h"

#include "history/log_tables.h"

using namespace Qt::Literals::StringLiterals;

// What cannot be written may yet be read.
QString ChangeHistory::whyNone() const {
    switch (const HistoryState &state = lookAtLog(m_db); state.kind) {
    case HistoryState::Missing:
        return u"変更履歴はまだ記録されていません。"_s +
               (state.reason.isEmpty() ? u"次の保存・更新・印刷から始まります。"_s
                                       : u"「設定」の「変更履歴の準備」で始められます。"_s);
    case HistoryState::Newer:
        return u"変更履歴は新しい版のプログラムのものです。このPCのプログラムも新しくすると、表示できます。"_s;
    default:
        return {};
    }
}

bool ChangeHistory::has(HistoryScope scope) const {
    return scope == HistoryScope::All || (m_row && (scope == HistoryScope::Patient || m_row->nDate != 0));
}

HistoryScope ChangeHistory::narrowest() const {
    for (const HistoryScope scope : {HistoryScope::Row, HistoryScope::Patient})
        if (has(scope))
            return scope;
    return HistoryScope::All;
}

Result<> ChangeHistory::read(HistoryScope scope, const LogQuestion &question) {
    m_scope = scope;
    m_question = question;
    m_most = first;
    return readAgain();
}

Result<> ChangeHistory::readMore() {
    m_most *= 2;
    return readAgain();
}

Result<> ChangeHistory::readAgain() {
    m_texts.clear();
    m_more = false;
    const Result<LogRecords> read = m_scope == HistoryScope::All
                                        ? readLog(m_db, m_branch, m_question, m_most)
                                        : readPatientLog(m_db, m_row->patient, m_most);
    if (!read)
        return Failure{read.reason()};
    std::vector<LogEntry> entries = entriesOf(*read);
    if (m_scope == HistoryScope::Row)
        entries = entriesOfRow(entries, *m_row);
    const Result<RowNames> names = readRowNames(m_db, m_branch, codesIn(entries));
    const Result<RequestMethods> methods = readRequestMethods(m_folders);
    if (!names || !methods)
        return Failure{names ? methods.reason() : names.reason()};
    m_texts = changeTexts(entries, *names, *methods);
    m_more = read->more;
    return {};
}
