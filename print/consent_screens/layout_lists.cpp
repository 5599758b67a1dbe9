#include "print/consent_screens/layout_lists.h"

#include "app/base/folders.h"
#include "app/base/messages.h"

#include <QFileInfo>
#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

LayoutList LayoutLists::of(ConsentDocument document, bool acupuncture) const {
    const bool letter = document == ConsentDocument::Request;
    LayoutList list;
    for (const RegisteredForm &form : letter ? letters : consentForms)
        if (form.acupuncture == acupuncture && (letter || form.again == (document == ConsentDocument::Again)))
            list.push_back(form);
    return list;
}

Result<LayoutLists> readLayoutLists(cT_ADODB &db, const Branch &branch) {
    using enum FormPrintType;
    LayoutLists lists;
    for (const auto &[type, list, label] :
         {std::tuple(ConsentForm, &lists.consentForms, u"getDouiData"_s),
          std::tuple(RequestLetter, &lists.letters, u"getDouiIraiData"_s)}) {
        Result<std::vector<RegisteredForm>> forms = readRegisteredForms(db, branch, type);
        if (!forms)
            return Failure{forms.reason() + u"\r\n"_s + label + u"() でエラー"_s};
        std::erase_if(*forms, [](const RegisteredForm &form) {
            return form.number < 1 || form.number > std::numeric_limits<short>::max();
        });
        *list = std::move(*forms);
    }
    return lists;
}

const RegisteredForm *resolveLayout(const LayoutList &layouts, qint32 number, Messages &messages) {
    if (number < 1) {
        messages.warn(u"有効な同意書が設定されていません。"_s, u"同意書未設定"_s);
        return nullptr;
    }
    const auto found = std::ranges::find(layouts, number, &RegisteredForm::number);
    if (found != layouts.end())
        return &*found;
    messages.warn(u"同意書が特定できませんでした。"_s, u"同意書特定失敗"_s);
    return nullptr;
}

QString layoutFile(const Environment &environment, const RegisteredForm &layout) {
    return Folders::file(environment.folders.system(), layout.file);
}

bool layoutFileIsThere(const Environment &environment, const RegisteredForm &layout) {
    if (QFileInfo(layoutFile(environment, layout)).isFile())
        return true;
    environment.messages.warn(u"選択された書式が、システムに存在しません。"_s, u"書式ファイルなし"_s);
    return false;
}
