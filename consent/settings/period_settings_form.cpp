#include "consent/settings/period_settings_form.h"

#include "ui_period_settings_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/settings.h"
#include "consent/settings/period_types_model.h"
#include "consent/settings/period_types_query.h"
#include "export/save_grid.h"
#include "widgets/tick_delegate.h"

#include <QHeaderView>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

frm同意書管理設定::frm同意書管理設定(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_ui(std::make_unique<Ui::PeriodSettingsForm>()),
      m_default(new PeriodTypesModel(this)),
      m_model(new PeriodTypesModel(this)) {
    m_ui->setupUi(this);
    setObjectName(u"frm同意書管理設定"_s);
    m_ui->ssDef->setModel(m_default);
    m_ui->ssDouiData->setModel(m_model);
    for (const int column : {PeriodTypesModel::Tick, PeriodTypesModel::Number, PeriodTypesModel::Name})
        m_ui->ssDef->setColumnHidden(column, true);
    m_ui->ssDouiData->setItemDelegateForColumn(PeriodTypesModel::Tick,
                                               new TickDelegate(environment.folders, this));
    m_ui->ssDouiData->horizontalHeader()->setSectionResizeMode(PeriodTypesModel::Name, QHeaderView::Stretch);
    (new CsvButton(environment, *m_ui->ssDouiData, u"同意管理設定"_s))
        ->insert(*m_ui->rowButtons, *m_ui->btnSave);
    wire();
    const QSize wanted(m_ui->ssDouiData->widthOf(62), fontMetrics().height() * 34);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

frm同意書管理設定::~frm同意書管理設定() = default;

void frm同意書管理設定::wire() {
    connect(m_ui->txtSibori, &QLineEdit::textChanged, this, [this] { narrow(); });
    connect(m_ui->chkChigai, &QCheckBox::toggled, this, [this] { narrow(); });
    connect(m_ui->cmdAllCheck, &QPushButton::clicked, this,
            [this] { m_model->tickAll(!m_model->allTicked()); });
    connect(m_ui->cmdSetData, &QPushButton::clicked, this, [this] { setData(); });
    connect(m_ui->btnSave, &QPushButton::clicked, this, [this] { saveAsked(); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, [this] { reject(); });
    for (const PeriodTypesModel *model : {m_default, m_model})
        connect(model, &PeriodTypesModel::edited, this, [this] { showState(); });
}

Result<PeriodTypeTable> frm同意書管理設定::read() const {
    const Settings settings(m_environment.folders);
    if (const Result<> readable = settings.readable(Setting::同意書自動計算デフォルト); !readable)
        return Failure{readable.reason() + u"\r\ndataLoadRiyousha()でエラー"_s};
    Result<std::vector<PatientTypes>> patients = readPatientTypes(m_db, m_environment.branch);
    if (!patients)
        return Failure{patients.reason()};
    return PeriodTypeTable{settings.text(Setting::同意書自動計算デフォルト), std::move(*patients)};
}

short frm同意書管理設定::iInit() {
    const Result<PeriodTypeTable> table = read();
    if (!table) {
        m_error = table.reason();
        return -1;
    }
    showTable(*table);
    m_ui->ssDouiData->fitColumns();
    m_ui->ssDef->fitColumns();
    const QHeaderView *header = m_ui->ssDef->horizontalHeader();
    const int frame = 2 * m_ui->ssDef->frameWidth();
    m_ui->ssDef->setFixedSize(header->length() + frame,
                              header->sizeHint().height() +
                                  m_ui->ssDef->verticalHeader()->defaultSectionSize() + frame);
    m_ui->ssDef->goTo(0, PeriodTypesModel::FirstType);
    m_ui->ssDouiData->goTo(0, PeriodTypesModel::FirstType);
    m_ui->ssDouiData->setFocus();
    return 0;
}

void frm同意書管理設定::showTable(const PeriodTypeTable &table) {
    m_stored = table.defaults;
    const PeriodTypes types = periodTypesOf(table.defaults);
    m_default->load({{0, {}, types, types}});
    m_model->load(table.patients);
    narrow();
}

PeriodTypes frm同意書管理設定::defaults() const {
    return m_default->patients().empty() ? PeriodTypes() : m_default->patients().front().now;
}

void frm同意書管理設定::narrow() {
    const PeriodTypes types = defaults();
    m_model->narrow(m_ui->txtSibori->text(), m_ui->chkChigai->isChecked() ? &types : nullptr);
}

void frm同意書管理設定::showState() {
    const int shown = m_model->rowCount(), all = int(m_model->patients().size());
    const QString rows = shown == all ? u"%L1 人"_s.arg(all) : u"%L1 / %L2 人"_s.arg(shown).arg(all);
    m_ui->lblCount->setText(u"表示 %1　選択 %L2 人　変更 %L3 人"_s.arg(rows)
                                .arg(m_model->tickedCount())
                                .arg(m_model->changedCount()));
}

// Commands by key leave a cell's editor open.
bool frm同意書管理設定::settleCells() {
    return m_ui->ssDef->commitEditor() && m_ui->ssDouiData->commitEditor();
}

bool frm同意書管理設定::isChanged() const {
    return m_default->changedCount() + m_model->changedCount() > 0;
}

bool frm同意書管理設定::isRight() {
    const auto goToWrong = [&](Grid &grid, PeriodTypesModel &model) {
        const QModelIndex wrong = model.firstWrong();
        if (!wrong.isValid())
            return false;
        grid.goTo(wrong.row(), wrong.column());
        grid.setFocus();
        return true;
    };
    if (!goToWrong(*m_ui->ssDef, *m_default) && !goToWrong(*m_ui->ssDouiData, *m_model))
        return true;
    m_environment.messages.warn(u"設定にエラーが発生しています。エラーを修正してください。"_s);
    return false;
}

// An empty type in the defaults would take a patient's away.
void frm同意書管理設定::setData() {
    if (!settleCells())
        return;
    const PeriodTypes types = defaults();
    if (std::ranges::any_of(types, &QString::isEmpty) || m_default->firstWrong().isValid()) {
        m_environment.messages.note(u"既定の計算方法に 1 または 2 を入力してください。"_s);
        m_ui->ssDef->setFocus();
    } else if (m_model->setTicked(types) == 0) {
        m_environment.messages.note(u"利用者を選択してください。"_s);
    }
}

void frm同意書管理設定::saveAsked() {
    if (!settleCells() || !isRight())
        return;
    if (!isChanged())
        m_environment.messages.note(u"変更された設定はありません。"_s);
    else if (m_environment.messages.ask(u"設定を保存しますか？"_s))
        write();
}

bool frm同意書管理設定::write() {
    const QString defaultsNow = m_default->changedCount() == 0 ? m_stored : storedPeriodTypes(defaults());
    const Result<TypesSaved> saved = savePeriodTypes(m_db, m_environment.folders, m_environment.branch,
                                                     {m_stored, m_model->patients()}, defaultsNow);
    if (!saved) {
        m_environment.messages.fail(saved.reason(), u"DB-error"_s);
        return false;
    }
    QStringList overtaken = saved->overtaken;
    if (saved->defaultsOvertaken)
        overtaken.prepend(u"既定の計算方法"_s);
    if (overtaken.isEmpty()) {
        m_environment.messages.note(u"設定を保存しました。"_s);
        readAgain();
        return true;
    }
    constexpr qsizetype named = 20;
    const qsizetype more = overtaken.size() - named;
    if (m_environment.messages.ask(
            u"次の設定は、読み込んだ後に他の端末で変更されたため、保存できませんでした。"
            "何も保存されていません。\r\n\r\n"_s +
            overtaken.mid(0, named).join(u"\r\n"_s) +
            (more > 0 ? u"\r\nほか %L1 件"_s.arg(more) : QString()) +
            u"\r\n\r\n他の変更を残したまま、最新の内容を読み直します。よろしいですか？"_s))
        readAgain();
    return false;
}

// What was edited and not overtaken stays.
void frm同意書管理設定::readAgain() {
    const Result<PeriodTypeTable> later = read();
    if (!later) {
        m_environment.messages.fail(later.reason(), u"DB-error"_s);
        return;
    }
    PeriodTypeTable table{m_stored, m_model->patients()};
    table.takeOver(*later);
    const PatientTypes before = m_default->patients().front();
    const QModelIndex current = m_ui->ssDouiData->currentIndex();
    showTable(table);
    if (before.read == m_default->patients().front().read)
        m_default->load({before});
    m_ui->ssDouiData->goTo(current.row(), qMax<int>(PeriodTypesModel::FirstType, current.column()));
}

void frm同意書管理設定::reject() {
    if (!settleCells())
        return;
    if (isChanged()) {
        const Answer answer = m_environment.messages.show({u"設定が変更されています。保存しますか？"_s,
                                                           MessageIcon::Question,
                                                           {},
                                                           MessageButtons::YesNoCancel,
                                                           Answer::Yes});
        if (answer == Answer::Cancel || (answer == Answer::Yes && (!isRight() || !write())))
            return;
    }
    QDialog::reject();
}
