#include "print/management/management_master_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "search/picked_list.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString nounOf(EnvelopeDestination picked) {
    switch (picked) {
    case EnvelopeDestination::Institution:
        return u"医療機関"_s;
    case EnvelopeDestination::Doctor:
        return u"医師"_s;
    case EnvelopeDestination::LivingFacility:
        return u"入居施設"_s;
    case EnvelopeDestination::Patient:
        return u"利用者"_s;
    case EnvelopeDestination::Counsellor:
        break;
    }
    return u"相談員"_s;
}

std::unique_ptr<SearchClass> makeSearch(EnvelopeDestination picked, cT_ADODB &db,
                                        const Environment &environment) {
    switch (picked) {
    case EnvelopeDestination::Institution:
        return std::make_unique<MasterSearch>(Master::Hospital, db, environment);
    case EnvelopeDestination::Doctor:
        return std::make_unique<MasterSearch>(Master::Doctor, db, environment);
    case EnvelopeDestination::LivingFacility:
        return std::make_unique<MasterSearch>(Master::LivingFacility, db, environment);
    case EnvelopeDestination::Patient:
        return std::make_unique<cls患者検索>(db, environment);
    case EnvelopeDestination::Counsellor:
        break;
    }
    return std::make_unique<MasterSearch>(Master::Counsellor, db, environment);
}

} // namespace

frm同意書管理印刷_mst::frm同意書管理印刷_mst(Environment &environment, cT_ADODB &db, QWidget *parent)
    : ManagementPrintForm(environment, db, parent), m_list(new PickedList(environment.messages, this)) {
    setObjectName(u"frm同意書管理印刷_mst"_s);
    setWindowTitle(u"同意書管理印刷（マスタ）"_s);
    addChoice(m_list);
    connect(m_list, &PickedList::changed, this, [this] {
        m_picked[m_shown] = m_list->rows();
        showState();
    });
}

frm同意書管理印刷_mst::~frm同意書管理印刷_mst() = default;

SearchClass &frm同意書管理印刷_mst::searchOf(EnvelopeDestination picked) {
    std::unique_ptr<SearchClass> &search = m_searches[picked];
    if (!search)
        search = makeSearch(picked, db(), environment());
    return *search;
}

void frm同意書管理印刷_mst::modeChanged() {
    m_shown = mode() == ManagementMode::Envelope ? destination() : EnvelopeDestination::Patient;
    m_list->setSearch(nounOf(m_shown) + u"を追加(&N)"_s,
                      codeSearch(searchOf(m_shown), environment().messages), m_picked[m_shown]);
}

bool frm同意書管理印刷_mst::settleTargets() {
    if (!m_list->settle())
        return false;
    if (!m_list->rows().empty())
        return true;
    environment().messages.warn(u"印刷する"_s + nounOf(m_shown) + u"を指定してください。"_s);
    m_list->setFocus();
    return false;
}

std::vector<ManagementRow> frm同意書管理印刷_mst::targets() const {
    const Branch &office = environment().branch;
    std::vector<ManagementRow> targets;
    for (const CodeName &row : m_list->rows())
        targets.push_back({{{office.iKyotenCd, office.iKyotenEb, qint32(row.code.toLongLong())}},
                           row.code + u' ' + row.name});
    return targets;
}

Result<EnvelopeWishes> frm同意書管理印刷_mst::wishes(EnvelopeDestination destination) {
    return readMasterWishes(environment(), db(), destination, m_list->codes());
}
