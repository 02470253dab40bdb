#include "macro/macro.h"

#include "macro/macrointernal.h"

namespace qrl {

MacroLexer::MacroLexer(std::u16string input, uint32_t flags) : Input(std::move(input)), Flags(flags)
{
    step();
}

void MacroLexer::step()
{
    Quoted = false;
    Start = Pos;
    Char = 0;
    if (Pos >= Input.size()) {
        Class = MacroClass::End;
        return;
    }
    char16_t c = Input[Pos++];
    Class = MacroClass::Plain;
    Char = c;
    if (c == u'\\' && (Flags & MacroEscapes) && Pos < Input.size()) {
        char16_t second = Input[Pos++];
        Class = MacroClass::Escaped;
        switch (second) {
        case u'n': Char = 10; break;
        case u'r': Char = 13; break;
        case u't': Char = 9; break;
        case u'b': Char = 8; break;
        case u'f': Char = 12; break;
        case u'{': Char = 123; break;
        case u'}': Char = 125; break;
        case u'x': {
            Class = MacroClass::Hex;
            unsigned value = 0;
            for (int digits = 0; digits < 2 && Pos < Input.size(); ++digits) {
                int d = macroHexDigit(Input[Pos]);
                if (d < 0)
                    break;
                value = value * 16 + static_cast<unsigned>(d);
                ++Pos;
            }
            Char = static_cast<char16_t>(value);
            break;
        }
        case u'E': case u'S': case u'U': case u'e': case u'm': case u'p': case u'v':
            Char = second;
            if (AtStart && (Flags & MacroLanguage))
                Class = MacroClass::Classic;
            break;
        default:
            Char = second;  // so "\\" is one backslash
            break;
        }
    } else if (c == u'{' && (Flags & (MacroKeys | MacroLanguage))) {
        Class = MacroClass::Open;
    } else if (c == u'}' && (Flags & (MacroKeys | MacroLanguage))) {
        Class = MacroClass::Close;
    }
    End = Pos - 1;
}

}  // namespace qrl
