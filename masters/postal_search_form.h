#pragma once

#include "masters/postal_codes.h"
#include "widgets/pick_list_form.h"

/// Several places to choose one from.
class PostalSearchForm : public PickListForm {
public:
    PostalSearchForm(Messages &messages, const QString &title, std::vector<PostalPlace> places,
                     QWidget *parent);

    const PostalPlace &chosen() const { return m_places[size_t(seledRow())]; }

protected:
    Result<Recordset> readList() override;
    QString emptyText() const override;

private:
    std::vector<PostalPlace> m_places;
};

/// The one place, or the one that is chosen of several; nothing when there is none, which is said, or none is
/// chosen.
std::optional<PostalPlace> choosePlace(Messages &messages, const QString &title,
                                       std::vector<PostalPlace> places, QWidget *parent);
