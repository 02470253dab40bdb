// The platform's printer setup blocks, a device mode (DEVMODEW) and device names (DEVNAMES), as
// little-endian bytes built from and read into a TPrinterProperty. They are plain layouts, kept
// here so that the rules about sizes and private bytes hold, and are tested, without the platform;
// the printer dialog copies them to and from its global memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "properties/printer.h"

namespace qrl {

constexpr std::size_t kDevModeSize = 220;  // the structure without the driver's private bytes
constexpr std::size_t kDevModeNameChars = 32;

// A device mode of kDevModeSize plus the private bytes, zeroed, then filled from deviceMode,
// formName, modeNumbers (numbers not given stay 0, dmSize among them is kept as stored) and
// driverExtra, whose bytes follow the structure. dmDriverExtra is the count of private bytes that
// driverExtra really holds; a stored dmSize beyond the structure makes the block longer, zeros up
// to dmSize plus that count. Empty when modeNumbers is empty: there is then no device mode.
std::vector<uint8_t> BuildDeviceMode(const TPrinterProperty& property);
// Sets deviceMode, formName, modeNumbers and driverExtra from a device mode of `size` bytes;
// without a block the four are emptied. Nothing outside the block is read: fields that lie
// beyond it, or beyond the block's own dmSize, read as 0, and the private bytes are cut to what
// the block holds.
void ReadDeviceMode(TPrinterProperty& property, const uint8_t* block, std::size_t size);

// Device names: four 16-bit words (offsets of driver, device and port in characters, then
// whether the printer is the default), the first name at character 8, each name zero-ended.
// Empty if the offsets cannot hold the names.
std::vector<uint8_t> BuildDevNames(const TPrinterProperty& property);
// Sets driver, device and port from a device names block of `size` bytes; an offset outside the
// block gives an empty name, and a name without its zero ends with the block. Without a block
// (fewer than 8 bytes) the names stay.
void ReadDevNames(TPrinterProperty& property, const uint8_t* block, std::size_t size);

}  // namespace qrl
