#include "viewer/window/page_view.h"

#include "app/base/text.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QtMath>
#include <algorithm>

namespace {

constexpr double zoomSteps[] = {0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4, 6};
constexpr double millimetresPerInch = 25.4;
constexpr int pictureCache = 96 * 1024;   // kilobytes
constexpr int largestPicture = 24 * 1024; // kilobytes; larger pages are drawn where they are seen
constexpr int textCache = 64;             // pages
constexpr double mostPixels = 2e9;        // that a scroll bar can count
constexpr double jumpMargin = 40;         // pixels kept round what is brought into sight

int kilobytes(QSizeF pixels) {
    return qCeil(pixels.width() * pixels.height() * 4 / 1024);
}

} // namespace

PageView::PageView(const Document &document, QWidget *parent)
    : QAbstractScrollArea(parent), m_document(document), m_pictures(pictureCache), m_texts(textCache) {
    std::vector<QSizeF> sizes;
    for (int page = 0; page < document.pageCount(); ++page)
        sizes.push_back(document.pageSize(page));
    m_geometry.setSizes(sizes);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    viewport()->setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
}

double PageView::zoom() const {
    return m_geometry.scale() * millimetresPerInch / logicalDpiY();
}

void PageView::setZoom(double zoom) {
    m_fit = Fit::None;
    zoom = std::clamp(zoom, *std::begin(zoomSteps), *(std::end(zoomSteps) - 1));
    setScale(zoom * logicalDpiY() / millimetresPerInch, viewport()->rect().center());
}

void PageView::setFit(Fit fit) {
    m_fit = fit;
    applyFit();
}

void PageView::zoomIn() {
    const auto next = std::ranges::find_if(zoomSteps, [&](double step) { return step > zoom() * 1.01; });
    if (next != std::end(zoomSteps))
        setZoom(*next);
}

void PageView::zoomOut() {
    double next = *std::begin(zoomSteps);
    for (const double step : zoomSteps)
        if (step < zoom() * 0.99)
            next = step;
    setZoom(next);
}

QPointF PageView::origin() const {
    const double width = std::max(m_geometry.contentSize().width(), double(viewport()->width()));
    return {width / 2 - horizontalScrollBar()->value(), -double(verticalScrollBar()->value())};
}

PagePoint PageView::pagePointAt(QPointF viewportPoint) const {
    return m_geometry.toPage(viewportPoint - origin());
}

void PageView::setScale(double scale, QPointF fixedPoint) {
    const PagePoint fixed = pagePointAt(fixedPoint);
    m_pictures.clear();
    m_geometry.setScale(scale);
    updateScrollBars();
    const QPointF moved = m_geometry.fromPage(fixed) + origin() - fixedPoint;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()));
    viewport()->update();
    Q_EMIT zoomChanged();
}

void PageView::applyFit() {
    if (m_fit == Fit::None)
        return;
    const int page = m_current;
    const QSizeF area = viewport()->size();
    const double scale =
        m_fit == Fit::Page ? m_geometry.scaleForPage(area) : m_geometry.scaleForWidth(area.width());
    setScale(scale, {area.width() / 2, 0});
    if (m_fit == Fit::Page)
        goToPage(page);
}

void PageView::updateScrollBars() {
    const QSizeF content = m_geometry.contentSize().boundedTo({mostPixels, mostPixels});
    const QSize seen = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, qCeil(content.width()) - seen.width()));
    horizontalScrollBar()->setPageStep(seen.width());
    verticalScrollBar()->setRange(0, std::max(0, qCeil(content.height()) - seen.height()));
    verticalScrollBar()->setPageStep(seen.height() * 9 / 10);
    for (QScrollBar *bar : {horizontalScrollBar(), verticalScrollBar()})
        bar->setSingleStep(fontMetrics().height() * 3);
}

void PageView::goToPage(int page) {
    if (m_geometry.pageCount() == 0)
        return;
    page = std::clamp(page, 0, m_geometry.pageCount() - 1);
    verticalScrollBar()->setValue(qFloor(m_geometry.topOf(page)));
    setCurrent(page);
}

void PageView::setCurrent(int page) {
    if (page == m_current)
        return;
    m_current = page;
    Q_EMIT pageChanged(page);
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    // The page in which the upper part of the view lies.
    const int page = pagePointAt({0, viewport()->height() / 3.0}).page;
    if (m_geometry.pageCount() > 0)
        setCurrent(page);
}

void PageView::resizeEvent(QResizeEvent *) {
    updateScrollBars();
    applyFit();
}

void PageView::changeEvent(QEvent *event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateScrollBars();
}

void PageView::wheelEvent(QWheelEvent *event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const double factor = std::pow(1.2, event->angleDelta().y() / 120.0);
    const double unit = logicalDpiY() / millimetresPerInch;
    const double zoomed = std::clamp(zoom() * factor, *std::begin(zoomSteps), *(std::end(zoomSteps) - 1));
    m_fit = Fit::None;
    setScale(zoomed * unit, event->position());
    event->accept();
}

bool PageView::handleKey(int key) {
    QScrollBar *bar = verticalScrollBar();
    const bool whole = m_geometry.page(m_current).height() <= viewport()->height();
    switch (key) {
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        whole ? goToPage(m_current + 1) : bar->triggerAction(QScrollBar::SliderPageStepAdd);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_Backspace:
        whole ? goToPage(m_current - 1) : bar->triggerAction(QScrollBar::SliderPageStepSub);
        return true;
    case Qt::Key_Home:
        goToPage(0);
        return true;
    case Qt::Key_End:
        goToPage(m_geometry.pageCount() - 1);
        return true;
    default:
        return false;
    }
}

void PageView::keyPressEvent(QKeyEvent *event) {
    if (m_geometry.pageCount() == 0 || !handleKey(event->key()))
        QAbstractScrollArea::keyPressEvent(event);
}

void PageView::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_selectionStart = pagePointAt(event->position());
    select(-1, {});
}

void PageView::mouseMoveEvent(QMouseEvent *event) {
    const PagePoint point = pagePointAt(event->position());
    if (m_geometry.pageCount() == 0)
        return;
    if (event->buttons() & Qt::LeftButton) {
        QPointF end = point.millimetres;
        if (point.page != m_selectionStart.page)
            end = (event->position() - origin() - m_geometry.page(m_selectionStart.page).topLeft()) /
                  m_geometry.scale();
        select(m_selectionStart.page, QRectF(m_selectionStart.millimetres, end).normalized());
        return;
    }
    const bool overText = std::ranges::any_of(
        texts(point.page), [&](const TextRun &run) { return run.area.contains(point.millimetres); });
    viewport()->setCursor(overText ? Qt::IBeamCursor : Qt::ArrowCursor);
}

/// Takes the whole run.
void PageView::mouseDoubleClickEvent(QMouseEvent *event) {
    const PagePoint point = pagePointAt(event->position());
    if (m_geometry.pageCount() == 0)
        return;
    for (const TextRun &run : texts(point.page))
        if (run.area.contains(point.millimetres))
            select(point.page, run.area);
}

void PageView::selectPage() {
    if (m_geometry.pageCount() > 0)
        select(m_current, QRectF(QPointF(), m_document.pageSize(m_current)));
}

void PageView::select(int page, const QRectF &millimetres) {
    m_selectionPage = page;
    m_selection = page < 0 ? TextSelection() : selectText(texts(page), millimetres);
    viewport()->update();
    Q_EMIT selectionChanged();
}

void PageView::setHighlight(const QString &text) {
    m_highlight = foldForSearch(text);
    m_hit.reset();
    viewport()->update();
}

void PageView::showHit(const TextHit &hit) {
    m_hit = hit;
    const QRectF area = m_geometry.fromPage(hit.page, hit.area).translated(origin());
    const QRectF seen = QRectF(viewport()->rect()).adjusted(jumpMargin, jumpMargin, -jumpMargin, -jumpMargin);
    if (!seen.contains(area)) {
        const QPointF distance = area.center() - seen.center();
        verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(distance.y()));
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(distance.x()));
    }
    setCurrent(hit.page);
    viewport()->update();
}

void PageView::paintEvent(QPaintEvent *event) {
    if (m_geometry.pageCount() == 0)
        return;
    QPainter painter(viewport());
    painter.translate(origin());
    const QRectF seen = QRectF(event->rect()).translated(-origin());
    for (int page = m_geometry.pageAt(seen.top());
         page < m_geometry.pageCount() && m_geometry.page(page).top() < seen.bottom(); ++page)
        paintPage(painter, page);
    if (!m_painted)
        QMetaObject::invokeMethod(this, &PageView::firstPainted, Qt::QueuedConnection);
    m_painted = true;
}

void PageView::paintPage(QPainter &painter, int page) {
    const QRectF area = m_geometry.page(page);
    painter.fillRect(area.translated(PageGeometry::shadow, PageGeometry::shadow),
                     palette().color(QPalette::Dark));
    if (kilobytes(area.size() * devicePixelRatioF()) <= largestPicture) {
        painter.drawPixmap(area.topLeft(), picture(page, area.size()));
    } else {
        painter.save();
        painter.fillRect(area, Qt::white);
        painter.setClipRect(area);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(area.topLeft());
        painter.scale(m_geometry.scale(), m_geometry.scale());
        m_document.paint(painter, page);
        painter.restore();
    }
    paintMarks(painter, page);
}

QPixmap PageView::picture(int page, QSizeF size) {
    if (const QPixmap *kept = m_pictures.object(page))
        return *kept;
    const double ratio = devicePixelRatioF();
    QPixmap drawn((size * ratio).toSize().expandedTo({1, 1}));
    drawn.setDevicePixelRatio(ratio);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(m_geometry.scale(), m_geometry.scale());
    m_document.paint(painter, page);
    painter.end();
    m_pictures.insert(page, new QPixmap(drawn), kilobytes(drawn.size()));
    return drawn;
}

void PageView::paintMarks(QPainter &painter, int page) {
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    if (!m_highlight.isEmpty())
        for (const QRectF &area : findText(texts(page), m_highlight))
            painter.fillRect(m_geometry.fromPage(page, area), QColor(255, 240, 120));
    if (m_hit && m_hit->page == page)
        painter.fillRect(m_geometry.fromPage(page, m_hit->area), QColor(255, 160, 60));
    if (m_selectionPage == page)
        for (const QRectF &area : m_selection.areas)
            painter.fillRect(m_geometry.fromPage(page, area), QColor(150, 190, 255));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

const std::vector<TextRun> &PageView::texts(int page) {
    if (const auto *kept = m_texts.object(page))
        return *kept;
    auto *read = new std::vector<TextRun>(m_document.texts(page));
    m_texts.insert(page, read);
    return *read;
}
