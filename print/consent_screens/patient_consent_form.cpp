#include "print/consent_screens/patient_consent_form.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/text.h"
#include "archive/sent_run.h"
#include "db/adodb.h"
#include "db/connection_settings.h"
#include "print/batch/print_messages.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/print_settings.h"
#include "print/consent_screens/layout_controls.h"
#include "print/documents/lost_texts.h"
#include "print/request_letter/letter_job.h"
#include "print/request_letter/letter_options.h"
#include "ui_patient_consent_form.h"
#include "widgets/enter_moves_on.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array allDocuments{ConsentDocument::First, ConsentDocument::Again, ConsentDocument::Request};

const QString newLine = u"\r\n"_s;
constexpr int stopped = -2; ///< the user would rather not print
const QString noPatient = u"該当する患者データがありません。"_s;

QString eraDate(const QDate &date) {
    return date.isValid() ? toFullWidth(formatDate(date, u"gggee年mm月dd日")) : u"未設定"_s;
}

QString periodText(const Period &period) {
    return period.start.isValid() ? eraDate(period.start) + u"～"_s + eraDate(period.end) : u"未設定"_s;
}

/// The program folder's own file goes before the one that the PCs share.
QString patientSettingsFile(const Folders &folders) {
    const QString name = u"患者管理設定.ini"_s;
    const QString own = Folders::file(folders.program(), name);
    return QFileInfo::exists(own) ? own : Folders::file(folders.data(), name);
}

LetterCompany letterCompany(const cD_CORP &company) {
    return {joinedLines(company.cShamei1, company.cShamei2),
            joinedLines(company.cAddress1, company.cAddress2), company.cTelNo, company.cFaxNo,
            company.cDaihyo};
}

} // namespace

frmDouiSubmain::frmDouiSubmain(Environment &environment, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_ui(std::make_unique<Ui::PatientConsentForm>()),
      m_sample(environment, u"同意依頼書.csv"_s) {
    m_ui->setupUi(this);
    m_contents = {m_ui->chkChkView_0, m_ui->chkChkView_1, m_ui->chkChkView_2};
    m_formats = {m_ui->cbDouiFormat_0, m_ui->cbDouiFormat_1, m_ui->cbDouiFormat_2};
    m_own = {m_ui->optChkPrn_0, m_ui->optChkPrn_1, m_ui->optChkPrn_2};
    m_ui->imD_Teisyutu->setClock(environment.clock);
    m_ui->btnRegist->hide(); // the choices are taken when the screen is closed
    auto *bar = new QMenuBar(this);
    bar->addMenu(m_ui->wfdImage->zoomMenu());
    layout()->setMenuBar(bar);
    wire();
    new EnterMovesOn(this);
    const Period longest{QDate(2026, 10, 10), QDate(2027, 10, 10)};
    for (const auto &[box, text] : {std::pair(m_ui->txtKaryouDay, periodText(longest)),
                                    std::pair(m_ui->txtSyoryoDay, eraDate(longest.start))})
        box->setMinimumWidth(fontMetrics().horizontalAdvance(text + u"国"_s));
    resize(screen()->availableSize() * 24 / 25);
}

frmDouiSubmain::~frmDouiSubmain() = default;

void frmDouiSubmain::wire() {
    const std::array images{m_ui->btnShinseiImage_0, m_ui->btnShinseiImage_1, m_ui->btnShinseiImage_2};
    const std::array prints{m_ui->btnPrintSyokaiDoui, m_ui->btnPrintDoui, m_ui->btnPrintDouiIrai};
    for (const ConsentDocument document : allDocuments) {
        const auto i = size_t(document);
        connect(m_formats[i], &QComboBox::currentIndexChanged, this,
                [this, document] { showSample(document); });
        connect(images[i], &QPushButton::clicked, this, [this, document] { showSample(document); });
        connect(prints[i], &QPushButton::clicked, this, [this, document] { print(document); });
    }
    m_contents.onChange(this, [this] {
        if (isVisible() && m_formats[size_t(m_shown)]->count() > 0)
            showSample(m_shown);
    });
    connect(m_ui->chkTeisyutuDate, &QCheckBox::toggled, m_ui->imD_Teisyutu, &QWidget::setEnabled);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

short frmDouiSubmain::fail(const QString &text, const QString &title) {
    m_error = text;
    m_environment.messages.fail(text, title);
    return -1;
}

short frmDouiSubmain::iInit(cT_ADODB &db, const PatientKey &patient, const QString &doctor, short) {
    m_db = &db;
    m_patient = patient;
    m_doctor = doctor;
    cT_CORP companies;
    if (companies.iInit(db) != 0 || companies.iDataReadGrid() != 0)
        return fail(companies.sErrMsg());
    m_companies = companies.records();
    Result<PatientConsent> consent = readPatientConsent(db, patient, doctor);
    if (!consent)
        return fail(consent.reason(), u"データ取得エラー"_s);
    m_patientConsent = std::move(*consent);
    if (readSenders() != 0 || chooseSender() != 0 || readLayouts() != 0)
        return -1;
    showConsent();
    showSettings(m_patientConsent.settings());
    showSubmission();
    m_shownFirst = m_settings = chosenSettings();
    return 0;
}

short frmDouiSubmain::readSenders() {
    const Result<std::optional<cD_CORP>> office = readHeadOffice(*m_db, m_patient.branch());
    if (!office)
        return fail(office.reason() + newLine + u"Hokenja() でエラー"_s, u"DB-error"_s);
    if (!*office)
        return fail(u"本社データがありません。"_s);
    m_headOffice = **office;
    for (const cD_CORP &company : m_companies)
        m_ui->cmbCorp->addItem(joined(company.cShamei1, company.cShamei2, u"　"));
    m_ui->cmbCorp->setToolTip(
        u"印刷する会社を選びます。この拠点の会社：%1　%2"_s.arg(m_headOffice.cShamei1, m_headOffice.cTelNo));
    return 0;
}

short frmDouiSubmain::chooseSender() {
    clsOplIniFile ini;
    if (ini.iInit(patientSettingsFile(m_environment.folders)) != 0)
        return fail(ini.sErrMsg() + newLine + u"init()でエラー"_s);
    m_ui->cmbCorp->setCurrentIndex(0);
    const QString stored = trimRight(ini.csGetProfileString(u"同意記録"_s, u"同意印刷本社No"_s));
    const int position = ini.nGetProfileLong(u"同意記録"_s, u"同意印刷本社No"_s);
    if (!stored.isEmpty() && position >= 0 && position < m_ui->cmbCorp->count())
        m_ui->cmbCorp->setCurrentIndex(position);
    return 0;
}

short frmDouiSubmain::readLayouts() {
    const Result<LayoutLists> lists = readLayoutLists(*m_db, m_patient.branch());
    if (!lists)
        return fail(lists.reason());
    for (const ConsentDocument document : allDocuments)
        m_layouts[size_t(document)] = lists->of(document, m_patientConsent.acupuncture);
    return 0;
}

void frmDouiSubmain::showConsent() {
    const PatientConsent &consent = m_patientConsent;
    m_ui->numIDNo->setText(QString::number(m_patient.nIDNo));
    m_ui->txtName->setText(consent.name);
    m_ui->txtSejutsu->setText(consent.acupuncture ? u"鍼灸"_s : u"マッサージ"_s);
    m_ui->txtSyoryoDay->setText(eraDate(consent.firstTreatment));
    m_ui->txtDouiDay->setText(eraDate(consent.consentDay));
    m_ui->txtKaryouDay->setText(periodText(consent.period));
    m_ui->txtIsiCd1->setText(consent.doctorCode);
    m_ui->txtDouiIsiName1->setText(consent.doctorName);
    m_ui->txtDouiIsiKikan1->setText(consent.institution);
}

void frmDouiSubmain::showSettings(const ConsentLayoutSettings &settings) {
    for (const ConsentDocument document : allDocuments) {
        const auto i = size_t(document);
        fillLayoutCombo(*m_formats[i], m_layouts[i],
                        settings.*ConsentLayoutSettings::layout(document, m_patientConsent.acupuncture));
        m_own[i]->setChecked(m_patientConsent.ofPatient.*ConsentLayoutSettings::used(document) != 0);
    }
    m_contents.show(settings);
}

void frmDouiSubmain::showSubmission() {
    ConsentPrintSettings stored;
    if (const Result<> read = stored.read(m_environment.folders); !read)
        m_environment.messages.fail(u"Error:"_s + read.reason());
    m_ui->chkTeisyutuDate->setChecked(stored.submissionDate);
    m_ui->imD_Teisyutu->setEnabled(stored.submissionDate);
    m_ui->imD_Teisyutu->setDate(stored.submissionFor(m_environment.clock.today()));
}

// The screen stands before the sample is made: another PC may hold the work folder for a while.
void frmDouiSubmain::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    if (event->spontaneous())
        return; // comes back from being an icon
    showWholeWidth(*m_ui->scroll);
    const ConsentDocument proposed =
        m_patientConsent.firstTreatment.isValid() ? ConsentDocument::Again : ConsentDocument::First;
    if (m_formats[size_t(proposed)]->count() > 0)
        QTimer::singleShot(0, this, [this, proposed] { showSample(proposed); });
}

const RegisteredForm *frmDouiSubmain::chosen(ConsentDocument document) const {
    const auto i = size_t(document);
    return resolveLayout(m_layouts[i], chosenLayout(*m_formats[i]), m_environment.messages);
}

void frmDouiSubmain::showSample(ConsentDocument document) {
    const RegisteredForm *layout = chosen(document);
    if (!layout)
        return;
    m_shown = document;
    m_ui->lblMihon->setText(u"見本：%1"_s.arg(m_formats[size_t(document)]->currentText()));
    m_sample.show(document, *layout, m_contents.chosen(), *m_ui->wfdImage);
}

void frmDouiSubmain::print(ConsentDocument document) {
    Messages &messages = m_environment.messages;
    const bool letter = document == ConsentDocument::Request;
    if (!messages.ask((letter ? u"同意依頼書の印刷を行います。"_s : u"同意書の印刷を行います。"_s) + newLine +
                          u"よろしいですか？"_s,
                      u"印刷問合せ"_s))
        return;
    if (m_ui->chkTeisyutuDate->isChecked() &&
        (!m_ui->imD_Teisyutu->settle() || !m_ui->imD_Teisyutu->date().isValid())) {
        messages.warn(u"提出日を入力してください。"_s);
        m_ui->imD_Teisyutu->setFocus();
        return;
    }
    const RegisteredForm *layout = chosen(document);
    if (!layout || !layoutFileIsThere(m_environment, *layout))
        return;
    SentRun sent(m_environment, *m_db, letter ? u"依頼書印刷"_s : u"同意書印刷"_s);
    cls_WfdPrintExe engine(m_environment, &sent);
    engine.iInit(QDir::toNativeSeparators(layoutFile(m_environment, *layout)),
                 letter ? u"同意依頼書印刷"_s : u"同意書印刷"_s);
    if (!write(document, *layout, engine))
        return;
    if (engine.iPutOut(PrintWay::Preview) != 0)
        messages.show(printFailed(engine.sErrMsg()));
    else
        noteUnkept(messages, sent.finish(1, 1));
    keepSubmission();
}

bool frmDouiSubmain::write(ConsentDocument document, const RegisteredForm &layout, cls_WfdPrintExe &engine) {
    const int rows =
        document == ConsentDocument::Request ? saveCSVdouiIrai(layout, engine) : saveCSVdoui(layout, engine);
    if (rows == -1)
        m_environment.messages.inform(u"患者データの取得に失敗しました。"_s + newLine + m_error);
    if (rows == 0)
        m_environment.messages.inform(noPatient);
    return rows > 0;
}

ConsentFormOptions frmDouiSubmain::formOptions(const RegisteredForm &layout) const {
    const SampleContents shown = m_contents.chosen();
    ConsentFormOptions options;
    options.branch = m_patient.branch();
    options.patients = {m_patient.nIDNo};
    options.style = layout.again ? FormStyle::Again : FormStyle::First;
    options.form = PickedForm{layout.number, layout.file, shown.patientNumber};
    options.treatmentContent = shown.treatment;
    options.doctorBlock = shown.doctor;
    options.company = m_ui->cmbCorp->currentIndex();
    if (m_ui->chkTeisyutuDate->isChecked())
        options.submitted = m_ui->imD_Teisyutu->date();
    return options;
}

int frmDouiSubmain::saveCSVdoui(const RegisteredForm &layout, cls_WfdPrintExe &engine) {
    Result<GatheredForms> gathered =
        gatherConsentForms(*m_db, formOptions(layout), m_environment.clock.today());
    if (!gathered) {
        m_error = gathered.reason();
        return -1;
    }
    if (gathered->forms.empty())
        return 0;
    DataValue &telephone =
        gathered->forms.front().values[size_t(consentFormColumns().indexOf(u"保険医電話番号"_s))];
    if (m_ui->chkChkView_1->isChecked() && telephone == DataValue(QString()) && !m_doctor.isEmpty()) {
        const Result<QString> known = getDocTelNo();
        if (!known) {
            m_error = known.reason();
            return -1;
        }
        telephone = *known;
    }
    if (!mayReplace(replacedNote(m_environment, gathered->forms)))
        return stopped;
    const Result<> written = writeConsentFormData(gathered->forms, engine);
    m_error = written.reason();
    return written ? int(gathered->forms.size()) : -1;
}

int frmDouiSubmain::saveCSVdouiIrai(const RegisteredForm &layout, cls_WfdPrintExe &engine) {
    LetterOptions options = keptLetterOptions(m_environment.folders, m_environment.clock.today());
    if (const int company = m_ui->cmbCorp->currentIndex(); company >= 0)
        options.sender = letterCompany(m_companies[size_t(company)]);
    if (!m_patientConsent.hasConsent)
        return 0;
    LetterJob job(m_environment, *m_db);
    if (const Result<> read = job.read(
            {LetterOrder{.row = m_patientConsent.consent, .layout = layout.file, .continues = layout.again}},
            options);
        !read) {
        m_error = read.reason();
        return -1;
    }
    if (job.letters().empty())
        return 0;
    const DataFile letters = job.data(job.letters().front());
    if (!mayReplace(replacedNote(m_environment, letters.replaced())))
        return stopped;
    if (engine.iWriteData(1, u"同意依頼書"_s, letters) != 0) {
        m_error = engine.sErrMsg();
        return -1;
    }
    return letters.count();
}

bool frmDouiSubmain::mayReplace(const QString &note) {
    return mayLose(m_environment.messages, note, u"印刷問合せ"_s);
}

void frmDouiSubmain::keepSubmission() {
    const Result<> kept = keepSubmissionSwitch(m_environment.folders, m_ui->chkTeisyutuDate->isChecked());
    if (!kept)
        m_environment.messages.fail(u"Error:"_s + kept.reason());
}

/// Over a connection of its own, as a program that only reads this would have.
Result<QString> frmDouiSubmain::getDocTelNo() const {
    const QString label = u"getDocTelNo() でエラー"_s;
    const Result<QString> connection = readConnectionString(m_environment.folders);
    if (!connection)
        return connection;
    cT_ADODB own;
    own.iInit(*connection);
    const Result<QString> telephone = readDoctorTelephone(own, m_doctor);
    return telephone ? telephone : Failure{telephone.reason() + newLine + label};
}

short frmDouiSubmain::updateIshiDoui() {
    const Result<> written =
        writeDoctorLayouts(*m_db, m_doctor, m_patientConsent.acupuncture, chosenSettings());
    return written ? short(0)
                   : fail(written.reason() + newLine + u"updateIshiDoui()でエラー。"_s,
                          u"医師別の同意書書式情報更新"_s);
}

// What the screen has no control for stays as it was: the other kind of treatment.
ConsentLayoutSettings frmDouiSubmain::chosenSettings() const {
    ConsentLayoutSettings settings = m_patientConsent.settings();
    for (const ConsentDocument document : allDocuments) {
        const auto i = size_t(document);
        settings.*ConsentLayoutSettings::layout(document, m_patientConsent.acupuncture) =
            chosenLayout(*m_formats[i]);
        settings.*ConsentLayoutSettings::used(document) = short(m_own[i]->isChecked());
    }
    m_contents.takeOver(settings);
    return settings;
}

void frmDouiSubmain::done(int result) {
    m_settings = chosenSettings();
    QDialog::done(result);
}
