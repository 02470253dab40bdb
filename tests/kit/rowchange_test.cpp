#include "kit/rowchange.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

std::vector<std::u16string> Rows(std::u16string_view letters) {
    std::vector<std::u16string> rows;
    for (char16_t c : letters) rows.emplace_back(1, c);
    return rows;
}

// Applying the change to the shown rows must give the wanted rows, and the run must be the
// shortest one between a common head and a common tail.
TEST(RowChange, TheRunBetweenCommonHeadAndTail) {
    struct Case {
        std::u16string_view shown, wanted;
        TRowChange expected;
    } cases[] = {
        {u"abcde", u"abcde", {5, 0, 0}},
        {u"abcde", u"abde", {2, 1, 0}},     // one deleted
        {u"abde", u"abcde", {2, 0, 1}},     // one inserted
        {u"abcde", u"abXde", {2, 1, 1}},    // one changed
        {u"abcde", u"bacde", {0, 2, 2}},    // moved up
        {u"", u"abc", {0, 0, 3}},
        {u"abc", u"", {0, 3, 0}},
        {u"aaaa", u"aa", {2, 2, 0}},        // repeated rows: head and tail never overlap
        {u"aa", u"aaaa", {2, 0, 2}},
        {u"abab", u"ab", {2, 2, 0}},
    };
    for (const Case& c : cases) {
        const auto shown = Rows(c.shown), wanted = Rows(c.wanted);
        const TRowChange change = ChangedRun(shown, wanted);
        SCOPED_TRACE(std::string(c.shown.begin(), c.shown.end()) + " -> " + std::string(c.wanted.begin(), c.wanted.end()));
        EXPECT_EQ(change.first, c.expected.first);
        EXPECT_EQ(change.removed, c.expected.removed);
        EXPECT_EQ(change.inserted, c.expected.inserted);
        auto applied = shown;
        applied.erase(applied.begin() + static_cast<long>(change.first),
                      applied.begin() + static_cast<long>(change.first + change.removed));
        applied.insert(applied.begin() + static_cast<long>(change.first),
                       wanted.begin() + static_cast<long>(change.first),
                       wanted.begin() + static_cast<long>(change.first + change.inserted));
        EXPECT_EQ(applied, wanted);
    }
}

}  // namespace
}  // namespace qrl
