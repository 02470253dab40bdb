#include "forms/layout.h"

#include "forms/forms_rc.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {

namespace {

class Layout {
public:
    Layout(const ControlRects& controls) : in_(controls) {}

    const TRect* Find(int id) const {
        auto it = out_.find(id);
        if (it != out_.end()) return &it->second;
        auto jt = in_.find(id);
        return jt == in_.end() ? nullptr : &jt->second;
    }
    // Moves control `id` clipped; returns its new rectangle, or null if it doesn't exist.
    const TRect* Clip(int id, std::int32_t left, std::int32_t top, std::int32_t rightLimit) {
        const TRect* r = Find(id);
        if (!r) return nullptr;
        TRect moved = MoveClippedRect(*r, left, top, rightLimit);
        return &(out_[id] = moved);
    }
    // Moves `id` 4 pixels to the right of `anchor`, at the anchor's top.
    const TRect* ClipRightOf(int id, const TRect* anchor, std::int32_t rightLimit) {
        if (!anchor) return nullptr;
        return Clip(id, anchor->right + 4, anchor->top, rightLimit);
    }
    void Set(int id, const TRect& r) { out_[id] = r; }
    ControlRects Result() const { return out_; }

private:
    const ControlRects& in_;
    ControlRects out_;
};

constexpr std::int32_t kResetTop = 8;

// What the frame grows by so that Reset fits above the editors' row beside the label.
std::int32_t ResetRoom(const Layout& lay) {
    const TRect* reset = lay.Find(IDC_RESET_VALUE);
    if (!reset) return 0;
    const TRect* label = lay.Find(IDC_VALUE_LABEL);
    return std::max(0, kResetTop + reset->Height() - (12 + (label ? label->Height() : 0)));
}

// The search row above the tree: the edit, its count and "Customised only" at the right edge.
// Returns where the tree begins: 10 without a search.
std::int32_t SearchRow(Layout& lay, std::int32_t left, std::int32_t right) {
    const TRect* search = lay.Find(IDC_SEARCH_EDIT);
    if (!search) return 10;
    const std::int32_t top = 10;
    const std::int32_t height = search->Height();
    std::int32_t end = right;
    for (int id : {IDC_CUSTOMISED_ONLY, IDC_SEARCH_COUNT}) {
        const TRect* r = lay.Find(id);
        if (!r) continue;
        const TRect placed{end - r->Width(), top + (height - r->Height()) / 2, end, top + (height - r->Height()) / 2 + r->Height()};
        lay.Set(id, placed);
        end = placed.left - 4;
    }
    lay.Set(IDC_SEARCH_EDIT, TRect{left, top, std::max(end, left), top + height});
    return top + height + 6;
}

}  // namespace

ControlRects LayoutBuiltInForm(const TRect& client, std::int32_t scrollBarWidth, const ControlRects& controls) {
    Layout lay(controls);
    const std::int32_t margin = scrollBarWidth + 10;
    const std::int32_t bottom = std::max(client.bottom - 10, 200);

    // The row of buttons along the bottom.
    std::int32_t x = client.left + 10;
    std::int32_t h = 0;
    for (int id : {IDC_FORM_OK, IDC_FORM_CANCEL, IDC_CONNECT, IDC_MODULE_SELECT, IDC_FORM_HELP}) {
        const TRect* r = lay.Find(id);
        if (!r) continue;
        TRect moved = MoveAtBottomRect(*r, x, bottom);
        lay.Set(id, moved);
        x = moved.right + 4;
        h = std::max(h, moved.Height());
    }
    std::int32_t y = bottom - h;
    if (h > 0) y -= 8;

    // Frame above the buttons, tree above the frame, both across the client width.
    const std::int32_t left = client.left + 10;
    const std::int32_t right = client.right - margin;
    if (const TRect* f = lay.Find(IDC_VALUE_FRAME)) {
        TRect frame{left, y - f->Height() - ResetRoom(lay), right, y};
        lay.Set(IDC_VALUE_FRAME, frame);
        y = frame.top;
    }
    if (lay.Find(IDC_TREE)) lay.Set(IDC_TREE, TRect{left, SearchRow(lay, left, right), right, y - 14});

    const TRect* framePtr = lay.Find(IDC_VALUE_FRAME);
    if (!framePtr) return lay.Result();
    const TRect frame = *framePtr;
    const std::int32_t r = frame.right - margin;
    const std::int32_t x0 = frame.left + 20;

    // Reset stands at the top right; the label and the check box end before it.
    std::int32_t textLimit = r;
    std::int32_t y2 = frame.top + 12;
    if (const TRect* reset = lay.Find(IDC_RESET_VALUE)) {
        const TRect placed{r - reset->Width(), frame.top + kResetTop, r, frame.top + kResetTop + reset->Height()};
        lay.Set(IDC_RESET_VALUE, placed);
        textLimit = placed.left - 4;
        y2 = placed.bottom + 4;
    }
    if (const TRect* label = lay.Clip(IDC_VALUE_LABEL, x0, frame.top + 12, textLimit)) y2 = std::max(y2, label->bottom + 4);

    if (const TRect* edit = lay.Clip(IDC_VALUE_EDIT, x0, y2, r - 44)) {
        const TRect e = *edit;
        for (int id : {IDC_FILE_BROWSE, IDC_MACRO_ASSIST, IDC_DIR_BROWSE}) lay.ClipRightOf(id, &e, r);
    }
    if (const TRect* combo = lay.Clip(IDC_VALUE_COMBO, x0, y2, r - 80)) {
        const TRect c = *combo;
        lay.ClipRightOf(IDC_SSH_IMPORT, &c, r);
    }
    lay.Clip(IDC_VALUE_CHECK, x0, frame.top + 16, textLimit);
    if (const TRect* sample = lay.Clip(IDC_COLOUR_SAMPLE, x0, y2, r - 44)) {
        const TRect s = *sample;
        lay.ClipRightOf(IDC_COLOUR_EDIT, &s, r);
    }
    if (const TRect* font = lay.Clip(IDC_FONT_TEXT, x0, y2, r - 44)) {
        const TRect f = *font;
        lay.ClipRightOf(IDC_FONT_EDIT, &f, r);
    }
    if (const TRect* printer = lay.Clip(IDC_PRINTER_TEXT, x0, y2, r - 98)) {
        const TRect p = *printer;
        if (const TRect* edit = lay.ClipRightOf(IDC_PRINTER_EDIT, &p, r - 54)) {
            const TRect e = *edit;
            lay.ClipRightOf(IDC_PRINTER_DEFAULT, &e, r);
        }
    }
    lay.Clip(IDC_SPECIAL_EDIT, x0, y2, r);

    const TRect* add = lay.Find(IDC_LANG_ADD);
    if (add && lay.Find(IDC_LANG_DELETE)) {
        const std::int32_t addWidth = add->Width();
        if (const TRect* combo = lay.Clip(IDC_VALUE_COMBO, x0, y2, r - 8 - 2 * addWidth)) {
            const TRect c = *combo;
            if (const TRect* a = lay.ClipRightOf(IDC_LANG_ADD, &c, r)) {
                const TRect aa = *a;
                lay.ClipRightOf(IDC_LANG_DELETE, &aa, r);
            }
        }
    }
    return lay.Result();
}

namespace {

// A size beyond any screen is a broken value, not a wish.
constexpr std::int32_t kLargestSide = 30000;

std::optional<std::int32_t> Side(std::u16string_view text) {
    if (text.empty() || text.size() > 5) return std::nullopt;
    std::int32_t value = 0;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') return std::nullopt;
        value = value * 10 + (c - u'0');
    }
    if (value <= 0 || value > kLargestSide) return std::nullopt;
    return value;
}

}  // namespace

std::optional<TWindowSize> ParseWindowSize(std::u16string_view text) {
    const std::size_t comma = text.find(u',');
    if (comma == std::u16string_view::npos) return std::nullopt;
    const auto width = Side(text.substr(0, comma));
    const auto height = Side(text.substr(comma + 1));
    if (!width || !height) return std::nullopt;
    return TWindowSize{*width, *height};
}

std::u16string WindowSizeText(const TWindowSize& size) { return decimal(size.width) + u"," + decimal(size.height); }

TWindowSize ScaleWindowSize(const TWindowSize& size, std::int32_t fromDpi, std::int32_t toDpi) {
    return TWindowSize{ScaleLength(size.width, fromDpi, toDpi), ScaleLength(size.height, fromDpi, toDpi)};
}

}  // namespace qrl
