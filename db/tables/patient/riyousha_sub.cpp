#include "db/tables/patient/riyousha_sub.h"

#include "db/tables/base/consent_layout_columns.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_RIYOUSHA_SUB>;

namespace {

constexpr auto columns =
    joinColumns(std::to_array<TableColumn<cD_RIYOUSHA_SUB>>({
                    {u"iKyotenCd", &cD_RIYOUSHA_SUB::iKyotenCd, ColumnUse::Key},
                    {u"iKyotenEb", &cD_RIYOUSHA_SUB::iKyotenEb, ColumnUse::Key},
                    {u"nIDNo", &cD_RIYOUSHA_SUB::nIDNo, ColumnUse::Key},
                    {u"iIsiCd2", &cD_RIYOUSHA_SUB::iIsiCd2},
                    {u"iSisetsuCode", &cD_RIYOUSHA_SUB::iSisetsuCode},
                    {u"iAddressSisetsuCd", &cD_RIYOUSHA_SUB::iAddressSisetsuCd},
                    {u"iAddressSisetsuCd2", &cD_RIYOUSHA_SUB::iAddressSisetsuCd2},
                    {u"iAddressSisetsuCd3", &cD_RIYOUSHA_SUB::iAddressSisetsuCd3},
                    {u"iSoudaninId", &cD_RIYOUSHA_SUB::iSoudaninId},
                    {u"iDouishoId", &cD_RIYOUSHA_SUB::iDouishoId},
                    {u"iDouishoIdKoutou", &cD_RIYOUSHA_SUB::iDouishoIdKoutou},
                    {u"cYubinNoS0Ryosyu", &cD_RIYOUSHA_SUB::cYubinNoS0Ryosyu},
                    {u"cJusyo1S0Ryosyu", &cD_RIYOUSHA_SUB::cJusyo1S0Ryosyu},
                    {u"cJusyo2S0Ryosyu", &cD_RIYOUSHA_SUB::cJusyo2S0Ryosyu},
                    {u"cTelS0Ryosyu", &cD_RIYOUSHA_SUB::cTelS0Ryosyu},
                    {u"cFaxS0Ryosyu", &cD_RIYOUSHA_SUB::cFaxS0Ryosyu},
                    {u"cKeitaiS0Ryosyu", &cD_RIYOUSHA_SUB::cKeitaiS0Ryosyu},
                    {u"cAtenaS0Ryosyu", &cD_RIYOUSHA_SUB::cAtenaS0Ryosyu},
                    {u"cYubinNoS0Renraku", &cD_RIYOUSHA_SUB::cYubinNoS0Renraku},
                    {u"cJusyo1S0Renraku", &cD_RIYOUSHA_SUB::cJusyo1S0Renraku},
                    {u"cJusyo2S0Renraku", &cD_RIYOUSHA_SUB::cJusyo2S0Renraku},
                    {u"cTelS0Renraku", &cD_RIYOUSHA_SUB::cTelS0Renraku},
                    {u"cFaxS0Renraku", &cD_RIYOUSHA_SUB::cFaxS0Renraku},
                    {u"cKeitaiS0Renraku", &cD_RIYOUSHA_SUB::cKeitaiS0Renraku},
                    {u"cAtenaS0Renraku", &cD_RIYOUSHA_SUB::cAtenaS0Renraku},
                }),
                consentLayoutColumns<cD_RIYOUSHA_SUB>,
                std::to_array<TableColumn<cD_RIYOUSHA_SUB>>({
                    {u"cPcName", &cD_RIYOUSHA_SUB::cPcName, ColumnUse::PcName},
                    {u"tUpDateTime", &cD_RIYOUSHA_SUB::tUpDateTime, ColumnUse::UpDateTime},
                }));
constexpr TableDefinition<cD_RIYOUSHA_SUB> definition{u"RIYOUSHA_SUB", columns};

} // namespace

const TableDefinition<cD_RIYOUSHA_SUB> &cD_RIYOUSHA_SUB::table() {
    return definition;
}

short cT_RIYOUSHA_SUB::iDataRead(const PatientKey &key) {
    return read(u" where "_s + sqlWhere(key, u"RIYOUSHA_SUB"));
}
