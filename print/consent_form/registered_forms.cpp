#include "print/consent_form/registered_forms.h"

#include "db/tables/masters/shinseisyo.h"

Result<std::vector<RegisteredForm>> readRegisteredForms(cT_ADODB &db, const Branch &branch,
                                                        FormPrintType type) {
    cT_SHINSEISYO table;
    if (table.iInit(db) != 0 || table.iDataReadGrid(branch, short(type)) != 0)
        return Failure{table.sErrMsg()};
    std::vector<RegisteredForm> forms;
    for (const cD_SHINSEISYO &form : table.records())
        forms.push_back({form.nIDNo, form.cFileName.trimmed(), form.iKubun != 0, form.iSejutsuKubun != 0,
                         form.cDispName.trimmed()});
    return forms;
}
