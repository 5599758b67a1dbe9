// What may be registered, and where it is kept.

#include "consent/entry/draft_check.h"
#include "tests/support/test_environment.h"

#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const PatientKey patient{1, 1, 7};

ConsentDraft soundMassage() {
    ConsentDraft draft;
    static_cast<PatientKey &>(draft) = patient;
    draft.iSejutuBui1 = short(1);
    draft.cDouiByoumei = u"脳梗塞"_s;
    draft.tDouiDay = {2026, 5, 20};
    draft.tDouiKaryoS = {2026, 5, 20};
    draft.tDouiKaryoE = {2026, 11, 30};
    return draft;
}

struct CheckCase {
    const char *what;
    std::function<void(ConsentDraft &)> spoil;
    QString begins; ///< of the refusal; empty: it may be registered
    bool acupuncture = false;
};

TEST(DraftCheck, StopsAtTheFirstFault) {
    using D = ConsentDraft;
    const auto needles = [](D &d) {
        d.iSejutuBui1 = short(0);
        d.cDouiByoumei.clear();
        d.iHKHariUmu = short(1);
        d.iHKSyobyou01Flg = short(1);
    };
    const CheckCase cases[] = {
        {"sound", [](D &) {}, u""_s},
        {"nothing at all", [](D &d) { d = D(); }, u"施術内容が未設定です。"_s},
        {"warmth but no part", [](D &d) { d.iOnan = d.iSejutuBui1 = short(1), d.iSejutuBui1 = short(0); },
         u"施術部位が未設定です。"_s},
        {"blank diagnosis before missing part",
         [](D &d) { d.iOnan = short(1), d.iSejutuBui1 = short(0), d.cDouiByoumei = u"　"_s; },
         u"傷病名が未入力です。"_s},
        {"no consent date", [](D &d) { d.tDouiDay = {}; }, u"同意日が未設定です。"_s},
        {"no period", [](D &d) { d.tDouiKaryoS = d.tDouiKaryoE = {}; }, u"加療期間：開始日が未設定です。"_s},
        {"no end", [](D &d) { d.tDouiKaryoE = {}; }, u"加療期間：終了日が未設定です。"_s},
        {"starts before the consent",
         [](D &d) {
             d.tDouiKaryoS = {2026, 5, 19};
         },
         u"加療期間：開始日は、同意日以降で設定してください。\r\n同意日と加療期間：開始日が前後しています。"_s},
        {"ends before it starts",
         [](D &d) {
             d.tDouiKaryoE = {2026, 5, 19};
         },
         u"加療期間：終了日は、開始日以降で設定してください。\r\n加療期間：開始日と終了日が前後しています。"_s},
        {"a period of one day", [](D &d) { d.tDouiKaryoE = d.tDouiKaryoS; }, u""_s},
        {"examined on the day", [](D &d) { d.tShinsatsuDay = d.tDouiDay; }, u""_s},
        {"examined later",
         [](D &d) {
             d.tShinsatsuDay = {2026, 5, 21};
         },
         u"診察日は、同意日以前で設定してください。\r\n同意日と診察日が前後しています。"_s},
        {"on another's record date",
         [](D &d) {
             d.tShinsatsuDay = {2026, 5, 1};
         },
         u"診察日が以前の同意と同じ日付です。"_s},
        {"deformity on a massage row's date",
         [](D &d) {
             d.iHenkeiFlg = 1, d.iSejutuBui3 = short(1), d.tShinsatsuDay = {2026, 5, 1};
         },
         u""_s},
        {"deformity of the trunk", [](D &d) { d.iHenkeiFlg = 1; }, u"施術部位が未設定です。"_s},
        {"massage content for acupuncture", [](D &) {}, u"施術内容が未設定です。"_s, true},
        {"needles without disease", [&](D &d) { needles(d), d.iHKSyobyou01Flg = short(0); },
         u"傷病名が未設定です。"_s, true},
        {"other disease without its name", [&](D &d) { needles(d), d.iHKSyobyou07Flg = short(1); },
         u"傷病名が未入力です。"_s, true},
        {"needles need no part", needles, u""_s, true},
    };
    const ConsentRowKey other{patient, 20260501, 0, 0};
    for (const CheckCase &test : cases) {
        ConsentDraft draft = soundMassage();
        test.spoil(draft);
        const auto problem = checkDraft(draft, test.acupuncture, draftKey(draft, nullptr), {&other, 1});
        EXPECT_EQ(problem ? problem->text : QString(), test.begins) << test.what;
        if (problem) {
            EXPECT_TRUE(isColumn(problem->column)) << test.what;
        }
    }
}

TEST(DraftKey, FollowsChangedDatesOnly) {
    ConsentDraft draft = soundMassage();
    EXPECT_EQ(draftKey(draft, nullptr), (ConsentRowKey{patient, 20260520, 0, 0}));
    draft.tShinsatsuDay = {2026, 5, 18};
    EXPECT_EQ(draftKey(draft, nullptr).nDate, 20260518);

    // Rows of a renewal stand under their consent date although there is an examination date.
    ConsentDraft stored = draft;
    stored.nDate = 20260520;
    draft.cDouiByoumei = u"別の傷病"_s;
    EXPECT_EQ(draftKey(draft, &stored).nDate, 20260520);
    draft.tShinsatsuDay = {};
    draft.tDouiDay = {2026, 5, 22};
    EXPECT_EQ(draftKey(draft, &stored).nDate, 20260522);

    draft.iHenkeiFlg = stored.iHenkeiFlg = 1;
    EXPECT_EQ(draftKey(draft, nullptr).nHenkeiDouiDate, 20260522) << "a new correction takes its date";
    stored.nHenkeiDouiDate = 20260401;
    draft.tDouiDay = stored.tDouiDay;
    EXPECT_EQ(draftKey(draft, &stored).nHenkeiDouiDate, 20260401);
}

} // namespace
