// The hooks through which other subsystems read and write their share of a request: the
// `Interface` and `Groups` children (form engine) and the `Data` items of the list types (key
// lists and maps, colour schemes, attribute names, hot spots, mouse map). The loader keeps the
// frame (document order, presence flags, the plain values); a hook does the content.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "request/elementdef.h"

namespace AdvXMLParser {
class Element;
}

namespace qrl {

class TConfigSession;

// A reader of one child of `Config`. Throws ECfgError for what it cannot read.
using TChildReader = void (*)(TConfigSession& session, const AdvXMLParser::Element& node);

// One list type of `Data`.
struct TDataKind {
    // Reads one `Item` whose element (`def`) has this type. The loader has already set the
    // presence flag that the type implies; the reader decides by def.name where the name matters
    // (PhysicalKeys, KeyStrings, ...).
    void (*read)(TConfigSession& session, const TElementDef& def, const AdvXMLParser::Element& item) =
        nullptr;
    // Appends this element's `Item`, or nothing, to `data` of a reply. Called only while the
    // presence flag of the type is set, and never for keylist and attrnames, which travel one way.
    // Without one nothing is written.
    void (*write)(const TConfigSession& session, const TElementDef& def, AdvXMLParser::Element& data) =
        nullptr;
};

// The short text of a value of a property type (font, printer, certificate).
using TShortTextFn = std::u16string (*)(std::u16string_view value);

class TRequestHooks {
public:
    TChildReader interfaceReader = nullptr;  // `Interface`; absent: the child is skipped
    TChildReader groupsReader = nullptr;     // `Groups`; absent: the child is skipped

    // Installs the reader and writer of a list type, named by its `Type` word (case ignored). False,
    // and nothing installed, when the word does not name a list type.
    bool SetDataKind(std::u16string_view typeWord, TDataKind kind);
    // The hooks of a list type; both members null when none were installed.
    const TDataKind& DataKind(ElementType type) const;

    void SetShortText(ElementType type, TShortTextFn shortText);
    // Null when the type has none.
    TShortTextFn ShortText(ElementType type) const;

private:
    std::array<TDataKind, kElementTypeCount> kinds_{};
    std::array<TShortTextFn, kElementTypeCount> shortTexts_{};
};

// The process-wide set, filled once, on first use, by InstallRequestHooks. Both are defined where
// the program is put together (src/app), so that this folder needs none of the subsystems.
const TRequestHooks& RequestHooks();
// Each subsystem that reads part of a request adds its line there.
void InstallRequestHooks(TRequestHooks& hooks);

}  // namespace qrl
