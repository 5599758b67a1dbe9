#include "consent/entry/entry_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/desktop/signal_colours.h"
#include "consent/entry/column_inputs.h"
#include "consent/entry/diagnosis_form.h"
#include "consent/merge/merge_form.h"
#include "history/screens/history_form.h"
#include "ui_entry_form.h"
#include "widgets/enter_moves_on.h"

#include <QScreen>
#include <QTabBar>

using namespace Qt::Literals::StringLiterals;

namespace {

// A new consent takes the tick over from the last one, where it may have been a spoilt form: it must not be
// overlooked.
void showClaimUse(QCheckBox &disabled) {
    QFont font = disabled.font();
    font.setBold(disabled.isChecked());
    disabled.setFont(font);
    QPalette palette;
    if (disabled.isChecked())
        palette.setColor(QPalette::WindowText, signalInk(Signal::Wrong, palette));
    disabled.setPalette(palette);
}

} // namespace

frmDouiRecordEdit::frmDouiRecordEdit(Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::frmDouiRecordEdit>()) {
    m_ui->setupUi(this);
    m_ui->nDouiUpMonth->setDigits(2);
    // Two lines of explanation, so that the boxes below stay where they are.
    m_ui->lblRule->setMinimumHeight(2 * fontMetrics().lineSpacing());
    // The way by Enter and Tab leads through the boxes; pages have their letters.
    m_ui->tabKind->tabBar()->setFocusPolicy(Qt::NoFocus);
    setClock(*this, environment.clock);
    m_inputs = new ColumnInputs(this);
    new EnterMovesOn(this);
    // An address is seen whole.
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 66, sizeHint().height());
    resize(wanted.boundedTo(screen()->availableSize() * 99 / 100));
}

frmDouiRecordEdit::~frmDouiRecordEdit() = default;

short frmDouiRecordEdit::iInit(cT_ADODB &db, const ConsentRowKey &key) {
    begin(db);
    return shown(m_entry->iOpen(key));
}

short frmDouiRecordEdit::iInit(cT_ADODB &db, const PatientKey &patient) {
    begin(db);
    return shown(m_entry->iNew(patient));
}

void frmDouiRecordEdit::begin(cT_ADODB &db) {
    m_entry = std::make_unique<ConsentEntry>(m_environment, db);
    m_masters = std::make_unique<MasterEditor>(m_environment, db);
    m_doctors = std::make_unique<MasterSearch>(Master::Doctor, db, m_environment);
    m_masters->offer(*m_doctors, MasterKind::Doctor);
    m_doctor = new CodeNamePair(m_ui->txtIsiCd, m_ui->txtIsiName, m_ui->btnSelIsi,
                                codeSearch(*m_doctors, m_environment.messages), m_environment.messages);
    connect(m_ui->btnHenkouRireki, &QPushButton::clicked, this,
            [this, &db] { showChangeHistory(m_environment, db, m_entry->storedKey(), this); });
}

short frmDouiRecordEdit::shown(short status) {
    if (status != 0) {
        m_error = m_entry->sErrMsg();
        return status;
    }
    if (!m_entry->unreadSettings().isEmpty())
        m_environment.messages.failIn(m_entry->unreadSettings(), u"dataLoadRiyousha()でエラー");
    const ConsentDraft &draft = m_entry->draft();
    const EntryPatient &patient = m_entry->patient();
    setWindowTitle(m_entry->isNew() ? u"同意登録（新規）"_s : u"同意登録（修正）"_s);
    m_ui->lblPatient->setText(
        u"<b>%1　%2 様</b>　%3"_s.arg(QString::number(patient.key.nIDNo), patient.name.toHtmlEscaped(),
                                      patient.acupuncture ? u"鍼灸"_s : u"マッサージ"_s));
    m_doctor->setRow({draft.cIsiCd, draft.cDouiIsiName});
    for (QRadioButton *kind : {m_ui->optKind_0, m_ui->optKind_1})
        kind->setEnabled(m_entry->isNew());
    refresh();
    const bool needles = patient.acupuncture && !isDeformity(draft);
    m_ui->tabKind->setCurrentWidget(needles ? m_ui->pageHari : m_ui->pageMassage);
    m_ui->tShinsatsuDay->setFocus();
    wire();
    return 0;
}

void frmDouiRecordEdit::wire() {
    connect(m_inputs, &ColumnInputs::entered, this,
            [this](const QString &column, const QVariant &value) { enter(column, value); });
    connect(m_doctor, &CodeNamePair::changed, this,
            [this](const CodeName &row) { enter(u"cIsiCd"_s, row.code); });
    connect(m_ui->optKind_1, &QRadioButton::toggled, this, [this](bool deformity) {
        enter(u"iHenkeiFlg"_s, deformity ? 1 : 0);
        m_ui->tabKind->setCurrentWidget(m_entry->patient().acupuncture && !deformity ? m_ui->pageHari
                                                                                     : m_ui->pageMassage);
    });
    // Enter passes over what is proposed.
    connect(m_ui->tShinsatsuDay, &QLineEdit::returnPressed, this, [this] {
        if (m_entry->isProposed())
            m_ui->tDouiDay->setFocus();
    });
    connect(m_ui->tDouiDay, &QLineEdit::returnPressed, this, [this] {
        if (!m_entry->isProposed() || !isReady())
            return;
        setAttribute(Qt::WA_KeyboardFocusChange); // the button shows that Enter presses it
        m_ui->btnRegist->setFocus(Qt::TabFocusReason);
    });
    connect(m_ui->btnAddText, &QPushButton::clicked, this, [this] { addDiagnosis(); });
    connect(m_ui->btnRegist, &QPushButton::clicked, this, [this] { registerDraft(); });
    connect(m_ui->but_Act, &QPushButton::clicked, this, [this] { reject(); });
}

void frmDouiRecordEdit::enter(const QString &column, const QVariant &value) {
    if (m_entry->enter(column, value) != 0)
        m_environment.messages.fail(m_entry->sErrMsg(), u"DB-error"_s);
    refresh();
}

void frmDouiRecordEdit::refresh() {
    const ConsentDraft &draft = m_entry->draft();
    m_inputs->show(draft);
    m_ui->optKind_0->setChecked(!isDeformity(draft));
    m_ui->optKind_1->setChecked(isDeformity(draft));
    m_ui->bodyPanel->setLimbsOnly(isDeformity(draft));
    m_ui->pageHari->setEnabled(!isDeformity(draft));
    m_ui->lblRule->setText(m_entry->explainPeriod());
    m_ui->lblRule->setToolTip(m_ui->lblRule->text());
    m_ui->cDouiIsiAdd->setToolTip(draft.cDouiIsiAdd);
    showClaimUse(*m_ui->iReceptDisabledFlg);
}

// Nothing is left to be entered.
bool frmDouiRecordEdit::isReady() {
    const Result<std::optional<DraftProblem>> checked = m_entry->check();
    return checked && !*checked;
}

bool frmDouiRecordEdit::checks() {
    const QString title = u"登録データ：チェック"_s;
    if (!m_inputs->settle()) {
        m_environment.messages.warn(u"日付が決まりません。%1 のように入力してください。"_s.arg(dayExamples()),
                                    title);
        return false;
    }
    if (!m_doctor->settle())
        return false;
    const Result<std::optional<DraftProblem>> checked = m_entry->check();
    if (!checked) {
        m_environment.messages.fail(checked.reason(), u"登録データ：チェック時エラー"_s);
        return false;
    }
    const std::optional<DraftProblem> &problem = *checked;
    if (!problem)
        return true;
    m_environment.messages.warn(problem->text, title);
    if (QWidget *input = m_inputs->input(problem->column))
        ColumnInputs::goTo(input);
    return false;
}

bool frmDouiRecordEdit::meansDates() {
    const QStringList doubts = m_entry->doubts();
    if (doubts.isEmpty() ||
        m_environment.messages.ask(u"次の日付を確かめてください。\r\n\r\n"_s + doubts.join(u"\r\n") +
                                       u"\r\n\r\nこのまま登録します。よろしいですか？"_s,
                                   u"日付の確認"_s, Answer::No))
        return true;
    ColumnInputs::goTo(m_ui->tDouiDay);
    return false;
}

void frmDouiRecordEdit::registerDraft() {
    if (!checks() || !meansDates())
        return;
    const RowOutcome outcome = m_entry->save();
    switch (outcome.kind) {
    case RowOutcome::Done:
        if (!outcome.text.isEmpty())
            m_environment.messages.inform(outcome.text);
        m_environment.messages.note(u"登録しました。"_s);
        accept();
        return;
    case RowOutcome::Overtaken:
        m_overtaken = true;
        settleOvertaken(outcome.text);
        return;
    case RowOutcome::Taken:
        m_environment.messages.warn(outcome.text, u"登録データ：チェック"_s);
        return;
    case RowOutcome::Failed:
        m_environment.messages.fail(outcome.text, outcome.title);
        return;
    }
}

// What was typed beside what somebody else wrote; what is decided is checked and registered anew.
void frmDouiRecordEdit::settleOvertaken(const QString &why) {
    const Result<MergeRow> row = m_entry->overtaken();
    if (!row) {
        m_environment.messages.fail(row.reason(), u"DB-error"_s);
        return;
    }
    std::vector<MergeRow> rows{*row};
    if (!row->gone.isEmpty()) {
        m_environment.messages.warn(why, u"登録データ：チェック"_s);
    } else if (decide(m_environment.messages, rows, MergeForm::Use::Save, this)) {
        m_entry->take(rows.front());
        m_doctor->setRow({m_entry->draft().cIsiCd, m_entry->draft().cDouiIsiName});
        refresh();
        registerDraft();
    }
}

void frmDouiRecordEdit::addDiagnosis() {
    DiagnosisForm form(m_environment, this);
    if (form.iInit() != 0) {
        m_environment.messages.failIn(form.CsErrStr(), u"btnAddText_Click()でエラー");
        return;
    }
    CodeName chosen;
    if (form.exec() == QDialog::Accepted)
        form.vGetSeledInf(chosen);
    QStringList names = m_entry->draft().cDouiByoumei.split(u'、', Qt::SkipEmptyParts);
    if (!chosen.name.isEmpty() && !names.contains(chosen.name)) {
        names.append(chosen.name);
        enter(u"cDouiByoumei"_s, names.join(u'、'));
    }
    m_ui->cDouiByoumei->setFocus();
}

// What is being typed counts as entered, though no date and no doctor be read from it.
bool frmDouiRecordEdit::holdsInput() {
    const bool dates = m_inputs->settle();
    const bool doctor = m_ui->txtIsiCd->code() == m_doctor->row().code;
    return !dates || !doctor || m_entry->isChanged();
}

void frmDouiRecordEdit::reject() {
    if (!m_entry || !holdsInput() ||
        m_environment.messages.ask(u"登録処理を終了します。\r\nよろしいですか？"_s, u"終了問合せ"_s,
                                   Answer::No))
        QDialog::reject();
}
