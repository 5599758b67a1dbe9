#pragma once

#include "db/tables/nullable.h"

#include <algorithm>
#include <array>

/// The documents that have layouts of their own.
enum class ConsentDocument { First, Again, Request };

/// Which consent-form layouts are used, as a branch, a doctor and a patient hold it alike. The numbers are
/// SHINSEISYO.nIDNo, one for massage (Mas) and one for acupuncture (Hari) patients; the others are 0 or 1.
struct ConsentLayoutSettings {
    Nullable<short> iSyokaiDouiON; ///< initial consent form
    Nullable<short> iSyokaiDouiMasTypeNo;
    Nullable<short> iSyokaiDouiHariTypeNo;
    Nullable<short> iSaiDouiON; ///< re-consent form
    Nullable<short> iSaiDouiMasTypeNo;
    Nullable<short> iSaiDouiHariTypeNo;
    Nullable<short> iDouiiraiON; ///< request letter
    Nullable<short> iDouiiraiMasTypeNo;
    Nullable<short> iDouiiraiHariTypeNo;
    Nullable<short> iDouiDispSejyutu;  ///< print the treatment content
    Nullable<short> iDouiDispIshidata; ///< print the doctor's data
    Nullable<short> iDouiDispRiyouNo;  ///< print the patient number

    using Member = Nullable<short> ConsentLayoutSettings::*;
    static const std::array<Member, 12> members;

    /// @name By document; First 0, Again 1, Request 2
    ///@{
    static Member used(ConsentDocument document) { return members[size_t(document) * 3]; }
    static Member layout(ConsentDocument document, bool acupuncture) {
        return members[size_t(document) * 3 + (acupuncture ? 2 : 1)];
    }
    ///@}

    /// Null equals Null only.
    bool same(const ConsentLayoutSettings &other) const {
        return std::ranges::all_of(members,
                                   [&](Member member) { return (this->*member).same(other.*member); });
    }
    /// Whether anything was ever chosen.
    bool anySet() const {
        return std::ranges::any_of(members, [&](Member member) { return this->*member != 0; });
    }
};

inline constexpr std::array<ConsentLayoutSettings::Member, 12> ConsentLayoutSettings::members{
    &ConsentLayoutSettings::iSyokaiDouiON,         &ConsentLayoutSettings::iSyokaiDouiMasTypeNo,
    &ConsentLayoutSettings::iSyokaiDouiHariTypeNo, &ConsentLayoutSettings::iSaiDouiON,
    &ConsentLayoutSettings::iSaiDouiMasTypeNo,     &ConsentLayoutSettings::iSaiDouiHariTypeNo,
    &ConsentLayoutSettings::iDouiiraiON,           &ConsentLayoutSettings::iDouiiraiMasTypeNo,
    &ConsentLayoutSettings::iDouiiraiHariTypeNo,   &ConsentLayoutSettings::iDouiDispSejyutu,
    &ConsentLayoutSettings::iDouiDispIshidata,     &ConsentLayoutSettings::iDouiDispRiyouNo};
