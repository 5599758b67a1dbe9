#pragma once

#include "viewer/document/document.h"
#include "viewer/window/page_printer.h"

#include <QMainWindow>

class PageView;
class QComboBox;
class QLabel;
class QSpinBox;
class SearchBar;
class ThumbnailList;

/// The window that shows a document's pages.
class ViewerForm : public QMainWindow {
    Q_OBJECT

public:
    /// @param notes what to tell besides the document's own warnings
    ViewerForm(const Document &document, const PrintAdjustment &adjustment, const QStringList &notes);
    ~ViewerForm() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeMenus();
    void makeFileMenu();
    void makeViewMenu();
    void makeGoMenu();
    void makeToolBar();
    void makePages();
    void connectParts();
    QAction *addCommand(QMenu *menu, const QString &text, const QList<QKeySequence> &keys,
                        const std::function<void()> &run);

    void print();
    void saveAs();
    void copy();
    void showPage(int page);
    void showZoom();
    void chooseZoom(const QString &text);
    void showNotes(const QStringList &notes);
    void keepWindow() const;
    void restoreWindow();

    Document m_document;
    PrintAdjustment m_adjustment;
    QString m_pdfPath; ///< where it was saved last
    PageView *m_pages;
    ThumbnailList *m_thumbnails;
    SearchBar *m_search;
    QSpinBox *m_page;
    QComboBox *m_zoom;
    QLabel *m_paper;
    QAction *m_showThumbnails = nullptr;
};
