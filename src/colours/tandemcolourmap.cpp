#include "colours/tandemcolourmap.h"

#include "properties/property.h"

namespace qrl {

namespace {

constexpr uint8_t kBright = 8;
constexpr uint8_t kBlue = 1;
constexpr uint8_t kHighBit = 128;
constexpr int kWhiteBackgroundPosition = 8;
constexpr uint8_t kWhite = 15;

constexpr uint32_t Rgb(uint32_t r, uint32_t g, uint32_t b) { return r | (g << 8) | (b << 16); }

constexpr std::array<const char16_t*, TTandemColourMap::kListedIndexes> kAttributeTexts{{
    u"Normal",
    u"Dim",
    u"Blinking",
    u"Blinking, Dim",
    u"Reverse",
    u"Reverse, Dim",
    u"Reverse, Blinking",
    u"Reverse, Blinking, Dim",
    u"Invisible",
    u"Invisible, Dim",
    u"Invisible, Blinking",
    u"Invisible, Blinking, Dim",
    u"Invisible, Reverse",
    u"Invisible, Reverse, Dim",
    u"Invisible, Reverse, Blinking",
    u"Invisible, Reverse, Blinking, Dim",
    u"Underscore",
    u"Underscore, Dim",
    u"Underscore, Blinking",
    u"Underscore, Blinking, Dim",
    u"Underscore, Invisible",
    u"Underscore, Invisible, Dim",
    u"Underscore, Invisible, Blinking",
    u"Underscore, Invisible, Blinking, Dim",
}};

int ClampPosition(int position) { return position >= 0 && position < 16 ? position : 0; }

}  // namespace

const std::array<TTandemColour, 16> kTandemColours{{
    {u"Black", u"Black", Rgb(0, 0, 0)},
    {u"Blue", u"Blue", Rgb(0, 0, 119)},
    {u"Green", u"Green", Rgb(0, 119, 0)},
    {u"Cyan", u"Cyan", Rgb(0, 119, 119)},
    {u"Red", u"Red", Rgb(119, 0, 0)},
    {u"Magenta", u"Magenta", Rgb(119, 0, 119)},
    {u"Brown", u"Brown", Rgb(119, 119, 0)},
    {u"Light Grey", u"Light Grey", Rgb(128, 128, 128)},
    {u"Dark Grey", u"White", Rgb(63, 63, 63)},
    {u"Light Blue", u"Light Blue", Rgb(0, 0, 255)},
    {u"Light Green", u"Light Green", Rgb(0, 255, 0)},
    {u"Light Cyan", u"Light Cyan", Rgb(0, 255, 255)},
    {u"Light Red", u"Light Red", Rgb(255, 0, 0)},
    {u"Light Magenta", u"Light Magenta", Rgb(255, 0, 255)},
    {u"Yellow", u"Yellow", Rgb(255, 255, 0)},
    {u"White", u"White", Rgb(255, 255, 255)},
}};

TTandemColourMap::TTandemColourMap() { SetDefaults(); }

void TTandemColourMap::SetDefaults() {
    const auto base = static_cast<uint8_t>(defaultBackground * 16 + (defaultForeground | kBright));
    bytes.fill(base);
    for (std::size_t i = 0; i < kIndexes; i += 2) bytes[i] &= static_cast<uint8_t>(~kBright);
    for (std::size_t i : {15, 16, 17, 18, 23, 24, 25, 26}) bytes[i] &= static_cast<uint8_t>(~(kBright | kBlue));
    for (std::size_t i : {2, 7, 12, 17, 22, 27}) bytes[i] |= kHighBit;
    bytes[8] = static_cast<uint8_t>(defaultBackground * 17);
}

void TTandemColourMap::ResetIndex(std::size_t i) {
    if (i >= kIndexes) return;
    auto b = static_cast<uint8_t>(defaultBackground * 16 + (defaultForeground | kBright));
    if (i % 2 == 1) b &= static_cast<uint8_t>(~kBright);
    if ((i >= 16 && i <= 19) || (i >= 24 && i <= 27)) b &= static_cast<uint8_t>(~(kBright | kBlue));
    if (i % 4 == 2 || i % 4 == 3) b |= kHighBit;
    if (i == 8) b = static_cast<uint8_t>(defaultBackground * 17);
    bytes[i] = b;
}

void TTandemColourMap::Parse(std::u16string_view text) {
    SetDefaults();
    std::array<int32_t, kIndexes> numbers{};
    const std::size_t read = ReadNumberStream(text, numbers.data(), numbers.size());
    for (std::size_t i = 0; i < read; ++i) bytes[i] = static_cast<uint8_t>(numbers[i]);
}

std::u16string TTandemColourMap::ToText() const {
    std::u16string out;
    for (uint8_t b : bytes) AppendStreamNumber(out, b);
    return out;
}

void TTandemColourMap::SetForegroundPosition(std::size_t index, int position) {
    if (index >= kIndexes) return;
    bytes[index] = static_cast<uint8_t>((bytes[index] & 0xF0u) | static_cast<unsigned>(ClampPosition(position)));
}

void TTandemColourMap::SetBackgroundPosition(std::size_t index, int position) {
    if (index >= kIndexes) return;
    int number = ClampPosition(position);
    if (number == kWhiteBackgroundPosition) number = kWhite;
    bytes[index] = static_cast<uint8_t>((bytes[index] & 0x0Fu) | static_cast<unsigned>(number << 4));
}

int TandemForegroundPosition(uint8_t number) { return number & 15; }

int TandemBackgroundPosition(uint8_t number) {
    const std::u16string_view text = kTandemColours[number & 15u].backgroundText;
    for (int p = 0; p < 16; ++p)
        if (text == kTandemColours[static_cast<std::size_t>(p)].backgroundText) return p;
    return 0;
}

int TandemIndexOfListPosition(int position) {
    if (position < 0 || position >= static_cast<int>(TTandemColourMap::kListedIndexes)) return -1;
    return position < 20 ? position : position + 4;
}

const char16_t* TandemAttributeText(int position) {
    if (position < 0 || position >= static_cast<int>(TTandemColourMap::kListedIndexes)) return u"";
    return kAttributeTexts[static_cast<std::size_t>(position)];
}

}  // namespace qrl
