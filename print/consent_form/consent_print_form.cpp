#include "print/consent_form/consent_print_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "archive/sent_run.h"
#include "print/batch/batch_wait_form.h"
#include "print/batch/print_messages.h"
#include "print/batch/run_extent.h"
#include "print/consent_form/contents_controls.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/form_messages.h"
#include "print/documents/lost_texts.h"
#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "search/picked_list.h"
#include "search/staff_search_form.h"
#include "ui_consent_print_form.h"
#include "widgets/code_name_pair.h"
#include "widgets/enter_moves_on.h"

#include <QAction>
#include <QButtonGroup>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString sentKind = u"同意書印刷"_s;

/// What is asked before a batch; nothing before a preview of all.
QString batchQuestion(const Environment &environment, const std::vector<ConsentForm> &forms, PrintWay way) {
    const int count = int(forms.size());
    if (way == PrintWay::Preview)
        return BatchPrint::previewQuestion(environment, count);
    PageCount pages;
    for (const ConsentForm &form : forms)
        pages.addSingle(layoutPath(environment.folders, form));
    return RunExtent{count, u"同意書 %L1 通"_s.arg(count), pages.pages()}.question(way);
}

} // namespace

// The pairs belong to their code boxes.
struct frm同意書印刷::Searches {
    Searches(cT_ADODB &db, Environment &environment, Ui::ConsentPrintForm &ui)
        : patients(db, environment), staff(db, environment), doctors(Master::Doctor, db, environment) {
        Messages &messages = environment.messages;
        patient = new CodeNamePair(ui.txtcRiyoushaNo, ui.txtcRiyoushaName, ui.btnSelRiyousha,
                                   codeSearch(patients, messages), messages);
        practitioner = new CodeNamePair(ui.txtcSejutsuNo, ui.txtcSejutsuName, ui.btnSelSejutsu,
                                        codeSearch(staff, messages), messages);
        doctor = new CodeNamePair(ui.txtcDoctorNo, ui.txtcDoctorName, ui.btnSelDoctor,
                                  codeSearch(doctors, messages), messages);
    }

    cls患者検索 patients;
    cls施術者検索 staff;
    MasterSearch doctors;
    CodeNamePair *patient;
    CodeNamePair *practitioner;
    CodeNamePair *doctor;
};

frm同意書印刷::frm同意書印刷(Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::ConsentPrintForm>()) {
    m_ui->setupUi(this);
    for (int i = 0; i < m_ui->optSejutuKbn->buttons().size(); ++i)
        m_ui->optSejutuKbn->setId(m_ui->optSejutuKbn->buttons()[i], i);
    setClock(*this, environment.clock);
    addMenu();
    wire();
    new EnterMovesOn(this);
    resize(fontMetrics().horizontalAdvance(u'国') * 62, sizeHint().height());
}

// The searches watch boxes of the form; the form goes first.
frm同意書印刷::~frm同意書印刷() = default;

void frm同意書印刷::pickPatients() {
    for (QWidget *other : m_ui->boxTaisyo->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        other->hide();
    m_picked = new PickedList(m_environment.messages, m_ui->boxTaisyo);
    m_ui->gridTaisyo->addWidget(m_picked, 2, 0, 1, 2);
    m_ui->verticalLayout->setStretch(0, 1);
    setTabOrder(m_ui->optTaisyo_0, m_picked);
}

// As the window of the whole program it is closed by F12 alone.
void frm同意書印刷::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Escape || parentWidget())
        QDialog::keyPressEvent(event);
}

void frm同意書印刷::addMenu() {
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(u"設定(&E)"_s);
    m_oralForms = menu->addAction(u"口頭同意に専用書式（埼玉）を使う(&S)"_s);
    m_oralForms->setObjectName(u"mnDouiOpt"_s);
    m_oralForms->setCheckable(true);
    layout()->setMenuBar(bar);
}

void frm同意書印刷::wire() {
    connect(m_ui->optTaisyo_0, &QRadioButton::toggled, this, [this] { showTarget(); });
    connect(m_ui->chkTeisyutuDate, &QCheckBox::toggled, m_ui->imD_Teisyutu, &QWidget::setEnabled);
    connect(m_oralForms, &QAction::triggered, this, [this](bool on) { switchOralForms(on); });
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, [this] { print(PrintWay::Preview); });
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, [this] { print(PrintWay::Print); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

short frm同意書印刷::iInit(cT_ADODB &db, const QString &, const QString &, const QString &, short) {
    m_db = &db;
    m_searches = std::make_unique<Searches>(db, m_environment, *m_ui);
    ConsentPrintSettings settings;
    for (const Result<> &read :
         {settings.read(m_environment.folders), m_practice.read(m_environment.folders)})
        if (!read)
            m_environment.messages.show(printSettingsUnreadable(read.reason()));
    showSettings(settings);
    showTarget();
    if (m_picked) {
        m_picked->setSearch(u"利用者を追加(&R)"_s, codeSearch(m_searches->patients, m_environment.messages));
        m_picked->setFocus();
        return 0;
    }
    m_ui->txtcRiyoushaNo->setFocus();
    m_ui->txtcRiyoushaNo->selectAll();
    return 0;
}

void frm同意書印刷::showSettings(const ConsentPrintSettings &settings) {
    m_ui->optSejutuKbn->button(int(settings.kind))->setChecked(true);
    m_ui->cmbSort->setCurrentIndex(int(settings.order));
    contentsControls(*m_ui).show(settings);
    m_ui->chkIsiKobetu->setChecked(settings.doctorSettings);
    m_ui->chkTeisyutuDate->setChecked(settings.submissionDate);
    m_ui->imD_Teisyutu->setEnabled(settings.submissionDate);
    m_ui->imD_Teisyutu->setDate(settings.submissionFor(m_environment.clock.today()));
    m_oralForms->setChecked(m_practice.oralSaitama);
    // The last patient is only a proposal: one who is gone leaves the box empty.
    if (settings.patient != 0) {
        const CodeLookup patient = m_searches->patients.lookup(QString::number(settings.patient));
        if (patient.found())
            m_searches->patient->setRow(patient.row);
        else if (patient.failed)
            m_environment.messages.show(patientReadFailed(patient.reason));
    }
}

bool frm同意書印刷::single() const {
    return !m_picked && m_ui->optTaisyo_0->isChecked();
}

void frm同意書印刷::showTarget() {
    for (QWidget *control :
         std::initializer_list<QWidget *>{m_ui->btnSelRiyousha, m_ui->txtcRiyoushaNo, m_ui->txtcRiyoushaName})
        control->setEnabled(single());
    m_ui->boxJouken->setEnabled(!single());
    m_ui->cmbYoushiki2->setEnabled(!m_oralForms->isChecked());
}

bool frm同意書印刷::settle() {
    for (DateBox *box : {m_ui->imD_KikanFrom, m_ui->imD_KikanTo, m_ui->imD_Teisyutu})
        if (box->isEnabled() && !box->settle()) {
            box->setFocus();
            return false;
        }
    const std::initializer_list<CodeNamePair *> pairs{m_searches->patient, m_searches->practitioner,
                                                      m_searches->doctor};
    for (CodeNamePair *pair : pairs)
        if (!pair->settle())
            return false;
    if (m_picked && !m_picked->settle())
        return false;
    if (m_picked ? m_picked->rows().empty() : single() && m_searches->patient->row().code.isEmpty()) {
        m_environment.messages.warn(u"利用者を指定してください。"_s);
        m_picked ? m_picked->setFocus() : m_ui->txtcRiyoushaNo->setFocus();
        return false;
    }
    if (m_ui->chkTeisyutuDate->isChecked() && !m_ui->imD_Teisyutu->date().isValid()) {
        m_environment.messages.warn(u"提出日を入力してください。"_s);
        m_ui->imD_Teisyutu->setFocus();
        return false;
    }
    const QDate from = m_ui->imD_KikanFrom->date();
    const QDate to = m_ui->imD_KikanTo->date();
    if (!single() && from.isValid() && to.isValid() && from > to) {
        m_environment.messages.warn(u"期間終了日の範囲を正しく指定してください。"_s);
        m_ui->imD_KikanFrom->setFocus();
        return false;
    }
    return true;
}

ConsentPrintSettings frm同意書印刷::chosen() const {
    ConsentPrintSettings settings{contentsControls(*m_ui).chosen()};
    settings.kind = TreatmentKind(m_ui->optSejutuKbn->checkedId());
    settings.order = FormOrder(m_ui->cmbSort->currentIndex());
    settings.doctorSettings = m_ui->chkIsiKobetu->isChecked();
    settings.patient = m_searches->patient->row().code.toInt();
    settings.submissionDate = m_ui->chkTeisyutuDate->isChecked();
    settings.submitted = m_ui->imD_Teisyutu->date();
    return settings;
}

ConsentFormOptions frm同意書印刷::options(const ConsentPrintSettings &settings) const {
    ConsentFormOptions options;
    options.branch = m_environment.branch;
    options.company = m_practice.company;
    settings.applyTo(options);
    if (m_oralForms->isChecked())
        options.oral = OralForms::Saitama;
    if (single()) {
        options.patients = {settings.patient};
        options.kind = TreatmentKind::All;
        return options;
    }
    options.master = FormMaster::Practice;
    if (m_picked) {
        for (const CodeName &patient : m_picked->rows())
            options.patients.push_back(patient.code.toInt());
        options.kind = TreatmentKind::All;
        options.order = FormOrder::AsChosen;
        return options;
    }
    options.staff = m_searches->practitioner->row().code.toInt();
    options.doctor = m_searches->doctor->row().code;
    options.periodEndFrom = m_ui->imD_KikanFrom->date();
    options.periodEndTo = m_ui->imD_KikanTo->date();
    return options;
}

void frm同意書印刷::switchOralForms(bool on) {
    if (const Result<> written = m_practice.writeOralSaitama(m_environment.folders, on); written) {
        m_practice.oralSaitama = on;
    } else {
        m_environment.messages.failIn(written.reason(), u"mnDouiOpt_Click()でエラー");
        m_oralForms->setChecked(!on);
    }
    showTarget();
}

void frm同意書印刷::print(PrintWay way) {
    m_ui->lblState->clear();
    if (!settle())
        return;
    const ConsentPrintSettings settings = chosen();
    // Choices that cannot be kept are no reason not to print.
    if (const Result<> kept = settings.write(m_environment.folders); !kept)
        m_environment.messages.failIn(kept.reason(), u"cmdPrint_Click()でエラー");
    const Result<GatheredForms> gathered =
        gatherConsentForms(*m_db, options(settings), m_environment.clock.today());
    if (!gathered)
        m_environment.messages.show(patientReadFailed(gathered.reason()));
    if (!gathered || !maySkip(*gathered))
        return;
    if (single())
        printSingle(*gathered, way);
    else
        printBatch(*gathered, way);
}

// Whether there is something to print, and the user agrees to who gets nothing.
bool frm同意書印刷::maySkip(const GatheredForms &gathered) {
    using Why = LeftOutPatient::Why;
    Messages &messages = m_environment.messages;
    if (gathered.noPatients()) {
        messages.show(noPatientData());
        return false;
    }
    if (gathered.leftOut.empty())
        return true;
    const LeftOutPatient &first = gathered.leftOut.front();
    const bool allUnregistered =
        std::ranges::all_of(gathered.leftOut, [](const auto &out) { return out.why == Why::NoLayout; });
    if (gathered.forms.empty() && allUnregistered) {
        messages.show(formNotRegistered(first.acupuncture));
        return false;
    }
    Message question = patientsLeftOut(gathered.leftOut);
    question.title = windowTitle();
    if (gathered.forms.empty()) {
        messages.show(question);
        messages.show(noConsentData());
        return false;
    }
    question.text += u"\r\n\r\nこの利用者を除いて出力します。よろしいですか？"_s;
    question.buttons = MessageButtons::OkCancel;
    return messages.show(question) == Answer::Ok;
}

void frm同意書印刷::printSingle(const GatheredForms &gathered, PrintWay way) {
    Messages &messages = m_environment.messages;
    const ConsentForm &form = gathered.forms.front();
    if (!withoutLayoutFile(m_environment.folders, gathered.forms).empty()) {
        messages.show(layoutMissing(form.layout));
        return;
    }
    if (!mayLose(messages, replacedNote(m_environment, gathered.forms), windowTitle()))
        return;
    SentRun sent(m_environment, *m_db, sentKind);
    cls_WfdPrintExe engine(m_environment, way == PrintWay::Print ? &sent : nullptr);
    engine.iInit(QDir::toNativeSeparators(layoutPath(m_environment.folders, form)), u"同意書印刷"_s);
    if (saveCSVdoui(form, engine) != 0)
        messages.show(printFailed(m_error));
    else if (engine.iPutOut(way) != 0)
        messages.show(printFailed(engine.sErrMsg()));
    else
        m_ui->lblState->setText(putOutText(u"同意書"_s, way) + sent.finish(1, 1));
}

short frm同意書印刷::saveCSVdoui(const ConsentForm &form, cls_WfdPrintExe &engine) {
    const Result<> written = writeConsentFormData({form}, engine);
    m_error = written.reason();
    return written ? 0 : -1;
}

void frm同意書印刷::printBatch(const GatheredForms &gathered, PrintWay way) {
    Messages &messages = m_environment.messages;
    const int count = int(gathered.forms.size());
    if (withoutLayoutFile(m_environment.folders, gathered.forms).size() == gathered.forms.size()) {
        messages.show(layoutMissing(gathered.forms.front().layout));
        return;
    }
    if (!mayLose(messages, replacedNote(m_environment, gathered.forms), windowTitle(),
                 batchQuestion(m_environment, gathered.forms, way)))
        return;
    BatchOrder order;
    SentRun sent(m_environment, *m_db, sentKind);
    order.preview = way == PrintWay::Preview;
    order.sent = order.preview ? nullptr : &sent;
    const BatchResult result = waitForBatch(
        this, m_environment, order, {count, [&](int position, PrintFiles &files) {
                                         return makeFormReport(m_environment.folders,
                                                               gathered.forms[size_t(position)], files);
                                     }});
    m_ui->lblState->setText(putOutText(u"同意書 %L1 件"_s.arg(result.reports()), way) +
                            sent.finish(result.reports(), result.reports()));
    if (!result.allPrinted())
        messages.show(batchSummary(result));
}

frm同意書印刷_mst::frm同意書印刷_mst(Environment &environment, QWidget *parent)
    : frm同意書印刷(environment, parent) {
    setObjectName(u"frm同意書印刷_mst"_s);
    setWindowTitle(u"同意書印刷（マスタ）"_s);
    pickPatients();
}
