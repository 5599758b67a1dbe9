#include "print/renewal_list/renewal_list_form.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "archive/sent_run.h"
#include "print/batch/print_messages.h"
#include "print/documents/lost_texts.h"
#include "print/renewal_list/renewal_query.h"
#include "ui_renewal_list_form.h"
#include "widgets/enter_moves_on.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Choice> Choice chosenOf(const QComboBox &box) {
    return Choice(box.currentIndex());
}

} // namespace

frm同意書更新リスト印刷::frm同意書更新リスト印刷(Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::RenewalListForm>()) {
    m_ui->setupUi(this);
    m_ui->imD_Tsuki->setUnit(DateBox::Unit::Month);
    m_ui->imD_Tsuki->setClock(environment.clock);
    wire();
    new EnterMovesOn(this);
    resize(fontMetrics().horizontalAdvance(u'国') * 34, sizeHint().height());
}

frm同意書更新リスト印刷::~frm同意書更新リスト印刷() = default;

void frm同意書更新リスト印刷::wire() {
    connect(m_ui->imD_Tsuki, &QLineEdit::textChanged, this, [this] { showMonth(); });
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, [this] { print(PrintWay::Preview); });
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, [this] { print(PrintWay::Print); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

short frm同意書更新リスト印刷::Init(cT_ADODB &db, const std::vector<qint32> &patients, const QString &note,
                                    const std::vector<qint32> &staff) {
    m_db = &db;
    m_staff = staff;
    m_patients = {patients.begin(), patients.end()};
    m_ui->lblTaisyo->setText((u"対象の利用者 %L1 人　"_s.arg(m_patients.size()) + note).trimmed());
    RenewalListOptions options;
    if (const Result<> read = options.read(m_environment.folders); !read)
        m_environment.messages.failIn(read.reason(), u"Init()でエラー");
    options.month = m_environment.clock.today();
    showOptions(options);
    m_ui->imD_Tsuki->setFocus();
    m_ui->imD_Tsuki->selectAll();
    return 0;
}

void frm同意書更新リスト印刷::showOptions(const RenewalListOptions &options) {
    m_ui->cmbPattern->setCurrentIndex(int(options.pattern));
    m_ui->imD_Tsuki->setDate(options.month);
    m_ui->cmbJouken->setCurrentIndex(int(options.range));
    m_ui->cmbKaiPage->setCurrentIndex(int(options.pageBreak));
    m_ui->cmbSort->setCurrentIndex(int(options.order));
}

void frm同意書更新リスト印刷::showMonth() {
    m_ui->lblGengou->setText(formatDate(m_ui->imD_Tsuki->date(), u"ggge年m月"));
}

bool frm同意書更新リスト印刷::settle() {
    if (m_ui->imD_Tsuki->settle() && m_ui->imD_Tsuki->date().isValid())
        return true;
    m_environment.messages.warn(
        u"何月分かを入力してください。2026/11、202611、R8.11、令和8年11月 のように入力できます。"_s);
    m_ui->imD_Tsuki->setFocus();
    return false;
}

RenewalListOptions frm同意書更新リスト印刷::chosen() const {
    return {m_ui->imD_Tsuki->date(), chosenOf<RenewalListOptions::Pattern>(*m_ui->cmbPattern),
            chosenOf<RenewalListOptions::Range>(*m_ui->cmbJouken),
            chosenOf<RenewalListOptions::PageBreak>(*m_ui->cmbKaiPage),
            chosenOf<RenewalListOptions::Order>(*m_ui->cmbSort)};
}

// Says why there is nothing to print.
std::vector<DueConsent> frm同意書更新リスト印刷::gather(const RenewalListOptions &options) {
    Messages &messages = m_environment.messages;
    const Result<RequestMethods> methods = readRequestMethods(m_environment.folders);
    if (!methods) {
        messages.failIn(methods.reason(), u"cmdPrint_Click()でエラー");
        return {};
    }
    const Result<std::vector<DueConsent>> rows = readDueConsents(
        *m_db, {m_environment.branch, m_patients, options, m_environment.clock.today(), *methods, m_staff});
    if (!rows) {
        messages.fail(rows.reason(), u"DB-error"_s);
        return {};
    }
    if (rows->empty())
        messages.warn(u"印刷対象者が存在しません。"_s);
    return renewalLines(*rows);
}

bool frm同意書更新リスト印刷::hasLayout(const RenewalListOptions &options) {
    const QString name = options.layout();
    if (QFileInfo(Folders::file(m_environment.folders.system(), name)).isFile())
        return true;
    m_environment.messages.warn(u"同意書書更新リストフォーマットファイル（"_s + name +
                                    u"）が存在しません。\r\n処理を中止します。"_s,
                                u"ファイルエラー"_s);
    return false;
}

void frm同意書更新リスト印刷::print(PrintWay way) {
    m_ui->lblState->clear();
    if (!settle())
        return;
    Messages &messages = m_environment.messages;
    const RenewalListOptions options = chosen();
    // Choices that cannot be kept are no reason not to print.
    if (const Result<> kept = options.write(m_environment.folders); !kept)
        messages.failIn(kept.reason(), u"cmdPrint_Click()でエラー");
    const std::vector<DueConsent> lines = gather(options);
    if (lines.empty() || !hasLayout(options))
        return;
    const DataFile file = renewalData(lines, options);
    if (!mayLose(messages, replacedNote(m_environment, file.replaced()), windowTitle()))
        return;
    SentRun sent(m_environment, *m_db, u"更新リスト印刷"_s);
    if (const Result<> printed =
            printRenewalList(m_environment, file, options, way, way == PrintWay::Print ? &sent : nullptr);
        !printed)
        messages.show(printFailed(printed.reason()));
    else
        m_ui->lblState->setText(putOutText(u"更新リスト %L1 件"_s.arg(file.count()), way) +
                                sent.finish(file.count(), 1));
}
