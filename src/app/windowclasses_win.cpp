#include "app/module_win.h"

#include "colours/palettectl.h"
#include "kit/pleasewait.h"
#include "kit/samplectl.h"
#include "keyboard/keyboardctl.h"
#include "keyboard/presskey.h"

namespace qrl {

namespace {

struct TWindowClassEntry {
    const wchar_t* name;
    bool (*registerClass)(HINSTANCE);
    void (*unregisterClass)(HINSTANCE);
};

// The order is fixed: qrsample, qrpalette, qrcolpatch, PressKeyWin, PleaseWaitWin, qrkeyb4.
const TWindowClassEntry kWindowClasses[] = {
    {L"qrsample", &RegisterSampleClass, &UnregisterSampleClass},  // colour sample control (kit)
    {L"qrpalette", &RegisterPaletteClass, &UnregisterPaletteClass},  // palette control (colours)
    {L"qrcolpatch", &RegisterColourPatchClass, &UnregisterColourPatchClass},  // colour patch (colours)
    {L"PressKeyWin", &RegisterPressKeyClass, &UnregisterPressKeyClass},  // key capture window (keyboard)
    {L"PleaseWaitWin", &RegisterPleaseWaitClass, &UnregisterPleaseWaitClass},  // please-wait window (kit)
    {L"qrkeyb4", &RegisterKeyboardClass, &UnregisterKeyboardClass},  // keyboard picture (keyboard)
};

}  // namespace

void RegisterModuleClasses(HINSTANCE instance) {
    for (const TWindowClassEntry& entry : kWindowClasses) entry.registerClass(instance);
}

void UnregisterModuleClasses(HINSTANCE instance) {
    for (const TWindowClassEntry& entry : kWindowClasses) entry.unregisterClass(instance);
}

}  // namespace qrl
