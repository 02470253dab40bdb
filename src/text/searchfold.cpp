#include "text/searchfold.h"

#include "text/textutil.h"

#include <iterator>

namespace qrl {

namespace {

// Base letters of U+00C0..U+00FF and U+0100..U+017F, lower case; a character that is no accented
// letter (the signs of multiplication and division, thorn, sharp s) stands for itself.
constexpr char16_t kLatin1Base[] = u"aaaaaaaceeeeiiii" u"dnooooo\u00D7ouuuuy\u00FE\u00DF"
                                   u"aaaaaaaceeeeiiii" u"dnooooo\u00F7ouuuuy\u00FEy";
constexpr char16_t kLatinExtendedABase[] = u"aaaaaaccccccccdd" u"ddeeeeeeeeeegggg" u"gggghhhhiiiiiiii"
                                           u"iiiijjkkklllllll" u"lllnnnnnnnnnoooo" u"oooorrrrrrssssss"
                                           u"ssttttttuuuuuuuu" u"uuuuwwyyyzzzzzzs";

static_assert(std::size(kLatin1Base) == 0x40 + 1 && std::size(kLatinExtendedABase) == 0x80 + 1);

bool isCombiningAccent(char16_t c) { return c >= 0x0300 && c <= 0x036F; }

char16_t foldSearchChar(char16_t c) {
    if (c < 0x80) return foldCase(c);
    if (c >= 0xC0 && c <= 0xFF) return kLatin1Base[c - 0xC0];
    if (c >= 0x100 && c <= 0x17F) return kLatinExtendedABase[c - 0x100];
    if ((c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
    return c;
}

}  // namespace

std::u16string foldForSearch(std::u16string_view text) {
    std::u16string folded;
    folded.reserve(text.size());
    for (char16_t c : text)
        if (!isCombiningAccent(c)) folded.push_back(foldSearchChar(c));
    return folded;
}

}  // namespace qrl
