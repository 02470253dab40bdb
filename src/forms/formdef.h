// The forms and groups that a request describes (its `Interface` and `Groups` children), read
// into plain definitions. Turning a definition into a dialog is the business of runform.h.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <list>
#include <string>
#include <string_view>

#include "request/nameindex.h"

namespace AdvXMLParser {
class Element;
}

namespace qrl {

class TConfigSession;
class TElementDef;

// Item kinds; the numbers travel in definitions and are kept exactly. 5, 9, 10 and 11 have no tag:
// only the built-in form uses them.
enum class ItemKind : std::int32_t {
    Button = 0,
    RadioButton = 1,
    CheckBox = 2,
    ComboBox = 3,
    Edit = 4,
    ReadOnlyEdit = 5,
    GroupBox = 6,
    Label = 7,
    ListBox = 8,
    TabControl = 9,
    Tree = 10,
    Sample = 11,
    Unknown = 12,
};

enum class FormAction : std::int32_t {
    Form = 0,
    ModuleSelect = 1,
    Connect = 2,
    OK = 3,
    Cancel = 4,
    Help = 5,
    None = 6,
};

struct TFormItem {
    ItemKind kind = ItemKind::Unknown;
    std::u16string name;
    std::u16string idText;
    std::u16string element;
    std::int32_t left = 0, top = 0, width = 0, height = 0;
    std::u16string fontName;
    std::int32_t fontSize = 0;
    std::u16string caption;
    std::int32_t controlId = -1;  // given when the template is first built, then kept
    FormAction action = FormAction::None;
    std::u16string actionParam;
    std::u16string value;
    bool inverted = false;
    bool listBound = false;  // the control's position, not its text, carries the value
};

struct TGroupDef {
    std::u16string name;  // dotted path: "Display.Colours"
    bool expanded = false;
    bool hidden = false;
    std::u16string helpFile;
    std::u16string helpId;
    std::u16string defaultHelpFile;
};

enum class TreeNodeKind : std::int32_t {
    UnknownRoot = 1,  // root of a module of no known type
    Root = 2,
    Element = 3,
    Group = 4,
};

// One item of the built-in form's tree. A tree item's parameter is its position in treeIndex.
struct TTreeNode {
    // Empty for the root; a group path; an element name. It points into the element's own name or
    // group, which stay put while the session lives.
    std::u16string_view key;
    void* treeItem = nullptr;  // the tree view's item handle once inserted
    TElementDef* element = nullptr;
    TGroupDef* group = nullptr;
    TreeNodeKind kind = TreeNodeKind::Root;
};

// Initial custom colours of the colour chooser (COLORREF: blue in the high byte).
inline constexpr std::array<std::uint32_t, 16> kDefaultCustomColours{
    0x000000, 0x7F0000, 0x007F00, 0x7F7F00, 0x00007F, 0x7F007F, 0x007F7F, 0xC0C0C0,
    0x7F7F7F, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

struct TFormDef {
    std::u16string name;
    std::u16string title;
    std::int32_t left = 0, top = 0, width = 0, height = 0;
    std::u16string fontName;
    std::int32_t fontSize = 0;
    std::deque<TFormItem> items;  // a deque: items keep their addresses as it grows
    TConfigSession* session = nullptr;
    bool usesTree = false;
    bool isChild = false;
    void* window = nullptr;  // the dialog (HWND) while it is open
    TElementDef* currentElement = nullptr;
    TTreeNode* currentNode = nullptr;
    void* currentTreeItem = nullptr;
    std::deque<TTreeNode> treeIndex;
    std::array<std::uint32_t, 16> customColours = kDefaultCustomColours;
    std::u16string validationMessage;
    bool hasHelp = false;
};

// The form engine's share of a request, kept in the session (session.Part<TFormStore>()).
struct TFormStore {
    std::list<TFormDef> forms;    // document order; the built-in form is appended when made
    std::deque<TGroupDef> groups;  // document order
    TNameIndex<TFormDef> formIndex;    // first form of a name wins
    TNameIndex<TGroupDef> groupIndex;  // first group of a name wins
};

// Tag and action words (case ignored); an unknown tag gives Unknown, an unknown action None.
ItemKind ItemKindFromTag(std::u16string_view tag);
FormAction ActionFromName(std::u16string_view name);
// The fixed control id of an action's button, or -1 for none.
std::int32_t ActionControlId(FormAction action);

// Readers of the request's `Interface` and `Groups`; called by the session's loader. They throw
// ECfgError for a wrong child, leaving what was read so far in the session.
void ReadInterface(TConfigSession& session, const AdvXMLParser::Element& node);
void ReadForm(TFormDef& form, const AdvXMLParser::Element& node);
void ReadItem(TFormDef& form, const AdvXMLParser::Element& node);
void ReadGroups(TConfigSession& session, const AdvXMLParser::Element& node);

// First form / group of that name, case ignored; null when none. No form answers to an empty name.
TFormDef* FindForm(const TConfigSession& session, std::u16string_view name);
TGroupDef* FindGroup(const TConfigSession& session, std::u16string_view name);
// Appends a form (named `name`, back-reference set) to the session's forms and its index.
TFormDef& AddForm(TConfigSession& session, std::u16string_view name);

}  // namespace qrl
