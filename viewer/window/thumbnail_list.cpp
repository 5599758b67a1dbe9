#include "viewer/window/thumbnail_list.h"

#include <QAbstractListModel>
#include <QCache>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

namespace {
constexpr int cachedThumbnails = 500;
}

/// Pictures of a fixed width; a missing one is drawn when the event loop has nothing else to do.
class ThumbnailModel : public QAbstractListModel {
public:
    ThumbnailModel(const Document &document, QSize area, double ratio, QObject *parent)
        : QAbstractListModel(parent),
          m_document(document),
          m_area(area),
          m_ratio(ratio),
          m_pages(document.pageCount()),
          m_pictures(cachedThumbnails) {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { drawNext(); });
    }

    void begin() {
        m_begun = true;
        m_timer.start(0);
    }

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_pages; }

    QVariant data(const QModelIndex &index, int role) const override {
        if (role != Qt::DecorationRole)
            return role == Qt::DisplayRole ? QVariant(QString::number(index.row() + 1)) : QVariant();
        if (const QPixmap *kept = m_pictures.object(index.row()))
            return *kept;
        m_wanted.removeOne(index.row());
        m_wanted.append(index.row()); // what was asked for last is in sight
        if (m_wanted.size() > cachedThumbnails / 2)
            m_wanted.removeFirst();
        if (m_begun)
            m_timer.start(0);
        return {};
    }

private:
    void drawNext() {
        if (m_wanted.isEmpty())
            return;
        const int page = m_wanted.takeLast();
        const QSizeF size = m_document.pageSize(page);
        const QSizeF shown = size.scaled(m_area, Qt::KeepAspectRatio);
        auto *picture = new QPixmap((shown * m_ratio).toSize().expandedTo({1, 1}));
        picture->setDevicePixelRatio(m_ratio);
        picture->fill(Qt::white);
        QPainter painter(picture);
        painter.setRenderHint(QPainter::Antialiasing);
        const double scale = size.isEmpty() ? 1 : shown.width() / size.width();
        painter.scale(scale, scale);
        m_document.paint(painter, page);
        painter.end();
        m_pictures.insert(page, picture);
        Q_EMIT dataChanged(index(page), index(page), {Qt::DecorationRole});
        m_timer.start(0);
    }

    const Document &m_document;
    QSize m_area;
    double m_ratio;
    int m_pages;
    bool m_begun = false;
    QCache<int, QPixmap> m_pictures;
    mutable QList<int> m_wanted;
    mutable QTimer m_timer;
};

namespace {

/// The page's picture in a frame, its number below.
class ThumbnailDelegate : public QStyledItemDelegate {
public:
    ThumbnailDelegate(QSize area, QObject *parent) : QStyledItemDelegate(parent), m_area(area) {}

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override {
        const int line = option.fontMetrics.height();
        return {m_area.width() + line, m_area.height() + 2 * line};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const bool selected = option.state & QStyle::State_Selected;
        const QPalette &colors = option.palette;
        if (selected)
            painter->fillRect(option.rect, colors.highlight());
        const int line = option.fontMetrics.height();
        const QRect area = option.rect.adjusted(0, line / 2, 0, -line * 3 / 2);
        const auto picture = index.data(Qt::DecorationRole).value<QPixmap>();
        QRect page(QPoint(), picture.isNull() ? QSize(m_area.height() * 7 / 10, m_area.height())
                                              : picture.deviceIndependentSize().toSize());
        page.moveCenter(area.center());
        if (picture.isNull())
            painter->fillRect(page, Qt::white);
        else
            painter->drawPixmap(page, picture);
        painter->setPen(colors.color(QPalette::Dark));
        painter->drawRect(page);
        painter->setPen(colors.color(selected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(option.rect.adjusted(0, 0, 0, -line / 4), Qt::AlignHCenter | Qt::AlignBottom,
                          index.data().toString());
    }

private:
    QSize m_area;
};

} // namespace

ThumbnailList::ThumbnailList(const Document &document, QWidget *parent) : QListView(parent) {
    const int line = fontMetrics().height();
    const QSize area(line * 7, line * 7);
    m_thumbnails = new ThumbnailModel(document, area, devicePixelRatioF(), this);
    setModel(m_thumbnails);
    setItemDelegate(new ThumbnailDelegate(area, this));
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setFixedWidth(area.width() + line + verticalScrollBar()->sizeHint().width() + 2 * frameWidth());
}

void ThumbnailList::begin() {
    m_thumbnails->begin();
}

void ThumbnailList::setCurrentPage(int page) {
    m_following = true;
    setCurrentIndex(model()->index(page, 0));
    m_following = false;
}

void ThumbnailList::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QListView::currentChanged(current, previous);
    if (!m_following && current.isValid())
        Q_EMIT pageChosen(current.row());
}
