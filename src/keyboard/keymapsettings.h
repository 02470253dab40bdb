// The settings of a key map job, read from the plain values that the request sent, and the working
// fields of the classic editor. The editors change the session's key lists directly; writeBack
// stores the settings into the element definitions so that the reply carries them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "keyboard/keymapdata.h"

namespace qrl {

class TConfigSession;

// numpad
inline constexpr int32_t kNumpadNumeric = 0;
inline constexpr int32_t kNumpadCursor = 1;
inline constexpr int32_t kNumpadNumLock = 2;
// capslock
inline constexpr int32_t kCapsNoChange = 0;
inline constexpr int32_t kCapsOn = 1;
inline constexpr int32_t kCapsOff = 2;

class KeymapSettings {
public:
    // Reads the settings from session.dataValues (names case ignored); a name the request did not
    // send leaves its default. The session must outlive the settings.
    explicit KeymapSettings(TConfigSession& session);

    // Stores numpadshift, numpad, capslock, EmKbLang, PCKbLang and UseOldKeymap, in that order, into
    // the values of the element definitions of those names; a name without a definition is skipped.
    // Keyboard, KdfPath and EmName are not stored.
    void writeBack();

    TConfigSession& session() const { return *Session; }
    TKeyData& keys() const { return KeyDataOf(*Session); }

    bool UseOldKeymap = false;   // the classic editor instead of the graphic one
    std::u16string Keyboard;     // stem of the PC keyboard's .kdf; empty means "at102"
    std::u16string KdfPath;      // folder of the .kdf files
    std::u16string EmName;       // the emulation: stem of its .kdf and the keyboard's name in it
    bool numpadshift = false;    // Shift toggles the numeric keypad
    int32_t numpad = kNumpadNumeric;
    int32_t capslock = kCapsNoChange;
    int32_t PCKbLang = 0;        // layout index in the PC keyboard
    int32_t EmKbLang = 0;        // layout index in the emulation keyboard

    // Working fields of the classic editor.
    int32_t PhysKey = 0;         // entry to select on opening; the loaded key's code while open
    int32_t EmIndex = 0;         // entry of emulationKeys to select
    uint32_t EmId = 0xFFFFFFFFu; // Id of the selected emulation key, or -1
    bool Dirty = false;          // the "by physical key" dialog holds changes not yet stored
    std::vector<uint32_t> ListedPKeys;

    TConfigSession* Session;
};

// The PC keyboard's file stem: Keyboard, or "at102" when that is empty.
std::u16string PcKeyboardStem(const KeymapSettings& settings);

// An editor of the key map: works on the settings' session and returns the dialog result.
using TKeymapEditor = int (*)(void* parent, KeymapSettings& settings);
// The key map job over a loaded session: builds the settings, runs the classic editor when
// UseOldKeymap asks for it and the graphic one otherwise, and on OK (1) stores the settings back
// into the element values for the reply. Returns the editor's result; a missing editor gives 2.
int RunKeymapEditor(TConfigSession& session, void* parent, TKeymapEditor graphic, TKeymapEditor classic);

}  // namespace qrl
