#include "widgets/pick_list_form.h"

#include "app/base/messages.h"
#include "ui_pick_list_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

PickListForm::PickListForm(Messages &messages, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::PickListForm>()), m_messages(messages) {
    m_ui->setupUi(this);
    m_ui->boxConditions->setVisible(false);
    m_ui->ssList->setModel(&m_model);
    QHeaderView *header = m_ui->ssList->horizontalHeader();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setSortIndicatorClearable(true);
    header->setStretchLastSection(true);
    m_ui->ssList->setSortingEnabled(true);
    m_empty = new QLabel(m_ui->ssList->viewport());
    m_empty->setObjectName(u"lblEmpty"_s);
    (new QVBoxLayout(m_ui->ssList->viewport()))->addWidget(m_empty, 0, Qt::AlignCenter);
    wire();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 76, fontMetrics().height() * 38);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

PickListForm::~PickListForm() = default;

short PickListForm::iInit() {
    if (const Result<> loaded = load(); !loaded)
        return fail(loaded.reason());
    m_ui->ssList->fitColumns();
    m_ui->txtShibori->setFocus();
    return 0;
}

void PickListForm::vWhenSeledOK() {
    const QModelIndex current = m_ui->ssList->currentIndex();
    if (!current.isValid()) {
        m_messages.warn(u"有効な行が選択されていません！"_s);
        return;
    }
    m_seled = m_model.at(current.row());
    m_seledRow = m_model.sourceRow(current.row());
    accept();
}

QByteArray PickListForm::layoutState() const {
    return m_ui->ssList->layoutState();
}

void PickListForm::restoreLayout(const QByteArray &state) {
    if (!state.isEmpty())
        m_ui->ssList->restoreLayout(state);
}

void PickListForm::offerEditing(const EditRow &editor) {
    m_edit = editor;
    if (!m_edit)
        return;
    addButton(u"cmdNew"_s, u"新規 (F1)"_s, u"F1"_s, [this] { edit({}); });
    addButton(u"cmdEdit"_s, u"修正 (F2)"_s, u"F2"_s, [this] { editCurrent(); });
}

void PickListForm::addButton(const QString &name, const QString &caption, const QString &key,
                             const std::function<void()> &work) {
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setShortcut(key);
    button->setAutoDefault(false);
    buttonRow().insertWidget(buttonRow().indexOf(&selectButton()), button);
    setTabOrder(selectButton().previousInFocusChain(), button);
    connect(button, &QPushButton::clicked, this, work);
}

void PickListForm::editCurrent() {
    if (currentCode().isEmpty())
        m_messages.warn(u"有効な行が選択されていません！"_s);
    else
        edit(currentCode());
}

// The list stays on the row, wherever it lies by then.
void PickListForm::edit(const QString &code) {
    const std::optional<QString> saved = m_edit(code, this);
    if (!saved)
        return;
    refresh();
    if (!goToCode(*saved))
        m_messages.inform(u"登録しました。この一覧の条件に合わないため、一覧には表示されません。"_s);
}

QWidget *PickListForm::conditions() const {
    m_ui->boxConditions->setVisible(true);
    return m_ui->boxConditions;
}

Grid &PickListForm::grid() const {
    return *m_ui->ssList;
}

QBoxLayout &PickListForm::buttonRow() const {
    return *m_ui->rowButtons;
}

QWidget &PickListForm::selectButton() const {
    return *m_ui->cmdSelect;
}

bool PickListForm::refresh() {
    if (const Result<> loaded = load(); !loaded) {
        m_messages.fail(loaded.reason());
        return false;
    }
    return m_model.rowCount() > 0;
}

QString PickListForm::currentCode() const {
    return m_model.at(m_ui->ssList->currentIndex().row()).code;
}

bool PickListForm::goToCode(const QString &code) {
    if (m_model.rowOfCode(code) < 0)
        m_ui->txtShibori->clear();
    const int row = m_model.rowOfCode(code);
    if (row >= 0)
        m_ui->ssList->goTo(row, 0);
    m_ui->ssList->setFocus();
    return row >= 0;
}

void PickListForm::watchCondition(QLineEdit *box, const std::function<bool()> &changed) {
    box->installEventFilter(this);
    connect(box, &QLineEdit::returnPressed, this, [this, changed] {
        if (changed() ? refresh() : m_model.rowCount() > 0)
            enterTable();
    });
    // Enter ends here too; what it could not read has been said.
    connect(box, &QLineEdit::editingFinished, this, [this, box, changed] {
        if (!box->hasFocus() && changed())
            refresh();
    });
}

short PickListForm::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

bool PickListForm::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (watched == m_ui->ssList ? keyInGrid(*key) : keyInBox(static_cast<QWidget *>(watched), *key))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

// A list that cannot be read leaves the former one in place.
Result<> PickListForm::load() {
    Result<Recordset> rows = readGuarded();
    if (!rows)
        return Failure{rows.reason()};
    m_model.setRows(*std::move(rows));
    m_ui->lblJouken->setText(summary());
    m_ui->lblJouken->setVisible(!summary().isEmpty());
    showCount();
    return {};
}

// A list too long for the machine's memory must not end the program.
Result<Recordset> PickListForm::readGuarded() {
    try {
        return readList();
    } catch (const std::exception &fault) {
        return Failure{u"システムエラーが発生しました！\r"_s + QString::fromLocal8Bit(fault.what())};
    }
}

void PickListForm::enterTable() {
    m_ui->ssList->setFocus();
}

void PickListForm::wire() {
    m_ui->txtShibori->installEventFilter(this);
    m_ui->ssList->installEventFilter(this);
    connect(m_ui->txtShibori, &QLineEdit::textChanged, this, [this](const QString &typed) {
        m_model.narrow(typed);
        showCount();
    });
    connect(&m_model, &QAbstractItemModel::modelReset, this, [this] { m_ui->ssList->goTo(0, 0); });
    connect(m_ui->ssList, &QAbstractItemView::doubleClicked, this, &PickListForm::vWhenSeledOK);
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, [this] { refresh(); });
    connect(m_ui->cmdSelect, &QPushButton::clicked, this, &PickListForm::vWhenSeledOK);
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

void PickListForm::showCount() {
    const int shown = m_model.rowCount();
    m_empty->setVisible(shown == 0);
    m_empty->setText(m_model.total() == 0
                         ? emptyText()
                         : u"「%1」を含む行はありません。"_s.arg(m_ui->txtShibori->text().trimmed()));
    m_ui->lblKensu->setText(shown == m_model.total() ? u"%L1 件"_s.arg(shown)
                                                     : u"%L1 / %L2 件"_s.arg(shown).arg(m_model.total()));
}

bool PickListForm::keyInBox(const QWidget *box, const QKeyEvent &key) {
    const bool narrowing = box == m_ui->txtShibori;
    if (key.key() == Qt::Key_Down || key.key() == Qt::Key_PageDown) {
        enterTable();
        // From here the current row was in sight; from a condition it is only now that the rows are its own.
        QKeyEvent goesOn(key.type(), key.key(), key.modifiers());
        if (narrowing)
            QCoreApplication::sendEvent(m_ui->ssList, &goesOn);
        return true;
    }
    if (!narrowing || (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter))
        return false;
    // A telephone number that happens to contain a patient's number must not take another person.
    m_model.isNumberOfNone() && m_model.rowCount() > 0 ? enterTable() : vWhenSeledOK();
    return true;
}

bool PickListForm::keyInGrid(const QKeyEvent &key) {
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        vWhenSeledOK();
        return true;
    }
    if (key.key() == Qt::Key_Up && m_ui->ssList->currentIndex().row() <= 0) {
        m_ui->txtShibori->setFocus();
        return true;
    }
    const bool letter = !key.text().isEmpty() && key.text().at(0).isPrint() &&
                        !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (letter) {
        m_ui->txtShibori->setFocus();
        m_ui->txtShibori->end(false);
        m_ui->txtShibori->insert(key.text());
    } else if (key.key() == Qt::Key_Backspace) {
        m_ui->txtShibori->setFocus();
        m_ui->txtShibori->backspace();
    }
    return letter || key.key() == Qt::Key_Backspace;
}
