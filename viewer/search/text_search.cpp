#include "viewer/search/text_search.h"

#include "app/base/text.h"
#include "viewer/search/page_text.h"

TextSearch::TextSearch(const Document &document, const QString &text, const TextHit &from, bool forward)
    : m_document(document), m_folded(foldForSearch(text)), m_from(from), m_forward(forward) {}

TextSearch::State TextSearch::step(QDeadlineTimer until) {
    const int pages = m_document.pageCount();
    if (m_folded.isEmpty() || pages == 0)
        return State::NotFound;
    do {
        if (m_searched > pages) // the first page twice: behind the start, then before it
            return State::NotFound;
        const bool found = searchPage();
        ++m_searched;
        if (found)
            return State::Found;
    } while (!until.hasExpired());
    return State::Searching;
}

bool TextSearch::searchPage() {
    const int pages = m_document.pageCount();
    const int step = m_forward ? m_searched : pages - m_searched % pages;
    const int page = (m_from.page + step) % pages;
    const QList<QRectF> hits = findText(m_document.texts(page), m_folded);
    qsizetype index = m_forward ? 0 : hits.size() - 1;
    if (m_searched == 0)
        index = m_forward ? m_from.index + 1 : (m_from.index < 0 ? hits.size() : m_from.index) - 1;
    if (index < 0 || index >= hits.size())
        return false;
    m_hit = {page, int(index), hits[index]};
    return true;
}
