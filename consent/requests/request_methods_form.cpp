#include "consent/requests/request_methods_form.h"

#include "ui_request_methods_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/request_methods.h"
#include "consent/record/grid_save.h"
#include "consent/requests/method_uses_query.h"
#include "export/save_grid.h"
#include "widgets/tick_delegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostOwn = 400; // characters of cKobetuDouiIrai

} // namespace

RequestMethodsForm::RequestMethodsForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_ui(std::make_unique<Ui::RequestMethodsForm>()),
      m_model(new MethodListModel(this)) {
    m_ui->setupUi(this);
    Grid *grid = m_ui->ssAddIrai;
    grid->setModel(m_model);
    grid->setItemDelegateForColumn(MethodListModel::Own, new TickDelegate(environment.folders, this));
    grid->horizontalHeader()->setSectionResizeMode(MethodListModel::Text, QHeaderView::Stretch);
    (new CsvButton(environment, *grid, u"依頼方法"_s))->insert(*m_ui->rowButtons, *m_ui->btnRegist);
    m_ui->lblTrouble->hide();
    wire();
    const QSize wanted(grid->widthOf(72), fontMetrics().height() * 28);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

RequestMethodsForm::~RequestMethodsForm() = default;

void RequestMethodsForm::wire() {
    connect(m_ui->btnAdd, &QPushButton::clicked, this, [this] { add(); });
    connect(m_ui->btnRemove, &QPushButton::clicked, this, [this] { remove(); });
    connect(m_ui->btnUp, &QPushButton::clicked, this, [this] { move(-1); });
    connect(m_ui->btnDown, &QPushButton::clicked, this, [this] { move(1); });
    connect(m_ui->btnChange, &QPushButton::clicked, this, [this] {
        goTo(current());
        m_ui->ssAddIrai->edit(m_ui->ssAddIrai->currentIndex());
    });
    connect(m_ui->btnClear, &QPushButton::clicked, m_model, &MethodListModel::clearOwnMethods);
    connect(m_ui->btnRegist, &QPushButton::clicked, this, [this] { regist(); });
    connect(m_ui->cmdAddIraiC, &QPushButton::clicked, this, [this] { reject(); });
    connect(m_model, &MethodListModel::edited, this, [this] { showState(); });
    connect(m_model, &MethodListModel::refused, this, [this](const QString &why) {
        m_refused = true;
        m_environment.messages.note(why);
    });
    connect(m_ui->ssAddIrai->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { showState(); });
}

short RequestMethodsForm::iInit(const std::optional<MethodsRow> &row, const QString &noRow) {
    const Result<RequestMethods> methods = readRequestMethods(m_environment.folders);
    if (!methods) {
        m_error = methods.reason();
        return -1;
    }
    const Result<MethodUses> uses = readMethodUses(m_db);
    if (!uses) {
        m_error = uses.reason();
        return -1;
    }
    m_read = methods->texts;
    m_row = row;
    m_model->load({methods->texts, *uses}, row ? ownMethodsOf(row->row.values.ownRequest) : QStringList(),
                  row.has_value());
    m_ui->txtTgtRow->setText(row ? row->who : noRow);
    m_ui->lblTrouble->setText(methods->oddities.join(u'\n'));
    m_ui->lblTrouble->setVisible(!methods->oddities.isEmpty());
    m_ui->ssAddIrai->fitColumns();
    if (m_model->rowCount() > 0)
        goTo(0);
    else
        m_ui->txtIrai->setFocus();
    showState();
    return 0;
}

int RequestMethodsForm::current() const {
    return m_ui->ssAddIrai->currentIndex().row();
}

void RequestMethodsForm::goTo(int entry) {
    m_ui->ssAddIrai->goTo(entry, MethodListModel::Text);
    m_ui->ssAddIrai->setFocus();
}

void RequestMethodsForm::showState() {
    const bool any = current() >= 0;
    for (QPushButton *button : {m_ui->btnChange, m_ui->btnRemove})
        button->setEnabled(any);
    m_ui->btnUp->setEnabled(current() > 0);
    m_ui->btnDown->setEnabled(any && current() + 1 < m_model->rowCount());
    m_ui->txtKobetu->setText(storedOwnMethods(m_model->ownMethods()));
    m_ui->btnClear->setEnabled(!m_model->ownMethods().isEmpty());
    m_ui->boxKobetu->setEnabled(m_row.has_value());
}

// Enter adds what is typed; anywhere else it must not press a button.
void RequestMethodsForm::keyPressEvent(QKeyEvent *event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (m_ui->txtIrai->hasFocus())
        add();
}

// Commands by key leave a cell's editor open.
bool RequestMethodsForm::settleCell() {
    m_refused = false;
    m_ui->ssAddIrai->commitEditor();
    return !m_refused;
}

bool RequestMethodsForm::add() {
    m_ui->txtIrai->setFocus();
    if (const QString why = m_model->add(m_ui->txtIrai->text()); !why.isEmpty()) {
        m_environment.messages.note(why);
        return false;
    }
    m_ui->txtIrai->clear();
    m_ui->ssAddIrai->goTo(m_model->rowCount() - 1, MethodListModel::Text);
    return true;
}

void RequestMethodsForm::remove() {
    const int entry = current();
    if (!settleCell() || entry < 0 || m_model->list().texts()[entry].isEmpty())
        return;
    if (const int uses = m_model->list().uses(entry); uses > 0) {
        const QString text = u"「"_s + m_model->list().texts()[entry] + u"」は "_s + QString::number(uses) +
                             u" 件の同意で使われています。削除すると、それらの行には番号だけが残ります。\r\n"
                             "削除してもよろしいですか？"_s;
        if (!m_environment.messages.ask(text, u"依頼方法の削除"_s, Answer::No))
            return;
    }
    m_model->remove(entry);
    goTo(entry);
}

void RequestMethodsForm::move(int by) {
    const int entry = current();
    if (!settleCell() || entry < 0 || entry + by < 0 || entry + by >= m_model->rowCount())
        return;
    if (const QString why = m_model->move(entry, by); !why.isEmpty())
        m_environment.messages.note(why);
    else
        goTo(entry + by);
}

bool RequestMethodsForm::changed() const {
    return hasTyped() || m_model->list().texts() != m_read ||
           (m_row && m_model->ownMethods() != ownMethodsOf(m_row->row.values.ownRequest));
}

// What stands in the box and was not added yet belongs to what is saved.
bool RequestMethodsForm::hasTyped() const {
    return !m_ui->txtIrai->text().trimmed().isEmpty();
}

bool RequestMethodsForm::regist() {
    if (!settleCell() || (hasTyped() && !add()))
        return false;
    if (m_model->list().texts() != m_read && !writeList())
        return false;
    if (m_row && m_model->ownMethods() != ownMethodsOf(m_row->row.values.ownRequest) && !writeRow())
        return false;
    accept();
    return true;
}

bool RequestMethodsForm::writeList() {
    Messages &messages = m_environment.messages;
    const Result<MethodUses> uses = readMethodUses(m_db);
    if (!uses) {
        messages.fail(uses.reason(), u"DB-error"_s);
        return false;
    }
    if (const QStringList meanings = m_model->list().newMeanings(*uses);
        !meanings.isEmpty() &&
        !messages.ask(
            u"使用中の番号の意味が変わります。その番号を使っている行の依頼方法も変わります。\r\n\r\n"_s +
                meanings.join(u"\r\n"_s) + u"\r\n\r\nよろしいですか？"_s,
            u"依頼方法の登録"_s, Answer::No))
        return false;
    const Result<RequestMethods> now = readRequestMethods(m_environment.folders);
    QString reason = now.reason();
    if (now && now->texts != m_read)
        reason = u"他の端末で依頼方法の一覧が変更されたため、登録できませんでした。"
                 "画面を開きなおして、もう一度入力してください。"_s;
    if (reason.isEmpty())
        reason = writeRequestMethods(m_environment.folders, m_model->list().texts()).reason();
    if (!reason.isEmpty()) {
        messages.failIn(reason, u"btnRegist_Click()でエラー");
        return false;
    }
    m_read = m_model->list().texts();
    m_written = true;
    return true;
}

bool RequestMethodsForm::writeRow() {
    Messages &messages = m_environment.messages;
    ConsentRowValues now = m_row->row.values;
    now.ownRequest = storedOwnMethods(m_model->ownMethods());
    if (now.ownRequest.size() > mostOwn) {
        messages.warn(u"個別依頼方法が長すぎます。全体で %1 文字までです。"_s.arg(mostOwn));
        return false;
    }
    const Result<std::vector<size_t>> overtaken =
        saveRows(m_db, {{m_row->row, now}}, {u"個別依頼方法の登録"_s});
    if (!overtaken) {
        messages.fail(overtaken.reason(), u"DB-error"_s);
        return false;
    }
    m_written = true;
    if (overtaken->empty())
        return true;
    messages.warn(m_row->who + u"\r\nこの行は他の端末で変更されたため、個別依頼方法を登録できませんでした。"
                               "画面を閉じると一覧を読み直します。"_s);
    return false;
}

void RequestMethodsForm::reject() {
    if (changed()) {
        const Answer answer = m_environment.messages.askToSave();
        if (answer == Answer::Yes)
            regist();
        if (answer != Answer::No)
            return;
    }
    QDialog::reject();
}
