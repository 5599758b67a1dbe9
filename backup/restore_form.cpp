#include "backup/restore_form.h"

#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "backup/backups_query.h"
#include "db/connection_settings.h"
#include "widgets/grid.h"
#include "widgets/wait_message_form.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace {

void appendText(Recordset &rows, const QString &text) {
    rows.appendText(text.utf16(), size_t(text.size()) * sizeof(char16_t));
}

Result<QString> restored(const Backups &backups, const Backup &backup, QWidget *parent) {
    frmWaitMsg wait(parent);
    wait.showProgress(u"バックアップを新しいファイルに復元しています..."_s);
    return backups.restore(backup);
}

void offerUse(Environment &environment, const QString &file) {
    const QString name = QDir::toNativeSeparators(file);
    if (!environment.messages.ask(
            u"新しいファイル「%1」に復元しました。使用中のデータベースは元のままです。\r\n\r\n"
            "次の起動から、復元したデータベースを使いますか？"
            "（復元した日より後の入力は、元のデータベースにだけ残ります）"_s.arg(name),
            u"バックアップの復元"_s, Answer::No))
        return;
    if (const Result<> used = useDatabase(environment.folders, file); !used)
        environment.messages.fail(used.reason());
    else
        environment.messages.inform(u"次の起動から、復元したデータベースを使います。\r\n"
                                    "すべてのPCで同意書管理を終了し、起動し直してください。"
                                    "それまでの入力は、元のデータベースに入ります。"_s,
                                    u"バックアップの復元"_s);
}

} // namespace

RestoreForm::RestoreForm(Messages &messages, const Backups &backups, QWidget *parent)
    : PickListForm(messages, parent), m_folder(backups) {
    setObjectName(u"frmバックアップ復元"_s);
    setWindowTitle(u"バックアップの復元"_s);
    setColumns({{u"No."_s, u"number"_s, true},
                {u"日付"_s, u"day"_s},
                {u"同意の件数"_s, u"consents"_s, true},
                {u"大きさ(KB)"_s, u"size"_s, true},
                {u"データベース"_s, u"name"_s}},
               u"number"_s, u"day"_s);
}

Result<Recordset> RestoreForm::readList() {
    m_backups = m_folder.all();
    Recordset rows;
    rows.open({u"number"_s, u"day"_s, u"consents"_s, u"size"_s, u"name"_s}, Recordset::Encoding::Utf16);
    for (int i = 0; i < m_backups.size(); ++i) {
        const Backup &backup = m_backups.at(i);
        rows.appendInteger(i + 1);
        appendText(rows, dateText(backup.day) + u'（' + weekdayText(backup.day) + u'）');
        if (const Result<qint64> consents = countConsents(backup.path))
            rows.appendInteger(*consents);
        else
            appendText(rows, u"読めません"_s);
        rows.appendInteger((backup.bytes + 1023) / 1024);
        appendText(rows, backup.database);
    }
    return rows;
}

QString RestoreForm::emptyText() const {
    return u"バックアップはまだありません。"_s;
}

QString RestoreForm::summary() const {
    return u"フォルダ：%1"_s.arg(QDir::toNativeSeparators(m_folder.folder()));
}

void restoreBackup(Environment &environment, QWidget *parent) {
    const Result<QString> connection = readConnectionString(environment.folders);
    const std::optional<QString> file = connection ? embeddedFile(*connection) : std::nullopt;
    if (!file) {
        environment.messages.note(
            connection ? u"データベースがサーバーにあるため、バックアップはサーバーの管理者が復元します。"_s
                       : connection.reason());
        return;
    }
    const Backups backups(environment.folders, *file);
    RestoreForm form(environment.messages, backups, parent);
    if (form.iInit() != 0) {
        environment.messages.fail(form.CsErrStr());
        return;
    }
    if (form.exec() != QDialog::Accepted)
        return;
    const Result<QString> made = restored(backups, form.picked(), parent);
    made ? offerUse(environment, *made) : environment.messages.fail(made.reason(), u"バックアップの復元"_s);
}
