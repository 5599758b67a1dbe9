#include "consent/requests/request_form.h"

#include "ui_request_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/requests/request_rows_model.h"
#include "export/save_grid.h"
#include "masters/master_editor.h"
#include "print/request_letter/letter_query.h"
#include "widgets/enter_moves_on.h"
#include "widgets/tick_delegate.h"
#include "widgets/wait_message_form.h"

#include <QComboBox>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Edits the kind of a row's letter as a choice.
class KindDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const override {
        auto *box = new QComboBox(parent);
        for (int kind = 0; kind < letterKinds; ++kind)
            box->addItem(letterKindName(LetterKind(kind)));
        return box;
    }
    void setEditorData(QWidget *editor, const QModelIndex &index) const override {
        static_cast<QComboBox *>(editor)->setCurrentIndex(index.data(Qt::EditRole).toInt());
    }
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override {
        model->setData(index, static_cast<QComboBox *>(editor)->currentIndex(), Qt::EditRole);
    }
};

class WaitForm : public LetterWait {
public:
    explicit WaitForm(QWidget *parent) : m_form(parent) {
        m_form.showProgress(u"依頼書を作成しています。"_s, frmWaitMsg::Cancel::Allowed);
    }

    bool goOn() override {
        m_form.setProgress(0, 0);
        return !m_form.cancelled();
    }

private:
    frmWaitMsg m_form;
};

} // namespace

StartLetterWait letterWait(QWidget *parent) {
    return [parent] { return std::make_unique<WaitForm>(parent); };
}

frm同意依頼::frm同意依頼(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_ui(std::make_unique<Ui::RequestForm>()),
      m_masters(std::make_unique<MasterEditor>(environment, db)),
      m_doctors(std::make_unique<MasterSearch>(Master::Doctor, db, environment)),
      m_model(new RequestRowsModel(this)) {
    m_ui->setupUi(this);
    setObjectName(u"frm同意依頼"_s);
    m_masters->offer(*m_doctors, MasterKind::Doctor);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Grid *grid = m_ui->ssIrai;
    grid->setModel(m_model);
    auto *ticks = new TickDelegate(environment.folders, this);
    grid->setItemDelegateForColumn(RequestRowsModel::Paper, ticks);
    grid->setItemDelegateForColumn(RequestRowsModel::ToHospital, ticks);
    grid->setItemDelegateForColumn(RequestRowsModel::Kind, new KindDelegate(this));
    (new CsvButton(environment, *grid, u"同意依頼"_s))->insert(*m_ui->rowButtons, *m_ui->cmdPreview);
    m_ui->imD_Output->setClock(environment.clock);
    wire();
    new EnterMovesOn(m_ui->boxOptions);
    const QSize wanted(grid->widthOf(95), fontMetrics().height() * 34);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

frm同意依頼::~frm同意依頼() = default;

void frm同意依頼::wire() {
    connect(m_model, &RequestRowsModel::chosen, this, [this] { showState(); });
    connect(m_ui->chkMatome, &QCheckBox::toggled, this, [this] { showState(); });
    connect(m_ui->chkSejutsu, &QCheckBox::toggled, m_ui->cmbSejutsu, &QWidget::setEnabled);
    connect(m_ui->cmdAllPaper, &QPushButton::clicked, this,
            [this] { m_model->tickAll(RequestRowsModel::Paper); });
    connect(m_ui->cmdAllHosp, &QPushButton::clicked, this,
            [this] { m_model->tickAll(RequestRowsModel::ToHospital); });
    connect(m_ui->btnSelIsi, &QPushButton::clicked, this, [this] { chooseDoctor(); });
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, [this] { output(LetterOutput::Preview); });
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, [this] { output(LetterOutput::Print); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, [this] { reject(); });
}

short frm同意依頼::iInit(std::vector<RequestRow> rows, const QString &note) {
    if (rows.empty()) {
        m_error = u"出力するデータがありません。"_s;
        return -1;
    }
    m_model->load(std::move(rows));
    m_ui->lblNote->setText(note);
    m_ui->lblNote->setVisible(!note.isEmpty());
    showOptions();
    fitColumns();
    m_ui->ssIrai->goTo(0, RequestRowsModel::Paper);
    m_ui->imD_Output->setFocus();
    return 0;
}

// The choice of the kind needs room for its arrow.
void frm同意依頼::fitColumns() {
    Grid *grid = m_ui->ssIrai;
    grid->fitColumns(24);
    grid->setColumnWidth(RequestRowsModel::Kind,
                         grid->columnWidth(RequestRowsModel::Kind) + grid->widthOf(2));
}

void frm同意依頼::showOptions() {
    const LetterOptions options = keptLetterOptions(m_environment.folders, m_environment.clock.today());
    m_ui->imD_Output->setDate(options.day);
    m_ui->chkMatome->setChecked(options.grouped);
    m_ui->chkSejutsu->setChecked(options.printPractitioner);
    m_ui->cmbSejutsu->setCurrentIndex(options.practitioner);
    m_ui->cmbSejutsu->setEnabled(options.printPractitioner);
    showState();
}

void frm同意依頼::showState() {
    const std::vector<RequestRow> rows = onPaper(m_model->rows());
    const QString count = u"%L1 件（"_s.arg(rows.size()) + kindSummary(rows) + u"）　"_s;
    m_ui->lblState->setText(rows.empty() ? u"用紙で依頼する行がありません。"_s
                                         : (count + requestedSummary(rows)).trimmed());
}

bool frm同意依頼::readOptions(LetterOptions &options) {
    if (!m_ui->imD_Output->settle() || !m_ui->imD_Output->date().isValid()) {
        m_environment.messages.warn(
            u"出力日を入力してください。%1 のように入力できます。"_s.arg(dayExamples()));
        m_ui->imD_Output->setFocus();
        return false;
    }
    options = {m_ui->imD_Output->date(), m_ui->chkMatome->isChecked(), m_ui->chkSejutsu->isChecked(),
               m_ui->cmbSejutsu->currentIndex(), m_ui->txtBikou->text().trimmed()};
    return true;
}

void frm同意依頼::output(LetterOutput way) {
    // A kind that is being chosen counts.
    m_ui->ssIrai->commitEditor();
    LetterOptions options;
    if (!readOptions(options))
        return;
    if (const Result<> kept = keepLetterOptions(m_environment.folders, options); !kept)
        m_environment.messages.failIn(kept.reason(), u"cmdPrint_Click()でエラー");
    const std::vector<RequestRow> rows = onPaper(m_model->rows());
    switch (outputRequests(m_environment, m_db, rows, {options, way, letterWait(this)})) {
    case LetterOutcome::Stopped:
        break;
    case LetterOutcome::Shown:
        m_ui->lblState->setText(u"プレビューを表示しました。「依頼」の印は、印刷したときに付きます。"_s);
        break;
    case LetterOutcome::Printed:
        m_written = true;
        accept();
    }
}

void frm同意依頼::chooseDoctor() {
    const int row = m_ui->ssIrai->currentIndex().row();
    if (row < 0)
        return;
    m_ui->ssIrai->commitEditor();
    if (m_doctors->iDspStart(this) != 0) {
        m_environment.messages.fail(m_doctors->CsErrStr());
        return;
    }
    const CodeName doctor = m_doctors->seled();
    if (doctor.code.isEmpty())
        return;
    const Result<LetterDoctors> found = readLetterDoctors(m_db, {doctor.code});
    if (!found) {
        m_environment.messages.fail(found.reason(), u"DB-error"_s);
        return;
    }
    m_model->askDoctor(row, doctor.code, doctor.name, addresseeOf(found->value(doctor.code)).institution);
    fitColumns();
    m_ui->ssIrai->setFocus();
}
