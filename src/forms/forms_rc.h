// Control and resource ids of the form engine: the module selection dialog (resource), the fixed
// controls of the built-in form (template made at run time) and the form's private messages.
// Included by the resource script as well: plain #defines, and the texts of the form engine by key
// in a part the resource compiler does not see.
#pragma once

// Module selection dialog
#define IDD_SELECTMODULE 101
#define IDC_MODULELIST 104

// Built-in form: value editors inside the frame
#define IDC_VALUE_EDIT 3000
#define IDC_VALUE_CHECK 3001
#define IDC_VALUE_COMBO 3002
#define IDC_VALUE_LABEL 3003
#define IDC_COLOUR_SAMPLE 3004
#define IDC_COLOUR_EDIT 3005
#define IDC_FONT_TEXT 3006
#define IDC_FONT_EDIT 3007
#define IDC_PRINTER_TEXT 3008
#define IDC_PRINTER_EDIT 3009
#define IDC_FILE_BROWSE 3010
#define IDC_DIR_BROWSE 3011
#define IDC_PRINTER_DEFAULT 3012
#define IDC_SPECIAL_EDIT 3013
#define IDC_LANG_ADD 3014
#define IDC_LANG_DELETE 3015
#define IDC_MACRO_ASSIST 3016
#define IDC_SSH_IMPORT 3017

// Built-in form: the search row above the tree and the reset button in the frame, made at start-up
// (they are no items of the form)
#define IDC_SEARCH_EDIT 3040
#define IDC_SEARCH_COUNT 3041
#define IDC_CUSTOMISED_ONLY 3042
#define IDC_RESET_VALUE 3043

// Built-in form: frame, tree, tab control; the action buttons
#define IDC_MODULE_SELECT 4900
#define IDC_CONNECT 4901
#define IDC_VALUE_FRAME 4996
#define IDC_TREE 4997
#define IDC_TABS 4998
#define IDC_FORM_HELP 9
#define IDC_FORM_OK 1
#define IDC_FORM_CANCEL 2

// First id given to form items that have neither an action id nor an id of their own.
#define FORM_FIRST_ITEM_ID 5000

// Dialog results beyond OK and Cancel
#define FORM_RESULT_MODULE 4900
#define FORM_RESULT_CONNECT 4901

// Messages a form posts to itself, so that they run after the notification that caused them.
#define WM_FORM_SHOWVALIDATION 1165
#define WM_FORM_SETFOCUS 1166

#ifndef RC_INVOKED
#include "locale/language.h"

namespace qrl::formtexts {

inline constexpr TTextKey kConfigure{u"run_cpp_482", u"Configure "};
inline constexpr TTextKey kCharacterSet{u"run_cpp_2351", u" character set"};
inline constexpr TTextKey kTandemColourMap{u"run_cpp_2361", u"Tandem colour map"};
inline constexpr TTextKey kIbm5250ColourMap{u"run_cpp_2368", u"IBM5250 colour map"};
inline constexpr TTextKey kAllFilesFilter{u"run_cpp_2486", u"|All files (*.*)|*.*|"};
inline constexpr TTextKey kBrowse{u"run_cpp_2503", u"Browse"};
// The key import's three texts share one key.
inline constexpr TTextKey kSelectSshKey{u"run_cpp_2548", u"Select an SSH key file"};
inline constexpr TTextKey kCouldNotCreate{u"run_cpp_2548", u"Could not create \""};
inline constexpr TTextKey kError{u"run_cpp_2548", u"Error"};
inline constexpr TTextKey kDeleteLanguage{u"run_cpp_2785", u"Delete language "};
inline constexpr TTextKey kConfirmDeleteLanguage{u"run_cpp_2786", u"Confirm Delete language"};
inline constexpr TTextKey kMapsModified{
    u"run_cpp_2735", u"Some character maps have been modified. These should be saved before creating a new language.\n"};
inline constexpr TTextKey kSaveMapsNow{u"run_cpp_2736", u"Save character maps now?"};
inline constexpr TTextKey kCouldNotAddLanguage{u"run_cpp_2761", u"Could not add language"};
inline constexpr TTextKey kCouldNotAddLanguageTitle{u"run_cpp_2762", u"Title"};  // the word stands as it is

// The search row and reset: texts of the built-in form's own controls, keyed by control.
inline constexpr TTextKey kSearchCue{u"formsearch_cpp_3040", u"Search settings (Ctrl+F)"};
inline constexpr TTextKey kCustomisedOnly{u"formsearch_cpp_3042", u"Customised only"};
inline constexpr TTextKey kReset{u"formsearch_cpp_3043", u"Reset"};
inline constexpr TTextKey kResetElement{u"formsearch_cpp_3044", u"Reset to default"};
inline constexpr TTextKey kResetGroup{u"formsearch_cpp_3045", u"Reset group to defaults..."};

}  // namespace qrl::formtexts
#endif
