#include "keyboard/graphickeymap.h"

#include "locale/language.h"
#include "platform/platform.h"

namespace qrl {

int LoadKeyboard(const std::u16string& path, const std::string& name, GKbKeyboard& keyboard) {
    std::string bytes;
    if (!platform::readFile(path, bytes)) return kKdfNotOpened;
    GKbHdr header;
    KdfMemoryInput input(bytes.data(), bytes.size());
    const int result = readKeyboard(header, input, name, keyboard);
    if (result == kKdfOk) keyboard.setOwners();
    return result;
}

GKbLayout* ChooseLayout(GKbKeyboard& keyboard, int32_t& index) {
    if (index < 0 || static_cast<std::size_t>(index) >= keyboard.Layouts.size()) index = 0;
    return keyboard.Layouts.empty() ? nullptr : &keyboard.layout(static_cast<std::size_t>(index));
}

uint32_t WithLayoutState(uint32_t code, int32_t state) {
    uint32_t modifiers = 0;
    if (state & kStateShift) modifiers |= kModShift;
    if (state & kStateCtrl) modifiers |= kModCtrl;
    if (state & kStateAlt) modifiers |= kModAlt;
    return MappedCode(code, modifiers);
}

uint32_t ShiftBoxesCode(bool shift, bool ctrl, bool alt) {
    return (shift ? kModShift : 0) | (ctrl ? kModCtrl : 0) | (alt ? kModAlt : 0);
}

uint32_t PcKeyCode(const GKbKey& key, int32_t state) {
    const bool toggled = (state & kStateToggle) && key.AltCode != 0;
    return static_cast<uint32_t>(toggled ? key.AltCode : key.Code);
}

uint32_t EmKeyCode(const GKbKey& key, int32_t state) {
    return static_cast<uint32_t>(key.UsesShiftCodes ? shiftEntry(key, state).Code : key.Code);
}

TPcCodeStep PcListStep(int32_t selection, uint32_t pcCode, uint32_t code) {
    if (code == pcCode) code = 0;
    if (selection == 1) return {code, 1, false};
    return {code, code != 0 ? 2 : 0, true};
}

TPcCodeStep ShiftBoxesStep(int32_t selection, uint32_t pcCode, const GKbLayout* layout, uint32_t boxes) {
    if (pcCode == 0) return {0, selection, false};
    return PcListStep(selection, pcCode, layout ? WithLayoutState(pcCode, layout->State) : MappedCode(pcCode, boxes));
}

TMapResult MapPcCode(TKeyData& keys, TMapTarget target, uint32_t pcCode, uint32_t shownPcCode, uint32_t emCode,
                     std::u16string_view text, const std::function<bool()>& loseGlobal) {
    if (target == TMapTarget::GlobalString) {
        if (text.empty()) return TMapResult::Blank;
        MapToGlobalString(keys, pcCode, text);
        return TMapResult::Mapped;
    }
    // The rules below take the first global string away themselves: the question only asks.
    if (FindKeyString(keys.globalKeyStrings, pcCode) && !loseGlobal()) return TMapResult::Refused;
    if (target == TMapTarget::String) {
        if (text.empty()) {
            RemoveKeyString(keys.globalKeyStrings, pcCode);  // the answer was Yes all the same
            return TMapResult::Blank;
        }
        MapToString(keys, pcCode, text);
    } else {
        MapToEmulationKeyReplacing(keys, pcCode, shownPcCode, emCode);
    }
    return TMapResult::Mapped;
}

TMappedMarks MappedMarks(const TKeyData& keys) {
    TMappedMarks marks;
    for (const KeyMapEntry& entry : keys.keyMap) {
        marks.emulation.push_back(entry.EmKey);
        marks.physical.push_back(entry.PKey);
    }
    for (const auto* list : {&keys.globalKeyStrings, &keys.keyStrings})
        for (const KeyString& entry : *list) marks.physical.push_back(entry.PKey);
    return marks;
}

bool MappingIsCurrent(const TCurrentCheck& c) {
    if (c.selection == 1) return c.pcCode == c.shownPcCode;  // both 0, or equal and not 0
    if (c.selection != 2) return false;
    switch (c.kind) {
    case KeyMappingKind::None:
    case KeyMappingKind::EmulationKey: return c.target == TMapTarget::EmulationKey && c.emCode == c.shownEmCode;
    case KeyMappingKind::String: return c.target == TMapTarget::String && c.hasString && c.stringMatches;
    case KeyMappingKind::GlobalString: return c.target == TMapTarget::GlobalString && c.hasGlobal && c.globalMatches;
    }
    return false;
}

std::u16string MappedTargetText(TMapTarget target, std::u16string_view editText, uint32_t emCode, bool emKeyShown,
                                bool hasEmLayout, const std::vector<KeyName>& emulationKeys) {
    const auto quoted = [](std::u16string lead, std::u16string_view text) { return lead + std::u16string(text) + u"'"; };
    if (target == TMapTarget::GlobalString)
        return quoted(Translate(u"gkemapdlg_cpp_397", u"global string '"), editText);
    if (target == TMapTarget::String) return quoted(Translate(u"gkemapdlg_cpp_405", u"string '"), editText);
    if (emCode == 0) return Translate(u"gkemapdlg_cpp_411", u"nothing");
    const KeyName* key = FindKeyName(emulationKeys, emCode);
    if (!key) return Translate(u"gkemapdlg_cpp_446", u"an unknown key");
    std::u16string text = quoted(Translate(u"gkemapdlg_cpp_417", u"Emulation '"), key->Name);
    if (!emKeyShown && hasEmLayout) text += Translate(u"gkemapdlg_cpp_443", u" (not shown)");
    return text;
}

TKeymapStatus KeymapStatus(int32_t selection, bool current, uint32_t pcCode, KeyMappingKind kind,
                           std::u16string_view em, std::u16string_view pc) {
    const std::u16string emText(em), pcText(pc);
    const auto pcQuoted = [&](std::u16string_view key, std::u16string_view lead) {
        return Translate(key, lead) + pcText + u"'";
    };
    if (selection == 1) {
        if (!current) {
            std::u16string text = Translate(u"gkemapdlg_cpp_265", u"Press 'Map' to map ") + emText;
            text += pcCode == 0 ? Translate(u"gkemapdlg_cpp_268", u" to nothing")
                                : pcQuoted(u"gkemapdlg_cpp_270", u" to PC '");
            return {text, true, false};
        }
        if (pcCode == 0) return {emText + Translate(u"gkemapdlg_cpp_253", u" is not mapped"), false, false};
        return {emText + pcQuoted(u"gkemapdlg_cpp_256", u" is mapped to PC '"), false, true};
    }
    if (selection == 2) {
        const std::u16string pcLead = Translate(u"gkemapdlg_cpp_280", u"PC '") + pcText;
        if (!current)
            return {Translate(u"gkemapdlg_cpp_293", u"Press 'Map' to map PC '") + pcText +
                        Translate(u"gkemapdlg_cpp_295", u"' to ") + emText,
                    true, false};
        if (kind == KeyMappingKind::None)
            return {pcLead + Translate(u"gkemapdlg_cpp_282", u"' is not mapped"), false, false};
        return {pcLead + Translate(u"gkemapdlg_cpp_285", u"' is mapped to ") + emText, false, true};
    }
    return {Translate(u"gkemapdlg_cpp_245", u"Select a key to show its mapping"), false, false};
}

}  // namespace qrl
