#include "masters/master_list_form.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "app/base/settings.h"
#include "export/save_grid.h"
#include "masters/master_entry.h"
#include "masters/master_query.h"
#include "search/search_class.h"
#include "ui_master_list_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

MasterListForm::MasterListForm(Environment &environment, cT_ADODB &db, MasterKind kind, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_description(describeMaster(kind, environment.branch)),
      m_editor(environment, db, [this] { m_written = true; }),
      m_ui(std::make_unique<Ui::MasterListForm>()) {
    m_ui->setupUi(this);
    setObjectName(m_description.listForm);
    setWindowTitle(m_description.noun + u"一覧"_s);
    QList<PickListColumn> columns;
    for (const MasterListColumn &column : m_description.listColumns)
        columns.append({column.caption, column.field, column.number, column.field == u"kana"});
    m_model.setColumns(columns, u"code"_s, u"name"_s);
    m_ui->grdData->setModel(&m_model);
    m_ui->grdData->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_ui->grdData->horizontalHeader()->setSortIndicatorClearable(true);
    m_ui->grdData->setSortingEnabled(true);
    auto *csv = new CsvButton(environment, *m_ui->grdData, m_description.noun + u"一覧"_s);
    csv->setObjectName(u"mnCSV"_s);
    csv->insert(*m_ui->rowButtons, *m_ui->btnPrint);
    m_ui->btnPrint->setVisible(!m_description.printArgument.isEmpty());
    wire();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 112, fontMetrics().height() * 38);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

MasterListForm::~MasterListForm() = default;

void MasterListForm::wire() {
    connect(m_ui->txt_SiboriNo, &QLineEdit::textChanged, this, [this] { narrow(); });
    connect(m_ui->txt_SiboriName, &QLineEdit::textChanged, this, [this] { narrow(); });
    for (QWidget *watched :
         {static_cast<QWidget *>(m_ui->txt_SiboriNo), static_cast<QWidget *>(m_ui->txt_SiboriName),
          static_cast<QWidget *>(m_ui->grdData)})
        watched->installEventFilter(this);
    connect(m_ui->grdData, &QAbstractItemView::doubleClicked, this, [this] { edit(currentCode()); });
    connect(m_ui->cmdNew, &QPushButton::clicked, this, [this] { edit({}); });
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, [this] {
        if (const QString code = currentCode(); !code.isEmpty())
            edit(code);
    });
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, [this] { remove(); });
    connect(m_ui->cmdSearch, &QPushButton::clicked, this,
            [this] { refresh(m_model.at(m_ui->grdData->currentIndex().row()).code); });
    connect(m_ui->btnPrint, &QPushButton::clicked, this, [this] { iPrintItiran(); });
    connect(m_ui->cmdMenu, &QPushButton::clicked, this, [this] { startMenu(); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, [this] { reject(); });
}

// The practice may keep the list from leaving the program.
void MasterListForm::readSettings() {
    const SettingsSection settings(m_environment.folders, u"患者管理設定.ini"_s, u"マスタ管理"_s);
    findChild<QPushButton *>(u"mnCSV"_s)->setHidden(settings.isOn(u"CSV出力制限"_s));
    if (settings.isOn(u"簡易メニュー"_s))
        m_ui->btnPrint->hide();
}

short MasterListForm::iInit() {
    const Result<> connected = connectForSearch(m_db);
    const Result<> loaded = connected ? load() : connected;
    if (!loaded) {
        m_error = loaded.reason();
        return -1;
    }
    readSettings();
    m_ui->grdData->goTo(0, 0);
    m_ui->txt_SiboriName->setFocus();
    return 0;
}

Result<> MasterListForm::load() {
    Result<Recordset> rows =
        readForSearch(m_db, masterListSql(m_description.kind, m_description.branch), u"iInit() でエラー");
    if (!rows)
        return Failure{rows.reason()};
    // The first rows give the columns their widths; later ones leave them as they are.
    const bool isFirst = m_model.total() == 0;
    m_model.setRows(*std::move(rows));
    narrow();
    if (isFirst)
        m_ui->grdData->fitColumns(24);
    return {};
}

// Stays on the row; of one that is gone, on the one that took its place.
void MasterListForm::refresh(const QString &code) {
    const int before = m_ui->grdData->currentIndex().row();
    if (const Result<> loaded = load(); !loaded) {
        m_environment.messages.fail(loaded.reason());
        return;
    }
    if (m_model.rowOfCode(code) < 0 && !code.isEmpty()) {
        m_ui->txt_SiboriNo->clear();
        m_ui->txt_SiboriName->clear();
    }
    const int row = m_model.rowOfCode(code);
    m_ui->grdData->goTo(row >= 0 ? row : before, 0);
    m_ui->grdData->setFocus();
}

void MasterListForm::narrow() {
    const QString code = m_model.at(m_ui->grdData->currentIndex().row()).code;
    m_model.narrow(m_ui->txt_SiboriName->text(), m_ui->txt_SiboriNo->code());
    m_ui->grdData->goTo(qMax(0, m_model.rowOfCode(code)), 0);
    const int shown = m_model.rowCount();
    m_ui->lblKensu->setText(shown == m_model.total() ? u"%L1 件"_s.arg(shown)
                                                     : u"%L1 / %L2 件"_s.arg(shown).arg(m_model.total()));
}

QString MasterListForm::currentCode() {
    const QString code = m_model.at(m_ui->grdData->currentIndex().row()).code;
    if (code.isEmpty())
        m_environment.messages.note(u"有効な行が選択されていません！"_s);
    return code;
}

void MasterListForm::edit(const QString &code) {
    if (const std::optional<QString> saved = m_editor.edit(m_description.kind, code, this))
        refresh(*saved);
    else if (!code.isEmpty())
        refresh(code); // a colleague may have changed it meanwhile
}

void MasterListForm::remove() {
    const QString code = currentCode();
    if (code.isEmpty())
        return;
    Messages &messages = m_environment.messages;
    MasterEntry entry(m_description, m_db);
    if (const Result<> opened = entry.open(code); !opened) {
        messages.warn(opened.reason());
        refresh(code);
        return;
    }
    const Result<MasterUses> uses = entry.uses();
    if (!uses) {
        messages.fail(uses.reason(), u"DB-error"_s);
        return;
    }
    const QString name = entry.value(m_description.nameColumn);
    if (const QString why = whyKept(m_description, name, *uses); !why.isEmpty()) {
        messages.warn(why);
        return;
    }
    const QString inUse =
        uses->none()
            ? QString()
            : u"%1「%2」は、%3 で使われています。\r\n削除すると、そこから名前や住所を表示・印刷できなく"
              "なります。\r\n\r\n"_s.arg(m_description.noun, name, usesText(*uses));
    if (!messages.ask(inUse + u"選択行のデータを削除します。\r\nよろしいですか？"_s, u"削除確認"_s,
                      inUse.isEmpty() ? Answer::Yes : Answer::No))
        return;
    const MasterOutcome outcome = entry.remove(*uses);
    if (outcome.kind == MasterOutcome::Refused)
        messages.warn(outcome.text);
    else if (outcome.kind == MasterOutcome::Failed)
        messages.fail(outcome.text, u"DB-error"_s);
    else {
        m_written = true;
        messages.note(u"削除しました。"_s);
    }
    refresh(outcome.kind == MasterOutcome::Done ? QString() : code);
}

// The suite's program looks the rows up itself.
void MasterListForm::iPrintItiran() {
    const QString &folder = m_environment.folders.program();
    const QString program = m_environment.processes.find(u"Dovrinマスター一覧.exe"_s, folder);
    if (program.isEmpty())
        m_environment.messages.fail(u"印刷アプリケーションが見つかりません。"_s);
    else if (!m_environment.processes.start(program, {m_description.printArgument}, folder))
        m_environment.messages.fail(u"「%1」を起動できません。\r\niPrintItiranでエラー"_s.arg(program));
}

void MasterListForm::startMenu() {
    if (startSibling(m_environment, u"Main.exe"_s))
        reject();
}

bool MasterListForm::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (watched != m_ui->grdData)
            m_ui->grdData->setFocus();
        else if (const QString code = currentCode(); !code.isEmpty())
            edit(code);
        return true;
    }
    if (watched != m_ui->grdData && key == Qt::Key_Down) {
        m_ui->grdData->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
