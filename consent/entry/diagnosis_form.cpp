#include "consent/entry/diagnosis_form.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "consent/entry/diagnosis_list.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

DiagnosisForm::DiagnosisForm(Environment &environment, QWidget *parent)
    : PickListForm(environment.messages, parent),
      m_path(Folders::file(environment.folders.data(), u"傷病名List.txt"_s)) {
    setObjectName(u"frm傷病名選択"_s);
    setWindowTitle(u"傷病名の選択"_s);
    setColumns({{u"No."_s, u"number"_s, true}, {u"傷病名"_s, u"name"_s}}, u"number"_s, u"name"_s);
}

Result<Recordset> DiagnosisForm::readList() {
    return readDiagnoses(m_path);
}

QString DiagnosisForm::emptyText() const {
    return u"傷病名の一覧「%1」に傷病名がありません。"_s.arg(QDir::toNativeSeparators(m_path));
}
