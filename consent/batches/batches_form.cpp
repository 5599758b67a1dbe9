#include "consent/batches/batches_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/desktop/foot_line.h"
#include "archive/sent_form.h"
#include "consent/batches/take_back_form.h"
#include "export/save_grid.h"
#include "history/screens/history_form.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int daysShown = 7;
constexpr int timeColumn = 1;
constexpr int kindColumn = 3;

} // namespace

BatchesForm::BatchesForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_db(db) {
    setObjectName(u"frmShori"_s);
    setWindowTitle(u"処理の一覧"_s);
    layOut();
    wire();
}

void BatchesForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    auto *days = new QHBoxLayout;
    auto *label = new QLabel(u"期間(&K)"_s, this);
    m_from = new DateBox(this);
    m_from->setObjectName(u"imD_From"_s);
    m_from->setAccessibleName(u"期間の初日"_s);
    m_to = new DateBox(this);
    m_to->setObjectName(u"imD_To"_s);
    m_to->setAccessibleName(u"期間の最終日"_s);
    for (DateBox *box : {m_from, m_to})
        box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    label->setBuddy(m_from);
    m_counts = new QLabel(this);
    m_counts->setObjectName(u"lblKensu"_s);
    days->addWidget(label);
    days->addWidget(m_from);
    days->addWidget(new QLabel(u"～"_s, this));
    days->addWidget(m_to);
    days->addWidget(m_counts);
    days->addStretch();
    layout->addLayout(days);

    m_grid = new Grid(this);
    m_grid->setObjectName(u"ssShori"_s);
    m_grid->setAccessibleName(u"処理の一覧"_s);
    m_grid->setModel(&m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_grid, 1);
    m_kept = new QLabel(this);
    m_kept->setObjectName(u"lblHokan"_s);
    layout->addWidget(m_kept);

    auto *buttons = new QHBoxLayout;
    m_rows = addButton(*buttons, u"cmdNaiyou"_s, u"内容"_s, u"F2"_s,
                       u"選択した処理で、どの利用者の何が変わったかを表示します（Enter でも表示します）"_s);
    m_back = addButton(*buttons, u"cmdTorikeshi"_s, u"処理の取消"_s, u"F3"_s,
                       u"選択した処理を取り消し、同意を処理の前の内容に戻します"_s);
    m_again = addButton(*buttons, u"cmdGet"_s, u"再読込"_s, u"F4"_s, u"期間の処理を読み直します"_s);
    buttons->addStretch();
    m_documents = addButton(*buttons, u"cmdOkutta"_s, u"何を送ったか"_s, u"F9"_s,
                            u"選択した処理で出力した文書を、そのまま表示します"_s);
    m_close = addButton(*buttons, u"cmdEnd"_s, u"閉じる"_s, u"F12"_s, u"一覧に戻ります"_s);
    layout->addLayout(buttons);
    (new CsvButton(m_environment, *m_grid, u"処理の一覧"_s))->insert(*buttons, *m_close);
    layout->addWidget(new FootLine(this));
    const QSize wanted(m_grid->widthOf(72), fontMetrics().height() * 32);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

QPushButton *BatchesForm::addButton(QHBoxLayout &row, const QString &name, const QString &caption,
                                    const QString &key, const QString &hint) {
    auto *button = new QPushButton(u"%1 (%2)"_s.arg(caption, key), this);
    button->setObjectName(name);
    button->setShortcut(QKeySequence(key));
    button->setToolTip(hint);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

void BatchesForm::wire() {
    setClock(*this, m_environment.clock);
    connect(m_rows, &QPushButton::clicked, this, [this] { showRows(); });
    connect(m_grid, &QAbstractItemView::doubleClicked, this, [this] { showRows(); });
    connect(m_back, &QPushButton::clicked, this, [this] { takeBack(); });
    connect(m_again, &QPushButton::clicked, this, [this] {
        const BatchInfo *batch = m_model.at(m_grid->currentIndex().row());
        refresh(batch ? batch->number : 0);
    });
    connect(m_documents, &QPushButton::clicked, this, [this] { showDocuments(); });
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
}

short BatchesForm::iInit() {
    const QDate today = m_environment.clock.today();
    m_from->setDate(today.addDays(1 - daysShown));
    m_to->setDate(today);
    for (DateBox *box : {m_from, m_to})
        connect(box, &DateBox::dateChanged, this, [this] { refresh(0); });
    if (const Result<> done = read(); !done) {
        m_error = done.reason();
        return -1;
    }
    showArchiveSize(m_environment, m_kept);
    m_grid->fitColumns(24);
    // Room for what later runs are called, and for the runs of other days where these have none.
    for (const int column : {timeColumn, kindColumn})
        m_grid->setColumnWidth(column, qMax(m_grid->columnWidth(column), m_grid->widthOf(10)));
    m_grid->goTo(0, 0);
    m_grid->setFocus();
    return 0;
}

// An empty end leaves the days open.
Result<> BatchesForm::read() {
    const QDate from = m_from->date(), to = m_to->date();
    Result<std::vector<BatchInfo>> batches =
        readBatches(m_db, m_environment.branch, from.isValid() ? from : QDate(1900, 1, 1),
                    to.isValid() ? to : m_environment.clock.today());
    if (!batches)
        return Failure{batches.reason()};
    m_model.show(*std::move(batches));
    m_counts->setText(m_model.rowCount() == 0 ? u"この期間に処理はありません。"_s
                                              : u"%L1 件"_s.arg(m_model.rowCount()));
    return {};
}

void BatchesForm::refresh(qint32 current) {
    if (const Result<> done = read(); !done)
        m_environment.messages.fail(done.reason(), u"DB-error"_s);
    m_grid->goTo(qMax(0, m_model.rowOf(current)), 0);
}

const BatchInfo *BatchesForm::current() {
    const BatchInfo *batch = m_model.at(m_grid->currentIndex().row());
    if (!batch)
        m_environment.messages.note(u"処理を選択してください。"_s);
    return batch;
}

void BatchesForm::showRows() {
    if (const BatchInfo *batch = current())
        showChangesOf(batch->number, m_environment, m_db, this);
}

void BatchesForm::showDocuments() {
    if (const BatchInfo *batch = current())
        showSent(this, m_environment, m_db, batch->number, batchText(*batch, m_environment.clock.today()));
}

void BatchesForm::takeBack() {
    const BatchInfo *batch = current();
    if (!batch)
        return;
    const qint32 number = batch->number;
    if (takeBackBatch(m_environment, m_db, number, this))
        m_written = true;
    // A refusal may come of what a colleague did.
    refresh(number);
    m_grid->setFocus();
}

void BatchesForm::keyPressEvent(QKeyEvent *event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == m_grid)
        showRows();
    else
        QDialog::keyPressEvent(event);
}
