#include "keyboard/keymapfile.h"

#include "locale/language.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

#include <algorithm>
#include <unordered_set>

using AdvXMLParser::Element;

namespace qrl {

namespace {

constexpr std::u16string_view kRootName = u"KeyMapFile";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

TKeyMapFileRead Failure(std::u16string reason, std::pair<int, int> where) {
    TKeyMapFileRead read;
    read.error = std::move(reason);
    // The XML reader places a fault at the very end of a text after its last line break in column
    // 0; the user counts from 1.
    read.line = std::max(1, where.first);
    read.column = std::max(1, where.second);
    return read;
}

// Line and column of a 16-bit offset in the text, both from 1.
std::pair<int, int> PositionOf(std::u16string_view text, std::size_t offset) {
    int line = 1, column = 1;
    for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == u'\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    return {line, column};
}

void ReadItem(TKeyMapFile& file, const Element& item) {
    const std::u16string name = item.GetAttribute(u"Element").GetText();
    if (iequals(name, u"KeyMap"))
        readKeyMap(file.keyMap, item);
    else if (iequals(name, u"KeyStrings"))
        readKeyStrings(file.keyStrings, item);
    else if (iequals(name, u"GlobalKeyStrings"))
        readKeyStrings(file.globalKeyStrings, item);
}

template <typename Entry>
void RemoveCodes(std::vector<Entry>& list, const std::unordered_set<uint32_t>& codes) {
    list.erase(std::remove_if(list.begin(), list.end(), [&](const Entry& e) { return codes.count(e.PKey) != 0; }),
               list.end());
}

template <typename Entry>
void Append(std::vector<Entry>& list, const std::vector<Entry>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

std::string WriteKeyMapFile(const TKeyData& keys, std::u16string_view pcKeyboard, std::u16string_view emKeyboard) {
    AdvXMLParser::Document document(kRootName);
    Element& root = *document.Root();
    root.SetAttribute(u"version").SetText(kKeyMapFileVersion);
    root.SetAttribute(u"PcKeyboard").SetText(pcKeyboard);
    root.SetAttribute(u"EmKeyboard").SetText(emKeyboard);
    writeKeyMap(root, keys.keyMap);
    writeKeyStrings(root, u"KeyStrings", keys.keyStrings);
    writeKeyStrings(root, u"GlobalKeyStrings", keys.globalKeyStrings);
    std::u16string text;
    AdvXMLParser::WriteDocument(document, text);
    return utf16ToUtf8(text + u"\n");
}

TKeyMapFileRead ReadKeyMapFile(std::string_view bytes) {
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    const std::u16string text = utf8ToUtf16(bytes);
    std::vector<AdvXMLParser::ElementStart> starts;
    std::unique_ptr<AdvXMLParser::Document> document;
    try {
        document = AdvXMLParser::Parser().Parse(text.data(), text.size(), starts);
    } catch (const AdvXMLParser::ParsingException& error) {
        return Failure(Translate(u"keymapfile_cpp_1", u"the file is not well-formed XML (error ") +
                           decimal(error.GetErrorNumber()) + u")",
                       {error.GetLine(), error.GetColumn()});
    } catch (const AdvXMLParser::Exception&) {
        return Failure(Translate(u"keymapfile_cpp_1", u"the file is not well-formed XML"), {1, 1});
    }
    const Element* root = document ? document->Root() : nullptr;
    const auto rootPlace = PositionOf(text, starts.empty() ? 0 : starts.front().offset);
    if (!root || !iequals(root->GetName(), kRootName))
        return Failure(Translate(u"keymapfile_cpp_2", u"the file is not a key map file (its root is not <KeyMapFile>)"),
                       rootPlace);
    const std::u16string version = root->GetAttribute(u"version").GetText();
    if (version != kKeyMapFileVersion)
        return Failure(Translate(u"keymapfile_cpp_3", u"the key map file has version \"") + version +
                           Translate(u"keymapfile_cpp_4", u"\"; this module reads version 1"),
                       rootPlace);
    TKeyMapFileRead read;
    read.file.pcKeyboard = root->GetAttribute(u"PcKeyboard").GetText();
    read.file.emKeyboard = root->GetAttribute(u"EmKeyboard").GetText();
    for (std::size_t i = 0; i < root->GetChildCount(); ++i)
        if (const Element* item = root->GetChild(i).AsElement(); item && iequals(item->GetName(), u"Item"))
            ReadItem(read.file, *item);
    return read;
}

std::u16string KeyMapFileMessage(const TKeyMapFileRead& read) {
    if (read.ok()) return {};
    return Translate(u"keymapfile_cpp_5", u"line ") + decimal(read.line) + Translate(u"keymapfile_cpp_6", u", column ") +
           decimal(read.column) + u": " + read.error;
}

void ImportKeyMap(TKeyData& keys, const TKeyMapFile& file, TKeyMapImport mode) {
    if (mode == TKeyMapImport::Replace) {
        keys.keyMap = file.keyMap;
        keys.keyStrings = file.keyStrings;
        keys.globalKeyStrings = file.globalKeyStrings;
        return;
    }
    std::unordered_set<uint32_t> codes;
    for (const KeyMapEntry& entry : file.keyMap) codes.insert(entry.PKey);
    for (const KeyString& entry : file.keyStrings) codes.insert(entry.PKey);
    for (const KeyString& entry : file.globalKeyStrings) codes.insert(entry.PKey);
    RemoveCodes(keys.keyMap, codes);
    RemoveCodes(keys.keyStrings, codes);
    RemoveCodes(keys.globalKeyStrings, codes);
    Append(keys.keyMap, file.keyMap);
    Append(keys.keyStrings, file.keyStrings);
    Append(keys.globalKeyStrings, file.globalKeyStrings);
}

}  // namespace qrl
