// What the Macro Assistant does to a macro, apart from its window: the token list it shows, which
// panel a token has and what the panel's fields hold, and what each edit makes of the selected
// token. The dialog only moves these values in and out of its controls.
#pragma once

#include "kit/rowchange.h"
#include "macro/macro.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// The groups of controls that edit one kind of token; statements without fields have none.
enum class MacroPanel { None, Text, Character, EmulationKey, Function, Classic, Condition, Label };

MacroPanel macroPanelFor(int32_t type);
// Token types the type list offers at a level: 1 escapes, 3 also keys, any other all thirteen.
std::vector<int32_t> macroAllowedTypes(uint32_t mode);

// One of a function's or classic function's parameter fields.
struct MacroField {
    bool shown = false;
    bool number = false;  // the edit takes digits only
    std::u16string prompt;
    std::u16string text;
};

class TMacroAssist {
public:
    TMacroAssist(uint32_t mode, std::vector<std::u16string> keyNames);

    // A fresh parse of the text; the selection keeps its index if that is still a row.
    void Parse(std::u16string_view text);

    // The rows of the token list: type name, a tab, the token's text.
    std::vector<std::u16string> Rows() const;
    std::u16string Row(int index) const;
    // The rows an edit put into the list: change.inserted of them from change.first.
    std::vector<std::u16string> RowsOf(const TRowChange& change) const;
    // All tokens' texts, joined without a separator.
    std::u16string Joined() const;
    // Tokens shown in the list: all but the end token.
    int Count() const;

    int Selected() const { return selected_; }
    // Any index that is no row selects nothing.
    void Select(int index);
    const MacroToken* Current() const;

    const std::vector<int32_t>& AllowedTypes() const { return allowedTypes_; }
    const std::vector<std::u16string>& KeyNames() const { return keyNames_; }
    const Macro& Tokens() const { return macro_; }

    // ---- What the current token's panel shows (-1: no row) ----
    int TypeRow() const;
    MacroPanel Panel() const;
    int CharRow() const;  // the named character, or the "Hex value" row
    int ByteRow() const;
    // Empty when the name is one of the emulation's keys.
    std::u16string KeyWarning(std::u16string_view name) const;
    int FunctionRow() const;
    // Gives the token as many parameters as its function takes, and the three fields.
    std::array<MacroField, 3> LoadFunctionFields();
    int ClassicRow() const;
    MacroField ClassicField() const;
    std::u16string DelimiterText() const;
    int OperatorRow() const;
    std::u16string ValueText() const;

    // ---- Edits of the current token; each does nothing without one ----
    // The rows such an edit changes: the current token's own, or none without one.
    TRowChange CurrentRowChange() const;
    void ChooseType(int row);
    void SetText(std::u16string_view text);
    void ChooseCharRow(int row, int byteRow);
    void ChooseByte(int code);
    void SetKeyName(std::u16string_view name);
    void ChooseFunction(int row);
    void SetFunctionParams(const std::array<std::u16string, 3>& fields);
    void ChooseClassic(int row);
    void SetClassicParam(std::u16string_view text);
    void SetDelimiter(std::u16string_view text);
    void ChooseOperator(int row);
    void SetValue(std::u16string_view text);
    void SetLabel(std::u16string_view text);

    // ---- The list buttons; each leaves the token it acted on selected and returns the rows it
    // changed, so that a list of thousands of tokens changes by a row or two ----
    TRowChange InsertBefore();
    TRowChange InsertAfter();
    TRowChange Delete();
    TRowChange MoveUp();
    TRowChange MoveDown();

private:
    MacroToken* current();
    TRowChange insertAt(int index);
    TRowChange swapWithNext(int index);

    uint32_t mode_;
    std::vector<std::u16string> keyNames_;
    std::vector<int32_t> allowedTypes_;
    Macro macro_;
    int selected_ = -1;
};

}  // namespace qrl
