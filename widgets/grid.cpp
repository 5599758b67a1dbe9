#include "widgets/grid.h"

#include "widgets/date_box.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Measures its captions in the font that they are shown in. The base class allows for the bold face that it
/// gives to the current section; to load that face is a good part of showing the first window.
class GridHeader : public QHeaderView {
public:
    explicit GridHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {
        setSectionsClickable(true);
        setSectionsMovable(true);
        setHighlightSections(false);
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }

protected:
    QSize sectionSizeFromContents(int section) const override {
        if (!model()) // while its owner is being destroyed
            return QHeaderView::sectionSizeFromContents(section);
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.section = section;
        option.orientation = Qt::Horizontal;
        option.text = model()->headerData(section, Qt::Horizontal).toString();
        if (isSortIndicatorShown())
            option.sortIndicator = QStyleOptionHeader::SortDown;
        return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
    }
};

} // namespace

Grid::Grid(QWidget *parent) : QTableView(parent) {
    setHorizontalHeader(new GridHeader(this));
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    verticalHeader()->setVisible(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    sizeRows();
}

void Grid::fitColumns(int widest) {
    if (!model())
        return;
    // A handful of rows tells the width; looking at all of them would touch every cell.
    horizontalHeader()->setResizeContentsPrecision(50);
    const int limit = widthOf(widest);
    for (int column = 0; column < model()->columnCount(); ++column) {
        if (isColumnHidden(column))
            continue;
        const int wanted = qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        setColumnWidth(column, std::clamp(wanted + widthOf(0), widthOf(4), limit));
    }
}

int Grid::widthOf(int characters) const {
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return characters * fontMetrics().horizontalAdvance(u'国') + 2 * margin;
}

QByteArray Grid::layoutState() const {
    return horizontalHeader()->saveState();
}

bool Grid::restoreLayout(const QByteArray &state) {
    return horizontalHeader()->restoreState(state);
}

void Grid::goTo(int row, int column) {
    if (!model() || model()->rowCount() == 0 || model()->columnCount() == 0)
        return;
    const QModelIndex index = model()->index(std::clamp(row, 0, model()->rowCount() - 1),
                                             std::clamp(column, 0, model()->columnCount() - 1));
    setCurrentIndex(index);
    scrollTo(index);
}

bool Grid::commitEditor() {
    QWidget *editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (!editor)
        return true;
    if (auto *box = qobject_cast<DateBox *>(editor); box && !box->settle())
        return false;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void Grid::keyPressEvent(QKeyEvent *event) {
    const bool wholeRows = selectionBehavior() == SelectRows && event->modifiers() == Qt::NoModifier;
    if (wholeRows && (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)) {
        goTo(event->key() == Qt::Key_Home ? 0 : model()->rowCount() - 1, qMax(0, currentIndex().column()));
        return;
    }
    QTableView::keyPressEvent(event);
}

void Grid::changeEvent(QEvent *event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        sizeRows();
}

bool Grid::viewportEvent(QEvent *event) {
    if (event->type() == QEvent::ToolTip && showWholeText(*static_cast<QHelpEvent *>(event)))
        return true;
    return QTableView::viewportEvent(event);
}

void Grid::sizeRows() {
    // Fonts differ more in the height of their lines than in that of their signs.
    const int line = fontMetrics().height(), sign = fontMetrics().horizontalAdvance(u'国');
    verticalHeader()->setMinimumSectionSize(line);
    verticalHeader()->setDefaultSectionSize(qMax(line + 2, sign * 2));
}

bool Grid::showWholeText(const QHelpEvent &event) {
    const QModelIndex index = indexAt(event.pos());
    if (!index.isValid() || index.data(Qt::ToolTipRole).isValid())
        return false;
    const QString text = index.data(Qt::DisplayRole).toString();
    const int room = columnWidth(index.column()) - 2 * widthOf(0);
    if (fontMetrics().horizontalAdvance(text) <= room)
        return false;
    constexpr qsizetype most = 600; // a tip that covers the table helps nobody
    const QString tip = text.size() > most ? text.left(most) + u"…"_s : text;
    QToolTip::showText(event.globalPos(), tip.toHtmlEscaped().replace(u'\n', u"<br>"_s), viewport(),
                       visualRect(index));
    return true;
}
