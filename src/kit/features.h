// The display features of a character cell: the attribute bits of a combination, which the colour
// model stores and the sample control draws. The feature word uses the same bits plus Box.
#pragma once

#include <cstdint>

namespace qrl {

inline constexpr std::uint32_t kAttrBlink = 1;
inline constexpr std::uint32_t kAttrUnderline = 2;
inline constexpr std::uint32_t kAttrBold = 4;
inline constexpr std::uint32_t kAttrDim = 8;
inline constexpr std::uint32_t kAttrReverse = 16;
inline constexpr std::uint32_t kAttrOverline = 32;
inline constexpr std::uint32_t kAttrStrikeOut = 64;
inline constexpr std::uint32_t kAttrInvisible = 128;
inline constexpr std::uint32_t kFeatureBox = 0x8000;  // feature word only, never an attribute bit

}  // namespace qrl
