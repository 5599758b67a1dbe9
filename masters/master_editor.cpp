#include "masters/master_editor.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "masters/master_input_form.h"

MasterEditor::MasterEditor(Environment &environment, cT_ADODB &db, std::function<void()> changed)
    : m_environment(environment),
      m_db(db),
      m_changed(std::move(changed)),
      m_postalBook(environment.folders) {}

std::optional<QString> MasterEditor::edit(MasterKind kind, const QString &code, QWidget *parent) {
    MasterInputForm form(*this, kind, parent);
    if (form.iInit(code) != 0) {
        m_environment.messages.fail(form.sErrMsg());
        return std::nullopt;
    }
    if (form.exec() != QDialog::Accepted)
        return std::nullopt;
    if (m_changed)
        m_changed();
    return form.code();
}

bool MasterEditor::mayEdit(MasterKind kind) const {
    return isKeptHere(kind, m_environment.folders, m_db);
}

void MasterEditor::offer(SearchClass &search, MasterKind kind) {
    if (!mayEdit(kind))
        return;
    search.setEditor([this, kind](const QString &code, QWidget *parent) { return edit(kind, code, parent); });
}
