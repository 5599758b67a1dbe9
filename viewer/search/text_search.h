#pragma once

#include "viewer/document/document.h"

#include <QDeadlineTimer>
#include <QRectF>
#include <QString>

/// Where a search stands or what it found.
struct TextHit {
    int page = 0;
    int index = -1; ///< among the page's hits; −1: before the first
    QRectF area;    ///< mm
};

/// Looks for a text from a place on, round the document and back to it. The work is done in steps, so that a
/// window lives on meanwhile.
class TextSearch {
public:
    enum class State { Searching, Found, NotFound };

    TextSearch(const Document &document, const QString &text, const TextHit &from, bool forward);

    /// Searches until the time is over or there is an answer.
    State step(QDeadlineTimer until);
    const TextHit &hit() const { return m_hit; }
    int pagesSearched() const { return m_searched; }

private:
    bool searchPage();

    const Document &m_document;
    QString m_folded;
    TextHit m_from;
    bool m_forward;
    int m_searched = 0;
    TextHit m_hit;
};
