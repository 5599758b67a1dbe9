#include "history/screens/change_text.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "db/tables/patient_text.h"
#include "history/screens/table_words.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The columns of keys: they are told with the row itself.
constexpr QStringView keyColumns[] = {u"iKyotenCd", u"iKyotenEb",  u"nIDNo",
                                      u"nDate",     u"iHenkeiFlg", u"nHenkeiDouiDate"};

/// The words of tables, each made once.
class AllWords {
public:
    const TableWords &of(const QString &table) {
        const auto found = m_words.find(table);
        return found != m_words.end() ? found->second
                                      : m_words.emplace(table, TableWords(table)).first->second;
    }

private:
    std::map<QString, TableWords> m_words;
};

bool isCode(ColumnKind kind) {
    return kind >= ColumnKind::Layout;
}

bool isKeyColumn(const QString &column) {
    return std::ranges::any_of(
        keyColumns, [&](QStringView key) { return key.compare(column, Qt::CaseInsensitive) == 0; });
}

/// A consent by its kind and its own day, as its key tells them.
QString consentKeyText(const QString &key) {
    const QStringList parts = key.split(u'/');
    const bool deformity = parts.value(1) == u"1"_s;
    const QDate day = dateFromKey(parts.value(deformity ? 2 : 0).toInt());
    if (parts.size() != 3 || !day.isValid())
        return key;
    return (deformity ? u"変形徒手 "_s : u"同意 "_s) + dateText(day);
}

/// Values as the office reads them.
class Values {
public:
    Values(const RowNames &names, const RequestMethods &methods) : m_names(names), m_methods(methods) {}

    QString text(const ColumnWords &words, const QString &stored) const {
        const QString value = stored.trimmed();
        if (words.kind == ColumnKind::Flag)
            return words.choices.value(value.isEmpty() || value == u"0"_s ? 0 : 1);
        if (isBlank(words.kind, value))
            return u"未入力"_s;
        switch (words.kind) {
        case ColumnKind::Date: {
            const QDate day = dateFromDatabase(QStringView(value));
            return day.isValid() ? dateText(day) : value;
        }
        case ColumnKind::Months:
            return value + u"か月"_s;
        case ColumnKind::Choice:
            return choice(words.choices, value);
        case ColumnKind::Method: {
            const QString method = m_methods.text(value.toInt());
            return method.isEmpty() ? value : method;
        }
        default:
            return isCode(words.kind) ? coded(words.kind, value) : onOneLine(value);
        }
    }

    QString coded(ColumnKind kind, const QString &code) const {
        const auto names = m_names.find(kind);
        return joined(code, names == m_names.end() ? QString() : names->second.value(code));
    }

private:
    // No row has the number 0.
    static bool isBlank(ColumnKind kind, const QString &value) {
        return value.isEmpty() || (value == u"0"_s && (isCode(kind) || kind == ColumnKind::Method));
    }
    static QString choice(const QStringList &choices, const QString &value) {
        for (const QString &choice : choices)
            if (choice.section(u' ', 0, 0) == value)
                return choice.section(u' ', 1);
        return value;
    }
    static QString onOneLine(QString text) {
        return text.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\r', u' ');
    }

    const RowNames &m_names;
    const RequestMethods &m_methods;
};

/// Makes the text of one entry.
class Teller {
public:
    Teller(const LogEntry &entry, const TableWords &words, const Values &values)
        : m_entry(entry), m_words(words), m_values(values) {}

    ChangeText tell() {
        const LogRecord &record = m_entry.record;
        m_text = {record.time, record.pc, record.operation, record.batch, subject(), kind(), {}, {}};
        if (!m_entry.readable) {
            m_text.lines.push_back({u"読めない記録"_s, {}, record.changes});
        } else {
            addMove();
            addLines();
        }
        m_text.summary = summary();
        return m_text;
    }

private:
    bool isConsent() const { return m_entry.record.table == u"RIYOUSHA_DOUI_REC"_s; }
    bool isWhole() const { return m_entry.kind == LogEntry::New || m_entry.kind == LogEntry::Deleted; }

    QString subject() const {
        const LogRecord &record = m_entry.record;
        const QString who =
            record.patient.nIDNo == 0 ? QString() : patientText(record.patient.nIDNo, record.patientName);
        return joined(who, row(), u"　");
    }

    QString row() const {
        const LogRecord &record = m_entry.record;
        if (isConsent())
            return consentKeyText(record.key);
        const QString key = record.table == u"DOUIKIROKU"_s ? record.key.section(u'/', 0, 1) // the month
                            : m_words.keyKind() == ColumnKind::Text
                                ? record.key
                                : m_values.coded(m_words.keyKind(), record.key);
        return joined(m_words.noun(), key);
    }

    QString kind() const {
        switch (m_entry.kind) {
        case LogEntry::New:
            return u"登録"_s;
        case LogEntry::Deleted:
            return u"削除"_s;
        case LogEntry::Changed:
        case LogEntry::Moved:
            return u"変更"_s;
        case LogEntry::Unknown:
            break;
        }
        return u"不明"_s;
    }

    void addMove() {
        if (m_entry.kind == LogEntry::Moved)
            m_text.lines.push_back(
                {u"記録"_s, consentKeyText(m_entry.keyBefore), consentKeyText(m_entry.record.key)});
    }

    void addLines() {
        std::vector<const CellChange *> changes;
        for (const CellChange &change : m_entry.changes)
            if (!isKeyColumn(change.column))
                changes.push_back(&change);
        std::ranges::stable_sort(changes, {},
                                 [&](const CellChange *change) { return m_words.placeOf(change->column); });
        for (const CellChange *change : changes)
            addLine(*change);
    }

    // What was Null and is empty now is no change to a reader, and of a whole row all is left out that it
    // does not say.
    void addLine(const CellChange &change) {
        const ColumnWords words = m_words.of(change.column);
        const QString nothing = m_values.text(words, {});
        ChangeLine line{words.caption, m_values.text(words, change.before),
                        m_values.text(words, change.after)};
        if (line.before == nothing && line.after == nothing)
            return;
        if (m_entry.kind == LogEntry::New)
            line.before.clear();
        else if (m_entry.kind == LogEntry::Deleted)
            line.after.clear();
        m_text.lines.push_back(line);
        if (isWhole() && m_words.tells(change.column))
            tell(line.caption, line.before + line.after);
    }

    // A period's two ends stand side by side.
    void tell(const QString &caption, const QString &value) {
        const QString start = u"の開始日 "_s, end = u"の終了日"_s;
        const QString whole = caption.chopped(caption.endsWith(end) ? end.size() : 0);
        if (whole != caption && !m_told.isEmpty() && m_told.last().startsWith(whole + start))
            m_told.last().remove(whole.size(), start.size() - 1).append(u'～' + value);
        else
            m_told.append(caption + u' ' + value);
    }

    QString summary() {
        if (!m_entry.readable)
            return u"変更内容を読めません："_s + m_entry.record.changes;
        if (!m_told.isEmpty())
            return m_told.join(u"、"_s);
        QStringList texts;
        for (const ChangeLine &line : m_text.lines)
            texts += isWhole() ? line.caption + u' ' + line.before + line.after
                               : u"%1：%2 → %3"_s.arg(line.caption, line.before, line.after);
        return texts.isEmpty() ? u"表示する項目の変更はありません"_s : texts.join(u"、"_s);
    }

    const LogEntry &m_entry;
    const TableWords &m_words;
    const Values &m_values;
    ChangeText m_text;
    QStringList m_told;
};

} // namespace

RowCodes codesIn(const std::vector<LogEntry> &entries) {
    AllWords words;
    RowCodes codes;
    const auto note = [&](ColumnKind kind, const QString &code) {
        if (const QString text = code.trimmed(); isCode(kind) && !text.isEmpty())
            codes[kind].insert(text);
    };
    for (const LogEntry &entry : entries) {
        const TableWords &table = words.of(entry.record.table);
        note(table.keyKind(), entry.record.key);
        for (const CellChange &change : entry.changes) {
            const ColumnKind kind = table.of(change.column).kind;
            note(kind, change.before);
            note(kind, change.after);
        }
    }
    return codes;
}

std::vector<ChangeText> changeTexts(const std::vector<LogEntry> &entries, const RowNames &names,
                                    const RequestMethods &methods) {
    AllWords words;
    const Values values(names, methods);
    std::vector<ChangeText> texts;
    texts.reserve(entries.size());
    for (const LogEntry &entry : entries)
        texts.push_back(Teller(entry, words.of(entry.record.table), values).tell());
    return texts;
}
