#include "keyboard/keymapdata.h"

#include "kit/fieldrules.h"
#include "request/readnotes.h"
#include "request/elementdef.h"
#include "request/hooks.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {

using AdvXMLParser::Element;

namespace {

std::u16string attr(const Element& node, std::u16string_view name) { return node.GetAttribute(name).GetText(); }

// Numbers read as _wtoi reads them, so a bad one is 0; the notes hear of it.
int32_t number(const Element& node, std::u16string_view name, TReadNotes* notes) {
    const std::u16string text = attr(node, name);
    std::u16string message;
    if (notes && !CheckIntegerText(text, 0, 0, message))
        notes->Doubtful(node, std::u16string(name) + u": " + message + u", read as " + decimal(wtoi(text)));
    return wtoi(text);
}
// Codes travel as signed decimal both ways, so a code with the top bit set comes back as it went.
uint32_t code(const Element& node, std::u16string_view name, TReadNotes* notes) {
    return static_cast<uint32_t>(number(node, name, notes));
}
std::u16string codeText(uint32_t value) { return decimal(static_cast<int32_t>(value)); }

template <class Fn>
void forEachChild(const Element& item, std::u16string_view tag, TReadNotes* notes, Fn fn) {
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* child = item.GetChild(i).AsElement();
        if (!child) continue;
        if (iequals(child->GetName(), tag))
            fn(*child);
        else
            NoteDoubtful(notes, *child, u"<" + std::u16string(child->GetName()) + u"> is not <" + std::u16string(tag) +
                                            u">: the list passes it over");
    }
}

Element& addListItem(Element& data, std::u16string_view name) {
    Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(name);
    return item;
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

void readKeyNames(std::vector<KeyName>& list, const Element& item, TReadNotes* notes) {
    forEachChild(item, u"Key", notes, [&](const Element& key) {
        const int32_t id = number(key, u"Id", notes);
        list.push_back(KeyName{attr(key, u"Name"), id, number(key, u"Shift", notes)});
    });
}

void readKeyMap(std::vector<KeyMapEntry>& list, const Element& item, TReadNotes* notes) {
    forEachChild(item, u"Map", notes, [&](const Element& map) {
        const uint32_t pkey = code(map, u"pkey", notes);
        list.push_back(KeyMapEntry{pkey, code(map, u"emkey", notes)});
    });
}

void readKeyStrings(std::vector<KeyString>& list, const Element& item, TReadNotes* notes) {
    forEachChild(item, u"Map", notes, [&](const Element& map) {
        list.push_back(KeyString{code(map, u"pkey", notes), attr(map, u"string")});
    });
}

namespace {
void noteNoEffect(const TConfigSession& session, const TElementDef& def, const Element& item,
                  std::u16string_view names) {
    NoteDoubtful(session.notes, item,
                 u"list \"" + def.name + u"\" is read to no effect: only " + std::u16string(names) + u" are read");
}
}  // namespace

void ReadKeyListItem(TConfigSession& session, const TElementDef& def, const Element& item) {
    if (iequals(def.name, u"PhysicalKeys"))
        readKeyNames(KeyDataOf(session).physicalKeys, item, session.notes);
    else if (iequals(def.name, u"EmulationKeys"))
        readKeyNames(KeyDataOf(session).emulationKeys, item, session.notes);
    else
        noteNoEffect(session, def, item, u"PhysicalKeys and EmulationKeys");
}

void ReadKeyMapItem(TConfigSession& session, const TElementDef&, const Element& item) {
    readKeyMap(KeyDataOf(session).keyMap, item, session.notes);
}

void ReadKeyStringItem(TConfigSession& session, const TElementDef& def, const Element& item) {
    if (iequals(def.name, u"KeyStrings"))
        readKeyStrings(KeyDataOf(session).keyStrings, item, session.notes);
    else if (iequals(def.name, u"GlobalKeyStrings"))
        readKeyStrings(KeyDataOf(session).globalKeyStrings, item, session.notes);
    else
        noteNoEffect(session, def, item, u"KeyStrings and GlobalKeyStrings");
}

void writeKeyMap(Element& parent, const std::vector<KeyMapEntry>& list) {
    // Answered under this name whatever the definition is called.
    Element& item = addListItem(parent, u"KeyMap");
    for (const KeyMapEntry& entry : list) {
        Element& map = item.AddElement(u"Map");
        map.SetAttribute(u"pkey").SetText(codeText(entry.PKey));
        map.SetAttribute(u"emkey").SetText(codeText(entry.EmKey));
    }
}

void writeKeyStrings(Element& parent, std::u16string_view name, const std::vector<KeyString>& list) {
    Element& item = addListItem(parent, name);
    for (const KeyString& entry : list) {
        Element& map = item.AddElement(u"Map");
        map.SetAttribute(u"pkey").SetText(codeText(entry.PKey));
        map.SetAttribute(u"string").SetText(entry.Text);
    }
}

void WriteKeyMapItem(const TConfigSession& session, const TElementDef&, Element& data) {
    writeKeyMap(data, KeyDataOf(session).keyMap);
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
