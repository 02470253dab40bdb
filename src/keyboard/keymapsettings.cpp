#include "keyboard/keymapsettings.h"

#include "request/elementdef.h"
#include "request/run.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// A Boolean value read as an element of type bool reads it, so that "yes", "on" and "true" count.
bool booleanValue(std::u16string_view text) {
    TElementDef reader;
    reader.type = ElementType::Bool;
    reader.value = text;
    return reader.GetBool();
}

std::u16string booleanText(bool on) { return on ? u"1" : u"0"; }

}  // namespace

KeymapSettings::KeymapSettings(TConfigSession& session) : Session(&session) {
    // A name sent twice counts with its first value, as everywhere else.
    const auto sent = [&](std::u16string_view name) { return session.FindDataValue(name); };
    if (const TDataValue* v = sent(u"UseOldKeymap")) UseOldKeymap = wtoi(v->value) != 0;
    if (const TDataValue* v = sent(u"Keyboard")) Keyboard = v->value;
    if (const TDataValue* v = sent(u"KdfPath")) KdfPath = v->value;
    if (const TDataValue* v = sent(u"EmName")) EmName = v->value;
    if (const TDataValue* v = sent(u"numpadshift")) numpadshift = booleanValue(v->value);
    if (const TDataValue* v = sent(u"numpad")) numpad = wtoi(v->value);
    if (const TDataValue* v = sent(u"capslock")) capslock = wtoi(v->value);
    if (const TDataValue* v = sent(u"PCKbLang")) PCKbLang = wtoi(v->value);
    if (const TDataValue* v = sent(u"EmKbLang")) EmKbLang = wtoi(v->value);
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
