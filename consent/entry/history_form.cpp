#include "consent/entry/history_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "archive/sent_run.h"
#include "consent/entry/entry_form.h"
#include "consent/entry/history_model.h"
#include "db/adodb.h"
#include "db/column_names.h"
#include "db/connection_settings.h"
#include "export/save_grid.h"
#include "history/screens/history_form.h"
#include "print/consent_screens/consent_screens.h"
#include "print/documents/history.h"
#include "ui_history_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

frmDouiRecord::frmDouiRecord(Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::frmDouiRecord>()) {
    m_ui->setupUi(this);
    m_ui->ssDouiD->horizontalHeader()->setStretchLastSection(true);
    (new CsvButton(environment, *m_ui->ssDouiD, u"同意履歴"_s))->insert(*m_ui->rowButtons, *m_ui->btnEnd);
    wire();
    const QSize wanted(fontMetrics().horizontalAdvance(u'漢') * 90, fontMetrics().height() * 40);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

frmDouiRecord::~frmDouiRecord() = default;

void frmDouiRecord::wire() {
    connect(m_ui->btnNew, &QPushButton::clicked, this, [this] { enterNew(); });
    connect(m_ui->btnRegist, &QPushButton::clicked, this, [this] { change(); });
    connect(m_ui->btnDel, &QPushButton::clicked, this, [this] { erase(); });
    connect(m_ui->btnPrint, &QPushButton::clicked, this, [this] { print(); });
    connect(m_ui->btnDouiSyosikiSet, &QPushButton::clicked, this,
            [this] { setPatientConsentForms(m_environment, *m_db, m_patient, this); });
    connect(m_ui->btnHenkouRireki, &QPushButton::clicked, this, [this] { showChanges(); });
    connect(m_ui->btnEnd, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->ssDouiD, &QAbstractItemView::doubleClicked, this, [this] { change(); });
    connect(m_ui->timeLine, &TimeLineView::chosen, this, [this](int row) { m_ui->ssDouiD->goTo(row, 0); });
}

QString frmDouiRecord::g75_Connect() {
    const Result<QString> text = readConnectionString(m_environment.folders);
    if (!text) {
        m_error = text.reason();
        return u"NG"_s;
    }
    auto own = std::make_unique<cT_ADODB>();
    own->setColumnNames(readColumnNames(m_environment.folders).names);
    if (own->iInit(*text) != 0 || own->iConnect() != 0) {
        m_error = own->sErrMsg() + u"\r\ng75_Connect() でエラー"_s;
        return u"NG"_s;
    }
    m_own = std::move(own);
    return u"OK"_s;
}

short frmDouiRecord::iInit(const PatientKey &patient) {
    if (!m_own && g75_Connect() != u"OK"_s)
        return -1;
    return iInit(*m_own, patient);
}

short frmDouiRecord::iInit(cT_ADODB &db, const PatientKey &patient) {
    m_db = &db;
    m_patient = patient;
    m_history = std::make_unique<ConsentHistory>(db);
    m_model = new HistoryModel(*m_history, this);
    m_ui->ssDouiD->setModel(m_model);
    connect(m_ui->ssDouiD->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { m_ui->timeLine->select(current.row()); });
    if (iDouiRecordDisp() != 0)
        return -1;
    m_ui->ssDouiD->fitColumns();
    m_ui->ssDouiD->setFocus();
    return 0;
}

short frmDouiRecord::iDouiRecordDisp() {
    const ConsentRowKey current = keyOf(currentRow());
    if (m_history->iRead(m_patient) != 0) {
        m_error = m_history->sErrMsg();
        return -1;
    }
    showRows(current);
    return 0;
}

void frmDouiRecord::showRows(const ConsentRowKey &current) {
    const EntryPatient &patient = m_history->patient();
    m_model->show();
    m_ui->lblPatient->setText(u"<b>%1　%2 様</b>　%3　%4 件"_s.arg(
        QString::number(patient.key.nIDNo), patient.name.toHtmlEscaped(),
        patient.acupuncture ? u"鍼灸"_s : u"マッサージ"_s, QString::number(m_history->rows().size())));
    QStringList tips;
    for (const ConsentDraft &row : m_history->rows())
        tips.append(consentText(row, patient.acupuncture));
    const QDate today = m_environment.clock.today();
    m_ui->timeLine->setLine(m_history->timeLine(today), tips, today);
    goTo(current);
}

void frmDouiRecord::refresh(const ConsentRowKey &current) {
    m_changed = true;
    if (iDouiRecordDisp() == 0)
        goTo(current);
    else
        m_environment.messages.fail(m_error, u"DB-error"_s);
}

void frmDouiRecord::goTo(const ConsentRowKey &key) {
    m_ui->ssDouiD->goTo(m_history->rowOf(key), 0);
}

int frmDouiRecord::currentRow() const {
    const QModelIndex current = m_ui->ssDouiD->currentIndex();
    return current.isValid() ? current.row() : -1;
}

ConsentRowKey frmDouiRecord::keyOf(int row) const {
    return row < 0 ? ConsentRowKey() : m_history->rows()[size_t(row)].key();
}

// In the grid only: a button that has the focus does not mean its row.
void frmDouiRecord::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Delete && focusWidget() == m_ui->ssDouiD)
        erase();
    else
        QDialog::keyPressEvent(event);
}

void frmDouiRecord::enterNew() {
    openEditor([this](frmDouiRecordEdit &form) { return form.iInit(*m_db, m_patient); }, keyOf(currentRow()));
}

void frmDouiRecord::change() {
    const int row = currentRow();
    if (row < 0) {
        enterNew();
        return;
    }
    const ConsentRowKey key = keyOf(row);
    openEditor([&](frmDouiRecordEdit &form) { return form.iInit(*m_db, key); }, key);
}

void frmDouiRecord::openEditor(const std::function<short(frmDouiRecordEdit &)> &begin,
                               const ConsentRowKey &current) {
    frmDouiRecordEdit form(m_environment, this);
    const bool begun = begin(form) == 0;
    if (!begun)
        m_environment.messages.fail(form.sErrMsg());
    if (begun && form.exec() == QDialog::Accepted)
        refresh(form.savedKey());
    else if (!begun || form.isOvertaken())
        refresh(current);
}

void frmDouiRecord::erase() {
    const QString title = u"同意データ削除"_s;
    const int row = currentRow();
    if (row < 0) {
        m_environment.messages.note(u"削除可能なデータがありません。"_s);
        return;
    }
    if (!m_environment.messages.ask(u"同意履歴データの削除を行います。\r\n削除してもよろしいですか？\r\n"
                                    "（削除した同意履歴データは完全に消去されます）"_s,
                                    title, Answer::No))
        return;
    const ConsentRowKey erased = keyOf(row);
    const ConsentRowKey after = keyOf(row + 1 < m_model->rowCount() ? row + 1 : row - 1);
    const RowOutcome outcome = m_history->erase(row);
    if (outcome.kind == RowOutcome::Failed) {
        m_environment.messages.fail(outcome.text, title);
        return;
    }
    if (outcome.kind == RowOutcome::Overtaken)
        m_environment.messages.warn(outcome.text, title);
    else if (!outcome.text.isEmpty())
        m_environment.messages.note(outcome.text);
    refresh(outcome.kind == RowOutcome::Done ? after : erased);
}

// Without a row the patient's own changes tell of those that are gone.
void frmDouiRecord::showChanges() {
    const int row = currentRow();
    showChangeHistory(m_environment, *m_db, row < 0 ? ConsentRowKey{m_patient} : keyOf(row), this);
}

void frmDouiRecord::print() {
    Messages &messages = m_environment.messages;
    if (m_history->rows().empty()) {
        messages.note(u"出力するデータがありません。"_s);
        return;
    }
    if (!messages.ask(u"同意の履歴一覧を出力します。\r\nよろしいですか？"_s, u"印刷問合せ"_s))
        return;
    const EntryPatient &patient = m_history->patient();
    HistoryDocument document{patient.key.nIDNo, patient.name, {}};
    for (const ConsentDraft &row : m_history->rows())
        document.rows.push_back(
            {row.tDouiDay, {row.tDouiKaryoS, row.tDouiKaryoE}, row.cDouiIsiName, row.cDouiIsiKikan});
    SentRun sent(m_environment, *m_db, u"履歴印刷"_s);
    if (const Result<bool> shown = printHistory(m_environment, document, &sent); !shown)
        messages.fail(u"帳票の印刷に失敗しました。\r\n["_s + shown.reason() + u"]"_s);
    noteUnkept(messages, sent.finish(std::ssize(document.rows), 1));
}
