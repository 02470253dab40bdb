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

void addItem(Element& data, std::u16string_view name, std::u16string_view value) {
    Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(name);
    item.SetAttribute(u"Value").SetText(value);
}

std::u16string write(const Document& document) {
    std::u16string out;
    AdvXMLParser::WriteDocument(document, out);
    return out;
}

}  // namespace

void FillDataElement(Document& document, const TConfigSession& session, bool changedOnly) {
    Element* root = document.Root();
    Element& data = (root ? *root : AdvXMLParser::EmptyElement()).AddElement(u"Data");

    std::size_t dataCursor = 0;
    for (const TElementDef& element : session.elements) {
        if (IsListType(element.type)) {
            if (!ListIsWritten(session, element.type)) continue;
            if (const auto writeKind = session.hooks->DataKind(element.type).write) writeKind(session, element, data);
            continue;
        }
        if (changedOnly) {
            // A value the request never sent counts as changed; otherwise the texts must differ,
            // case included. There is no dirty flag.
            const TDataValue* before = session.FindDataValue(element.name, dataCursor);
            if (before && before->value == element.value) continue;
        }
        addItem(data, element.name, element.value);
    }
}

std::u16string WriteDataReply(const TConfigSession& session, bool changedOnly) {
    Document document(u"Config");
    FillDataElement(document, session, changedOnly);
    return write(document);
}

std::u16string WriteConnectReply(const TConfigSession& session, bool changedOnly) {
    Document document(u"Config");
    FillDataElement(document, session, changedOnly);
    document.Root()->AddElement(u"Directives").AddElement(u"CommConnect");
    return write(document);
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
