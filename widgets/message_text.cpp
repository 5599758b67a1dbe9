#include "widgets/message_text.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

QString displayedText(QString text) {
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
    qsizetype first = 0;
    while (first < text.size() && text[first] == u'\n')
        ++first;
    qsizetype last = text.size();
    while (last > first && text[last - 1] == u'\n')
        --last;
    return text.sliced(first, last - first);
}

LongText partedText(const QString &displayed) {
    constexpr qsizetype mostLines = 24; // fit on a screen of 800 lines at one and a half times the size
    constexpr qsizetype mostCharacters = 1200;
    const QStringList lines = displayed.split(u'\n');
    if (lines.size() <= mostLines && displayed.size() <= mostCharacters)
        return {displayed, {}};
    // The last line stays: it is the question, or names the routine that failed.
    const QString front = lines.first(qMin(lines.size(), mostLines) - 1).join(u'\n').left(mostCharacters);
    return {front + u"\n…\n"_s + lines.last().left(mostCharacters), displayed};
}
