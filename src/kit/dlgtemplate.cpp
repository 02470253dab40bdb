#include "kit/dlgtemplate.h"

#include <algorithm>

namespace qrl {

std::size_t AlignToDword(TemplateBytes& out) {
    while (out.size() % 4 != 0) out.push_back(0);
    return out.size();
}

std::size_t PutWord(TemplateBytes& out, std::uint16_t value) {
    const std::size_t at = out.size();
    out.push_back(static_cast<std::uint8_t>(value & 0xFF));
    out.push_back(static_cast<std::uint8_t>(value >> 8));
    return at;
}

std::size_t PutDword(TemplateBytes& out, std::uint32_t value) {
    const std::size_t at = PutWord(out, static_cast<std::uint16_t>(value & 0xFFFF));
    (void)PutWord(out, static_cast<std::uint16_t>(value >> 16));
    return at;
}

std::size_t PutString(TemplateBytes& out, std::u16string_view text) {
    const std::size_t at = out.size();
    for (char16_t c : text) {
        // A zero inside the text would end it early for the reader; the dialog manager does the same.
        (void)PutWord(out, static_cast<std::uint16_t>(c));
    }
    (void)PutWord(out, 0);
    return at;
}

void PatchWord(TemplateBytes& out, std::size_t offset, std::uint16_t value) {
    if (offset + 2 > out.size()) return;
    out[offset] = static_cast<std::uint8_t>(value & 0xFF);
    out[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

std::size_t PutDialogHeader(TemplateBytes& out, const TemplateDialog& d) {
    (void)PutDword(out, d.style);
    (void)PutDword(out, d.exStyle);
    const std::size_t countAt = PutWord(out, 0);
    (void)PutWord(out, static_cast<std::uint16_t>(d.x));
    (void)PutWord(out, static_cast<std::uint16_t>(d.y));
    (void)PutWord(out, static_cast<std::uint16_t>(d.cx));
    (void)PutWord(out, static_cast<std::uint16_t>(d.cy));
    (void)PutString(out, u"");  // no menu
    (void)PutString(out, u"");  // the standard dialog class
    (void)PutString(out, d.title);
    if (d.style & kDsSetFont) {
        (void)PutWord(out, d.fontSize);
        (void)PutString(out, d.fontName);
    }
    return countAt;
}

std::size_t PutItem(TemplateBytes& out, const TemplateItem& item) {
    const std::size_t at = AlignToDword(out);
    (void)PutDword(out, item.style);
    (void)PutDword(out, item.exStyle);
    (void)PutWord(out, static_cast<std::uint16_t>(item.x));
    (void)PutWord(out, static_cast<std::uint16_t>(item.y));
    (void)PutWord(out, static_cast<std::uint16_t>(item.cx));
    (void)PutWord(out, static_cast<std::uint16_t>(item.cy));
    (void)PutWord(out, item.id);
    (void)PutString(out, item.className);
    (void)PutString(out, item.caption);
    (void)PutWord(out, 0);  // no creation data
    return at;
}

TemplateBytes WriteTemplate(const TemplateDialog& dialog, const std::vector<TemplateItem>& items) {
    TemplateBytes out;
    const std::size_t countAt = PutDialogHeader(out, dialog);
    for (const TemplateItem& item : items) (void)PutItem(out, item);
    PatchWord(out, countAt, static_cast<std::uint16_t>(items.size()));
    return out;
}

namespace {

struct Reader {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t pos = 0;
    bool ok = true;

    std::uint16_t word() {
        if (pos + 2 > size) {
            ok = false;
            return 0;
        }
        const std::uint16_t v = static_cast<std::uint16_t>(data[pos] | (data[pos + 1] << 8));
        pos += 2;
        return v;
    }
    std::uint32_t dword() {
        const std::uint32_t lo = word();
        return lo | (static_cast<std::uint32_t>(word()) << 16);
    }
    // A string or an ordinal (0xFFFF and a number); an ordinal is given back as "#n".
    std::u16string stringOrOrdinal() {
        std::u16string s;
        const std::uint16_t first = word();
        if (!ok) return s;
        if (first == 0xFFFF) {
            const std::uint16_t ordinal = word();
            s.push_back(u'#');
            for (char c : std::to_string(ordinal)) s.push_back(static_cast<char16_t>(c));
            return s;
        }
        for (std::uint16_t c = first; ok && c != 0; c = word()) s.push_back(static_cast<char16_t>(c));
        return s;
    }
    void align() {
        while (pos % 4 != 0 && pos < size) ++pos;
        if (pos % 4 != 0) ok = false;
    }
    void skip(std::size_t bytes) {
        if (bytes > size - std::min(pos, size)) ok = false;
        else pos += bytes;
    }
    // Passes a string or an ordinal without keeping it.
    void skipStringOrOrdinal() {
        std::uint16_t c = word();
        if (c == 0xFFFF) {
            (void)word();
            return;
        }
        while (ok && c != 0) c = word();
    }
};

std::u16string_view PredefinedClassName(std::uint16_t ordinal) {
    static constexpr std::u16string_view kNames[] = {u"Button", u"Edit", u"Static", u"ListBox", u"ScrollBar", u"ComboBox"};
    return ordinal >= 0x80 && ordinal < 0x80 + std::size(kNames) ? kNames[ordinal - 0x80] : std::u16string_view{};
}

}  // namespace

bool ReadTemplate(const std::uint8_t* data, std::size_t size, TemplateDialog& dialog,
                  std::vector<TemplateItem>& items) {
    items.clear();
    dialog = TemplateDialog{};
    if (data == nullptr) return false;
    Reader r{data, size};
    dialog.style = r.dword();
    dialog.exStyle = r.dword();
    const std::uint16_t count = r.word();
    dialog.x = static_cast<std::int16_t>(r.word());
    dialog.y = static_cast<std::int16_t>(r.word());
    dialog.cx = static_cast<std::int16_t>(r.word());
    dialog.cy = static_cast<std::int16_t>(r.word());
    (void)r.stringOrOrdinal();  // menu
    (void)r.stringOrOrdinal();  // class
    dialog.title = r.stringOrOrdinal();
    if (dialog.style & kDsSetFont) {
        dialog.fontSize = r.word();
        dialog.fontName = r.stringOrOrdinal();
    }
    for (std::uint16_t i = 0; r.ok && i < count; ++i) {
        r.align();
        TemplateItem item;
        item.style = r.dword();
        item.exStyle = r.dword();
        item.x = static_cast<std::int16_t>(r.word());
        item.y = static_cast<std::int16_t>(r.word());
        item.cx = static_cast<std::int16_t>(r.word());
        item.cy = static_cast<std::int16_t>(r.word());
        item.id = r.word();
        item.className = r.stringOrOrdinal();
        item.caption = r.stringOrOrdinal();
        const std::uint16_t extra = r.word();
        if (extra > r.size - std::min(r.pos, r.size)) r.ok = false;
        else r.pos += extra;
        if (r.ok) items.push_back(std::move(item));
    }
    return r.ok;
}

TemplateBytes RenameControlClasses(const std::uint8_t* data, std::size_t size, ClassRenamer rename,
                                   void* context) {
    if (data == nullptr) return {};
    Reader r{data, size};
    const bool extended = r.word() == 1 && r.word() == 0xFFFF;
    r.pos = 0;
    // Plain: style, extended style, count, place. Extended: version, signature, help id, extended
    // style, style, count, place.
    r.skip(extended ? 12 : 0);
    const std::uint32_t style = r.dword();
    r.skip(extended ? 0 : 4);
    const std::uint16_t count = r.word();
    r.skip(8);
    r.skipStringOrOrdinal();  // menu
    r.skipStringOrOrdinal();  // class
    r.skipStringOrOrdinal();  // title
    if (style & kDsSetFont) {
        r.skip(extended ? 6 : 2);  // size; weight, italic and character set
        r.skipStringOrOrdinal();
    }
    if (!r.ok) return {};
    TemplateBytes out(data, data + r.pos);
    bool renamed = false;
    for (std::uint16_t i = 0; r.ok && i < count; ++i) {
        r.align();
        const std::size_t item = r.pos;
        r.skip(extended ? 24 : 18);  // help id, styles, place and id
        const std::size_t classAt = r.pos;
        std::u16string name;
        if (const std::uint16_t first = r.word(); first == 0xFFFF) name = PredefinedClassName(r.word());
        else
            for (std::uint16_t c = first; r.ok && c != 0; c = r.word()) name.push_back(static_cast<char16_t>(c));
        const std::size_t titleAt = r.pos;
        r.skipStringOrOrdinal();
        r.skip(r.word());  // creation data
        if (!r.ok) return {};
        (void)AlignToDword(out);
        out.insert(out.end(), data + item, data + classAt);
        const std::u16string_view replacement = name.empty() ? std::u16string_view{} : rename(name, context);
        if (replacement.empty()) {
            out.insert(out.end(), data + classAt, data + titleAt);
        } else {
            (void)PutString(out, replacement);
            renamed = true;
        }
        out.insert(out.end(), data + titleAt, data + r.pos);
    }
    return renamed ? out : TemplateBytes{};
}

}  // namespace qrl
