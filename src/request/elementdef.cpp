#include "request/elementdef.h"

#include <array>
#include <cstdint>

#include "request/hooks.h"
#include "text/textutil.h"

namespace qrl {

namespace {

struct TypeWord {
    std::u16string_view word;
    ElementType type;
};

constexpr std::array<TypeWord, 27> kTypeWords{{
    {u"text", ElementType::Text},
    {u"string", ElementType::Text},
    {u"filepath", ElementType::FilePath},
    {u"directory", ElementType::Directory},
    {u"int", ElementType::Int},
    {u"integer", ElementType::Int},
    {u"bool", ElementType::Bool},
    {u"boolean", ElementType::Bool},
    {u"stringset", ElementType::StringSet},
    {u"set", ElementType::Set},
    {u"rgb", ElementType::Rgb},
    {u"font", ElementType::Font},
    {u"printer", ElementType::Printer},
    {u"char8", ElementType::Char8},
    {u"charset", ElementType::Charset},
    {u"Undefined", ElementType::Undefined},
    {u"keylist", ElementType::KeyList},
    {u"keymaplist", ElementType::KeyMapList},
    {u"keystringlist", ElementType::KeyStringList},
    {u"colourschemelist", ElementType::ColourSchemeList},
    {u"attrnames", ElementType::AttrNames},
    {u"hotspots", ElementType::Hotspots},
    {u"mousemap", ElementType::MouseMap},
    {u"tandemcolrs", ElementType::TandemColours},
    {u"5250colrs", ElementType::Ibm5250Colours},
    {u"sshauthfile", ElementType::SshAuthFile},
    {u"sslcertificate", ElementType::SslCertificate},
}};

// Names of the ASCII controls, 0 to 31.
constexpr std::array<std::u16string_view, 32> kControlNames{
    u"NUL", u"SOH", u"STX", u"ETX", u"EOT", u"ENQ", u"ACK", u"BEL", u"BS",  u"HT",  u"LF",
    u"VT",  u"FF",  u"CR",  u"SO",  u"SI",  u"DLE", u"DC1", u"DC2", u"DC3", u"DC4", u"NAK",
    u"SYN", u"ETB", u"CAN", u"EM",  u"SUB", u"ESC", u"FS",  u"GS",  u"RS",  u"US"};

std::u16string hexByte(unsigned c) {
    static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    return std::u16string{u'0', u'x', kDigits[(c >> 4) & 0xF], kDigits[c & 0xF]};
}

// Printable as the Windows runtime's iswprint sees a byte-sized code: ASCII graphics and the
// Latin-1 range from the no-break space on. The C1 controls are not.
bool isPrintableCode(unsigned c) { return (c > 32 && c < 127) || c >= 160; }

}  // namespace

ElementType ParseElementType(std::u16string_view word) {
    if (word.empty()) return ElementType::Text;
    for (const TypeWord& entry : kTypeWords)
        if (iequals(word, entry.word)) return entry.type;
    return ElementType::Undefined;
}

bool IsListType(ElementType type) {
    return type >= ElementType::KeyList && type <= ElementType::MouseMap;
}

int TElementDef::GetChoiceIndex(std::u16string_view text, int fallback) const {
    const std::vector<std::u16string>* list = nullptr;
    if (!values.empty())
        list = &values;
    else if (type == ElementType::StringSet)
        list = &strings;
    if (list) {
        for (std::size_t i = 0; i < list->size(); ++i)
            if (iequals((*list)[i], text)) return static_cast<int>(i);
        return fallback;
    }
    if (type == ElementType::Int || type == ElementType::Char8) {
        const int64_t n = wtoi(text);
        if (n >= min && n <= max) return static_cast<int>(n - min);
    }
    return fallback;
}

bool TElementDef::GetBool() const {
    if (type == ElementType::Int) {
        if (!values.empty()) return GetChoiceIndex(value, 0) != 0;
        return wtoi(value) != 0;
    }
    if (type == ElementType::Set) return GetChoiceIndex(value, 0) != 0;
    if (iequals(value, u"true") || iequals(value, u"on") || iequals(value, u"yes")) return true;
    return wtoi(value) != 0;
}

int TElementDef::GetSetIndex() const {
    const int wanted = wtoi(value);
    const std::size_t count = strings.size() < values.size() ? strings.size() : values.size();
    for (std::size_t i = 0; i < count; ++i)
        if (wtoi(values[i]) == wanted) return static_cast<int>(i);
    return -1;
}

int TElementDef::MacroMode() const {
    if (!cEncoded) return 7;
    return allowEmKeys ? 3 : 1;
}

std::u16string CharacterName(uint32_t code) {
    if (code < 32) return u"<" + std::u16string(kControlNames[code]) + u">";
    if (code == 32) return u"<SP>";
    if (code == 127) return u"<DEL>";
    if (isPrintableCode(code) && code <= 0xFFFF) return std::u16string(1, static_cast<char16_t>(code));
    return {};
}

std::u16string CharacterText(std::u16string_view value) {
    const unsigned c = static_cast<unsigned>(wtoi(value)) & 0xFFu;
    std::u16string text = CharacterName(c);
    if (!text.empty()) text += u' ';
    return text + hexByte(c);
}

void AppendElementValueText(std::u16string& out, const TElementDef& element) {
    const std::size_t start = out.size();
    out += u'(';
    switch (element.type) {
    case ElementType::Text:
    case ElementType::FilePath:
    case ElementType::Directory:
    case ElementType::Int:
    case ElementType::StringSet:
    case ElementType::SshAuthFile:
        if (element.password)
            out.append(element.value.size(), u'*');
        else
            out += element.value;
        break;
    case ElementType::Bool:
        out += element.GetBool() ? u"on" : u"off";
        break;
    case ElementType::Set: {
        const int index = element.GetSetIndex();
        out += index < 0 ? std::u16string_view(u"???") : std::u16string_view(element.strings[static_cast<std::size_t>(index)]);
        break;
    }
    case ElementType::Rgb:
        out += u"RGB=";
        out += element.value;
        break;
    case ElementType::Font:
    case ElementType::Printer:
    case ElementType::SslCertificate: {
        const TShortTextFn shortText = RequestHooks().ShortText(element.type);
        out += shortText ? shortText(element.value) : std::u16string(u"???");
        break;
    }
    case ElementType::Char8:
        out += CharacterText(element.value);
        break;
    case ElementType::Charset:
    case ElementType::TandemColours:
    case ElementType::Ibm5250Colours:
        out.resize(start);
        return;
    default:
        out += u"???";
        break;
    }
    out += u')';
}

std::u16string ElementValueToText(const TElementDef& element) {
    std::u16string text;
    AppendElementValueText(text, element);
    return text;
}

}  // namespace qrl
