#pragma once

#include "viewer/document/document.h"

#include <QWidget>
#include <memory>

class NoteBar;
class PageView;
class QAction;
class QActionGroup;
class QLabel;
class QMenu;
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
    /// Says in the pages' place why there are none.
    void showProblem(const QString &text);

    /// The steps of the zoom, for a menu of the screen; the same are buttons optZoom_0 … and the pages' own
    /// menu.
    QMenu *zoomMenu() const { return m_menu; }

private:
    QToolButton *addButton(const QString &name, const QString &text, const QString &tip);
    void addZoomSteps();
    void applyZoom(const QAction &step);
    void zoomBy(void (PageView::*change)());
    void makeBar();
    void makePages();
    void showState();

    Document m_document; ///< outlives the view of it
    QWidget *m_bar;
    QVBoxLayout *m_column;
    QToolButton *m_previous, *m_next, *m_zoomOut, *m_zoomIn;
    QMenu *m_menu;
    QActionGroup *m_steps;
    double m_ownZoom = 1; ///< where no step is chosen
    QLabel *m_page, *m_zoom, *m_problem;
    std::unique_ptr<NoteBar> m_notes;
    std::unique_ptr<PageView> m_pages; ///< null without a document
};
