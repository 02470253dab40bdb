#include "keyboard/keymapcheatsheet.h"

#include "keyboard/graphickeymap.h"
#include "keyboard/keylook.h"
#include "keyboard/keymapcheck.h"
#include "keyboard/keymaprules.h"
#include "keyboard/keymapsettings.h"
#include "text/textutil.h"
#include "xml/node.h"

#include <algorithm>
#include <climits>
#include <map>
#include <tuple>

using AdvXMLParser::Element;

namespace qrl {

namespace {

// Texts on a key are cut to this many characters, the last of them "…".
constexpr std::size_t kKeyTextLength = 9;
constexpr std::size_t kSenderListLength = 14;

// Only characters that need no escaping in HTML's raw style text: no quotes, no "<", ">" or "&".
constexpr std::u16string_view kStyle =
    u"@page { size: A4 landscape; margin: 8mm; }\n"
    u"body { font-family: sans-serif; font-size: 7pt; margin: 0; }\n"
    u"h1 { font-size: 11pt; margin: 0 0 2mm 0; }\n"
    u"h2 { font-size: 8pt; margin: 1mm 0; }\n"
    u"svg.pc { width: 100%; max-height: 92mm; }\n"
    u"svg.em { width: 100%; max-height: 62mm; }\n"
    u".lower { display: flex; gap: 4mm; }\n"
    u".lower .keyboard { flex: 0 0 45%; }\n"
    u".lower .mappings { flex: 1; column-count: 3; column-gap: 2mm; }\n"
    u"rect { fill: white; stroke: #555; stroke-width: 1; }\n"
    u"rect.mapped { fill: #e8eefc; }\n"
    u"text { font-size: 6.5px; fill: #000; }\n"
    u"text.cap { font-size: 7px; fill: #666; }\n"
    u"text.shift { fill: #0a5; } text.ctrl { fill: #c50; } text.alt { fill: #a0a; }\n"
    u"table { border-collapse: collapse; width: 100%; font-size: 5pt; }\n"
    u"th, td { border-bottom: 0.2mm solid #bbb; padding: 0 1mm; text-align: left; vertical-align: top; }\n"
    u"span.shift { color: #0a5; } span.ctrl { color: #c50; } span.alt { color: #a0a; }\n";

std::u16string Shortened(const std::u16string& text, std::size_t length) {
    return text.size() <= length ? text : text.substr(0, length - 1) + u"\u2026";
}

std::u16string Number(long long value) { return decimal(value); }

// What a code sends, by the editor's precedence; empty when nothing.
struct TSends {
    std::u16string kind;
    std::u16string text;
};
TSends SendsOf(const TKeyData& keys, uint32_t code) {
    if (const KeyString* global = FindKeyString(keys.globalKeyStrings, code)) return {u"global string", global->Text};
    if (const KeyString* string = FindKeyString(keys.keyStrings, code)) return {u"string", string->Text};
    if (const KeyMapEntry* entry = FindKeyMapEntry(keys.keyMap, code)) {
        const KeyName* name = FindKeyName(keys.emulationKeys, entry->EmKey);
        return {u"emulation key", name ? name->Name : Number(static_cast<int32_t>(entry->EmKey))};
    }
    return {};
}

// A key's own label: the text of its unshifted state, an arrow for the glyph names.
std::u16string CapOf(const KbKey& key) {
    const std::string& label = drawnLabel(key, 0);
    if (!IsGlyphLabel(label)) return latin1ToUtf16(label);
    static const std::map<std::string, std::u16string> kArrows = {
        {"<up>", u"\u2191"}, {"<down>", u"\u2193"}, {"<left>", u"\u2190"}, {"<right>", u"\u2192"}};
    const auto arrow = kArrows.find(label);
    return arrow != kArrows.end() ? arrow->second : latin1ToUtf16(label.substr(1, label.size() - 2));
}

Element& AddText(Element& parent, std::u16string_view tag, std::u16string_view text, std::u16string_view cssClass = {}) {
    Element& element = parent.AddElement(tag);
    if (!cssClass.empty()) element.SetAttribute(u"class").SetText(cssClass);
    element.AddText(text);
    return element;
}

void SetNumber(Element& element, std::u16string_view name, long long value) {
    element.SetAttribute(name).SetText(Number(value));
}

// One keyboard as inline SVG, each key a rectangle with its cap and the lines `linesOf` gives.
// `linesOf` answers the lines with their classes, and whether the key counts as mapped.
template <class LinesOf>
void AddKeyboard(Element& parent, const KbLayout& layout, std::u16string_view cssClass, LinesOf linesOf) {
    int32_t left = INT32_MAX, top = INT32_MAX, right = INT32_MIN, bottom = INT32_MIN;
    for (const KbKey& key : layout.Keys) {
        left = std::min(left, key.X);
        top = std::min(top, key.Y);
        right = std::max(right, key.X + key.Width);
        bottom = std::max(bottom, key.Y + key.Height);
    }
    if (layout.Keys.empty()) left = top = right = bottom = 0;
    Element& svg = parent.AddElement(u"svg");
    svg.SetAttribute(u"xmlns").SetText(u"http://www.w3.org/2000/svg");
    svg.SetAttribute(u"class").SetText(cssClass);
    svg.SetAttribute(u"viewBox")
        .SetText(Number(left - 1) + u" " + Number(top - 1) + u" " + Number(static_cast<long long>(right) - left + 2) + u" " +
                 Number(static_cast<long long>(bottom) - top + 2));
    for (const KbKey& key : layout.Keys) {
        const auto [lines, mapped] = linesOf(key);
        Element& group = svg.AddElement(u"g");
        Element& rect = group.AddElement(u"rect");
        SetNumber(rect, u"x", key.X);
        SetNumber(rect, u"y", key.Y);
        SetNumber(rect, u"width", key.Width);
        SetNumber(rect, u"height", key.Height);
        SetNumber(rect, u"rx", 2);
        if (mapped) rect.SetAttribute(u"class").SetText(u"mapped");
        Element& cap = AddText(group, u"text", CapOf(key), u"cap");
        SetNumber(cap, u"x", key.X + 2);
        SetNumber(cap, u"y", key.Y + 7);
        int32_t y = key.Y + 14;
        for (const auto& [text, lineClass] : lines) {
            if (!text.empty()) {
                Element& line = AddText(group, u"text", text, lineClass);
                SetNumber(line, u"x", key.X + 2);
                SetNumber(line, u"y", y);
            }
            y += 7;
        }
    }
}

using TKeyLines = std::pair<std::vector<std::pair<std::u16string, std::u16string>>, bool>;

// A PC key: what it sends unshifted, with Shift, with Ctrl, with Alt.
TKeyLines PcKeyLines(const TKeyData& keys, const KbKey& key) {
    TKeyLines result;
    const std::pair<uint32_t, const char16_t*> states[] = {
        {0, u"plain"}, {kModShift, u"shift"}, {kModCtrl, u"ctrl"}, {kModAlt, u"alt"}};
    for (const auto& [modifier, cssClass] : states) {
        const TSends sends = SendsOf(keys, MappedCode(static_cast<uint32_t>(key.Code), modifier));
        const std::u16string shown = sends.kind == u"emulation key" || sends.text.empty() ? sends.text : u"\"" + sends.text + u"\"";
        result.first.push_back({Shortened(shown, kKeyTextLength), cssClass});
        result.second = result.second || !sends.kind.empty();
    }
    return result;
}

// An emulation key: the PC keys that send it.
TKeyLines EmKeyLines(const TKeyData& keys, const std::map<uint32_t, std::vector<uint32_t>>& senders, const KbKey& key) {
    TKeyLines result;
    const auto found = senders.find(static_cast<uint32_t>(key.Code));
    if (found == senders.end()) return result;
    std::u16string names;
    for (uint32_t code : found->second) names += (names.empty() ? u"" : u", ") + CheckKeyName(keys.physicalKeys, code);
    result.first.push_back({Shortened(names, kSenderListLength), u"plain"});
    if (names.size() > kSenderListLength) result.first.push_back({Shortened(names.substr(kSenderListLength - 1), kSenderListLength), u"plain"});
    result.second = true;
    return result;
}

// PC codes that send each emulation key: the codes whose shown mapping is that key.
std::map<uint32_t, std::vector<uint32_t>> SendersByEmulationKey(const TKeyData& keys) {
    std::map<uint32_t, std::vector<uint32_t>> senders;
    std::map<uint32_t, bool> seen;
    for (const KeyMapEntry& entry : keys.keyMap) {
        if (seen[entry.PKey]) continue;
        seen[entry.PKey] = true;
        if (FindKeyString(keys.globalKeyStrings, entry.PKey) || FindKeyString(keys.keyStrings, entry.PKey)) continue;
        senders[entry.EmKey].push_back(entry.PKey);
    }
    return senders;
}

// Every entry of the three lists, by key and then by modifiers, the shown one of a code first.
void AddMappingTable(Element& parent, const TKeyData& keys) {
    struct Row {
        uint32_t code;
        int list;  // 0 global string, 1 string, 2 emulation key: the editor's precedence
        std::size_t index;
        std::u16string kind, text;
    };
    std::vector<Row> rows;
    for (std::size_t i = 0; i < keys.globalKeyStrings.size(); ++i)
        rows.push_back({keys.globalKeyStrings[i].PKey, 0, i, u"global string", keys.globalKeyStrings[i].Text});
    for (std::size_t i = 0; i < keys.keyStrings.size(); ++i)
        rows.push_back({keys.keyStrings[i].PKey, 1, i, u"string", keys.keyStrings[i].Text});
    for (std::size_t i = 0; i < keys.keyMap.size(); ++i) {
        const KeyName* name = FindKeyName(keys.emulationKeys, keys.keyMap[i].EmKey);
        rows.push_back({keys.keyMap[i].PKey, 2, i, u"emulation key",
                        name ? name->Name : Number(static_cast<int32_t>(keys.keyMap[i].EmKey))});
    }
    const auto order = [](const Row& r) { return std::tuple(r.code & ~kModMask, r.code & kModMask, r.list, r.index); };
    std::sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) { return order(a) < order(b); });

    Element& table = parent.AddElement(u"table");
    Element& head = table.AddElement(u"thead").AddElement(u"tr");
    for (const char16_t* title : {u"PC key", u"Kind", u"Sends"}) AddText(head, u"th", title);
    Element& body = table.AddElement(u"tbody");
    if (rows.empty()) AddText(body.AddElement(u"tr"), u"td", u"No mappings");
    for (const Row& row : rows) {
        Element& tr = body.AddElement(u"tr");
        AddText(tr, u"td", CheckKeyName(keys.physicalKeys, row.code));
        AddText(tr, u"td", row.kind);
        AddText(tr, u"td", row.text);
    }
}

}  // namespace

std::string WriteCheatSheet(const TCheatSheetInput& input) {
    static const TKeyData kNoKeys;
    const TKeyData& keys = input.keys ? *input.keys : kNoKeys;
    const std::u16string title = input.emName + u" key map";

    AdvXMLParser::Document document(u"html");
    Element& html = *document.Root();
    html.SetAttribute(u"xmlns").SetText(u"http://www.w3.org/1999/xhtml");
    html.SetAttribute(u"lang").SetText(u"en");
    Element& head = html.AddElement(u"head");
    head.AddElement(u"meta").SetAttribute(u"charset").SetText(u"UTF-8");
    AddText(head, u"title", title);
    AddText(head, u"style", kStyle);

    Element& body = html.AddElement(u"body");
    AddText(body, u"h1", title);
    Element& pcPart = body.AddElement(u"div");
    pcPart.SetAttribute(u"class").SetText(u"keyboard");
    Element& pcTitle = AddText(pcPart, u"h2", u"PC keyboard: on each key what it sends ");
    for (const auto& [text, cssClass] : {std::pair{u"unshifted", u"plain"}, std::pair{u", with Shift", u"shift"},
                                         std::pair{u", with Ctrl", u"ctrl"}, std::pair{u", with Alt", u"alt"}})
        AddText(pcTitle, u"span", text, cssClass);
    if (input.pcLayout)
        AddKeyboard(pcPart, *input.pcLayout, u"pc", [&](const KbKey& key) { return PcKeyLines(keys, key); });

    Element& lower = body.AddElement(u"div");
    lower.SetAttribute(u"class").SetText(u"lower");
    Element& emPart = lower.AddElement(u"div");
    emPart.SetAttribute(u"class").SetText(u"keyboard");
    AddText(emPart, u"h2", u"Emulation keyboard: on each key the PC keys that send it");
    const auto senders = SendersByEmulationKey(keys);
    if (input.emLayout)
        AddKeyboard(emPart, *input.emLayout, u"em", [&](const KbKey& key) { return EmKeyLines(keys, senders, key); });
    Element& mappings = lower.AddElement(u"div");
    mappings.SetAttribute(u"class").SetText(u"mappings");
    AddMappingTable(mappings, keys);

    std::u16string text;
    AdvXMLParser::WriteDocument(document, text);
    // Browsers read the page as HTML; without a doctype they would lay it out in quirks mode.
    const std::size_t afterDeclaration = text.find(u"?>");
    text.insert(afterDeclaration == std::u16string::npos ? 0 : text.find(u'<', afterDeclaration), u"<!DOCTYPE html>\n");
    return utf16ToUtf8(text + u"\n");
}

std::string CheatSheetFor(const KeymapSettings& settings) {
    GKbKeyboard pcKeyboard, emKeyboard;
    int32_t pcIndex = settings.PCKbLang, emIndex = settings.EmKbLang;
    const std::u16string pcPath = joinPath(settings.KdfPath, PcKeyboardStem(settings)) + u".kdf";
    const std::u16string emPath = joinPath(settings.KdfPath, settings.EmName) + u".kdf";
    TCheatSheetInput input;
    input.keys = &settings.keys();
    input.emName = settings.EmName;
    if (LoadKeyboard(pcPath, "pc", pcKeyboard) == kKdfOk) input.pcLayout = ChooseLayout(pcKeyboard, pcIndex);
    if (LoadKeyboard(emPath, utf16ToLatin1(settings.EmName), emKeyboard) == kKdfOk)
        input.emLayout = ChooseLayout(emKeyboard, emIndex);
    return WriteCheatSheet(input);
}

std::u16string CheatSheetFileName(const KeymapSettings& settings) { return settings.EmName + u"-keymap.html"; }

}  // namespace qrl
