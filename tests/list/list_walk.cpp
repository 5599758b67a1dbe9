// Random work on the real list form beside a colleague who writes the same rows, checked after every step
// against a reckoning of its own: what the grid shows, what is stored, and that nothing is lost.
//   list_walk [--walks=N] [--steps=N] [--seed=N]   a failure names its seed

#include "app/base/folders.h"
#include "app/base/settings.h"
#include "consent/list/list_grid.h"
#include "consent/screens/consent_list_form.h"
#include "tests/list/walked_practice.h"
#include "tests/support/test_environment.h"
#include "widgets/date_box.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array ticks{ListColumn::Contact, ListColumn::Requested, ListColumn::Received};
constexpr std::array texts{ListColumn::Reconsent, ListColumn::NextStart, ListColumn::NextEnd,
                           ListColumn::Remark};

/// Answers every question as the walk wants it; a colleague may act while one is open.
class WalkMessages : public Messages {
public:
    Answer show(const Message &message) override {
        shown.append(message.text);
        if (meanwhile)
            std::exchange(meanwhile, nullptr)();
        return message.buttons == MessageButtons::YesNoCancel ? answer : Answer::Yes;
    }
    QStringList shown;
    std::function<void()> meanwhile;
    Answer answer = Answer::Yes; ///< to "save the changes?"
};

class Walk : WalkedPractice {
public:
    explicit Walk(unsigned seed) : WalkedPractice(seed), m_seed(seed) {
        m_deformityFollows = one(2) == 0;
        if (m_deformityFollows)
            writeSetting();
        fill();
        m_form = std::make_unique<frm同意書管理>(m_environment);
        check(m_form->iInit(m_database.db, 0) == 0, "the list opens");
        m_form->show();
        QObject::connect(&m_decides, &QTimer::timeout, [this] { decide(); });
        m_decides.start(0);
        m_grid = m_form->findChild<ListGrid *>(u"ssDouiD"_s);
        // From the month before this one, so that renewal is permitted.
        m_form->findChild<DateBox *>(u"imD_KikanFrom"_s)->setDate(m_from);
        m_form->findChild<DateBox *>(u"imD_KikanTo"_s)->setDate(m_to);
        key(Qt::Key_F4);
        m_read = stored();
        compare();
    }

    bool failed() const { return m_failed; }

    void step() {
        struct Action {
            int weight;
            void (Walk::*act)();
            const char *name;
        };
        static constexpr Action actions[] = {
            {10, &Walk::tick, "tick"},    {10, &Walk::type, "type"},       {8, &Walk::colleague, "colleague"},
            {3, &Walk::narrow, "narrow"}, {2, &Walk::tickAll, "tick all"}, {2, &Walk::reread, "read again"},
            {2, &Walk::search, "search"}, {3, &Walk::save, "save"},        {4, &Walk::renew, "renew"},
            {5, &Walk::undo, "undo"},     {3, &Walk::redo, "redo"}};
        int at = one(52);
        for (const Action &action : actions) {
            at -= action.weight;
            if (at >= 0)
                continue;
            m_messages.shown.clear();
            m_trail.append(QString::fromLatin1(action.name));
            const std::map<QString, Row> before = m_edits;
            (this->*action.act)();
            if (action.act == &Walk::tick || action.act == &Walk::type || action.act == &Walk::tickAll)
                noteStep(before);
            compare();
            return;
        }
    }

private:
    void writeSetting() {
        check(Settings(m_folders).iSwitch(Setting::変形連動, true) == 0, "the setting is written");
    }

    bool inRange(const Row &row) const {
        const QDate end = day(row.at(u"tDouiKaryoE"_s));
        return row.at(u"iNewestFlg"_s) == u"1" && end >= m_from && end <= m_to;
    }

    // ---- what the user has before him

    /// A row as it was read, with what was entered over it.
    Row seen(const QString &key) const {
        const auto edit = m_edits.find(key);
        return edit == m_edits.end() ? m_read.at(key) : edit->second;
    }

    void enter(const QString &key, const Row &row) {
        m_edits.erase(key);
        if (row != m_read.at(key))
            m_edits[key] = row;
    }

    QString keyAt(int gridRow) const {
        const auto *model = static_cast<ConsentListModel *>(m_grid->model());
        const ConsentRowKey key = model->records().key(model->recordOfRow(gridRow));
        return u"%1/%2/%3/%4"_s.arg(key.patient.nIDNo)
            .arg(key.nDate)
            .arg(key.iHenkeiFlg)
            .arg(key.nHenkeiDouiDate);
    }

    bool shows(const Row &row) const {
        return inRange(row) &&
               (m_narrowed.isEmpty() || (row.at(u"nIDNo"_s).toInt() % 2 == 0) == (m_narrowed == u"ヤマ"));
    }

    /// What the program would find in the way of writing an edit: a colleague was there first.
    bool overtaken(const QString &key, const Rows &at) const {
        const auto row = at.find(key);
        return row == at.end() || row->second.at(u"iNewestFlg"_s) != u"1" ||
               row->second.at(u"tUpDateTime"_s) != m_read.at(key).at(u"tUpDateTime"_s);
    }

    /// The grid must show what was read and entered, no more and no less.
    void compare() {
        std::map<QString, int> grid;
        for (int row = 0; row < m_grid->model()->rowCount(); ++row)
            grid[keyAt(row)] = row;
        size_t expected = 0;
        for (const auto &[key, row] : m_read) {
            if (!shows(row))
                continue;
            ++expected;
            const auto shown = grid.find(key);
            if (shown == grid.end()) {
                check(false, "row " + key.toStdString() + " is shown");
                continue;
            }
            const Row now = seen(key);
            for (const ListColumn column : ticks) {
                const bool on =
                    m_grid->model()->index(shown->second, int(column)).data(Qt::CheckStateRole).toInt() != 0;
                const QString value = now.at(columnOf(now, column));
                check(isDeformity(now) && column == ListColumn::Contact ? true : on == (value == u"1"),
                      "tick " + std::to_string(int(column)) + " of " + key.toStdString());
            }
            for (const ListColumn column : texts) {
                const QString cell = m_grid->model()->index(shown->second, int(column)).data().toString();
                QString value = now.at(columnOf(now, column));
                if (value == u"NULL")
                    value.clear();
                check(cell == value, "cell " + std::to_string(int(column)) + " of " + key.toStdString() +
                                         ": " + cell.toStdString() + ", not " + value.toStdString());
            }
        }
        check(expected == grid.size(), "as many rows as there are: " + std::to_string(grid.size()) +
                                           ", not " + std::to_string(expected));
    }

    // ---- what the user does

    void tick() {
        if (m_grid->model()->rowCount() == 0)
            return;
        const int row = one(m_grid->model()->rowCount());
        const ListColumn column = ticks[size_t(one(3))];
        const QString key = keyAt(row);
        m_grid->setFocus();
        m_grid->goTo(row, int(column));
        QTest::keyClick(m_grid, Qt::Key_Space);
        Row now = seen(key);
        if (isDeformity(now) && column == ListColumn::Contact)
            return;
        QString &value = now[columnOf(now, column)];
        value = value == u"1" ? u"0"_s : u"1"_s;
        enter(key, now);
    }

    void type() {
        if (m_grid->model()->rowCount() == 0)
            return;
        const int row = one(m_grid->model()->rowCount());
        const QString key = keyAt(row);
        Row now = seen(key);
        const bool dates = isDeformity(now) || one(3) > 0;
        const QDate reconsent = QDate(2026, 11, 1).addDays(one(60));
        typeInto(row, dates ? ListColumn::Reconsent : ListColumn::Remark,
                 dates ? reconsent.toString(u"yyyyMMdd"_s) : u"memo%1"_s.arg(one(1000)));
        if (!dates) {
            now[u"cItiranBikou"_s] = m_typed;
            enter(key, now);
            return;
        }
        // The same day again changes nothing.
        if (now.at(columnOf(now, ListColumn::Reconsent)) == text(reconsent))
            return;
        const QString before = now.at(columnOf(now, ListColumn::Reconsent));
        propose(now, reconsent);
        enter(key, now);
        if (!m_deformityFollows || isDeformity(now))
            return;
        for (const auto &[other, read] : m_read)
            if (inRange(read) && isDeformity(read) && read.at(u"nIDNo"_s) == now.at(u"nIDNo"_s)) {
                // One that has an answer of its own keeps it.
                Row follows = seen(other);
                const QString own = follows.at(u"tDouiDayTempHenkei"_s);
                if (own != u"NULL" && own != before)
                    continue;
                propose(follows, reconsent);
                enter(other, follows);
            }
    }

    void typeInto(int row, ListColumn column, const QString &typed) {
        m_typed = typed;
        comeForward();
        m_grid->setFocus();
        m_grid->goTo(row, int(column));
        QTest::keyClicks(m_grid, typed.left(1));
        QWidget *editor = QApplication::focusWidget();
        QTest::keyClicks(editor, typed.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }

    void narrow() {
        m_narrowed = QStringList{QString(), u"ヤマ"_s, u"スズ"_s}[one(3)];
        m_form->findChild<QLineEdit *>(u"txt_SiboriKana"_s)->setText(m_narrowed);
    }

    void tickAll() {
        bool all = true;
        for (const auto &[key, row] : m_read)
            if (shows(row))
                all = all && seen(key).at(columnOf(row, ListColumn::Received)) == u"1";
        key(Qt::Key_F8);
        for (const auto &[key, row] : m_read)
            if (shows(row)) {
                Row now = seen(key);
                QString &value = now[columnOf(now, ListColumn::Received)];
                if ((value == u"1") == all)
                    value = all ? u"0"_s : u"1"_s;
                enter(key, now);
            }
    }

    /// Rows before and after one thing that the user did.
    struct Step {
        std::map<QString, Row> before, after;
    };

    void noteStep(const std::map<QString, Row> &before) {
        Step step;
        for (const auto &[key, read] : m_read) {
            const auto edit = before.find(key);
            const Row &was = edit == before.end() ? read : edit->second;
            if (const Row now = seen(key); now != was) {
                step.before[key] = was;
                step.after[key] = now;
            }
        }
        if (step.before.empty())
            return;
        m_steps.resize(m_done);
        m_steps.push_back(step);
        m_done = m_steps.size();
    }

    void undo() {
        key(Qt::Key_Z, Qt::ControlModifier);
        if (m_done > 0)
            for (const auto &[key, row] : m_steps[--m_done].before)
                enter(key, row);
    }

    void redo() {
        key(Qt::Key_Y, Qt::ControlModifier);
        if (m_done < m_steps.size())
            for (const auto &[key, row] : m_steps[m_done++].after)
                enter(key, row);
    }

    void forgetSteps() {
        m_steps.clear();
        m_done = 0;
    }

    /// What was done can be taken back while its rows are what they were.
    void keepSteps(const Rows &rows) {
        bool same = true;
        for (const Step &step : m_steps)
            for (const auto &[key, row] : step.before)
                same = same && rows.contains(key) && inRange(rows.at(key)) && !overtaken(key, rows);
        if (!same)
            forgetSteps();
    }

    void reread() {
        key(Qt::Key_F4, Qt::ShiftModifier);
        takeNew(stored());
    }

    /// Edits of rows that a colleague wrote: what was typed stays over what he wrote; where it cannot, it is
    /// gone, and named.
    void mergeEdits(const Rows &rows, bool readAnew) {
        for (auto edit = m_edits.begin(); edit != m_edits.end();) {
            if (!overtaken(edit->first, rows) && (!readAnew || inRange(rows.at(edit->first)))) {
                ++edit;
                continue;
            }
            forgetSteps();
            const auto row = rows.find(edit->first);
            const bool gone = row == rows.end() || row->second.at(u"iNewestFlg"_s) != u"1" ||
                              (readAnew && !inRange(row->second));
            check(!gone || m_messages.shown.join(u' ').contains(u"利用者"_s + edit->second.at(u"nIDNo"_s)),
                  "the lost edit of " + edit->first.toStdString() + " is named");
            Row merged = gone ? Row() : row->second;
            for (const auto &[column, value] : edit->second)
                if (!gone && column != u"tUpDateTime" &&
                    !sameStored(column, value, m_read.at(edit->first).at(column)))
                    merged[column] = value;
            if (!gone)
                m_read[edit->first] = row->second;
            if (gone || merged == row->second)
                edit = m_edits.erase(edit);
            else
                (edit++)->second = merged;
        }
    }

    void takeNew(const Rows &rows) {
        keepSteps(rows);
        mergeEdits(rows, true);
        m_read = rows;
    }

    /// A merged period may end before it starts.
    bool isWrong() const {
        for (const auto &[key, edit] : m_edits) {
            const QDate start = day(edit.at(columnOf(edit, ListColumn::NextStart)));
            const QDate end = day(edit.at(columnOf(edit, ListColumn::NextEnd)));
            if (start.isValid() && end.isValid() && end < start)
                return true;
        }
        return false;
    }

    void search() {
        const bool asked = !m_edits.empty();
        m_messages.answer = std::array{Answer::Yes, Answer::No, Answer::Cancel}[size_t(one(3))];
        key(Qt::Key_F4);
        if (asked && m_messages.answer == Answer::Cancel)
            return;
        if (asked && m_messages.answer == Answer::Yes && !afterSave(m_before))
            return;
        m_edits.clear();
        forgetSteps();
        m_read = stored();
    }

    void save() {
        const bool changed = !m_edits.empty();
        key(Qt::Key_F5);
        if (changed)
            afterSave(m_before);
    }

    /// All edits are stored, or none.
    bool afterSave(const Rows &before) {
        if (!isWrong())
            mergeEdits(before, false);
        Rows expected = before;
        if (!isWrong())
            for (const auto &[key, edit] : m_edits)
                expected[key] = edit;
        checkStored(expected, stored());
        if (isWrong())
            return false;
        m_edits.clear();
        forgetSteps();
        m_read = stored();
        return true;
    }

    /// Equal but for the time of writing.
    void checkStored(const Rows &expected, const Rows &now) {
        check(expected.size() == now.size(),
              "rows stored: " + std::to_string(now.size()) + ", not " + std::to_string(expected.size()));
        for (const auto &[key, row] : expected) {
            const auto found = now.find(key);
            if (found == now.end()) {
                check(false, "row " + key.toStdString() + " is still there");
                continue;
            }
            for (const auto &[column, value] : row)
                if (column != u"tUpDateTime")
                    check(sameStored(column, value, found->second.at(column)),
                          column.toStdString() + " of " + key.toStdString() + " stored as " +
                              found->second.at(column).toStdString() + ", not " + value.toStdString());
        }
    }

    /// What the user decided about an overtaken row may be what he saw before.
    static bool sameButForTime(Row a, const Row &b) {
        a[u"tUpDateTime"_s] = b.at(u"tUpDateTime"_s);
        return a == b;
    }

    void renew() {
        // What is renewed is fixed when the question comes, whatever the colleague does while it is open.
        std::map<QString, Row> wanted;
        for (const auto &[key, row] : m_read)
            if (const Row now = seen(key); shows(row) && now.at(columnOf(now, ListColumn::Received)) == u"1")
                wanted[key] = now;
        key(Qt::Key_F6);
        if (wanted.empty()) {
            checkStored(m_before, stored());
            return;
        }
        Rows expected = m_before;
        const bool edited = !m_edits.empty();
        if (!isWrong())
            mergeEdits(m_before, false);
        if (isWrong()) {
            checkStored(expected, stored());
            return;
        }
        for (const auto &[key, edit] : m_edits)
            expected[key] = edit;
        for (const auto &[key, row] : wanted)
            if (!overtaken(key, m_before) && sameButForTime(seen(key), row) && mayRenew(row) &&
                !m_before.contains(renewedKeyOf(row)))
                addRenewed(expected, key, row);
        checkStored(expected, stored());
        edited ? forgetSteps() : keepSteps(stored());
        m_edits.clear();
        m_read = stored();
    }

    /// Takes what was typed wherever both wrote.
    void decide() {
        QWidget *form = QApplication::activeModalWidget();
        if (!form || form->objectName() != u"frmKasanari")
            return;
        for (int row = 0; const auto *rows = form->findChild<QTableView *>(u"ssGyou"_s); ++row) {
            if (row == rows->model()->rowCount())
                break;
            m_messages.shown.append(rows->model()->index(row, 0).data().toString());
        }
        auto *all = form->findChild<QPushButton *>(u"cmdTypedAll"_s);
        (all ? all : form->findChild<QPushButton *>(u"cmdTyped"_s))->click();
        QTest::keyClick(form, Qt::Key_Return);
    }

    // ---- helpers

    /// Presses a key; what is stored just before the program may write is kept. Sometimes the colleague is at
    /// work while the first question is open.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        m_before = stored();
        const bool interferes = (key == Qt::Key_F5 || key == Qt::Key_F6) && one(3) == 0;
        m_messages.meanwhile = [this, interferes] {
            if (interferes)
                colleague();
            m_before = stored();
        };
        comeForward();
        QTest::keyClick(m_form.get(), key, modifiers);
        m_messages.meanwhile = nullptr;
    }

    /// The window of a work that has ended gives the form back to the user.
    void comeForward() {
        m_form->activateWindow();
        check(QTest::qWaitForWindowActive(m_form.get()), "the list is in front");
    }

    void check(bool holds, const std::string &what) {
        if (holds || m_failed)
            return;
        m_failed = true;
        std::printf("seed %u, %s\n  does not hold after %s\n  said: %s\n", m_seed, what.c_str(),
                    m_trail.mid(qMax(0, m_trail.size() - 8)).join(u", ").toUtf8().constData(),
                    m_messages.shown.join(u" / ").toUtf8().constData());
    }

    const QDate m_from{2026, 10, 1};
    const QDate m_to{2027, 4, 30};

    unsigned m_seed;
    QTemporaryDir m_programFolder;
    Folders m_folders{m_programFolder.path()};
    FixedClock m_clock{QDate(2026, 11, 21)};
    WalkMessages m_messages;
    QTimer m_decides;
    RecordedProcesses m_processes;
    Environment m_environment{m_folders, m_clock, m_messages, m_processes, {1, 1}};
    std::unique_ptr<frm同意書管理> m_form;
    ListGrid *m_grid = nullptr;
    bool m_deformityFollows = false;
    Rows m_read;                    ///< as the list read them
    Rows m_before;                  ///< stored just before the program writes
    std::map<QString, Row> m_edits; ///< by row, the row with what was entered
    std::vector<Step> m_steps;      ///< that can be taken back, and from `m_done` on done again
    size_t m_done = 0;
    QString m_narrowed;
    QString m_typed;
    QStringList m_trail;
    bool m_failed = false;
};

} // namespace

int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("FONTCONFIG_FILE", DOUISHO_FONTS);
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication app(argc, argv);
    int walks = 20, steps = 60, seed = 1;
    for (const QString &argument : app.arguments().mid(1)) {
        const int value = argument.section(u'=', 1).toInt();
        (argument.startsWith(u"--walks") ? walks : argument.startsWith(u"--steps") ? steps : seed) = value;
    }
    int failed = 0;
    for (int walk = 0; walk < walks; ++walk) {
        Walk way(unsigned(seed + walk));
        for (int step = 0; step < steps && !way.failed(); ++step)
            way.step();
        failed += way.failed();
    }
    std::printf("%d walks of %d steps, %d failed\n", walks, steps, failed);
    return failed == 0 ? 0 : 1;
}
