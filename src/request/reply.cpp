#include "request/reply.h"

#include <algorithm>

#include "request/hooks.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {

using AdvXMLParser::Document;
using AdvXMLParser::Element;

namespace {

std::u16string write(const Document& document) {
    std::u16string out;
    AdvXMLParser::WriteDocument(document, out);
    return out;
}

// Room for the items of every element at a typical length, so that a large reply is not copied
// again and again as it grows.
constexpr std::size_t kTypicalItemLength = 64;

// Writes a data reply straight into its text: a tree of a large reply's items costs more than the
// items themselves. The steps are the XML writer's own, so the text is the one it writes for the
// same tree; the blocks of the list types are still built as a tree by their writers and written
// in place.
class TDataReplyWriter {
public:
    explicit TDataReplyWriter(std::u16string& out) : state_(out) {}

    void Begin(std::size_t itemCount) {
        state_.Output().reserve(128 + itemCount * kTypicalItemLength);
        state_.Put(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        state_.NewLine();
        state_.Open();
        state_.Put(u"<Config>");
        state_.Open();
        state_.Put(u"<Data");
    }

    void Item(std::u16string_view name, std::u16string_view value) {
        StartContent();
        state_.Open();
        state_.Put(u"<Item Element=\"");
        state_.PutEscaped(name);
        state_.Put(u"\" Value=\"");
        state_.PutEscaped(value);
        state_.Put(u"\"/>");
        state_.End();
    }

    // Writes the children that a list type's writer added to `scratch`, and empties it.
    void Children(Element& scratch) {
        for (std::size_t i = 0; i < scratch.GetChildCount(); ++i) {
            StartContent();
            scratch.GetChild(i).Write(state_);
        }
        scratch.Clear();
    }

    // Closes `Data`; what follows it in the root comes as a tree.
    void EndData() {
        if (dataHasContent_) {
            state_.Close();
            state_.Put(u"</Data>");
        } else {
            state_.Put(u"/>");
            state_.End();
        }
    }
    void Append(const Element& element) { element.Write(state_); }

    void End() {
        state_.Close();
        state_.Put(u"</Config>");
    }

private:
    void StartContent() {
        if (dataHasContent_) return;
        state_.Put(u'>');
        dataHasContent_ = true;
    }

    AdvXMLParser::WriterState state_;
    bool dataHasContent_ = false;
};

// The data reply up to the end of `Data`: every element in order, the list types by their writers,
// the plain values all or only those that changed.
void writeData(TDataReplyWriter& writer, const TConfigSession& session, bool changedOnly) {
    // Only a reply of every value is known to be large; one of the changes grows as it needs.
    writer.Begin(changedOnly ? 0 : session.elements.size());
    Element scratch(u"Data");
    std::size_t dataCursor = 0;
    for (const TElementDef& element : session.elements) {
        if (IsListType(element.type)) {
            if (!ListIsWritten(session, element.type)) continue;
            if (const auto writeKind = session.hooks->DataKind(element.type).write) {
                writeKind(session, element, scratch);
                writer.Children(scratch);
            }
            continue;
        }
        if (changedOnly) {
            // A value the request never sent counts as changed; otherwise the texts must differ,
            // case included. There is no dirty flag.
            const TDataValue* before = session.FindDataValue(element.name, dataCursor);
            if (before && before->value == element.value) continue;
        }
        writer.Item(element.name, element.value);
    }
    writer.EndData();
}

}  // namespace

std::u16string WriteDataReply(const TConfigSession& session, bool changedOnly) {
    std::u16string out;
    TDataReplyWriter writer(out);
    writeData(writer, session, changedOnly);
    writer.End();
    return out;
}

std::u16string WriteConnectReply(const TConfigSession& session, bool changedOnly) {
    std::u16string out;
    TDataReplyWriter writer(out);
    writeData(writer, session, changedOnly);
    Element directives(u"Directives");
    directives.AddElement(u"CommConnect");
    writer.Append(directives);
    writer.End();
    return out;
}

bool IsModuleKind(std::u16string_view moduleType) {
    return moduleType == u"Emul" || moduleType == u"Comms" || moduleType == u"FXfer";
}

std::u16string WriteModuleChangeReply(const TConfigSession& session) {
    Document document(u"Config");
    Element& directives = document.Root()->AddElement(u"Directives");
    const std::u16string& type = session.moduleType;
    if (IsModuleKind(type) && !session.moduleLists.empty()) {
        Element& change = directives.AddElement(u"Change" + type);
        change.SetAttribute(u"ModuleName").SetText(session.moduleLists.front().current);
    }
    return write(document);
}

int CopyReply(const std::u16string& reply, char16_t* buffer, uint64_t capacity) {
    if (!buffer || reply.size() >= capacity) return kResultTooSmall;
    std::copy(reply.begin(), reply.end(), buffer);
    buffer[reply.size()] = u'\0';
    return kResultOk;
}

}  // namespace qrl
