// The rules of the graphic key map editor that need no window: loading its two keyboards, the codes
// that keys and modifier boxes stand for, which keys show as mapped, whether the shown mapping is
// already what Map would set, and the status line with the state of Map and Remove.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "keyboard/kdf.h"
#include "keyboard/keymapdata.h"
#include "keyboard/keymaprules.h"

namespace qrl {

// The result of LoadKeyboard when the file can't be opened at all.
inline constexpr int kKdfNotOpened = -100;

// Reads keyboard `name` of the .kdf at `path` into `keyboard`; on success every key learns its
// layout. kKdfOk, a reader error, or kKdfNotOpened.
int LoadKeyboard(const std::u16string& path, const std::string& name, GKbKeyboard& keyboard);
// The layout at `index`, or the first when the index is out of range (the index follows); null for
// a keyboard without layouts.
GKbLayout* ChooseLayout(GKbKeyboard& keyboard, int32_t& index);

// A code with a layout's shift state as modifier bits: Shift 0x100, Ctrl 0x200, Alt 0x400.
uint32_t WithLayoutState(uint32_t code, int32_t state);
// The modifier bits of the Shift, Ctrl and Alt boxes.
uint32_t ShiftBoxesCode(bool shift, bool ctrl, bool alt);
// The code a press on a PC key stands for: its AltCode while the toggle is on, if it has one.
uint32_t PcKeyCode(const GKbKey& key, int32_t state);
// The code of an emulation key: its own, or the state's where the key uses shift codes.
uint32_t EmKeyCode(const GKbKey& key, int32_t state);

// Where a PC code chosen without a key of the picture leaves the PC side: a list entry, or the
// modifier boxes on the chosen code. The code already chosen takes the choice back (0). From the
// emulation side the code only stands against the shown emulation key; otherwise its mapping is
// shown, and the PC side holds the selection while there is a code.
struct TPcCodeStep {
    uint32_t pcCode = 0;
    int32_t selection = 0;
    bool showMapping = false;
};
TPcCodeStep PcListStep(int32_t selection, uint32_t pcCode, uint32_t code);
// The modifier boxes changed: a chosen PC code takes the PC layout's modifiers (the boxes' own
// without a layout) and goes through the list step. Without a code nothing changes.
TPcCodeStep ShiftBoxesStep(int32_t selection, uint32_t pcCode, const GKbLayout* layout, uint32_t boxes);

// The codes that get a "mapped" mark: emulation keys of the key map, and physical keys of the key
// map, the global strings and the strings.
struct TMappedMarks {
    std::vector<uint32_t> emulation;
    std::vector<uint32_t> physical;
};
TMappedMarks MappedMarks(const TKeyData& keys);

// The mapping side that the radios choose.
enum class TMapTarget { EmulationKey, String, GlobalString };

// Whether the dialog already shows what Map would set.
struct TCurrentCheck {
    int32_t selection = 0;  // 0 none, 1 from the emulation side, 2 from the PC side
    KeyMappingKind kind = KeyMappingKind::None;
    TMapTarget target = TMapTarget::EmulationKey;
    uint32_t pcCode = 0, shownPcCode = 0;
    uint32_t emCode = 0, shownEmCode = 0;
    bool hasString = false, stringMatches = false;  // the string edit equals the shown string
    bool hasGlobal = false, globalMatches = false;
};
bool MappingIsCurrent(const TCurrentCheck& check);

// What the Map button did.
enum class TMapResult { Mapped, Refused, Blank };
// The Map button on `pcCode`: a global string is set, and nothing else changes. Any other target
// first loses the code's (first) global string, when it has one and `loseGlobal` agrees; a refusal
// leaves everything as it was. Then the string is set, or the emulation key replaces every key
// map entry of `shownPcCode`. An empty text maps nothing: Blank, with an agreed loss standing.
TMapResult MapPcCode(TKeyData& keys, TMapTarget target, uint32_t pcCode, uint32_t shownPcCode, uint32_t emCode,
                     std::u16string_view text, const std::function<bool()>& loseGlobal);

// What would be mapped, as the status line says it.
std::u16string MappedTargetText(TMapTarget target, std::u16string_view editText, uint32_t emCode, bool emKeyShown,
                                bool hasEmLayout, const std::vector<KeyName>& emulationKeys);

struct TKeymapStatus {
    std::u16string text;
    bool mapEnabled = false;
    bool removeEnabled = false;
};
// The status line: `em` from MappedTargetText, `pc` the PC name of pcCode.
TKeymapStatus KeymapStatus(int32_t selection, bool current, uint32_t pcCode, KeyMappingKind kind,
                           std::u16string_view em, std::u16string_view pc);

}  // namespace qrl
