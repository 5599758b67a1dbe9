#include "consent/entry/draft_check.h"

#include "db/tables/patient/consent_words.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Problem = std::optional<DraftProblem>;

template <size_t count>
bool anyOf(const ConsentDraft &draft, const std::array<Nullable<short> ConsentDraft::*, count> &flags,
           size_t from = 0) {
    return std::any_of(flags.begin() + from, flags.end(), [&](auto flag) { return draft.*flag != 0; });
}

bool anyAcupuncture(const ConsentDraft &draft) {
    return draft.iHKHariUmu != 0 || draft.iHKKyuUmu != 0 || draft.iHKDekiUmu != 0;
}

bool isBlank(const QString &text) {
    return text.trimmed().isEmpty();
}

Problem checkContent(const ConsentDraft &draft, bool acupuncture) {
    const bool any = acupuncture ? anyAcupuncture(draft)
                                 : isDeformity(draft) || anyOf(draft, bodyParts) || draft.iOnan != 0 ||
                                       draft.iDenki != 0 || draft.tHenkeSday.isValid();
    if (any)
        return {};
    return DraftProblem{u"施術内容が未設定です。"_s, acupuncture ? u"iHKHariUmu" : u"iSejutuBui1"};
}

Problem checkDiagnosis(const ConsentDraft &draft, bool acupuncture) {
    if (!acupuncture) {
        if (isBlank(draft.cDouiByoumei))
            return DraftProblem{u"傷病名が未入力です。"_s, u"cDouiByoumei"};
        return {};
    }
    if (!anyOf(draft, acupunctureDiseases))
        return DraftProblem{u"傷病名が未設定です。"_s, u"iHKSyobyou01Flg"};
    if (draft.iHKSyobyou07Flg != 0 && isBlank(draft.cSyoujyouSonotaStr))
        return DraftProblem{u"傷病名が未入力です。"_s, u"cSyoujyouSonotaStr"};
    return {};
}

Problem checkParts(const ConsentDraft &draft, bool acupuncture) {
    const bool deformity = isDeformity(draft);
    if (acupuncture || anyOf(draft, bodyParts, deformity ? 1 : 0))
        return {};
    return DraftProblem{u"施術部位が未設定です。"_s, deformity ? u"iSejutuBui2" : u"iSejutuBui1"};
}

Problem checkDates(const ConsentDraft &draft) {
    if (!draft.tDouiDay.isValid())
        return DraftProblem{u"同意日が未設定です。"_s, u"tDouiDay"};
    if (!draft.tDouiKaryoS.isValid())
        return DraftProblem{u"加療期間：開始日が未設定です。"_s, u"tDouiKaryoS"};
    if (!draft.tDouiKaryoE.isValid())
        return DraftProblem{u"加療期間：終了日が未設定です。"_s, u"tDouiKaryoE"};
    if (draft.tDouiKaryoS < draft.tDouiDay)
        return DraftProblem{u"加療期間：開始日は、同意日以降で設定してください。\r\n"
                            "同意日と加療期間：開始日が前後しています。"_s,
                            u"tDouiKaryoS"};
    if (draft.tDouiKaryoE < draft.tDouiKaryoS)
        return DraftProblem{u"加療期間：終了日は、開始日以降で設定してください。\r\n"
                            "加療期間：開始日と終了日が前後しています。"_s,
                            u"tDouiKaryoE"};
    if (draft.tShinsatsuDay.isValid() && draft.tShinsatsuDay > draft.tDouiDay)
        return DraftProblem{u"診察日は、同意日以前で設定してください。\r\n同意日と診察日が前後しています。"_s,
                            u"tShinsatsuDay"};
    return {};
}

struct TextLimit {
    QStringView column;
    QString ConsentDraft::*text;
    int longest; ///< of the column, in UTF-16 units
};
constexpr TextLimit textLimits[] = {{u"cDouiIsiName", &ConsentDraft::cDouiIsiName, 40},
                                    {u"cDouiIsiKikan", &ConsentDraft::cDouiIsiKikan, 80},
                                    {u"cDouiIsiAdd", &ConsentDraft::cDouiIsiAdd, 160},
                                    {u"cDouiByoumei", &ConsentDraft::cDouiByoumei, 200},
                                    {u"cByoumeiM", &ConsentDraft::cByoumeiM, 200},
                                    {u"cMasByoumei", &ConsentDraft::cMasByoumei, 200},
                                    {u"cByoumeiH", &ConsentDraft::cByoumeiH, 200},
                                    {u"cKousyukuSonotaStr", &ConsentDraft::cKousyukuSonotaStr, 100},
                                    {u"cSyoujyouSonotaStr", &ConsentDraft::cSyoujyouSonotaStr, 100}};

Problem checkLengths(const ConsentDraft &draft) {
    for (const TextLimit &limit : textLimits) {
        const qsizetype length = (draft.*limit.text).size();
        if (length > limit.longest)
            return DraftProblem{u"%1は %2文字までです（現在 %3文字）。"_s.arg(consentCaption(limit.column))
                                    .arg(limit.longest)
                                    .arg(length),
                                limit.column};
    }
    return {};
}

} // namespace

Problem checkDraft(const ConsentDraft &draft, bool acupuncture, const ConsentRowKey &target,
                   std::span<const ConsentRowKey> others) {
    const bool needles = acupuncture && !isDeformity(draft);
    for (const auto check : {checkContent, checkDiagnosis, checkParts})
        if (const Problem problem = check(draft, needles))
            return problem;
    if (const Problem problem = checkDates(draft))
        return problem;
    const bool taken = std::ranges::any_of(
        others, [&](const ConsentRowKey &other) { return sameRecordDate(other, target); });
    if (taken)
        return DraftProblem{recordDateTaken(),
                            draft.tShinsatsuDay.isValid() ? u"tShinsatsuDay" : u"tDouiDay"};
    return checkLengths(draft);
}
