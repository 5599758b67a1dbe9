#include "search/patient_search_form.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "search/patient_search_query.h"
#include "search/staff_choice.h"
#include "ui_patient_conditions.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString &noPatient() {
    static const QString text = u"該当する利用者データがありません。"_s;
    return text;
}

} // namespace

short cls患者検索::iSetRiyouName(qint64 nIDNo, QString &csName) {
    QString kana;
    return iSetRiyouName2(nIDNo, csName, kana);
}

QString cls患者検索::csSetRiyouName_Text(const QString &csIDNo) {
    QString name;
    iSetRiyouName(csIDNo.trimmed().toLongLong(), name);
    return name;
}

short cls患者検索::iSetRiyouName2(qint64 nIDNo, QString &csName, QString &csNameKana) {
    csName.clear();
    csNameKana.clear();
    const Result<Recordset> rows =
        readForSearch(db(), patientNameSql(nIDNo, office()), u"iSetRiyouName2() でエラー");
    if (!rows)
        return fail(rows.reason());
    if (rows->rowCount() == 0)
        return fail(noPatient());
    csName = rows->text(0, rows->column(u"cName"));
    csNameKana = rows->text(0, rows->column(u"cNameKana"));
    return 0;
}

CodeLookup cls患者検索::lookup(const QString &code) {
    const qint64 number = code.toLongLong();
    QString name;
    if (iSetRiyouName(number, name) != 0)
        return CsErrStr() == noPatient() ? CodeLookup::refused(CsErrStr()) : CodeLookup::failure(CsErrStr());
    return {{QString::number(number), name}, {}, false};
}

std::unique_ptr<PickListForm> cls患者検索::makeForm(QWidget *parent) {
    return std::make_unique<frm患者検索>(db(), environment(), iArea, iArea == 0 ? editor() : EditRow(),
                                         parent);
}

void cls患者検索::taken(const PickListForm &form) {
    nSeledCD = seled().code.toLongLong();
    m_office = {};
    if (const int row = form.seledRow(); row >= 0)
        m_office = {cT_ADODB::iNull(form.rows(), row, form.rows().column(u"iKyotenCd")),
                    cT_ADODB::iNull(form.rows(), row, form.rows().column(u"iKyotenEb"))};
}

frm患者検索::frm患者検索(cT_ADODB &db, const Environment &environment, short iArea, const EditRow &editor,
                         QWidget *parent)
    : PickListForm(environment.messages, parent),
      m_ui(std::make_unique<Ui::PatientConditions>()),
      m_db(db),
      m_environment(environment),
      m_allOffices(iArea != 0) {
    setObjectName(u"frm患者検索"_s);
    setWindowTitle(u"利用者検索"_s);
    m_ui->setupUi(conditions());
    m_ui->imD_EndMonth->setUnit(DateBox::Unit::Month);
    m_ui->imD_EndMonth->setClock(environment.clock);
    QList<PickListColumn> columns{{u"ID"_s, u"nIDNo"_s, true},
                                  {u"利用者名"_s, u"cName"_s},
                                  {u"カナ"_s, u"cNameKana"_s, false, true},
                                  {u"略称"_s, u"cNameRyaku"_s, false, true},
                                  {u"TEL"_s, u"cTelNo"_s},
                                  {u"住所1"_s, u"cAdress1"_s},
                                  {u"住所2"_s, u"cAdress2"_s}};
    if (m_allOffices)
        columns.prepend({u"拠点"_s, u"iKyotenCd"_s, true});
    setColumns(columns, u"nIDNo"_s, u"cName"_s);
    offerEditing(editor);
    (new CsvButton(environment, grid(), u"利用者検索"_s))->insert(buttonRow(), selectButton());
    wire();
}

frm患者検索::~frm患者検索() = default;

short frm患者検索::iInit() {
    if (const Result<> connected = connectForSearch(m_db); !connected)
        return fail(connected.reason());
    return iMastDataLoad() == 0 ? PickListForm::iInit() : short(-1);
}

Result<Recordset> frm患者検索::readList() {
    const PatientConditions conditions = typed();
    const QString sql =
        patientListSql(conditions, m_environment.branch, m_allOffices, m_environment.clock.today());
    Result<Recordset> rows = readForSearch(m_db, sql, u"iDsp1ranSub() でエラー");
    if (rows)
        m_read = conditions;
    return rows;
}

QString frm患者検索::emptyText() const {
    return noPatient();
}

QString frm患者検索::summary() const {
    return conditionSummary(m_read);
}

short frm患者検索::iMastDataLoad() {
    const Result<Recordset> staff =
        readForSearch(m_db, staffPickListSql(m_environment.branch), u"iMastDataLoad() でエラー");
    if (!staff)
        return fail(staff.reason());
    m_staff->offer(*staff);
    return 0;
}

void frm患者検索::wire() {
    const auto changed = [this] { return typed() != m_read; };
    m_staff = new StaffChoice(m_ui->imNum_StaffNo, m_ui->cmbStaff, messages(), [this] { refresh(); });
    for (QLineEdit *box :
         {m_ui->txtName, m_ui->txtKana, m_ui->txtTel, static_cast<QLineEdit *>(m_ui->imNum_RiyoushaNo)})
        watchCondition(box, changed);
    connect(m_ui->cmbSejutuKbn, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    connect(m_ui->chkEndKanja, &QCheckBox::toggled, this, [this](bool all) {
        m_ui->imD_EndMonth->setEnabled(!all);
        m_ui->lblEndMonth->setEnabled(!all);
        refresh();
    });
    connect(m_ui->imD_EndMonth, &DateBox::dateChanged, this, [this] { refresh(); });
}

PatientConditions frm患者検索::typed() const {
    return {.name = m_ui->txtName->text(),
            .kana = m_ui->txtKana->text(),
            .tel = m_ui->txtTel->text(),
            .staff = m_staff->number(),
            .kind = short(m_ui->cmbSejutuKbn->currentIndex() - 1),
            .number = m_ui->imNum_RiyoushaNo->number(),
            .ended = m_ui->chkEndKanja->isChecked(),
            .endMonth = m_ui->imD_EndMonth->date()};
}
