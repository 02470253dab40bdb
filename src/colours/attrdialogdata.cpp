#include "colours/attrdialogdata.h"

#include "request/session.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// The value that the request's Data sent for a name (case ignored, first one wins), or empty.
std::u16string sentValue(const TConfigSession& session, std::u16string_view name) {
    const TDataValue* sent = session.FindDataValue(name);
    return sent ? sent->value.str() : std::u16string{};
}

uint32_t sentNumber(const TConfigSession& session, std::u16string_view name) {
    return static_cast<uint32_t>(wtoi(sentValue(session, name)));
}

void storeValue(TConfigSession& session, std::u16string_view name, std::u16string value) {
    if (TElementDef* element = session.FindElement(name)) element->value = std::move(value);
}

}  // namespace

void LoadAttrDialogData(TAttrDialogData& data, TConfigSession& session) {
    data.session = &session;
    data.customName = u"(custom)";
    data.working = TColourScheme();
    LoadAttrDialogNames(data, session, ColourTexts());

    data.currentName = sentValue(session, u"CurrScheme");
    data.displayMode = sentNumber(session, u"DisplayMode");
    data.featuresUsed = sentNumber(session, u"FeaturesUsed");
    // Kept apart as the emulation gives it, though no rule reads it.
    data.normalForeground = 15;
    data.normalBackground = 0;
    if (!sentValue(session, u"NormalColour").empty()) {
        const uint32_t normal = sentNumber(session, u"NormalColour");
        data.normalForeground = static_cast<uint8_t>(normal & 0xFF);
        data.normalBackground = static_cast<uint8_t>((normal >> 8) & 0xFF);
    }
    data.enableBlink = sentNumber(session, u"EnableBlink") != 0;
    data.enableBlinkCfg = sentNumber(session, u"EnableBlinkCfg") != 0;
    data.enableInvis = sentNumber(session, u"EnableInvis") != 0;
    data.enableInvisCfg = sentNumber(session, u"EnableInvisCfg") != 0;
    data.mergeBoxes = sentNumber(session, u"MergeBoxes") != 0;
    data.boxStyle = sentNumber(session, u"BoxStyle");
    // UseBgGraphic, GraphicFile and GraphicMode travel as elements too, but each scheme's own count.
}

void StoreAttrDialogData(const TAttrDialogData& data, TConfigSession& session) {
    const auto flag = [](bool on) { return std::u16string(on ? u"1" : u"0"); };
    storeValue(session, u"CurrScheme", data.currentName);
    storeValue(session, u"DisplayMode", decimal(data.displayMode));
    storeValue(session, u"EnableBlink", flag(data.enableBlink));
    storeValue(session, u"EnableBlinkCfg", flag(data.enableBlinkCfg));
    storeValue(session, u"EnableInvis", flag(data.enableInvis));
    storeValue(session, u"EnableInvisCfg", flag(data.enableInvisCfg));
    storeValue(session, u"MergeBoxes", flag(data.mergeBoxes));
    storeValue(session, u"BoxStyle", decimal(data.boxStyle));
}

}  // namespace qrl
