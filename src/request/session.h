// TConfigSession: the one object that a request is read into and that every dialog works on. It owns
// everything the request carries and is destroyed whole at the end of the run.
//
// Other subsystems keep their share of a request (forms and groups, key lists and maps, colour
// schemes, the mouse map, character maps) in a record of their own that the session owns, reached
// through Part<T>(): the session need not know their types, and each subsystem builds on its own.
// Their readers and reply writers are hooks (request/hooks.h), installed in one place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "request/cfgerror.h"
#include "request/chunkedlist.h"
#include "request/elementdef.h"
#include "request/hostlink.h"
#include "request/nameindex.h"
#include "request/readnotes.h"

namespace AdvXMLParser {
class Document;
class Element;
}

namespace qrl {

class TRequestHooks;

// An element name and value as the request's `Data` sent them; the reply compares against them.
// Both are fixed once read, and the loader keeps them in the session's text pool, name beside value:
// the walks of apply and reply then read one short stretch of memory per value, in order.
struct TDataValue {
    TFixedText name;
    TFixedText value;
};

struct TModuleEntry {
    std::u16string name;
    std::u16string description;
};

// One `ModuleList` of the request.
struct TModuleList {
    std::u16string type;
    std::u16string current;  // the module selection writes the chosen module here
    std::vector<TModuleEntry> modules;
};

class TConfigSession {
public:
    TConfigSession();
    ~TConfigSession();
    TConfigSession(const TConfigSession&) = delete;
    TConfigSession& operator=(const TConfigSession&) = delete;

    // Reads the tree of a request. Throws ECfgError; what was read stays until the session goes.
    void LoadRequest(const AdvXMLParser::Element& root);
    // Parses `text`, loads it and drops the tree; a syntax error becomes ECfgError
    // "XML parsing error : line N". Does not apply the data values.
    void LoadRequestText(std::u16string_view text);
    // Puts each data value into its element, making a text element for a name with no definition.
    void ApplyDataValues();

    // Reads the `Element` children of a `DTD`.
    void ReadElements(const AdvXMLParser::Element& dtd);

    // The first element of that name, case ignored, or null.
    TElementDef* FindElement(std::u16string_view name);
    const TElementDef* FindElement(std::u16string_view name) const;
    // Appends an empty element definition named `name`.
    TElementDef& AddElement(std::u16string_view name);
    // The first value `Data` sent under that name, case ignored, or null. Every reader of the sent
    // values asks here, so a name sent twice means the same everywhere.
    const TDataValue* FindDataValue(std::u16string_view name) const;
    // The same two look-ups for a walk that mostly meets the names in list order: `cursor` (0 at the
    // start) is the position tried first, and is moved behind each one found.
    TElementDef* FindElement(std::u16string_view name, std::size_t& cursor);
    const TDataValue* FindDataValue(std::u16string_view name, std::size_t& cursor) const;

    // Help for a topic over the link; an empty topic asks for helpTopic.
    void ShowHelp(std::u16string_view topic) const { link.ShowHelp(topic, helpTopic); }

    // The record that subsystem T keeps in the session, made (value-initialised) on first use and
    // destroyed with the session. T is any default-constructible type of that subsystem, e.g.
    //   struct TFormStore { std::list<TFormDef> forms; std::deque<TGroupDef> groups; ... };
    //   session.Part<TFormStore>().forms
    template <class T>
    T& Part();
    // The record if it was made, else null.
    template <class T>
    T* FindPart() const;

    std::u16string startForm;  // `StartForm` of `Interface`, set by the form engine's reader
    std::u16string moduleType;
    std::u16string iniFile;
    std::u16string langId;
    std::u16string langDir;

private:
    // The texts of the element definitions and the data values; declared before them, so that they
    // go after them. The element names have a pool of their own: the walks over every element read
    // the name and none of the other texts, and then find one name after another in few lines.
    TTextPool names_;
    TTextPool texts_;

public:

    // In document order. Elements keep their addresses (dialogs and trees point at them). Append
    // only; AddElement is the usual way, and FindElement also sees elements appended directly.
    TChunkedList<TElementDef> elements;
    TChunkedList<TDataValue> dataValues;  // append only, as elements
    std::vector<TModuleList> moduleLists;

    bool keyDataPresent = false;
    bool attrDataPresent = false;
    std::array<std::u16string, 16> shortFeatureNames;
    std::array<std::u16string, 16> longFeatureNames;
    std::array<std::u16string, 16> colourDescriptions;
    std::array<std::u16string, 16> fieldDescriptions;
    bool hotspotDataPresent = false;
    std::u16string hotspotFile;
    std::u16string hotspotDirectory;
    std::u16string hotspotEmulation;
    bool mouseDataPresent = false;

    std::u16string helpBaseFile;
    std::u16string helpFile;
    std::u16string helpTopic;
    HostLink link;  // linkWindow and linkMessage
    bool connected = false;
    // Whether fields offer the Macro Assistant: the process-wide flag as the run found it.
    bool macroAssist = false;
    std::u16string authFileDirectory;
    std::vector<std::u16string> authFiles;  // sorted

    // The readers and writers this session uses: the process-wide set unless a test gives its own.
    const TRequestHooks* hooks;
    // Null in the module; a checker of requests listens here (request/readnotes.h).
    TReadNotes* notes = nullptr;

    // Lists authFileDirectory anew into authFiles (also after a key file was imported into it).
    void ReadAuthFiles();

private:
    void ReadChild(const AdvXMLParser::Element& child);
    void ReadData(const AdvXMLParser::Element& data);
    void ReadModuleList(const AdvXMLParser::Element& node);
    void ReadHelp(const AdvXMLParser::Element& node);
    void ReadLink(const AdvXMLParser::Element& node);
    void AskAuthDirectory();

    // Both lists are indexed lazily up to the count seen, so appends from anywhere are found too.
    mutable TListIndex<TChunkedList<TElementDef>> elementIndex_;
    mutable TListIndex<TChunkedList<TDataValue>> dataIndex_;

    template <class T>
    static const void* PartKey() {
        static const char key = 0;
        return &key;
    }
    std::vector<std::pair<const void*, std::shared_ptr<void>>> parts_;
};

template <class T>
T& TConfigSession::Part() {
    if (T* existing = FindPart<T>()) return *existing;
    // shared_ptr<void> keeps the deleter of T, so the session destroys a type it cannot see.
    std::shared_ptr<T> made = std::make_shared<T>();
    T* result = made.get();
    parts_.emplace_back(PartKey<T>(), std::move(made));
    return *result;
}

template <class T>
T* TConfigSession::FindPart() const {
    for (const auto& [key, part] : parts_)
        if (key == PartKey<T>()) return static_cast<T*>(part.get());
    return nullptr;
}

// The presence flag a list type of `Data` sets, or null for a type that sets none.
bool* ListPresenceFlag(TConfigSession& session, ElementType type);
// Whether a reply writes the list type: it came with the request and travels both ways.
bool ListIsWritten(const TConfigSession& session, ElementType type);

// The one reading of a request text into a document; a syntax error becomes ECfgError "XML
// parsing error : line N".
std::unique_ptr<AdvXMLParser::Document> ParseRequestText(std::u16string_view text);
// The document's root, or an empty element for a document without one.
const AdvXMLParser::Element& RequestRoot(const AdvXMLParser::Document& document);

}  // namespace qrl
