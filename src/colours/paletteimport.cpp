#include "colours/paletteimport.h"

#include <charconv>
#include <cmath>
#include <map>

#include <nlohmann/json.hpp>

#include "locale/language.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace qrl {

namespace {

// Palette index of each ANSI colour, by meaning.
constexpr std::array<uint32_t, 16> kAnsiToPalette{0, 4, 2, 6, 1, 5, 3, 7, 8, 12, 10, 14, 9, 13, 11, 15};

constexpr const char* kTerminalKeys[16] = {
    "black",       "red",       "green",       "yellow",       "blue",       "purple",       "cyan",       "white",
    "brightBlack", "brightRed", "brightGreen", "brightYellow", "brightBlue", "brightPurple", "brightCyan", "brightWhite"};

std::u16string Quoted(std::string_view text) { return u"\"" + utf8ToUtf16(text) + u"\""; }

TPaletteImport Failure(std::u16string text, int line = 0, int column = 0) {
    TPaletteImport result;
    result.error = std::move(text);
    result.line = line;
    result.column = column;
    return result;
}

std::u16string NoColour(std::string_view key) {
    return Translate(u"palette_no_colour", u"no colour ") + Quoted(key);
}

std::u16string NotAColour(std::string_view value, std::string_view key) {
    return Quoted(value) + Translate(u"palette_not_colour", u" is not a colour") + u" (" + Quoted(key) + u")";
}

// Line and column (in characters) of the byte at `offset`.
std::pair<int, int> PositionOf(std::string_view text, std::size_t offset) {
    int line = 1, column = 1;
    for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '\n') {
            ++line;
            column = 1;
        } else if ((byte & 0xC0) != 0x80) {
            ++column;
        }
    }
    return {line, column};
}

std::optional<uint32_t> HexDigits(std::string_view digits) {
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

// A channel of 1 to 4 hexadecimal digits, scaled to a byte as X11 scales it.
std::optional<uint32_t> ScaledChannel(std::string_view digits) {
    if (digits.size() > 4) return std::nullopt;
    const std::optional<uint32_t> value = HexDigits(digits);
    if (!value) return std::nullopt;
    const double top = std::pow(16.0, static_cast<double>(digits.size())) - 1;
    return static_cast<uint32_t>(std::lround(*value * 255.0 / top));
}

// "#rrggbb", "#rgb" and "rgb:r/g/b" (each part 1 to 4 digits).
std::optional<uint32_t> ParseColour(std::string_view text) {
    if (text.size() == 7 && text[0] == '#') {
        const std::optional<uint32_t> rgb = HexDigits(text.substr(1));
        if (rgb) return MakeColour(*rgb >> 16, *rgb >> 8, *rgb);
    } else if (text.size() == 4 && text[0] == '#') {
        std::array<uint32_t, 3> c{};
        for (std::size_t i = 0; i < 3; ++i) {
            const std::optional<uint32_t> digit = HexDigits(text.substr(1 + i, 1));
            if (!digit) return std::nullopt;
            c[i] = *digit * 17;
        }
        return MakeColour(c[0], c[1], c[2]);
    } else if (text.substr(0, 4) == "rgb:") {
        std::array<uint32_t, 3> c{};
        std::string_view rest = text.substr(4);
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t slash = rest.find('/');
            if ((slash == std::string_view::npos) != (i == 2)) return std::nullopt;
            const std::optional<uint32_t> channel = ScaledChannel(rest.substr(0, slash));
            if (!channel) return std::nullopt;
            c[i] = *channel;
            rest = slash == std::string_view::npos ? std::string_view{} : rest.substr(slash + 1);
        }
        return MakeColour(c[0], c[1], c[2]);
    }
    return std::nullopt;
}

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// --- Windows Terminal ---------------------------------------------------------------------------

using TJson = nlohmann::json;

// A colour field of a scheme object; absent text colours are no fault, absent palette colours are.
std::optional<std::u16string> ReadTerminalColour(const TJson& scheme, const char* key, bool required,
                                                 std::optional<uint32_t>& colour) {
    const auto found = scheme.find(key);
    if (found == scheme.end()) return required ? std::optional(NoColour(key)) : std::nullopt;
    // Only a string can be a colour; anything else is named by its type (it may be nested deeply).
    const std::string text = found->is_string() ? found->get<std::string>() : found->type_name();
    colour = found->is_string() ? ParseColour(text) : std::nullopt;
    if (!colour) return NotAColour(text, key);
    return std::nullopt;
}

std::optional<std::u16string> ReadTerminalScheme(const TJson& scheme, TImportedPalette& palette) {
    if (!scheme.is_object()) return Translate(u"palette_not_scheme", u"a scheme is not an object");
    if (const auto name = scheme.find("name"); name != scheme.end() && name->is_string())
        palette.name = utf8ToUtf16(name->get<std::string>());
    const std::u16string where = palette.name.empty() ? u"" : Quoted(utf16ToUtf8(palette.name)) + u": ";
    for (std::size_t i = 0; i < 16; ++i) {
        std::optional<uint32_t> colour;
        if (auto fault = ReadTerminalColour(scheme, kTerminalKeys[i], true, colour)) return where + *fault;
        palette.ansi[i] = *colour;
    }
    if (auto fault = ReadTerminalColour(scheme, "foreground", false, palette.foreground)) return where + *fault;
    if (auto fault = ReadTerminalColour(scheme, "background", false, palette.background)) return where + *fault;
    return std::nullopt;
}

TPaletteImport ReadTerminal(std::string_view text) {
    TJson document;
    try {
        // Settings files carry comments.
        document = TJson::parse(text.begin(), text.end(), nullptr, true, true);
    } catch (const TJson::parse_error& error) {
        const auto [line, column] = PositionOf(text, error.byte > 0 ? error.byte - 1 : 0);
        return Failure(Translate(u"palette_bad_json", u"the file is not valid JSON"), line, column);
    }
    const TJson* schemes = &document;
    TJson single = TJson::array();
    if (document.is_object() && document.contains("schemes")) {
        schemes = &document["schemes"];
    } else {
        single.push_back(document);
        schemes = &single;
    }
    if (!schemes->is_array() || schemes->empty())
        return Failure(Translate(u"palette_no_scheme", u"the file holds no colour scheme"));
    TPaletteImport result;
    for (const TJson& scheme : *schemes) {
        TImportedPalette palette;
        if (auto fault = ReadTerminalScheme(scheme, palette)) return Failure(*fault);
        result.schemes.push_back(std::move(palette));
    }
    return result;
}

// --- iTerm2 property list -----------------------------------------------------------------------

using AdvXMLParser::Element;

std::string KeyText(const Element& element) { return utf16ToUtf8(element.GetText()); }

// The values of a <dict> by their <key>.
std::map<std::string, const Element*> DictEntries(const Element& dict) {
    std::map<std::string, const Element*> entries;
    std::string key;
    bool haveKey = false;
    for (std::size_t i = 0; i < dict.GetChildCount(); ++i) {
        const Element* child = dict.GetChild(i).AsElement();
        if (child == nullptr) continue;
        if (child->GetName() == u"key") {
            key = KeyText(*child);
            haveKey = true;
        } else if (haveKey) {
            entries.emplace(key, child);
            haveKey = false;
        }
    }
    return entries;
}

std::optional<uint32_t> PlistColour(const Element& dict) {
    if (dict.GetName() != u"dict") return std::nullopt;
    const auto entries = DictEntries(dict);
    std::array<uint32_t, 3> c{};
    const char* names[3] = {"Red Component", "Green Component", "Blue Component"};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto found = entries.find(names[i]);
        if (found == entries.end()) return std::nullopt;
        const std::string number = KeyText(*found->second);
        double value = 0;
        const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
        if (number.empty() || error != std::errc() || end != number.data() + number.size() || !(value >= 0) ||
            value > 1)
            return std::nullopt;
        c[i] = static_cast<uint32_t>(std::lround(value * 255.0));
    }
    return MakeColour(c[0], c[1], c[2]);
}

TPaletteImport ReadPropertyList(std::string_view text) {
    const std::u16string wide = utf8ToUtf16(text);
    std::unique_ptr<AdvXMLParser::Document> document;
    try {
        document = AdvXMLParser::Parser().Parse(wide.data(), wide.size());
    } catch (const AdvXMLParser::ParsingException& error) {
        return Failure(Translate(u"palette_bad_xml", u"the file is not valid XML (error ") +
                           decimal(error.GetErrorNumber()) + u")",
                       error.GetLine(), error.GetColumn());
    }
    const Element* root = document->Root();
    const Element* dict = nullptr;
    for (std::size_t i = 0; root != nullptr && root->GetName() == u"plist" && i < root->GetChildCount(); ++i) {
        const Element* child = root->GetChild(i).AsElement();
        if (child != nullptr && child->GetName() == u"dict" && dict == nullptr) dict = child;
    }
    if (dict == nullptr)
        return Failure(Translate(u"palette_no_plist", u"the file is not a property list of colours"));
    const auto entries = DictEntries(*dict);
    TImportedPalette palette;
    for (int i = 0; i < 16; ++i) {
        const std::string key = "Ansi " + std::to_string(i) + " Color";
        const auto found = entries.find(key);
        if (found == entries.end()) return Failure(NoColour(key));
        const std::optional<uint32_t> colour = PlistColour(*found->second);
        if (!colour) return Failure(NotAColour(utf16ToUtf8(found->second->GetName()), key));
        palette.ansi[static_cast<std::size_t>(i)] = *colour;
    }
    for (auto [key, target] : {std::pair{"Foreground Color", &palette.foreground},
                               std::pair{"Background Color", &palette.background}}) {
        const auto found = entries.find(key);
        if (found == entries.end()) continue;
        *target = PlistColour(*found->second);
        if (!*target) return Failure(NotAColour(utf16ToUtf8(found->second->GetName()), key));
    }
    TPaletteImport result;
    result.schemes.push_back(std::move(palette));
    return result;
}

// --- Xresources ---------------------------------------------------------------------------------

// "color7" gives 7, "foreground" 16, "background" 17; anything else -1.
int ResourceSlot(std::string_view resource) {
    const std::size_t cut = resource.find_last_of("*.");
    const std::string_view last = cut == std::string_view::npos ? resource : resource.substr(cut + 1);
    if (last == "foreground") return 16;
    if (last == "background") return 17;
    if (last.substr(0, 5) != "color" || last.size() < 6 || last.size() > 7 || (last[5] == '0' && last.size() > 6))
        return -1;
    int slot = 0;
    const auto [end, error] = std::from_chars(last.data() + 5, last.data() + last.size(), slot);
    return error == std::errc() && end == last.data() + last.size() && slot < 16 ? slot : -1;
}

TPaletteImport ReadResources(std::string_view text) {
    std::map<std::string, std::string, std::less<>> defines;
    std::array<std::optional<uint32_t>, 18> slots;
    std::size_t lineStart = 0;
    for (int line = 1; lineStart <= text.size(); ++line) {
        const std::size_t lineEnd = std::min(text.find('\n', lineStart), text.size());
        const std::string_view raw = text.substr(lineStart, lineEnd - lineStart);
        const std::size_t rawStart = lineStart;
        lineStart = lineEnd + 1;
        const std::string_view entry = Trim(raw);
        if (entry.empty() || entry[0] == '!') continue;
        if (entry[0] == '#') {
            if (entry.substr(0, 8) == "#define ") {
                const std::string_view rest = Trim(entry.substr(8));
                const std::size_t space = rest.find_first_of(" \t");
                if (space != std::string_view::npos)
                    defines[std::string(rest.substr(0, space))] = std::string(Trim(rest.substr(space)));
            }
            continue;
        }
        const std::size_t colon = entry.find(':');
        if (colon == std::string_view::npos) continue;
        const int slot = ResourceSlot(Trim(entry.substr(0, colon)));
        if (slot < 0) continue;
        std::string_view value = Trim(entry.substr(colon + 1));
        if (const auto defined = defines.find(value); defined != defines.end()) value = defined->second;
        slots[static_cast<std::size_t>(slot)] = ParseColour(value);
        if (!slots[static_cast<std::size_t>(slot)]) {
            const std::size_t at = static_cast<std::size_t>(Trim(entry.substr(colon + 1)).data() - text.data());
            const int column = PositionOf(text.substr(rawStart), at - rawStart).second;
            const std::string key = slot < 16 ? "color" + std::to_string(slot) : slot == 16 ? "foreground" : "background";
            return Failure(NotAColour(value, key), line, column);
        }
    }
    TImportedPalette palette;
    for (int i = 0; i < 16; ++i) {
        if (!slots[static_cast<std::size_t>(i)]) return Failure(NoColour("color" + std::to_string(i)));
        palette.ansi[static_cast<std::size_t>(i)] = *slots[static_cast<std::size_t>(i)];
    }
    palette.foreground = slots[16];
    palette.background = slots[17];
    TPaletteImport result;
    result.schemes.push_back(std::move(palette));
    return result;
}

std::string HexColour(uint32_t colour) {
    static const char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (uint32_t channel : {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF}) {
        text += kDigits[channel >> 4];
        text += kDigits[channel & 15];
    }
    return text;
}

}  // namespace

TPaletteImport ReadPaletteFile(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    const char lead = first == std::string_view::npos ? '\0' : bytes[first];
    if (lead == '{' || lead == '/') return ReadTerminal(bytes);  // settings files may open with a comment
    if (lead == '<') return ReadPropertyList(bytes);
    return ReadResources(bytes);
}

std::u16string PaletteImportMessage(const TPaletteImport& import) {
    if (import.line <= 0) return import.error;
    return Translate(u"palette_line", u"line ") + decimal(import.line) + Translate(u"palette_column", u", column ") +
           decimal(import.column) + u": " + import.error;
}

TPalette PaletteFromAnsi(const std::array<uint32_t, 16>& ansi) {
    TPalette palette{};
    for (std::size_t i = 0; i < 16; ++i) palette[kAnsiToPalette[i]] = ansi[i];
    return palette;
}

std::array<uint32_t, 16> AnsiFromPalette(const TPalette& palette) {
    std::array<uint32_t, 16> ansi{};
    for (std::size_t i = 0; i < 16; ++i) ansi[i] = palette[kAnsiToPalette[i]];
    return ansi;
}

uint32_t NearestPaletteIndex(const TPalette& palette, uint32_t colour) {
    uint32_t nearest = 0;
    double best = OkLabDistance(palette[0], colour);
    for (uint32_t i = 1; i < kPaletteSize; ++i) {
        const double distance = OkLabDistance(palette[i], colour);
        if (distance < best) {
            best = distance;
            nearest = i;
        }
    }
    return nearest;
}

std::string WriteTerminalScheme(std::u16string_view name, const TPalette& palette, std::optional<uint32_t> foreground,
                                std::optional<uint32_t> background) {
    nlohmann::ordered_json scheme;
    scheme["name"] = utf16ToUtf8(name);
    if (foreground) scheme["foreground"] = HexColour(*foreground);
    if (background) scheme["background"] = HexColour(*background);
    const std::array<uint32_t, 16> ansi = AnsiFromPalette(palette);
    for (std::size_t i = 0; i < 16; ++i) scheme[kTerminalKeys[i]] = HexColour(ansi[i]);
    return scheme.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace qrl
