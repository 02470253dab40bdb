// Parses arbitrary macro texts at every level and checks the properties the Macro Assistant relies on:
// a text that parses comes back exactly from its tokens' Sources, a text that does not leaves a clean
// prefix, and printing any token is safe.
//
// Input: the first byte chooses the level (low three bits) and the encoding of the rest: with bit 7
// set, little-endian UTF-16 code units (any 16-bit value); otherwise one byte per character, so that
// seed files can be plain text.
#include "macro/macro.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

std::u16string decode(const uint8_t* data, size_t size, bool wide)
{
    std::u16string text;
    if (wide) {
        for (size_t i = 0; i + 1 < size; i += 2)
            text += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
    } else {
        for (size_t i = 0; i < size; ++i)
            text += static_cast<char16_t>(data[i]);
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    uint32_t flags = data[0] & 7u;
    std::u16string text = decode(data + 1, size - 1, (data[0] & 0x80) != 0);

    qrl::Macro macro;
    qrl::parseMacro(macro, text, 8, flags);

    // Tokens lie side by side from the start, each Source the slice it covers.
    std::u16string joined;
    size_t count = macro.Tokens.size();
    bool ended = count > 0 && macro.Tokens.back().Type == qrl::MacroType::End;
    size_t real = ended ? count - 1 : count;
    for (size_t i = 0; i < real; ++i) {
        const qrl::MacroToken& token = macro.Tokens[i];
        check(token.Type != qrl::MacroType::End);
        check(token.Tag == 8);
        if (flags != 0) {
            check(token.StartPos == joined.size());
            check(token.EndPos >= token.StartPos && token.EndPos < text.size());
            check(token.Source == text.substr(token.StartPos, token.EndPos - token.StartPos + 1));
        }
        joined += token.Source;
    }

    if (macro.ErrorCode == qrl::MacroError::None) {
        // The round trip is exact, and the list closes with one end token.
        check(ended);
        check(joined == text);
        check(macro.Tokens.back().StartPos == text.size());
    } else {
        check(!ended);
        check(flags != 0);
        check(macro.ErrorCode == 730 || macro.ErrorCode == 740 || macro.ErrorCode == 750 ||
              macro.ErrorCode == 760 || macro.ErrorCode == 770 || macro.ErrorCode == 780);
        check(macro.ErrorPos <= text.size());
        check(text.compare(0, joined.size(), joined) == 0);
        check(macro.ErrorPos >= joined.size());
    }

    for (qrl::MacroToken token : macro.Tokens) {
        check(qrl::tokenName(token).size() > 0);
        // A parsed character below 256 prints in a form that reads back as the same character.
        bool character = token.Type == qrl::MacroType::Character && token.CharCode < 256;
        char16_t code = token.CharCode;
        qrl::rebuildToken(token);
        if (character) {
            qrl::Macro again;
            qrl::parseMacro(again, token.Source, 0, flags);
            check(again.ErrorCode == 0 && again.Tokens.size() == 2);
            check(again.Tokens[0].Type == qrl::MacroType::Character && again.Tokens[0].CharCode == code);
        }
    }

    // Parsing again without clearing appends, or stops at the earlier fault.
    size_t before = macro.Tokens.size();
    qrl::parseMacro(macro, text, 9, flags);
    check(macro.ErrorCode != qrl::MacroError::None ? macro.Tokens.size() == before
                                                   : macro.Tokens.size() == 2 * before);
    qrl::clearMacro(macro);
    check(macro.Tokens.empty() && macro.ErrorCode == 0);
    return 0;
}
