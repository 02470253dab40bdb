#include "app/requestcheck.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <unordered_map>

#include "forms/formdef.h"
#include "kit/fieldrules.h"
#include "properties/font.h"
#include "request/readnotes.h"
#include "request/reply.h"
#include "request/run.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace qrl {

using AdvXMLParser::Element;

namespace {

std::u16string quoted(std::u16string_view text) { return u"\"" + std::u16string(text) + u"\""; }

// Line and column of each element's start tag, counted as the reader counts lines: CR, LF and
// CR LF each end one.
class TElementPlaces {
public:
    TElementPlaces(std::u16string_view text, const std::vector<AdvXMLParser::ElementStart>& starts) {
        lineStarts_.push_back(0);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            if (text[i] == u'\r' || text[i] == u'\n') lineStarts_.push_back(i + 1);
        }
        offsets_.reserve(starts.size());
        for (const AdvXMLParser::ElementStart& start : starts) offsets_.emplace(start.element, start.offset);
    }

    // Null or an element the text did not hold (the shared empty one): the root's place.
    TCheckFinding At(const Element* node, TCheckSeverity severity, std::u16string text) const {
        auto found = node ? offsets_.find(node) : offsets_.end();
        if (found == offsets_.end()) found = offsets_.find(root_);
        TCheckFinding finding{severity, 1, 1, std::move(text)};
        if (found == offsets_.end()) return finding;
        const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), found->second);
        finding.line = static_cast<std::size_t>(after - lineStarts_.begin());
        finding.column = found->second - *(after - 1) + 1;
        return finding;
    }

    void SetRoot(const Element* root) { root_ = root; }

private:
    std::vector<std::size_t> lineStarts_;
    std::unordered_map<const Element*, std::size_t> offsets_;
    const Element* root_ = nullptr;
};

// Hears the module's readers while they load the request.
class TCheckListener : public TReadNotes {
public:
    explicit TCheckListener(const TElementPlaces& places) : places_(places) {}

    void Placed(const void* record, const Element& node) override { placed_[record] = &node; }
    void Doubtful(const Element& node, std::u16string text) override {
        findings_.push_back(places_.At(&node, TCheckSeverity::Warning, std::move(text)));
    }
    void Refused(const Element& node, const std::u16string& text) override {
        findings_.push_back(places_.At(&node, TCheckSeverity::Error, text));
        refused_ = true;
    }
    // A failure no reader placed: at the root.
    void Failed(std::u16string text) {
        if (!refused_) findings_.push_back(places_.At(nullptr, TCheckSeverity::Error, std::move(text)));
        refused_ = true;
    }
    void Warn(const void* record, std::u16string text) {
        const auto found = placed_.find(record);
        findings_.push_back(places_.At(found == placed_.end() ? nullptr : found->second, TCheckSeverity::Warning,
                                       std::move(text)));
    }
    void WarnAtRoot(std::u16string text) { Warn(nullptr, std::move(text)); }

    bool Refused() const { return refused_; }
    std::vector<TCheckFinding> Take() { return std::move(findings_); }

private:
    const TElementPlaces& places_;
    std::unordered_map<const void*, const Element*> placed_;
    std::vector<TCheckFinding> findings_;
    bool refused_ = false;
};

// Whether `value` reads as the element's type, by the rules the module reads and checks it with;
// empty when it does, else what is wrong. Types whose reading cannot fail (text, bool, the
// structured properties, which keep their defaults where a text falls short) have nothing to say.
std::u16string ValueProblem(const TElementDef& element, std::u16string_view value) {
    std::u16string message;
    switch (element.type) {
    case ElementType::Int:
        if (!element.values.empty()) {
            if (element.GetChoiceIndex(value, -1) < 0) return quoted(value) + u" is none of the values of the list";
            return {};
        }
        [[fallthrough]];
    case ElementType::Char8:
        if (!CheckIntegerText(value, element.min, element.max, message)) return message;
        return {};
    case ElementType::StringSet:
        if ((!element.values.empty() || !element.strings.empty()) && element.GetChoiceIndex(value, -1) < 0)
            return quoted(value) + u" is none of the values of the list";
        return {};
    case ElementType::Set: {
        TElementDef probe = element;
        probe.value = std::u16string(value);
        if (probe.GetSetIndex() < 0) return quoted(value) + u" is none of the values of the set: it shows \"???\"";
        return {};
    }
    case ElementType::Rgb: {
        std::size_t used = 0;
        wcstoulBase16(value, &used);
        if (used == 0 || used != value.size()) return quoted(value) + u" is not a colour in hexadecimal";
        return {};
    }
    case ElementType::Font: {
        TFontDescription font;
        const int fields = ParseFont(value, font);
        if (!value.empty() && fields < TFontDescription::kFieldCount)
            return u"font reads only " + decimal(fields) + u" of its " + decimal(TFontDescription::kFieldCount) +
                   u" fields";
        return {};
    }
    default: return {};
    }
}

bool IsGeneralRoute(const TConfigSession& session) { return EditorRouteOf(session.moduleType) < 0; }

void CheckModuleType(const TConfigSession& session, TCheckListener& out) {
    const std::u16string& type = session.moduleType;
    if (type.empty() || !IsGeneralRoute(session) || IsModuleKind(type)) return;
    out.WarnAtRoot(u"ModuleType " + quoted(type) +
                   u" names no editor and no module kind (Emul, Comms, FXfer): the general route shows it as a "
                   u"module of no known type");
}

void CheckDataValues(const TConfigSession& session, TCheckListener& out) {
    for (const TDataValue& data : session.dataValues) {
        const TElementDef* element = session.FindElement(data.name);
        if (!element) {
            // The editors read their settings by name with no definition; only the general route
            // makes elements of the values.
            if (IsGeneralRoute(session))
                out.Warn(&data, u"Data item " + quoted(data.name) +
                                    u" names no element of the DTD: the module adds it as a text element");
        } else if (IsListType(element->type)) {
            out.Warn(&data, u"Data item " + quoted(data.name) +
                                u" comes before the DTD defines its list: the module takes it as a plain value and "
                                u"loses its entries");
        } else if (std::u16string problem = ValueProblem(*element, data.value); !problem.empty()) {
            out.Warn(&data, u"Data item " + quoted(data.name) + u": " + problem);
        }
    }
}

void CheckForms(const TConfigSession& session, TCheckListener& out) {
    const TFormStore* store = session.FindPart<TFormStore>();
    if (!store) return;
    for (const TFormDef& form : store->forms) {
        for (const TFormItem& item : form.items) {
            if (!item.element.empty() && !session.FindElement(item.element) && !session.FindDataValue(item.element))
                out.Warn(&item, u"form " + quoted(form.name) + u" shows element " + quoted(item.element) +
                                    u", which neither the DTD nor Data has");
            if (item.action == FormAction::Form && !FindForm(session, item.actionParam))
                out.Warn(&item, u"form " + quoted(form.name) + u" opens form " + quoted(item.actionParam) +
                                    u", which no form has");
        }
    }
    if (!session.startForm.empty() && !FindForm(session, session.startForm))
        out.Warn(&session.startForm, u"StartForm " + quoted(session.startForm) +
                                         u" names no form: the module shows the built-in form");
}

}  // namespace

std::vector<TCheckFinding> CheckRequest(std::u16string_view request) {
    std::vector<AdvXMLParser::ElementStart> starts;
    std::unique_ptr<AdvXMLParser::Document> document;
    try {
        document = AdvXMLParser::Parser().Parse(request.data(), request.size(), starts);
    } catch (const AdvXMLParser::ParsingException& error) {
        // The reader's own place of failure, as it counts it.
        return {TCheckFinding{TCheckSeverity::Error, static_cast<std::size_t>(error.GetLine()),
                              static_cast<std::size_t>(error.GetColumn()),
                              u"XML parsing error " + decimal(error.GetErrorNumber())}};
    } catch (const std::exception&) {
        return {TCheckFinding{TCheckSeverity::Error, 1, 1, u"the text cannot be read as XML"}};
    }

    TElementPlaces places(request, starts);
    const Element& root = RequestRoot(*document);
    places.SetRoot(&root);
    TCheckListener listener(places);
    TConfigSession session;
    session.notes = &listener;
    try {
        session.LoadRequest(root);
    } catch (const ECfgError& error) {
        listener.Failed(error.Text());
    } catch (const std::exception& error) {
        listener.Failed(u"the request cannot be read: " + toU16(error.what()));
    }
    session.notes = nullptr;
    // What follows a refusal was never read: cross-checks against it would mislead.
    if (!listener.Refused()) {
        CheckModuleType(session, listener);
        CheckDataValues(session, listener);
        CheckForms(session, listener);
    }
    return listener.Take();
}

std::string FormatFinding(std::string_view file, const TCheckFinding& finding) {
    std::string line(file);
    line += ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column) + ": ";
    line += finding.severity == TCheckSeverity::Error ? "error: " : "warning: ";
    line += utf16ToUtf8(finding.text);
    return line;
}

int CheckExitCode(const std::vector<TCheckFinding>& findings) {
    for (const TCheckFinding& finding : findings)
        if (finding.severity == TCheckSeverity::Error) return kCheckRefused;
    return kCheckRuns;
}

}  // namespace qrl
