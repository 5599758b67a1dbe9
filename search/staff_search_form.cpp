#include "search/staff_search_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "search/patient_search_query.h"
#include "search/staff_choice.h"
#include "search/staff_search_query.h"
#include "ui_staff_conditions.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int OfficeRole = Qt::UserRole;
constexpr int BranchRole = Qt::UserRole + 1;

QString officeCode(const Branch &office) {
    return u"%1-%2"_s.arg(office.iKyotenCd, 2, 10, QChar(u'0')).arg(office.iKyotenEb, 2, 10, QChar(u'0'));
}

} // namespace

short cls施術者検索::iChkStaff(qint64 nIDNo, QString &csName) {
    csName.clear();
    const Result<Recordset> rows = readForSearch(db(), staffCheckSql(nIDNo, office()), u"iChkStaff でエラー");
    m_checkFailed = !rows;
    if (m_checkFailed)
        return fail(rows.reason());
    if (rows->rowCount() == 0)
        return fail(u"対象の施術者が存在しません。"_s);
    if (rows->number(0, rows->column(u"iChusiFlg")) != 0)
        return fail(u"管理対象から外れています。"_s);
    csName = rows->text(0, rows->column(u"cName"));
    return 0;
}

CodeLookup cls施術者検索::lookup(const QString &code) {
    const qint64 number = code.toLongLong();
    QString name;
    if (iChkStaff(number, name) != 0)
        return m_checkFailed ? CodeLookup::failure(CsErrStr()) : CodeLookup::refused(CsErrStr());
    return {{QString::number(number), name}, {}, false};
}

std::unique_ptr<PickListForm> cls施術者検索::makeForm(QWidget *parent) {
    return std::make_unique<frm施術者検索>(db(), environment(), allOffices, consultation,
                                           allOffices ? EditRow() : editor(), parent);
}

void cls施術者検索::taken(const PickListForm &form) {
    nSeledCD = seled().code.toLongLong();
    m_office = {};
    if (const int row = form.seledRow(); row >= 0)
        m_office = {cT_ADODB::iNull(form.rows(), row, form.rows().column(u"iKyotenCd")),
                    cT_ADODB::iNull(form.rows(), row, form.rows().column(u"iKyotenEb"))};
}

frm施術者検索::frm施術者検索(cT_ADODB &db, const Environment &environment, bool allOffices,
                             qint64 consultation, const EditRow &editor, QWidget *parent)
    : PickListForm(environment.messages, parent),
      m_ui(std::make_unique<Ui::StaffConditions>()),
      m_db(db),
      m_environment(environment),
      m_allOffices(allOffices),
      m_consultation(consultation) {
    setObjectName(u"frm施術者検索"_s);
    setWindowTitle(u"施術者検索"_s);
    m_ui->setupUi(conditions());
    QList<PickListColumn> columns{{u"ID"_s, u"nIDNo"_s, true},
                                  {u"施術者名"_s, u"cName"_s},
                                  {u"カナ"_s, u"cNameKana"_s, false, true},
                                  {u"略称"_s, u"cNameRyaku"_s, false, true}};
    if (m_allOffices)
        columns.prepend({u"拠点"_s, u"iKyotenCd"_s, true});
    setColumns(columns, u"nIDNo"_s, u"cName"_s);
    offerEditing(editor);
    (new CsvButton(environment, grid(), u"施術者検索"_s))->insert(buttonRow(), selectButton());
    wire();
}

frm施術者検索::~frm施術者検索() = default;

short frm施術者検索::iInit() {
    if (const Result<> connected = connectForSearch(m_db); !connected)
        return fail(connected.reason());
    if (loadOffices() != 0 || iMastDataLoad() != 0)
        return -1;
    return PickListForm::iInit();
}

Result<Recordset> frm施術者検索::readList() {
    const StaffConditions conditions = typed();
    Result<Recordset> rows = readForSearch(m_db, staffListSql(conditions), u"iDsp1ranSub() でエラー");
    if (rows)
        m_read = conditions;
    return rows;
}

QString frm施術者検索::emptyText() const {
    return u"該当する施術者データがありません。"_s;
}

QString frm施術者検索::summary() const {
    return conditionSummary(m_read);
}

// Without the right to look into other offices the list holds the current one alone: a number of another
// office would name somebody else here.
short frm施術者検索::loadOffices() {
    const Result<Recordset> offices = readForSearch(m_db, officeListSql(m_allOffices), u"iInit() でエラー");
    if (!offices)
        return fail(offices.reason());
    const QSignalBlocker quiet(m_ui->cmbKyoten);
    const auto add = [this](const QString &text, const Branch &office) {
        m_ui->cmbKyoten->addItem(text, office.iKyotenCd);
        m_ui->cmbKyoten->setItemData(m_ui->cmbKyoten->count() - 1, office.iKyotenEb, BranchRole);
        if (office == m_environment.branch)
            m_ui->cmbKyoten->setCurrentIndex(m_ui->cmbKyoten->count() - 1);
    };
    if (m_allOffices)
        m_ui->cmbKyoten->addItem(u"（すべて）"_s);
    for (int row = 0; row < offices->rowCount(); ++row) {
        const Branch office{short(offices->number(row, 0)), short(offices->number(row, 1))};
        if (m_allOffices || office == m_environment.branch)
            add(officeCode(office) + u"  "_s + offices->text(row, 2), office);
    }
    if (!m_allOffices && m_ui->cmbKyoten->count() == 0)
        add(officeCode(m_environment.branch), m_environment.branch);
    m_ui->cmbKyoten->setEnabled(m_allOffices);
    return 0;
}

short frm施術者検索::iMastDataLoad() {
    const Result<Recordset> staff =
        readForSearch(m_db, staffPickListSql(m_environment.branch), u"iMastDataLoad() でエラー");
    if (!staff)
        return fail(staff.reason());
    if (staff->rowCount() == 0)
        messages().warn(u"該当する患者データがありません。"_s);
    m_staff->offer(*staff);
    return 0;
}

void frm施術者検索::wire() {
    const auto changed = [this] { return typed() != m_read; };
    m_staff = new StaffChoice(m_ui->imNum_StaffNo, m_ui->cmbStaff, messages(), [this] { refresh(); });
    watchCondition(m_ui->txtName, changed);
    watchCondition(m_ui->txtKana, changed);
    connect(m_ui->cmbKyoten, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    connect(m_ui->chkChusi, &QCheckBox::toggled, this, [this] { refresh(); });
}

StaffConditions frm施術者検索::typed() const {
    StaffConditions conditions{.name = m_ui->txtName->text(),
                               .kana = m_ui->txtKana->text(),
                               .number = m_staff->number(),
                               .suspended = m_ui->chkChusi->isChecked(),
                               .office = m_environment.branch,
                               .consultation = m_consultation};
    const QVariant office = m_ui->cmbKyoten->currentData(OfficeRole);
    conditions.allOffices = !office.isValid();
    if (office.isValid())
        conditions.office = {short(office.toInt()), short(m_ui->cmbKyoten->currentData(BranchRole).toInt())};
    return conditions;
}
