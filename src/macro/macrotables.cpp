// The fixed tables of the macro language. The order of each table is the order of the Assistant's lists.
#include "macro/macro.h"

#include "macro/macrointernal.h"

#include <iterator>

namespace qrl {
namespace {

constexpr uint32_t N = MacroParamKind::Number;
constexpr uint32_t S = MacroParamKind::String;

constexpr MacroFunctionRow kFunctions[] = {
    {u"ClearScreen", 4, 1, 0, {}, {}},
    {u"CaptureStart", 26, 1, 0, {}, {}},
    {u"CaptureStop", 27, 1, 0, {}, {}},
    {u"Close", 10, 1, 0, {}, {}},
    {u"CloseAll", 11, 1, 0, {}, {}},
    {u"ClosePrint", 56, 1, 0, {}, {}},
    {u"ConfigColours", 34, 1, 0, {}, {}},
    {u"ConfigComms", 41, 1, 0, {}, {}},
    {u"ConfigEm", 40, 1, 0, {}, {}},
    {u"ConfigFt", 42, 1, 0, {}, {}},
    {u"ConfigGeneral", 39, 1, 0, {}, {}},
    {u"ConfigHotspots", 37, 1, 0, {}, {}},
    {u"ConfigKeyboard", 35, 1, 0, {}, {}},
    {u"ConfigMenus", 38, 1, 0, {}, {}},
    {u"ConfigMouse", 36, 1, 1, {N}, {u"Mode"}},
    {u"Connect", 1, 1, 0, {}, {}},
    {u"Copy", 48, 1, 0, {}, {}},
    {u"Cut", 49, 1, 0, {}, {}},
    {u"CopyToFile", 52, 1, 0, {}, {}},
    {u"CursorToMouse", 19, 1, 1, {N}, {u"button"}},
    {u"Disconnect", 9, 1, 0, {}, {}},
    {u"EditClearAll", 43, 1, 0, {}, {}},
    {u"EditClearDisplay", 44, 1, 0, {}, {}},
    {u"EditClearHistory", 45, 1, 0, {}, {}},
    {u"EditFind", 53, 1, 0, {}, {}},
    {u"EditFindNext", 54, 1, 0, {}, {}},
    {u"EditSelectAll", 46, 1, 0, {}, {}},
    {u"EditSelectDisplay", 47, 1, 0, {}, {}},
    {u"EmBreak", 28, 1, 0, {}, {}},
    {u"EmReset", 29, 1, 0, {}, {}},
    {u"EmUnlockFlow", 30, 1, 0, {}, {}},
    {u"EnvVar", 7, 2, 1, {S}, {u"Environment variable"}},
    {u"FileNew", 57, 1, 0, {}, {}},
    {u"FileNewDefault", 58, 1, 0, {}, {}},
    {u"FileOpen", 59, 1, 0, {}, {}},
    {u"FileReceive", 33, 1, 0, {}, {}},
    {u"FileSave", 60, 1, 0, {}, {}},
    {u"FileSaveAs", 61, 1, 0, {}, {}},
    {u"FileSend", 32, 1, 0, {}, {}},
    {u"FileTransfer", 31, 1, 0, {}, {}},
    {u"Find", 2, 1, 1, {S}, {u"Text to find"}},
    {u"HelpAbout", 72, 1, 0, {}, {}},
    {u"HelpComms", 69, 1, 0, {}, {}},
    {u"HelpEm", 71, 1, 0, {}, {}},
    {u"HelpFt", 70, 1, 0, {}, {}},
    {u"HelpIndex", 68, 1, 0, {}, {}},
    {u"HotspotURL", 75, 1, 0, {}, {}},
    {u"MsgBox", 6, 1, 1, {S}, {u"Message"}},
    {u"NextSession", 74, 1, 0, {}, {}},
    {u"Paste", 50, 1, 0, {}, {}},
    {u"Pause", 5, 1, 1, {N}, {u"Period (tenths of a second)"}},
    {u"PlaySound", 14, 1, 1, {S}, {u"Sound file"}},
    {u"PrevSession", 73, 1, 0, {}, {}},
    {u"Print", 55, 1, 0, {}, {}},
    {u"PrinterSetup", 62, 1, 0, {}, {}},
    {u"Reload", 17, 1, 0, {}, {}},
    {u"Script", 16, 1, 1, {S}, {u"Script file"}},
    {u"ScrollDownLine", 20, 1, 0, {}, {}},
    {u"ScrollDownPage", 21, 1, 0, {}, {}},
    {u"ScrollBottom", 25, 1, 0, {}, {}},
    {u"ScrollTop", 24, 1, 0, {}, {}},
    {u"ScrollUpLine", 22, 1, 0, {}, {}},
    {u"ScrollUpPage", 23, 1, 0, {}, {}},
    {u"SetProp", 12, 1, 2, {S, S}, {u"Property name", u"Value"}},
    {u"ShellCmd", 15, 1, 2, {S, S}, {u"Command", u"Parameters"}},
    {u"Undo", 51, 1, 0, {}, {}},
    {u"URL", 13, 1, 1, {S}, {u"URL"}},
    {u"UserVar", 8, 2, 1, {S}, {u"Variable name"}},
    {u"ViewFullScreen", 63, 1, 0, {}, {}},
    {u"ViewPageTabs", 67, 1, 0, {}, {}},
    {u"ViewSessionPanel", 66, 1, 0, {}, {}},
    {u"ViewStatusBar", 65, 1, 0, {}, {}},
    {u"ViewToolbar", 64, 1, 0, {}, {}},
};
static_assert(std::size(kFunctions) == 73);

constexpr MacroClassicRow kClassics[] = {
    {u'p', 5, MacroClassicForm::Number, u"Pause", u"Period (tenths of a second)"},
    {u'e', 7, MacroClassicForm::Delimited, u"Environment variable", u"Environment variable"},
    {u'v', 8, MacroClassicForm::Delimited, u"User defined variable", u"Variable name"},
    {u'U', 13, MacroClassicForm::Delimited, u"URL", u"URL"},
    {u'S', 16, MacroClassicForm::Delimited, u"Run a script", u"Script file"},
    {u'E', 18, MacroClassicForm::Delimited, u"External command", u"Command"},
    {u'm', 19, MacroClassicForm::None, u"Cursor to mouse", u""},
};

constexpr MacroCharRow kNamedChars[] = {
    {10, u"\\n  (LF)"},
    {13, u"\\r  (CR)"},
    {9, u"\\t  (TAB)"},
    {8, u"\\b  (BS)"},
    {12, u"\\f  (FF)"},
    {92, u"\\\\  Backslash"},
    {123, u"\\{  Left brace"},
    {125, u"\\}  Right brace"},
    {0, u"Hex value"},
};

constexpr MacroOperatorRow kOperators[] = {
    {MacroOperator::Equal, u"="},
    {MacroOperator::NotEqual, u"<>"},
    {MacroOperator::Less, u"<"},
    {MacroOperator::Greater, u">"},
    {MacroOperator::GreaterEqual, u">="},
    {MacroOperator::LessEqual, u"<="},
};

constexpr const char16_t* kControlNames[33] = {
    u"NUL", u"SOH", u"STX", u"ETX", u"EOT", u"ENQ", u"ACK", u"BEL", u"BS",  u"HT",  u"LF",
    u"VT",  u"FF",  u"CR",  u"SO",  u"SI",  u"DLE", u"DC1", u"DC2", u"DC3", u"DC4", u"NAK",
    u"SYN", u"ETB", u"CAN", u"EM",  u"SUB", u"ESC", u"FS",  u"GS",  u"RS",  u"US",  u"Space",
};

}  // namespace

std::span<const MacroFunctionRow> macroFunctions() { return kFunctions; }
std::span<const MacroClassicRow> macroClassics() { return kClassics; }
std::span<const MacroCharRow> macroNamedChars() { return kNamedChars; }
std::span<const MacroOperatorRow> macroOperators() { return kOperators; }

const MacroFunctionRow* findMacroFunction(int32_t id)
{
    for (const MacroFunctionRow& row : kFunctions)
        if (static_cast<int64_t>(row.Id) == id)
            return &row;
    return nullptr;
}

const MacroClassicRow* findMacroClassic(int32_t id)
{
    for (const MacroClassicRow& row : kClassics)
        if (static_cast<int64_t>(row.Id) == id)
            return &row;
    return nullptr;
}

const MacroClassicRow* findMacroClassicLetter(char16_t letter)
{
    for (const MacroClassicRow& row : kClassics)
        if (row.Letter == letter)
            return &row;
    return nullptr;
}

std::u16string_view macroOperatorText(int32_t op)
{
    for (const MacroOperatorRow& row : kOperators)
        if (row.Value == op)
            return row.Text;
    return {};
}

std::u16string macroByteCaption(uint32_t code)
{
    std::u16string caption = u"\\x";
    appendMacroHex(caption, code, 2);
    if (code < std::size(kControlNames)) {
        caption += u"  ";
        caption += kControlNames[code];
    }
    return caption;
}

}  // namespace qrl
