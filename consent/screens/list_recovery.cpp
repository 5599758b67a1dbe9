#include "consent/screens/list_recovery.h"

#include "app/base/clock.h"
#include "app/base/messages.h"
#include "db/adodb.h"
#include "widgets/window_settings.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Beside what this user's windows keep.
QString keptFolder() {
    return QFileInfo(windowSettings().fileName()).absolutePath() + u"/unsaved"_s;
}

QString databaseOf(const cT_ADODB &db, const Branch &branch) {
    return u"%1 %2-%3"_s.arg(db.databaseName()).arg(branch.iKyotenCd).arg(branch.iKyotenEb);
}

QString question(const UnsavedRows &unsaved) {
    constexpr size_t named = 10;
    QStringList names;
    for (const TypedRow &row : unsaved.rows)
        if (!names.contains(row.who))
            names.append(row.who);
    const qsizetype more = names.size() - qsizetype(named);
    return u"前回、保存しないまま終わった入力が %L1 行あります（%2）。\r\n\r\n"_s.arg(unsaved.rows.size())
               .arg(unsaved.time.toString(u"yyyy/MM/dd HH:mm"_s)) +
           names.mid(0, named).join(u"\r\n"_s) + (more > 0 ? u"\r\n他 %L1 名"_s.arg(more) : QString()) +
           u"\r\n\r\nこの入力を復元しますか？\r\n"
           "「はい」で一覧に戻します（まだ保存しません）。「いいえ」で捨てます。"
           "「キャンセル」では残しておき、次に開いたときにもう一度尋ねます。"_s;
}

} // namespace

ListRecovery::ListRecovery(Environment &environment, cT_ADODB &db, ConsentListModel &model, QWidget *window,
                           const ListFilter &readFilter)
    : m_environment(environment),
      m_db(db),
      m_model(model),
      m_window(window),
      m_read(readFilter),
      m_keeper(keptFolder(), databaseOf(db, environment.branch), [this] { return unsaved(); }) {
    QObject::connect(&m_model, &ConsentListModel::stateChanged, &m_keeper, [this] { changed(); });
    QObject::connect(&m_keeper, &ListKeeper::failed, &m_keeper, [this](const QString &why) {
        m_environment.messages.note(u"入力の控えを残せません。早めに保存（F5）してください。"_s +
                                    QString(why).replace(u"\r\n"_s, u"　"_s));
    });
}

UnsavedRows ListRecovery::unsaved() const {
    UnsavedRows unsaved{m_keeper.database(), m_environment.clock.now(), m_read.ended, m_model.typedRows()};
    unsaved.rows.insert(unsaved.rows.end(), m_open.begin(), m_open.end());
    return unsaved;
}

void ListRecovery::changed() {
    m_keeper.changed(m_model.hasChanges() || !m_open.empty());
}

void ListRecovery::setOpen(std::vector<TypedRow> rows) {
    m_open = std::move(rows);
    changed();
}

bool ListRecovery::settle(const std::vector<TypedRow> &typed, MergeForm::Use use) {
    const bool saves = use == MergeForm::Use::Save;
    if (!saves)
        setOpen(typed);
    Result<std::vector<StandingRow>> standing = readStandingRows(m_db, typed);
    if (!standing)
        m_environment.messages.fail(standing.reason(), u"DB-error"_s);
    if (!standing && saves)
        return false;
    const std::vector<StandingRow> now = standing ? *standing : shownRows(typed);

    const QHash<QString, int> records = recordsByRow(m_model.records());
    std::vector<MergeRow> merged;
    for (size_t i = 0; i < typed.size(); ++i) {
        merged.push_back(mergeRow(typed[i], now[i], m_methods));
        if (merged[i].gone.isEmpty() && !records.contains(rowIdentity(typed[i].read.key)))
            merged[i].leave(u"一覧の条件に合わなくなりました"_s);
    }
    const bool decided = decide(m_environment.messages, merged, use, m_window);
    if (decided)
        m_model.rebase(mergedEdits(merged, typed, now));
    setOpen({});
    return decided;
}

// As the list has just read them, where they cannot be read by themselves.
std::vector<StandingRow> ListRecovery::shownRows(const std::vector<TypedRow> &typed) const {
    const QHash<QString, int> records = recordsByRow(m_model.records());
    std::vector<StandingRow> rows;
    for (const TypedRow &row : typed) {
        const int record = records.value(rowIdentity(row.read.key), -1);
        rows.push_back(record < 0 ? StandingRow{} : StandingRow{m_model.records().row(record), true, {}});
    }
    return rows;
}

std::optional<UnsavedRows> ListRecovery::read(UnsavedFile &file) {
    const Result<QByteArray> bytes = file.read();
    const Result<UnsavedRows> unsaved = bytes ? unsavedRows(*bytes) : Failure{bytes.reason()};
    if (unsaved && unsaved->database == m_keeper.database())
        return *unsaved;
    const QString why = unsaved ? u"別のデータベースの控えです。"_s : unsaved.reason();
    m_environment.messages.warn(
        u"保存していない入力の控えを復元できません。%1\r\n「%2」に残してあります。"_s.arg(
            why, QDir::toNativeSeparators(file.setAside())),
        u"復元"_s);
    return std::nullopt;
}

std::vector<ListRecovery::Left> ListRecovery::wanted() {
    std::vector<Left> wanted;
    for (std::unique_ptr<UnsavedFile> &file : m_keeper.left()) {
        std::optional<UnsavedRows> unsaved = read(*file);
        if (!unsaved)
            continue;
        const Answer answer = m_environment.messages.show(
            {question(*unsaved), MessageIcon::Question, u"復元"_s, MessageButtons::YesNoCancel, Answer::Yes});
        if (answer == Answer::No)
            file->remove();
        if (answer == Answer::Yes)
            wanted.push_back({std::move(file), std::move(*unsaved)});
    }
    return wanted;
}

std::optional<ConsentRowKey> ListRecovery::restore(const std::function<void(const UnsavedRows &)> &show) {
    const std::vector<Left> files = wanted();
    if (files.empty())
        return std::nullopt;
    UnsavedRows all;
    for (const Left &left : files) {
        all.ended = all.ended || left.unsaved.ended;
        all.rows.insert(all.rows.end(), left.unsaved.rows.begin(), left.unsaved.rows.end());
    }
    show(all);
    size_t restored = 0;
    for (const Left &left : files)
        restored += takeBack(left);
    if (restored == 0)
        return std::nullopt;
    const std::vector<ChangedRow> changed = m_model.changedRows();
    m_environment.messages.note(
        changed.empty()
            ? u"復元する入力は残っていません。一覧は他のＰＣの内容です。"_s
            : u"%L1 行の入力を復元しました。まだ保存していません（F5 で保存します）。"_s.arg(changed.size()));
    return changed.empty() ? std::nullopt : std::optional(changed.front().read.key);
}

// What cannot be taken back now, since the list holds other edits of the row or the user put it off, stays in
// the file; the others are in this run's own before they go from there.
size_t ListRecovery::takeBack(const Left &left) {
    QSet<QString> edited;
    for (const ChangedRow &row : m_model.changedRows())
        edited.insert(rowIdentity(row.read.key));
    std::vector<TypedRow> stays, overtaken;
    for (TypedRow &row : m_model.retype(left.unsaved.rows))
        (edited.contains(rowIdentity(row.read.key)) ? stays : overtaken).push_back(std::move(row));
    if (!overtaken.empty() && !settle(overtaken, MergeForm::Use::Restore))
        stays.insert(stays.end(), overtaken.begin(), overtaken.end());

    UnsavedRows rest = left.unsaved;
    rest.rows = stays;
    Result<> kept = m_keeper.keepNow();
    if (kept && stays.empty())
        left.file->remove();
    else if (kept)
        kept = left.file->write(toBytes(rest));
    if (!kept)
        m_environment.messages.warn(kept.reason(), u"復元"_s);
    return left.unsaved.rows.size() - stays.size();
}
