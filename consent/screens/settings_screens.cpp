#include "consent/screens/settings_screens.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "backup/restore_form.h"
#include "check/check_form.h"
#include "consent/settings/period_settings_form.h"
#include "fees/fees_form.h"
#include "history/screens/prepare_form.h"
#include "import/import_form.h"
#include "masters/master_list_form.h"
#include "print/consent_screens/consent_screens.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Form> bool openMaster(const ListOpening &opening) {
    Form form(opening.environment, opening.db, opening.parent);
    if (form.iInit() != 0) {
        opening.environment.messages.fail(form.sErrMsg());
        return false;
    }
    form.exec();
    return form.written();
}

/// A screen that writes nothing that the list shows.
template <class Form> bool openAlone(const ListOpening &opening) {
    Form form(opening.environment, opening.db, opening.parent);
    if (form.iInit() == 0)
        form.exec();
    else
        opening.environment.messages.failIn(form.sErrMsg(), u"iInit() でエラー");
    return false;
}

/// A master that the suite's own program may keep.
template <class Form> bool openOwnMaster(const ListOpening &opening, MasterKind kind) {
    if (isKeptHere(kind, opening.environment.folders, opening.db))
        return openMaster<Form>(opening);
    opening.environment.messages.note(
        u"業務システムで登録する設定です。ここで登録するときは、設定の「利用者などを登録する」を入れてください。"_s);
    return false;
}

} // namespace

bool openDoctors(const ListOpening &opening) {
    return openMaster<frmMainteIshi02>(opening);
}

bool openFacilities(const ListOpening &opening) {
    return openMaster<frmMainteSisetsu>(opening);
}

bool openPatients(const ListOpening &opening) {
    return openOwnMaster<frmMainteRiyousha>(opening, MasterKind::Patient);
}

bool openCounsellors(const ListOpening &opening) {
    return openOwnMaster<frmMainteSoudan>(opening, MasterKind::Counsellor);
}

bool openStaff(const ListOpening &opening) {
    return openOwnMaster<frmMainteStaff>(opening, MasterKind::Staff);
}

bool openImport(const ListOpening &opening) {
    frmDataImport form(opening.environment, opening.db, opening.parent);
    form.iInit();
    form.exec();
    return form.written();
}

bool openFees(const ListOpening &opening) {
    return openAlone<FeesForm>(opening);
}

bool openDatabaseCheck(const ListOpening &opening) {
    return openAlone<DatabaseCheckForm>(opening);
}

bool openHistoryPreparation(const ListOpening &opening) {
    return openAlone<HistoryPrepareForm>(opening);
}

bool openBackups(const ListOpening &opening) {
    restoreBackup(opening.environment, opening.parent);
    return false;
}

bool openCompanyConsentForms(const ListOpening &opening) {
    setCompanyConsentForms(opening.environment, opening.db, opening.parent);
    return false;
}

bool openPatientConsentForms(const ListOpening &opening) {
    setPatientConsentForms(opening.environment, opening.db, opening.current->key().patient, opening.parent);
    return false;
}

bool openPeriodSettings(const ListOpening &opening) {
    frm同意書管理設定 form(opening.environment, opening.db, opening.parent);
    if (form.iInit() != 0) {
        opening.environment.messages.fail(form.sErrMsg(), u"DB-error"_s);
        return false;
    }
    form.exec();
    return true;
}
