#include "consent/screens/consent_list_form.h"

#include "app/base/clock.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "app/desktop/foot_line.h"
#include "app/desktop/key_help.h"
#include "archive/sent_run.h"
#include "consent/list/list_filter_panel.h"
#include "consent/list/list_grid.h"
#include "consent/list/state_bar.h"
#include "consent/screens/key_sheet.h"
#include "consent/screens/list_command_bar.h"
#include "consent/screens/list_pick_lists.h"
#include "consent/screens/list_print.h"
#include "consent/screens/list_work.h"
#include "consent/settings/columns_form.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "history/log_tables.h"
#include "print/grid_print/grid_print.h"
#include "widgets/date_box.h"
#include "widgets/enter_moves_on.h"
#include "widgets/version_form.h"
#include "widgets/version_text.h"
#include "widgets/window_settings.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int idle = 50; // milliseconds, after which what can wait is done

const QString foldedKey = u"consent_list/folded"_s;

} // namespace

struct frm同意書管理::Parts {
    Parts(Environment &environment, cT_ADODB &db, const ListWindow &window)
        : work(environment, db, window), pickLists(db, environment, [this] { work.reread(); }) {}

    ListWork work;
    PickLists pickLists;
};

frm同意書管理::frm同意書管理(Environment &environment, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_model(new PaintedListModel(this)),
      m_idle(new QTimer(this)) {
    setObjectName(u"frm同意書管理"_s);
    setWindowTitle(u"同意書管理"_s);
    setWhatsThis(listHelp());
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
                   Qt::WindowCloseButtonHint);
    layOut();
    wire();
}

frm同意書管理::~frm同意書管理() = default;

void frm同意書管理::layOut() {
    m_panel = new ListFilterPanel(this);
    setClock(*m_panel, m_environment.clock);
    m_grid = new ListGrid(m_environment.folders, m_environment.clock, this);
    m_grid->attach(m_model);
    m_states = new StateBar(this);
    m_commands = new ListCommandBar(this);
    placeActions();
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"pctKeika"_s);
    m_progress->setAccessibleName(u"進み"_s);
    m_progress->setVisible(false);
    m_status = new QLabel(this);
    m_status->setObjectName(u"lblStatus"_s);
    m_lapsed = new QLabel(this);
    m_lapsed->setObjectName(u"lblKigengai"_s);
    m_scope = new QLabel(this);
    m_scope->setObjectName(u"lblScope"_s);
    m_scope->setSizePolicy(QSizePolicy::Ignored,
                           QSizePolicy::Fixed); // a long one is cut, not the window widened

    auto *layout = new QVBoxLayout(this);
    constexpr int margin = 6, between = 4;
    layout->setContentsMargins(margin, between, margin, between);
    layout->setSpacing(between);
    layout->addWidget(m_panel);
    layout->addWidget(m_scope);
    layout->addWidget(m_states);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_commands);
    layout->setMenuBar(m_commands->menuBar());
    auto *foot = new QHBoxLayout;
    foot->addWidget(m_status);
    foot->addWidget(new FootLine(this), 1);
    foot->addWidget(m_lapsed);
    foot->addWidget(m_progress);
    layout->addLayout(foot);
    new EnterMovesOn(m_panel);
    fold(windowSettings().value(foldedKey).toBool());
    resize(QSize(m_grid->widthOf(190), fontMetrics().height() * 42).boundedTo(screen()->availableSize()));
}

// An action is the same in the menu and over the grid.
void frm同意書管理::placeActions() {
    for (const ListCommand &command : listCommands()) {
        if (const auto *state = std::get_if<RowState>(&command.does))
            m_states->addState(*state, m_commands->action(command));
        else if (std::holds_alternative<QuickRange>(command.does))
            m_states->addRange(m_commands->action(command));
    }
}

void frm同意書管理::wire() {
    connect(m_commands, &ListCommandBar::triggered, this,
            [this](const ListCommand &command) { run(command); });
    connect(m_model, &ConsentListModel::stateChanged, this, [this] { showState(); });
    connect(m_panel, &ListFilterPanel::sightWanted, this, [this] { fold(false); });
    connect(m_panel, &ListFilterPanel::chosen, this, [this] { work().follow().chosen(); });
    connect(m_panel, &ListFilterPanel::typed, this, [this] { work().follow().typed(); });
    connect(m_panel, &ListFilterPanel::narrowed, this,
            [this] { m_grid->narrow(m_panel->narrowName(), m_panel->narrowKana()); });
    connect(m_panel, &ListFilterPanel::listWanted, this, [this] { enterList(); });
    auto *down =
        new QShortcut(Qt::CTRL | Qt::Key_Down, m_panel, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    down->setWhatsThis(u"条件から一覧の先頭へ"_s);
    connect(down, &QShortcut::activated, this, [this] { enterList(); });
    connect(m_panel, &ListFilterPanel::searchAsked, this, [this] { work().searchAsked(); });
    connect(m_panel, &ListFilterPanel::clearAsked, this, [this] { work().clearFilter(); });
    connect(m_panel, &ListFilterPanel::patientChosen, this,
            [this](qint32 patient) { work().jumpTo(patient); });
    connect(m_model, &ConsentListModel::lettersWanted, this, [this] { readAllLetters(); });
    connect(m_model, &ConsentListModel::loaded, this, [this] {
        m_idle->start(idle);
        // The first rows are waited for; nobody types before they are seen.
        QTimer::singleShot(isVisible() ? 0 : idle, m_model, [model = m_model] { model->prepareNarrowing(); });
    });
    connect(m_idle, &QTimer::timeout, this, [this] { readLettersLater(); });
    auto *minute = new QTimer(this);
    minute->setObjectName(u"timToday"_s);
    connect(minute, &QTimer::timeout, this, [this] { m_model->setToday(m_environment.clock.today()); });
    minute->start(60'000);
    connect(m_grid->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this] { showState(); });
    connect(m_grid, &ListGrid::buttonPressed, this, [this] { pressButton(); });
    connect(m_grid, &ListGrid::rejected, this, [this] { sayNoDate(); });
    // Once the cell's editor has closed: a box in between would take the keys out of the grid.
    connect(
        m_model, &ConsentListModel::troubled, this, [this](const QString &why) { work().failDb(why); },
        Qt::QueuedConnection);
    connect(m_model, &ConsentListModel::doubted, this,
            [this](const QString &why) { m_environment.messages.note(why); });
}

void frm同意書管理::sayNoDate() {
    m_environment.messages.warn(u"日付が決まりません。%1 のように入力してください。"_s.arg(dayExamples()));
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
    m_parts = std::make_unique<Parts>(
        m_environment, db, ListWindow{this, m_model, m_panel, m_grid, m_states, m_commands, m_progress});
    work().readMethods(u"iInit()でエラー"_s);
    m_panel->setSearches(m_parts->pickLists.searches(m_environment.messages), m_environment.messages);
    if (!work().begin()) {
        m_error = work().sErrMsg();
        return -1;
    }
    readColumns();
    m_grid->goTo(0, int(ListColumn::Target));
    m_grid->setFocus();
    if (const QString news = versionNews(m_environment.folders); !news.isEmpty())
        QTimer::singleShot(idle, this, [this, news] { m_environment.messages.note(news); });
    // Asked over the window, once it is shown.
    QTimer::singleShot(0, this, [this] { work().restore(); });
    return 0;
}

ListWork &frm同意書管理::work() {
    return m_parts->work;
}

// Settings that cannot be read leave the columns as at first.
void frm同意書管理::readColumns() {
    const Result<ColumnSettings> columns = readColumnSettings(m_environment.folders);
    if (!columns)
        m_environment.messages.failIn(columns.reason(), u"dataLoadRiyousha()でエラー");
    m_grid->showColumns(columns ? *columns : ColumnSettings::first());
}

void frm同意書管理::run(const ListCommand &command) {
    // A text box has its own; unlike the key of undoing it leaves this one to the window.
    if (auto *box = qobject_cast<QLineEdit *>(focusWidget()); box && command.name() == u"mnRedo") {
        box->redo();
        return;
    }
    if (!settleCell())
        return;
    if (command.needsRow() && !m_grid->currentIndex().isValid())
        m_environment.messages.note(u"対象者が設定されていません。"_s);
    else if (command.needsRows() && !work().rowsAreCurrent())
        return;
    else if (const auto *own = std::get_if<ListCommand::Work>(&command.does))
        (this->**own)();
    else if (const auto *listWork = std::get_if<ListCommand::OnList>(&command.does))
        (work().**listWork)();
    else if (const auto *opener = std::get_if<OpenScreen>(&command.does))
        openScreen(*opener);
    else if (const auto *link = std::get_if<ListLink>(&command.does))
        work().toggleLink(command, *link);
    else if (const auto *state = std::get_if<RowState>(&command.does))
        work().showState(*state);
    else if (const auto *range = std::get_if<QuickRange>(&command.does))
        work().showRange(*range);
    if (const QString untold = untoldHistoryState(*m_db); !untold.isEmpty())
        m_environment.messages.note(untold);
}

// The cell's button opens what the command opens for the current row.
void frm同意書管理::pressButton() {
    if (settleCell())
        openScreen(openRequestMethods);
}

void frm同意書管理::showState() {
    m_panel->showCounts(work().countsText());
    m_states->showCounts(m_model->stateCounts(), m_model->shownState());
    m_lapsed->setText(work().lapsedText());
    m_scope->setText(listScope(*m_grid, *m_panel, work().readFilter()).join(u"　"_s) + u"　　"_s +
                     work().countsText());
    m_scope->setToolTip(m_scope->text());
    const int changed = m_model->changedCount();
    m_status->setText(changed > 0 ? u"変更 %L1 行（未保存） — F5 で保存します"_s.arg(changed)
                                  : orderText(*m_grid, work().readFilter()));
}

void frm同意書管理::enterList() {
    m_grid->setFocus();
    m_grid->goToFirst();
}

void frm同意書管理::sortByColumn() {
    m_grid->sortByCurrentColumn();
}

// Filter and buttons give way to one line that says what they hold; a key that leads into the filter brings
// them back.
void frm同意書管理::fold(bool folded) {
    // To show what is not hidden would lay it out before the window has its size.
    for (const auto &[part, hidden] :
         {std::pair<QWidget *, bool>(m_panel, folded), {m_commands, folded}, {m_scope, !folded}})
        if (part->isHidden() != hidden)
            part->setHidden(hidden);
}

void frm同意書管理::toggleFolded() {
    const bool folded = !m_panel->isHidden();
    fold(folded);
    if (folded)
        m_grid->setFocus();
    QSettings settings = windowSettings();
    settings.setValue(foldedKey, folded);
}

// Esc goes back from a box to the list and no further: it closes nothing and drops nothing.
void frm同意書管理::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        m_grid->setFocus();
    else if (!m_panel->isHidden() || !m_panel->goBy(event->keyCombination()))
        QDialog::keyPressEvent(event);
}

// The practice's choice takes the place of this user's own widths and order.
void frm同意書管理::chooseColumns() {
    const std::optional<ColumnSettings> chosen = ::chooseColumns(m_environment, m_grid->columns(), this);
    if (!chosen)
        return;
    m_grid->forgetColumns();
    m_grid->keepPlace([&] { m_grid->showColumns(*chosen); });
}

// A block at a time, and never while another piece of work holds the connection.
void frm同意書管理::readLettersLater() {
    const QWidget *modal = QApplication::activeModalWidget();
    if (!isVisible() || (modal && modal != this) || !m_db->isConnected())
        return;
    if (!work().readSomeLetters())
        m_idle->stop();
}

bool frm同意書管理::readAllLetters() {
    if (work().readAllLetters())
        return true;
    m_idle->stop();
    return false;
}

// As it is shown, unsaved edits included; the kinds of letters may not have been read yet.
void frm同意書管理::saveCsv() {
    if (readAllLetters())
        saveTable(m_environment, tableOf(*m_grid), u"同意書一覧"_s, this);
}

void frm同意書管理::printList() {
    if (!readAllLetters())
        return;
    const GridDocument document = listDocument(*m_grid, *m_panel, work().readFilter(), work().countsText());
    SentRun sent(m_environment, *m_db, u"一覧印刷"_s);
    if (printGrid(m_environment, document, &sent))
        noteUnkept(m_environment.messages, sent.finish(qint64(document.table.rows.size()), 1));
}

void frm同意書管理::startSeal() {
    startSibling(m_environment, u"Dovrinシール.exe"_s);
}

void frm同意書管理::showHelp() {
    KeyHelp::show(*this);
}

void frm同意書管理::printKeys() {
    printGrid(m_environment, keySheet(*this));
}

void frm同意書管理::showVersion() {
    const Folders &folders = m_environment.folders;
    const QStringList details{installationText(folders), changesText(), licenceText()};
    frmVer(programVersion(folders), details.join(u"\n\n"_s), this).exec();
}

// The screens write rows of their own: what the list holds unsaved is settled before.
void frm同意書管理::openScreen(OpenScreen opener) {
    if (!work().maySwitch())
        return;
    ListOpening opening{m_environment, *m_db, {}, 0, {}, this};
    opening.filters = work().readFilter().names;
    opening.staff = work().readFilter().staffAmong;
    opening.shown = [this] { return m_model->rows(m_model->shownRecords()); };
    if (work().readFilter().view == ListView::Newest) {
        opening.targets = m_model->rows(m_model->targetRecords());
        opening.targetsOutOfSight = m_model->targetsOutOfSight();
    }
    if (const QModelIndex current = m_grid->currentIndex(); current.isValid()) {
        const int record = m_model->recordOfRow(current.row());
        opening.current.emplace(m_model->row(record));
        opening.seen = m_model->seenRow(record);
    }
    if (opener(opening))
        work().rereadWritten();
}

void frm同意書管理::reject() {
    if (!settleCell() || !work().maySwitch())
        return;
    for (const Result<> &kept : {m_grid->keepColumns(), work().keepChoices()})
        if (!kept) {
            m_environment.messages.failIn(kept.reason(), u"cmdEnd()でエラー");
            break;
        }
    QDialog::reject();
}
