#include "request/session.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "locale/language.h"
#include "platform/platform.h"
#include "request/hooks.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace qrl {

using AdvXMLParser::Element;

namespace {

std::u16string attr(const Element& node, std::u16string_view name) {
    return node.GetAttribute(name).GetText();
}

bool isTag(const Element& node, std::u16string_view tag) { return iequals(node.GetName(), tag); }

// The attributes of `Element` that a definition reads, taken in one pass over the node in the order
// of the text; the first attribute of a name counts, as everywhere in a request. One reader serves a
// whole DTD, so its texts reuse their room from element to element.
struct TElementAttributes {
    std::u16string name, group, type, strings, values, min, max, defaultValue, descr, maxLength, hidden, rdonly,
        password, macroAssist, allowEmKeys, cEncoded, helpFile, helpId;

    void Read(const Element& node) {
        static constexpr std::pair<std::u16string_view, std::u16string TElementAttributes::*> kFields[] = {
            {u"Name", &TElementAttributes::name},
            {u"group", &TElementAttributes::group},
            {u"Type", &TElementAttributes::type},
            {u"strings", &TElementAttributes::strings},
            {u"values", &TElementAttributes::values},
            {u"Min", &TElementAttributes::min},
            {u"Max", &TElementAttributes::max},
            {u"Default", &TElementAttributes::defaultValue},
            {u"descr", &TElementAttributes::descr},
            {u"max_length", &TElementAttributes::maxLength},
            {u"hidden", &TElementAttributes::hidden},
            {u"rdonly", &TElementAttributes::rdonly},
            {u"password", &TElementAttributes::password},
            {u"macro_assist", &TElementAttributes::macroAssist},
            {u"allow_emkeys", &TElementAttributes::allowEmKeys},
            {u"cencoded", &TElementAttributes::cEncoded},
            {u"help_file", &TElementAttributes::helpFile},
            {u"help_id", &TElementAttributes::helpId},
        };
        static_assert(std::size(kFields) <= 32);
        for (const auto& field : kFields) (this->*field.second).clear();
        uint32_t seen = 0;
        for (std::size_t i = 0; i < node.GetAttributeCount(); ++i) {
            const AdvXMLParser::Attribute& attribute = node.GetAttributeAt(i);
            const std::u16string_view attributeName = attribute.GetName();
            for (std::size_t f = 0; f < std::size(kFields); ++f) {
                if (kFields[f].first != attributeName) continue;
                if (!(seen & (1u << f))) attribute.AssignText(this->*kFields[f].second);
                seen |= 1u << f;
                break;
            }
        }
    }
};

// Translates the items of a `strings` list under key_1, key_2, ... into `out`. A translation is
// split at commas again, so one that holds a comma gives several items and an empty one none.
// Returns the number of items before translation.
std::size_t translateStrings(std::u16string& key, std::u16string_view strings, std::vector<std::u16string>& out) {
    std::size_t count = 0;
    ForEachCommaItem(strings, [&](std::u16string_view) { ++count; });
    out.reserve(count);
    const std::size_t keyLength = key.size();
    long long number = 0;
    ForEachCommaItem(strings, [&](std::u16string_view item) {
        key.resize(keyLength);
        key += u'_';
        key += decimal(++number);
        std::u16string text = Translate(key, item);
        if (!text.empty() && text.find(u',') == std::u16string::npos) {
            out.push_back(std::move(text));
        } else {
            ForEachCommaItem(text, [&](std::u16string_view piece) { out.emplace_back(piece); });
        }
    });
    key.resize(keyLength);
    return count;
}

}  // namespace

ECfgError ECfgError::WrongChild(std::u16string_view want, std::u16string_view found) {
    std::u16string text = u"expected tag <";
    text += want;
    text += u">, found <";
    text += found;
    text += u"> instead";
    return ECfgError(std::move(text));
}

TConfigSession::TConfigSession() : hooks(&RequestHooks()) {}
TConfigSession::~TConfigSession() = default;

TElementDef* TConfigSession::FindElement(std::u16string_view name) {
    const std::size_t position = elementIndex_.Find(elements, name);
    return position == elementIndex_.npos ? nullptr : &elements[position];
}

const TElementDef* TConfigSession::FindElement(std::u16string_view name) const {
    const std::size_t position = elementIndex_.Find(elements, name);
    return position == elementIndex_.npos ? nullptr : &elements[position];
}

TElementDef* TConfigSession::FindElement(std::u16string_view name, std::size_t& cursor) {
    const std::size_t position = elementIndex_.FindFrom(elements, name, cursor);
    return position == elementIndex_.npos ? nullptr : &elements[position];
}

const TDataValue* TConfigSession::FindDataValue(std::u16string_view name) const {
    const std::size_t position = dataIndex_.Find(dataValues, name);
    return position == dataIndex_.npos ? nullptr : &dataValues[position];
}

const TDataValue* TConfigSession::FindDataValue(std::u16string_view name, std::size_t& cursor) const {
    const std::size_t position = dataIndex_.FindFrom(dataValues, name, cursor);
    return position == dataIndex_.npos ? nullptr : &dataValues[position];
}

TElementDef& TConfigSession::AddElement(std::u16string_view name) {
    TElementDef& element = elements.emplace_back();
    element.name.Share(names_, name);
    return element;
}

std::unique_ptr<AdvXMLParser::Document> ParseRequestText(std::u16string_view text) {
    try {
        AdvXMLParser::Parser parser;
        return parser.Parse(text.data(), text.size());
    } catch (const AdvXMLParser::ParsingException& error) {
        throw ECfgError(u"XML parsing error : line " + decimal(error.GetLine()));
    }
}

const Element& RequestRoot(const AdvXMLParser::Document& document) {
    const Element* root = document.Root();
    return root ? *root : AdvXMLParser::EmptyElement();
}

void TConfigSession::LoadRequestText(std::u16string_view text) { LoadRequest(RequestRoot(*ParseRequestText(text))); }

void TConfigSession::LoadRequest(const Element& root) {
    if (!isTag(root, u"Config")) Refuse(notes, root, ECfgError(u"root node must be <Config>"));
    moduleType = attr(root, u"ModuleType");
    iniFile = attr(root, u"IniFile");
    langId = attr(root, u"LangId");
    langDir = attr(root, u"LangDir");
    InitLanguage(langId, langDir);

    for (std::size_t i = 0; i < root.GetChildCount(); ++i)
        if (const Element* child = root.GetChild(i).AsElement()) ReadChild(*child);

    AskAuthDirectory();
}

void TConfigSession::ReadChild(const Element& child) {
    if (isTag(child, u"DTD")) {
        ReadElements(child);
    } else if (isTag(child, u"Groups")) {
        if (hooks->groupsReader) hooks->groupsReader(*this, child);
    } else if (isTag(child, u"Interface")) {
        if (hooks->interfaceReader) hooks->interfaceReader(*this, child);
    } else if (isTag(child, u"Data")) {
        ReadData(child);
    } else if (isTag(child, u"ModuleList")) {
        ReadModuleList(child);
    } else if (isTag(child, u"Help")) {
        ReadHelp(child);
    } else if (isTag(child, u"Link")) {
        ReadLink(child);
    }
    // Any other child is someone else's business and is passed over.
}

void TConfigSession::ReadElements(const Element& dtd) {
    std::u16string key;  // one buffer for every element's language key
    std::u16string translated;
    TElementAttributes read;
    const bool translating = !languageTable().texts.empty();
    for (std::size_t i = 0; i < dtd.GetChildCount(); ++i) {
        const Element* node = dtd.GetChild(i).AsElement();
        if (!node) continue;
        if (!isTag(*node, u"Element")) Refuse(notes, *node, ECfgError::WrongChild(u"Element", node->GetName()));

        TElementDef& element = elements.emplace_back();
        NotePlaced(notes, &element, *node);
        read.Read(*node);
        element.name.Share(names_, read.name);
        element.group.Share(texts_, read.group);
        // A key names a translation: with no language loaded there is none to look up.
        key.clear();
        if (translating) key.append(helpFile).append(u".").append(read.group).append(u".").append(read.name);

        if (translateStrings(key, read.strings, element.strings) > 0) key += u"_0";

        element.min = wtoi(read.min);
        element.max = wtoi(read.max);
        element.defaultValue.Share(texts_, read.defaultValue);
        element.value = read.defaultValue;
        element.description.Share(texts_, TranslateView(key, read.descr, translated));
        element.maxLength = wtoi(read.maxLength);
        element.hidden = read.hidden == u"1";
        element.readOnly = wtoi(read.rdonly) != 0;
        element.password = wtoi(read.password) != 0;
        element.macroAssist = wtoi(read.macroAssist) != 0;
        element.allowEmKeys = wtoi(read.allowEmKeys) != 0;
        element.cEncoded = wtoi(read.cEncoded) != 0;

        if (element.name.empty()) Refuse(notes, *node, ECfgError(u"tag <Element> : Name not specified"));

        element.type = ParseElementType(read.type);
        if (element.type == ElementType::Undefined && !iequals(read.type, u"Undefined"))
            NoteDoubtful(notes, *node, u"unknown element type \"" + read.type + u"\": the module shows \"???\"");
        element.helpFile.Share(texts_, read.helpFile);
        element.helpId.Share(texts_, read.helpId);
        element.defaultHelpFile.Share(texts_, helpFile);

        // Each shown text stores itself for a stringset, its position otherwise, until `values` says.
        element.values.reserve(element.strings.size());
        for (std::size_t n = 0; n < element.strings.size(); ++n) {
            if (element.type == ElementType::StringSet)
                element.values.push_back(element.strings[n]);
            else
                element.values.push_back(decimal(static_cast<long long>(n)));
        }
        if (element.type == ElementType::FilePath) {
            element.fileFilter.Share(texts_, read.values);
        } else {
            std::size_t n = 0;
            ForEachCommaItem(read.values, [&](std::u16string_view item) {
                if (n < element.values.size())
                    element.values[n] = item;
                else
                    element.values.emplace_back(item);
                ++n;
            });
        }
    }
}

namespace {

// What each list type of `Data` sets when it comes, and whether a reply carries it back. Key lists
// and attribute names travel one way.
struct TListRule {
    ElementType type;
    bool TConfigSession::*present;
    bool written;
};
constexpr TListRule kListRules[] = {
    {ElementType::KeyList, nullptr, false},
    {ElementType::KeyMapList, &TConfigSession::keyDataPresent, true},
    {ElementType::KeyStringList, &TConfigSession::keyDataPresent, true},
    {ElementType::ColourSchemeList, &TConfigSession::attrDataPresent, true},
    {ElementType::AttrNames, &TConfigSession::attrDataPresent, false},
    {ElementType::Hotspots, &TConfigSession::hotspotDataPresent, true},
    {ElementType::MouseMap, &TConfigSession::mouseDataPresent, true},
};

const TListRule* listRule(ElementType type) {
    for (const TListRule& rule : kListRules)
        if (rule.type == type) return &rule;
    return nullptr;
}

}  // namespace

bool* ListPresenceFlag(TConfigSession& session, ElementType type) {
    const TListRule* rule = listRule(type);
    return rule && rule->present ? &(session.*(rule->present)) : nullptr;
}

bool ListIsWritten(const TConfigSession& session, ElementType type) {
    const TListRule* rule = listRule(type);
    return rule && rule->written && session.*(rule->present);
}

void TConfigSession::ReadData(const Element& data) {
    std::size_t elementCursor = 0;
    std::u16string name, value;  // reused from item to item
    for (std::size_t i = 0; i < data.GetChildCount(); ++i) {
        const Element* item = data.GetChild(i).AsElement();
        if (!item) continue;
        if (!isTag(*item, u"Item")) Refuse(notes, *item, ECfgError::WrongChild(u"Item", item->GetName()));

        item->GetAttribute(u"Element").AssignText(name);
        const TElementDef* def = FindElement(name, elementCursor);
        if (!def || !IsListType(def->type)) {
            item->GetAttribute(u"Value").AssignText(value);
            TDataValue& sent = dataValues.emplace_back();
            sent.name.Share(texts_, name);
            sent.value.Share(texts_, value);
            NotePlaced(notes, &sent, *item);
            continue;
        }
        if (bool* present = ListPresenceFlag(*this, def->type)) *present = true;
        if (const auto read = hooks->DataKind(def->type).read) read(*this, *def, *item);
    }
}

void TConfigSession::ReadModuleList(const Element& node) {
    moduleLists.emplace_back();
    moduleLists.back().current = attr(node, u"Current");
    moduleLists.back().type = attr(node, u"Type");
    connected = attr(node, u"Connected") == u"1";
    for (std::size_t i = 0; i < node.GetChildCount(); ++i) {
        const Element* module = node.GetChild(i).AsElement();
        if (!module) continue;
        if (!isTag(*module, u"Module")) Refuse(notes, *module, ECfgError::WrongChild(u"Module", module->GetName()));
        moduleLists.back().modules.push_back(
            TModuleEntry{attr(*module, u"Name"), attr(*module, u"Description")});
    }
}

void TConfigSession::ReadHelp(const Element& node) {
    const auto replaceIfSet = [&](std::u16string& field, std::u16string_view name) {
        std::u16string text = attr(node, name);
        if (!text.empty()) field = std::move(text);
    };
    replaceIfSet(helpBaseFile, u"base_file");
    replaceIfSet(helpFile, u"help_file");
    replaceIfSet(helpTopic, u"topic_name");
}

void TConfigSession::ReadLink(const Element& node) {
    ReadLinkAttributes(link, attr(node, u"type"), attr(node, u"value"), attr(node, u"msgid"));
}

void TConfigSession::AskAuthDirectory() {
    std::u16string directory = link.AuthDirectory();
    if (directory.empty()) return;  // no link, or the host has none: both stay empty
    authFileDirectory = std::move(directory);
    ReadAuthFiles();
}

void TConfigSession::ReadAuthFiles() {
    authFiles.clear();
    if (authFileDirectory.empty()) return;
    std::u16string pattern = authFileDirectory;
    if (pattern.back() != u'\\' && pattern.back() != u'/') pattern.push_back(u'\\');
    pattern.push_back(u'*');
    authFiles = platform::listPlainFiles(pattern);
    std::sort(authFiles.begin(), authFiles.end());
}

namespace {

// Copies `text` over `value` in the room it has when that is enough, as the copy of one string to
// another does; the general assignment from a view costs as much as the rest of applying a value.
void copyValue(std::u16string_view text, std::u16string& value) {
    if (text.size() > value.capacity()) {
        value.assign(text);
        return;
    }
    value.resize(text.size());
    std::char_traits<char16_t>::copy(value.data(), text.data(), text.size());
}

}  // namespace

void TConfigSession::ApplyDataValues() {
    std::size_t cursor = 0;
    for (const TDataValue& data : dataValues) {
        TElementDef* element = FindElement(data.name, cursor);
        if (!element) element = &AddElement(data.name);  // a new element is of type text
        copyValue(data.value, element->value);
    }
}

}  // namespace qrl
