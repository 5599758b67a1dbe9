#include "consent/list/list_grid.h"

#include "widgets/date_delegate.h"
#include "widgets/tick_delegate.h"
#include "widgets/window_settings.h"

#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Edits a row's request method as a choice from the practice's list.
class MethodDelegate : public QStyledItemDelegate {
public:
    MethodDelegate(const RequestMethods &methods, QObject *parent)
        : QStyledItemDelegate(parent), m_methods(methods) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const override {
        auto *box = new QComboBox(parent);
        box->addItem(u"（なし）"_s, 0);
        for (int number = 1; number <= m_methods.texts.size(); ++number)
            if (const QString text = m_methods.text(number); !text.isEmpty())
                box->addItem(text, number);
        return box;
    }
    void setEditorData(QWidget *editor, const QModelIndex &index) const override {
        auto *box = static_cast<QComboBox *>(editor);
        box->setCurrentIndex(box->findData(index.data(Qt::EditRole).toInt()));
    }
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override {
        const QVariant chosen = static_cast<QComboBox *>(editor)->currentData();
        // A number that the list no longer has stays until something else is chosen.
        if (chosen.isValid())
            model->setData(index, chosen.toInt(), Qt::EditRole);
    }

private:
    const RequestMethods &m_methods;
};

/// Paints a cell that has a text as a push button; the grid answers it.
class ButtonDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QString text = std::exchange(cell.text, QString());
        const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
        if (text.isEmpty())
            return;
        QStyleOptionButton button;
        button.rect = option.rect.adjusted(1, 1, -1, -1);
        button.palette = option.palette;
        button.fontMetrics = option.fontMetrics;
        button.state = QStyle::State_Enabled | QStyle::State_Raised;
        constexpr int margins = 12;
        button.text = option.fontMetrics.elidedText(text, Qt::ElideRight, button.rect.width() - margins);
        style->drawControl(QStyle::CE_PushButton, &button, painter, option.widget);
    }
};

/// Columns by their names, so that new ones find their place among those that were kept.
const QString widthsKey = u"consent_list/widths"_s;
const QString orderKey = u"consent_list/order"_s;
const QString practiceKey = u"consent_list/practice_order"_s; ///< over which the user's own was kept

QStringList orderOf(const ColumnSettings &settings) {
    QStringList names;
    for (const ColumnSettings::Column &column : settings.columns)
        names.append(listItemName(column.column));
    return names;
}

QColor readable(const QColor &colour, const QPalette &palette) {
    return palette.color(QPalette::Base).lightness() < 128 ? colour.lighter(190) : colour;
}

} // namespace

void PaintedListModel::setPalette(const QPalette &palette) {
    m_soon = readable(QColor(0x8a, 0x4b, 0x00), palette);
    m_ended = readable(QColor(0xb0, 0x00, 0x20), palette);
    m_edited = palette.color(QPalette::Highlight);
    m_edited.setAlpha(48);
}

QVariant PaintedListModel::data(const QModelIndex &index, int role) const {
    if (role == Qt::FontRole || role == Qt::ForegroundRole) {
        const auto urgency = Urgency(ConsentListModel::data(index, UrgencyRole).toInt());
        if (urgency == Urgency::None)
            return {};
        if (role == Qt::ForegroundRole)
            return urgency == Urgency::Ended ? m_ended : m_soon;
        // The cell that says why carries the weight; a whole row of bold shouts.
        if (index.column() != int(ListColumn::ConsentEnd))
            return {};
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::BackgroundRole)
        return ConsentListModel::data(index, EditedRole).toBool() ? QVariant(m_edited) : QVariant();
    return ConsentListModel::data(index, role);
}

ListGrid::ListGrid(const Folders &folders, const Clock &clock, QWidget *parent) : Grid(parent) {
    setObjectName(u"ssDouiD"_s);
    setAccessibleName(u"同意の一覧"_s);
    setSelectionBehavior(SelectItems);
    setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
    setSortingEnabled(true);
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);

    auto *ticks = new TickDelegate(folders, this);
    auto *dates = new DateDelegate(this);
    dates->setClock(clock);
    connect(dates, &DateDelegate::rejected, this, &ListGrid::rejected);
    auto *methods = new MethodDelegate(m_methods, this);
    for (const ListColumnInfo &info : listColumns()) {
        if (info.kind == CellKind::Tick)
            setItemDelegateForColumn(int(info.column), ticks);
        else if (info.kind == CellKind::Date && info.editable)
            setItemDelegateForColumn(int(info.column), dates);
        else if (info.kind == CellKind::Choice)
            setItemDelegateForColumn(int(info.column), methods);
        else if (info.kind == CellKind::Button)
            setItemDelegateForColumn(int(info.column), new ButtonDelegate(this));
    }
    connect(this, &QTableView::clicked, this, &ListGrid::press);
}

void ListGrid::attach(PaintedListModel *model) {
    m_model = model;
    model->setPalette(palette());
    setModel(model);
    arrange(ColumnSettings::first());
}

// Widths are reckoned from the number of characters: measuring every caption would load the glyphs of columns
// that nobody sees at the start.
void ListGrid::arrange(const ColumnSettings &settings) {
    m_practice = settings;
    int place = 0;
    for (const ColumnSettings::Column &column : settings.columns) {
        const int section = int(column.column);
        horizontalHeader()->moveSection(horizontalHeader()->visualIndex(section), place++);
        setColumnHidden(section, !column.shown);
        setColumnWidth(section, pixels(column.width));
    }
    setFrozenColumns(settings.frozen);
}

void ListGrid::setMethods(const RequestMethods &methods) {
    m_methods = methods;
}

int ListGrid::pixels(int characters) const {
    return characters * fontMetrics().horizontalAdvance(u"国"_s) / 2;
}

int ListGrid::practiceWidth(ListColumn column) const {
    return std::ranges::find(m_practice.columns, column, &ColumnSettings::Column::column)->width;
}

void ListGrid::showColumns(const ColumnSettings &practice) {
    arrange(practice);
    const QSettings kept = windowSettings();
    const QVariantMap widths = kept.value(widthsKey).toMap();
    QStringList order = kept.value(orderKey).toStringList();
    if (kept.value(practiceKey).toStringList() != orderOf(practice))
        order.clear();
    QHash<QString, int> sections;
    for (const ListColumnInfo &info : listColumns()) {
        const QString name = listItemName(info.column);
        sections.insert(name, int(info.column));
        if (const int width = widths.value(name).toInt(); width > 0)
            setColumnWidth(int(info.column), width);
    }
    for (qsizetype place = 0; place < order.size(); ++place)
        if (const int section = sections.value(order[place], -1); section >= 0)
            horizontalHeader()->moveSection(horizontalHeader()->visualIndex(section), int(place));
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    if (currentIndex().isValid())
        goTo(currentIndex().row(), currentIndex().column());
}

ColumnSettings ListGrid::columns() const {
    ColumnSettings now;
    now.frozen = m_practice.frozen;
    for (int place = 0; place < horizontalHeader()->count(); ++place) {
        const int section = horizontalHeader()->logicalIndex(place);
        const int practice = practiceWidth(ListColumn(section));
        const bool hidden = isColumnHidden(section);
        const bool asPractice = hidden || columnWidth(section) == pixels(practice);
        now.columns.push_back({ListColumn(section), !hidden,
                               asPractice ? practice : qMax(2, columnWidth(section) / pixels(1))});
    }
    return now;
}

// What equals the practice's follows it from now on; a hidden column keeps the width that it had.
Result<> ListGrid::keepColumns() const {
    QSettings settings = windowSettings();
    QVariantMap widths = settings.value(widthsKey).toMap();
    const ColumnSettings now = columns();
    for (const ColumnSettings::Column &column : now.columns) {
        const int width = columnWidth(int(column.column));
        if (width == pixels(practiceWidth(column.column)))
            widths.remove(listItemName(column.column));
        else if (column.shown)
            widths.insert(listItemName(column.column), width);
    }
    settings.setValue(widthsKey, widths);
    settings.setValue(orderKey, orderOf(now));
    settings.setValue(practiceKey, orderOf(m_practice));
    return writeNow(settings, u"列の幅と順序"_s);
}

void ListGrid::forgetColumns() {
    QSettings settings = windowSettings();
    for (const QString &key : {widthsKey, orderKey, practiceKey})
        settings.remove(key);
}

bool ListGrid::press(const QModelIndex &index) {
    if (!index.isValid() || listColumn(index.column()).kind != CellKind::Button ||
        index.data().toString().isEmpty())
        return false;
    Q_EMIT buttonPressed();
    return true;
}

void ListGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) {
    Grid::closeEditor(editor, hint);
    if (hint == QAbstractItemDelegate::SubmitModelCache && currentIndex().row() + 1 < model()->rowCount())
        goTo(currentIndex().row() + 1, currentIndex().column());
}

// Delete empties a cell as it does in every table that people know.
void ListGrid::keyPressEvent(QKeyEvent *event) {
    const QModelIndex current = currentIndex();
    const bool presses = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                         event->key() == Qt::Key_Enter || event->key() == Qt::Key_Select;
    if (presses && press(current))
        return;
    if (event->key() == Qt::Key_Delete && current.flags().testFlag(Qt::ItemIsEditable)) {
        const CellKind kind = listColumn(current.column()).kind;
        model()->setData(current, kind == CellKind::Date     ? QVariant(QDate())
                                  : kind == CellKind::Choice ? QVariant(0)
                                                             : QVariant(QString()));
        return;
    }
    Grid::keyPressEvent(event);
}

// Where the row of a key is now; a renewed row has another key, the patient's row of the same kind stands in.
int ListGrid::rowOf(const ConsentRowKey &key, int otherwise) const {
    int sibling = -1;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const ConsentRowKey other = m_model->records().key(m_model->recordOfRow(row));
        if (other == key)
            return row;
        if (sibling < 0 && other.patient == key.patient && other.iHenkeiFlg == key.iHenkeiFlg)
            sibling = row;
    }
    return sibling >= 0 ? sibling : otherwise;
}

// The cell that was current stays current, at its height in the window, wherever its row went.
void ListGrid::keepPlace(const std::function<void()> &work) {
    const QModelIndex current = currentIndex();
    const int before = qMax(0, current.row());
    const int column = qMax(0, current.column());
    std::optional<ConsentRowKey> key;
    if (current.isValid())
        key = m_model->records().key(m_model->recordOfRow(before));
    const int fromTop = before - verticalScrollBar()->value();
    const int across = horizontalScrollBar()->value();
    work();
    const int row = key ? rowOf(*key, before) : 0;
    goTo(row, column);
    verticalScrollBar()->setValue(row - fromTop);
    horizontalScrollBar()->setValue(across);
}
