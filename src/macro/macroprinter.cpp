// Text of single tokens. After a parse Source is a slice of the input; this is for tokens the
// Assistant has changed, so a printed token need not look as the user first wrote it.
#include "macro/macro.h"

#include "macro/macrointernal.h"
#include "text/textutil.h"

#include <iterator>

namespace qrl {

void appendMacroHex(std::u16string& out, uint32_t value, int minDigits)
{
    std::u16string digits = hexUpper(value);
    if (std::ssize(digits) < minDigits)
        out.append(static_cast<size_t>(minDigits) - digits.size(), u'0');
    out += digits;
}

void appendMacroDecimal(std::u16string& out, int32_t value, int minDigits)
{
    long long wide = value;
    if (wide < 0) {
        out += u'-';
        wide = -wide;
    }
    std::u16string digits = decimal(wide);
    if (std::ssize(digits) < minDigits)
        out.append(static_cast<size_t>(minDigits) - digits.size(), u'0');
    out += digits;
}

namespace {

void appendQuoted(std::u16string& out, const std::u16string& text)
{
    out += u'"';
    out += text;
    out += u'"';
}

// Arguments follow the table row: a parameter the token lacks prints as 0 or as "".
std::u16string functionText(const MacroToken& token)
{
    const MacroFunctionRow* row = findMacroFunction(token.FunctionId);
    if (row == nullptr)
        return {};
    std::u16string out = u"{.";
    out += row->Name;
    out += u'(';
    for (uint32_t i = 0; i < row->ParamCount; ++i) {
        if (i > 0)
            out += u',';
        const MacroParam* param = i < token.Params.size() ? &token.Params[i] : nullptr;
        if (row->ParamTypes[i] == MacroParamKind::Number)
            appendMacroDecimal(out, param != nullptr ? param->Number : 0, 1);
        else
            appendQuoted(out, param != nullptr ? param->Text : std::u16string{});
    }
    out += u")}";
    return out;
}

std::u16string classicText(const MacroToken& token)
{
    const MacroClassicRow* row = findMacroClassic(token.FunctionId);
    if (row == nullptr)
        return {};
    std::u16string out = u"\\";
    out += row->Letter;
    const MacroParam* first = token.Params.empty() ? nullptr : &token.Params.front();
    if (row->Form == MacroClassicForm::Number) {
        appendMacroDecimal(out, first != nullptr ? first->Number : 0, 3);
    } else if (row->Form == MacroClassicForm::Delimited) {
        out += token.Delimiter;
        if (first != nullptr)
            out += first->Text;
        out += token.Delimiter;
    }
    return out;
}

std::u16string conditionText(const char16_t* head, const MacroToken& token)
{
    std::u16string out = head;
    out += token.Identifier;
    out += macroOperatorText(token.Operator);
    if (token.Value.Kind == MacroParamKind::Number)
        appendMacroDecimal(out, token.Value.Number, 1);
    else
        appendQuoted(out, token.Value.Text);
    out += u")}";
    return out;
}

std::u16string characterText(const MacroToken& token)
{
    if (!token.CharIsHex) {
        switch (token.CharCode) {
        case 8: return u"\\b";
        case 9: return u"\\t";
        case 10: return u"\\n";
        case 12: return u"\\f";
        case 13: return u"\\r";
        case 92: return u"\\\\";
        case 123: return u"\\{";
        case 125: return u"\\}";
        default: break;
        }
    }
    // Every other code, printable ones too, has only the \x form.
    std::u16string out = u"\\x";
    appendMacroHex(out, token.CharCode, 2);
    return out;
}

}  // namespace

void rebuildToken(MacroToken& token)
{
    switch (token.Type) {
    case MacroType::Text: token.Source = token.Text; break;
    case MacroType::Character: token.Source = characterText(token); break;
    case MacroType::EmulationKey: token.Source = u"{" + token.Name + u"}"; break;
    case MacroType::Function: token.Source = functionText(token); break;
    case MacroType::Classic: token.Source = classicText(token); break;
    case MacroType::If: token.Source = conditionText(u"{%if(", token); break;
    case MacroType::EndIf: token.Source = u"{%endif}"; break;
    case MacroType::While: token.Source = conditionText(u"{%while(", token); break;
    case MacroType::Wend: token.Source = u"{%wend}"; break;
    // A Goto prints Label; one read from text still holds its invented name there (its label is in Name).
    case MacroType::Goto: token.Source = u"{%goto :" + token.Label + u"}"; break;
    case MacroType::Break: token.Source = u"{%break}"; break;
    case MacroType::Exit: token.Source = u"{%exit}"; break;
    case MacroType::Label: token.Source = u"{:" + token.Label + u"}"; break;
    default: token.Source.clear(); break;
    }
}

std::u16string tokenTypeName(int32_t type)
{
    static constexpr const char16_t* kNames[] = {
        u"invalid token", u"Text", u"Character", u"Emulation key", u"Function", u"Function (classic)",
        u"If statement", u"EndIf statement", u"While statement", u"Wend statement", u"Goto statement",
        u"Break statement", u"Exit statement", u"Label", u"invalid token",
    };
    if (type < 0 || static_cast<size_t>(type) >= std::size(kNames))
        return u"invalid token";
    return kNames[type];
}

std::u16string tokenName(const MacroToken& token) { return tokenTypeName(token.Type); }

void setCharacter(MacroToken& token, uint32_t code)
{
    token.CharCode = static_cast<char16_t>(code);
    rebuildToken(token);
}

void setByte(MacroToken& token, uint32_t code)
{
    setCharacter(token, code >= 256 ? 0 : code);
}

void addParam(MacroToken& token, const MacroParam& param) { token.Params.push_back(param); }

}  // namespace qrl
