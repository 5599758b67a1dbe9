#include "consent/list/list_links.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

std::span<const ListLink> listLinks() {
    static const std::array links{
        ListLink{u"mnPeriodNotFollowByHenkei"_s, Setting::変形連動, &LinkOptions::deformity},
        ListLink{u"mnHoliday"_s, Setting::祝日考慮, &LinkOptions::holidays},
        ListLink{u"mnSameDouiDay"_s, Setting::前回取得日連動, &LinkOptions::previousDay},
    };
    return links;
}

bool switchLink(const QString &command, bool on, LinkOptions &links, const Folders &folders,
                QString *reason) {
    const auto link = std::ranges::find(listLinks(), command, &ListLink::command);
    if (link == listLinks().end())
        return true;
    Settings settings(folders);
    if (settings.iSwitch(link->setting, on) != 0) {
        *reason = settings.sErrMsg();
        return false;
    }
    links.*link->flag = on;
    return true;
}
