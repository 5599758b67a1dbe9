#include "consent/merge/merge_form.h"

#include "app/base/messages.h"
#include "app/desktop/foot_line.h"
#include "widgets/grid.h"
#include "widgets/key_button.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString introduction(MergeForm::Use use) {
    const QString what =
        u"次の行は、読み込んだ後に他のＰＣで変更されています。まだ何も保存していません。\r\n"_s;
    return what +
           (use == MergeForm::Use::Save
                ? u"● の付いた項目が変わっています。保存する内容を Space で選び、Enter で保存します。"_s
                : u"● の付いた項目が変わっています。内容を Space で選び、Enter で一覧に取り込みます。"_s);
}

} // namespace

MergeForm::MergeForm(Messages &messages, std::vector<MergeRow> rows, Use use, QWidget *parent)
    : QDialog(parent), m_messages(messages), m_rows(std::move(rows)), m_use(use), m_rowsModel(m_rows) {
    setObjectName(u"frmKasanari"_s);
    setWindowTitle(u"他のＰＣと重なった行"_s);
    layOut();
    show(0);
    goOn();
}

void MergeForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(introduction(m_use), this));

    auto *sides = new QSplitter(this);
    m_rowsGrid = new Grid(sides);
    m_rowsGrid->setObjectName(u"ssGyou"_s);
    m_rowsGrid->setAccessibleName(u"重なった行"_s);
    m_rowsGrid->setModel(&m_rowsModel);
    auto *side = new QWidget(sides);
    auto *oneRow = new QVBoxLayout(side);
    oneRow->setContentsMargins({});
    m_written = new QLabel(side);
    m_written->setObjectName(u"lblWritten"_s);
    m_written->setTextFormat(Qt::PlainText);
    m_grid = new Grid(side);
    oneRow->addWidget(m_written);
    oneRow->addWidget(m_grid);
    m_grid->setObjectName(u"ssKoumoku"_s);
    m_grid->setAccessibleName(u"変わった項目"_s);
    m_grid->setModel(&m_columnsModel);
    for (Grid *grid : {m_rowsGrid, m_grid}) {
        grid->setSelectionBehavior(QAbstractItemView::SelectRows);
        grid->installEventFilter(this);
    }
    m_rowsGrid->fitColumns(10);
    m_rowsGrid->horizontalHeader()->setStretchLastSection(true);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_grid->horizontalHeader()->setSectionResizeMode(MergeColumnsModel::Caption,
                                                     QHeaderView::ResizeToContents);
    sides->setStretchFactor(0, 2);
    sides->setStretchFactor(1, 5);
    layout->addWidget(sides, 1);

    m_whole = new QLabel(this);
    m_whole->setObjectName(u"lblWhole"_s);
    m_whole->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_whole->setWordWrap(true);
    m_whole->setTextFormat(Qt::PlainText);
    m_whole->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_whole->setMinimumHeight(3 * fontMetrics().lineSpacing());
    layout->addWidget(m_whole);

    auto *ways = new QHBoxLayout;
    addWays(*ways, u"この行："_s, QString(), false);
    if (m_rows.size() > 1) {
        ways->addSpacing(fontMetrics().height());
        addWays(*ways, u"すべての行："_s, u"Shift+"_s, true);
    }
    ways->addStretch(1);
    layout->addLayout(ways);

    const bool saves = m_use == Use::Save;
    auto *save = keyButton(u"cmdSave"_s, saves ? u"保存"_s : u"取り込む"_s, u"F5"_s,
                           u"決めた内容で続けます（Enter でも続けます）"_s, this);
    save->setDefault(true);
    auto *leave = keyButton(u"cmdEnd"_s,
                            saves                ? u"戻る"_s
                            : m_use == Use::Take ? u"入力を捨てる"_s
                                                 : u"後にする"_s,
                            u"F12"_s, u"保存しないで閉じます"_s, this);
    auto *copy = keyButton(u"cmdCopy"_s, u"入力を写す"_s, u"Ctrl+C"_s,
                           u"この行に入力した内容をクリップボードに写します"_s, this);
    auto *foot = new QHBoxLayout;
    foot->addWidget(copy);
    foot->addWidget(new FootLine(this), 1);
    foot->addWidget(save);
    foot->addWidget(leave);
    layout->addLayout(foot);

    connect(save, &QPushButton::clicked, this, [this] { accept(); });
    connect(leave, &QPushButton::clicked, this, [this] { reject(); });
    connect(copy, &QPushButton::clicked, this, [this] { copyTyped(); });
    connect(m_rowsGrid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { show(current.row()); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { showWhole(); });
    connect(m_grid, &QTableView::doubleClicked, this, [this] { turnOver(); });
    const QSize wanted(m_grid->widthOf(76), fontMetrics().height() * 28);
    resize(wanted.boundedTo(screen()->availableSize() * 95 / 100));
    sides->setSizes({width() * 2 / 7, width() * 5 / 7});
}

void MergeForm::addWays(QLayout &line, const QString &caption, const QString &shift, bool all) {
    const struct {
        MergeRow::Way way;
        QString name, caption, key, hint;
    } ways[] = {
        {MergeRow::Both, u"cmdBoth"_s, u"両方"_s, u"F6"_s,
         u"どちらか一方が変えた項目は、その内容にします。重なった項目は選びます"_s},
        {MergeRow::Typed, u"cmdTyped"_s, u"入力"_s, u"F7"_s, u"重なった項目は、入力した内容にします"_s},
        {MergeRow::Theirs, u"cmdTheirs"_s, u"他のＰＣ"_s, u"F8"_s,
         u"他のＰＣの内容を残し、入力を取りやめます"_s}};
    line.addWidget(new QLabel(caption, this));
    for (const auto &way : ways) {
        QPushButton *made =
            keyButton(way.name + (all ? u"All"_s : QString()), way.caption, shift + way.key, way.hint, this);
        line.addWidget(made);
        connect(made, &QPushButton::clicked, this, [this, taken = way.way, all] { take(taken, all); });
    }
}

void MergeForm::show(int row) {
    if (row < 0)
        return;
    const MergeRow &shown = m_rows[size_t(row)];
    m_columnsModel.show(shown);
    const QString what =
        shown.gone.isEmpty() ? QString() : u"　"_s + shown.gone + u"。入力は保存できません。"_s;
    m_written->setText(shown.who +
                       (shown.written.isEmpty() ? QString() : u"　最後の保存："_s + shown.written) + what);
    m_grid->goTo(0, MergeColumnsModel::Result);
    if (m_rowsGrid->currentIndex().row() != row)
        m_rowsGrid->goTo(row, 0);
    showWhole();
}

// To the first thing that is left to be decided; without one, Enter is all that is wanted.
void MergeForm::goOn() {
    m_grid->setFocus();
    const auto open = std::ranges::find(m_rows, false, &MergeRow::isDecided);
    if (open == m_rows.end())
        return;
    if (m_rows[size_t(m_rowsGrid->currentIndex().row())].isDecided())
        show(int(open - m_rows.begin()));
    const MergeRow &row = m_rows[size_t(m_rowsGrid->currentIndex().row())];
    const auto column = std::ranges::find(row.columns, MergeColumn::Undecided, &MergeColumn::taken);
    m_grid->goTo(int(column - row.columns.begin()), MergeColumnsModel::Result);
}

void MergeForm::take(MergeRow::Way way, bool all) {
    const int current = m_rowsGrid->currentIndex().row();
    for (size_t row = 0; row < m_rows.size(); ++row)
        if (all || int(row) == current)
            m_rows[row].take(way);
    refresh();
    goOn();
}

void MergeForm::turnOver() {
    MergeRow &row = m_rows[size_t(m_rowsGrid->currentIndex().row())];
    const int column = m_grid->currentIndex().row();
    if (column < 0)
        return;
    if (!row.gone.isEmpty() || !row.columns[size_t(column)].isTyped)
        m_messages.note(u"この項目は、他のＰＣの内容になります。"_s);
    row.turnOver(size_t(column));
    refresh();
    // The next that is open, so that a row is decided by Space alone.
    const auto next = std::ranges::find(row.columns, MergeColumn::Undecided, &MergeColumn::taken);
    if (next != row.columns.end() && next - row.columns.begin() > column)
        m_grid->goTo(int(next - row.columns.begin()), MergeColumnsModel::Result);
}

void MergeForm::refresh() {
    m_rowsModel.changed();
    m_columnsModel.changed();
}

void MergeForm::showWhole() {
    const MergeRow &row = m_rows[size_t(qMax(0, m_rowsGrid->currentIndex().row()))];
    const int at = m_grid->currentIndex().row();
    if (at < 0 || size_t(at) >= row.columns.size())
        return;
    const MergeColumn &column = row.columns[size_t(at)];
    m_whole->setText(column.caption + u"\n他のＰＣ："_s + column.theirs + u"\n入力："_s + column.typed);
}

void MergeForm::copyTyped() {
    QGuiApplication::clipboard()->setText(m_rows[size_t(m_rowsGrid->currentIndex().row())].typedText());
    m_messages.note(u"この行の入力をクリップボードに写しました。"_s);
}

bool MergeForm::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress || watched != m_grid)
        return false;
    if (static_cast<QKeyEvent *>(event)->key() != Qt::Key_Space)
        return false;
    turnOver();
    return true;
}

void MergeForm::accept() {
    if (std::ranges::all_of(m_rows, &MergeRow::isDecided)) {
        QDialog::accept();
        return;
    }
    goOn();
    m_messages.note(u"「他のＰＣ」と「入力」のどちらにするかを、Space で選んでください。"_s);
}

void MergeForm::reject() {
    if (m_use != Use::Take ||
        m_messages.ask(u"重なった行の入力を捨てて、他のＰＣの内容にします。よろしいですか？"_s,
                       u"他のＰＣと重なった行"_s, Answer::No))
        QDialog::reject();
}

bool decide(Messages &messages, std::vector<MergeRow> &rows, MergeForm::Use use, QWidget *parent) {
    std::vector<MergeRow> looked;
    std::ranges::copy_if(rows, std::back_inserter(looked), &MergeRow::needsLook);
    if (looked.empty())
        return true;
    MergeForm form(messages, std::move(looked), use, parent);
    if (form.exec() != QDialog::Accepted)
        return false;
    auto decided = form.rows().begin();
    for (MergeRow &row : rows)
        if (row.needsLook())
            row = *decided++;
    return true;
}
