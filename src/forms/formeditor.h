// Which value editor of the built-in form an element gets, and what its controls show: the
// selection change of the tree asks DescribeEditor and applies the answer to the controls.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qrl {

class TElementDef;

// Every control of the value frame that a selection shows or hides (the label included).
extern const std::vector<int> kValueControls;

struct EditorView {
    std::u16string label;     // text of the label 3003
    std::vector<int> shown;   // the value controls shown; all others are hidden
    std::vector<int> guarded; // shown controls that are disabled while the element is read-only
    int focus = 0;            // the value control that takes the focus after a mouse selection

    // edit 3000
    std::optional<std::u16string> editText;
    std::int32_t editLimit = 0;  // 0: unlimited
    bool passwordChar = false;
    bool numbersOnly = false;
    // check box 3001
    std::u16string checkText;
    bool checked = false;
    // drop-down 3002: either entries with a position, or the session's auth files selected by text
    std::vector<std::u16string> comboEntries;
    int comboSelection = -1;
    bool comboAuthFiles = false;
    std::u16string comboSelectText;
    // sample 3004 (colour as COLORREF), 3006 (font face), 3008 (printer or certificate text)
    std::optional<std::uint32_t> colour;
    std::optional<std::u16string> fontText;
    std::optional<std::u16string> printerText;
};

// `macroAssistOn` is the process-wide macro assist flag of the request.
EditorView DescribeEditor(const TElementDef& element, bool macroAssistOn);

}  // namespace qrl
