#include "macro/macroassist.h"

#include "text/textutil.h"

#include <algorithm>
#include <utility>

namespace qrl {

namespace {

// The Assistant parses with its own tag, so its tokens can be told from others in a shared list.
constexpr uint32_t kAssistTag = 8;

template <class Table>
bool validRow(const Table& table, int row) {
    return row >= 0 && static_cast<size_t>(row) < table.size();
}

template <class Table, class Match>
int rowWhere(const Table& table, Match match) {
    const auto found = std::find_if(table.begin(), table.end(), match);
    return found == table.end() ? -1 : static_cast<int>(found - table.begin());
}

std::u16string numberOrText(const MacroParam& param, bool number) {
    return number ? decimal(param.Number) : param.Text;
}

}  // namespace

MacroPanel macroPanelFor(int32_t type) {
    switch (type) {
    case MacroType::Text: return MacroPanel::Text;
    case MacroType::Character: return MacroPanel::Character;
    case MacroType::EmulationKey: return MacroPanel::EmulationKey;
    case MacroType::Function: return MacroPanel::Function;
    case MacroType::Classic: return MacroPanel::Classic;
    case MacroType::If:
    case MacroType::While: return MacroPanel::Condition;
    case MacroType::Goto:
    case MacroType::Label: return MacroPanel::Label;
    default: return MacroPanel::None;
    }
}

std::vector<int32_t> macroAllowedTypes(uint32_t mode) {
    if (mode == 1) return {MacroType::Text, MacroType::Character};
    if (mode == 3) return {MacroType::Text, MacroType::Character, MacroType::EmulationKey};
    std::vector<int32_t> all;
    for (int32_t type = MacroType::Text; type <= MacroType::Label; ++type) all.push_back(type);
    return all;
}

TMacroAssist::TMacroAssist(uint32_t mode, std::vector<std::u16string> keyNames)
    : mode_(mode), keyNames_(std::move(keyNames)), allowedTypes_(macroAllowedTypes(mode)) {}

void TMacroAssist::Parse(std::u16string_view text) {
    clearMacro(macro_);
    // A text that does not parse keeps the tokens before its fault, and no error is shown.
    parseMacro(macro_, text, kAssistTag, mode_);
    Select(selected_);
}

int TMacroAssist::Count() const {
    // The end token, when the parse went through, is always the last: edits insert before it.
    const auto& tokens = macro_.Tokens;
    const bool ended = !tokens.empty() && tokens.back().Type == MacroType::End;
    return static_cast<int>(tokens.size()) - (ended ? 1 : 0);
}

std::vector<std::u16string> TMacroAssist::Rows() const {
    std::vector<std::u16string> rows;
    rows.reserve(static_cast<size_t>(std::max(0, Count())));
    for (int i = 0; i < Count(); ++i) rows.push_back(Row(i));
    return rows;
}

std::u16string TMacroAssist::Row(int index) const {
    const MacroToken& token = macro_.Tokens[static_cast<size_t>(index)];
    return tokenName(token) + u'\t' + token.Source;
}

std::vector<std::u16string> TMacroAssist::RowsOf(const TRowChange& change) const {
    std::vector<std::u16string> rows;
    for (size_t i = 0; i < change.inserted; ++i) rows.push_back(Row(static_cast<int>(change.first + i)));
    return rows;
}

TRowChange TMacroAssist::CurrentRowChange() const {
    if (selected_ < 0) return {};
    return {static_cast<size_t>(selected_), 1, 1};
}

std::u16string TMacroAssist::Joined() const {
    std::u16string text;
    for (int i = 0; i < Count(); ++i) text += macro_.Tokens[static_cast<size_t>(i)].Source;
    return text;
}

void TMacroAssist::Select(int index) { selected_ = index >= 0 && index < Count() ? index : -1; }

const MacroToken* TMacroAssist::Current() const {
    return selected_ < 0 ? nullptr : &macro_.Tokens[static_cast<size_t>(selected_)];
}

MacroToken* TMacroAssist::current() { return const_cast<MacroToken*>(std::as_const(*this).Current()); }

int TMacroAssist::TypeRow() const {
    const MacroToken* token = Current();
    return token ? rowWhere(allowedTypes_, [&](int32_t type) { return type == token->Type; }) : -1;
}

MacroPanel TMacroAssist::Panel() const {
    const MacroToken* token = Current();
    return token ? macroPanelFor(token->Type) : MacroPanel::None;
}

int TMacroAssist::CharRow() const {
    const MacroToken* token = Current();
    if (!token) return -1;
    const auto chars = macroNamedChars();
    const int named = rowWhere(chars, [&](const MacroCharRow& row) { return row.Code == token->CharCode; });
    // Code 0 is the "Hex value" row itself, so a code without a name lands there too.
    return named >= 0 ? named : static_cast<int>(chars.size()) - 1;
}

int TMacroAssist::ByteRow() const {
    const MacroToken* token = Current();
    return token && token->CharCode < 256 ? token->CharCode : -1;
}

std::u16string TMacroAssist::KeyWarning(std::u16string_view name) const {
    if (std::find(keyNames_.begin(), keyNames_.end(), name) != keyNames_.end()) return {};
    return u"warning: key '" + std::u16string(name) + u"' is not defined in this emulation";
}

int TMacroAssist::FunctionRow() const {
    const MacroToken* token = Current();
    if (!token) return -1;
    return rowWhere(macroFunctions(), [&](const MacroFunctionRow& row) {
        return static_cast<int32_t>(row.Id) == token->FunctionId;
    });
}

std::array<MacroField, 3> TMacroAssist::LoadFunctionFields() {
    std::array<MacroField, 3> fields;
    MacroToken* token = current();
    const MacroFunctionRow* row = token ? findMacroFunction(token->FunctionId) : nullptr;
    if (!row) return fields;
    token->Params.resize(row->ParamCount);
    for (uint32_t i = 0; i < row->ParamCount; ++i) {
        MacroField& field = fields[i];
        field.shown = true;
        field.number = row->ParamTypes[i] == MacroParamKind::Number;
        field.prompt = row->Prompts[i];
        field.text = numberOrText(token->Params[i], field.number);
    }
    return fields;
}

int TMacroAssist::ClassicRow() const {
    const MacroToken* token = Current();
    if (!token) return -1;
    return rowWhere(macroClassics(), [&](const MacroClassicRow& row) {
        return static_cast<int32_t>(row.Id) == token->FunctionId;
    });
}

MacroField TMacroAssist::ClassicField() const {
    MacroField field;
    const MacroToken* token = Current();
    const MacroClassicRow* row = token ? findMacroClassic(token->FunctionId) : nullptr;
    if (!row) return field;
    field.shown = row->Form != MacroClassicForm::None;
    field.number = row->Form == MacroClassicForm::Number;
    field.prompt = row->Prompt;
    if (!token->Params.empty()) field.text = numberOrText(token->Params.front(), field.number);
    return field;
}

std::u16string TMacroAssist::DelimiterText() const {
    const MacroToken* token = Current();
    return token ? std::u16string(1, token->Delimiter) : std::u16string();
}

int TMacroAssist::OperatorRow() const {
    const MacroToken* token = Current();
    if (!token) return -1;
    return rowWhere(macroOperators(), [&](const MacroOperatorRow& row) { return row.Value == token->Operator; });
}

std::u16string TMacroAssist::ValueText() const {
    const MacroToken* token = Current();
    if (!token) return {};
    if (token->Value.Kind == MacroParamKind::Number) return decimal(token->Value.Number);
    return u'"' + token->Value.Text + u'"';
}

void TMacroAssist::ChooseType(int row) {
    if (MacroToken* token = current()) {
        token->Type = validRow(allowedTypes_, row) ? allowedTypes_[static_cast<size_t>(row)] : MacroType::Text;
        rebuildToken(*token);
    }
}

void TMacroAssist::SetText(std::u16string_view text) {
    if (MacroToken* token = current()) {
        token->Text = text;
        token->Source = text;
    }
}

void TMacroAssist::ChooseCharRow(int row, int byteRow) {
    MacroToken* token = current();
    const auto chars = macroNamedChars();
    if (!token || !validRow(chars, row)) return;
    const char16_t code = chars[static_cast<size_t>(row)].Code;
    if (code != 0)
        setCharacter(*token, code);
    else
        setByte(*token, static_cast<uint32_t>(byteRow));  // no byte chosen reads as out of range: 0
}

void TMacroAssist::ChooseByte(int code) {
    MacroToken* token = current();
    if (token && code >= 0 && code < 256) setByte(*token, static_cast<uint32_t>(code));
}

void TMacroAssist::SetKeyName(std::u16string_view name) {
    if (MacroToken* token = current()) {
        token->Name = name;
        rebuildToken(*token);
    }
}

void TMacroAssist::ChooseFunction(int row) {
    MacroToken* token = current();
    const auto functions = macroFunctions();
    if (!token || !validRow(functions, row)) return;
    token->FunctionId = static_cast<int32_t>(functions[static_cast<size_t>(row)].Id);
    // Printed before the fields are loaded: parameters left from another row keep their form.
    rebuildToken(*token);
}

void TMacroAssist::SetFunctionParams(const std::array<std::u16string, 3>& fields) {
    MacroToken* token = current();
    const MacroFunctionRow* row = token ? findMacroFunction(token->FunctionId) : nullptr;
    if (!row) return;
    token->Params.clear();
    for (uint32_t i = 0; i < row->ParamCount; ++i) {
        if (row->ParamTypes[i] == MacroParamKind::Number)
            token->Params.push_back({MacroParamKind::Number, wtoi(fields[i]), {}});
        else
            token->Params.push_back({MacroParamKind::String, 0, fields[i]});
    }
    rebuildToken(*token);
}

void TMacroAssist::ChooseClassic(int row) {
    MacroToken* token = current();
    const auto classics = macroClassics();
    if (!token || !validRow(classics, row)) return;
    token->FunctionId = static_cast<int32_t>(classics[static_cast<size_t>(row)].Id);
    rebuildToken(*token);
}

void TMacroAssist::SetClassicParam(std::u16string_view text) {
    MacroToken* token = current();
    const MacroClassicRow* row = token ? findMacroClassic(token->FunctionId) : nullptr;
    if (!row) return;
    if (row->Form == MacroClassicForm::Number)
        token->Params = {{MacroParamKind::Number, wtoi(text), {}}};
    else
        token->Params = {{MacroParamKind::String, 0, std::u16string(text)}};
    rebuildToken(*token);
}

void TMacroAssist::SetDelimiter(std::u16string_view text) {
    if (MacroToken* token = current()) {
        const char16_t first = text.empty() ? 0 : text.front();
        token->Delimiter = first >= 33 && first <= 127 ? first : u'\'';
        rebuildToken(*token);
    }
}

void TMacroAssist::ChooseOperator(int row) {
    MacroToken* token = current();
    const auto operators = macroOperators();
    if (!token || !validRow(operators, row)) return;
    token->Operator = operators[static_cast<size_t>(row)].Value;
    rebuildToken(*token);
}

void TMacroAssist::SetValue(std::u16string_view text) {
    MacroToken* token = current();
    if (!token) return;
    const char16_t first = text.empty() ? 0 : text.front();
    if ((first >= u'0' && first <= u'9') || first == u'-')
        token->Value = {MacroParamKind::Number, wtoi(text), {}};
    else if (first == u'"')
        token->Value = {MacroParamKind::String, 0, std::u16string(text.substr(1))};  // a closing quote stays
    rebuildToken(*token);
}

void TMacroAssist::SetLabel(std::u16string_view text) {
    if (MacroToken* token = current()) {
        token->Label = text;
        rebuildToken(*token);
    }
}

TRowChange TMacroAssist::insertAt(int index) {
    MacroToken token;
    token.Type = MacroType::Text;
    macro_.Tokens.insert(macro_.Tokens.begin() + index, std::move(token));
    selected_ = index;
    return {static_cast<size_t>(index), 0, 1};
}

TRowChange TMacroAssist::InsertBefore() { return insertAt(selected_ < 0 ? 0 : selected_); }

TRowChange TMacroAssist::InsertAfter() { return insertAt(selected_ < 0 ? 0 : selected_ + 1); }

TRowChange TMacroAssist::Delete() {
    if (selected_ < 0 || selected_ >= Count()) return {};
    const TRowChange change{static_cast<size_t>(selected_), 1, 0};
    macro_.Tokens.erase(macro_.Tokens.begin() + selected_);
    selected_ = Count() == 0 ? -1 : std::min(selected_, Count() - 1);
    return change;
}

TRowChange TMacroAssist::swapWithNext(int index) {
    std::swap(macro_.Tokens[static_cast<size_t>(index)], macro_.Tokens[static_cast<size_t>(index + 1)]);
    return {static_cast<size_t>(index), 2, 2};
}

TRowChange TMacroAssist::MoveUp() {
    if (selected_ < 1 || selected_ >= Count()) return {};
    --selected_;
    return swapWithNext(selected_);
}

TRowChange TMacroAssist::MoveDown() {
    if (selected_ < 0 || selected_ + 1 >= Count()) return {};
    ++selected_;
    return swapWithNext(selected_ - 1);
}

}  // namespace qrl
