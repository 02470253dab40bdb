#include "forms/undostack.h"

#include "request/session.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(UndoStack, TypingIsOneChangeUntilClosedAndANewChangeDropsRedo) {
    TConfigSession s;
    TFormDef form;
    for (const char16_t* name : {u"a", u"b"}) {
        TElementDef& e = s.AddElement(name);
        e.value.assign(1, u'0');  // GCC 12 misreads a literal assigned here as an overlapping copy
        form.treeIndex.emplace_back().element = &e;
    }
    TUndoStack undo(form);
    undo.Note(0, u"1", true);
    undo.Note(0, u"12", true);
    undo.Note(0, u"12", true);  // no change
    undo.Close();
    undo.Note(0, u"123", true);
    undo.Note(1, u"x", false);
    const auto step = [](std::optional<TValueChange> c) {
        if (!c) return std::u16string(u"none");
        std::u16string text = decimal(static_cast<long long>(c->node));
        text.append(u":").append(c->before).append(u">").append(c->after);
        return text;
    };
    EXPECT_EQ(step(undo.Undo()), u"1:0>x");
    EXPECT_EQ(step(undo.Undo()), u"0:12>123");
    EXPECT_EQ(step(undo.Redo()), u"0:12>123");
    EXPECT_EQ(step(undo.Undo()), u"0:12>123");
    EXPECT_EQ(step(undo.Undo()), u"0:0>12");
    EXPECT_EQ(step(undo.Undo()), u"none");
    undo.Note(1, u"y", false);  // "x" was taken back: y's before is the value the element had
    EXPECT_EQ(step(undo.Redo()), u"none");
    EXPECT_EQ(step(undo.Undo()), u"1:0>y");
}

}  // namespace
}  // namespace qrl
