#include "consent/screens/set_print_screen.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/requests/request_marks.h"
#include "consent/requests/request_printing.h"
#include "consent/screens/request_screens.h"
#include "print/set_print/set_print_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool openSet(const ListOpening &opening, SetPrintStart start) {
    Environment &environment = opening.environment;
    std::vector<ConsentRowKey> rows;
    for (const int record : opening.model.targetRecords())
        rows.push_back(opening.model.records().key(record));
    if (rows.empty()) {
        environment.messages.warn(u"印刷する利用者を指定してください。"_s);
        return false;
    }
    bool written = false;
    SetPrintCaller caller;
    caller.letter = keptLetterOptions(environment.folders, environment.clock.today());
    caller.orders = [&] { return letterOrders(tickedRows(opening)); };
    caller.mark = [&](const std::vector<LetterMark> &letters) {
        written = true;
        return markRequests(opening.db, letters);
    };
    frmSetInsatsuDoui form(environment, opening.db, opening.parent);
    if (form.iInit(std::move(rows), std::move(caller), start) != 0) {
        environment.messages.fail(form.sErrMsg());
        return false;
    }
    form.exec();
    return written;
}

} // namespace

bool openConsentForms(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::ConsentForms);
}

bool openSetPrint(const ListOpening &opening) {
    return openSet(opening, SetPrintStart::AsLastTime);
}
