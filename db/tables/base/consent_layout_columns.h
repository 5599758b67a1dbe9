#pragma once

#include "db/tables/base/table.h"
#include "db/tables/consent_layout_settings.h"

/// The columns of the twelve settings, for a record class R that holds them.
template <class R>
inline constexpr auto consentLayoutColumns = std::to_array<TableColumn<R>>({
    {u"iSyokaiDouiON", &R::iSyokaiDouiON},
    {u"iSyokaiDouiMasTypeNo", &R::iSyokaiDouiMasTypeNo},
    {u"iSyokaiDouiHariTypeNo", &R::iSyokaiDouiHariTypeNo},
    {u"iSaiDouiON", &R::iSaiDouiON},
    {u"iSaiDouiMasTypeNo", &R::iSaiDouiMasTypeNo},
    {u"iSaiDouiHariTypeNo", &R::iSaiDouiHariTypeNo},
    {u"iDouiiraiON", &R::iDouiiraiON},
    {u"iDouiiraiMasTypeNo", &R::iDouiiraiMasTypeNo},
    {u"iDouiiraiHariTypeNo", &R::iDouiiraiHariTypeNo},
    {u"iDouiDispSejyutu", &R::iDouiDispSejyutu},
    {u"iDouiDispIshidata", &R::iDouiDispIshidata},
    {u"iDouiDispRiyouNo", &R::iDouiDispRiyouNo},
});
