#include "consent/screens/list_work.h"

#include "app/base/clock.h"
#include "app/base/messages.h"
#include "app/base/settings.h"
#include "consent/batches/take_back_form.h"
#include "consent/list/list_filter_panel.h"
#include "consent/list/list_grid.h"
#include "consent/list/list_order_form.h"
#include "consent/list/list_renewal.h"
#include "consent/list/list_renewal_form.h"
#include "consent/screens/list_command_bar.h"
#include "consent/settings/staff_filter_form.h"
#include "db/adodb.h"
#include "masters/master_description.h"
#include "widgets/window_settings.h"

#include <QAction>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString rangeKey = u"consent_list/range"_s;
const QString stateKey = u"consent_list/state"_s;

} // namespace

ListWork::ListWork(Environment &environment, cT_ADODB &db, const ListWindow &window)
    : m_environment(environment),
      m_db(db),
      m_window(window.window),
      m_model(window.model),
      m_panel(window.panel),
      m_grid(window.grid),
      m_commands(window.commands),
      m_progress(window.progress),
      m_advisor(environment.folders, environment.branch, db),
      m_list(environment, db, *window.model, m_advisor),
      m_follow(window, m_list.readFilter(), [this](const ListFilter &filter) { return show(filter); }),
      m_recovery(environment, db, *window.model, window.window, m_list.readFilter()) {}

bool ListWork::begin() {
    readOrder(m_list.filter());
    readLinks();
    restoreChoices();
    m_panel->clear(m_list.filter().from, m_list.filter().to);
    return m_list.iSearch() == 0;
}

void ListWork::readOrder(ListFilter &filter) const {
    const Settings settings(m_environment.folders);
    filter.order = listOrderOf(settings.number(Setting::一覧並び順));
    filter.patientOrder = patientOrderOf(settings.number(Setting::利用者並び順));
}

// A range by its name, so that 今月 is this month on every day; dates that were typed are of their day.
void ListWork::restoreChoices() {
    const QSettings kept = windowSettings();
    const int range = kept.value(rangeKey).toInt(), state = kept.value(stateKey).toInt();
    if (range >= int(QuickRange::ThisMonth) && range <= int(QuickRange::SinceLastMonth))
        setQuickRange(m_list.filter(), QuickRange(range), m_environment.clock.today());
    if (state > int(RowState::All) && state < int(RowState::Count))
        m_model->showState(RowState(state));
}

Result<> ListWork::keepChoices() const {
    const std::optional<QuickRange> range = quickRangeOf(m_list.readFilter(), m_environment.clock.today());
    QSettings settings = windowSettings();
    settings.setValue(rangeKey, range ? int(*range) : 0);
    settings.setValue(stateKey, int(m_model->shownState()));
    return writeNow(settings, u"対象期間と表示の選択"_s);
}

void ListWork::readMethods(const QString &where) {
    const Result<RequestMethods> methods = readRequestMethods(m_environment.folders);
    if (methods) {
        m_list.setMethods(*methods);
        m_grid->setMethods(*methods);
        m_recovery.setMethods(*methods);
    } else {
        m_environment.messages.failIn(methods.reason(), where);
    }
}

// What cannot be read is told once, until it could be read again.
void ListWork::readLinks() {
    const bool told = !m_advisor.links.unread.isEmpty();
    m_advisor.links = keptLinks(m_environment.folders);
    const LinkOptions &links = m_advisor.links;
    if (!links.unread.isEmpty() && !told)
        m_environment.messages.failIn(links.unread, u"dataLoadRiyousha()でエラー");
    for (const ListCommand &command : listCommands())
        if (const auto *link = std::get_if<ListLink>(&command.does))
            m_commands->action(command)->setChecked(
                link->flag ? links.*link->flag
                           : isKeptHere(MasterKind::Patient, m_environment.folders, m_db));
}

void ListWork::toggleLink(const ListCommand &command, const ListLink &link) {
    QAction *entry = m_commands->action(command);
    const bool on = entry->isChecked();
    Settings settings(m_environment.folders);
    if (settings.iSwitch(link.setting, on) == 0) {
        if (link.flag)
            m_advisor.links.*link.flag = on;
        if (!m_advisor.links.unread.isEmpty())
            readLinks();
        return;
    }
    m_environment.messages.failIn(settings.sErrMsg(), command.name() + u"_Click()でエラー"_s);
    entry->setChecked(!on);
}

bool ListWork::search() {
    ListFilter filter = m_list.filter();
    return m_panel->read(filter) && searchFor(filter);
}

bool ListWork::searchFor(const ListFilter &filter) {
    if (const QString why = whyRangeIsWrong(filter); !why.isEmpty()) {
        m_environment.messages.warn(why);
        m_panel->focusRange();
        return false;
    }
    if (!maySwitch() || !show(filter))
        return false;
    m_follow.caughtUp();
    m_grid->setFocus();
    return true;
}

bool ListWork::show(const ListFilter &filter) {
    const ListFilter before = std::exchange(m_list.filter(), filter);
    m_commands->showView(filter.view == ListView::Newest);
    bool read = false;
    const std::vector<ConsentRowKey> targets = m_model->targetKeys();
    m_grid->keepPlace([&] { read = m_list.iSearch() == 0; });
    if (read) {
        m_model->tickTargets(targets);
        return true;
    }
    m_list.filter() = before;
    m_commands->showView(m_list.readFilter().view == ListView::Newest);
    failDb(m_list.sErrMsg());
    return false;
}

void ListWork::clearFilter() {
    if (!maySwitch())
        return;
    ListFilter fresh;
    fresh.setDefaultRange(m_environment.clock.today());
    m_panel->clear(fresh.from, fresh.to);
    m_model->showState(RowState::All);
    readOrder(m_list.filter());
    search();
}

// A range that is not shown leaves everything as it was. What has lapsed is the same in every range.
void ListWork::showRange(QuickRange range) {
    ListFilter typed = m_list.filter();
    m_panel->readRange(typed.from, typed.to);
    ListFilter filter = m_list.filter();
    setQuickRange(filter, range, m_environment.clock.today());
    m_panel->setRange(filter.from, filter.to);
    if (!m_panel->read(filter) || !searchFor(filter)) {
        m_panel->setRange(typed.from, typed.to);
        return;
    }
    if (m_model->shownState() == RowState::Lapsed)
        m_model->showState(RowState::All);
    if (quickRangeInfo(range).endSoonestFirst)
        m_grid->sortByColumn(-1, Qt::AscendingOrder);
    m_grid->goTo(0, qMax(0, m_grid->currentIndex().column()));
}

void ListWork::showState(RowState state) {
    m_grid->keepPlace([&] { m_model->showState(state); });
    m_grid->setFocus();
}

// A jump that does not happen leaves range and patient as they were.
void ListWork::jumpTo(qint32 patient) {
    if (patient == 0)
        return;
    QString warning;
    ListFilter before = m_list.filter();
    m_panel->readRange(before.from, before.to);
    ListFilter filter = before;
    if (m_list.iJumpTo(patient, filter, &warning) != 0) {
        failDb(m_list.sErrMsg());
        m_panel->takeBackPatient();
        return;
    }
    if (!warning.isEmpty()) {
        m_environment.messages.note(warning);
        m_panel->takeBackPatient();
        return;
    }
    m_panel->setRange(filter.from, filter.to);
    m_follow.follow();
}

// The rows that are shown come in the order chosen, whatever stands in the filter's controls by now.
void ListWork::chooseOrder() {
    const ListFilter &shown = m_list.readFilter();
    ListOrderForm form(shown.order, shown.patientOrder, m_window);
    if (form.exec() != QDialog::Accepted)
        return;
    if (form.order() != shown.order || form.patientOrder() != shown.patientOrder) {
        std::vector<TypedRow> dropped;
        bool read = false;
        m_grid->keepPlace([&] { read = m_list.iReorder(form.order(), form.patientOrder(), &dropped) == 0; });
        if (!read) {
            failDb(m_list.sErrMsg());
            return;
        }
        takeDropped(dropped);
        Settings settings(m_environment.folders);
        if (settings.iWrite(Setting::一覧並び順, int(form.order())) != 0 ||
            settings.iWrite(Setting::利用者並び順, int(form.patientOrder())) != 0)
            m_environment.messages.failIn(settings.sErrMsg(), u"cmdDspOrder_Click()でエラー");
    }
    m_grid->sortByColumn(-1, Qt::AscendingOrder);
}

// A search that does not happen leaves the practitioners as they were.
void ListWork::chooseStaff() {
    const std::vector<CodeName> before = m_panel->staff();
    const bool inOrder = m_panel->staffInOrder();
    frmTantouExtra form(m_environment, m_db, m_window);
    form.iControlInit(before, inOrder);
    if (form.exec() != QDialog::Accepted)
        return;
    m_panel->setStaff(form.staff(), form.inOrder());
    if (!search())
        m_panel->setStaff(before, inOrder);
}

void ListWork::reread() {
    // Methods that cannot be read now stay as they are.
    readMethods(u"dataLoadRiyousha()でエラー"_s);
    if (!m_advisor.links.unread.isEmpty())
        readLinks();
    std::vector<TypedRow> dropped;
    bool read = false;
    m_grid->keepPlace([&] { read = m_list.iReread(&dropped) == 0; });
    if (!read)
        failDb(m_list.sErrMsg());
    takeDropped(dropped);
}

void ListWork::rereadWritten() {
    m_model->forgetSteps();
    reread();
}

void ListWork::takeDropped(const std::vector<TypedRow> &rows) {
    if (!rows.empty())
        m_recovery.settle(rows, MergeForm::Use::Take);
}

void ListWork::restore() {
    const std::optional<ConsentRowKey> row =
        m_recovery.restore([this](const UnsavedRows &unsaved) { showRowsOf(unsaved); });
    if (row)
        showRow(recordsByRow(m_model->records()).value(rowIdentity(*row)), ListColumn::Reconsent);
}

// The rows may lie outside of the range that a start begins with.
void ListWork::showRowsOf(const UnsavedRows &unsaved) {
    ListFilter filter = m_list.filter();
    for (const TypedRow &row : unsaved.rows)
        if (const QDate end = row.read.running.period.end; end.isValid()) {
            filter.from = qMin(filter.from, QDate(end.year(), end.month(), 1));
            filter.to = qMax(filter.to, QDate(end.year(), end.month(), end.daysInMonth()));
        }
    m_panel->setRange(filter.from, filter.to);
    if (unsaved.ended)
        m_panel->showEnded();
    if (m_panel->read(filter) && show(filter))
        m_follow.caughtUp();
}

// Dates that may be a slip of the keys are asked about once for all rows.
bool ListWork::meansDates() {
    constexpr qsizetype most = 20; // lines that a message box can show
    QStringList doubts;
    int first = -1;
    if (QString wrong; m_model->firstWrong(&wrong) >= 0)
        return true; // is refused without a question
    for (const ChangedRow &row : m_model->changedRows())
        for (const QString &doubt : m_model->doubts(row.record)) {
            first = first < 0 ? row.record : first;
            doubts.append(m_model->who(row.record) + u"　"_s + doubt);
        }
    if (doubts.isEmpty())
        return true;
    const QString more = doubts.size() > most ? u"\r\n他 %L1 件"_s.arg(doubts.size() - most) : QString();
    const QString question = u"次の日付を確かめてください。\r\n\r\n"_s + doubts.mid(0, most).join(u"\r\n") +
                             more + u"\r\n\r\nこのまま保存します。よろしいですか？"_s;
    if (m_environment.messages.ask(question, u"日付の確認"_s, Answer::No))
        return true;
    showRow(first, ListColumn::Reconsent);
    return false;
}

// What the user decides about overtaken rows is compared again: somebody else may have been quicker once
// more.
bool ListWork::save(QString *done) {
    if (!meansDates())
        return false;
    SaveOutcome outcome;
    const auto saves = [&] {
        m_grid->keepPlace([&] { outcome = m_list.save(); });
        return outcome.kind != SaveOutcome::Conflict;
    };
    while (!saves()) {
        if (!m_recovery.settle(outcome.overtaken, MergeForm::Use::Save))
            return false;
        if (!m_model->hasChanges()) {
            reread();
            if (done)
                *done = u"他のＰＣの内容にしました。保存した行はありません。"_s;
            return true;
        }
    }
    if (done)
        *done = u"保存しました。"_s;
    return told(outcome);
}

bool ListWork::told(const SaveOutcome &outcome) {
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
    case SaveOutcome::Conflict:
    case SaveOutcome::Failed:
        break;
    }
    failDb(outcome.text);
    return false;
}

// A row that is narrowed away is shown again, and so is a hidden column: it is to be mended.
void ListWork::showRow(int record, ListColumn column) {
    m_grid->setColumnHidden(int(column), false);
    if (m_model->rowOfRecord(record) < 0)
        m_panel->clearNarrowing();
    for (const RowState state : {RowState::All, RowState::Lapsed})
        if (m_model->rowOfRecord(record) < 0)
            m_model->showState(state);
    m_grid->goTo(m_model->rowOfRecord(record), int(column));
}

void ListWork::saveAsked() {
    if (!m_model->hasChanges()) {
        m_environment.messages.note(u"変更された行はありません。"_s);
        return;
    }
    QString done;
    if (m_environment.messages.ask(
            u"変更分を更新します。よろしいですか？\r\n変更 %L1 行"_s.arg(m_model->changedCount())) &&
        save(&done)) {
        m_environment.messages.note(done);
        m_follow.follow();
    }
}

// Whether the rows may be replaced or left: unsaved edits are saved or dropped as the user says.
bool ListWork::maySwitch() {
    if (!m_model->hasChanges())
        return true;
    const Answer answer = m_environment.messages.askToSave();
    if (answer == Answer::No)
        m_model->dropChanges();
    return answer == Answer::No || (answer == Answer::Yes && save());
}

void ListWork::renew() {
    const std::vector<ConsentRowKey> targets = m_model->targetKeys();
    const std::optional<QList<RenewalResult>> results =
        renewReceived({m_environment, m_db, *m_model, m_list.readFilter().from, [this] { return save(); },
                       *m_progress, m_window});
    if (!results)
        return;
    rereadWritten();
    m_model->tickTargets(renewedKeys(*results, targets));
}

void ListWork::tickAll(ListColumn column) {
    const std::vector<int> &shown = m_model->shownRecords();
    m_model->tick(shown, column, !m_model->allTicked(shown, column));
}

// Where nothing unsaved is left, what was done last in the database.
void ListWork::undo() {
    const UndoneStep step = m_model->undo();
    if (step.record >= 0 || m_model->hasChanges())
        sayUndone(step, u"元に戻しました：%1"_s, u"元に戻す操作はありません。"_s);
    else if (takeBackLastBatch(m_environment, m_db, m_window))
        rereadWritten();
}

void ListWork::redo() {
    sayUndone(m_model->redo(), u"やり直しました：%1"_s, u"やり直す操作はありません。"_s);
}

void ListWork::sayUndone(const UndoneStep &step, const QString &done, const QString &nothing) {
    if (step.record >= 0)
        m_grid->goToRecord(step.record);
    const bool seen = step.record >= 0 && m_model->rowOfRecord(step.record) >= 0;
    m_environment.messages.note(
        step.record < 0 ? nothing : done.arg(step.what) + (seen ? QString() : u"　表示していない行です。"_s));
}

void ListWork::restoreRows() {
    std::vector<int> records = m_grid->chosenRecords();
    if (records.empty())
        records.push_back(m_model->recordOfRow(m_grid->currentIndex().row()));
    const bool done = m_model->restore(records);
    const QString what =
        records.size() == 1 ? m_model->who(records.front()) : u"%L1 行"_s.arg(records.size());
    m_environment.messages.note(done ? what + u" を読み込んだときの内容に戻しました。"_s
                                     : u"この行に変更はありません。"_s);
}

QString ListWork::countsText() const {
    const int shown = m_model->rowCount();
    const int all = m_model->countOfList();
    const QString rows = shown == all ? u"%L1 件"_s.arg(all) : u"%L1 / %L2 件"_s.arg(shown).arg(all);
    return u"表示 %1　対象 %L2 件　受領 %L3 件"_s.arg(rows)
        .arg(m_model->targetRecords().size())
        .arg(m_model->receivedRecords().size());
}

QString ListWork::lapsedText() const {
    const int count = m_model->shownState() == RowState::Lapsed ? 0 : m_model->lapsedOutside();
    return count == 0 ? QString() : u"■ 対象期間外の期限切れ %L1 件（Alt+2 で表示）"_s.arg(count);
}

bool ListWork::readSomeLetters() {
    constexpr size_t block = 500;
    if (m_model->recordsWithoutLetter(1).empty())
        return false;
    if (m_list.iReadLetters(block) == 0)
        return true;
    failDb(u"同意依頼書種別を読み込めませんでした。再読込（Shift+F4）をしてください。"_s + m_list.sErrMsg());
    return false;
}

bool ListWork::readAllLetters() {
    if (m_list.iReadLetters(size_t(m_model->records().count())) == 0)
        return true;
    failDb(m_list.sErrMsg());
    return false;
}

void ListWork::failDb(const QString &reason) {
    m_environment.messages.fail(reason, u"DB-error"_s);
}
