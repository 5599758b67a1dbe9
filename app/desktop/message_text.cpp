#include "app/desktop/message_text.h"

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
