// Builds large requests for measurements and scripted runs: `count` element definitions of mixed
// types in groups, and a `Data` item for each (names in another case, so that look-ups must fold),
// every third one with a value that differs from the default.
#pragma once

#include <cstddef>
#include <string>

#include "text/textutil.h"

namespace qrl::gen {

namespace detail {

// `groupOf` names element i's group; `groups` is the request's declaration of groups, if any.
template <typename GroupOf>
std::u16string MakeRequest(std::size_t count, std::u16string_view moduleType, GroupOf groupOf,
                           std::u16string_view groups) {
    std::u16string text = u"<?xml version=\"1.0\"?>\n<Config ModuleType=\"";
    text += moduleType;
    text += u"\">\n<Help help_file=\"big.hlp\" topic_name=\"big\"/>\n";
    text += groups;
    text += u"<DTD>\n";
    static constexpr std::u16string_view kTypes[] = {u"text", u"int", u"bool", u"set", u"stringset", u"rgb"};
    for (std::size_t i = 0; i < count; ++i) {
        const std::u16string n = decimal(static_cast<long long>(i));
        text += u"<Element Name=\"Setting" + n + u"\" group=\"" + groupOf(i) + u"\" Type=\"";
        text += kTypes[i % 6];
        text += u"\" descr=\"Setting number " + n + u"\"";
        switch (i % 6) {
        case 1:
            text += u" Min=\"0\" Max=\"1000\" Default=\"5\"";
            break;
        case 2:
            text += u" Default=\"on\"";
            break;
        case 3:
            text += u" strings=\"Low,Medium,High\" values=\"1,2,3\" Default=\"2\"";
            break;
        case 4:
            text += u" strings=\"Red,Green,Blue\" Default=\"Green\"";
            break;
        case 5:
            text += u" Default=\"00ff00\"";
            break;
        default:
            text += u" Default=\"value " + n + u"\"";
            break;
        }
        text += u"/>\n";
    }
    text += u"</DTD>\n<Data>\n";
    for (std::size_t i = 0; i < count; ++i) {
        const std::u16string n = decimal(static_cast<long long>(i));
        text += u"<Item Element=\"SETTING" + n + u"\" Value=\"";
        text += i % 3 == 0 ? u"sent " + n : u"kept";
        text += u"\"/>\n";
    }
    text += u"</Data>\n<ModuleList Type=\"Emul\" Current=\"vt\"><Module Name=\"vt\" Description=\"VT\"/>"
            u"</ModuleList>\n</Config>\n";
    return text;
}

}  // namespace detail

// Group names the request does not declare, so that every element stands at the tree's top.
inline std::u16string MakeRequest(std::size_t count, std::u16string_view moduleType = u"Emul") {
    return detail::MakeRequest(
        count, moduleType,
        [](std::size_t i) {
            return u"Group" + decimal(static_cast<long long>(i % 50)) + u".Sub" + decimal(static_cast<long long>(i % 7));
        },
        {});
}

// Declared groups, closed, each holding a run of elements one after the other, as a request that
// lists its settings group by group has them.
inline std::u16string MakeGroupedRequest(std::size_t count, std::size_t groupCount) {
    std::u16string groups = u"<Groups>\n";
    for (std::size_t g = 0; g < groupCount; ++g)
        groups += u"<Group Name=\"Group" + decimal(static_cast<long long>(g)) + u"\"/>\n";
    groups += u"</Groups>\n";
    return detail::MakeRequest(
        count, u"Emul",
        [&](std::size_t i) { return u"Group" + decimal(static_cast<long long>(i * groupCount / count)); }, groups);
}

}  // namespace qrl::gen
