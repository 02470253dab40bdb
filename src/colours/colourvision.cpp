#include "colours/colourvision.h"

#include <algorithm>
#include <cmath>

#include "colours/contrast.h"
#include "locale/language.h"

namespace qrl {

namespace {

using TMatrix = std::array<std::array<double, 3>, 3>;
struct TLinear {
    double red = 0, green = 0, blue = 0;
};

// Full severity (1.0) of each deficiency, for linear RGB.
constexpr TMatrix kProtanopia{{{0.152286, 1.052583, -0.204868},
                               {0.114503, 0.786281, 0.099216},
                               {-0.003882, -0.048116, 1.051998}}};
constexpr TMatrix kDeuteranopia{{{0.367322, 0.860646, -0.227968},
                                 {0.280085, 0.672501, 0.047413},
                                 {-0.011820, 0.042940, 0.968881}}};
constexpr TMatrix kTritanopia{{{1.255528, -0.076749, -0.178779},
                               {-0.078411, 0.930809, 0.147602},
                               {0.004733, 0.691367, 0.303900}}};

double ToLinear(uint32_t channel) {
    const double c = static_cast<double>(channel & 0xFFu) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

uint32_t FromLinear(double value) {
    const double v = std::clamp(value, 0.0, 1.0);
    const double c = v <= 0.0031308 ? v * 12.92 : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
    return static_cast<uint32_t>(std::lround(c * 255.0));
}

TLinear Linear(uint32_t colour) { return {ToLinear(colour), ToLinear(colour >> 8), ToLinear(colour >> 16)}; }

uint32_t Packed(const TLinear& c) {
    return FromLinear(c.red) | (FromLinear(c.green) << 8) | (FromLinear(c.blue) << 16);
}

TLinear Apply(const TMatrix& m, const TLinear& c) {
    const auto row = [&](int r) { return m[r][0] * c.red + m[r][1] * c.green + m[r][2] * c.blue; };
    return {row(0), row(1), row(2)};
}

const TMatrix* MatrixOf(TVisionPreview preview) {
    switch (preview) {
    case TVisionPreview::Protanopia: return &kProtanopia;
    case TVisionPreview::Deuteranopia: return &kDeuteranopia;
    case TVisionPreview::Tritanopia: return &kTritanopia;
    default: return nullptr;
    }
}

}  // namespace

std::array<std::u16string, kVisionPreviewCount> VisionPreviewNames() {
    return {Translate(u"preview_normal", u"Normal vision"), Translate(u"preview_protanopia", u"Protanopia"),
            Translate(u"preview_deuteranopia", u"Deuteranopia"), Translate(u"preview_tritanopia", u"Tritanopia"),
            Translate(u"preview_greyscale", u"Greyscale")};
}

uint32_t SimulateVision(uint32_t colour, TVisionPreview preview) {
    if (preview == TVisionPreview::Greyscale) {
        const TLinear c = Linear(colour);
        const double y = 0.2126 * c.red + 0.7152 * c.green + 0.0722 * c.blue;
        return Packed({y, y, y});
    }
    if (const TMatrix* m = MatrixOf(preview)) return Packed(Apply(*m, Linear(colour)));
    return colour & 0xFFFFFFu;
}

double PreviewContrast(uint32_t foreground, uint32_t background, TVisionPreview preview) {
    return ContrastRatio(SimulateVision(foreground, preview), SimulateVision(background, preview));
}

TOkLab ToOkLab(uint32_t colour) {
    const TLinear c = Linear(colour);
    const double l = std::cbrt(0.4122214708 * c.red + 0.5363325363 * c.green + 0.0514459929 * c.blue);
    const double m = std::cbrt(0.2119034982 * c.red + 0.6806995451 * c.green + 0.1073969566 * c.blue);
    const double s = std::cbrt(0.0883024619 * c.red + 0.2817188376 * c.green + 0.6299787005 * c.blue);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

double OkLabDistance(uint32_t first, uint32_t second) {
    const TOkLab x = ToOkLab(first), y = ToOkLab(second);
    return std::hypot(x.lightness - y.lightness, x.a - y.a, x.b - y.b);
}

uint32_t FixContrastIndex(const TPalette& palette, uint32_t foreground, uint32_t background,
                          TVisionPreview preview) {
    const uint32_t current = palette[foreground % kPaletteSize];
    const uint32_t ground = palette[background % kPaletteSize];
    int nearest = -1, strongest = 0;
    double nearestDistance = 0, strongestRatio = -1;
    for (int i = 0; i < static_cast<int>(kPaletteSize); ++i) {
        const double ratio = PreviewContrast(palette[i], ground, preview);
        if (ratio > strongestRatio) {
            strongestRatio = ratio;
            strongest = i;
        }
        if (ratio < kMinimumReadableContrast) continue;
        const double distance = OkLabDistance(palette[i], current);
        if (nearest < 0 || distance < nearestDistance) {
            nearest = i;
            nearestDistance = distance;
        }
    }
    return static_cast<uint32_t>(nearest >= 0 ? nearest : strongest);
}

std::vector<TContrastFinding> CheckSchemeContrast(const TAttrDialogData& dialogData, const TListOptions& options,
                                                  TVisionPreview preview) {
    // The list as the options show it, without touching the dialog's own.
    TAttrDialogData data = dialogData;
    ListAttributes(data, options, 0, [](std::u16string_view) { return 0; });
    const std::size_t combinations = static_cast<std::size_t>(std::max(data.firstColourItem, 0));
    std::vector<TContrastFinding> findings;
    for (std::size_t item = 0; item < combinations && item < kMaxListItems; ++item) {
        const uint32_t combination = data.itemValue[item];
        const TResolvedAttr shown = ResolveFeature(data, static_cast<int>(combination));
        const uint32_t fg = shown.foreground & 15, bg = shown.background & 15;
        const double ratio = PreviewContrast(data.working.palette[fg], data.working.palette[bg], preview);
        if (ratio >= kMinimumReadableContrast) continue;
        findings.push_back({combination, ratio,
                            FeatureListText(data, combination, true) + u": " + ContrastFigure(ratio) + u" (" +
                                data.colourNames[fg] + Translate(u"contrast_on", u" on ") + data.colourNames[bg] +
                                u")"});
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const TContrastFinding& a, const TContrastFinding& b) { return a.ratio < b.ratio; });
    return findings;
}

}  // namespace qrl
