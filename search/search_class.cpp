#include "search/search_class.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "db/adodb.h"
#include "widgets/pick_list_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString noConnection = u"接続文字列取得できません。"_s;

Failure labelled(const QString &reason, QStringView label) {
    return {reason + u"\r\n"_s + label.toString()};
}

} // namespace

short SearchClass::iDspStart(QWidget *parent) {
    m_seled = {};
    const std::unique_ptr<PickListForm> form = makeForm(parent);
    if (form->iInit() != 0)
        return fail(form->CsErrStr());
    form->restoreLayout(m_layout);
    form->exec();
    m_layout = form->layoutState();
    form->vGetSeledInf(m_seled);
    taken(*form);
    return 0;
}

short SearchClass::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

const Branch &SearchClass::office() const {
    return m_environment.branch;
}

CodeSearch codeSearch(SearchClass &search, Messages &messages) {
    return {[&search](const QString &code) { return search.lookup(code); },
            [&search, &messages](QWidget *parent) -> std::optional<CodeName> {
                if (search.iDspStart(parent) != 0) {
                    messages.fail(search.CsErrStr());
                    return std::nullopt;
                }
                if (search.seled().code.isEmpty())
                    return std::nullopt;
                return search.seled();
            }};
}

Result<> connectForSearch(cT_ADODB &db) {
    const ErrorsSince errors(db);
    if (db.iConnect() == 0)
        return {};
    const QString reason = errors.text().trimmed();
    return reason.isEmpty() ? Failure{noConnection} : labelled(reason, u"iInit() でエラー");
}

Result<Recordset> readForSearch(cT_ADODB &db, const QString &sql, QStringView label) {
    Result<Recordset> rows = readRows(db, sql);
    if (rows)
        return rows;
    const QString reason = rows.reason().trimmed();
    return labelled(reason.isEmpty() ? noConnection : reason, label);
}
