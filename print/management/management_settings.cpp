#include "print/management/management_settings.h"

#include "app/base/folders.h"
#include "app/base/settings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString modeKey = u"印刷帳票"_s;
const QString patternKey = u"台帳様式"_s;
const QString envelopeKey = u"封筒様式"_s;
const QString destinationKey = u"宛先"_s;

SettingsSection section(const Folders &folders) {
    return {folders, u"印刷設定.ini"_s, u"同意書管理印刷"_s};
}

} // namespace

Result<> ManagementSettings::read(const Folders &folders) {
    const SettingsSection kept = section(folders);
    if (const Result<> readable = kept.readable(); !readable && !kept.isNotMadeYet())
        return readable;
    mode = kept.choice(modeKey, mode, ManagementMode::RenewalList);
    if (int(mode) == 0)
        mode = ManagementMode::Ledger;
    ledger = kept.choice(patternKey, ledger, LedgerPattern::Staff);
    envelope = kept.choice(envelopeKey, envelope, EnvelopeSize::Square2);
    destination = kept.choice(destinationKey, destination, EnvelopeDestination::Counsellor);
    return {};
}

Result<> ManagementSettings::write(const Folders &folders) const {
    return section(folders).write({{modeKey, storedChoice(mode)},
                                   {patternKey, storedChoice(ledger)},
                                   {envelopeKey, storedChoice(envelope)},
                                   {destinationKey, storedChoice(destination)}});
}
