#include "forms/formvalues.h"

#include "request/elementdef.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {

std::u16string ChoiceValue(const TElementDef& element, int index) {
    if (element.values.empty()) {
        if (element.type == ElementType::Int || element.type == ElementType::Char8)
            return decimal(static_cast<long long>(index) - element.min);
        return {};
    }
    if (index >= 0 && static_cast<std::size_t>(index) < element.values.size())
        return element.values[static_cast<std::size_t>(index)];
    return {};
}

void SetBool(TElementDef& element, bool on) {
    const std::size_t i = on ? 1 : 0;
    if (element.type == ElementType::Set) {
        element.value = i < element.values.size() ? element.values[i] : u"0";
        return;
    }
    if (element.type == ElementType::Int) {
        if (i < element.values.size()) {
            element.value = element.values[i];
        } else if (element.min < element.max) {
            // One character whose code is the low 16 bits of min: a character, not the number.
            element.value = std::u16string(1, static_cast<char16_t>(element.min & 0xFFFF));
        } else {
            element.value = on ? u"1" : u"0";
        }
        return;
    }
    element.value = on ? u"1" : u"0";
}

bool IsListBound(const TElementDef* element, ItemKind kind) {
    if (kind == ItemKind::ListBox) return true;
    if (kind != ItemKind::ComboBox || element == nullptr) return false;
    return !element->values.empty() || (element->type == ElementType::Int && element->min < element->max);
}

ListFill ListEntries(const TElementDef& element, ItemKind kind) {
    ListFill fill;
    if (!element.strings.empty()) {
        fill.entries = element.strings;
    } else if (!element.values.empty()) {
        fill.entries = element.values;
    } else if (element.type == ElementType::Int && element.min < element.max) {
        fill.useComboMessage = kind == ItemKind::ComboBox;
        // A range from a broken request could ask for billions of rows; nobody can pick from more
        // than this, and the dialog must open.
        const long long last = std::min<long long>(element.max, static_cast<long long>(element.min) + kMaxRangeRows - 1);
        for (long long n = element.min; n <= last; ++n) fill.entries.push_back(decimal(n));
    }
    return fill;
}

std::u16string RadioCompareText(const TElementDef& element) {
    if (element.type == ElementType::Bool) return element.GetBool() ? u"1" : u"0";
    return element.value;
}

namespace {

std::u16string_view LabelView(const TElementDef& element) {
    return element.description.empty() ? element.name.view() : element.description.view();
}

}  // namespace

std::u16string ElementLabel(const TElementDef& element) { return std::u16string(LabelView(element)); }

// Built in one string: the tree asks for one per element when it is filled.
std::u16string ElementTreeText(const TElementDef& element) {
    const std::u16string_view label = LabelView(element);
    std::u16string text;
    text.reserve(label.size() + element.value.size() + 4);
    text += label;
    text += u' ';
    AppendElementValueText(text, element);
    return text;
}

std::u16string ShortTextBare(const TElementDef& element) {
    std::u16string text = ElementValueToText(element);
    if (text.size() >= 2 && text.front() == u'(' && text.back() == u')') return text.substr(1, text.size() - 2);
    return text;
}

}  // namespace qrl
