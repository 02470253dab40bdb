#include "hotspots/hotspotcoloursdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "hotspots/hotspot.h"
#include "hotspots/hotspotpaint_win.h"
#include "hotspots/hotspotrules.h"
#include "hotspots/hotspots_rc.h"
#include "request/session.h"

#include <array>

namespace qrl {

namespace {

constexpr TDialogText kColourTexts[] = {
    {kDialogTitleId, {u"IDD_CFG_HOTSPOTS_COLOURS", u"Configure HotSpots Colours"}},
    {IDC_HS_FG_GROUP, {u"IDC_HS_FG_GROUP", u"Foreground"}},
    {IDC_HS_FG_EMULATION, {u"IDC_HS_FG_EMULATION", u"&Use the emulation foreground colour"}},
    {IDC_HS_BG_GROUP, {u"IDC_HS_BG_GROUP", u"Background"}},
    {IDC_HS_BG_EMULATION, {u"IDC_HS_BG_EMULATION", u"Use the emulation background colour"}},
    {IDC_HS_FG_RED_LABEL, {u"IDC_HS_RED", u"Red"}},
    {IDC_HS_FG_GREEN_LABEL, {u"IDC_HS_GREEN", u"Green"}},
    {IDC_HS_FG_BLUE_LABEL, {u"IDC_HS_BLUE", u"Blue"}},
    {IDC_HS_BG_RED_LABEL, {u"IDC_HS_RED", u"Red"}},
    {IDC_HS_BG_GREEN_LABEL, {u"IDC_HS_GREEN", u"Green"}},
    {IDC_HS_BG_BLUE_LABEL, {u"IDC_HS_BLUE", u"Blue"}},
    {IDOK, {u"IDOK", u"&OK"}},
    {IDCANCEL, {u"IDCANCEL", u"&Cancel"}},
    {IDC_HS_HELP, {u"IDHELP", u"&Help"}},
};

// One of the two groups: its flag, its bars and the colour they give.
struct TColourGroup {
    int flagId;
    int firstBar;  // red; green and blue follow
    bool useEmulation = false;
    uint32_t colour = 0;
    uint32_t emulationShown;  // what the sample shows while the flag is on
};

class ColoursDlg : public TDialog {
public:
    ColoursDlg(const TConfigSession& session, uint32_t foreground, uint32_t background)
        : session_(session),
          groups_{TColourGroup{IDC_HS_FG_EMULATION, IDC_HS_FG_RED, false, foreground, 0},
                  TColourGroup{IDC_HS_BG_EMULATION, IDC_HS_BG_RED, false, background, kEmulationBackgroundShown}} {
        for (TColourGroup& group : groups_) {
            group.useEmulation = IsEmulationColour(group.colour);
            if (group.useEmulation) group.colour = 0;
        }
    }
    // All ones where the emulation's colour was chosen.
    uint32_t Result(int group) const {
        return groups_[group].useEmulation ? kDefaultColour : groups_[group].colour;
    }

protected:
    std::span<const TDialogText> Texts() const override { return kColourTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND Bar(const TColourGroup& group, int channel) const { return GetDlgItem(Window(), group.firstBar + channel); }
    int Position(const TColourGroup& group, int channel) const { return GetScrollPos(Bar(group, channel), SB_CTL); }
    void ShowGroup(const TColourGroup& group);
    void Recompute();
    void OnScroll(HWND bar, int code, int thumb);
    uint32_t Shown(const TColourGroup& group) const { return group.useEmulation ? group.emulationShown : group.colour; }

    const TConfigSession& session_;
    std::array<TColourGroup, 2> groups_;
};

INT_PTR ColoursDlg::OnInit() {
    for (const TColourGroup& group : groups_) {
        const std::array<int, 3> channels{GetRValue(group.colour), GetGValue(group.colour), GetBValue(group.colour)};
        for (int channel = 0; channel < 3; ++channel) {
            SetScrollRange(Bar(group, channel), SB_CTL, 0, 255, FALSE);
            SetScrollPos(Bar(group, channel), SB_CTL, channels[channel], TRUE);
        }
        SetChecked(Window(), group.flagId, group.useEmulation);
        ShowGroup(group);
    }
    return TRUE;
}

void ColoursDlg::ShowGroup(const TColourGroup& group) {
    for (int channel = 0; channel < 3; ++channel) EnableWindow(Bar(group, channel), !group.useEmulation);
}

// After any change both colours are formed again from the bars.
void ColoursDlg::Recompute() {
    for (TColourGroup& group : groups_) {
        group.useEmulation = IsChecked(Window(), group.flagId);
        group.colour = group.useEmulation
                           ? group.emulationShown
                           : PaletteRelativeColour(Position(group, 0), Position(group, 1), Position(group, 2));
        ShowGroup(group);
    }
    InvalidateRect(GetDlgItem(Window(), IDC_HS_COLOUR_SAMPLE), nullptr, FALSE);
}

void ColoursDlg::OnScroll(HWND bar, int code, int thumb) {
    if (!bar) return;
    SetScrollPos(bar, SB_CTL, ColourScrollTarget(GetScrollPos(bar, SB_CTL), code, thumb), TRUE);
    Recompute();
}

INT_PTR ColoursDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_HSCROLL) {
        OnScroll(reinterpret_cast<HWND>(lParam), LOWORD(wParam), static_cast<short>(HIWORD(wParam)));
        return TRUE;
    }
    if (message == WM_DRAWITEM && wParam == IDC_HS_COLOUR_SAMPLE) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        DrawColourSample(item.hDC, item.rcItem, Shown(groups_[0]), Shown(groups_[1]));
        return TRUE;
    }
    return FALSE;
}

INT_PTR ColoursDlg::OnCommand(int id, int code) {
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_HS_FG_EMULATION:
    case IDC_HS_BG_EMULATION: Recompute(); return TRUE;
    case IDC_HS_HELP: session_.ShowHelp(u"hotspots.colours"); return TRUE;
    case IDOK:
    case IDCANCEL: End(id); return TRUE;
    default: return FALSE;
    }
}

}  // namespace

bool RunHotSpotColours(HWND parent, const TConfigSession& session, uint32_t& foreground, uint32_t& background) {
    ColoursDlg dialog(session, foreground, background);
    if (dialog.RunModal(parent, IDD_CFG_HOTSPOTS_COLOURS) != IDOK) return false;
    foreground = dialog.Result(0);
    background = dialog.Result(1);
    return true;
}

}  // namespace qrl
