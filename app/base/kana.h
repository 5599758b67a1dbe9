#pragma once

/// Combining marks that make a kana voiced (゛) or half-voiced (゜).
inline constexpr char16_t voicedMark = u'\u3099';
inline constexpr char16_t halfVoicedMark = u'\u309A';

/// The kana that a base and a combining mark make up (カ and ゛: ガ), 0 when they make none.
char16_t joinedKana(char16_t base, char16_t mark);
