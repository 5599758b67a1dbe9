#include "app/base/kana.h"

#include <unicode/unorm2.h>

char16_t joinedKana(char16_t base, char16_t mark) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *nfc = unorm2_getNFCInstance(&status);
    const UChar32 c = U_SUCCESS(status) ? unorm2_composePair(nfc, base, mark) : U_SENTINEL;
    return c > 0 && c < 0x10000 ? char16_t(c) : char16_t(0);
}
