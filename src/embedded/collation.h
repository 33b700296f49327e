#pragma once
// Comparing and folding single characters, the way compareText sees them.

#include <string_view>

namespace embedded {

// The order of two texts by the collator alone: blanks at the end count, no quick way. compareText is this on texts
// without their trailing blanks.
int collate(std::string_view a, std::string_view b);

// The order of two characters.
int compareCharacters(char32_t a, char32_t b);

// One character for all that differ in case, width or kind of kana: 'A', 'a', 'Ａ' become 'a'. Two characters with the
// same folded form are equal to compareText.
char32_t foldCharacter(char32_t c);

}  // namespace embedded
