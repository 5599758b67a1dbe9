#include "consent/settings/columns_form.h"

#include "ui_columns_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/settings/columns_model.h"
#include "widgets/tick_delegate.h"

#include <QHeaderView>
#include <QScreen>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

ColumnsForm::ColumnsForm(const Environment &environment, const ColumnSettings &now, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_before(now),
      m_ui(std::make_unique<Ui::ColumnsForm>()),
      m_model(new ColumnsModel(this)) {
    m_ui->setupUi(this);
    Grid *grid = m_ui->ssKoumoku;
    grid->setModel(m_model);
    grid->setItemDelegateForColumn(ColumnsModel::Shown, new TickDelegate(environment.folders, this));
    load(now);
    grid->fitColumns();
    grid->horizontalHeader()->setSectionResizeMode(ColumnsModel::Name, QHeaderView::Stretch);
    grid->goTo(0, ColumnsModel::Shown);
    grid->setFocus();
    wire();
    const QSize wanted(grid->widthOf(52), fontMetrics().height() * 32);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

ColumnsForm::~ColumnsForm() = default;

void ColumnsForm::wire() {
    connect(m_ui->btnUp, &QPushButton::clicked, this, [this] { move(-1); });
    connect(m_ui->btnDown, &QPushButton::clicked, this, [this] { move(1); });
    connect(m_ui->btnFirst, &QPushButton::clicked, this, [this] { load(ColumnSettings::first()); });
    connect(m_ui->numKotei, &QSpinBox::valueChanged, m_model, &ColumnsModel::setFrozen);
    connect(m_ui->cmdKoumokuEnd, &QPushButton::clicked, this, [this] { accept(); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(m_model, &ColumnsModel::edited, this, [this] { showState(); });
}

void ColumnsForm::load(const ColumnSettings &settings) {
    m_model->load(settings);
    m_ui->numKotei->setMaximum(m_model->rowCount());
    m_ui->numKotei->setValue(settings.frozen);
    showState();
}

void ColumnsForm::showState() {
    m_ui->lblState->setText(u"表示 %1 / %2 項目"_s.arg(m_model->shownCount()).arg(m_model->rowCount()));
}

void ColumnsForm::move(int by) {
    m_ui->ssKoumoku->commitEditor();
    const QModelIndex current = m_ui->ssKoumoku->currentIndex();
    if (m_model->move(current.row(), by))
        m_ui->ssKoumoku->goTo(current.row() + by, current.column());
}

const ColumnSettings &ColumnsForm::chosen() const {
    return m_model->settings();
}

void ColumnsForm::accept() {
    m_ui->ssKoumoku->commitEditor();
    if (m_model->shownCount() > 0)
        QDialog::accept();
    else
        m_environment.messages.note(u"表示する項目を選択してください。"_s);
}

void ColumnsForm::reject() {
    m_ui->ssKoumoku->commitEditor();
    const Answer answer = chosen() == m_before ? Answer::No : m_environment.messages.askToSave();
    if (answer == Answer::Yes)
        accept();
    else if (answer == Answer::No)
        QDialog::reject();
}

std::optional<ColumnSettings> chooseColumns(const Environment &environment, const ColumnSettings &now,
                                            QWidget *parent) {
    ColumnsForm form(environment, now, parent);
    if (form.exec() != QDialog::Accepted)
        return std::nullopt;
    if (const Result<> written = writeColumnSettings(environment.folders, form.chosen()); !written) {
        environment.messages.failIn(written.reason(), u"cmdKoumokuEnd_Click()でエラー");
        return std::nullopt;
    }
    return form.chosen();
}
