#include "consent/screens/consent_list_form.h"

#include "app/base/clock.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "app/base/settings.h"
#include "consent/list/list_filter_panel.h"
#include "consent/list/list_grid.h"
#include "consent/list/list_order_form.h"
#include "consent/list/list_renewal.h"
#include "consent/list/list_renewal_form.h"
#include "consent/rules/list_advisor.h"
#include "consent/screens/list_command_bar.h"
#include "consent/screens/list_pick_lists.h"
#include "consent/screens/list_print.h"
#include "consent/settings/columns_form.h"
#include "consent/settings/staff_filter_form.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "print/grid_print/grid_print.h"
#include "widgets/enter_moves_on.h"
#include "widgets/version_form.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int idle = 50; // milliseconds

} // namespace

struct frm同意書管理::Parts {
    Parts(Environment &environment, cT_ADODB &db, ConsentListModel &model,
          std::function<void()> mastersChanged)
        : advisor(environment.folders, environment.branch, db),
          list(environment, db, model, advisor),
          pickLists(db, environment, std::move(mastersChanged)) {}

    ListAdvisor advisor;
    ConsentList list;
    PickLists pickLists;
};

frm同意書管理::frm同意書管理(Environment &environment, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_model(new PaintedListModel(this)),
      m_idle(new QTimer(this)) {
    setObjectName(u"frm同意書管理"_s);
    setWindowTitle(u"同意書管理"_s);
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
                   Qt::WindowCloseButtonHint);
    layOut();
    wire();
}

frm同意書管理::~frm同意書管理() = default;

void frm同意書管理::layOut() {
    m_panel = new ListFilterPanel(this);
    m_grid = new ListGrid(m_environment.folders, m_environment.clock.today(), this);
    m_grid->attach(m_model);
    m_commands = new ListCommandBar(this);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"pctKeika"_s);
    m_progress->setVisible(false);
    m_status = new QLabel(this);
    m_status->setObjectName(u"lblStatus"_s);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_panel);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_commands);
    layout->setMenuBar(m_commands->menuBar());
    auto *foot = new QHBoxLayout;
    foot->addWidget(m_status, 1);
    foot->addWidget(m_progress);
    layout->addLayout(foot);
    new EnterMovesOn(m_panel);
    resize(m_grid->widthOf(190), fontMetrics().height() * 42);
}

void frm同意書管理::wire() {
    connect(m_commands, &ListCommandBar::triggered, this,
            [this](const ListCommand &command) { run(command); });
    connect(m_model, &ConsentListModel::stateChanged, this, [this] { showState(); });
    connect(m_panel, &ListFilterPanel::narrowed, this, [this] {
        m_grid->keepPlace([this] { m_model->narrow(m_panel->narrowName(), m_panel->narrowKana()); });
    });
    connect(m_panel, &ListFilterPanel::searchAsked, this, [this] { search(); });
    connect(m_panel, &ListFilterPanel::clearAsked, this, [this] { clearFilter(); });
    connect(m_panel, &ListFilterPanel::patientChosen, this, [this](qint32 patient) { jumpTo(patient); });
    connect(m_model, &ConsentListModel::lettersWanted, this, [this] { readAllLetters(); });
    connect(m_model, &ConsentListModel::loaded, this, [this] {
        m_idle->start(idle);
        QTimer::singleShot(0, m_model, [model = m_model] { model->prepareNarrowing(); });
    });
    connect(m_idle, &QTimer::timeout, this, [this] { readLettersLater(); });
    connect(m_grid, &ListGrid::buttonPressed, this, [this] { pressButton(); });
    connect(m_grid, &ListGrid::rejected, this, [this] { sayNoDate(); });
    connect(m_model, &ConsentListModel::troubled, this, [this](const QString &why) { failDb(why); });
}

void frm同意書管理::sayNoDate() {
    m_environment.messages.warn(
        u"日付ではありません。2026/11/21、20261121、R8.11.21 のように入力してください。"_s);
}

// A command goes by what the cells hold; one that is being typed and is no date stops it.
bool frm同意書管理::settleCell() {
    if (m_grid->commitEditor())
        return true;
    sayNoDate();
    return false;
}

short frm同意書管理::iInit(cT_ADODB &db, short) {
    m_db = &db;
    m_parts = std::make_unique<Parts>(m_environment, db, *m_model, [this] { reread(); });
    if (const QString reason = takeMethods(); !reason.isEmpty())
        m_environment.messages.failIn(reason, u"iInit()でエラー");
    m_panel->setSearches(m_parts->pickLists.searches(m_environment.messages), m_environment.messages);

    const Settings settings(m_environment.folders);
    ListFilter &filter = m_parts->list.filter();
    filter.order = listOrderOf(settings.number(Setting::一覧並び順));
    filter.patientOrder = patientOrderOf(settings.number(Setting::利用者並び順));
    readLinks();
    m_panel->clear(filter.from, filter.to);
    if (m_parts->list.iSearch() != 0) {
        m_error = m_parts->list.sErrMsg();
        return -1;
    }
    readColumns();
    m_grid->goTo(0, int(ListColumn::Target));
    m_grid->setFocus();
    return 0;
}

// What cannot be read is told once, until it could be read again.
void frm同意書管理::readLinks() {
    const Settings settings(m_environment.folders);
    LinkOptions &links = m_parts->advisor.links;
    const Result<> read = settings.readable(Setting::祝日考慮);
    if (!read && links.unread.isEmpty())
        m_environment.messages.failIn(read.reason(), u"dataLoadRiyousha()でエラー");
    links.unread = read.reason();
    for (const ListCommand &command : listCommands())
        if (const auto *link = std::get_if<ListLink>(&command.does)) {
            links.*link->flag = settings.isOn(link->setting);
            m_commands->action(command)->setChecked(links.*link->flag);
        }
}

// Settings that cannot be read leave the columns as at first.
void frm同意書管理::readColumns() {
    const Result<ColumnSettings> columns = readColumnSettings(m_environment.folders);
    if (!columns)
        m_environment.messages.failIn(columns.reason(), u"dataLoadRiyousha()でエラー");
    m_grid->showColumns(columns ? *columns : ColumnSettings::first());
}

QString frm同意書管理::takeMethods() {
    const Result<RequestMethods> methods = readRequestMethods(m_environment.folders);
    if (methods) {
        m_parts->list.setMethods(*methods);
        m_grid->setMethods(*methods);
    }
    return methods.reason();
}

void frm同意書管理::run(const ListCommand &command) {
    if (!settleCell())
        return;
    if (command.needsRow() && !m_grid->currentIndex().isValid())
        m_environment.messages.warn(u"対象者が設定されていません。"_s);
    else if (const auto *work = std::get_if<ListCommand::Work>(&command.does))
        (this->**work)();
    else if (const auto *opener = std::get_if<OpenScreen>(&command.does))
        openScreen(*opener);
    else if (const auto *link = std::get_if<ListLink>(&command.does))
        toggleLink(command, *link);
}

// The cell's button opens what the command opens for the current row.
void frm同意書管理::pressButton() {
    if (settleCell())
        openScreen(openRequestMethods);
}

QString frm同意書管理::countsText() const {
    const int shown = m_model->rowCount();
    const int all = m_model->records().count();
    const QString rows = shown == all ? u"%L1 件"_s.arg(all) : u"%L1 / %L2 件"_s.arg(shown).arg(all);
    return u"表示 %1　対象 %L2 件　受領 %L3 件"_s.arg(rows)
        .arg(m_model->targetRecords().size())
        .arg(m_model->receivedRecords().size());
}

void frm同意書管理::showState() {
    m_panel->showCounts(countsText());
    const int changed = m_model->changedCount();
    m_status->setText(changed == 0 ? QString() : u"変更 %L1 行（未保存） — F5 で保存します"_s.arg(changed));
}

// A block at a time, and never while another piece of work holds the connection.
void frm同意書管理::readLettersLater() {
    constexpr size_t block = 500;
    const QWidget *modal = QApplication::activeModalWidget();
    if (!isVisible() || (modal && modal != this) || !m_db->isConnected())
        return;
    if (m_model->recordsWithoutLetter(1).empty()) {
        m_idle->stop();
    } else if (m_parts->list.iReadLetters(block) != 0) {
        m_idle->stop();
        failDb(u"同意依頼書種別を読み込めませんでした。再読込（Shift+F4）をしてください。"_s +
               m_parts->list.sErrMsg());
    }
}

bool frm同意書管理::readAllLetters() {
    if (m_parts->list.iReadLetters(size_t(m_model->records().count())) == 0)
        return true;
    m_idle->stop();
    failDb(m_parts->list.sErrMsg());
    return false;
}

void frm同意書管理::failDb(const QString &reason) {
    m_environment.messages.fail(reason, u"DB-error"_s);
}

bool frm同意書管理::search() {
    ListFilter filter = m_parts->list.filter();
    if (!m_panel->read(filter))
        return false;
    if (const QString why = whyRangeIsWrong(filter); !why.isEmpty()) {
        m_environment.messages.warn(why);
        m_panel->focusRange();
        return false;
    }
    if (!maySwitch())
        return false;
    m_parts->list.filter() = filter;
    bool read = false;
    m_grid->keepPlace([&] { read = m_parts->list.iSearch() == 0; });
    if (!read) {
        failDb(m_parts->list.sErrMsg());
        return false;
    }
    m_commands->showView(filter.view == ListView::Newest);
    m_grid->setFocus();
    return true;
}

void frm同意書管理::clearFilter() {
    if (!maySwitch())
        return;
    ListFilter fresh;
    fresh.setDefaultRange(m_environment.clock.today());
    m_panel->clear(fresh.from, fresh.to);
    search();
}

void frm同意書管理::reread() {
    // Methods that cannot be read now stay as they are.
    if (const QString reason = takeMethods(); !reason.isEmpty())
        m_environment.messages.failIn(reason, u"dataLoadRiyousha()でエラー");
    if (!m_parts->advisor.links.unread.isEmpty())
        readLinks();
    QStringList dropped;
    bool read = false;
    m_grid->keepPlace([&] { read = m_parts->list.iReread(&dropped) == 0; });
    if (!read)
        failDb(m_parts->list.sErrMsg());
    tellDropped(dropped);
}

void frm同意書管理::tellDropped(const QStringList &rows) {
    if (!rows.isEmpty())
        m_environment.messages.warn(
            u"次の行は他の端末で変更されたため、最新の内容に置き換えました。必要な変更を入力しなおしてください。\r\n\r\n"_s +
            rows.join(u"\r\n"));
}

// A row that is narrowed away is shown again, and so is a hidden column: it is to be mended.
void frm同意書管理::showRow(int record, ListColumn column) {
    m_grid->setColumnHidden(int(column), false);
    if (m_model->rowOfRecord(record) < 0)
        m_panel->clearNarrowing();
    m_grid->goTo(m_model->rowOfRecord(record), int(column));
}

bool frm同意書管理::save() {
    SaveOutcome outcome;
    m_grid->keepPlace([&] { outcome = m_parts->list.save(); });
    switch (outcome.kind) {
    case SaveOutcome::Saved:
        if (!outcome.text.isEmpty())
            failDb(u"保存しました。ただし、一覧を読み直せませんでした。再読込（Shift+F4）をしてください。"_s +
                   outcome.text);
        return true;
    case SaveOutcome::Wrong:
        m_environment.messages.warn(outcome.text);
        showRow(outcome.record, ListColumn::NextEnd);
        return false;
    case SaveOutcome::Failed:
        failDb(outcome.text);
        return false;
    case SaveOutcome::Conflict:
        break;
    }
    if (m_environment.messages.ask(
            u"次の行は、読み込んだ後に他の端末で変更されたため、保存できませんでした。"
            "何も保存されていません。\r\n\r\n"_s +
            outcome.rows.join(u"\r\n") +
            u"\r\n\r\n他の変更を残したまま、最新の内容を読み直します。よろしいですか？"_s))
        reread();
    return false;
}

void frm同意書管理::saveAsked() {
    if (!m_model->hasChanges()) {
        m_environment.messages.inform(u"変更された行はありません。"_s);
        return;
    }
    if (m_environment.messages.ask(u"変更分を更新します。よろしいですか？"_s))
        save();
}

// Whether the rows may be replaced or left: unsaved edits are saved or dropped as the user says.
bool frm同意書管理::maySwitch() {
    if (!m_model->hasChanges())
        return true;
    const Answer answer = m_environment.messages.askToSave();
    if (answer == Answer::No)
        m_model->dropChanges();
    return answer == Answer::No || (answer == Answer::Yes && save());
}

void frm同意書管理::tickAll(ListColumn column) {
    m_model->tickAll(column, !m_model->allTicked(column));
}

// The rows that are shown come in the order chosen, whatever stands in the filter's controls by now.
void frm同意書管理::chooseOrder() {
    const ListFilter &shown = m_parts->list.readFilter();
    ListOrderForm form(shown.order, shown.patientOrder, this);
    if (form.exec() != QDialog::Accepted)
        return;
    if (form.order() != shown.order || form.patientOrder() != shown.patientOrder) {
        QStringList dropped;
        bool read = false;
        m_grid->keepPlace(
            [&] { read = m_parts->list.iReorder(form.order(), form.patientOrder(), &dropped) == 0; });
        if (!read) {
            failDb(m_parts->list.sErrMsg());
            return;
        }
        tellDropped(dropped);
        Settings settings(m_environment.folders);
        if (settings.iWrite(Setting::一覧並び順, int(form.order())) != 0 ||
            settings.iWrite(Setting::利用者並び順, int(form.patientOrder())) != 0)
            m_environment.messages.failIn(settings.sErrMsg(), u"cmdDspOrder_Click()でエラー");
    }
    m_grid->sortByColumn(-1, Qt::AscendingOrder);
}

// The practice's choice takes the place of this user's own widths and order.
void frm同意書管理::chooseColumns() {
    const std::optional<ColumnSettings> chosen = ::chooseColumns(m_environment, m_grid->columns(), this);
    if (!chosen)
        return;
    m_grid->forgetColumns();
    m_grid->keepPlace([&] { m_grid->showColumns(*chosen); });
}

// A search that does not happen leaves the practitioners as they were.
void frm同意書管理::chooseStaff() {
    const std::vector<CodeName> before = m_panel->staff();
    const bool inOrder = m_panel->staffInOrder();
    frmTantouExtra form(m_environment, *m_db, this);
    form.iControlInit(before, inOrder);
    if (form.exec() != QDialog::Accepted)
        return;
    m_panel->setStaff(form.staff(), form.inOrder());
    if (!search())
        m_panel->setStaff(before, inOrder);
}

// A jump that does not happen leaves range and patient as they were.
void frm同意書管理::jumpTo(qint32 patient) {
    if (patient == 0)
        return;
    QString warning;
    ListFilter before = m_parts->list.filter();
    m_panel->readRange(before.from, before.to);
    ListFilter filter = before;
    if (m_parts->list.iJumpTo(patient, filter, &warning) != 0) {
        failDb(m_parts->list.sErrMsg());
        m_panel->takeBackPatient();
        return;
    }
    if (!warning.isEmpty()) {
        m_environment.messages.warn(warning);
        m_panel->takeBackPatient();
        return;
    }
    m_panel->setRange(filter.from, filter.to);
    if (search())
        return;
    m_panel->setRange(before.from, before.to);
    m_panel->takeBackPatient();
}

// As it is shown, unsaved edits included; the kinds of letters may not have been read yet.
void frm同意書管理::saveCsv() {
    if (readAllLetters())
        saveTable(m_environment, tableOf(*m_grid), u"同意書一覧"_s, this);
}

void frm同意書管理::printList() {
    if (readAllLetters())
        printGrid(m_environment, listDocument(*m_grid, *m_panel, m_parts->list.readFilter(), countsText()));
}

void frm同意書管理::startSeal() {
    startSibling(m_environment, u"Dovrinシール.exe"_s);
}

void frm同意書管理::showHelp() {
    m_environment.messages.inform(listHelp(), u"一覧の見かた"_s);
}

void frm同意書管理::showVersion() {
    frmVer(programVersion(m_environment.folders), this).exec();
}

// The screens write rows of their own: what the list holds unsaved is settled before.
void frm同意書管理::openScreen(OpenScreen opener) {
    if (!maySwitch())
        return;
    ListOpening opening{m_environment, *m_db, {}, 0, {}, this};
    opening.filters = m_parts->list.readFilter().names;
    opening.staff = m_parts->list.readFilter().staffAmong;
    opening.shown = [this] { return m_model->rows(m_model->shownRecords()); };
    if (m_parts->list.readFilter().view == ListView::Newest) {
        opening.targets = m_model->rows(m_model->targetRecords());
        opening.targetsOutOfSight = m_model->targetsOutOfSight();
    }
    if (const QModelIndex current = m_grid->currentIndex(); current.isValid()) {
        const int record = m_model->recordOfRow(current.row());
        opening.current.emplace(m_model->row(record));
        opening.seen = m_model->seenRow(record);
    }
    if (opener(opening))
        reread();
}

void frm同意書管理::toggleLink(const ListCommand &command, const ListLink &link) {
    QAction *entry = m_commands->action(command);
    const bool on = entry->isChecked();
    Settings settings(m_environment.folders);
    if (settings.iSwitch(link.setting, on) == 0) {
        m_parts->advisor.links.*link.flag = on;
        if (!m_parts->advisor.links.unread.isEmpty())
            readLinks();
        return;
    }
    m_environment.messages.failIn(settings.sErrMsg(), command.name() + u"_Click()でエラー"_s);
    entry->setChecked(!on);
}

void frm同意書管理::reject() {
    if (!settleCell() || !maySwitch())
        return;
    if (const Result<> kept = m_grid->keepColumns(); !kept)
        m_environment.messages.failIn(kept.reason(), u"cmdEnd()でエラー");
    QDialog::reject();
}

void frm同意書管理::renew() {
    const std::vector<ConsentRowKey> targets = m_model->targetKeys();
    const std::optional<QList<RenewalResult>> results =
        renewReceived({m_environment, *m_db, *m_model, m_parts->list.readFilter().from,
                       [this] { return save(); }, *m_progress, this});
    if (!results)
        return;
    reread();
    m_model->tickTargets(renewedKeys(*results, targets));
}
