// The in-memory dialog template of the dialog manager (DLGTEMPLATE with its variable fields, each
// control a DLGITEMTEMPLATE), written as plain bytes so that it is built and checked without the
// platform. All positions and sizes are dialog units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

using TemplateBytes = std::vector<std::uint8_t>;

struct TemplateDialog {
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;
    std::u16string title;
    std::uint16_t fontSize = 0;  // written with fontName only when style holds DS_SETFONT
    std::u16string fontName;
};

struct TemplateItem {
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;
    std::uint16_t id = 0;
    std::u16string className;
    std::u16string caption;
};

inline constexpr std::uint32_t kDsSetFont = 0x40;

// The small writers. Each returns the offset at which its field starts, so that a caller can patch
// a field it could not know yet (the control count); a result nobody wants is a mistake.
[[nodiscard]] std::size_t AlignToDword(TemplateBytes& out);
[[nodiscard]] std::size_t PutWord(TemplateBytes& out, std::uint16_t value);
[[nodiscard]] std::size_t PutDword(TemplateBytes& out, std::uint32_t value);
// A zero-terminated 16-bit string (the empty string is a single zero word: "no menu", "no class").
[[nodiscard]] std::size_t PutString(TemplateBytes& out, std::u16string_view text);
void PatchWord(TemplateBytes& out, std::size_t offset, std::uint16_t value);

// Writes the dialog header with a control count of 0 and returns the offset of that count.
[[nodiscard]] std::size_t PutDialogHeader(TemplateBytes& out, const TemplateDialog& dialog);
// Aligns, then writes one control (class and caption as strings, no creation data).
[[nodiscard]] std::size_t PutItem(TemplateBytes& out, const TemplateItem& item);

// Header and items in one go.
[[nodiscard]] TemplateBytes WriteTemplate(const TemplateDialog& dialog, const std::vector<TemplateItem>& items);

// Reads a template written by WriteTemplate back (for checks and tests). False when the bytes are
// short or malformed; it never reads past `size`.
bool ReadTemplate(const std::uint8_t* data, std::size_t size, TemplateDialog& dialog,
                  std::vector<TemplateItem>& items);

// The class a control of a template names, as a name: the system's ordinals (0x80 to 0x85) become
// "Button", "Edit", "Static", "ListBox", "ScrollBar" and "ComboBox". Gives the name to put in its
// place, or an empty view to keep the class as it is.
using ClassRenamer = std::u16string_view (*)(std::u16string_view className, void* context);

// A copy of a template, in either layout (a plain or an extended one), with the controls' classes
// renamed and every other byte as it was. Empty when the template is short or malformed or no
// class changes; it never reads past `size`.
TemplateBytes RenameControlClasses(const std::uint8_t* data, std::size_t size, ClassRenamer rename,
                                   void* context);

}  // namespace qrl
