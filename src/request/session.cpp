#include "request/session.h"

#include <algorithm>

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

// Translates a `strings` list item by item under key_1, key_2, ... and joins it again with ",".
// `count` receives the number of items.
std::u16string translateStrings(const std::u16string& key, std::u16string_view strings, std::size_t& count) {
    const std::vector<std::u16string_view> items = SplitCommaList(strings);
    count = items.size();
    std::u16string joined;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) joined.push_back(u',');
        joined += Translate(key + u"_" + decimal(static_cast<long long>(i + 1)), items[i]);
    }
    return joined;
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
    element.name = name;
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
    for (std::size_t i = 0; i < dtd.GetChildCount(); ++i) {
        const Element* node = dtd.GetChild(i).AsElement();
        if (!node) continue;
        if (!isTag(*node, u"Element")) Refuse(notes, *node, ECfgError::WrongChild(u"Element", node->GetName()));

        TElementDef& element = elements.emplace_back();
        NotePlaced(notes, &element, *node);
        element.name = attr(*node, u"Name");
        element.group = attr(*node, u"group");
        std::u16string key = helpFile + u"." + element.group + u"." + element.name;

        const std::u16string typeWord = attr(*node, u"Type");
        std::size_t stringCount = 0;
        const std::u16string strings = translateStrings(key, attr(*node, u"strings"), stringCount);
        if (stringCount > 0) key += u"_0";
        const std::u16string valuesText = attr(*node, u"values");

        element.min = wtoi(attr(*node, u"Min"));
        element.max = wtoi(attr(*node, u"Max"));
        element.defaultValue = attr(*node, u"Default");
        element.value = element.defaultValue;
        element.description = Translate(key, attr(*node, u"descr"));
        element.maxLength = wtoi(attr(*node, u"max_length"));
        element.hidden = attr(*node, u"hidden") == u"1";
        element.readOnly = wtoi(attr(*node, u"rdonly")) != 0;
        element.password = wtoi(attr(*node, u"password")) != 0;
        element.macroAssist = wtoi(attr(*node, u"macro_assist")) != 0;
        element.allowEmKeys = wtoi(attr(*node, u"allow_emkeys")) != 0;
        element.cEncoded = wtoi(attr(*node, u"cencoded")) != 0;

        if (element.name.empty()) Refuse(notes, *node, ECfgError(u"tag <Element> : Name not specified"));

        element.type = ParseElementType(typeWord);
        if (element.type == ElementType::Undefined && !iequals(typeWord, u"Undefined"))
            NoteDoubtful(notes, *node, u"unknown element type \"" + typeWord + u"\": the module shows \"???\"");
        element.helpFile = attr(*node, u"help_file");
        element.helpId = attr(*node, u"help_id");
        element.defaultHelpFile = helpFile;

        const std::vector<std::u16string_view> items = SplitCommaList(strings);
        for (std::size_t n = 0; n < items.size(); ++n) {
            element.strings.emplace_back(items[n]);
            if (element.type == ElementType::StringSet)
                element.values.emplace_back(items[n]);
            else
                element.values.push_back(decimal(static_cast<long long>(n)));
        }
        if (element.type == ElementType::FilePath) {
            element.fileFilter = valuesText;
        } else {
            const std::vector<std::u16string_view> stored = SplitCommaList(valuesText);
            for (std::size_t n = 0; n < stored.size(); ++n) {
                if (n < element.values.size())
                    element.values[n] = stored[n];
                else
                    element.values.emplace_back(stored[n]);
            }
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
    for (std::size_t i = 0; i < data.GetChildCount(); ++i) {
        const Element* item = data.GetChild(i).AsElement();
        if (!item) continue;
        if (!isTag(*item, u"Item")) Refuse(notes, *item, ECfgError::WrongChild(u"Item", item->GetName()));

        std::u16string name = attr(*item, u"Element");
        const TElementDef* def = FindElement(name, elementCursor);
        if (!def || !IsListType(def->type)) {
            dataValues.push_back(TDataValue{std::move(name), attr(*item, u"Value")});
            NotePlaced(notes, &dataValues.back(), *item);
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

void TConfigSession::ApplyDataValues() {
    std::size_t cursor = 0;
    for (const TDataValue& data : dataValues) {
        TElementDef* element = FindElement(data.name, cursor);
        if (!element) element = &AddElement(data.name);  // a new element is of type text
        element->value = data.value;
    }
}

}  // namespace qrl
