#include "print/management/management_print_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "archive/sent_run.h"
#include "print/batch/print_messages.h"
#include "print/ledger/ledger.h"
#include "print/management/management_ledger.h"
#include "print/renewal_list/renewal_list_form.h"
#include "ui_management_print_form.h"
#include "widgets/enter_moves_on.h"

#include <QButtonGroup>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Numbers the group's buttons as their names end, from `first` on.
void number(QButtonGroup *group, int first) {
    for (int i = 0; i < group->buttons().size(); ++i)
        group->setId(group->buttons()[i], first + i);
}

std::vector<qint32> patientsOf(const std::vector<ManagementRow> &rows) {
    std::vector<qint32> patients;
    for (const ManagementRow &row : rows)
        patients.push_back(row.key.patient.nIDNo);
    return patients;
}

/// The rows with their marks as they are by now, which this screen's own letters set, too; all consents of a
/// picked patient. Rows that are followed or gone stay as they were, for the letters to name or to take them.
/// @param without gains the patients who have none
std::vector<ManagementRow> rowsNow(const std::vector<ManagementRow> &chosen, const NewestRows &newest,
                                   QStringList &without) {
    std::vector<ManagementRow> rows;
    for (const ManagementRow &row : chosen) {
        const std::vector<ManagementRow> consents = newest.value(row.key.patient.nIDNo);
        if (row.key.nDate != 0) {
            const auto now = std::ranges::find(consents, row.key, &ManagementRow::key);
            rows.push_back(now == consents.end() ? row : *now);
        } else if (consents.empty()) {
            without += row.who;
        } else {
            rows.insert(rows.end(), consents.begin(), consents.end());
        }
    }
    return rows;
}

} // namespace

ManagementPrintForm::ManagementPrintForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_ui(std::make_unique<Ui::ManagementPrintForm>()) {
    m_ui->setupUi(this);
    number(m_ui->OptPrintMode, int(ManagementMode::Ledger));
    number(m_ui->optDestination, 0);
    setClock(*this, environment.clock);
}

ManagementPrintForm::~ManagementPrintForm() = default;

void ManagementPrintForm::addChoice(QWidget *choice) {
    setTabOrder(m_lastChoice ? m_lastChoice : m_ui->imD_KikanTo, choice);
    m_ui->layTaisyo->addWidget(choice);
    m_lastChoice = choice;
}

void ManagementPrintForm::init(PutOutLetters letters) {
    m_letters = std::move(letters);
    if (const Result<> read = m_settings.read(m_environment.folders); !read)
        m_environment.messages.fail(u"印刷条件の取得に失敗しました。\r\n"_s + read.reason());
    m_ui->OptPrintMode->button(int(m_settings.mode))->setChecked(true);
    m_ui->OptPrintMode->button(int(m_settings.mode))->setFocus();
    m_ui->optDestination->button(int(m_settings.destination))->setChecked(true);
    wire();
    new EnterMovesOn(this);
    showMode();
}

void ManagementPrintForm::wire() {
    connect(m_ui->OptPrintMode, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on)
            showMode();
    });
    connect(m_ui->optDestination, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on)
            showMode();
    });
    connect(m_ui->cmbPattern, &QComboBox::activated, this, [this](int pattern) {
        if (mode() == ManagementMode::Ledger)
            m_settings.ledger = LedgerPattern(pattern);
        else
            m_settings.envelope = EnvelopeSize(pattern);
    });
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, [this] { print(PrintWay::Preview); });
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, [this] { print(PrintWay::Print); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, &QDialog::reject);
}

ManagementMode ManagementPrintForm::mode() const {
    return ManagementMode(m_ui->OptPrintMode->checkedId());
}

EnvelopeDestination ManagementPrintForm::destination() const {
    return EnvelopeDestination(m_ui->optDestination->checkedId());
}

void ManagementPrintForm::showMode() {
    const bool isLedger = mode() == ManagementMode::Ledger;
    const bool isEnvelope = mode() == ManagementMode::Envelope;
    QComboBox *patterns = m_ui->cmbPattern;
    patterns->clear();
    if (isLedger)
        for (int i = 0; i < ledgerPatterns; ++i)
            patterns->addItem(ledgerPatternName(LedgerPattern(i)));
    if (isEnvelope)
        patterns->addItems({u"長形3号"_s, u"角形2号"_s});
    patterns->setCurrentIndex(isLedger ? int(m_settings.ledger) : isEnvelope ? int(m_settings.envelope) : -1);
    patterns->setEnabled(isLedger || isEnvelope);
    m_ui->boxDestination->setEnabled(isEnvelope);
    m_ui->imD_KikanFrom->setEnabled(isLedger);
    m_ui->imD_KikanTo->setEnabled(isLedger);
    modeChanged();
    showState();
}

void ManagementPrintForm::showState() {
    const QString more = note();
    m_ui->lblState->setText(u"対象 %L1 件"_s.arg(targets().size()) +
                            (more.isEmpty() ? QString() : u"　"_s + more));
}

bool ManagementPrintForm::settle() {
    if (!settleTargets())
        return false;
    if (mode() != ManagementMode::Ledger)
        return true;
    DateBox *wrong = nullptr;
    for (DateBox *box : {m_ui->imD_KikanTo, m_ui->imD_KikanFrom})
        if (!box->settle())
            wrong = box;
    const QDate from = m_ui->imD_KikanFrom->date();
    const QDate to = m_ui->imD_KikanTo->date();
    if (!wrong && from.isValid() && to.isValid() && from > to)
        wrong = m_ui->imD_KikanFrom;
    if (wrong) {
        m_environment.messages.warn(u"施術期間を正しく設定してください。"_s);
        wrong->setFocus();
    }
    return !wrong;
}

void ManagementPrintForm::print(PrintWay way) {
    if (!settle())
        return;
    m_settings.mode = mode();
    m_settings.destination = destination();
    // Choices that cannot be kept are no reason not to print.
    if (const Result<> kept = m_settings.write(m_environment.folders); !kept)
        m_environment.messages.failIn(kept.reason(), u"cmdPrint_Click()でエラー");
    switch (mode()) {
    case ManagementMode::Ledger:
    case ManagementMode::Envelope:
        return printDocument(way);
    case ManagementMode::Letter:
        return printLetters(way);
    case ManagementMode::RenewalList:
        return openRenewalList();
    }
}

void ManagementPrintForm::printDocument(PrintWay way) {
    Messages &messages = m_environment.messages;
    const Result<ManagementDocument> document = mode() == ManagementMode::Ledger ? ledger() : envelopes();
    if (!document) {
        messages.fail(document.reason(), u"DB-error"_s);
        return;
    }
    if (!mayPutOut(*document, way))
        return;
    SentRun sent(m_environment, m_db, mode() == ManagementMode::Ledger ? u"台帳印刷"_s : u"封筒印刷"_s);
    if (const Result<> done = output(*document, way, way == PrintWay::Print ? &sent : nullptr); !done) {
        messages.show(printFailed(done.reason()));
        return;
    }
    m_ui->lblState->setText(putOutText(document->count, way) +
                            sent.finish(document->rows, document->documents));
}

bool ManagementPrintForm::mayPutOut(const ManagementDocument &document, PrintWay way) {
    Messages &messages = m_environment.messages;
    if (const std::optional<Message> refusal = document.refusal(m_environment)) {
        messages.show(*refusal);
        return false;
    }
    const QString question = document.question(m_environment, way);
    return question.isEmpty() || messages.ask(question, windowTitle());
}

short ManagementPrintForm::saveCSVdoui(const ManagementDocument &document, cls_WfdPrintExe &engine) const {
    return engine.iWriteData(1, document.dataName, document.data);
}

Result<> ManagementPrintForm::output(const ManagementDocument &document, PrintWay way,
                                     HandedDocuments *sent) const {
    cls_WfdPrintExe engine(m_environment, sent);
    engine.iInit(document.layoutPath(m_environment), u"同意書印刷"_s);
    for (const FixedItem &fixed : document.fixed)
        engine.iSetItemValue(fixed.section, {}, fixed.item, fixed.value);
    if (saveCSVdoui(document, engine) == 0 && engine.iPutOut(way) == 0)
        return {};
    return Failure{engine.sErrMsg()};
}

Result<ManagementDocument> ManagementPrintForm::ledger() const {
    LedgerOrder order;
    order.pattern = m_settings.ledger;
    order.period = {m_ui->imD_KikanFrom->date(), m_ui->imD_KikanTo->date()};
    order.searchName = searchName();
    order.staff = staff();
    return ledgerDocument(m_environment, m_db, {targets(), fromMasters()}, std::move(order));
}

Result<ManagementDocument> ManagementPrintForm::envelopes() {
    const Result<EnvelopeWishes> found = wishes(destination());
    if (!found)
        return Failure{found.reason()};
    return envelopeDocument(*found, destination(), m_settings.envelope);
}

// Nothing where there are none, which has been said, or the user stops.
std::optional<std::vector<ManagementRow>> ManagementPrintForm::letterRows() {
    Messages &messages = m_environment.messages;
    const std::vector<ManagementRow> chosen = targets();
    const Result<NewestRows> newest = readNewestRows(m_environment, m_db, patientsOf(chosen));
    if (!newest) {
        messages.fail(newest.reason(), u"DB-error"_s);
        return {};
    }
    QStringList without;
    const std::vector<ManagementRow> rows = rowsNow(chosen, *newest, without);
    if (without.isEmpty())
        return rows;
    QString text;
    addMessagePart(text, u"同意の記録がないため、依頼書を出力できない利用者："_s, without);
    if (rows.empty()) {
        messages.warn(u"該当する同意依頼書データがありません。\r\n\r\n"_s + text);
        return {};
    }
    if (!messages.ask(text + u"\r\n\r\nこの利用者を除いて出力します。よろしいですか？"_s, windowTitle()))
        return {};
    return rows;
}

void ManagementPrintForm::printLetters(PrintWay way) {
    const std::optional<std::vector<ManagementRow>> rows = letterRows();
    if (!rows)
        return;
    if (const QString outcome = m_letters(*rows, way, this); !outcome.isEmpty())
        m_ui->lblState->setText(outcome);
}

void ManagementPrintForm::openRenewalList() {
    frm同意書更新リスト印刷 form(m_environment, this);
    if (form.Init(m_db, patientsOf(targets()), note(), staff()) == 0)
        form.exec();
}

frm同意書管理印刷::frm同意書管理印刷(Environment &environment, cT_ADODB &db, QWidget *parent)
    : ManagementPrintForm(environment, db, parent),
      m_ticked(new QRadioButton(this)),
      m_shown(new QRadioButton(this)) {
    setObjectName(u"frm同意書管理印刷"_s);
    setWindowTitle(u"同意書管理印刷"_s);
    m_ticked->setObjectName(u"optSelKanja_0"_s);
    m_shown->setObjectName(u"optSelKanja_1"_s);
    for (QRadioButton *button : {m_ticked, m_shown}) {
        addChoice(button);
        connect(button, &QRadioButton::toggled, this, [this] { showState(); });
    }
}

short frm同意書管理印刷::iInit(ManagementChoice choice, PutOutLetters letters) {
    if (choice.shown.empty()) {
        m_error = nothingToPrint().text;
        return -1;
    }
    m_choice = std::move(choice);
    m_ticked->setText(u"「対象」にチェックした行（%L1 件）(&1)"_s.arg(m_choice.ticked.size()));
    m_shown->setText(u"表示中のすべての行（%L1 件）(&2)"_s.arg(m_choice.shown.size()));
    m_ticked->setEnabled(!m_choice.ticked.empty());
    (m_choice.ticked.empty() ? m_shown : m_ticked)->setChecked(true);
    init(std::move(letters));
    return 0;
}

std::vector<ManagementRow> frm同意書管理印刷::targets() const {
    return m_ticked->isChecked() ? m_choice.ticked : m_choice.shown;
}

Result<EnvelopeWishes> frm同意書管理印刷::wishes(EnvelopeDestination destination) {
    return readWishes(environment(), db(), destination, targets());
}

QString frm同意書管理印刷::note() const {
    return m_choice.tickedOutOfSight == 0 || !m_ticked->isChecked()
               ? QString()
               : u"絞り込みで表示していない対象 %L1 件は含みません。"_s.arg(m_choice.tickedOutOfSight);
}
