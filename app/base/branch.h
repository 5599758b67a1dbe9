#pragma once

/// A branch (拠点) of the practice: code and sub-number.
struct Branch {
    short iKyotenCd = 0;
    short iKyotenEb = 0;

    friend bool operator==(const Branch &, const Branch &) = default;
};
