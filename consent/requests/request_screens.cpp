#include "consent/requests/request_screens.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/requests/request_methods_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A row's individual methods are written as its method is: not on rows that the list does not write.
bool mayOwnMethods(const ConsentListModel &model, int record) {
    const QModelIndex method = model.index(model.rowOfRecord(record), int(ListColumn::Method));
    return method.isValid() && model.flags(method).testFlag(Qt::ItemIsEditable);
}

} // namespace

bool openRequestMethods(const ListOpening &opening) {
    RequestMethodsForm form(opening.environment, opening.db, opening.parent);
    std::optional<MethodsRow> row;
    if (opening.currentRecord >= 0 && mayOwnMethods(opening.model, opening.currentRecord))
        row = {opening.model.records().row(opening.currentRecord), opening.model.who(opening.currentRecord)};
    if (form.iInit(row, u"（変形徒手と履歴の行には登録できません）"_s) != 0) {
        opening.environment.messages.failIn(form.sErrMsg(), u"cmdAddIrai_Click()でエラー");
        return false;
    }
    form.exec();
    return form.written();
}
