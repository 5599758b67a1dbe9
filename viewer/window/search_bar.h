#pragma once

#include "viewer/search/text_search.h"

#include <QFrame>
#include <QTimer>
#include <optional>

class QLabel;
class QLineEdit;

/// The line in which a text is looked for. The search goes on in small steps, so that a long document can be
/// left or searched for something else meanwhile.
class SearchBar : public QFrame {
    Q_OBJECT

public:
    /// @param document outlives the bar
    explicit SearchBar(const Document &document, QWidget *parent = nullptr);

    /// Shows the bar with the keys in it.
    void begin();
    void findNext();
    void findPrevious();
    /// Where the next search begins when nothing was found yet.
    void setPage(int page) { m_page = page; }

Q_SIGNALS:
    void textChanged(const QString &text);
    void found(const TextHit &hit);
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void start(const TextHit &from, bool forward);
    void step();
    void end(const QString &answer);

    const Document &m_document;
    QLineEdit *m_text;
    QLabel *m_answer;
    QTimer m_pause; ///< between typing and searching
    QTimer m_steps;
    int m_page = 0;
    std::optional<TextHit> m_last;
    std::optional<TextSearch> m_search;
};
