// A key map file from the fuzzer must never throw; a file that fails says where, and a file that
// reads writes out and reads back to the same map and keyboards.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "keyboard/keymapfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const qrl::TKeyMapFileRead read = qrl::ReadKeyMapFile(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!read.ok()) {
        if (read.line < 1 || read.column < 1 || qrl::KeyMapFileMessage(read).empty()) std::abort();
        return 0;
    }
    qrl::TKeyData keys;
    qrl::ImportKeyMap(keys, read.file, qrl::TKeyMapImport::Replace);
    const std::string written = qrl::WriteKeyMapFile(keys, read.file.pcKeyboard, read.file.emKeyboard);
    const qrl::TKeyMapFileRead back = qrl::ReadKeyMapFile(written);
    if (!back.ok() || back.file.pcKeyboard != read.file.pcKeyboard || back.file.emKeyboard != read.file.emKeyboard ||
        back.file.keyMap.size() != keys.keyMap.size() || back.file.keyStrings.size() != keys.keyStrings.size() ||
        back.file.globalKeyStrings.size() != keys.globalKeyStrings.size())
        std::abort();
    for (std::size_t i = 0; i < keys.keyMap.size(); ++i)
        if (back.file.keyMap[i].PKey != keys.keyMap[i].PKey || back.file.keyMap[i].EmKey != keys.keyMap[i].EmKey)
            std::abort();
    for (std::size_t i = 0; i < keys.keyStrings.size(); ++i)
        if (back.file.keyStrings[i].Text != keys.keyStrings[i].Text) std::abort();
    // Merging a file into itself changes nothing but the order of codes.
    qrl::ImportKeyMap(keys, back.file, qrl::TKeyMapImport::Merge);
    if (keys.keyMap.size() != back.file.keyMap.size()) std::abort();
    return 0;
}
