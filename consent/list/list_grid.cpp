#include "consent/list/list_grid.h"

#include "widgets/date_delegate.h"
#include "widgets/tick_delegate.h"

#include <QApplication>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDir>
#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollBar>
#include <QSettings>
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

QSettings windowSettings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, u"douisho"_s, u"windows"_s);
}

// Widths are kept by position.
QString columnsKey() {
    QString captions;
    for (const ListColumnInfo &info : listColumns())
        captions += info.caption + u'\n';
    const QByteArray hash = QCryptographicHash::hash(captions.toUtf8(), QCryptographicHash::Md5);
    return u"consent_list/"_s + QString::fromLatin1(hash.toHex());
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

ListGrid::ListGrid(const Folders &folders, const QDate &today, QWidget *parent) : Grid(parent) {
    setObjectName(u"ssDouiD"_s);
    setSelectionBehavior(SelectItems);
    setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
    setSortingEnabled(true);
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);

    auto *ticks = new TickDelegate(folders, this);
    auto *dates = new DateDelegate(this);
    dates->setToday(today);
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
    // Reckoned from the number of characters: measuring every caption would load the glyphs of columns that
    // nobody sees at the start.
    const int wide = fontMetrics().horizontalAdvance(u"国"_s);
    for (const ListColumnInfo &info : listColumns()) {
        const auto narrow = std::count_if(info.caption.begin(), info.caption.end(),
                                          [](QChar c) { return c.unicode() < 0x80; });
        const int caption = int(info.caption.size() - narrow / 2);
        setColumnWidth(int(info.column), (qMax(caption, info.characters) + 1) * wide);
    }
}

void ListGrid::setMethods(const RequestMethods &methods) {
    m_methods = methods;
}

void ListGrid::restoreColumns() {
    if (const QByteArray state = windowSettings().value(columnsKey()).toByteArray(); !state.isEmpty())
        restoreLayout(state);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

Result<> ListGrid::keepColumns() const {
    QSettings settings = windowSettings();
    settings.setValue(columnsKey(), layoutState());
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return {};
    return Failure{u"列の幅と順序を保存できませんでした。「%1」に書き込めるか確認してください。"_s.arg(
        QDir::toNativeSeparators(settings.fileName()))};
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
