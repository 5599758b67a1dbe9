#include "print/engine/engine_text.h"

#include <algorithm>

namespace {

/// Control characters and the separators of lines and paragraphs.
bool breaksLine(QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

} // namespace

QString engineText(const QString &text) {
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return c == u'"' || breaksLine(c); }))
        return text;
    QString safe;
    safe.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            continue;
        safe += c == u'"' ? QChar(u'＂') : breaksLine(c) ? QChar(u' ') : c;
    }
    return safe;
}
