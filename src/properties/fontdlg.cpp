#include "properties/fontdlg.h"

#include "properties/font.h"

#include <commdlg.h>

#include <algorithm>

namespace qrl {

namespace {

DWORD FontFlags(const std::u16string& name) {
    if (name == u"BaseFont" || name == u"DBCSFont") return 0x24041;  // screen, fixed pitch, scalable
    if (name == u"PrinterFont") return 0x24043;                       // and printer fonts
    return 0x43;                                                       // screen and printer fonts
}

LOGFONTW ToLogFont(const TFontDescription& font) {
    LOGFONTW logFont{};
    logFont.lfHeight = font.height;
    logFont.lfWidth = font.width;
    logFont.lfEscapement = font.escapement;
    logFont.lfOrientation = font.orientation;
    logFont.lfWeight = font.weight;
    logFont.lfItalic = font.italic;
    logFont.lfUnderline = font.underline;
    logFont.lfStrikeOut = font.strikeOut;
    logFont.lfCharSet = font.charSet;
    logFont.lfOutPrecision = font.outPrecision;
    logFont.lfClipPrecision = font.clipPrecision;
    logFont.lfQuality = font.quality;
    logFont.lfPitchAndFamily = font.pitchAndFamily;
    const std::size_t faceLength = std::min(font.faceName.size(), TFontDescription::kFaceNameMax);
    std::copy_n(font.faceName.begin(), faceLength, logFont.lfFaceName);
    return logFont;
}

void FromLogFont(LOGFONTW& logFont, TFontDescription& font) {
    font.height = logFont.lfHeight;
    font.width = logFont.lfWidth;
    font.escapement = logFont.lfEscapement;
    font.orientation = logFont.lfOrientation;
    font.weight = logFont.lfWeight;
    font.italic = logFont.lfItalic;
    font.underline = logFont.lfUnderline;
    font.strikeOut = logFont.lfStrikeOut;
    font.charSet = logFont.lfCharSet;
    font.outPrecision = logFont.lfOutPrecision;
    font.clipPrecision = logFont.lfClipPrecision;
    font.quality = logFont.lfQuality;
    font.pitchAndFamily = logFont.lfPitchAndFamily;
    logFont.lfFaceName[LF_FACESIZE - 1] = 0;
    font.faceName = std::u16string(reinterpret_cast<const char16_t*>(logFont.lfFaceName));
}

}  // namespace

bool ChooseFontValue(HWND parent, const std::u16string& name, std::u16string& value, std::u16string& shown) {
    TFontDescription font;
    ParseFont(value, font);
    LOGFONTW logFont = ToLogFont(font);
    CHOOSEFONTW choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = parent;
    choose.lpLogFont = &logFont;
    choose.Flags = FontFlags(name);
    if (!ChooseFontW(&choose)) return false;
    FromLogFont(logFont, font);
    value = FontToText(font);
    shown = font.faceName;
    return true;
}

}  // namespace qrl
