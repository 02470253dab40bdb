// The macro text language: a tokeniser, a parser into a token list, and a printer of single tokens.
// The Macro Assistant shows a macro as such a list and edits it piece by piece; nothing here runs a macro.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// Level bits chosen by the caller. 1, 3 and 7 are the values in use; 0 means no parsing at all.
enum MacroFlag : uint32_t {
    MacroEscapes = 1,   // backslash escapes
    MacroKeys = 2,      // { and }, and {name} as an emulation key
    MacroLanguage = 4,  // also functions, statements, labels and classic functions
};

// Classes of the lexer's present character.
namespace MacroClass {
enum : int32_t {
    End = 0,      // input ran out; Char is 0
    Plain = 1,
    Escaped = 2,  // a two-character escape
    Hex = 3,      // a \x escape
    Open = 4,     // {
    Close = 5,    // }
    Classic = 6,  // a backslash and a classic function letter, at the full level
};
}

// Token types; the numbers are part of the Assistant's type list.
namespace MacroType {
enum : int32_t {
    Invalid = 0,
    Text = 1,
    Character = 2,
    EmulationKey = 3,
    Function = 4,
    Classic = 5,
    If = 6,
    EndIf = 7,
    While = 8,
    Wend = 9,
    Goto = 10,
    Break = 11,
    Exit = 12,
    Label = 13,
    End = 14,  // marks the end of a list that parsed without error
};
}

namespace MacroError {
enum : int32_t {
    None = 0,
    Syntax = 730,
    UnknownFunction = 740,
    WrongArguments = 750,
    UnknownStatement = 760,
    BadIdentifier = 770,    // the identifier of a condition is not "r"
    ValueNotNumber = 780,   // the value of a condition is a string
};
}

// Kinds of a parameter, and the parameter types of the function table.
namespace MacroParamKind {
enum : int32_t { None = 0, Number = 1, String = 2 };
}

// Operators of a condition, in the numbering of MacroToken::Operator.
namespace MacroOperator {
enum : int32_t { Equal = 0, NotEqual = 1, Less = 2, Greater = 3, GreaterEqual = 4, LessEqual = 5 };
}

struct MacroParam {
    int32_t Kind = MacroParamKind::None;
    int32_t Number = 0;
    std::u16string Text;
};

struct MacroToken {
    std::vector<MacroParam> Params;
    std::u16string Identifier = u"r";
    int32_t Operator = MacroOperator::Equal;
    MacroParam Value{MacroParamKind::Number, 0, {}};
    int32_t Type = MacroType::Invalid;
    std::u16string Label;   // a Label's name, and what a Goto prints
    std::u16string Text;    // a Text token's text, or "{name}" of an emulation key
    char16_t CharCode = 10;
    bool CharIsHex = false;
    std::u16string Source;  // the token as written, or as rebuilt
    std::u16string Name;    // emulation key or function name; a parsed Goto's label
    uint32_t StartPos = 0;
    uint32_t EndPos = 0;
    uint32_t Tag = 0;
    int32_t FunctionId = 1;
    char16_t Delimiter = u'\'';
};

struct Macro {
    std::vector<MacroToken> Tokens;
    uint32_t Flags = 0;
    uint32_t ErrorPos = 0;
    int32_t ErrorCode = MacroError::None;
    std::u16string ErrorText;
    uint32_t NextName = 0;  // counter for the invented names "_0", "_1", ...
};

// Reads a macro text one (possibly escaped) character at a time.
class MacroLexer {
public:
    MacroLexer(std::u16string input, uint32_t flags);

    void step();
    bool atEnd() const { return Class == MacroClass::End; }

    std::u16string Input;
    uint32_t Pos = 0;       // next unread character
    bool AtStart = true;    // set on creation and after each closing }; nothing clears it
    int32_t Class = MacroClass::End;
    char16_t Char = 0;      // value after escape processing
    uint32_t Start = 0;     // where the present character starts
    uint32_t End = 0;       // its last input character
    bool Quoted = false;    // cleared on each step and never set
    uint32_t Flags = 0;
};

// Appends the tokens of `text` to the macro. On a fault the error fields describe it, the faulty token is
// dropped and no end token is added; callers that want a fresh list call clearMacro first.
void parseMacro(Macro& macro, std::u16string_view text, uint32_t tag, uint32_t flags);
// Clears ErrorCode and ErrorPos and removes all tokens.
void clearMacro(Macro& macro);

// Sets Source from the token's fields; used for tokens the Assistant has changed.
void rebuildToken(MacroToken& token);
std::u16string tokenName(const MacroToken& token);
std::u16string tokenTypeName(int32_t type);
void setCharacter(MacroToken& token, uint32_t code);
// As setCharacter, but a code of 256 or more becomes 0.
void setByte(MacroToken& token, uint32_t code);
void addParam(MacroToken& token, const MacroParam& param);

// ---- Tables shared with the Macro Assistant ----

struct MacroFunctionRow {
    const char16_t* Name;
    uint32_t Id;
    uint32_t Kind;        // 2 for "EnvVar" and "UserVar", 1 otherwise; carried, not read here
    uint32_t ParamCount;  // 0 to 3
    uint32_t ParamTypes[3];
    const char16_t* Prompts[3];
};

namespace MacroClassicForm {
enum : uint32_t { None = 0, Number = 1, Delimited = 2 };
}

struct MacroClassicRow {
    char16_t Letter;
    uint32_t Id;
    uint32_t Form;  // MacroClassicForm
    const char16_t* Name;
    const char16_t* Prompt;
};

struct MacroCharRow {
    char16_t Code;  // 0 marks the "Hex value" row, which ends the named characters
    const char16_t* Caption;
};

struct MacroOperatorRow {
    int32_t Value;
    const char16_t* Text;
};

// The 73 functions, in the order of the Assistant's function list.
std::span<const MacroFunctionRow> macroFunctions();
// The seven classic functions, in the order of the classic list.
std::span<const MacroClassicRow> macroClassics();
std::span<const MacroCharRow> macroNamedChars();
std::span<const MacroOperatorRow> macroOperators();

const MacroFunctionRow* findMacroFunction(int32_t id);
const MacroClassicRow* findMacroClassic(int32_t id);
const MacroClassicRow* findMacroClassicLetter(char16_t letter);
// Text of an operator value, or empty for a value out of range.
std::u16string_view macroOperatorText(int32_t op);
// A row of the Assistant's byte list: "\x41", or "\x0D  CR" for codes below 33.
std::u16string macroByteCaption(uint32_t code);

}  // namespace qrl
