#pragma once

#include "print/management/management_print_form.h"
#include "widgets/code_lookup.h"

#include <map>

class PickedList;
class SearchClass;

/// The documents of consent management driven from the masters: for patients, whether they have a consent or
/// not; envelopes for whatever the destination names. Created, initialised by iInit and shown modally by
/// exec().
class frm同意書管理印刷_mst : public ManagementPrintForm {
public:
    frm同意書管理印刷_mst(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~frm同意書管理印刷_mst() override;

    void iInit(PutOutLetters letters) { init(std::move(letters)); }

protected:
    bool fromMasters() const override { return true; }
    std::vector<ManagementRow> targets() const override;
    Result<EnvelopeWishes> wishes(EnvelopeDestination destination) override;
    bool settleTargets() override;
    void modeChanged() override;

private:
    SearchClass &searchOf(EnvelopeDestination picked);

    std::map<EnvelopeDestination, std::unique_ptr<SearchClass>> m_searches;
    std::map<EnvelopeDestination, std::vector<CodeName>> m_picked; ///< in each of the masters
    PickedList *m_list;
    EnvelopeDestination m_shown = EnvelopeDestination::Patient; ///< the master in the list
};
