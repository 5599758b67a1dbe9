#include "setup/set_up_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/text.h"
#include "ui_set_up_form.h"
#include "widgets/enter_moves_on.h"
#include "widgets/wait_message_form.h"

#include <QDir>
#include <QScreen>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Input {
    QLineEdit *Ui::SetUpForm::*box;
    QString *text;
};

QList<Input> inputsOf(setup::Answers &answers) {
    using Ui = Ui::SetUpForm;
    setup::Practice &practice = answers.practice;
    return {{&Ui::txtFile, &answers.file},
            {&Ui::txtServer, &answers.server},
            {&Ui::txtDatabase, &answers.database},
            {&Ui::txtUser, &answers.user},
            {&Ui::txtPassword, &answers.password},
            {&Ui::txtName, &practice.name},
            {&Ui::txtCompany, &practice.company},
            {&Ui::txtRepresentative, &practice.representative},
            {&Ui::txtPostalCode, &practice.postalCode},
            {&Ui::txtAddress, &practice.address},
            {&Ui::txtAddress2, &practice.address2},
            {&Ui::txtTelephone, &practice.telephone},
            {&Ui::txtFax, &practice.fax},
            {&Ui::txtStaffName, &practice.staffName},
            {&Ui::txtStaffKana, &practice.staffKana}};
}

QString titleOf(int screen) {
    const QStringList titles = {u"データベースの種類"_s, u"接続先"_s, u"はじめのデータ"_s, u"事業所"_s,
                                u"確認"_s};
    return u"%1／%2　%3"_s.arg(screen + 1).arg(titles.size()).arg(titles.at(screen));
}

/// What to do stands alone, before what the database said.
QString adviceAndDetails(const QString &reason) {
    const qsizetype end = reason.indexOf(u'\r');
    return end < 0 ? reason : reason.first(end) + u"\n\n"_s + reason.sliced(end).simplified();
}

} // namespace

SetUpForm::SetUpForm(Environment &environment, QString programs, setup::MakeSample sample, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_programs(std::move(programs)),
      m_sample(std::move(sample)),
      m_ui(std::make_unique<Ui::SetUpForm>()),
      m_answers(setup::rememberedAnswers(environment.folders)) {
    m_ui->setupUi(this);
    setObjectName(u"frm初期設定"_s);
    m_ui->cboTreatments->addItems({u"マッサージ"_s, u"鍼灸"_s, u"マッサージと鍼灸"_s});
    QFont bold = font();
    bold.setBold(true);
    m_ui->lblTitle->setFont(bold);
    for (QLabel *hint :
         {m_ui->lblEmbedded, m_ui->lblPostgres, m_ui->lblSqlServer, m_ui->lblEmpty, m_ui->lblSample})
        hint->setIndent(fontMetrics().horizontalAdvance(u'漢') * 2);
    wire();
    showAnswers();
    goOn();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 46, fontMetrics().height() * 22);
    resize(wanted.expandedTo(sizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
}

SetUpForm::~SetUpForm() = default;

void SetUpForm::wire() {
    connect(m_ui->cmdBack, &QPushButton::clicked, this, [this] { back(); });
    connect(m_ui->cmdNext, &QPushButton::clicked, this, [this] { next(); });
    connect(m_ui->cmdTry, &QPushButton::clicked, this, [this] { tryConnection(); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, [this] { reject(); });
    new EnterMovesOn(this);
}

// The password was not kept, and what lies behind a connection is known only by looking.
void SetUpForm::goOn() {
    const Screen left = Screen(std::clamp(m_answers.screen, int(Engine), int(Summary)));
    goTo(std::min(left, Connection));
    if (left > Connection && m_answers.engine == setup::Engine::Embedded && tryConnection())
        goTo(isAsked(left) ? left : Summary);
}

SetUpForm::Screen SetUpForm::current() const {
    return Screen(m_ui->pages->currentIndex());
}

void SetUpForm::showAnswers() {
    for (const Input &input : inputsOf(m_answers))
        (m_ui.get()->*input.box)->setText(*input.text);
    m_ui->cboTreatments->setCurrentIndex(int(m_answers.practice.treatments));
    QRadioButton *engines[] = {m_ui->optEmbedded, m_ui->optPostgres, m_ui->optSqlServer};
    engines[int(m_answers.engine)]->setChecked(true);
    (m_answers.sample ? m_ui->optSample : m_ui->optEmpty)->setChecked(true);
}

void SetUpForm::takeAnswers() {
    for (const Input &input : inputsOf(m_answers)) {
        const QString text = (m_ui.get()->*input.box)->text();
        *input.text = input.box == &Ui::SetUpForm::txtPassword ? text : text.trimmed();
    }
    for (QString *number :
         {&m_answers.practice.postalCode, &m_answers.practice.telephone, &m_answers.practice.fax})
        *number = toHalfWidth(*number);
    m_answers.practice.postalCode = setup::postalCode(m_answers.practice.postalCode);
    m_answers.practice.treatments = setup::Treatments(m_ui->cboTreatments->currentIndex());
    m_answers.engine = m_ui->optEmbedded->isChecked()   ? setup::Engine::Embedded
                       : m_ui->optPostgres->isChecked() ? setup::Engine::PostgreSql
                                                        : setup::Engine::SqlServer;
    m_answers.sample = m_ui->optSample->isChecked();
}

void SetUpForm::goTo(Screen to) {
    takeAnswers();
    if (to == Connection)
        showConnectionInputs();
    if (to == Summary)
        showSummary();
    m_ui->pages->setCurrentIndex(to);
    m_ui->lblTitle->setText(titleOf(to));
    m_ui->cmdBack->setEnabled(to != Engine);
    m_ui->cmdNext->setText(to == Summary ? u"設定する (F5)"_s : u"次へ (F5)"_s);
    m_ui->cmdNext->setShortcut(Qt::Key_F5); // goes with the text
    m_ui->cmdNext->setFocus();
    // The first input of the screen; where there is nothing to enter, the way on.
    for (QWidget *input : m_ui->pages->currentWidget()->findChildren<QWidget *>()) {
        const auto *choice = qobject_cast<QRadioButton *>(input);
        if (input->isVisibleTo(this) && input->isEnabled() && input->focusPolicy() != Qt::NoFocus &&
            (!choice || choice->isChecked())) {
            input->setFocus();
            break;
        }
    }
}

void SetUpForm::showConnectionInputs() {
    const bool embedded = m_answers.engine == setup::Engine::Embedded;
    for (QWidget *part : {static_cast<QWidget *>(m_ui->lblFile), static_cast<QWidget *>(m_ui->txtFile)})
        part->setVisible(embedded);
    for (QWidget *part : std::initializer_list<QWidget *>{m_ui->lblServer, m_ui->txtServer, m_ui->lblDatabase,
                                                          m_ui->txtDatabase, m_ui->lblUser, m_ui->txtUser,
                                                          m_ui->lblPassword, m_ui->txtPassword})
        part->setVisible(!embedded);
    m_ui->txtUser->setPlaceholderText(
        m_answers.engine == setup::Engine::SqlServer ? u"空欄ならWindowsのログイン名で接続"_s : QString());
    m_ui->lblTried->clear();
}

// A practice that was found brings its own data; so does the sample.
bool SetUpForm::isAsked(Screen screen) const {
    switch (screen) {
    case Data:
        return m_isNew;
    case Practice:
        return m_isNew && !m_answers.sample;
    default:
        return true;
    }
}

void SetUpForm::back() {
    if (current() == Engine)
        return;
    Screen to = Screen(current() - 1);
    while (!isAsked(to))
        to = Screen(to - 1);
    goTo(to);
}

void SetUpForm::next() {
    takeAnswers();
    if (!mayLeave(current()))
        return;
    if (current() == Summary) {
        finish();
        return;
    }
    Screen to = Screen(current() + 1);
    while (!isAsked(to))
        to = Screen(to + 1);
    goTo(to);
    remember();
}

bool SetUpForm::mayLeave(Screen screen) {
    if (screen == Connection)
        return tryConnection();
    const QString why = screen == Practice ? setup::whyNotStored(m_answers.practice) : QString();
    if (!why.isEmpty())
        m_environment.messages.note(why);
    return why.isEmpty();
}

bool SetUpForm::tryConnection() {
    takeAnswers();
    m_ui->lblTried->setText(u"接続しています..."_s);
    m_ui->lblTried->repaint();
    const Result<setup::Trial> trial = setup::tryConnection(m_answers);
    m_ui->lblTried->setText(trial ? trial->said : adviceAndDetails(trial.reason()));
    m_isNew = !trial || trial->isNew;
    return bool(trial);
}

void SetUpForm::showSummary() {
    const setup::Practice &practice = m_answers.practice;
    const QString where =
        m_answers.engine == setup::Engine::Embedded
            ? u"ファイル「%1」"_s.arg(m_answers.file)
            : u"サーバー「%1」のデータベース「%2」"_s.arg(m_answers.server, m_answers.database);
    const QString what =
        !m_isNew ? u"登録されている事業所に接続します。"_s
        : m_answers.sample
            ? u"見本の事業所と利用者を作成します。"_s
            : u"事業所「%1」を作成します。祝日、書式、名称の一覧も登録します。\n"
              "利用者は、同意書の一覧が開いたら Ctrl+Shift+K で登録します（名簿の取込は Ctrl+O）。"_s.arg(
                  practice.name);
    m_ui->lblSummary->setText(u"%1\n\n%2\n\n設定と書類のレイアウトを、プログラムフォルダ「%3」に置きます。"
                              "すでにあるファイルは変えません。\n\nよければ F5 を押してください。"_s.arg(
                                  where, what, QDir::toNativeSeparators(m_environment.folders.program())));
}

void SetUpForm::finish() {
    Result<bool> made = Failure{{}};
    {
        frmWaitMsg wait(this);
        wait.showProgress(u"設定しています..."_s);
        made =
            setup::setUp(m_environment.folders, m_answers, m_environment.clock.today(), m_programs, m_sample);
    }
    if (!made) {
        m_environment.messages.fail(made.reason(), u"初期設定"_s);
        return;
    }
    // What was read at the start, before there was a Massage.ini.
    m_environment.folders = Folders(m_environment.folders.program());
    m_environment.messages.note(*made ? u"初期設定が終わりました。"_s
                                      : u"初期設定が終わりました。登録されている事業所に接続します。"_s);
    accept();
}

bool SetUpForm::remember() {
    m_answers.screen = current();
    const Result<> kept = setup::rememberAnswers(m_environment.folders, m_answers);
    if (!kept)
        m_environment.messages.fail(kept.reason(), u"初期設定"_s);
    return bool(kept);
}

void SetUpForm::reject() {
    takeAnswers();
    remember();
    QDialog::reject();
}
