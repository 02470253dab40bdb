// The printer value and the device blocks built from it: any text reads without fault and
// writes back to itself; the device mode and device names built from it, and the input taken as
// raw blocks, read without leaving their bytes.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "properties/devmode.h"
#include "properties/printer.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16({reinterpret_cast<const char*>(data), size});
    qrl::TPrinterProperty p;
    qrl::ParsePrinter(text, p);
    (void)qrl::PrinterShortText(p);
    const std::u16string written = qrl::PrinterToText(p);
    qrl::TPrinterProperty again;
    qrl::ParsePrinter(written, again);
    if (qrl::PrinterToText(again) != written) __builtin_trap();

    // Exact-size copies, so that the sanitizer sees any read past a block.
    const std::vector<uint8_t> dm = qrl::BuildDeviceMode(p);
    if (!dm.empty()) {
        qrl::TPrinterProperty fromBlock;
        qrl::ReadDeviceMode(fromBlock, dm.data(), dm.size());
        // What the block states of itself, dmSize and dmDriverExtra, stays inside it; with the
        // structure's own size it describes itself: building again from what it reads gives it back.
        const std::size_t stated = dm[68] | dm[69] << 8, extra = dm[70] | dm[71] << 8;
        if (stated + extra > dm.size()) __builtin_trap();
        if (stated == qrl::kDevModeSize && qrl::BuildDeviceMode(fromBlock) != dm) __builtin_trap();
    }
    const std::vector<uint8_t> dn = qrl::BuildDevNames(p);
    qrl::ReadDevNames(again, dn.data(), dn.size());

    const std::vector<uint8_t> raw(data, data + size);
    qrl::ReadDeviceMode(again, raw.data(), raw.size());
    qrl::ReadDevNames(again, raw.data(), raw.size());
    return 0;
}
