#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "colours/colourconfig.h"
#include "colours/colourhooks.h"
#include "colours/palettemodel.h"
#include "request/session.h"

using namespace qrl;

namespace {

using V = std::vector<uint32_t>;
using Names = std::vector<std::u16string>;

// Dialog data on a session whose list holds `names`, each scheme with its normal pair 7 on 0; the
// working scheme is opened when a current name is given.
struct Fixture {
    explicit Fixture(const Names& names, std::u16string current = u"") {
        for (const std::u16string& name : names) {
            TColourScheme s;
            s.name = name;
            s.features[0] = TSchemeFeature{false, 0, 7, 0};
            SessionColourSchemes(session).push_back(s);
        }
        data.session = &session;
        data.customName = u"(custom)";
        data.currentName = std::move(current);
        LoadAttrDialogNames(data, TAttrNameTables{}, MakeColourTexts([](std::u16string_view, std::u16string_view t) {
                                return std::u16string(t);
                            }));
        if (!data.currentName.empty()) OpenWorkingScheme(data);
    }
    TColourSchemeList& list() { return SessionColourSchemes(session); }
    V operations() {
        V ops;
        for (const TColourScheme& s : list()) ops.push_back(s.operation);
        return ops;
    }
    void listAll() { ListAttributes(data, {true, false, false}, 1000, wide); }

    static int wide(std::u16string_view text) { return static_cast<int>(text.size()); }
    TConfigSession session;
    TAttrDialogData data;
};

}  // namespace

// Combinations, colours and fields listed for each show option.
TEST(ListAttributes, WhatEachOptionLists) {
    struct Case {
        TListOptions options;
        uint32_t featuresUsed;
        uint32_t displayMode;
        int combinations, colours;
    };
    const Case cases[] = {
        {{false, true, false}, 0, 0, 1, 0},                                    // Normal only
        {{false, true, false}, kAttrBlink | kAttrUnderline | kAttrInvisible, 0, 4, 0},
        {{false, true, true}, kAttrBlink | kAttrUnderline | kAttrInvisible, 1, 8, 3},
        {{true, false, false}, 0, 0, 96, 16},                                  // no Bold+Dim, no Invisible
        {{true, false, true}, 0, 0, 192, 16},
        {{false, false, true}, 0xFF, 1, 0, 0},                                 // neither mode
    };
    for (const Case& c : cases) {
        Fixture f({u"A"});
        f.data.featuresUsed = c.featuresUsed;
        f.data.displayMode = c.displayMode;
        f.data.colourDefined = {true, false, true, false, false, false, false, false,
                                false, false, false, false, false, false, false, true};
        f.data.fieldDefined[3] = true;
        f.data.fieldNames[3] = u"Input";
        ListAttributes(f.data, c.options, 1000, &Fixture::wide);
        SCOPED_TRACE(c.combinations);
        EXPECT_EQ(f.data.firstColourItem, c.combinations);
        EXPECT_EQ(f.data.firstFieldItem, c.combinations + c.colours);
        ASSERT_EQ(f.data.itemTexts.size(), static_cast<std::size_t>(c.combinations + c.colours + 1));
        EXPECT_EQ(f.data.itemTexts.back(), u"Input");
        EXPECT_EQ(f.data.itemValue[f.data.itemTexts.size() - 1], 3u);
    }
}

TEST(SelectListItem, KindNumberLabelAndColoursByRange) {
    Fixture f({u"A"}, u"A");
    f.data.working.colours[2] = 12;
    f.data.working.features[3] = TSchemeFeature{true, kAttrReverse, 4, 1};
    f.data.working.fields[5] = TSchemeField{true, false, 0, 9, 10};
    f.data.fieldDefined[5] = true;
    f.data.fieldNames[5] = u"Protected";
    ListAttributes(f.data, {true, false, false}, 10, &Fixture::wide);

    SelectListItem(f.data, 3);
    EXPECT_EQ(V({f.data.selectedKind, f.data.selectedValue}), V({0u, 3u}));
    EXPECT_EQ(V({f.data.shown.foreground, f.data.shown.background, f.data.shown.rawForeground}), V({1u, 4u, 4u}));
    EXPECT_EQ(f.data.currentLabel, u"Und+Bln");  // the list's text, short as shown

    SelectListItem(f.data, static_cast<uint32_t>(f.data.firstColourItem) + 2);
    EXPECT_EQ(V({f.data.selectedKind, f.data.selectedValue, f.data.shown.foreground, f.data.shown.background,
                 f.data.shown.features}),
              V({1u, 2u, 12u, 12u, 0u}));
    EXPECT_EQ(f.data.currentLabel, u"Green");

    SelectListItem(f.data, static_cast<uint32_t>(f.data.firstFieldItem));
    EXPECT_EQ(V({f.data.selectedKind, f.data.selectedValue, f.data.shown.foreground, f.data.shown.background}),
              V({2u, 5u, 9u, 10u}));
    EXPECT_EQ(f.data.currentLabel, u"Protected");
}

TEST(SchemeLifecycle, OpeningTakesTheNamedSchemeElseTheFirst) {
    EXPECT_EQ(Fixture({u"One", u"Two"}, u"two").data.working.name, u"Two");
    EXPECT_EQ(Fixture({u"One", u"Two"}, u"Three").data.working.name, u"One");
    EXPECT_EQ(Fixture({u"One", u"Two"}, u"Tw").data.working.name, u"One");  // a whole name, not its start
    Fixture empty({}, u"Three");
    EXPECT_EQ(empty.data.working.name, u"");
    EXPECT_FALSE(IsCustom(empty.data));
}

// A change forks the named scheme; the list keeps the original; a second change does not fork again.
TEST(SchemeLifecycle, ChangeForksIntoCustomAndLeavesTheNamedSchemeAlone) {
    Fixture f({u"One", u"Two"}, u"One");
    f.data.working.palette[1] = 0x123456;
    EXPECT_TRUE(MarkCustom(f.data));
    EXPECT_EQ(Names({f.data.working.name, f.data.working.previousName, f.data.currentName}),
              Names({u"(custom)", u"One", u"(custom)"}));
    EXPECT_TRUE(f.data.customModified);
    EXPECT_EQ(f.data.working.operation, kSchemeUpdate);
    EXPECT_FALSE(MarkCustom(f.data));
    EXPECT_EQ(f.data.working.previousName, u"One");
    EXPECT_EQ(f.list()[0].palette[1], DefaultPalette()[1]);
    EXPECT_EQ(f.operations(), V({0, 0}));
}

TEST(SchemeLifecycle, SwitchingAwayFromChangedCustomAsksFirst) {
    Fixture f({u"One", u"Two"}, u"One");
    MarkCustom(f.data);
    int asked = 0;
    EXPECT_EQ(SelectScheme(f.data, u"Two", [&] { return ++asked, false; }), TSchemeSwitch::Declined);
    EXPECT_EQ(Names({f.data.currentName, f.data.working.name}), Names({u"(custom)", u"(custom)"}));
    EXPECT_EQ(SelectScheme(f.data, u"", [&] { return ++asked, true; }), TSchemeSwitch::Unchanged);
    EXPECT_EQ(SelectScheme(f.data, u"Two", [&] { return ++asked, true; }), TSchemeSwitch::Switched);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(f.data.working.name, u"Two");
    EXPECT_FALSE(f.data.customModified);
    // The abandoned custom scheme was stored on the way out, and so reaches the reply.
    EXPECT_EQ(f.operations(), V({0, 0, 1}));
    EXPECT_EQ(f.list().back().name, u"(custom)");
    // Between named schemes nothing is asked.
    EXPECT_EQ(SelectScheme(f.data, u"One", [&] { return ++asked, false; }), TSchemeSwitch::Switched);
    EXPECT_EQ(asked, 2);
}

TEST(SchemeLifecycle, SaveAsNamesTheCustomSchemeAndOkTakesTheComboText) {
    Fixture f({u"One"}, u"One");
    AcceptColourConfig(f.data, u"One");  // untouched: stays unsent
    EXPECT_EQ(f.operations(), V({0}));
    f.data.working.boldMode = kActionToggleGroup;
    MarkCustom(f.data);
    SaveSchemeAs(f.data, u"Mine");
    EXPECT_EQ(f.data.working.name, u"Mine");
    EXPECT_EQ(f.data.currentName, u"(custom)");  // until OK reads the combo
    EXPECT_EQ(SchemeComboNames(f.data), Names({u"One", u"Mine"}));
    EXPECT_EQ(f.list()[1].boldMode, kActionToggleGroup);
    AcceptColourConfig(f.data, u"Mine");
    EXPECT_EQ(f.data.currentName, u"Mine");
    EXPECT_EQ(f.operations(), V({0, 1}));
}

TEST(SchemeLifecycle, RemovingTheOnlySchemeMarksItForDeletion) {
    Fixture f({u"Only"}, u"Only");
    EXPECT_EQ(RemoveSchemeQuestion(u"Remove scheme", f.data.working.name), u"Remove scheme \"Only\"?");
    RemoveWorkingScheme(f.data);
    EXPECT_TRUE(SchemeComboNames(f.data).empty());
    EXPECT_TRUE(IsCustom(f.data));
    AcceptColourConfig(f.data, u"");
    EXPECT_EQ(f.operations(), V({2, 1}));
    EXPECT_EQ(f.list()[1].name, u"(custom)");
}

// What Edit Attribute shows and allows for each kind of item.
TEST(AttrEdit, ViewByKind) {
    Fixture f({u"One"}, u"One");
    f.data.working.features[1] = TSchemeFeature{false, kAttrBlink | kFeatureBox, 3, 4};
    f.data.working.fields[0] = TSchemeField{false, false, kAttrUnderline, 5, 6};
    f.data.fieldDefined[0] = true;
    f.listAll();
    struct Case {
        uint32_t item;
        uint32_t features;
        bool featuresOn, overrideOn, paletteOn, single, targetsOn;
        uint32_t first, second;
    };
    const Case cases[] = {
        {0, 0, true, false, true, false, true, 7, 0},                            // Normal: no override, palette on
        {1, kAttrBlink | kFeatureBox, true, true, false, false, false, 3, 4},    // override off: palette off
        {static_cast<uint32_t>(f.data.firstColourItem) + 4, 0, false, false, true, true, false, 4, 4},  // one colour
        {static_cast<uint32_t>(f.data.firstFieldItem), kAttrUnderline, true, true, true, false, true, 5, 6},  // field 0
    };
    for (const Case& c : cases) {
        SelectListItem(f.data, c.item);
        const TAttrEditView v = BeginAttrEdit(f.data);
        SCOPED_TRACE(c.item);
        EXPECT_EQ(V({v.features, v.featuresEnabled, v.overrideEnabled, v.paletteEnabled, v.single, v.targetsEnabled,
                     v.first, v.second}),
                  V({c.features, c.featuresOn, c.overrideOn, c.paletteOn, c.single, c.targetsOn, c.first, c.second}));
    }
}

// The small layout only where the normal one does not fit; its "B" puts the palette's first selection,
// and so a press, on the background, "F" back on the foreground.
TEST(AttrEdit, SmallLayoutAndWhatItsFAndBMark) {
    struct Fit {
        int width, height;
        TAttrEditLayout layout;
    };
    for (const Fit& fit : {Fit{400, 300, TAttrEditLayout::Normal}, Fit{399, 300, TAttrEditLayout::Small},
                           Fit{400, 299, TAttrEditLayout::Small}, Fit{0, 0, TAttrEditLayout::Normal}})
        EXPECT_EQ(ChooseAttrEditLayout(400, 300, fit.width, fit.height), fit.layout) << fit.width << "x" << fit.height;

    const auto marks = [](bool single, TPaletteTarget target) {
        const TPaletteMarks m = AttrPaletteMarks(TAttrEditView{.single = single, .first = 3, .second = 4}, target);
        return V({m.single, m.first, m.second, m.firstLetter, m.secondLetter});
    };
    EXPECT_EQ(marks(false, TPaletteTarget::Foreground), V({0, 3, 4, u'F', u'B'}));
    EXPECT_EQ(marks(false, TPaletteTarget::Background), V({0, 4, 3, u'B', u'F'}));
    EXPECT_EQ(marks(true, TPaletteTarget::Background), V({1, 3, 3, u'X', u'B'}));
}

TEST(AttrEdit, EditsResolveAgainAndCancelRestoresButStaysChanged) {
    Fixture f({u"One"}, u"One");
    f.data.working.features[16].features = kAttrReverse;
    f.listAll();
    SelectListItem(f.data, 12);  // combination 16: 12 to 15 have both Bold and Dim and are not listed
    ASSERT_EQ(f.data.selectedValue, 16u);
    BeginAttrEdit(f.data);
    SetAttrOverride(f.data, true);
    EXPECT_TRUE(AttrEditView(f.data).paletteEnabled);
    PickAttrColours(f.data, 2, 9);
    EXPECT_EQ(V({f.data.shown.foreground, f.data.shown.background}), V({9, 2}));  // Reverse swaps
    PickAttrColours(f.data, 9, 2, TPaletteTarget::Background);  // the first selection is the background
    EXPECT_EQ(V({f.data.shown.rawForeground, f.data.shown.rawBackground}), V({2, 9}));
    ToggleAttrFeature(f.data, kAttrReverse, false);
    EXPECT_EQ(V({f.data.shown.foreground, f.data.shown.background}), V({2, 9}));
    f.data.working.palette[3] = 1;
    CancelAttrEdit(f.data);
    EXPECT_EQ(V({f.data.working.features[16].features, f.data.working.features[16].override, f.data.changed}),
              V({kAttrReverse, 0, 1}));
    EXPECT_EQ(f.data.working.palette[3], DefaultPalette()[3]);

    // A colour item: the pick goes to the colour map, a feature box only marks the change.
    SelectListItem(f.data, static_cast<uint32_t>(f.data.firstColourItem) + 6);
    BeginAttrEdit(f.data);
    f.data.changed = false;
    ToggleAttrFeature(f.data, kAttrBlink, true);
    EXPECT_TRUE(f.data.changed);
    EXPECT_EQ(f.data.shown.features, 0u);
    PickAttrColours(f.data, 11, 11);
    EXPECT_EQ(f.data.working.colours[6], 11u);
    EXPECT_EQ(V({f.data.shown.foreground, f.data.shown.background}), V({11, 11}));
    CancelAttrEdit(f.data);
    EXPECT_EQ(f.data.working.colours[6], 6u);
}

TEST(AdvancedSettings, DisableBoxesReadInvertedAndNoneKeepsTheMode) {
    Fixture f({u"One"}, u"One");
    f.data.enableBlink = true;
    f.data.enableInvisCfg = true;
    f.data.working.useBgGraphic = true;
    f.data.working.graphicMode = kGraphicStretch;
    TAdvancedSettings a = LoadAdvancedSettings(f.data);
    EXPECT_EQ(V({a.disableBlink, a.disableBlinkCfg, a.disableInvis, a.disableInvisCfg, a.background}),
              V({0, 1, 1, 0, 3}));
    a.background = 0;
    a.disableBlink = true;
    StoreAdvancedSettings(f.data, a);
    EXPECT_EQ(V({f.data.working.useBgGraphic, f.data.working.graphicMode, f.data.enableBlink}),
              V({0, kGraphicStretch, 0}));
    a.background = 2;
    StoreAdvancedSettings(f.data, a);
    EXPECT_EQ(V({f.data.working.useBgGraphic, f.data.working.graphicMode}), V({1, kGraphicTile}));
}

TEST(PaletteEditor, StartIndexAndComponentBytes) {
    Fixture f({});
    f.data.shown.foreground = 16;
    EXPECT_EQ(PaletteStartIndex(f.data), 15u);
    f.data.shown.foreground = 4;
    EXPECT_EQ(PaletteStartIndex(f.data), 4u);
    f.data.paletteIndex = 4;
    EXPECT_EQ(SetPaletteEntry(f.data, 0x101, 2, 3), 0x030201u);
    EXPECT_EQ(f.data.paletteEdit[4], 0x030201u);
    EXPECT_TRUE(f.data.changed);
}

TEST(PaletteControl, GeometryTakesTheSmallerSideAndHitsTheFirstCell) {
    const TPaletteGeometry square = PaletteGeometry(161, 60);
    EXPECT_EQ(square.cellSize, 20);
    EXPECT_EQ(square.cells[9], (TCellRect{20, 20, 40, 40}));
    const TPaletteGeometry wide = PaletteGeometry(400, 21);  // cells sized by the height
    EXPECT_EQ(wide.cellSize, 10);
    EXPECT_EQ(wide.cells[15], (TCellRect{70, 10, 80, 20}));
    EXPECT_EQ(PaletteHit(wide, 79, 19), 15);
    EXPECT_EQ(PaletteHit(wide, 80, 5), -1);   // the empty right part
    EXPECT_EQ(PaletteHit(square, 20, 0), 1);  // an edge belongs to the cell it starts
    EXPECT_EQ(PaletteGeometry(0, 0).cellSize, 0);
}

TEST(PaletteControl, ClicksAndMarkers) {
    TPaletteSelection s;
    EXPECT_TRUE(PaletteClick(s, false, 3));
    EXPECT_TRUE(PaletteClick(s, true, 3));
    EXPECT_FALSE(PaletteClick(s, false, -1));
    ASSERT_EQ(PaletteMarkers(s).size(), 1u);
    EXPECT_EQ(PaletteMarkers(s)[0].text, u"FB");  // both letters in the one cell
    EXPECT_TRUE(PaletteClick(s, true, 5));
    EXPECT_EQ(PaletteMarkers(s)[1].cell, 5);
    s.single = true;
    s.firstLetter = u'X';
    EXPECT_FALSE(PaletteClick(s, true, 7));
    EXPECT_TRUE(PaletteClick(s, false, 8));
    EXPECT_EQ(V({static_cast<uint32_t>(s.first), static_cast<uint32_t>(s.second)}), V({8, 8}));
    ASSERT_EQ(PaletteMarkers(s).size(), 1u);
    EXPECT_EQ(PaletteMarkers(s)[0].text, u"X");
}

TEST(PaletteControl, MarkerColourByWeight) {
    EXPECT_TRUE(MarkerIsWhite(MakeColour(0, 213, 1)));       // 640
    EXPECT_FALSE(MarkerIsWhite(MakeColour(0, 213, 2)));      // 641
}
