// Arbitrary bytes as a .kdf: the reader must give one of its results and never read or write
// outside its input and arrays; the layout operations then run over whatever was read.
#include <cstddef>
#include <cstdint>

#include "keyboard/kdf.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qrl;
    {
        KbHdr header;
        KbKeyboard plain;
        KdfMemoryInput input(data, size);
        const int result = readKeyboard(header, input, "pc", plain);
        if (result > 0 || result < kKdfNoKeyboard) {
            __builtin_trap();
        }
    }
    GKbHdr header;
    GKbKeyboard keyboard;
    KdfMemoryInput input(data, size);
    readKeyboard(header, input, "pc", keyboard);
    keyboard.setOwners();
    std::size_t labelBytes = 0;
    for (std::size_t i = 0; i < keyboard.Layouts.size(); ++i) {
        GKbLayout& layout = keyboard.layout(i);
        layout.scaleTo(640, 200);
        layout.hitTest(100, 50);
        for (std::size_t k = 0; k < layout.Keys.size(); ++k) {
            const GKbKey& key = layout.key(k);
            std::int32_t state = 0;
            layout.findKey(key.Code | 0x100, state);
            layout.findKey(key.AltCode, state);
            for (int s : {0, 1, 2, 3, 4, 5, 6, 7, 16, 17, 20, 23}) {
                labelBytes += drawnLabel(key, s).size() + shiftEntry(key, s).Label.size();
                layout.setState(s);
            }
        }
    }
    return labelBytes == static_cast<std::size_t>(-1) ? 1 : 0;
}
