#include "keyboard/keymapdata.h"

#include "request/elementdef.h"
#include "request/hooks.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {

using AdvXMLParser::Element;

namespace {

std::u16string attr(const Element& node, std::u16string_view name) { return node.GetAttribute(name).GetText(); }

// Codes travel as signed decimal both ways, so a code with the top bit set comes back as it went.
uint32_t code(const Element& node, std::u16string_view name) { return static_cast<uint32_t>(wtoi(attr(node, name))); }
std::u16string codeText(uint32_t value) { return decimal(static_cast<int32_t>(value)); }

template <class Fn>
void forEachChild(const Element& item, std::u16string_view tag, Fn fn) {
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* child = item.GetChild(i).AsElement();
        if (child && iequals(child->GetName(), tag)) fn(*child);
    }
}

Element& addListItem(Element& data, std::u16string_view name) {
    Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(name);
    return item;
}

void writeKeyStrings(Element& data, std::u16string_view name, const std::vector<KeyString>& list) {
    Element& item = addListItem(data, name);
    for (const KeyString& entry : list) {
        Element& map = item.AddElement(u"Map");
        map.SetAttribute(u"pkey").SetText(codeText(entry.PKey));
        map.SetAttribute(u"string").SetText(entry.Text);
    }
}

}  // namespace

std::vector<std::u16string> NamesOf(const std::vector<KeyName>& keys) {
    std::vector<std::u16string> names;
    names.reserve(keys.size());
    for (const KeyName& key : keys) names.push_back(key.Name);
    return names;
}

TKeyData& KeyDataOf(TConfigSession& session) { return session.Part<TKeyData>(); }

const TKeyData& KeyDataOf(const TConfigSession& session) {
    static const TKeyData kEmpty;
    const TKeyData* keys = session.FindPart<TKeyData>();
    return keys ? *keys : kEmpty;
}

void readKeyNames(std::vector<KeyName>& list, const Element& item) {
    forEachChild(item, u"Key", [&](const Element& key) {
        list.push_back(KeyName{attr(key, u"Name"), wtoi(attr(key, u"Id")), wtoi(attr(key, u"Shift"))});
    });
}

void readKeyMap(std::vector<KeyMapEntry>& list, const Element& item) {
    forEachChild(item, u"Map", [&](const Element& map) { list.push_back(KeyMapEntry{code(map, u"pkey"), code(map, u"emkey")}); });
}

void readKeyStrings(std::vector<KeyString>& list, const Element& item) {
    forEachChild(item, u"Map", [&](const Element& map) { list.push_back(KeyString{code(map, u"pkey"), attr(map, u"string")}); });
}

void ReadKeyListItem(TConfigSession& session, const TElementDef& def, const Element& item) {
    if (iequals(def.name, u"PhysicalKeys"))
        readKeyNames(KeyDataOf(session).physicalKeys, item);
    else if (iequals(def.name, u"EmulationKeys"))
        readKeyNames(KeyDataOf(session).emulationKeys, item);
}

void ReadKeyMapItem(TConfigSession& session, const TElementDef&, const Element& item) {
    readKeyMap(KeyDataOf(session).keyMap, item);
}

void ReadKeyStringItem(TConfigSession& session, const TElementDef& def, const Element& item) {
    if (iequals(def.name, u"KeyStrings"))
        readKeyStrings(KeyDataOf(session).keyStrings, item);
    else if (iequals(def.name, u"GlobalKeyStrings"))
        readKeyStrings(KeyDataOf(session).globalKeyStrings, item);
}

void WriteKeyMapItem(const TConfigSession& session, const TElementDef&, Element& data) {
    // Answered under this name whatever the definition is called.
    Element& item = addListItem(data, u"KeyMap");
    for (const KeyMapEntry& entry : KeyDataOf(session).keyMap) {
        Element& map = item.AddElement(u"Map");
        map.SetAttribute(u"pkey").SetText(codeText(entry.PKey));
        map.SetAttribute(u"emkey").SetText(codeText(entry.EmKey));
    }
}

void WriteKeyStringItem(const TConfigSession& session, const TElementDef& def, Element& data) {
    if (iequals(def.name, u"KeyStrings"))
        writeKeyStrings(data, u"KeyStrings", KeyDataOf(session).keyStrings);
    else if (iequals(def.name, u"GlobalKeyStrings"))
        writeKeyStrings(data, u"GlobalKeyStrings", KeyDataOf(session).globalKeyStrings);
}

void InstallKeyDataHooks(TRequestHooks& hooks) {
    // Key lists travel one way: no writer.
    hooks.SetDataKind(u"keylist", {&ReadKeyListItem, nullptr});
    hooks.SetDataKind(u"keymaplist", {&ReadKeyMapItem, &WriteKeyMapItem});
    hooks.SetDataKind(u"keystringlist", {&ReadKeyStringItem, &WriteKeyStringItem});
}

}  // namespace qrl
