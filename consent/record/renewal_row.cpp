#include "consent/record/renewal_row.h"

#include "app/base/dates.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool replacesOrPrecedes(const ConsentRowKey &target, const ConsentRowKey &source) {
    if (target.nDate != source.nDate)
        return target.nDate < source.nDate;
    // Massage rows are told apart by nDate alone.
    return source.iHenkeiFlg == 0 || target.nHenkeiDouiDate == source.nHenkeiDouiDate;
}

} // namespace

ConsentRowKey renewedKey(const ConsentRowKey &source, const QDate &reConsentDate) {
    const int date = dateKey(reConsentDate);
    return {source.patient, date, source.iHenkeiFlg, source.iHenkeiFlg == 0 ? 0 : date};
}

QString renewalRefusal(const RenewalRow &source, const ConsentRowKey &target) {
    const ReConsent &reConsent = source.reConsent;
    if (!reConsent.date.isValid() || target.nDate == 0)
        return u"再同意日が入力されていません。"_s;
    if (!reConsent.period.start.isValid() || !reConsent.period.end.isValid())
        return u"要加療期間が入力されていません。"_s;
    if (reConsent.period.end < reConsent.period.start)
        return u"要加療期間の終了日が開始日より前になっています。"_s;
    if (source.consentDate.isValid() &&
        (reConsent.date <= source.consentDate || target.nDate <= dateKey(source.consentDate)))
        return u"再同意日が同意日（%1）より後ではないため、更新できません。"_s.arg(
            dateText(source.consentDate));
    if (replacesOrPrecedes(target, source.key))
        return u"再同意日が更新元の同意の日付（%1）以前のため、更新できません。"_s.arg(
            dateText(dateFromKey(source.key.nDate)));
    return {};
}
