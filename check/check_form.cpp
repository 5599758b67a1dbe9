#include "check/check_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "print/grid_print/grid_print.h"
#include "widgets/grid.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

FindingsModel::FindingsModel(QObject *parent)
    : TableModel({{u"結果"_s}, {u"表"_s}, {u"列"_s}, {u"内容"_s}, {u"影響する画面・帳票"_s}, {u"対処"_s}},
                 parent) {}

void FindingsModel::load(const std::vector<Finding> &findings, bool all) {
    beginResetModel();
    m_rows.clear();
    std::ranges::copy_if(findings, std::back_inserter(m_rows),
                         [all](const Finding &finding) { return all || finding.isTrouble(); });
    // What fails stands before what is only slow or empty.
    if (!all)
        std::ranges::stable_sort(m_rows, {}, [](const Finding &finding) { return !finding.isSerious(); });
    endResetModel();
}

QVariant FindingsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const Finding &finding = m_rows[size_t(index.row())];
    switch (index.column()) {
    case State:
        return captionOf(finding.kind);
    case Table:
        return finding.table;
    case Name:
        return finding.column;
    case Text:
        return finding.text;
    case Uses:
        return finding.uses;
    case Remedy:
        return finding.remedy;
    default:
        return {};
    }
}

DatabaseCheckForm::DatabaseCheckForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_db(db) {
    setObjectName(u"frmDbKakunin"_s);
    setWindowTitle(u"データベースの確認"_s);
    layOut();
}

void DatabaseCheckForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_summary = new QLabel(this));
    m_summary->setObjectName(u"lblKekka"_s);
    m_summary->setWordWrap(true);
    m_grid = new Grid(this);
    m_grid->setObjectName(u"ssKekka"_s);
    m_grid->setAccessibleName(u"確認の結果"_s);
    m_grid->setModel(&m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_detail = new QLabel(this));
    m_detail->setObjectName(u"lblNaiyo"_s);
    m_detail->setWordWrap(true);
    m_detail->setTextFormat(Qt::PlainText);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_detail->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_detail->setMinimumHeight(4 * fontMetrics().lineSpacing());
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) { showDetail(current.row()); });
    auto *buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    m_all = new QCheckBox(u"問題のないものも表示する(&A)"_s);
    m_all->setObjectName(u"chkSubete"_s);
    connect(m_all, &QCheckBox::toggled, this, [this] { showRows(); });
    buttons->addWidget(m_all);
    buttons->addStretch();
    const auto button = [&](const QString &name, const QString &caption, const QString &key, auto work) {
        auto *made = new QPushButton(u"%1 (%2)"_s.arg(caption, key));
        made->setObjectName(name);
        made->setShortcut(key);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, work);
        buttons->addWidget(made);
        return made;
    };
    button(u"cmdUpdate"_s, u"もう一度確認"_s, u"F4"_s, [this] { checkAgain(); });
    button(u"cmdPrint"_s, u"印刷"_s, u"F11"_s, [this] { print(); });
    auto *end = button(u"cmdEnd"_s, u"終了"_s, u"F12"_s, [this] { reject(); });
    (new CsvButton(m_environment, *m_grid, windowTitle()))->insert(*buttons, *end);
    resize(QSize(m_grid->widthOf(84), fontMetrics().height() * 30)
               .boundedTo(screen()->availableSize() * 95 / 100));
}

short DatabaseCheckForm::iInit() {
    Result<std::vector<Finding>> findings = checkDatabase(m_db);
    if (!findings) {
        m_error = findings.reason();
        return -1;
    }
    m_findings = *std::move(findings);
    m_summary->setText(summaryOf(m_findings));
    showRows();
    m_grid->setFocus();
    return 0;
}

void DatabaseCheckForm::checkAgain() {
    if (iInit() != 0)
        m_environment.messages.failIn(m_error, u"iInit() でエラー");
    else
        m_environment.messages.note(u"もう一度確認しました。"_s);
}

void DatabaseCheckForm::showRows() {
    m_model.load(m_findings, m_all->isChecked());
    m_grid->fitColumns(34);
    m_grid->goTo(0, 0);
    showDetail(0);
}

void DatabaseCheckForm::showDetail(int row) {
    const Finding *finding = m_model.at(row);
    m_detail->setText(finding ? detailOf(*finding) : QString());
}

void DatabaseCheckForm::print() {
    printGrid(m_environment,
              {windowTitle(), {m_db.sDbName(), summaryOf(m_findings)}, tableOf(*m_grid), {1, 2}});
}
