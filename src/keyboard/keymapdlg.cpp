#include "keyboard/keymapdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "keyboard/classickeymapdlg.h"
#include "keyboard/graphickeymap.h"
#include "keyboard/keyboard_rc.h"
#include "keyboard/keyboardctl.h"
#include "keyboard/keymapcheckdlg.h"
#include "keyboard/keymapfiledlg.h"
#include "keyboard/keymapsettings.h"
#include "keyboard/presskey.h"
#include "macro/macroassistdlg.h"
#include "request/session.h"
#include "text/textutil.h"

#include <memory>
#include <vector>

namespace qrl {

namespace {

constexpr TDialogText kKeymapTexts[] = {
    {kDialogTitleId, {u"IDD_GKEYMAP", u"Configure Keyboard"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
    {ID_PCLIST, {u"ID_PCLIST", u"Show list"}},
    {ID_EMLIST, {u"ID_EMLIST", u"Show list"}},
    {ID_KEYSTRINGPROMPT, {u"ID_KEYSTRINGPROMPT", u"String:"}},
    {ID_GLOBALKEYSTRINGPROMPT, {u"ID_GLOBALKEYSTRINGPROMPT", u"Global string:"}},
    {ID_EMKEY, {u"ID_EMKEY", u"&Emulation key"}},
    {ID_EMSTRING, {u"ID_EMSTRING", u"&String"}},
    {ID_EMGLOBALSTRING, {u"ID_EMGLOBALSTRING", u"&Global string"}},
    {ID_PHYS_SHIFT, {u"ID_PHYS_SHIFT", u"Shift"}},
    {ID_PHYS_CTRL, {u"ID_PHYS_CTRL", u"Ctrl"}},
    {ID_PHYS_ALT, {u"ID_PHYS_ALT", u"Alt"}},
    {ID_MAPSET, {u"ID_MAPSET", u"&Map"}},
    {ID_MAPREMOVE, {u"ID_MAPREMOVE", u"&Remove"}},
    {ID_KEYBOARDS, {u"ID_KEYBOARDS", u"&Keyboards"}},
    {ID_ADVANCED, {u"ID_ADVANCED", u"&Advanced"}},
    {IDC_STATIC_62, {u"IDC_STATIC_62", u"Emulation keyboard"}},
    {IDC_STATIC_63, {u"IDC_STATIC_63", u"PC keyboard"}},
    {IDC_FIND_KEY, {u"IDC_FIND_KEY", u"Find &Key..."}},
    {IDC_KEYMAP_CHECK, {u"IDC_KEYMAP_CHECK", u"Chec&k..."}},
    {IDC_CHEAT_SHEET, {u"IDC_CHEAT_SHEET", u"Cheat S&heet..."}},
    {IDC_KEYMAP_EXPORT, {u"IDC_KEYMAP_EXPORT", u"E&xport..."}},
    {IDC_KEYMAP_IMPORT, {u"IDC_KEYMAP_IMPORT", u"&Import..."}},
};

constexpr TDialogText kKeyboardsTexts[] = {
    {kDialogTitleId, {u"IDD_KBD_KEYBOARDS", u"Keyboard Selection"}},
    {IDC_STATIC_64, {u"IDC_STATIC_64", u"PC keyboard:"}},
    {IDC_STATIC_65, {u"IDC_STATIC_65", u"Emulation keyboard:"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_KEYMAP_HELP, kHelpText},
};

constexpr TTextKey kLoseGlobal{u"gkemapdlg_cpp_679", u"This will remove the Global string for this key\nOk to continue?"};
constexpr TTextKey kNotOnKeyboard{u"keymapdlg_cpp_1", u"That key is not on the PC keyboard"};
constexpr TTextKey kBlankString{u"gkemapdlg_cpp_609", u"The string must not be blank."};

constexpr int kRightPaneControls[] = {IDC_EM_PICTURE, IDC_GK_EMLIST, IDC_GK_STRING, ID_KEYSTRINGPROMPT,
                                      IDC_GK_GLOBAL, ID_GLOBALKEYSTRINGPROMPT, IDC_KEY_ASSIST};
constexpr int kLeftPaneControls[] = {IDC_PC_PICTURE, IDC_GK_PCLIST, ID_PHYS_SHIFT, ID_PHYS_CTRL, ID_PHYS_ALT};

// Which side a selection started from.
enum : int32_t { kNothingSelected = 0, kFromEmulation = 1, kFromPc = 2 };

class KeymapDlg : public TDialog {
public:
    explicit KeymapDlg(KeymapSettings& settings)
        : settings_(settings), keys_(settings.keys()), emName_(settings.EmName) {}

    void SelectEmLayout(int32_t index);
    void SelectPcLayout(int32_t index);
    GKbKeyboard& EmKeyboard() { return emKeyboard_; }
    GKbKeyboard& PcKeyboard() { return pcKeyboard_; }
    KeymapSettings& Settings() { return settings_; }

protected:
    std::span<const TDialogText> Texts() const override { return kKeymapTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool Checked(int id) const { return IsChecked(Window(), id); }
    TMapTarget Target() const {
        return Checked(ID_EMGLOBALSTRING) ? TMapTarget::GlobalString
               : Checked(ID_EMSTRING)     ? TMapTarget::String
                                          : TMapTarget::EmulationKey;
    }
    int ListOrPicture() const { return Checked(ID_EMLIST) ? 1 : 0; }
    int32_t PcState() const { return pcLayout_ ? pcLayout_->State : 0; }
    int32_t EmState() const { return emLayout_ ? emLayout_->State : 0; }

    void ShowRightPane(int mode, bool setRadio);
    void ShowLeftPane(int mode);
    void MarkMapped();
    void SetShiftBoxes(uint32_t code);
    void ClearSelection();

    void PressPc(GKbKey& key, bool left);
    void PressPcQuietly(GKbKey& key);
    void PressEm(GKbKey& key, bool left);
    void PressEmQuietly(GKbKey& key);
    void ChoosePcListEntry();
    void ChooseEmListEntry();
    void ShiftBoxesChanged();

    void ShowPcMapping(uint32_t code);
    void ShowEmMapping(uint32_t code);
    void ShowMappingAgain();
    bool AgreeToLoseGlobal();
    void Map();
    void Remove();
    void RunAssistant();
    void RefreshStatus();

    void FindPressedKey(WPARAM virtualKey, LPARAM flags);
    void CheckMap();
    void GoToPcCode(uint32_t code);
    void GoToEmCode(uint32_t code);

    KeymapSettings& settings_;
    TKeyData& keys_;
    std::u16string emName_;
    GKbLayout* emLayout_ = nullptr;
    GKbLayout* pcLayout_ = nullptr;
    KeyboardCtl* emPicture_ = nullptr;
    KeyboardCtl* pcPicture_ = nullptr;
    KeyList pcList_{nullptr};
    KeyList emList_{nullptr};
    int32_t selection_ = kNothingSelected;
    GKbKey* pcKey_ = nullptr;
    GKbKey* emKey_ = nullptr;
    uint32_t emCode_ = 0;
    uint32_t pcCode_ = 0;
    KeyMappingKind kind_ = KeyMappingKind::None;
    uint32_t listShift_ = 0;
    std::vector<uint32_t> mappedCodes_;
    uint32_t shownPcCode_ = 0;
    uint32_t shownEmCode_ = 0;
    std::u16string shownString_;
    std::u16string shownGlobal_;
    bool hasGlobal_ = false;
    bool hasString_ = false;
    int32_t rightPaneMode_ = -1;
    int32_t leftPaneMode_ = -1;
    bool refreshing_ = false;  // set while the dialog writes its own edits
    bool awaitingKey_ = false;  // the press-key window is open for Find Key
    GKbKeyboard emKeyboard_;
    GKbKeyboard pcKeyboard_;
};

INT_PTR KeymapDlg::OnInit() {
    emPicture_ = KeyboardOf(GetDlgItem(Window(), IDC_EM_PICTURE));
    pcPicture_ = KeyboardOf(GetDlgItem(Window(), IDC_PC_PICTURE));
    pcList_ = KeyList(GetDlgItem(Window(), IDC_GK_PCLIST));
    emList_ = KeyList(GetDlgItem(Window(), IDC_GK_EMLIST));
    leftPaneMode_ = -1;
    ShowLeftPane(0);
    rightPaneMode_ = -1;
    ShowRightPane(0, false);
    CheckRadioButton(Window(), ID_EMKEY, ID_EMGLOBALSTRING, ID_EMKEY);

    const std::u16string emPath = joinPath(settings_.KdfPath, emName_) + u".kdf";
    const std::u16string pcPath = joinPath(settings_.KdfPath, PcKeyboardStem(settings_)) + u".kdf";
    const int emRead = LoadKeyboard(emPath, utf16ToLatin1(emName_), emKeyboard_);
    if (emRead == kKdfOk) {
        SelectEmLayout(settings_.EmKbLang);
    } else if (emRead != kKdfNotOpened) {
        SetChecked(Window(), ID_EMLIST, true);
        ShowRightPane(1, false);
    }
    const int pcRead = LoadKeyboard(pcPath, "pc", pcKeyboard_);
    if (pcRead == kKdfOk) {
        SelectPcLayout(settings_.PCKbLang);
    } else if (pcRead != kKdfNotOpened) {
        SetChecked(Window(), ID_PCLIST, true);
        ShowLeftPane(1);
    }
    // A keyboard without a picture keeps its list, and the box stays locked on.
    if (!emLayout_) {
        SetChecked(Window(), ID_EMLIST, true);
        ShowRightPane(1, false);
        EnableControl(Window(), ID_EMLIST, false);
    }
    if (!pcLayout_) {
        SetChecked(Window(), ID_PCLIST, true);
        ShowLeftPane(1);
        EnableControl(Window(), ID_PCLIST, false);
    }
    MarkMapped();
    pcList_.setKeys(&keys_.physicalKeys);
    emList_.setKeys(&keys_.emulationKeys);
    RefreshStatus();
    return TRUE;
}

void KeymapDlg::SelectEmLayout(int32_t index) {
    emLayout_ = ChooseLayout(emKeyboard_, index);
    settings_.EmKbLang = index;
    if (emPicture_) emPicture_->setLayout(emLayout_);
    MarkMapped();
}

void KeymapDlg::SelectPcLayout(int32_t index) {
    pcLayout_ = ChooseLayout(pcKeyboard_, index);
    settings_.PCKbLang = index;
    if (pcPicture_) pcPicture_->setLayout(pcLayout_);
    MarkMapped();
}

void KeymapDlg::ShowRightPane(int mode, bool setRadio) {
    rightPaneMode_ = mode;
    const bool text = mode == 2 || mode == 3;
    const bool shown[] = {mode == 0, mode == 1, mode == 2, mode == 2, mode == 3, mode == 3,
                          text && settings_.session().macroAssist};
    for (std::size_t i = 0; i < std::size(kRightPaneControls); ++i) ShowControl(Window(), kRightPaneControls[i], shown[i]);
    if (setRadio)
        CheckRadioButton(Window(), ID_EMKEY, ID_EMGLOBALSTRING,
                         mode == 2 ? ID_EMSTRING : mode == 3 ? ID_EMGLOBALSTRING : ID_EMKEY);
}

// The left pane stores its mode where the right pane keeps its own: after this, the right pane no
// longer reads as a string edit until it changes again, which the status refresh relies on.
void KeymapDlg::ShowLeftPane(int mode) {
    if (mode != leftPaneMode_)
        for (int id : kLeftPaneControls) ShowControl(Window(), id, false);
    if (mode == 1)
        for (int id : {IDC_GK_PCLIST, ID_PHYS_SHIFT, ID_PHYS_CTRL, ID_PHYS_ALT}) ShowControl(Window(), id, true);
    else if (mode == 0)
        ShowControl(Window(), IDC_PC_PICTURE, true);
    rightPaneMode_ = mode;
}

void KeymapDlg::MarkMapped() {
    const TMappedMarks marks = MappedMarks(keys_);
    if (emPicture_) emPicture_->setMarks(marks.emulation);
    if (pcPicture_) pcPicture_->setMarks(marks.physical);
}

void KeymapDlg::SetShiftBoxes(uint32_t code) {
    SetChecked(Window(), ID_PHYS_SHIFT, (code & kModShift) != 0);
    SetChecked(Window(), ID_PHYS_CTRL, (code & kModCtrl) != 0);
    SetChecked(Window(), ID_PHYS_ALT, (code & kModAlt) != 0);
}

void KeymapDlg::ClearSelection() {
    if (emPicture_) emPicture_->clearSelection(false);
    if (pcPicture_) pcPicture_->clearSelection(false);
    selection_ = kNothingSelected;
    pcKey_ = emKey_ = nullptr;
    pcCode_ = emCode_ = 0;
}

// A press on the PC picture, or a list choice that found its key (as a right press).
void KeymapDlg::PressPc(GKbKey& key, bool left) {
    if (selection_ == kFromEmulation) return PressPcQuietly(key);
    if (left && key.ModifierMask != 0 && !isMapped(key, PcState())) {
        pcPicture_->toggleModifier(key);
        SetShiftBoxes(static_cast<uint32_t>(PcState()));  // the state holds no code bits: all boxes go
    } else if (&key != pcKey_) {
        if (selection_ != kNothingSelected) ClearSelection();
        pcPicture_->selectKey(key.Code, false);
        selection_ = kFromPc;
        pcKey_ = &key;
        pcCode_ = PcKeyCode(key, PcState());
    } else {
        pcPicture_->deselectCode(key.Code);
        selection_ = kNothingSelected;
        pcKey_ = nullptr;
        pcCode_ = 0;
    }
    if (pcKey_) {
        pcCode_ = WithLayoutState(PcKeyCode(*pcKey_, PcState()), PcState());
        if ((key.ModifierMask & ~kStateToggle) == 0) pcList_.selectCode(static_cast<int32_t>(pcCode_ & ~kModMask));
    } else {
        pcList_.clear();
        pcCode_ = 0;
    }
    ShowPcMapping(pcCode_);
    RefreshStatus();
}

// While an emulation key is shown, the PC side only changes which PC key stands against it.
void KeymapDlg::PressPcQuietly(GKbKey& key) {
    if (key.ModifierMask != 0) {
        pcPicture_->toggleModifier(key);
    } else if (&key != pcKey_) {
        pcPicture_->clearSelection(false);
        pcPicture_->selectKey(key.Code, false);
        pcKey_ = &key;
    } else {
        pcPicture_->deselectCode(key.Code);
        pcKey_ = nullptr;
    }
    pcCode_ = pcKey_ ? WithLayoutState(PcKeyCode(*pcKey_, PcState()), PcState()) : 0;
    pcList_.selectCode(static_cast<int32_t>(pcCode_));
    RefreshStatus();
}

void KeymapDlg::PressEm(GKbKey& key, bool left) {
    if (selection_ == kFromPc) return PressEmQuietly(key);
    if (left && key.ModifierMask != 0 && !isMapped(key, EmState())) {
        emPicture_->toggleModifier(key);
    } else if (&key != emKey_) {
        if (selection_ != kNothingSelected) ClearSelection();
        emPicture_->selectKey(key.Code, false);
        selection_ = kFromEmulation;
        emKey_ = &key;
    } else {
        emPicture_->deselectCode(key.Code);
        selection_ = kNothingSelected;
        emKey_ = nullptr;
    }
    if (emKey_) {
        emCode_ = EmKeyCode(*emKey_, EmState());
        if ((key.ModifierMask & ~kStateToggle) == 0) emList_.selectCode(static_cast<int32_t>(emCode_));
    } else {
        emList_.clear();
        emCode_ = 0;
    }
    ShowEmMapping(emCode_);
    RefreshStatus();
}

// While a PC key is shown, the emulation side only picks what to map it to.
void KeymapDlg::PressEmQuietly(GKbKey& key) {
    if (key.ModifierMask != 0) {
        emPicture_->toggleModifier(key);
    } else if (&key != emKey_) {
        emPicture_->clearSelection(false);
        emPicture_->selectKey(key.Code, false);
        emKey_ = &key;
    } else {
        emPicture_->deselectCode(key.Code);
        emKey_ = nullptr;
    }
    emCode_ = emKey_ ? EmKeyCode(*emKey_, EmState()) : 0;
    emList_.selectCode(static_cast<int32_t>(emCode_));
    RefreshStatus();
}

void KeymapDlg::ChoosePcListEntry() {
    const int32_t id = pcList_.selectedId();
    if (id < 0) return;
    if (pcLayout_) {
        int32_t state = 0;
        if (GKbKey* key = pcLayout_->findKey(id, state)) {
            if ((state ^ pcLayout_->State) & kStateToggle) pcLayout_->setState(pcLayout_->State ^ kStateToggle);
            return PressPc(*key, false);
        }
    }
    const TPcCodeStep step = PcListStep(selection_, pcCode_, MappedCode(static_cast<uint32_t>(id), listShift_));
    pcKey_ = nullptr;
    if (step.showMapping && pcPicture_) pcPicture_->clearSelection(false);
    pcCode_ = step.pcCode;
    if (step.showMapping) ShowPcMapping(pcCode_);
    selection_ = step.selection;
    if (!pcCode_)
        pcList_.clear();
    else if (!step.showMapping)
        pcList_.selectCode(static_cast<int32_t>(pcCode_ & ~kModMask));
    RefreshStatus();
}

void KeymapDlg::ChooseEmListEntry() {
    const int32_t id = emList_.selectedId();
    if (id < 0) return;
    if (emLayout_) {
        int32_t state = 0;
        if (GKbKey* key = emLayout_->findKey(id, state)) {
            if ((state ^ emLayout_->State) & kStateToggle) emLayout_->setState(emLayout_->State ^ kStateToggle);
            return PressEm(*key, false);
        }
    }
    const uint32_t code = static_cast<uint32_t>(id);
    if (selection_ == kFromPc) {
        emKey_ = nullptr;
        if (code == emCode_) {
            emCode_ = 0;
            emList_.clear();
        } else {
            emCode_ = code;
            emList_.selectCode(static_cast<int32_t>(code));
        }
    } else {
        emKey_ = nullptr;
        if (emPicture_) emPicture_->clearSelection(false);
        emCode_ = code == emCode_ ? 0 : code;
        ShowEmMapping(emCode_);
        selection_ = emCode_ ? kFromEmulation : kNothingSelected;
        if (!emCode_) emList_.clear();
    }
    RefreshStatus();
}

void KeymapDlg::ShiftBoxesChanged() {
    listShift_ = ShiftBoxesCode(Checked(ID_PHYS_SHIFT), Checked(ID_PHYS_CTRL), Checked(ID_PHYS_ALT));
    if (pcPicture_) pcPicture_->setShift(static_cast<int32_t>(listShift_));
    if (pcCode_ != 0) {
        const TPcCodeStep step = ShiftBoxesStep(selection_, pcCode_, pcLayout_, listShift_);
        // The key on the picture stays chosen only while the PC side holds a code of its own.
        if (!step.pcCode || !step.showMapping) pcKey_ = nullptr;
        if (!step.pcCode && pcPicture_) pcPicture_->clearSelection(false);
        pcCode_ = step.pcCode;
        if (step.showMapping) ShowPcMapping(pcCode_);
        selection_ = step.selection;
        if (pcCode_)
            pcList_.selectCode(static_cast<int32_t>(pcCode_ & ~kModMask));
        else
            pcList_.clear();
    }
    RefreshStatus();
}

void KeymapDlg::ShowPcMapping(uint32_t code) {
    TBusyScope busy(refreshing_);
    if (emPicture_) emPicture_->clearSelection(false);
    shownPcCode_ = code;
    shownEmCode_ = emCode_ = 0;
    emKey_ = nullptr;
    hasGlobal_ = hasString_ = false;
    kind_ = KeyMappingKind::None;
    shownString_.clear();
    shownGlobal_.clear();
    mappedCodes_.clear();
    if (code == 0) {
        if (emPicture_) emPicture_->setShift(0);
        emList_.clear();
    } else {
        if (const KeyString* global = FindKeyString(keys_.globalKeyStrings, code)) {
            shownGlobal_ = global->Text;
            hasGlobal_ = true;
        }
        if (const KeyString* string = FindKeyString(keys_.keyStrings, code)) {
            shownString_ = string->Text;
            hasString_ = true;
        }
        if (const KeyMapEntry* entry = FindKeyMapEntry(keys_.keyMap, code)) {
            emCode_ = shownEmCode_ = entry->EmKey;
            emKey_ = emPicture_ ? emPicture_->selectKey(static_cast<int32_t>(entry->EmKey), true) : nullptr;
            mappedCodes_.push_back(entry->EmKey);
        }
        if (emCode_)
            emList_.selectCode(static_cast<int32_t>(emCode_));
        else
            emList_.clear();
        kind_ = hasGlobal_   ? KeyMappingKind::GlobalString
                : hasString_ ? KeyMappingKind::String
                : emCode_    ? KeyMappingKind::EmulationKey
                             : KeyMappingKind::None;
        if (kind_ == KeyMappingKind::GlobalString)
            ShowRightPane(3, true);
        else if (kind_ == KeyMappingKind::String)
            ShowRightPane(2, true);
        else
            ShowRightPane(ListOrPicture(), true);
    }
    SetControlText(Window(), IDC_GK_GLOBAL, shownGlobal_);
    SetControlText(Window(), IDC_GK_STRING, shownString_);
}

void KeymapDlg::ShowEmMapping(uint32_t code) {
    if (pcPicture_) pcPicture_->clearSelection(false);
    shownEmCode_ = code;
    shownPcCode_ = pcCode_ = 0;
    pcKey_ = nullptr;
    if (code == 0) {
        if (pcPicture_) pcPicture_->setShift(0);
        pcList_.clear();
        return;
    }
    kind_ = KeyMappingKind::EmulationKey;
    mappedCodes_ = PhysicalCodesFor(keys_.keyMap, code, 20);
    if (!mappedCodes_.empty()) {
        const uint32_t first = mappedCodes_.front();
        pcKey_ = pcPicture_ ? pcPicture_->selectKey(static_cast<int32_t>(first), true) : nullptr;
        pcCode_ = shownPcCode_ = first;
        if (first != 0) {
            pcList_.selectCode(static_cast<int32_t>(first & ~kModMask));
            SetShiftBoxes(first);
            return;
        }
    }
    pcList_.clear();
}

void KeymapDlg::ShowMappingAgain() {
    if (selection_ == kFromEmulation)
        ShowEmMapping(emCode_);
    else if (selection_ == kFromPc)
        ShowPcMapping(pcCode_);
    else
        ClearSelection();
    MarkMapped();
    RefreshStatus();
}

bool KeymapDlg::AgreeToLoseGlobal() {
    return MessageBoxW(Window(), W(Translate(kLoseGlobal)), kProgramTitle, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void KeymapDlg::Map() {
    const TMapTarget target = Target();
    const int edit = target == TMapTarget::GlobalString ? IDC_GK_GLOBAL : IDC_GK_STRING;
    const std::u16string text = GetControlText(Window(), edit);
    switch (MapPcCode(keys_, target, pcCode_, shownPcCode_, emCode_, text, [this] { return AgreeToLoseGlobal(); })) {
    case TMapResult::Blank:
        MessageBoxW(Window(), W(Translate(kBlankString)), kProgramTitle, MB_OK | MB_ICONEXCLAMATION);
        RefreshStatus();
        return;
    case TMapResult::Mapped:
        if (target == TMapTarget::EmulationKey) {
            shownPcCode_ = pcCode_;
            shownEmCode_ = emCode_;
        }
        break;
    case TMapResult::Refused: break;
    }
    ShowMappingAgain();
}

void KeymapDlg::Remove() {
    if (shownPcCode_ > 0) {
        switch (kind_) {
        case KeyMappingKind::EmulationKey: RemoveAllKeyMapEntries(keys_.keyMap, shownPcCode_); break;
        case KeyMappingKind::String: RemoveKeyString(keys_.keyStrings, pcCode_); break;
        case KeyMappingKind::GlobalString:
            if (FindKeyString(keys_.globalKeyStrings, pcCode_) && AgreeToLoseGlobal())
                RemoveKeyString(keys_.globalKeyStrings, pcCode_);
            break;
        case KeyMappingKind::None: break;
        }
    }
    ShowMappingAgain();
}

void KeymapDlg::RunAssistant() {
    const int field = IsWindowVisible(GetDlgItem(Window(), IDC_GK_GLOBAL))   ? IDC_GK_GLOBAL
                      : IsWindowVisible(GetDlgItem(Window(), IDC_GK_STRING)) ? IDC_GK_STRING
                                                                              : 0;
    if (!field) return;
    std::u16string text = GetControlText(Window(), field);
    if (runMacroAssistant(Window(), text, NamesOf(keys_.emulationKeys), settings_.session().link.window, kMacroTextMode) != IDOK)
        return;
    SetControlText(Window(), field, text);
    RefreshStatus();
}

void KeymapDlg::RefreshStatus() {
    const TMapTarget target = Target();
    const std::u16string stringText = GetControlText(Window(), IDC_GK_STRING);
    const std::u16string globalText = GetControlText(Window(), IDC_GK_GLOBAL);
    const std::u16string em = MappedTargetText(target, target == TMapTarget::GlobalString ? globalText : stringText,
                                               emCode_, emKey_ != nullptr, emLayout_ != nullptr, keys_.emulationKeys);
    TCurrentCheck check;
    check.selection = selection_;
    check.kind = kind_;
    check.target = target;
    check.pcCode = pcCode_;
    check.shownPcCode = shownPcCode_;
    check.emCode = emCode_;
    check.shownEmCode = shownEmCode_;
    check.hasString = hasString_;
    check.stringMatches = stringText == shownString_;
    check.hasGlobal = hasGlobal_;
    check.globalMatches = globalText == shownGlobal_;
    const TKeymapStatus status = KeymapStatus(selection_, MappingIsCurrent(check), pcCode_, kind_, em,
                                              GraphicKeyName(keys_.physicalKeys, pcCode_));
    SetControlText(Window(), IDC_GK_STATUS, status.text);
    EnableControl(Window(), ID_MAPSET, status.mapEnabled);
    EnableControl(Window(), ID_MAPREMOVE, status.removeEnabled);
    for (int radio : {ID_EMKEY, ID_EMSTRING, ID_EMGLOBALSTRING}) EnableControl(Window(), radio, selection_ == kFromPc);
    if (selection_ != kFromPc && (rightPaneMode_ == 2 || rightPaneMode_ == 3)) ShowRightPane(ListOrPicture(), true);
}

void KeymapDlg::CheckMap() {
    KeyMapFinding chosen;
    const bool goTo = RunKeyMapCheck(Window(), keys_, KeyCodesOf(pcKeyboard_), chosen);
    ShowMappingAgain();  // the check may have removed entries
    if (!goTo) return;
    if (chosen.pcCode)
        GoToPcCode(chosen.pcCode);
    else
        GoToEmCode(chosen.emCode);
}

// Selects a PC code as a click on its key would with the code's modifiers latched, or as a choice
// in the list with those modifier boxes where the picture lacks the key.
void KeymapDlg::GoToPcCode(uint32_t code) {
    ClearSelection();
    const uint32_t modifiers = code & kModMask;
    SetShiftBoxes(modifiers);
    listShift_ = modifiers;
    if (pcPicture_) pcPicture_->setShift(static_cast<int32_t>(modifiers));
    pcList_.selectCode(static_cast<int32_t>(code & ~kModMask));
    if (pcList_.selectedId() < 0) {
        int32_t state = 0;
        GKbKey* key = pcLayout_ ? pcLayout_->findKey(static_cast<int32_t>(code & ~kModMask), state) : nullptr;
        if (!key) {
            ShowMappingAgain();
            SetControlText(Window(), IDC_GK_STATUS, Translate(kNotOnKeyboard));
            return;
        }
        return PressPc(*key, false);
    }
    ChoosePcListEntry();
}

void KeymapDlg::GoToEmCode(uint32_t code) {
    ClearSelection();
    emList_.selectCode(static_cast<int32_t>(code));
    if (emList_.selectedId() >= 0) ChooseEmListEntry();
}

// The key pressed in the press-key window, with the modifiers held down with it.
void KeymapDlg::FindPressedKey(WPARAM virtualKey, LPARAM flags) {
    const uint32_t code = PhysicalCodeOfKeyPress(static_cast<uint32_t>(virtualKey), static_cast<uint64_t>(flags));
    if (code == 0) return;
    const auto down = [](int key) { return (GetKeyState(key) & 0x8000) != 0; };
    constexpr LPARAM kAltContext = LPARAM{1} << 29;  // a key pressed with Alt held comes with this bit
    const uint32_t modifiers = (down(VK_SHIFT) ? kModShift : 0) | (down(VK_CONTROL) ? kModCtrl : 0) |
                               (down(VK_MENU) || (flags & kAltContext) ? kModAlt : 0);
    GoToPcCode(code | modifiers);
}

INT_PTR KeymapDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    // The press-key window's message shares its number with DM_SETDEFID: only an awaited one counts.
    if (message == kKeyPressedMessage && awaitingKey_) {
        awaitingKey_ = false;
        FindPressedKey(wParam, lParam);
        return TRUE;
    }
    if ((message != kKeyPressedLeft && message != kKeyPressedRight) || !lParam)
        return TDialog::OnMessage(message, wParam, lParam);
    GKbKey& key = *reinterpret_cast<GKbKey*>(lParam);
    const bool left = message == kKeyPressedLeft;
    if (wParam == IDC_PC_PICTURE && pcPicture_)
        PressPc(key, left);
    else if (wParam == IDC_EM_PICTURE && emPicture_)
        PressEm(key, left);
    return TRUE;
}

class KeyboardsDlg : public TDialog {
public:
    explicit KeyboardsDlg(KeymapDlg& owner)
        : owner_(owner), savedPc_(owner.Settings().PCKbLang), savedEm_(owner.Settings().EmKbLang) {}

protected:
    std::span<const TDialogText> Texts() const override { return kKeyboardsTexts; }
    INT_PTR OnInit() override {
        Fill(IDC_KBD_EM, owner_.EmKeyboard(), savedEm_);
        Fill(IDC_KBD_PC, owner_.PcKeyboard(), savedPc_);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        const int row = ComboSelection(Window(), id);
        switch (id) {
        case IDC_KBD_PC:
            if (code == CBN_SELCHANGE && row >= 0) owner_.SelectPcLayout(row);
            return TRUE;
        case IDC_KBD_EM:
            if (code == CBN_SELCHANGE && row >= 0) owner_.SelectEmLayout(row);
            return TRUE;
        case IDC_KEYMAP_HELP:
            if (code == BN_CLICKED) owner_.Settings().session().ShowHelp(u"grkeymap.keyboards");
            return TRUE;
        case IDOK:
            if (code == BN_CLICKED) End(IDOK);
            return TRUE;
        case IDCANCEL:
            if (code == BN_CLICKED) {
                owner_.SelectPcLayout(savedPc_);
                owner_.SelectEmLayout(savedEm_);
                End(IDCANCEL);
            }
            return TRUE;
        default: return FALSE;
        }
    }

private:
    void Fill(int id, GKbKeyboard& keyboard, int32_t selection) const {
        std::vector<std::u16string> names;
        for (std::size_t i = 0; i < keyboard.Layouts.size(); ++i) names.push_back(latin1ToUtf16(keyboard.Layouts[i].Name));
        FillComboRows(Window(), id, names, selection);
    }

    KeymapDlg& owner_;
    int32_t savedPc_;
    int32_t savedEm_;
};

INT_PTR KeymapDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDC_GK_PCLIST:
        if (code == LBN_SELCHANGE) ChoosePcListEntry();
        return TRUE;
    case IDC_GK_EMLIST:
        if (code == LBN_SELCHANGE) ChooseEmListEntry();
        return TRUE;
    case IDC_GK_STRING:
    case IDC_GK_GLOBAL:
        if (code == EN_CHANGE && !refreshing_) RefreshStatus();
        return TRUE;
    default: break;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case ID_EMKEY: ShowRightPane(ListOrPicture(), false); break;
    case ID_EMSTRING: ShowRightPane(2, false); break;
    case ID_EMGLOBALSTRING: ShowRightPane(3, false); break;
    case ID_EMLIST:
        if (Checked(ID_EMKEY)) ShowRightPane(ListOrPicture(), false);
        return TRUE;
    case ID_PCLIST: ShowLeftPane(Checked(ID_PCLIST) ? 1 : 0); return TRUE;
    case ID_PHYS_SHIFT:
    case ID_PHYS_CTRL:
    case ID_PHYS_ALT: ShiftBoxesChanged(); return TRUE;
    case ID_MAPSET: Map(); return TRUE;
    case ID_MAPREMOVE: Remove(); return TRUE;
    case IDC_KEY_ASSIST: RunAssistant(); return TRUE;
    case ID_KEYBOARDS: {
        KeyboardsDlg keyboards(*this);
        keyboards.RunModal(Window(), IDD_KBD_KEYBOARDS);
        return TRUE;
    }
    case ID_ADVANCED: RunKeymapAdvanced(Window(), settings_); return TRUE;
    case IDC_FIND_KEY: awaitingKey_ = ShowPressKeyWindow(Window()) != nullptr; return TRUE;
    case IDC_KEYMAP_CHECK: CheckMap(); return TRUE;
    case IDC_CHEAT_SHEET: SaveCheatSheet(Window(), settings_); return TRUE;
    case IDC_KEYMAP_EXPORT: ExportKeyMapFile(Window(), settings_); return TRUE;
    case IDC_KEYMAP_IMPORT:
        if (ImportKeyMapFile(Window(), settings_)) {
            ClearSelection();
            ShowMappingAgain();
        }
        return TRUE;
    case IDC_KEYMAP_HELP: settings_.session().ShowHelp(u"grkeymap.index"); return TRUE;
    case IDOK:
    case IDCANCEL: End(id); return TRUE;
    default: return FALSE;
    }
    RefreshStatus();  // the radios
    return TRUE;
}

}  // namespace

int runKeymapDialog(void* parent, KeymapSettings& settings) {
    auto dialog = std::make_unique<KeymapDlg>(settings);
    return static_cast<int>(dialog->RunModal(static_cast<HWND>(parent), IDD_GKEYMAP));
}

}  // namespace qrl
