#include "consent/merge/draft_merge.h"

#include "app/base/dates.h"
#include "db/tables/patient/consent_words.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Null, 0 and an empty text are the same to the user.
QString plain(const QVariant &value) {
    const QString text = value.typeId() == QMetaType::QDate ? dateText(value.toDate()) : value.toString();
    return text == u"0" ? QString() : text;
}

QString textOf(const ColumnWords &words, const QVariant &value) {
    if (words.kind == ColumnKind::Flag)
        return words.choices.value(value.toInt() == 0 ? 0 : 1);
    for (const QString &choice : words.choices)
        if (choice.section(u' ', 0, 0).toInt() == value.toInt())
            return choice.section(u' ', 1);
    const QString text = plain(value);
    return text.isEmpty() ? u"（なし）"_s : words.kind == ColumnKind::Months ? text + u"か月"_s : text;
}

QString writtenText(const std::optional<ConsentDraft> &now) {
    return now ? u"%1　%2"_s.arg(now->cPcName, now->tUpDateTime.left(16)).trimmed() : QString();
}

} // namespace

MergeRow mergeDraft(const QString &who, const ConsentDraft &seen, const ConsentDraft &typed,
                    const std::optional<ConsentDraft> &now, Compared columns) {
    MergeRow merged{who, writtenText(now), now ? QString() : u"削除されたか、日付が変更されました"_s, {}};
    for (int id = 0; const ColumnWords &words : consentWords()) {
        const int place = id++;
        if (!isCompared(words.column, columns))
            continue;
        const QVariant read = columnValue(seen, words.column), own = columnValue(typed, words.column);
        const QVariant theirs = now ? columnValue(*now, words.column) : read;
        const bool isWritten = plain(theirs) != plain(read);
        const bool isTyped = plain(own) != plain(read) && (!now || plain(own) != plain(theirs));
        if (isWritten || isTyped)
            merged.columns.push_back({place, words.caption, textOf(words, read), textOf(words, theirs),
                                      textOf(words, own), isWritten, isTyped});
    }
    merged.take(MergeRow::Both);
    return merged;
}

ConsentDraft mergedDraft(const MergeRow &merged, const ConsentDraft &typed, const ConsentDraft &now) {
    ConsentDraft draft = now;
    for (const MergeColumn &column : merged.columns)
        if (column.taken == MergeColumn::Typed) {
            const QString &name = consentWords()[size_t(column.id)].column;
            setColumnValue(draft, name, columnValue(typed, name));
        }
    return draft;
}
