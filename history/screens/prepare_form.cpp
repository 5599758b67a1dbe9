#include "history/screens/prepare_form.h"

#include "app/base/environment.h"
#include "app/base/file_write.h"
#include "app/base/messages.h"
#include "history/log_tables.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

HistoryPrepareForm::HistoryPrepareForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_db(db) {
    setObjectName(u"frmRirekiJunbi"_s);
    setWindowTitle(u"変更履歴の準備"_s);
    layOut();
}

void HistoryPrepareForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_state = new QLabel);
    m_state->setObjectName(u"lblJyotai"_s);
    m_state->setWordWrap(true);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *caption = new QLabel(u"サーバーの管理者が実行する SQL(&Q)"_s);
    layout->addWidget(caption);
    layout->addWidget(m_statements = new QPlainTextEdit, 1);
    m_statements->setObjectName(u"txtSql"_s);
    m_statements->setReadOnly(true);
    m_statements->setTabChangesFocus(true);
    m_statements->setLineWrapMode(QPlainTextEdit::NoWrap);
    caption->setBuddy(m_statements);
    auto *buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    const auto add = [&](QPushButton *made) { buttons->addWidget(made); };
    add(button(u"cmdUpdate"_s, u"もう一度確認"_s, u"F4"_s, &HistoryPrepareForm::lookAgain));
    add(m_make = button(u"cmdMake"_s, u"表を作成"_s, u"F5"_s, &HistoryPrepareForm::make));
    buttons->addStretch();
    add(button(u"cmdCopy"_s, u"SQL をコピー"_s, u"F7"_s, &HistoryPrepareForm::copy));
    add(button(u"cmdSave"_s, u"SQL を保存"_s, u"F8"_s, &HistoryPrepareForm::save));
    add(button(u"cmdEnd"_s, u"終了"_s, u"F12"_s, &HistoryPrepareForm::leave));
    const QFontMetrics metrics = fontMetrics();
    resize(QSize(metrics.horizontalAdvance(u'　') * 60, metrics.height() * 30)
               .boundedTo(screen()->availableSize() * 95 / 100));
}

QPushButton *HistoryPrepareForm::button(const QString &name, const QString &caption, const QString &key,
                                        void (HistoryPrepareForm::*work)()) {
    auto *made = new QPushButton(u"%1 (%2)"_s.arg(caption, key));
    made->setObjectName(name);
    made->setShortcut(key);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, work);
    return made;
}

short HistoryPrepareForm::iInit() {
    const HistoryState &state = lookAtLog(m_db);
    if (state.kind == HistoryState::Unknown) {
        m_error = state.reason;
        return -1;
    }
    m_state->setText(historyStateText(state));
    m_make->setEnabled(state.kind == HistoryState::Missing);
    m_statements->setPlainText(logTablesScript(m_db.dialect()));
    m_make->isEnabled() ? m_make->setFocus() : m_statements->setFocus();
    return 0;
}

void HistoryPrepareForm::lookAgain() {
    if (iInit() != 0)
        m_environment.messages.failIn(m_error, u"iInit() でエラー");
    else
        m_environment.messages.note(u"もう一度確認しました。"_s);
}

void HistoryPrepareForm::make() {
    const Result<bool> made = makeLogTables(m_db);
    if (!made)
        m_environment.messages.fail(
            u"変更履歴の表を作成できません。何も作成していません。"
            "SQL をコピーまたは保存して、サーバーの管理者に実行を依頼してください。"_s +
                made.reason(),
            windowTitle());
    else if (iInit() == 0)
        m_environment.messages.note(u"変更履歴の表を作成しました。"_s);
}

void HistoryPrepareForm::copy() {
    QGuiApplication::clipboard()->setText(m_statements->toPlainText());
    m_environment.messages.note(u"SQL をコピーしました。"_s);
}

void HistoryPrepareForm::save() {
    const QString place =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + u"/変更履歴の準備.sql"_s;
    const QString path = QFileDialog::getSaveFileName(this, u"SQL の保存先"_s, place, u"SQL (*.sql)"_s);
    if (path.isEmpty())
        return;
    if (const Result<> written = writeFileWhole(path, m_statements->toPlainText().toUtf8()); !written)
        return m_environment.messages.fail(written.reason(), windowTitle());
    m_environment.messages.note(u"SQL を「%1」に保存しました。"_s.arg(QDir::toNativeSeparators(path)));
}
