#include "print/documents/lost_texts.h"

#include "app/base/codepage932.h"
#include "app/base/messages.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr quint16 geta = 0x81AC; // 〓

bool losesCharacter(const QString &text) {
    for (qsizetype at = 0; at < text.size();) {
        const Step932 step = step932(text, at);
        if (step.touched && step.code == geta && step.bytes > 0)
            return true;
        at += step.characters;
    }
    return false;
}

} // namespace

QStringList textsWithLoss(const QStringList &texts) {
    QStringList lost;
    for (const QString &text : texts)
        if (losesCharacter(text))
            lost.append(text);
    return lost;
}

QString lostTextsNote(QStringList texts) {
    texts.removeDuplicates();
    return u"次の文字列には帳票で使えない文字があり、「〓」で印刷されます。\r\n"_s + texts.join(u"\r\n"_s);
}

bool mayLose(Messages &messages, const QStringList &texts, const QString &title, const QString &question) {
    if (texts.isEmpty() && question.isEmpty())
        return true;
    QStringList paragraphs;
    if (!texts.isEmpty())
        paragraphs += lostTextsNote(texts);
    paragraphs += question.isEmpty() ? u"このまま出力します。よろしいですか？"_s : question;
    return messages.ask(paragraphs.join(u"\r\n\r\n"_s), title);
}

QStringList otherTexts(QStringList touched, const QStringList &told) {
    touched.removeIf([&told](const QString &text) { return told.contains(text); });
    return touched;
}
