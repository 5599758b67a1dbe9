#include "search/search_class.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "widgets/pick_list_form.h"

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
