#pragma once

#include "viewer/document/document.h"
#include "viewer/search/page_text.h"
#include "viewer/search/text_search.h"
#include "viewer/window/page_geometry.h"

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>

/// Shows the pages of a document one below the other and draws only those in sight.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Fit { None, Page, Width };

    /// @param document outlives the view
    explicit PageView(const Document &document, QWidget *parent = nullptr);

    int currentPage() const { return m_current; }
    void goToPage(int page);

    double zoom() const; ///< 1 is the actual size
    Fit fit() const { return m_fit; }
    void setZoom(double zoom);
    void setFit(Fit fit);
    void zoomIn();
    void zoomOut();

    /// Marks a text wherever it stands; empty for none.
    void setHighlight(const QString &text);
    /// Marks one of its places and brings it into sight.
    void showHit(const TextHit &hit);

    void selectPage();
    QString selectedText() const { return m_selection.text; }

Q_SIGNALS:
    /// The first page is on the screen; what can wait may begin.
    void firstPainted();
    void pageChanged(int page);
    void zoomChanged();
    void selectionChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QPointF origin() const; ///< of the content, in the viewport
    PagePoint pagePointAt(QPointF viewportPoint) const;
    void setScale(double scale, QPointF fixedPoint);
    void applyFit();
    void updateScrollBars();
    void setCurrent(int page);
    bool handleKey(int key);
    void select(int page, const QRectF &millimetres);

    void paintPage(QPainter &painter, int page);
    QPixmap picture(int page, QSizeF size);
    void paintMarks(QPainter &painter, int page);
    const std::vector<TextRun> &texts(int page);

    const Document &m_document;
    PageGeometry m_geometry;
    Fit m_fit = Fit::Page;
    int m_current = 0;
    bool m_painted = false;
    QCache<int, QPixmap> m_pictures; ///< by page, at the present scale; cost in kilobytes
    QCache<int, std::vector<TextRun>> m_texts;

    QString m_highlight; ///< folded
    std::optional<TextHit> m_hit;
    PagePoint m_selectionStart;
    int m_selectionPage = -1;
    TextSelection m_selection;
};
