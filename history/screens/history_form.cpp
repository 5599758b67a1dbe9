#include "history/screens/history_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "export/save_grid.h"
#include "history/screens/history_models.h"
#include "ui_history_form.h"
#include "widgets/chosen_button.h"

#include <QHeaderView>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

namespace {

/// In full-width characters; the last column takes the rest.
void setWidths(Grid &grid, std::initializer_list<int> characters) {
    for (int column = 0; const int width : characters)
        grid.setColumnWidth(column++, grid.widthOf(width));
}

// What is typed stays.
void offer(QComboBox &box, const QString &text) {
    if (text.isEmpty() || box.findText(text) >= 0)
        return;
    const QString typed = box.currentText();
    box.addItem(text);
    box.setCurrentIndex(box.findText(typed));
    box.setEditText(typed);
}

void run(ChangeHistoryForm &form, const Environment &environment) {
    if (const QString why = form.whyNone(); !why.isEmpty())
        environment.messages.note(why);
    else if (form.iInit() == 0)
        form.exec();
    else
        environment.messages.fail(form.sErrMsg(), u"DB-error"_s);
}

} // namespace

ChangeHistoryForm::ChangeHistoryForm(Environment &environment, cT_ADODB &db,
                                     const std::optional<ConsentRowKey> &row, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_ui(std::make_unique<Ui::ChangeHistoryForm>()),
      m_history(db, environment.folders, environment.branch, row),
      m_entries(new HistoryEntriesModel(this)),
      m_lines(new ChangeLinesModel(this)) {
    m_ui->setupUi(this);
    setObjectName(u"frm変更履歴"_s);
    m_ui->ssRireki->setModel(m_entries);
    m_ui->ssHenkou->setModel(m_lines);
    for (Grid *grid : {m_ui->ssRireki, m_ui->ssHenkou})
        grid->horizontalHeader()->setStretchLastSection(true);
    setWidths(*m_ui->ssRireki, {11, 7, 10, 5, 18, 3});
    setWidths(*m_ui->ssHenkou, {16, 30});
    (new CsvButton(environment, *m_ui->ssRireki, u"変更履歴"_s))->insert(*m_ui->rowButtons, *m_ui->cmdEnd);
    setClock(*this, environment.clock);
    m_ui->imD_From->setDate(environment.clock.today().addMonths(-1));
    wire();
    wireFilter();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 100, fontMetrics().height() * 42);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

ChangeHistoryForm::~ChangeHistoryForm() = default;

void ChangeHistoryForm::wire() {
    for (const auto &[scope, button] :
         {std::pair(HistoryScope::Row, m_ui->optHani_0), std::pair(HistoryScope::Patient, m_ui->optHani_1),
          std::pair(HistoryScope::All, m_ui->optHani_2)}) {
        button->setVisible(m_history.has(HistoryScope::Patient) && m_history.has(scope));
        connect(button, &QPushButton::toggled, button,
                [button](bool chosen) { showChosen(*button, chosen); });
        button->setChecked(scope == m_history.narrowest());
        connect(button, &QPushButton::clicked, this, [this] { search(); });
    }
    connect(m_ui->ssRireki->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { showLines(current.row()); });
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, [this] { search(); });
    connect(m_ui->cmdMore, &QPushButton::clicked, this, [this] { readMore(); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

// Enter in an input asks; a date does so as soon as it is another one.
void ChangeHistoryForm::wireFilter() {
    for (DateBox *day : {m_ui->imD_From, m_ui->imD_To})
        connect(day, &DateBox::dateChanged, this, [this] { search(); });
    for (QLineEdit *line : {m_ui->cmbPc->lineEdit(), m_ui->cmbSousa->lineEdit(), m_ui->txtRiyousha,
                            static_cast<QLineEdit *>(m_ui->txtBatch)})
        connect(line, &QLineEdit::returnPressed, this, [this] { search(); });
    for (QComboBox *box : {m_ui->cmbPc, m_ui->cmbSousa})
        connect(box, &QComboBox::activated, this, [this] { search(); });
}

HistoryScope ChangeHistoryForm::scope() const {
    return m_ui->optHani_0->isChecked()   ? HistoryScope::Row
           : m_ui->optHani_1->isChecked() ? HistoryScope::Patient
                                          : HistoryScope::All;
}

LogQuestion ChangeHistoryForm::question() const {
    return {m_ui->imD_From->date(),
            m_ui->imD_To->date(),
            m_ui->cmbPc->currentText().trimmed(),
            m_ui->cmbSousa->currentText().trimmed(),
            m_ui->txtRiyousha->text().trimmed(),
            qint32(m_ui->txtBatch->number())};
}

void ChangeHistoryForm::narrowTo(qint32 batch) {
    m_ui->txtBatch->setText(QString::number(batch));
    const QSignalBlocker quiet(m_ui->imD_From);
    m_ui->imD_From->setDate({});
}

short ChangeHistoryForm::iInit() {
    m_ui->boxJouken->setVisible(scope() == HistoryScope::All);
    const Result<> read = m_history.read(scope(), question());
    if (!read) {
        m_error = read.reason();
        return -1;
    }
    showRead(read);
    m_ui->ssRireki->setFocus();
    return 0;
}

void ChangeHistoryForm::search() {
    const bool narrowed = m_ui->boxJouken->isVisible();
    m_ui->boxJouken->setVisible(scope() == HistoryScope::All);
    showRead(m_history.read(scope(), question()));
    // The inputs keep the focus until they found something.
    if (!narrowed || m_entries->rowCount() > 0)
        m_ui->ssRireki->setFocus();
}

void ChangeHistoryForm::readMore() {
    const int row = m_ui->ssRireki->currentIndex().row();
    showRead(m_history.readMore());
    m_ui->ssRireki->goTo(row, 0);
}

void ChangeHistoryForm::showRead(const Result<> &read) {
    m_entries->show(m_history.texts());
    m_ui->ssRireki->goTo(0, 0);
    showLines(m_ui->ssRireki->currentIndex().row());
    m_ui->cmdMore->setEnabled(m_history.hasMore());
    const auto count = m_history.texts().size();
    m_ui->lblKensu->setText(m_history.hasMore() ? u"新しい方から %L1 件（続きは F8）"_s.arg(count)
                            : count > 0         ? u"%L1 件"_s.arg(count)
                                                : u"変更の記録はありません"_s);
    offerWords();
    if (!read)
        m_environment.messages.fail(read.reason(), u"DB-error"_s);
}

void ChangeHistoryForm::offerWords() {
    for (const ChangeText &text : m_history.texts()) {
        offer(*m_ui->cmbPc, text.pc);
        offer(*m_ui->cmbSousa, text.operation);
    }
}

void ChangeHistoryForm::showLines(int row) {
    m_lines->show(row < 0 ? std::vector<ChangeLine>() : m_entries->texts()[size_t(row)].lines);
}

void showChangeHistory(Environment &environment, cT_ADODB &db, const std::optional<ConsentRowKey> &row,
                       QWidget *parent) {
    ChangeHistoryForm form(environment, db, row, parent);
    run(form, environment);
}

void showChangesOf(qint32 batch, Environment &environment, cT_ADODB &db, QWidget *parent) {
    ChangeHistoryForm form(environment, db, {}, parent);
    form.narrowTo(batch);
    run(form, environment);
}
