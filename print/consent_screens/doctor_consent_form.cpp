#include "print/consent_screens/doctor_consent_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "print/batch/print_messages.h"
#include "print/consent_screens/layout_controls.h"
#include "ui_doctor_consent_form.h"
#include "widgets/enter_moves_on.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const std::array jobTitles{u"マッサージ：初回同意書"_s, u"マッサージ：再同意書"_s,
                           u"マッサージ：同意依頼書"_s, u"鍼灸：初回同意書"_s,
                           u"鍼灸：再同意書"_s,         u"鍼灸：同意依頼書"_s};

} // namespace

frmDouiSubmainIshi::frmDouiSubmainIshi(Environment &environment, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_ui(std::make_unique<Ui::DoctorConsentForm>()),
      m_sample(environment, u"同意依頼書データ.csv"_s) {
    m_ui->setupUi(this);
    m_contents = {m_ui->chkChkView_0, m_ui->chkChkView_1, m_ui->chkChkView_2};
    auto *bar = new QMenuBar(this);
    bar->addMenu(m_ui->wfdImage->zoomMenu());
    layout()->setMenuBar(bar);
    wire();
    new EnterMovesOn(this);
    resize(screen()->availableSize() * 24 / 25);
}

frmDouiSubmainIshi::~frmDouiSubmainIshi() = default;

void frmDouiSubmainIshi::wire() {
    const auto button = [this](const QString &name, size_t combo) {
        return findChild<QPushButton *>(u"%1_%2"_s.arg(name).arg(combo));
    };
    for (size_t i = 0; i < combos; ++i) {
        m_formats[i] = findChild<QComboBox *>(u"cbDouiFormat_%1"_s.arg(i));
        connect(m_formats[i], &QComboBox::currentIndexChanged, this, [this, i] { showSample(i); });
        connect(button(u"btnShinseiImage"_s, i), &QPushButton::clicked, this, [this, i] { showSample(i); });
        connect(button(u"btnPreviewDoui"_s, i), &QPushButton::clicked, this,
                [this, i] { putOut(i, PrintWay::Preview); });
        connect(button(u"btnPrintDoui"_s, i), &QPushButton::clicked, this,
                [this, i] { putOut(i, PrintWay::Print); });
    }
    m_contents.onChange(this, [this] {
        if (isVisible() && m_formats[m_shown]->count() > 0)
            showSample(m_shown);
    });
    connect(m_ui->btnRegist, &QPushButton::clicked, this, [this] { regist(); });
    connect(m_ui->btnCancel, &QPushButton::clicked, this, [this] { reject(); });
}

short frmDouiSubmainIshi::iInit(cT_ADODB &db, const ConsentLayoutSettings &settings, short mode) {
    if (mode != Company && mode != Doctor) {
        m_error = u"同意書式設定画面のモード %1 は使用できません。"_s.arg(mode);
        return -1;
    }
    const Result<LayoutLists> lists = readLayoutLists(db, m_environment.branch);
    if (!lists) {
        m_error = lists.reason();
        return -1;
    }
    m_settings = settings;
    m_ui->lbMode->setText(mode == Company ? u"会社として使用する同意書を設定します。"_s
                                          : u"医師に対する同意書の設定を行います。"_s);
    for (size_t i = 0; i < combos; ++i)
        m_layouts[i] = lists->of(documentOf(i), isAcupuncture(i));
    showSettings();
    return 0;
}

void frmDouiSubmainIshi::showSettings() {
    for (size_t i = 0; i < combos; ++i)
        fillLayoutCombo(*m_formats[i], m_layouts[i],
                        m_settings.*ConsentLayoutSettings::layout(documentOf(i), isAcupuncture(i)));
    m_ui->chkDouiAri_0->setChecked(m_settings.iSyokaiDouiON != 0);
    m_ui->chkDouiAri_1->setChecked(m_settings.iSaiDouiON != 0);
    m_ui->chkDouiAri_2->setChecked(m_settings.iDouiiraiON != 0);
    m_contents.show(m_settings);
}

// The screen stands before the sample is made: another PC may hold the work folder for a while.
void frmDouiSubmainIshi::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    if (event->spontaneous())
        return; // comes back from being an icon
    showWholeWidth(*m_ui->scroll);
    const auto first = std::ranges::find_if(m_formats, [](const QComboBox *box) { return box->count() > 0; });
    if (first != m_formats.end())
        QTimer::singleShot(0, this, [this, i = size_t(first - m_formats.begin())] { showSample(i); });
}

const RegisteredForm *frmDouiSubmainIshi::chosen(size_t combo) const {
    return resolveLayout(m_layouts[combo], chosenLayout(*m_formats[combo]), m_environment.messages);
}

void frmDouiSubmainIshi::showSample(size_t combo) {
    const RegisteredForm *layout = chosen(combo);
    if (!layout)
        return;
    m_shown = combo;
    m_ui->lblMihon->setText(jobTitles[combo]);
    m_sample.show(documentOf(combo), *layout, m_contents.chosen(), *m_ui->wfdImage);
}

void frmDouiSubmainIshi::putOut(size_t combo, PrintWay way) {
    const RegisteredForm *layout = chosen(combo);
    if (!layout || !layoutFileIsThere(m_environment, *layout))
        return;
    const Result<> done = m_sample.putOut(documentOf(combo), *layout, m_contents.chosen(), way);
    if (done)
        return;
    Message failed = printFailed(done.reason());
    failed.title = jobTitles[combo];
    m_environment.messages.show(failed);
}

void frmDouiSubmainIshi::regist() {
    if (!m_environment.messages.ask(u"登録してもよろしいですか？"_s, u"確認"_s))
        return;
    takeOver();
    accept();
}

void frmDouiSubmainIshi::reject() {
    if (m_environment.messages.ask(u"内容を登録しますか？"_s, u"登録確認"_s))
        takeOver();
    QDialog::reject();
}

void frmDouiSubmainIshi::takeOver() {
    for (size_t i = 0; i < combos; ++i)
        m_settings.*ConsentLayoutSettings::layout(documentOf(i), isAcupuncture(i)) =
            chosenLayout(*m_formats[i]);
    m_settings.iSyokaiDouiON = short(m_ui->chkDouiAri_0->isChecked());
    m_settings.iSaiDouiON = short(m_ui->chkDouiAri_1->isChecked());
    m_settings.iDouiiraiON = short(m_ui->chkDouiAri_2->isChecked());
    m_contents.takeOver(m_settings);
    m_registered = true;
}
