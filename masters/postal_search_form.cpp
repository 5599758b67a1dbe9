#include "masters/postal_search_form.h"

#include "app/base/messages.h"
#include "app/base/text.h"

using namespace Qt::Literals::StringLiterals;

PostalSearchForm::PostalSearchForm(Messages &messages, const QString &title, std::vector<PostalPlace> places,
                                   QWidget *parent)
    : PickListForm(messages, parent), m_places(std::move(places)) {
    setObjectName(u"frmYubin"_s);
    setWindowTitle(title);
    setColumns({{u"郵便番号"_s, u"code"_s},
                {u"住所"_s, u"name"_s},
                {u"範囲"_s, u"note"_s},
                {u"カナ"_s, u"kana"_s, false, true}},
               u"code"_s, u"name"_s);
}

Result<Recordset> PostalSearchForm::readList() {
    Recordset rows;
    rows.open({u"code"_s, u"name"_s, u"note"_s, u"kana"_s}, Recordset::Encoding::Utf16);
    rows.reserve(m_places.size());
    for (const PostalPlace &place : m_places)
        for (const QString &text : {postalText(place.code), place.address(), place.note, place.kana})
            rows.appendText(text.constData(), size_t(text.size()) * sizeof(QChar));
    return rows;
}

QString PostalSearchForm::emptyText() const {
    return u"該当する住所がありません。"_s;
}

std::optional<PostalPlace> choosePlace(Messages &messages, const QString &title,
                                       std::vector<PostalPlace> places, QWidget *parent) {
    if (places.empty()) {
        messages.note(u"該当する住所がありません。"_s);
        return std::nullopt;
    }
    if (places.size() == 1)
        return places.front();
    PostalSearchForm form(messages, title, std::move(places), parent);
    if (form.iInit() != 0 || form.exec() != QDialog::Accepted)
        return std::nullopt;
    return form.chosen();
}
