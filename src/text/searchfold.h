// Text as a search compares it: lower case in the Latin, Greek and Cyrillic letters, Latin letters
// without their accents (é, Å, ł, ş become e, a, l, s), combining accents dropped. Only for finding
// text, never for names, which compare as textutil.h says.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

std::u16string foldForSearch(std::u16string_view text);

}  // namespace qrl
