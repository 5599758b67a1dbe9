#include "consent/screens/set_print_screen.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/requests/request_printing.h"
#include "consent/screens/request_screens.h"
#include "print/set_print/set_print_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool openSet(const ListOpening &opening, SetPrintStart start) {
    Environment &environment = opening.environment;
    if (opening.model.targetRecords().empty()) {
        environment.messages.warn(u"印刷する利用者を指定してください。"_s);
        return false;
    }
    const std::vector<RequestRow> rows = tickedRows(opening);
    if (rows.empty())
        return false;
    frmSetInsatsuDoui form(environment, opening.db, opening.parent);
    const LetterOptions letter = keptLetterOptions(environment.folders, environment.clock.today());
    if (form.iInit(letterOrders(rows), letter, start) != 0) {
        environment.messages.fail(form.sErrMsg());
        return false;
    }
    form.exec();
    return form.written();
}

} // namespace

bool openConsentForms(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::ConsentForms);
}

bool openSetPrint(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::AsLastTime);
}
