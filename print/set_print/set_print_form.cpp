#include "print/set_print/set_print_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "archive/sent_run.h"
#include "print/batch/batch_wait_form.h"
#include "print/batch/print_messages.h"
#include "print/consent_form/contents_controls.h"
#include "print/consent_form/form_messages.h"
#include "ui_set_print_form.h"
#include "widgets/enter_moves_on.h"

#include <QSet>

using namespace Qt::Literals::StringLiterals;

frmSetInsatsuDoui::frmSetInsatsuDoui(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_db(db), m_ui(std::make_unique<Ui::SetPrintForm>()) {
    m_ui->setupUi(this);
    m_ui->imD_Teisyutu->setClock(environment.clock);
    wire();
    new EnterMovesOn(this);
}

frmSetInsatsuDoui::~frmSetInsatsuDoui() = default;

void frmSetInsatsuDoui::wire() {
    for (QCheckBox *box : {m_ui->chkDouisyo, m_ui->chkIrai, m_ui->chkFutou, m_ui->chkTeisyutuDate})
        connect(box, &QCheckBox::toggled, this, [this] { showState(); });
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, [this] { print(PrintWay::Preview); });
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, [this] { print(PrintWay::Print); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

short frmSetInsatsuDoui::iInit(std::vector<ConsentRowKey> rows, SetPrintCaller caller, SetPrintStart start) {
    m_rows = std::move(rows);
    m_caller = std::move(caller);
    if (iControlInit() != 0)
        return -1;
    SetPrintSettings settings;
    settings.read(m_environment.folders, m_form);
    showSettings(settings, start);
    QSet<qint32> patients;
    for (const ConsentRowKey &row : m_rows)
        patients.insert(row.patient.nIDNo);
    m_ui->lblTaisyo->setText(u"対象：利用者 %L1 人（%L2 行）"_s.arg(patients.size()).arg(m_rows.size()));
    showState();
    return 0;
}

short frmSetInsatsuDoui::iControlInit() {
    if (!hasNippouIni(m_environment.folders)) {
        m_error = nippouIniMissing().text;
        return -1;
    }
    // The printing screen's choices serve what this one does not ask for; without them the defaults do.
    for (const Result<> &read : {m_practice.read(m_environment.folders), m_form.read(m_environment.folders)})
        if (!read)
            m_environment.messages.show(printSettingsUnreadable(read.reason()));
    if (const int kind = progressReportKind(m_environment.folders); kind > 0)
        m_ui->chkKeika->setText(u"経過報告書（様式 %1）"_s.arg(kind));
    return 0;
}

void frmSetInsatsuDoui::showSettings(const SetPrintSettings &settings, SetPrintStart start) {
    const bool formsAlone = start == SetPrintStart::ConsentForms;
    m_ui->chkDouisyo->setChecked(formsAlone || settings.consentForms);
    m_ui->chkIrai->setChecked(!formsAlone && settings.requestLetters);
    m_ui->chkFutou->setChecked(!formsAlone && settings.envelopes);
    m_ui->cmbFutou->setCurrentIndex(settings.largeEnvelopes ? 1 : 0);
    contentsControls(*m_ui).show(settings);
    m_ui->chkTeisyutuDate->setChecked(m_form.submissionDate);
    m_ui->imD_Teisyutu->setDate(m_form.submissionFor(m_environment.clock.today()));
    m_ui->chkPaper256->setChecked(settings.customPaper);
    (settings.preview ? m_ui->cmdPreview : m_ui->cmdPrint)->setFocus();
}

void frmSetInsatsuDoui::showState() {
    m_ui->boxDouisyo->setEnabled(m_ui->chkDouisyo->isChecked());
    m_ui->cmbYoushiki2->setEnabled(!m_practice.oralSaitama);
    m_ui->cmbFutou->setEnabled(m_ui->chkFutou->isChecked());
    m_ui->imD_Teisyutu->setEnabled(m_ui->chkTeisyutuDate->isChecked());
}

bool frmSetInsatsuDoui::settle() {
    if (!choice().any()) {
        m_environment.messages.warn(u"出力する帳票を選択してください。"_s);
        m_ui->chkDouisyo->setFocus();
        return false;
    }
    if (!m_ui->imD_Teisyutu->isEnabled())
        return true;
    if (!m_ui->imD_Teisyutu->settle() || !m_ui->imD_Teisyutu->date().isValid()) {
        m_environment.messages.warn(u"提出日を入力してください。"_s);
        m_ui->imD_Teisyutu->setFocus();
        return false;
    }
    return true;
}

SetPrintSettings frmSetInsatsuDoui::chosen(PrintWay way) const {
    SetPrintSettings settings{contentsControls(*m_ui).chosen()};
    settings.consentForms = m_ui->chkDouisyo->isChecked();
    settings.requestLetters = m_ui->chkIrai->isChecked();
    settings.envelopes = m_ui->chkFutou->isChecked();
    settings.largeEnvelopes = m_ui->cmbFutou->currentIndex() == 1;
    settings.customPaper = m_ui->chkPaper256->isChecked();
    settings.preview = way == PrintWay::Preview;
    return settings;
}

SetPrintChoice frmSetInsatsuDoui::choice() const {
    SetPrintChoice choice;
    choice.consentForms = m_ui->chkDouisyo->isChecked();
    choice.requestLetters = m_ui->chkIrai->isChecked();
    choice.envelopes = m_ui->chkFutou->isChecked();
    choice.envelope = m_ui->cmbFutou->currentIndex() == 1 ? EnvelopeSize::Square2 : EnvelopeSize::Long3;
    choice.letter = m_caller.letter;
    ConsentPrintSettings form = m_form;
    static_cast<FormContents &>(form) = contentsControls(*m_ui).chosen();
    form.submissionDate = m_ui->chkTeisyutuDate->isChecked();
    form.submitted = m_ui->imD_Teisyutu->date();
    choice.form.branch = m_environment.branch;
    choice.form.company = m_practice.company;
    form.applyTo(choice.form);
    if (m_practice.oralSaitama)
        choice.form.oral = OralForms::Saitama;
    return choice;
}

std::vector<LetterOrder> frmSetInsatsuDoui::orders(const SetPrintChoice &choice) const {
    if (choice.requestLetters)
        return m_caller.orders();
    std::vector<LetterOrder> orders;
    for (const ConsentRowKey &row : m_rows)
        orders.push_back({.row = row, .who = QString::number(row.patient.nIDNo)});
    return orders;
}

void frmSetInsatsuDoui::print(PrintWay way) {
    Messages &messages = m_environment.messages;
    m_ui->lblState->clear();
    if (!settle())
        return;
    if (const Result<> kept = chosen(way).write(m_environment.folders); !kept)
        messages.failIn(kept.reason(), u"cmdPrint_Click()でエラー");
    const SetPrintChoice wanted = choice();
    const std::vector<LetterOrder> rows = orders(wanted);
    if (rows.empty())
        return;
    SetPrintJob job(m_environment, m_db);
    if (const Result<> gathered = job.gather(rows, wanted, m_environment.clock.today()); !gathered)
        messages.show(patientReadFailed(gathered.reason()));
    else if (mayPrint(job, wanted, way))
        print(job, way);
}

// Everything that is known before a document leaves, in one box.
bool frmSetInsatsuDoui::mayPrint(const SetPrintJob &job, const SetPrintChoice &choice, PrintWay way) {
    Messages &messages = m_environment.messages;
    const LetterCheck check = job.check();
    if (check.refusal) {
        messages.show(*check.refusal);
        return false;
    }
    QStringList notes = check.notes;
    if (way == PrintWay::Preview)
        notes += BatchPrint::previewQuestion(m_environment, job.count());
    else if (choice.envelopes)
        notes += u"印刷用紙を封筒サイズに合わせて設定してください。"_s;
    notes.removeAll(QString());
    const bool oral = way == PrintWay::Print && (choice.consentForms || choice.requestLetters);
    Message question = oralNotPrinted(job.oralRows());
    if (notes.isEmpty()) {
        question.text += u"\r\n\r\n"_s + job.extent().text(way);
        return !oral || messages.show(question) == Answer::Ok;
    }
    if (oral)
        notes.prepend(question.text);
    notes += job.extent().question(way);
    return messages.ask(notes.join(u"\r\n\r\n"), windowTitle());
}

void frmSetInsatsuDoui::print(SetPrintJob &job, PrintWay way) {
    BatchOrder order;
    order.commandFile = u"DouiCom.dat"_s;
    order.paper = m_ui->chkPaper256->isChecked() ? BatchPaper::Custom : BatchPaper::A4;
    order.preview = way == PrintWay::Preview;
    SentRun sent(m_environment, m_db, u"セット印刷"_s);
    order.sent = order.preview ? nullptr : &sent;
    const BatchResult result = waitForBatch(this, m_environment, order, job.document());
    m_handedOver = m_handedOver || result.reports() > 0;
    // What has left is marked before anything is said.
    std::optional<Message> note;
    if (way == PrintWay::Print)
        if (const std::vector<LetterMark> left = job.lettersThatLeft(result); !left.empty())
            note = m_caller.mark(left, sent.operation());
    m_ui->lblState->setText(putOutText(u"%L1 枚"_s.arg(result.reports()), way) +
                            sent.finish(qint64(m_rows.size()), result.reports()));
    if (!result.allPrinted()) {
        Message summary = batchSummary(result);
        if (way == PrintWay::Print)
            addMessagePart(summary.text,
                           u"依頼書を印刷できなかったため、「依頼」の印を付けていない利用者："_s,
                           job.lettersThatStayed(result));
        m_environment.messages.show(summary);
    }
    if (note)
        m_environment.messages.show(*note);
}
