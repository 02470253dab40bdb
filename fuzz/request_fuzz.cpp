// A request from the fuzzer (UTF-8) goes the whole portable way: parse, load, apply, short texts,
// every reply. Only the defined failures (ECfgError, the XML layer's exceptions) may come out of
// the loader; nothing may crash, leak or read out of bounds.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "request/reply.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text =
        qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    qrl::TConfigSession session;
    try {
        session.LoadRequestText(text);
    } catch (const qrl::ECfgError&) {
        return 0;
    } catch (const AdvXMLParser::Exception&) {
        return 0;
    }
    session.ApplyDataValues();
    for (const qrl::TElementDef& element : session.elements) {
        (void)qrl::ElementValueToText(element);
        (void)element.GetChoiceIndex(element.value, -1);
        (void)element.GetBool();
        (void)element.GetSetIndex();
    }
    (void)qrl::WriteDataReply(session, true);
    (void)qrl::WriteDataReply(session, false);
    (void)qrl::WriteConnectReply(session, true);
    (void)qrl::WriteModuleChangeReply(session);
    return 0;
}
