#include "print/documents/lost_texts.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/near_characters.h"
#include "print/engine/engine_programs.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostShown = 40; ///< characters of a text

QString lineOf(const ReplacedText &text, const QStringList &replacements) {
    const QString shown = text.text.size() > mostShown ? text.text.left(mostShown) + u"…"_s : text.text;
    const bool named = text.whose.endsWith(text.text);
    return text.whose + (named ? QString() : u"「"_s + shown + u"」"_s) + u"："_s +
           replacements.join(u"、"_s);
}

} // namespace

QString replacedNote(const Environment &environment, std::span<const ReplacedText> texts) {
    if (texts.empty() || isOwnViewer(environment))
        return {};
    const NearCharacters near = NearCharacters::read(environment.folders);
    QStringList lines;
    for (const ReplacedText &text : texts)
        if (const QStringList replacements = replacements932(text.text, near.texts); !replacements.isEmpty())
            lines += lineOf(text, replacements);
    if (lines.isEmpty())
        return {};
    lines.removeDuplicates();
    lines.prepend(
        u"次の文字は帳票で使えないため、右の文字で印刷されます（〓 は、近い文字がない文字です）。"_s);
    if (!near.faults.isEmpty())
        lines += u"\r\n「%1」に誤りがあるため、次の行は使いません。\r\n"_s.arg(NearCharacters::fileName()) +
                 near.faults.join(u"\r\n"_s);
    return lines.join(u"\r\n"_s);
}

bool mayLose(Messages &messages, const QString &note, const QString &title, const QString &question) {
    if (note.isEmpty() && question.isEmpty())
        return true;
    QStringList paragraphs{note, question.isEmpty() ? u"このまま出力します。よろしいですか？"_s : question};
    paragraphs.removeAll(QString());
    return messages.ask(paragraphs.join(u"\r\n\r\n"_s), title);
}
