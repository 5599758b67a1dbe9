#include "print/mail/mail_send_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "export/save_grid.h"
#include "print/mail/mail_text.h"
#include "print/mail/sending_form.h"
#include "ui_mail_send_form.h"
#include "widgets/enter_moves_on.h"
#include "widgets/tick_delegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {
const QString whyUnreached =
    u"相談員が登録されていない（または中止になった）ため、メールを送れない利用者："_s;
}

frmMailSend::frmMailSend(Environment &environment, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmMailSend>()), m_environment(environment) {
    m_ui->setupUi(this);
    m_ui->ssSoudan->setModel(&m_choice);
    m_ui->ssSoudan->setItemDelegateForColumn(MailChoice::Tick, new TickDelegate(environment.folders, this));
    m_ui->ssSoudan->horizontalHeader()->setStretchLastSection(true);
    (new CsvButton(environment, *m_ui->ssSoudan, u"メール送信先"_s))
        ->insert(*m_ui->rowButtons, *m_ui->cmdSend);
    wire();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 64, fontMetrics().height() * 40);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

frmMailSend::~frmMailSend() = default;

void frmMailSend::wire() {
    m_ui->ssSoudan->installEventFilter(this);
    new EnterMovesOn(this);
    connect(&m_choice, &MailChoice::ticksChanged, this, &frmMailSend::showState);
    connect(&m_choice, &QAbstractItemModel::modelReset, this,
            [this] { m_ui->ssSoudan->goTo(m_choice.firstRow(), MailChoice::Tick); });
    connect(m_ui->ssSoudan->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmMailSend::showPreview);
    connect(m_ui->chkAll, &QCheckBox::toggled, this, [this](bool all) {
        m_choice.showAll(all);
        showPreview();
    });
    connect(m_ui->cmdAllCheck, &QPushButton::clicked, this, [this] { m_choice.tickAll(); });
    connect(m_ui->cmdSend, &QPushButton::clicked, this, &frmMailSend::send);
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
    auto *close = new QShortcut(Qt::Key_F12, this);
    close->setWhatsThis(u"閉じる"_s);
    connect(close, &QShortcut::activated, this, &QDialog::reject);
}

short frmMailSend::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short frmMailSend::Init(cT_ADODB &db, MailClaims &claims, const std::vector<MailRow> &rows) {
    m_claims = &claims;
    const Result<MailSettings> settings = readMailSettings(m_environment.folders);
    if (!settings)
        return fail(settings.reason());
    m_settings = *settings;
    const Result<std::vector<Counsellor>> active = readCounsellors(db);
    if (!active)
        return fail(active.reason());
    const Result<std::vector<PatientCounsellor>> counsellorOf = readPatientCounsellors(db, rows);
    if (!counsellorOf)
        return fail(counsellorOf.reason());
    MailPlan plan = planMails(*active, *counsellorOf, rows);
    m_choice.load(std::move(plan.recipients));
    m_unreached = std::move(plan.unreached);
    showUnreached();
    m_ui->ssSoudan->fitColumns();
    m_ui->ssSoudan->setFocus();
    showPreview();
    return 0;
}

bool frmMailSend::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_ui->ssSoudan && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const QModelIndex current = m_ui->ssSoudan->currentIndex();
        if (key == Qt::Key_Space && current.isValid()) {
            m_choice.toggle(current.row());
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_ui->cmdSend->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmMailSend::showState() {
    m_ui->lblKensu->setText(
        u"送信先 %L1 件　利用者 %L2 名"_s.arg(m_choice.ticked().size()).arg(m_choice.tickedPatients()));
}

void frmMailSend::showPreview() {
    const QModelIndex current = m_ui->ssSoudan->currentIndex();
    if (!current.isValid() || m_choice.recipient(current.row()).rows.empty()) {
        m_ui->txtPreview->clear();
        return;
    }
    const MailRecipient &to = m_choice.recipient(current.row());
    m_ui->txtPreview->setPlainText(u"差出人：%1 <%2>\n宛先：%3 <%4>\n件名：%5\n\n"_s.arg(
                                       m_settings.senderName, m_settings.senderAddress,
                                       onOneLine(to.counsellor.cName), to.counsellor.cMail1.trimmed(),
                                       m_settings.subject + noticeSubjectEnd(m_environment.clock.today())) +
                                   noticeBody(to.rows));
}

void frmMailSend::showUnreached() {
    constexpr qsizetype named = 8;
    const qsizetype rest = m_unreached.size() - named;
    m_ui->lblUnreached->setVisible(!m_unreached.isEmpty());
    m_ui->lblUnreached->setText(whyUnreached + m_unreached.mid(0, named).join(u"、"_s) +
                                (rest > 0 ? u" ほか %1 名"_s.arg(rest) : QString()));
    m_ui->lblUnreached->setToolTip(m_unreached.join(u'\n'));
}

// All of them: the question scrolls.
QString frmMailSend::notReached() const {
    return m_unreached.isEmpty() ? QString()
                                 : whyUnreached + u"\r\n"_s + m_unreached.join(u"\r\n"_s) + u"\r\n\r\n"_s;
}

void frmMailSend::send() {
    if (m_choice.ticked().empty()) {
        m_environment.messages.note(u"対象相談員を選択してください。"_s);
        m_ui->ssSoudan->setFocus();
        return;
    }
    const int told = m_choice.tickedToldBefore();
    const QString again =
        told == 0 ? QString() : u"以前に送信済の利用者が %1 名含まれています。\r\n"_s.arg(told);
    if (m_environment.messages.ask(
            notReached() +
                u"相談員 %1 名に、利用者 %2 名の同意書のお知らせを送信します。\r\n%3よろしいですか？"_s
                    .arg(m_choice.ticked().size())
                    .arg(m_choice.tickedPatients())
                    .arg(again),
            u"メール送信"_s))
        sendTicked();
}

void frmMailSend::sendTicked() {
    frmSending form(m_environment, this);
    if (form.Init(*m_claims, m_settings, m_choice.ticked()) != 0) {
        m_environment.messages.failIn(form.sErrMsg(), u"Init()でエラー");
        return;
    }
    form.exec();
    m_rowsChanged = m_rowsChanged || std::ranges::any_of(form.results(), &MailResult::rowsChanged);
    m_choice.takeResults(form.results());
    if (m_choice.ticked().empty())
        accept();
    m_ui->ssSoudan->goTo(m_choice.firstRow(), MailChoice::Tick);
}
