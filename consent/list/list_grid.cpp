#include "consent/list/list_grid.h"

#include "app/desktop/signal_colours.h"
#include "widgets/cell_delegate.h"
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
class MethodDelegate : public CellDelegate {
public:
    MethodDelegate(const RequestMethods &methods, QObject *parent)
        : CellDelegate(parent), m_methods(methods) {}

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

} // namespace

void PaintedListModel::setPalette(const QPalette &palette) {
    m_soon = signalInk(Signal::Soon, palette);
    m_ended = signalInk(Signal::Wrong, palette);
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
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(true);
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
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) { goTo(0, column); });
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

void ListGrid::keyPressEvent(QKeyEvent *event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (tab && modifiers.testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::focusNextPrevChild(key == Qt::Key_Tab);
        return;
    }
    if (modifiers.testFlag(Qt::ShiftModifier) && chooseRows(*event))
        return;
    if (modifiers == Qt::NoModifier && (key == Qt::Key_Space || key == Qt::Key_Select) &&
        (press(currentIndex()) || tick(true)))
        return;
    if (modifiers == Qt::NoModifier && (key == Qt::Key_Return || key == Qt::Key_Enter) && enter())
        return;
    if (key == Qt::Key_Delete && currentIndex().flags().testFlag(Qt::ItemIsEditable)) {
        empty(currentIndex());
        return;
    }
    Grid::keyPressEvent(event);
}

// Delete empties a cell as it does in every table that people know.
void ListGrid::empty(const QModelIndex &index) {
    const CellKind kind = listColumn(index.column()).kind;
    model()->setData(index, kind == CellKind::Date     ? QVariant(QDate())
                            : kind == CellKind::Choice ? QVariant(0)
                                                       : QVariant(QString()));
}

// Opens the cell, presses its button or turns its tick over; from a cell that holds nothing to edit, the one
// below.
bool ListGrid::enter() {
    const QModelIndex current = currentIndex();
    if (!current.isValid() || press(current))
        return current.isValid();
    if (current.flags().testFlag(Qt::ItemIsEditable))
        edit(current, EditKeyPressed, nullptr);
    else if (!tick(false))
        goTo(current.row() + 1, current.column());
    return true;
}

// Ticks the chosen rows, or takes the ticks away where all have them; without chosen rows the one row. Where
// the cursor is on no tick and nothing could be typed, it is 対象.
bool ListGrid::tick(bool anyColumn) {
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return false;
    const bool onTick = listColumn(current.column()).kind == CellKind::Tick;
    std::vector<int> records = chosenRecords();
    if (!onTick && (!anyColumn || (records.empty() && current.flags().testFlag(Qt::ItemIsEditable))))
        return false;
    if (records.empty())
        records.push_back(m_model->recordOfRow(current.row()));
    const ListColumn column = onTick ? ListColumn(current.column()) : ListColumn::Target;
    m_model->tick(records, column, !m_model->allTicked(records, column));
    return true;
}

std::vector<int> ListGrid::chosenRecords() const {
    std::vector<int> records;
    for (const QItemSelectionRange &range : selectionModel()->selection())
        if (range.width() == m_model->columnCount())
            for (int row = range.top(); row <= range.bottom(); ++row)
                records.push_back(m_model->recordOfRow(row));
    return records;
}

void ListGrid::chooseUpTo(int row) {
    const QModelIndex first = m_model->index(qMin(row, m_chosenFrom), 0);
    const QModelIndex last = m_model->index(qMax(row, m_chosenFrom), m_model->columnCount() - 1);
    selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
}

// Shift with a key that goes to another row chooses all up to there, Shift+Space the row itself.
bool ListGrid::chooseRows(const QKeyEvent &event) {
    static const QHash<int, CursorAction> moves{
        {Qt::Key_Up, MoveUp},         {Qt::Key_Down, MoveDown},
        {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown},
        {Qt::Key_Home, MoveHome},     {Qt::Key_End, MoveEnd}};
    const QModelIndex current = currentIndex();
    const auto move = moves.constFind(event.key());
    if (!current.isValid() || (move == moves.cend() && event.key() != Qt::Key_Space))
        return false;
    if (chosenRecords().empty())
        m_chosenFrom = current.row();
    int row = current.row();
    if (move != moves.cend())
        row = moveCursor(*move, event.modifiers() & Qt::ControlModifier).row();
    const QModelIndex there = m_model->index(row, current.column());
    selectionModel()->setCurrentIndex(there, QItemSelectionModel::NoUpdate);
    scrollTo(there);
    chooseUpTo(row);
    return true;
}

QItemSelectionModel::SelectionFlags ListGrid::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const {
    const QEvent::Type type = event ? event->type() : QEvent::None;
    if (type == QEvent::MouseMove) // a hand that shakes chooses nothing
        return QItemSelectionModel::NoUpdate;
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease)
        return QItemSelectionModel::ClearAndSelect;
    const QItemSelectionModel::SelectionFlags flags = Grid::selectionCommand(index, event);
    const bool chooses =
        static_cast<const QInputEvent *>(event)->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    return chooses ? flags | QItemSelectionModel::Rows : flags;
}

QModelIndex ListGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveNext || action == MovePrevious)
        return nextToEdit(action == MoveNext ? 1 : -1);
    return Grid::moveCursor(action, modifiers);
}

// The next cell on the screen that can be edited or ticked, in this row or, after its last one, in the rows
// that follow.
QModelIndex ListGrid::nextToEdit(int step) const {
    const QHeaderView *header = horizontalHeader();
    const int columns = header->count(), rows = m_model->rowCount();
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return current;
    int row = current.row(), place = header->visualIndex(current.column());
    for (;;) {
        place += step;
        if (place < 0 || place >= columns) {
            row += step;
            place = step > 0 ? 0 : columns - 1;
        }
        if (row < 0 || row >= rows)
            return current;
        const QModelIndex next = m_model->index(row, header->logicalIndex(place));
        if (!isColumnHidden(next.column()) &&
            next.flags().testAnyFlags(Qt::ItemIsEditable | Qt::ItemIsUserCheckable))
            return next;
    }
}

void ListGrid::narrow(const QString &name, const QString &kana) {
    const QModelIndex current = currentIndex();
    const int record = current.isValid() ? m_model->recordOfRow(current.row()) : -1;
    const int column = qMax(0, current.column());
    const int across = horizontalScrollBar()->value();
    m_model->narrow(name, kana);
    const bool all = name.isEmpty() && kana.isEmpty();
    goTo(all && record >= 0 ? m_model->rowOfRecord(record) : 0, column);
    horizontalScrollBar()->setValue(across);
}

void ListGrid::goToFirst() {
    goTo(0, qMax(0, currentIndex().column()));
}

void ListGrid::goToRecord(int record) {
    if (const int row = m_model->rowOfRecord(record); row >= 0)
        goTo(row, qMax(0, currentIndex().column()));
}

void ListGrid::sortByCurrentColumn() {
    const int column = currentIndex().column();
    QHeaderView *header = horizontalHeader();
    if (header->sortIndicatorSection() != column)
        header->setSortIndicator(column, Qt::AscendingOrder);
    else if (header->sortIndicatorOrder() == Qt::AscendingOrder)
        header->setSortIndicator(column, Qt::DescendingOrder);
    else
        header->setSortIndicator(-1, Qt::AscendingOrder);
    goTo(0, column);
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
