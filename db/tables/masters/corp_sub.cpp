#include "db/tables/masters/corp_sub.h"

#include "db/tables/base/consent_layout_columns.h"

template class Table<cD_CORP_SUB>;

namespace {

constexpr auto columns = joinColumns(std::to_array<TableColumn<cD_CORP_SUB>>({
                                         {u"iKyotenCd", &cD_CORP_SUB::iKyotenCd, ColumnUse::Key},
                                         {u"iKyotenEb", &cD_CORP_SUB::iKyotenEb, ColumnUse::Key},
                                         {u"iDouiUpdatePermitDay", &cD_CORP_SUB::iDouiUpdatePermitDay},
                                         {u"iDouiKaryoSet", &cD_CORP_SUB::iDouiKaryoSet},
                                         {u"iSaiDouiSet", &cD_CORP_SUB::iSaiDouiSet},
                                         {u"iDouiHogo", &cD_CORP_SUB::iDouiHogo},
                                         {u"iDouiReacquire", &cD_CORP_SUB::iDouiReacquire},
                                         {u"iConsentFixedDay", &cD_CORP_SUB::iConsentFixedDay},
                                         {u"iConsentFixedMonth", &cD_CORP_SUB::iConsentFixedMonth},
                                         {u"cDouiByoumei1_Def", &cD_CORP_SUB::cDouiByoumei1_Def},
                                         {u"cDouiByoumei2_Def", &cD_CORP_SUB::cDouiByoumei2_Def},
                                     }),
                                     consentLayoutColumns<cD_CORP_SUB>,
                                     std::to_array<TableColumn<cD_CORP_SUB>>({
                                         {u"tUpDateTime", &cD_CORP_SUB::tUpDateTime, ColumnUse::UpDateTime},
                                     }));
constexpr TableDefinition<cD_CORP_SUB> definition{u"CORP_SUB", columns};

} // namespace

const TableDefinition<cD_CORP_SUB> &cD_CORP_SUB::table() {
    return definition;
}
