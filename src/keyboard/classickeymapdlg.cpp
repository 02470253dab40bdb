#include "keyboard/classickeymapdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/listrows.h"
#include "keyboard/keyboard_rc.h"
#include "keyboard/keymaprules.h"
#include "keyboard/keymapsettings.h"
#include "keyboard/presskey.h"
#include "macro/macroassistdlg.h"
#include "request/session.h"

#include <algorithm>
#include <array>

namespace qrl {

namespace {

constexpr TDialogText kByPhysTexts[] = {
    {kDialogTitleId, {u"IDD_KEYMAP_BYPHYS", u"Keyboard Configuration"}},
    {IDC_PHYS_KEY_LABEL, {u"IDC_STATIC_0", u"Physical key:"}},
    {IDC_SHIFT, {u"IDC_SHIFT", u"Shift"}},
    {IDC_ALT, {u"IDC_ALT", u"Alt"}},
    {IDC_CTRL, {u"IDC_CTRL", u"Ctrl"}},
    {IDC_MAPPED_GROUP, {u"IDC_STATIC_1", u"Mapped to"}},
    {IDC_MAP_EMKEY, {u"IDC_MAP_EMKEY", u"Emulation key"}},
    {IDC_MAP_STRING, {u"IDC_MAP_STRING", u"String"}},
    {IDC_MAP_GLOBAL, {u"IDC_MAP_GLOBAL", u"Global string"}},
    {IDC_MAP_NONE, {u"IDC_MAP_NONE", u"Not mapped"}},
    {IDC_PRESS_KEY, {u"IDC_PRESS_KEY", u"Press key..."}},
    {IDC_ADVANCED, {u"IDC_ADVANCED", u"Advanced..."}},
    {IDC_LIST_BYEMUL, {u"IDC_LIST_BYEMUL", u"List by emulation key"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
};

// The select dialog's title, which the "by emulation key" dialog borrows, default and all.
constexpr TTextKey kSelectTitle{u"IDD_KBD_SELPKEY", u"Select a Physical Key"};

// The "by emulation key" dialog's labels go where they have always gone: the title takes the
// select dialog's key (and so its text), and five texts land one after another on the OK button,
// which so ends up reading the last of them, "Ctrl".
constexpr TDialogText kByEmulTexts[] = {
    {kDialogTitleId, kSelectTitle},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
    {IDOK, {u"IDD_KEYMAP_BYPHYS", u"Keyboard Configuration"}},
    {IDOK, {u"IDC_STATIC_0", u"Physical key:"}},
    {IDOK, {u"IDC_SHIFT", u"Shift"}},
    {IDOK, {u"IDC_ALT", u"Alt"}},
    {IDOK, {u"IDC_CTRL", u"Ctrl"}},
};

constexpr TDialogText kAdvancedTexts[] = {
    {kDialogTitleId, {u"IDD_KBD_ADVANCED", u"Advanced Keyboard Configuration"}},
    {IDC_NP_NUMERIC, {u"IDC_NP_NUMERIC", u"Numeric"}},
    {IDC_NP_CURSOR, {u"IDC_NP_CURSOR", u"Cursor"}},
    {IDC_NP_NUMLOCK, {u"IDC_NP_NUMLOCK", u"Num Lock"}},
    {IDC_NP_SHIFT, {u"IDC_NP_SHIFT", u"Shift Toggles"}},
    {IDC_CL_NOCHANGE, {u"IDC_CL_NOCHANGE", u"No change"}},
    {IDC_CL_ON, {u"IDC_CL_ON", u"On"}},
    {IDC_CL_OFF, {u"IDC_CL_OFF", u"Off"}},
    {IDC_CAPS_GROUP, {u"IDC_STATIC_4", u"Caps Lock"}},
    {IDC_NUMPAD_GROUP, {u"IDC_STATIC_5", u"Numeric Keypad"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
};

constexpr TDialogText kSelectTexts[] = {
    {kDialogTitleId, kSelectTitle},
    {IDC_PHYS_KEY_LABEL, {u"IDC_STATIC_0", u"Physical key:"}},
    {IDC_SHIFT, {u"IDC_SHIFT", u"Shift"}},
    {IDC_ALT, {u"IDC_ALT", u"Alt"}},
    {IDC_CTRL, {u"IDC_CTRL", u"Ctrl"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
};

int Selection(HWND dialog, int id, UINT message = CB_GETCURSEL) {
    return static_cast<int>(SendDlgItemMessageW(dialog, id, message, 0, 0));
}
void Select(HWND dialog, int id, int row, UINT message = CB_SETCURSEL) {
    SendDlgItemMessageW(dialog, id, message, static_cast<WPARAM>(row), 0);
}
// The control is looked up once: each lookup by id walks the dialog's children.
void FillNames(HWND dialog, int id, const std::vector<KeyName>& keys, UINT message = CB_ADDSTRING) {
    HWND control = GetDlgItem(dialog, id);
    TRedrawOff quiet(control);
    for (const KeyName& key : keys) SendMessageW(control, message, 0, reinterpret_cast<LPARAM>(W(key.Name)));
}

// The modifier boxes: 1001 Shift 0x100, 1002 Alt 0x400, 1003 Ctrl 0x200.
constexpr std::array<std::pair<int, uint32_t>, 3> kModifierBoxes{{{IDC_SHIFT, 0x100}, {IDC_ALT, 0x400}, {IDC_CTRL, 0x200}}};

uint32_t CheckedModifiers(HWND dialog) {
    uint32_t mods = 0;
    for (const auto& [id, bit] : kModifierBoxes)
        if (IsChecked(dialog, id)) mods |= bit;
    return mods;
}

// A box is enabled as far as the key's Shift mask allows it, and a disabled box is unchecked.
void EnableModifiers(HWND dialog, const KeyName* key) {
    for (const auto& [id, bit] : kModifierBoxes) EnableCheck(dialog, id, key && (key->Shift & static_cast<int32_t>(bit)) != 0);
}

// The code of the selected physical key with the checked modifiers it allows; -1 with none.
int32_t PhysicalCode(HWND dialog, const std::vector<KeyName>& keys, int row) {
    if (row < 0 || row >= static_cast<int>(keys.size())) return -1;
    return static_cast<int32_t>(ClassicMappedCode(keys[static_cast<std::size_t>(row)], CheckedModifiers(dialog)));
}

class AdvancedDlg : public TDialog {
public:
    explicit AdvancedDlg(KeymapSettings& settings) : settings_(settings) {}

protected:
    std::span<const TDialogText> Texts() const override { return kAdvancedTexts; }
    INT_PTR OnInit() override {
        CheckRadioButton(Window(), IDC_NP_NUMERIC, IDC_NP_NUMLOCK, IDC_NP_NUMERIC + std::clamp(settings_.numpad, 0, 2));
        SetChecked(Window(), IDC_NP_SHIFT, settings_.numpadshift);
        CheckRadioButton(Window(), IDC_CL_NOCHANGE, IDC_CL_OFF, IDC_CL_NOCHANGE + std::clamp(settings_.capslock, 0, 2));
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK:
            settings_.numpad = IsChecked(Window(), IDC_NP_CURSOR) ? kNumpadCursor
                               : IsChecked(Window(), IDC_NP_NUMLOCK) ? kNumpadNumLock
                                                                   : kNumpadNumeric;
            settings_.numpadshift = IsChecked(Window(), IDC_NP_SHIFT);
            settings_.capslock = IsChecked(Window(), IDC_CL_ON) ? kCapsOn : IsChecked(Window(), IDC_CL_OFF) ? kCapsOff : kCapsNoChange;
            End(IDOK);
            return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_KEYMAP_HELP: settings_.session().ShowHelp(u"keymap.advanced"); return TRUE;
        default: return FALSE;
        }
    }

private:
    KeymapSettings& settings_;
};

}  // namespace

void RunKeymapAdvanced(void* parent, KeymapSettings& settings) {
    AdvancedDlg dialog(settings);
    dialog.RunModal(static_cast<HWND>(parent), IDD_KBD_ADVANCED);
}

namespace {

class ByPhysicalDlg : public TDialog {
public:
    explicit ByPhysicalDlg(KeymapSettings& settings) : settings_(settings), keys_(settings.keys()) {}

protected:
    std::span<const TDialogText> Texts() const override { return kByPhysTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    int CheckedRadio() const {
        for (int id : {IDC_MAP_EMKEY, IDC_MAP_STRING, IDC_MAP_GLOBAL, IDC_MAP_NONE})
            if (IsChecked(Window(), id)) return id;
        return 0;
    }
    void LoadKey();
    void ShowFields();
    void Store();
    void Changed() {
        if (busy_) return;
        ShowFields();
        settings_.Dirty = true;
    }
    void RunAssistant();
    void OnPressedKey(WPARAM virtualKey, LPARAM flags);

    KeymapSettings& settings_;
    TKeyData& keys_;
    bool busy_ = false;
};

INT_PTR ByPhysicalDlg::OnInit() {
    TBusyScope busy(busy_);
    FillNames(Window(), IDC_PHYS_KEY, keys_.physicalKeys);
    FillNames(Window(), IDC_EM_KEY, keys_.emulationKeys);
    for (int id : {IDC_STRING, IDC_GLOBAL_STRING}) SendDlgItemMessageW(Window(), id, EM_LIMITTEXT, 0, 0);
    Select(Window(), IDC_PHYS_KEY, keys_.physicalKeys.empty() ? -1 : settings_.PhysKey);
    LoadKey();
    return TRUE;
}

void ByPhysicalDlg::LoadKey() {
    TBusyScope busy(busy_);
    const int row = Selection(Window(), IDC_PHYS_KEY);
    const KeyName* key = row >= 0 && row < static_cast<int>(keys_.physicalKeys.size())
                             ? &keys_.physicalKeys[static_cast<std::size_t>(row)]
                             : nullptr;
    EnableModifiers(Window(), key);
    settings_.PhysKey = PhysicalCode(Window(), keys_.physicalKeys, row);
    const bool hasCode = settings_.PhysKey >= 0;
    for (int id : {IDC_MAP_EMKEY, IDC_MAP_STRING, IDC_MAP_GLOBAL, IDC_MAP_NONE, IDC_EM_KEY, IDC_STRING, IDC_GLOBAL_STRING})
        EnableControl(Window(), id, hasCode);
    SetControlText(Window(), IDC_GLOBAL_STRING, u"");
    SetControlText(Window(), IDC_STRING, u"");
    Select(Window(), IDC_EM_KEY, -1);
    int radio = IDC_MAP_NONE;
    if (hasCode) {
        const auto code = static_cast<uint32_t>(settings_.PhysKey);
        // Global strings come first, then strings, then the key map: the first found is shown.
        if (const KeyString* global = FindKeyString(keys_.globalKeyStrings, code)) {
            radio = IDC_MAP_GLOBAL;
            SetControlText(Window(), IDC_GLOBAL_STRING, global->Text);
        }
        if (const KeyString* text = FindKeyString(keys_.keyStrings, code)) {
            if (radio == IDC_MAP_NONE) radio = IDC_MAP_STRING;
            SetControlText(Window(), IDC_STRING, text->Text);
        }
        if (const KeyMapEntry* entry = FindKeyMapEntry(keys_.keyMap, code)) {
            if (radio == IDC_MAP_NONE) radio = IDC_MAP_EMKEY;
            for (std::size_t i = 0; i < keys_.emulationKeys.size(); ++i)
                if (static_cast<uint32_t>(keys_.emulationKeys[i].Id) == entry->EmKey) {
                    Select(Window(), IDC_EM_KEY, static_cast<int>(i));
                    break;
                }
        }
    }
    CheckRadioButton(Window(), IDC_MAP_EMKEY, IDC_MAP_NONE, radio);
    ShowFields();
    settings_.Dirty = false;
}

void ByPhysicalDlg::ShowFields() {
    const int radio = CheckedRadio();
    const bool text = radio == IDC_MAP_STRING || radio == IDC_MAP_GLOBAL;
    ShowControl(Window(), IDC_EM_KEY, !text);
    ShowControl(Window(), IDC_STRING, radio == IDC_MAP_STRING);
    ShowControl(Window(), IDC_GLOBAL_STRING, radio == IDC_MAP_GLOBAL);
    EnableControl(Window(), IDC_EM_KEY, settings_.PhysKey >= 0 && radio != IDC_MAP_NONE);
    ShowControl(Window(), IDC_KEY_ASSIST, text && settings_.session().macroAssist);
    SetControlText(Window(), IDC_FIELD_CAPTION,
                   text ? Translate(u"keymapold_text", u"Text:") : Translate(u"keymapold_emkey", u"Emul. key:"));
}

// The key as it was loaded takes what the fields say; an empty text is stored as it is.
void ByPhysicalDlg::Store() {
    if (!settings_.Dirty) return;
    settings_.Dirty = false;
    if (settings_.PhysKey < 0) return;
    const auto code = static_cast<uint32_t>(settings_.PhysKey);
    switch (CheckedRadio()) {
    case IDC_MAP_GLOBAL: MapToGlobalString(keys_, code, GetControlText(Window(), IDC_GLOBAL_STRING)); return;
    case IDC_MAP_STRING: MapToString(keys_, code, GetControlText(Window(), IDC_STRING)); return;
    case IDC_MAP_EMKEY: {
        const int row = Selection(Window(), IDC_EM_KEY);
        const uint32_t emKey = row >= 0 && row < static_cast<int>(keys_.emulationKeys.size())
                                   ? static_cast<uint32_t>(keys_.emulationKeys[static_cast<std::size_t>(row)].Id)
                                   : 0xFFFFFFFFu;
        MapToEmulationKeyInPlace(keys_, code, emKey);
        return;
    }
    default: UnmapKey(keys_, code); return;
    }
}

void ByPhysicalDlg::RunAssistant() {
    const int field = CheckedRadio() == IDC_MAP_GLOBAL ? IDC_GLOBAL_STRING : IDC_STRING;
    std::u16string text = GetControlText(Window(), field);
    const TConfigSession& session = settings_.session();
    if (runMacroAssistant(Window(), text, NamesOf(keys_.emulationKeys), session.link.window, kMacroTextMode) != IDOK) return;
    SetControlText(Window(), field, text);
    settings_.Dirty = true;
}

void ByPhysicalDlg::OnPressedKey(WPARAM virtualKey, LPARAM flags) {
    const uint32_t code = PhysicalCodeOfKeyPress(static_cast<uint32_t>(virtualKey), static_cast<uint64_t>(flags));
    if (code == 0) return;
    for (std::size_t i = 0; i < keys_.physicalKeys.size(); ++i) {
        if (static_cast<uint32_t>(keys_.physicalKeys[i].Id) != code) continue;
        Store();
        Select(Window(), IDC_PHYS_KEY, static_cast<int>(i));
        LoadKey();
        return;
    }
}

INT_PTR ByPhysicalDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kKeyPressedMessage) return FALSE;
    OnPressedKey(wParam, lParam);
    return TRUE;
}

INT_PTR ByPhysicalDlg::OnCommand(int id, int code) {
    if (busy_) return TRUE;
    switch (id) {
    case IDC_PHYS_KEY:
        if (code == CBN_SELCHANGE) {
            Store();
            LoadKey();
        }
        return TRUE;
    case IDC_EM_KEY:
        if (code == CBN_SELCHANGE) Changed();
        return TRUE;
    case IDC_STRING:
    case IDC_GLOBAL_STRING:
        if (code == EN_CHANGE) Changed();
        return TRUE;
    default: break;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_SHIFT:
    case IDC_ALT:
    case IDC_CTRL:
        Store();
        LoadKey();
        return TRUE;
    case IDC_MAP_EMKEY:
    case IDC_MAP_STRING:
    case IDC_MAP_GLOBAL:
    case IDC_MAP_NONE: Changed(); return TRUE;
    case IDC_ADVANCED: RunKeymapAdvanced(Window(), settings_); return TRUE;
    case IDC_LIST_BYEMUL:
        Store();
        settings_.PhysKey = Selection(Window(), IDC_PHYS_KEY);
        End(IDC_LIST_BYEMUL);
        return TRUE;
    case IDC_PRESS_KEY: ShowPressKeyWindow(Window()); return TRUE;
    case IDC_KEY_ASSIST: RunAssistant(); return TRUE;
    case IDOK:
        Store();
        End(IDOK);
        return TRUE;
    case IDCANCEL: End(IDCANCEL); return TRUE;
    case IDC_KEYMAP_HELP: settings_.session().ShowHelp(u"keymap.byphysical"); return TRUE;
    default: return FALSE;
    }
}

// Select a Physical Key: a key and modifiers; on OK, after the replacement check, it sends EmId.
class SelectKeyDlg : public TDialog {
public:
    explicit SelectKeyDlg(KeymapSettings& settings) : settings_(settings), keys_(settings.keys()) {}

protected:
    std::span<const TDialogText> Texts() const override { return kSelectTexts; }
    INT_PTR OnInit() override {
        const std::u16string none = Translate(u"keymapold_select", u"(Select a key)");
        SendDlgItemMessageW(Window(), IDC_PHYS_KEY, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(none)));
        FillNames(Window(), IDC_PHYS_KEY, keys_.physicalKeys);
        Select(Window(), IDC_PHYS_KEY, -1);
        Refresh();
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (id == IDC_PHYS_KEY) {
            if (code == CBN_SELCHANGE) Refresh();
            return TRUE;
        }
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK: Accept(); return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_KEYMAP_HELP: settings_.session().ShowHelp(u"keymap.select_key"); return TRUE;
        default: return FALSE;
        }
    }

private:
    // Row 0 and no selection give no key; the rows behind it stand for physicalKeys in order.
    const KeyName* Key() const {
        const int row = Selection(Window(), IDC_PHYS_KEY) - 1;
        return row >= 0 && row < static_cast<int>(keys_.physicalKeys.size()) ? &keys_.physicalKeys[static_cast<std::size_t>(row)]
                                                                              : nullptr;
    }
    void Refresh() {
        EnableModifiers(Window(), Key());
        EnableControl(Window(), IDOK, Key() != nullptr);
    }
    void Accept() {
        const KeyName* key = Key();
        if (key) {
            const uint32_t code = ClassicMappedCode(*key, CheckedModifiers(Window()));
            if (ReplacementAccepted(code)) keys_.keyMap.push_back({code, settings_.EmId});
        }
        End(IDOK);
    }
    bool ReplacementAccepted(uint32_t code) {
        const std::u16string question = ReplacementQuestion(keys_, code);
        if (question.empty()) return true;
        const std::u16string title = Translate(u"keymapold_replace", u"Confirm replacement");
        if (MessageBoxW(Window(), W(question), W(title), MB_OKCANCEL | MB_ICONEXCLAMATION) != IDOK) return false;
        UnmapKey(keys_, code);
        return true;
    }

    KeymapSettings& settings_;
    TKeyData& keys_;
};

class ByEmulationDlg : public TDialog {
public:
    explicit ByEmulationDlg(KeymapSettings& settings) : settings_(settings), keys_(settings.keys()) {}

protected:
    std::span<const TDialogText> Texts() const override { return kByEmulTexts; }
    INT_PTR OnInit() override {
        FillNames(Window(), IDC_EM_KEY, keys_.emulationKeys);
        Select(Window(), IDC_EM_KEY, keys_.emulationKeys.empty() ? -1 : settings_.EmIndex);
        ListKeys();
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (id == IDC_EM_KEY) {
            if (code == CBN_SELCHANGE) ListKeys();
            return TRUE;
        }
        if (id == IDC_PKEY_LIST) {
            if (code == LBN_SELCHANGE)
                EnableControl(Window(), IDC_REMOVE_PKEY, Selection(Window(), IDC_PKEY_LIST, LB_GETCURSEL) >= 0);
            return TRUE;
        }
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDC_ADD_PKEY: {
            SelectKeyDlg select(settings_);
            if (select.RunModal(Window(), IDD_KBD_SELPKEY) == IDOK) ListKeys();
            return TRUE;
        }
        case IDC_REMOVE_PKEY: Remove(); return TRUE;
        case IDC_ADVANCED: RunKeymapAdvanced(Window(), settings_); return TRUE;
        case IDC_LIST_BYPHYS:
        case IDOK:
        case IDCANCEL: End(id); return TRUE;
        case IDC_KEYMAP_HELP: settings_.session().ShowHelp(u"keymap.byemul"); return TRUE;
        default: return FALSE;
        }
    }

private:
    void ListKeys() {
        const int row = Selection(Window(), IDC_EM_KEY);
        settings_.EmIndex = row;
        settings_.EmId = row >= 0 && row < static_cast<int>(keys_.emulationKeys.size())
                             ? static_cast<uint32_t>(keys_.emulationKeys[static_cast<std::size_t>(row)].Id)
                             : 0xFFFFFFFFu;
        settings_.ListedPKeys.clear();
        std::vector<std::u16string> names;
        for (const KeyMapEntry& entry : keys_.keyMap) {
            if (entry.EmKey != settings_.EmId) continue;
            names.push_back(ClassicKeyName(keys_.physicalKeys, entry.PKey));
            settings_.ListedPKeys.push_back(entry.PKey);
        }
        FillListRows(GetDlgItem(Window(), IDC_PKEY_LIST), names);
        EnableControl(Window(), IDC_ADD_PKEY, settings_.EmId != 0xFFFFFFFFu);
        EnableControl(Window(), IDC_REMOVE_PKEY, false);
    }
    void Remove() {
        const int row = Selection(Window(), IDC_PKEY_LIST, LB_GETCURSEL);
        if (row < 0 || row >= static_cast<int>(settings_.ListedPKeys.size())) return;
        const uint32_t code = settings_.ListedPKeys[static_cast<std::size_t>(row)];
        const std::u16string question = Translate(u"keymapold_delete", u"Delete the assignment to physical key '") +
                                        ClassicKeyName(keys_.physicalKeys, code) + u"'?";
        const std::u16string title = Translate(u"keymapold_delete_title", u"Delete mapping");
        if (MessageBoxW(Window(), W(question), W(title), MB_YESNO | MB_ICONQUESTION) != IDYES) return;
        RemoveKeyMapEntry(keys_.keyMap, code);
        ListKeys();
    }

    KeymapSettings& settings_;
    TKeyData& keys_;
};

}  // namespace

int RunClassicKeymap(void* parent, KeymapSettings& settings) {
    int shown = IDD_KEYMAP_BYPHYS;
    for (;;) {
        INT_PTR result = 0;
        if (shown == IDD_KEYMAP_BYPHYS) {
            ByPhysicalDlg dialog(settings);
            result = dialog.RunModal(static_cast<HWND>(parent), IDD_KEYMAP_BYPHYS);
        } else {
            ByEmulationDlg dialog(settings);
            result = dialog.RunModal(static_cast<HWND>(parent), IDD_KEYMAP_BYEMUL);
        }
        if (result == IDOK || result == IDCANCEL) return static_cast<int>(result);
        if (result == IDC_LIST_BYEMUL) shown = IDD_KEYMAP_BYEMUL;
        else if (result == IDC_LIST_BYPHYS) shown = IDD_KEYMAP_BYPHYS;
        else if (result <= 0) return IDCANCEL;  // the template could not be shown: nothing more to do
    }
}

}  // namespace qrl
