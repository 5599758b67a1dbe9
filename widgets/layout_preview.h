#pragma once

#include "viewer/document/document.h"

#include <QWidget>
#include <memory>

class NoteBar;
class PageView;
class QLabel;
class QToolButton;
class QVBoxLayout;

/// Shows inside a screen what a command file would print: its pages one below the other, drawn when they come
/// into sight, with zoom. What stands in the way is shown in the pages' place.
class LayoutPreview : public QWidget {
public:
    explicit LayoutPreview(QWidget *parent = nullptr);
    ~LayoutPreview() override;

    /// False when nothing can be shown; problem() and the widget say why.
    bool showCommandFile(const QString &path);
    void clear();

    /// Empty while pages are shown and after clear().
    QString problem() const;
    int pageCount() const { return m_document.pageCount(); }
    int currentPage() const;
    void goToPage(int page);

private:
    QToolButton *addButton(const QString &name, const QString &text, const QString &tip);
    void makeBar();
    void makePages();
    void showProblem(const QString &text);
    void showState();

    Document m_document; ///< outlives the view of it
    QWidget *m_bar;
    QVBoxLayout *m_column;
    QToolButton *m_previous, *m_next, *m_zoomOut, *m_zoomIn, *m_fitPage, *m_fitWidth;
    QLabel *m_page, *m_zoom, *m_problem;
    std::unique_ptr<NoteBar> m_notes;
    std::unique_ptr<PageView> m_pages; ///< null without a document
};
