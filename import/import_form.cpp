#include "import/import_form.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "import/import_types.h"
#include "import/template_file.h"
#include "widgets/grid.h"
#include "widgets/wait_message_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Widget> Widget *named(Widget *widget, const QString &name) {
    widget->setObjectName(name);
    return widget;
}

QLabel *labelFor(QWidget *input, const QString &caption) {
    auto *label = new QLabel(caption);
    label->setBuddy(input);
    return label;
}

/// Shows how far it is once the work takes time; Esc stops it where nothing has been written.
class Waiting {
public:
    Waiting(QWidget *parent, const QString &text) : m_form(parent), m_text(text) {}
    ImportProgress progress() {
        return [this](int done, int total) {
            if (!m_form.isVisible())
                m_form.showProgress(m_text, frmWaitMsg::Cancel::Allowed);
            m_form.setProgress(done, total);
            return !m_form.cancelled();
        };
    }

private:
    frmWaitMsg m_form;
    QString m_text;
};

} // namespace

frmDataImport::frmDataImport(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_columnsModel(new ImportColumnsModel(this)),
      m_trialModel(new ImportTrialModel(this)),
      m_kind(named(new QComboBox, u"cmbKind"_s)),
      m_type(named(new QComboBox, u"cmbType"_s)),
      m_field(named(new QComboBox, u"cmbField"_s)),
      m_path(named(new QLineEdit, u"txtPath"_s)),
      m_headed(named(new QCheckBox(u"1行目は見出し(&H)"_s), u"chkHeaded"_s)),
      m_leaveUnknown(
          named(new QCheckBox(u"登録のない医師・施設などは空にして取り込む(&U)"_s), u"chkLeaveUnknown"_s)),
      m_copy(named(new QCheckBox(u"変わった名前・住所を利用者などの写しにも反映する(&C)"_s), u"chkCopy"_s)),
      m_refusedOnly(named(new QCheckBox(u"取込不可の行だけ(&R)"_s), u"chkRefused"_s)),
      m_pages(named(new QTabWidget, u"tabPages"_s)),
      m_columns(named(new Grid, u"ssColumns"_s)),
      m_trial(named(new Grid, u"ssTrial"_s)),
      m_summary(named(new QLabel, u"lblSummary"_s)) {
    setObjectName(u"frmDataImport"_s);
    setWindowTitle(u"データの取込"_s);
    setSizeGripEnabled(true);
    setWhatsThis(
        u"取り込む前に、行ごとに何が起きるかを表示します。登録するまで、データベースは変わりません。"_s);
    layOut();
}

QPushButton *frmDataImport::button(const QString &name, const QString &caption, const QString &key,
                                   void (frmDataImport::*work)()) {
    auto *made = named(new QPushButton(caption), name);
    made->setShortcut(QKeySequence(key));
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, work);
    return made;
}

QWidget *frmDataImport::inputs() {
    for (int i = 0; i < importKinds; ++i)
        m_kind->addItem(describeImport(ImportKind(i)).noun);
    m_kind->setCurrentIndex(int(ImportKind::Patients));
    m_path->setPlaceholderText(u"CSVファイル（F3 で選びます）"_s);
    auto *row = new QHBoxLayout;
    row->addWidget(labelFor(m_kind, u"種類(&K)"_s));
    row->addWidget(m_kind);
    row->addWidget(labelFor(m_path, u"ファイル(&F)"_s));
    row->addWidget(m_path, 1);
    row->addWidget(button(u"cmdChoose"_s, u"選択 (F3)"_s, u"F3"_s, &frmDataImport::chooseFile));
    row->addWidget(button(u"cmdTemplate"_s, u"ひな形 (F9)"_s, u"F9"_s, &frmDataImport::writeTemplate));
    auto *options = new QHBoxLayout;
    options->addWidget(m_leaveUnknown);
    options->addWidget(m_copy);
    options->addStretch();
    m_copy->setChecked(true);
    auto *box = new QWidget;
    auto *all = new QVBoxLayout(box);
    all->setContentsMargins({});
    all->addLayout(row);
    all->addLayout(options);
    connect(m_kind, &QComboBox::activated, this, [this] { chooseKind(); });
    connect(m_path, &QLineEdit::returnPressed, this, [this] { readFile(); });
    for (QCheckBox *option : {m_leaveUnknown, m_copy})
        connect(option, &QCheckBox::toggled, this, [this] { tryOut(); });
    return box;
}

QWidget *frmDataImport::columnsPage() {
    m_columns->setModel(m_columnsModel);
    m_columns->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_columns->setAccessibleName(u"ファイルの列"_s);
    m_type->setEditable(true);
    m_type->setInsertPolicy(QComboBox::NoInsert);
    m_type->setMinimumContentsLength(14);
    m_field->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto *row = new QHBoxLayout;
    row->addWidget(labelFor(m_field, u"選んだ列の項目(&I)"_s));
    row->addWidget(m_field);
    row->addWidget(m_headed);
    row->addStretch();
    row->addWidget(labelFor(m_type, u"列の型(&T)"_s));
    row->addWidget(m_type);
    row->addWidget(button(u"cmdKeepType"_s, u"型を保存 (F8)"_s, u"F8"_s, &frmDataImport::keepType));
    auto *page = new QWidget;
    auto *all = new QVBoxLayout(page);
    all->addWidget(m_columns, 1);
    all->addLayout(row);
    connect(m_columns, &Grid::activated, this, [this] {
        m_field->setFocus();
        m_field->showPopup();
    });
    connect(m_columns->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &now) {
                if (m_loaded && now.isValid())
                    m_field->setCurrentIndex(m_field->findData(m_job.columns.fields[size_t(now.row())]));
            });
    connect(m_field, &QComboBox::activated, this, [this] { assign(); });
    connect(m_headed, &QCheckBox::clicked, this, [this](bool on) { setHeaded(on); });
    connect(m_type, &QComboBox::activated, this, [this] { chooseType(); });
    return page;
}

QWidget *frmDataImport::trialPage() {
    m_trial->setModel(m_trialModel);
    m_trial->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_trial->setAccessibleName(u"試した結果"_s);
    m_nextRefused = button(u"cmdNextRefused"_s, u"次の取込不可 (F7)"_s, u"F7"_s, &frmDataImport::goToRefused);
    auto *row = new QHBoxLayout;
    m_summary->setWordWrap(true);
    row->addWidget(m_summary, 1);
    row->addWidget(m_refusedOnly);
    row->addWidget(m_nextRefused);
    auto *page = new QWidget;
    auto *all = new QVBoxLayout(page);
    // Several reasons are more than a column holds.
    auto *whole = named(new QLabel, u"lblReason"_s);
    whole->setWordWrap(true);
    whole->setTextFormat(Qt::PlainText);
    whole->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    whole->setMinimumHeight(2 * fontMetrics().lineSpacing());
    all->addLayout(row);
    all->addWidget(m_trial, 1);
    all->addWidget(whole);
    connect(m_trial->selectionModel(), &QItemSelectionModel::currentChanged, whole,
            [whole](const QModelIndex &now) {
                whole->setText(now.siblingAtColumn(ImportTrialModel::What).data().toString());
            });
    connect(m_refusedOnly, &QCheckBox::toggled, this, [this](bool on) { showRefusedOnly(on); });
    return page;
}

QWidget *frmDataImport::buttons() {
    m_writeAll = button(u"cmdWrite"_s, u"すべて登録 (F5)"_s, u"F5"_s, &frmDataImport::writeAll);
    m_writeRight =
        button(u"cmdWriteRight"_s, u"正しい行だけ登録 (F6)"_s, u"F6"_s, &frmDataImport::writeRight);
    auto *row = new QHBoxLayout;
    row->setContentsMargins({});
    row->addWidget(button(u"cmdTry"_s, u"試し直す (F4)"_s, u"F4"_s, &frmDataImport::readFile));
    row->addStretch();
    row->addWidget(m_writeAll);
    row->addWidget(m_writeRight);
    row->addWidget(button(u"cmdEnd"_s, u"閉じる (F12)"_s, u"F12"_s, &frmDataImport::leave));
    auto *box = new QWidget;
    box->setLayout(row);
    return box;
}

void frmDataImport::layOut() {
    auto *all = new QVBoxLayout(this);
    all->addWidget(inputs());
    m_pages->addTab(trialPage(), u"試した結果(&1)"_s);
    m_pages->addTab(columnsPage(), u"列の対応(&2)"_s);
    all->addWidget(m_pages, 1);
    all->addWidget(buttons());
    const QSize wanted(m_trial->widthOf(110), fontMetrics().height() * 40);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

short frmDataImport::iInit() {
    showPlan({});
    chooseKind();
    m_path->setFocus();
    return 0;
}

ImportKind frmDataImport::kind() const {
    return ImportKind(m_kind->currentIndex());
}

void frmDataImport::chooseKind() {
    const ImportDescription &description = describeImport(kind());
    m_field->clear();
    m_field->addItem(u"（取り込まない）"_s, -1);
    for (size_t field = 0; field < description.fields.size(); ++field)
        m_field->addItem(description.fields[field].caption, int(field));
    m_type->clear();
    m_type->addItems(ImportTypes(m_environment.folders, kind()).names());
    m_type->setCurrentIndex(-1);
    const bool repeated = kind() == ImportKind::Doctors || kind() == ImportKind::Facilities ||
                          kind() == ImportKind::CareManagers;
    m_copy->setVisible(repeated);
    m_leaveUnknown->setVisible(kind() != ImportKind::Facilities && kind() != ImportKind::Staff);
    if (!m_path->text().isEmpty())
        readFile();
}

void frmDataImport::chooseFile() {
    const QString place = QFileInfo(m_path->text()).path();
    const QString chosen = QFileDialog::getOpenFileName(
        this, u"取り込むファイル"_s,
        m_path->text().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                                 : place,
        u"CSV・テキスト (*.csv *.txt *.tsv);;すべて (*)"_s);
    if (chosen.isEmpty())
        return;
    m_path->setText(QDir::toNativeSeparators(chosen));
    readFile();
}

void frmDataImport::readFile() {
    const QString path = QDir::fromNativeSeparators(m_path->text().trimmed());
    if (path.isEmpty()) {
        m_environment.messages.note(u"取り込むファイルを選んでください（F3）。"_s);
        m_path->setFocus();
        return;
    }
    const ImportColumns before = m_job.columns;
    const bool again = m_loaded && m_job.kind == kind();
    m_columnsModel->load(nullptr);
    showPlan({});
    Result<CsvFile> file = [&] {
        Waiting wait(this, u"ファイルを読み込んでいます。"_s);
        return CsvFile::open(path, QFileInfo(path).size() > 4'000'000 ? wait.progress() : ImportProgress());
    }();
    m_loaded = bool(file);
    if (!file) {
        showPlan({}, file.reason().replace(u"\r\n"_s, u" "_s));
        return;
    }
    m_job.kind = kind();
    m_job.branch = m_environment.branch;
    m_job.file = std::move(*file);
    m_job.columns = recogniseColumns(m_job.description(), m_job.file);
    const ImportTypes types(m_environment.folders, kind());
    if (again && before.firstRow == m_job.columns.firstRow)
        m_job.columns = before;
    else
        for (const QString &name : types.names())
            if (types.apply(name, m_job.columns)) {
                m_type->setCurrentText(name);
                break;
            }
    showColumns();
    tryOut();
}

void frmDataImport::showColumns() {
    m_headed->setChecked(m_job.columns.headed);
    const int row = m_columns->currentIndex().row();
    m_columnsModel->load(&m_job);
    m_columns->fitColumns(30);
    m_columns->goTo(std::max(row, 0), 0);
}

void frmDataImport::chooseType() {
    if (!m_loaded)
        return;
    if (!ImportTypes(m_environment.folders, kind()).apply(m_type->currentText(), m_job.columns)) {
        m_environment.messages.note(
            u"このファイルには、型「%1」の見出しがありません。"_s.arg(m_type->currentText()));
        return;
    }
    showColumns();
    tryOut();
}

void frmDataImport::keepType() {
    const QString name = m_type->currentText().trimmed();
    if (!m_loaded || name.isEmpty()) {
        m_environment.messages.note(
            m_loaded ? u"「列の型」に名前を入れてください。次から、その名前で同じ対応を使えます。"_s
                     : u"取り込むファイルを選んでください（F3）。"_s);
        m_pages->setCurrentIndex(1);
        m_type->setFocus();
        return;
    }
    const Result<> kept = ImportTypes(m_environment.folders, kind()).keep(name, m_job.columns);
    if (!kept)
        return m_environment.messages.fail(kept.reason());
    if (m_type->findText(name) < 0)
        m_type->addItem(name);
    m_type->setCurrentText(name);
    m_environment.messages.note(u"列の対応を「%1」として保存しました。"_s.arg(name));
}

// The next column is likely to be the next to assign.
void frmDataImport::assign() {
    const int row = m_columns->currentIndex().row();
    if (!m_loaded || row < 0)
        return;
    m_job.columns.assign(row, m_field->currentData().toInt());
    showColumns();
    tryOut();
    m_pages->setCurrentIndex(1);
    m_columns->goTo(row + 1, 0);
    m_columns->setFocus();
}

void frmDataImport::setHeaded(bool headed) {
    if (!m_loaded)
        return;
    m_job.columns.headed = headed;
    showColumns();
    tryOut();
    m_pages->setCurrentIndex(1);
}

void frmDataImport::tryOut() {
    if (!m_loaded)
        return;
    if (const QString why = whyColumnsFail(m_job.description(), m_job.columns); !why.isEmpty()) {
        showPlan({}, why);
        m_pages->setCurrentIndex(1);
        m_columns->setFocus();
        m_environment.messages.note(why);
        return;
    }
    m_job.unknown = m_leaveUnknown->isChecked() ? UnknownReference::LeftEmpty : UnknownReference::Refused;
    m_job.copy = m_copy->isChecked();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Result<ImportPlan> plan = tryImport(m_job, m_db, m_environment.folders);
    QApplication::restoreOverrideCursor();
    if (!plan) {
        showPlan({}, plan.reason());
        m_environment.messages.note(plan.reason());
        return;
    }
    showPlan(std::move(*plan));
    m_pages->setCurrentIndex(0);
    m_trial->setFocus();
}

void frmDataImport::showPlan(ImportPlan plan, const QString &done) {
    const int refused = plan.count(PlannedRow::Refused);
    const int toWrite = plan.count(PlannedRow::New) + plan.count(PlannedRow::Changed);
    m_trialModel->load(m_loaded ? &m_job : nullptr, std::move(plan));
    m_refusedOnly->setChecked(false);
    const ImportPlan &now = m_trialModel->plan();
    QString counts = u"新規 %L1　変更 %L2　同じ %L3　取込不可 %L4"_s.arg(now.count(PlannedRow::New))
                         .arg(now.count(PlannedRow::Changed))
                         .arg(now.count(PlannedRow::Same))
                         .arg(refused);
    if (now.repeatedHeadings > 0)
        counts += u"　くり返しの見出し %L1"_s.arg(now.repeatedHeadings);
    if (!now.missing.isEmpty())
        counts += u"　データベースにない項目（取り込みません）：%1"_s.arg(now.missing.join(u"、"));
    m_summary->setText(!done.isEmpty() ? done : now.rows.empty() ? QString() : counts);
    m_open = toWrite > 0 && done.isEmpty();
    m_writeAll->setEnabled(m_open && refused == 0);
    m_writeRight->setEnabled(m_open && refused > 0);
    m_nextRefused->setEnabled(refused > 0);
    m_refusedOnly->setEnabled(refused > 0);
    m_trial->fitColumns(36);
    m_trial->goTo(0, ImportTrialModel::What);
}

void frmDataImport::showRefusedOnly(bool only) {
    m_trialModel->showOnly(only ? std::optional(PlannedRow::Refused) : std::nullopt);
    m_trial->goTo(0, ImportTrialModel::What);
}

void frmDataImport::goToRefused() {
    m_pages->setCurrentIndex(0);
    if (const int row = m_trialModel->nextRefused(m_trial->currentIndex().row()); row >= 0)
        m_trial->goTo(row, ImportTrialModel::What);
    m_trial->setFocus();
}

void frmDataImport::write(ImportRows rows) {
    const ImportOutcome outcome = [&] {
        Waiting wait(this, u"登録しています。中止すると、何も登録されません。"_s);
        return writeImport(m_job, m_db, m_environment.folders, m_trialModel->plan(), rows,
                           restPathFor(QDir::fromNativeSeparators(m_path->text().trimmed())),
                           wait.progress());
    }();
    finish(outcome);
}

void frmDataImport::finish(const ImportOutcome &outcome) {
    if (outcome.kind == ImportOutcome::Failed)
        return m_environment.messages.fail(outcome.text);
    if (outcome.kind != ImportOutcome::Done) {
        showPlan(outcome.plan);
        m_environment.messages.note(outcome.text);
        return;
    }
    m_written = true;
    const int left = outcome.plan.count(PlannedRow::Refused);
    QString done = u"登録しました：新規 %L1　変更 %L2"_s.arg(outcome.plan.count(PlannedRow::New))
                       .arg(outcome.plan.count(PlannedRow::Changed));
    if (left > 0)
        done += u"　残り %L1 行は「%2」にあります。直して、もう一度取り込んでください。"_s.arg(left).arg(
            QDir::toNativeSeparators(QFileInfo(outcome.restPath).fileName()));
    showPlan(outcome.plan, done);
    m_pages->setCurrentIndex(0);
    m_trial->setFocus();
    m_environment.messages.note(done);
}

void frmDataImport::writeTemplate() {
    const QString place = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                          u"/ひな形_%1.csv"_s.arg(QString(describeImport(kind()).noun).replace(u'・', u'_'));
    const QString path = QFileDialog::getSaveFileName(this, u"ひな形の保存先"_s, place, u"CSV (*.csv)"_s);
    if (path.isEmpty())
        return;
    const Result<> written = writeImportTemplate(path, kind());
    if (!written)
        return m_environment.messages.fail(written.reason());
    m_environment.messages.note(u"ひな形を「%1」に保存しました。例の行を書き換えて使ってください。"_s.arg(
        QDir::toNativeSeparators(path)));
}

void frmDataImport::leave() {
    reject();
}

void frmDataImport::reject() {
    if (!m_open || m_environment.messages.ask(u"試しただけで、まだ登録していません。閉じますか？"_s))
        QDialog::reject();
}
