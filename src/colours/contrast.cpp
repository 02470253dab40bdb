#include "colours/contrast.h"

#include <algorithm>
#include <cmath>

#include "locale/language.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// The sRGB channel made linear, then weighted into the relative luminance.
double ChannelLuminance(uint32_t channel) {
    const double c = static_cast<double>(channel & 0xFFu) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double Luminance(uint32_t colour) {
    return 0.2126 * ChannelLuminance(colour) + 0.7152 * ChannelLuminance(colour >> 8) +
           0.0722 * ChannelLuminance(colour >> 16);
}

}  // namespace

double ContrastRatio(uint32_t foreground, uint32_t background) {
    const double a = Luminance(foreground);
    const double b = Luminance(background);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

std::u16string ContrastFigure(double ratio) {
    const long long tenths = static_cast<long long>(std::floor(ratio * 10.0 + 1e-9));
    return decimal(tenths / 10) + u"." + decimal(tenths % 10) + u":1";
}

std::u16string ContrastText(double ratio) {
    std::u16string text = Translate(u"contrast_label", u"Contrast ") + ContrastFigure(ratio);
    if (ratio < kMinimumReadableContrast) text += Translate(u"contrast_low", u" \u2013 hard to read");
    return text;
}

}  // namespace qrl
