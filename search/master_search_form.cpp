#include "search/master_search_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "db/adodb.h"
#include "export/save_grid.h"
#include "widgets/pick_list_form.h"

#include <QBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the search in one master shows.
struct Look {
    QString formName;
    QString title;
    QString emptyText;
    QList<PickListColumn> columns; ///< behind code, name and reading
    bool codeIsNumber = true;
    QString nameCaption;
};

const PickListColumn patientCount{u"利用者数"_s, u"patients"_s, true};

Look lookOf(Master master) {
    const QList<PickListColumn> ofFacility{
        {u"種別"_s, u"kind"_s}, {u"TEL"_s, u"tel"_s}, {u"住所"_s, u"address"_s}};
    switch (master) {
    case Master::Doctor:
        return {u"frm医師検索"_s,
                u"医師検索"_s,
                u"該当する医師データがありません。"_s,
                {{u"TEL"_s, u"tel"_s}, {u"医療機関"_s, u"kikan"_s}},
                true,
                u"医師名"_s};
    case Master::Hospital:
        return {u"frm病院検索"_s, u"病院検索"_s, u"該当する病院データがありません。"_s,
                ofFacility,       true,          u"病院名"_s};
    case Master::LivingFacility:
        return {u"frm施設検索"_s,
                u"入居施設検索"_s,
                u"該当する施設データがありません。"_s,
                QList{patientCount} + ofFacility,
                true,
                u"施設名"_s};
    case Master::Facility:
        return {u"frm施設検索"_s, u"施設検索"_s, u"該当する施設データがありません。"_s,
                ofFacility,       true,          u"施設名"_s};
    case Master::Insurer:
        return {u"frm保険者検索"_s,
                u"保険者検索"_s,
                u"該当する保険者データがありません。"_s,
                {{u"TEL"_s, u"tel"_s}, {u"住所"_s, u"address"_s}},
                false,
                u"保険者名"_s};
    case Master::Counsellor:
        break;
    }
    return {u"frm相談者検索"_s,
            u"相談者検索"_s,
            u"該当する相談者データがありません。"_s,
            {{u"TEL"_s, u"tel"_s}, {u"所属"_s, u"facility"_s}},
            true,
            u"相談者名"_s};
}

class MasterForm : public PickListForm {
public:
    MasterForm(Master master, cT_ADODB &db, const Environment &environment, const EditRow &editor,
               QWidget *parent)
        : PickListForm(environment.messages, parent),
          m_db(db),
          m_sql(masterListSql(master, environment.branch)),
          m_look(lookOf(master)) {
        setObjectName(m_look.formName);
        setWindowTitle(m_look.title);
        const QList<PickListColumn> first{{u"コード"_s, u"code"_s, m_look.codeIsNumber},
                                          {m_look.nameCaption, u"name"_s},
                                          {u"カナ"_s, u"kana"_s, false, true}};
        setColumns(first + m_look.columns, u"code"_s, u"name"_s);
        offerEditing(editor);
        (new CsvButton(environment, grid(), m_look.title))->insert(buttonRow(), selectButton());
    }

    short iInit() override {
        const Result<> connected = connectForSearch(m_db);
        return connected ? PickListForm::iInit() : fail(connected.reason());
    }

protected:
    Result<Recordset> readList() override { return readForSearch(m_db, m_sql, u"iDsp1ranSub() でエラー"); }
    QString emptyText() const override { return m_look.emptyText; }

private:
    cT_ADODB &m_db;
    QString m_sql;
    Look m_look;
};

} // namespace

CodeLookup MasterSearch::lookup(const QString &code) {
    const Result<Recordset> rows =
        readForSearch(db(), masterRowSql(m_master, office(), code), u"lookup() でエラー");
    if (!rows) {
        fail(rows.reason());
        return CodeLookup::failure(CsErrStr());
    }
    if (rows->rowCount() == 0)
        return CodeLookup::refused(lookOf(m_master).emptyText);
    return {{rows->text(0, rows->column(u"code")), rows->text(0, rows->column(u"name"))}, {}, false};
}

std::unique_ptr<PickListForm> MasterSearch::makeForm(QWidget *parent) {
    return std::make_unique<MasterForm>(m_master, db(), environment(), editor(), parent);
}
