#include "keyboard/keymapsettings.h"

#include "request/elementdef.h"
#include "request/run.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// A Boolean value read as an element of type bool reads it, so that "yes", "on" and "true" count.
bool booleanValue(const std::u16string& text) {
    TElementDef reader;
    reader.type = ElementType::Bool;
    reader.value = text;
    return reader.GetBool();
}

std::u16string booleanText(bool on) { return on ? u"1" : u"0"; }

}  // namespace

KeymapSettings::KeymapSettings(TConfigSession& session) : Session(&session) {
    // Each value the request sent, in order; a name sent twice ends with the later value.
    for (const TDataValue& data : session.dataValues) {
        const std::u16string& name = data.name;
        const std::u16string& value = data.value;
        if (iequals(name, u"UseOldKeymap"))
            UseOldKeymap = wtoi(value) != 0;
        else if (iequals(name, u"Keyboard"))
            Keyboard = value;
        else if (iequals(name, u"KdfPath"))
            KdfPath = value;
        else if (iequals(name, u"EmName"))
            EmName = value;
        else if (iequals(name, u"numpadshift"))
            numpadshift = booleanValue(value);
        else if (iequals(name, u"numpad"))
            numpad = wtoi(value);
        else if (iequals(name, u"capslock"))
            capslock = wtoi(value);
        else if (iequals(name, u"PCKbLang"))
            PCKbLang = wtoi(value);
        else if (iequals(name, u"EmKbLang"))
            EmKbLang = wtoi(value);
    }
    if (keys().physicalKeys.empty()) PhysKey = -1;
    if (keys().emulationKeys.empty()) EmIndex = -1;
}

void KeymapSettings::writeBack() {
    const auto store = [&](std::u16string_view name, std::u16string text) {
        if (TElementDef* element = Session->FindElement(name)) element->value = std::move(text);
    };
    store(u"numpadshift", booleanText(numpadshift));
    store(u"numpad", decimal(numpad));
    store(u"capslock", decimal(capslock));
    store(u"EmKbLang", decimal(EmKbLang));
    store(u"PCKbLang", decimal(PCKbLang));
    store(u"UseOldKeymap", booleanText(UseOldKeymap));
}

std::u16string PcKeyboardStem(const KeymapSettings& settings) {
    return settings.Keyboard.empty() ? std::u16string{u"at102"} : settings.Keyboard;
}

int RunKeymapEditor(TConfigSession& session, void* parent, TKeymapEditor graphic, TKeymapEditor classic) {
    KeymapSettings settings(session);
    const TKeymapEditor editor = settings.UseOldKeymap ? classic : graphic;
    if (!editor) return kDialogCancel;
    const int result = editor(parent, settings);
    // A cancel leaves everything to be dropped with the session.
    if (result == kDialogOk) settings.writeBack();
    return result;
}

}  // namespace qrl
