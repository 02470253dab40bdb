#include "forms/undostack.h"

#include "request/session.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(UndoStack, TypingIsOneChangeUntilClosedAndANewChangeDropsRedo) {
    TConfigSession s;
    TFormDef form;
    for (const char16_t* name : {u"a", u"b"}) form.treeIndex.emplace_back().element = &s.AddElement(name);
    TUndoStack undo(form);  // both values empty
    for (const char16_t* typed : {u"1", u"12", u"12"}) undo.Note(0, typed, true);
    undo.Close();
    undo.Note(0, u"123", true);
    undo.Note(1, u"x", false);
    std::u16string steps;
    const auto step = [&](std::optional<TValueChange> c) {
        if (!c) return steps.append(u"- ");
        return steps.append(decimal(static_cast<long long>(c->node))).append(u":").append(c->before).append(u">").append(c->after).append(u" ");
    };
    for (bool back : {true, true, false, true, true, true}) step(back ? undo.Undo() : undo.Redo());
    undo.Note(1, u"y", false);  // "x" was taken back: y's before is what the element had
    step(undo.Redo());
    step(undo.Undo());
    EXPECT_EQ(steps, u"1:>x 0:12>123 0:12>123 0:12>123 0:>12 - - 1:>y ");
}

}  // namespace
}  // namespace qrl
