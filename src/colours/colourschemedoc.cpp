#include "colours/colourschemedoc.h"

#include <string>
#include <string_view>
#include <utility>

#include "text/textutil.h"
#include "xml/node.h"

using AdvXMLParser::Element;

namespace qrl {

namespace {

std::u16string attr(const Element& e, std::u16string_view name) { return e.GetAttribute(name).GetText(); }

// Reads the white-space separated numbers of a value text in turn. The first thing that is not a
// number ends the text: every later read fails too, so fields not reached keep what they hold.
class NumberScanner {
public:
    explicit NumberScanner(std::u16string text) : text_(std::move(text)) {}
    bool hex(uint32_t& out) { return next(out, true); }
    bool dec(uint32_t& out) { return next(out, false); }

private:
    bool next(uint32_t& out, bool base16) {
        if (stopped_) return false;
        std::size_t used = 0;
        const std::u16string_view rest = std::u16string_view(text_).substr(pos_);
        const uint32_t value = base16 ? wcstoulBase16(rest, &used) : wcstoulBase10(rest, &used);
        if (used == 0) {
            stopped_ = true;
            return false;
        }
        pos_ += used;
        out = value;
        return true;
    }
    std::u16string text_;
    std::size_t pos_ = 0;
    bool stopped_ = false;
};

// An index attribute as a table position, or -1 when it is outside 0 to limit - 1.
int tableIndex(const Element& e, std::size_t limit) {
    const int index = wtoi(attr(e, u"index"));
    return index >= 0 && static_cast<std::size_t>(index) < limit ? index : -1;
}

void readFeatures(TColourScheme& scheme, const Element& e) {
    // Each element carries 16 combinations; only 16 such elements fit the 256 entries.
    const int index = tableIndex(e, kCombinationCount / 16);
    if (index < 0) return;
    NumberScanner numbers(attr(e, u"value"));
    for (std::size_t j = 0; j < 16; ++j) {
        TSchemeFeature& entry = scheme.features[static_cast<std::size_t>(index) * 16 + j];
        uint32_t word = 0, flag = 0;
        if (!numbers.hex(word)) return;
        UnpackFeatureWord(word, entry.features, entry.foreground, entry.background);
        if (!numbers.dec(flag)) return;
        entry.override = flag != 0;
    }
}

void readField(TColourScheme& scheme, const Element& e) {
    const int index = tableIndex(e, kFieldCount);
    if (index < 0) return;
    TSchemeField& entry = scheme.fields[static_cast<std::size_t>(index)];
    NumberScanner numbers(attr(e, u"value"));
    uint32_t word = 0, flag = 0, second = 0;
    if (!numbers.hex(word)) return;
    UnpackFeatureWord(word, entry.features, entry.foreground, entry.background);
    if (!numbers.dec(flag)) return;
    entry.override = flag != 0;
    if (!numbers.dec(second)) return;
    entry.secondFlag = second != 0;
}

void readSetting(TColourScheme& scheme, const Element& e) {
    const std::u16string name = attr(e, u"Element");
    const std::u16string value = attr(e, u"Value");
    // Unsigned fields read unsigned, so that whatever was read is written back the same.
    const auto number = [&] { return wcstoulBase10(value); };
    if (iequals(name, u"BoldMode")) scheme.boldMode = number();
    else if (iequals(name, u"DimMode")) scheme.dimMode = number();
    else if (iequals(name, u"UseBgGraphic")) scheme.useBgGraphic = number() != 0;
    else if (iequals(name, u"GraphicFile")) scheme.graphicFile = value;
    else if (iequals(name, u"GraphicMode")) scheme.graphicMode = number();
}

void readScheme(TColourScheme& scheme, const Element& schemeNode) {
    for (std::size_t i = 0; i < schemeNode.GetChildCount(); ++i) {
        const Element* e = schemeNode.GetChild(i).AsElement();
        if (!e) continue;
        const std::u16string_view tag = e->GetName();
        if (iequals(tag, u"palette")) {
            NumberScanner numbers(attr(*e, u"value"));
            for (uint32_t& colour : scheme.palette)
                if (!numbers.hex(colour)) break;
        } else if (iequals(tag, u"colours")) {
            NumberScanner numbers(attr(*e, u"value"));
            for (uint32_t& colour : scheme.colours)
                if (!numbers.dec(colour)) break;
        } else if (iequals(tag, u"features")) {
            readFeatures(scheme, *e);
        } else if (iequals(tag, u"fields")) {
            readField(scheme, *e);
        } else if (iequals(tag, u"Item")) {
            readSetting(scheme, *e);
        }
    }
}

void set(Element& e, std::u16string_view name, std::u16string_view value) { e.SetAttribute(name).SetText(value); }

void addSetting(Element& node, std::u16string_view name, std::u16string_view value) {
    Element& item = node.AddElement(u"Item");
    set(item, u"Element", name);
    set(item, u"Value", value);
}

// Every number is followed by one blank, the last one too: the host's reader expects that form.
void appendNumber(std::u16string& text, std::u16string number) {
    text += number;
    text += u' ';
}

}  // namespace

void ReadAttrNames(TNameTable& shortFeatureNames, TNameTable& longFeatureNames, TNameTable& colourDescriptions,
                   TNameTable& fieldDescriptions, const Element& item) {
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* e = item.GetChild(i).AsElement();
        if (!e) continue;
        const int index = tableIndex(*e, kNameTableSize);
        if (index < 0) continue;
        const auto k = static_cast<std::size_t>(index);
        const std::u16string_view tag = e->GetName();
        if (iequals(tag, u"feature")) {
            longFeatureNames[k] = attr(*e, u"long");
            shortFeatureNames[k] = attr(*e, u"short");
        } else if (iequals(tag, u"colour")) {
            colourDescriptions[k] = attr(*e, u"descr");
        } else if (iequals(tag, u"field")) {
            fieldDescriptions[k] = attr(*e, u"descr");
        }
    }
}

void ReadColourSchemes(TColourSchemeList& schemes, const Element& item) {
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* e = item.GetChild(i).AsElement();
        if (!e) continue;
        // The host writes ColourScheme, but any tag counts as a scheme.
        TColourScheme& scheme = schemes.emplace_back();
        scheme.name = attr(*e, u"Element");
        readScheme(scheme, *e);
    }
}

void WriteColourScheme(Element& node, const TColourScheme& scheme) {
    std::u16string text;
    for (uint32_t colour : scheme.palette) appendNumber(text, hexLower(colour));
    Element& palette = node.AddElement(u"palette");
    set(palette, u"index", u"0");
    set(palette, u"value", text);

    text.clear();
    for (uint32_t colour : scheme.colours) appendNumber(text, decimal(colour));
    Element& colours = node.AddElement(u"colours");
    set(colours, u"index", u"0");
    set(colours, u"value", text);

    for (std::size_t index = 0; index < kCombinationCount / 16; ++index) {
        text.clear();
        for (std::size_t j = 0; j < 16; ++j) {
            const TSchemeFeature& f = scheme.features[index * 16 + j];
            appendNumber(text, hexLower(PackFeatureWord(f.features, f.foreground, f.background)));
            appendNumber(text, f.override ? u"1" : u"0");
        }
        Element& features = node.AddElement(u"features");
        set(features, u"index", decimal(static_cast<long long>(index)));
        set(features, u"value", text);
    }

    for (std::size_t index = 0; index < kFieldCount; ++index) {
        const TSchemeField& f = scheme.fields[index];
        text.clear();
        appendNumber(text, hexLower(PackFeatureWord(f.features, f.foreground, f.background)));
        appendNumber(text, f.override ? u"1" : u"0");
        appendNumber(text, f.secondFlag ? u"1" : u"0");
        Element& field = node.AddElement(u"fields");
        set(field, u"index", decimal(static_cast<long long>(index)));
        set(field, u"value", text);
    }

    addSetting(node, u"BoldMode", decimal(scheme.boldMode));
    addSetting(node, u"DimMode", decimal(scheme.dimMode));
    addSetting(node, u"UseBgGraphic", scheme.useBgGraphic ? u"1" : u"0");
    addSetting(node, u"GraphicFile", scheme.graphicFile);
    addSetting(node, u"GraphicMode", decimal(scheme.graphicMode));
}

void WriteColourSchemeListItem(Element& data, const TColourSchemeList& schemes) {
    Element& item = data.AddElement(u"Item");
    set(item, u"Element", u"ColourSchemeList");
    for (const TColourScheme& scheme : schemes) {
        if (scheme.operation != kSchemeUpdate && scheme.operation != kSchemeDelete) continue;
        Element& node = item.AddElement(u"ColourScheme");
        set(node, u"Element", scheme.name);
        set(node, u"operation", scheme.operation == kSchemeUpdate ? u"update" : u"delete");
        if (scheme.operation == kSchemeUpdate) WriteColourScheme(node, scheme);
    }
}

}  // namespace qrl
