// Drives the Macro Assistant's model with arbitrary edits on arbitrary texts: whatever the user
// clicks or types, the selection stays a row or none, the list and the joined text follow the
// tokens, and nothing reads outside a table.
//
// Input: byte 0 the level, byte 1 the number of edits n, then n pairs of an edit and a signed
// argument, then the macro text, one byte per character.
#include "macro/macroassist.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

void apply(qrl::TMacroAssist& assist, uint8_t edit, int arg, const std::u16string& text) {
    const std::u16string word = text.substr(0, static_cast<size_t>(arg < 0 ? -arg : arg) % (text.size() + 1));
    switch (edit % 20) {
    case 0: assist.Select(arg); break;
    case 1: assist.ChooseType(arg); break;
    case 2: assist.SetText(word); break;
    case 3: assist.ChooseCharRow(arg, arg * 3); break;
    case 4: assist.ChooseByte(arg * 3); break;
    case 5: assist.SetKeyName(word); break;
    case 6: assist.ChooseFunction(arg); break;
    case 7: assist.SetFunctionParams({word, word, word}); break;
    case 8: assist.ChooseClassic(arg); break;
    case 9: assist.SetClassicParam(word); break;
    case 10: assist.SetDelimiter(word); break;
    case 11: assist.ChooseOperator(arg); break;
    case 12: assist.SetValue(word); break;
    case 13: assist.SetLabel(word); break;
    case 14: assist.InsertBefore(); break;
    case 15: assist.InsertAfter(); break;
    case 16: assist.Delete(); break;
    case 17: assist.MoveUp(); break;
    case 18: assist.MoveDown(); break;
    default: assist.LoadFunctionFields(); break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    const uint32_t mode = data[0] & 7u;
    const size_t edits = data[1];
    if (size < 2 + 2 * edits) return 0;
    std::u16string text;
    for (size_t i = 2 + 2 * edits; i < size; ++i) text += static_cast<char16_t>(data[i]);

    qrl::TMacroAssist assist(mode, {u"Enter"});
    assist.Parse(text);
    assist.Select(0);
    for (size_t i = 0; i < edits; ++i) {
        apply(assist, data[2 + 2 * i], static_cast<int8_t>(data[3 + 2 * i]), text);
        check(assist.Selected() >= -1 && assist.Selected() < assist.Count());
        check(assist.Rows().size() == static_cast<size_t>(assist.Count()));
        // The panel's views are safe to read at any moment.
        (void)assist.TypeRow();
        (void)assist.CharRow();
        (void)assist.ClassicField();
        (void)assist.ValueText();
        (void)assist.KeyWarning(assist.Joined());
    }
    // The text the dialog shows parses back to as many tokens when nothing was faulty.
    const std::u16string joined = assist.Joined();
    qrl::TMacroAssist again(mode, {});
    again.Parse(joined);
    if (again.Tokens().ErrorCode == 0) check(again.Joined() == joined);
    return 0;
}
