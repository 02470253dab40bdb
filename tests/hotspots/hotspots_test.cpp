#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "hotspots/hotspotdata.h"
#include "hotspots/hotspotfile.h"
#include "hotspots/hotspotrules.h"
#include "keyboard/keymapdata.h"
#include "platform/tempfolder.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {
namespace {

// Each test writes its own files in a new folder, so that the process-wide ini cache never holds an
// older text of them.
class HotSpotFiles : public ::testing::Test {
protected:
    std::u16string file(const std::string& name, const std::string& bytes) {
        dir_.write(name, bytes);
        return dir_.file(name);
    }
    static HotSpots read(const std::u16string& path, const char16_t* section) {
        HotSpots set;
        set.Read(path.c_str(), section);
        return set;
    }
    test::TempFolder dir_;
};

class CountingHotSpots : public HotSpots {
public:
    void Changed() override { ++changes; }
    int changes = 0;
};

// The descriptions in list order, each followed by a comma.
std::u16string order(const HotSpots& set) {
    std::u16string text;
    for (const HotSpot& spot : set.spots) text += spot.description + u",";
    return text;
}

TEST(HotSpotColours, ReadingIsNotTheMirrorOfWriting) {
    // The plain forms, both ways, are in the file tests' whole sections and records.
    EXPECT_EQ(ParseColourText(u"", u'|'), kDefaultColour);
    // With "|" the second number takes the rest and stops at the bar; blue is lost.
    EXPECT_EQ(ParseColourText(u"10|20|30", u'|'), 0x00140Au);
    // Each number keeps its low 8 bits, converted as far as it has digits.
    EXPECT_EQ(ParseColourText(u"257,x,-1", u','), 0xFF0001u);
    EXPECT_EQ(ParseColourText(u"7", u','), 7u);
}

std::u16string num(int32_t n) { return latin1ToUtf16(std::to_string(n)); }

// Each hotspot's description, record type, macro, key code and the old-form flag.
std::u16string summary(const HotSpots& set) {
    std::u16string out;
    for (const HotSpot& s : set.spots)
        out += s.description + u"," + num(s.recordType) + u"," + s.sendString + u"," + num(s.keyCode) +
               (s.needsConversion ? u",old;" : u";");
    return out;
}

// A record as read, written again, then what writing leaves out: the old form's key code and flag.
std::u16string reread(std::u16string_view text, HotSpot& spot) {
    ParseHotSpotRecord(text, spot);
    return FormatHotSpotRecord(spot) + u" key " + num(spot.keyCode) +
           (spot.needsConversion ? u" old" : u"");
}

// Each record reads into the same blank, so what one leaves behind would show in the next.
TEST(HotSpotRecord, FieldsFixUpsAndTheOldForm) {
    const std::pair<std::u16string_view, std::u16string_view> cases[] = {
        // Type above 3 gives 0; left and top below 0 give 0, right below left gives left, bottom stays;
        // the key code is read only for type 1; with "|" a colour loses its blue.
        {u"Login,7,5,1,-3,-2,-9,-4,user:,1,1,,,44,0,0,0,{Enter},0,0,1,[,],2,1,10|20|30,,",
         u"Login,0,5,1,0,0,0,-4,user:,1,1,,,0,0,0,0,{Enter},0,0,1,[,],2,1,10|20|0,, key 0"},
        // Old form: a key code, characters as codes in 12 and 13 that win over 22 and 23; code 0 gives none.
        {u",1,3,0,9,1,5,1,x,0,0,65,0,44,0,0,0,,0,0,0,pre,post,0,0,,",
         u"untitled,1,3,0,9,1,9,1,x,0,0,,,0,0,0,0,,0,0,0,A,,0,0,,, key 44 old"},
        {u"d,2", u"d,2,0,0,0,0,0,0,,0,0,,,0,0,0,0,,0,0,0,,,0,0,,, key 0"},  // too few fields: 0 and empty
        {u"a,b,2,3", u"a,0,2,1,0,0,0,0,,0,0,,,0,0,0,0,,0,0,0,,,0,0,,, key 0"},  // an old raw comma still ends its field
    };
    HotSpot spot;
    for (const auto& [text, back] : cases) EXPECT_EQ(reread(text, spot), back);
}

// Every character comes back from every text field, a comma and the escape among them, and the
// record keeps its 27 fields. Old records hold no escape: their text reads as it stands.
TEST(HotSpotRecord, TextFieldsKeepEveryCharacter) {
    std::u16string all;
    for (char16_t c = u' '; c <= u'~'; ++c) all += c;
    all += u"\u00e9\u20ac\u4e2d\U0001F600";
    const std::u16string texts[] = {all, u",", u"\u0001;", u"\u0001"};
    std::u16string HotSpot::*const fields[] = {&HotSpot::description, &HotSpot::matchString, &HotSpot::sendString,
                                               &HotSpot::preChars, &HotSpot::postChars};
    for (auto field : fields)
        for (const std::u16string& text : texts) {
            HotSpot spot{.description = u"d", .recordType = kRecordText, .top = 3, .left = 2, .bottom = 5, .right = 4,
                         .sendString = u"s", .prePostMode = kPrePostAsBlanks};
            spot.*field = text;
            const std::u16string record = FormatHotSpotRecord(spot);
            EXPECT_EQ(std::count(record.begin(), record.end(), u','), 27);
            HotSpot back;
            ParseHotSpotRecord(record, back);
            EXPECT_EQ(back.*field, text);
            EXPECT_EQ(FormatHotSpotRecord(back), record);  // every other field in its place
        }
    const std::u16string old = u"a\\r%1&#44;\"b\",2,3,0,1,2,3,4,[x]|*,0,0,,,0,0,0,0,{PF1}\\e;~,0,0,1,\\,%,0,0,,,";
    HotSpot spot;
    ParseHotSpotRecord(old, spot);
    EXPECT_EQ(spot.description + spot.sendString + spot.preChars, u"a\\r%1&#44;\"b\"{PF1}\\e;~\\");
    EXPECT_EQ(FormatHotSpotRecord(spot), old);
}

// Whether the set is on, then its text and background colours in hex (ffffffff for the emulation's).
std::string look(const HotSpots& set) {
    char text[32];
    std::snprintf(text, sizeof text, "%s %x/%x", set.enabled ? "on" : "off", set.foreground, set.background);
    return text;
}

TEST_F(HotSpotFiles, SetKeysAndTheirDefaults) {
    const std::u16string path = file("a.hsp",
                                     "[version]\r\nv=1\r\n"
                                     "[plain]\r\nHS1=x\r\n"
                                     "[off]\r\nOn=0\r\nBGndColour=\r\nFGndColour=1,2,3\r\n"
                                     "[five]\r\nOn=5\r\nBGndColour=10, 20, 30\r\n");
    HotSpots set;
    set.Read(path.c_str(), u"plain");
    EXPECT_EQ(look(set), "on ffffffff/c0c0c0");  // the emulation's text colour; grey when the key is absent
    set.Read(path.c_str(), u"off");
    EXPECT_EQ(look(set), "off 30201/ffffffff");  // empty, as a write of the emulation's colour leaves it
    EXPECT_TRUE(set.spots.empty());
    set.Read(path.c_str(), u"five");
    EXPECT_EQ(look(set), "on ffffffff/1e140a");
    EXPECT_EQ(HotSpotSetNames(path), (std::vector<std::u16string>{u"plain", u"off", u"five"}));
}

TEST_F(HotSpotFiles, ListEndsAtAGapAndIsSortedByDescription) {
    const std::u16string path = file("b.hsp",
                                     "[IBM5250]\r\nHS1=beta,2\r\nHS2=Alpha,2\r\nHS3=alpha,2,4\r\nHS5=lost,2\r\n"
                                     "garbage line\r\n=novalue\r\n");
    CountingHotSpots set;
    set.Read(path.c_str(), u"IBM5250.2");  // the emulation's name up to its dot
    EXPECT_EQ(set.setName, u"IBM5250");
    EXPECT_EQ(order(set), u"Alpha,alpha,beta,");
    // Count, next id, the first one's id (ids in file order, before the sort), change notices.
    EXPECT_EQ(std::vector<int64_t>({set.count, set.nextId, set.spots.front().id, set.changes}),
              std::vector<int64_t>({3, 4, 2, 1}));
    EXPECT_FALSE(set.dirty);

    // A missing section or a missing argument read as an empty set.
    set.Read(path.c_str(), u"none");
    EXPECT_TRUE(set.spots.empty());
    EXPECT_EQ(set.setName, u"none");
    set.Read(path.c_str(), u"IBM5250");
    set.Read(path.c_str(), nullptr);
    EXPECT_EQ(set.count, 0);
    EXPECT_EQ(set.setName, u"IBM5250");  // untouched
    EXPECT_EQ(set.changes, 4);
}

TEST_F(HotSpotFiles, RedirectedSetIsSavedIntoTheAskedSection) {
    const std::u16string path = file("c.hsp",
                                     "[Tandem]\r\nSet=Shared\r\nDelay=300\r\n"
                                     "[Shared]\r\nBGndColour=1,1,1\r\nHS1=shared one,2\r\n"
                                     "[loop1]\r\nSet=loop2\r\n[loop2]\r\nSet=loop1.x\r\nHS1=from loop2,2\r\n");
    HotSpots set = read(path, u"Tandem");
    EXPECT_EQ(set.setName, u"Tandem");
    EXPECT_EQ(order(set), u"shared one,");
    EXPECT_EQ(set.background, 0x010101u);

    set.dirty = true;
    set.Write(path.c_str(), nullptr);
    EXPECT_FALSE(set.dirty);
    EXPECT_EQ(order(read(path, u"Tandem")), u"shared one,");
    const std::string text = dir_.read("c.hsp");
    EXPECT_EQ(text.find("Set=Shared"), std::string::npos);  // Set and Delay are gone
    EXPECT_EQ(text.find("Delay"), std::string::npos);

    // Sections that point at each other end after a few rounds, in one of the two.
    const HotSpots loop = read(path, u"loop1");
    EXPECT_EQ(loop.setName, u"loop1");
    EXPECT_LE(loop.count, 1);
}

TEST_F(HotSpotFiles, WriteStoresTheWholeSectionOnlyWhenDirty) {
    const std::string original = "[keep]\r\nHS1=kept,2\r\n[s]\r\nDelay=9\r\nHS1=old,2\r\nHS2=older,2\r\n";
    const std::u16string path = file("d.hsp", original);
    HotSpots set = read(path, u"s");
    EXPECT_TRUE(set.Write(path.c_str(), nullptr));  // not dirty: nothing happens
    EXPECT_EQ(dir_.read("d.hsp"), original);

    // Nowhere to store the changes: they are kept and the write says so.
    HotSpots nameless;
    nameless.dirty = true;
    EXPECT_FALSE(nameless.Write(path.c_str(), nullptr));
    EXPECT_FALSE(nameless.Write(path.c_str(), u""));
    EXPECT_FALSE(nameless.Write(nullptr, u"s"));
    EXPECT_FALSE(nameless.Write(dir_.file("no/d.hsp").c_str(), u"s"));
    EXPECT_TRUE(nameless.dirty);
    EXPECT_EQ(dir_.read("d.hsp"), original);

    set.Clear();
    set.Add({.foreground = 0x1E140A, .background = 0x000001, .description = u"new", .recordType = kRecordText,
             .sendString = u"{Enter}"});
    set.background = kDefaultColour;
    set.foreground = 0x030201;
    set.enabled = false;
    set.dirty = true;
    set.Write(path.c_str(), nullptr);
    EXPECT_EQ(dir_.read("d.hsp"),
              "[keep]\r\nHS1=kept,2\r\n"
              "[s]\r\nFGndColour=1,2,3\r\nBGndColour=\r\nOn=0\r\n"
              "HS1=new,2,3,0,0,0,0,0,,0,0,,,0,0,0,0,{Enter},0,0,0,,,0,0,10|20|30,1|0|0,\r\n");

    // Read back: the hotspot's colours lose their blue, the set's keep theirs.
    HotSpots back = read(path, u"s");
    ASSERT_EQ(back.count, 1);
    EXPECT_EQ(FormatHotSpotRecord(back.spots.front()),
              u"new,2,3,0,0,0,0,0,,0,0,,,0,0,0,0,{Enter},0,0,0,,,0,0,10|20|0,1|0|0,");
    EXPECT_EQ(look(back), "off 30201/ffffffff");

    // Into another section by name.
    back.dirty = true;
    back.Write(path.c_str(), u"copy");
    EXPECT_EQ(order(read(path, u"copy")), u"new,");
}

TEST_F(HotSpotFiles, MalformedRecordsReadWithoutHarm) {
    const std::string longText(700, 'x');
    const std::u16string path = file("e.hsp",
                                     "HS1=before any section\r\n"
                                     "[s]\r\n"
                                     "HS1=" + longText + "\r\n"
                                     "HS2=,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,\r\n"
                                     "HS3=n,abc,,x,99999999999999999999,5\r\n"
                                     "HS4=\t\r\n");
    const HotSpots set = read(path, u"s");
    ASSERT_EQ(set.count, 3);  // HS4 reads as empty (white space at the end goes) and ends the list
    // A value is read with 512 characters; a left edge past the range of a number is still not negative.
    EXPECT_EQ(summary(set), u"n,0,,0;untitled,0,,0;" + std::u16string(511, u'x') + u",0,,0;");
    EXPECT_GE(set.spots.front().left, 0);
}

TEST_F(HotSpotFiles, OldFormKeysBecomeEmulationKeyNames) {
    const std::u16string path = file("f.hsp",
                                     "[s]\r\nHS1=found,1,3,0,0,0,0,0,,0,0,,,112,0,0,0,,\r\n"
                                     "HS2=missing,1,3,0,0,0,0,0,,0,0,,,113,0,0,0,,\r\n"
                                     "HS3=text,2,3,0,0,0,0,0,,0,0,,,112,0,0,0,{Clear},\r\n");
    const TKeyData keys{.physicalKeys = {{u"F1", 112, 0}, {u"F2", 113, 0}}, .emulationKeys = {{u"PF1", 7, 0}},
                        .keyMap = {{112, 7}, {113, 99}}};

    HotSpots set = read(path, u"s");
    EXPECT_TRUE(set.needsKeyConversion);
    set.ConvertKeys(keys);
    EXPECT_FALSE(set.needsKeyConversion);
    EXPECT_TRUE(set.dirty);
    // No chain from F2 to a name: type 1 stays, no longer marked. The save loses its key code.
    EXPECT_EQ(summary(set), u"found,2,{PF1},112;missing,1,,113;text,2,{Clear},0;");
    set.Write(path.c_str(), nullptr);
    EXPECT_EQ(summary(read(path, u"s")), u"found,2,{PF1},0;missing,1,,0,old;text,2,{Clear},0;");
}

TEST_F(HotSpotFiles, SetEditingKeepsIdsAndCount) {
    HotSpots set;
    const int32_t first = set.Add(HotSpot{});
    EXPECT_EQ(set.Add(HotSpot{}), first + 1);
    EXPECT_TRUE(set.Remove(first));
    EXPECT_FALSE(set.Remove(first));
    EXPECT_EQ(set.count, 1);
    EXPECT_FALSE(set.dirty);  // the editors mark changes themselves

    // A hotspot that does not belong to the file survives a read and is not written.
    set.spots.front().fromFile = false;
    const std::u16string path = file("g.hsp", "[s]\r\nHS1=x,2\r\n");
    set.Read(path.c_str(), u"s");
    EXPECT_EQ(set.count, 2);
    set.dirty = true;
    set.Write(path.c_str(), nullptr);
    EXPECT_EQ(dir_.read("g.hsp").find("HS2"), std::string::npos);
}

TEST(HotSpotRules, FileKeptInRequestAndFullPath) {
    const struct { const char16_t* dir; const char16_t* path; const char16_t* kept; } cases[] = {
        {u"C:\\hs", u"C:\\hs\\a.hsp", u"a.hsp"},
        {u"C:\\hs\\", u"c:\\HS\\sub\\a.hsp", u"sub\\a.hsp"},
        {u"C:\\hs", u"C:\\hsp\\a.hsp", u"C:\\hsp\\a.hsp"},  // a longer folder name is not inside
        {u"C:\\hs", u"D:\\hs\\a.hsp", u"D:\\hs\\a.hsp"},
        {u"", u"C:\\a.hsp", u"C:\\a.hsp"},
        {u"C:\\hs", u"C:\\hs", u"C:\\hs"},
    };
    for (const auto& c : cases) EXPECT_EQ(HotSpotFileForRequest(c.dir, c.path), c.kept);

    TConfigSession s;
    s.hotspotDirectory = u"C:\\spots";
    s.hotspotFile = u"a.hsp";
    EXPECT_EQ(HotSpotFullPath(s), u"C:\\spots\\a.hsp");  // joined as key definition names are
}

HotSpots setOf(std::initializer_list<const char16_t*> names) {
    HotSpots set;
    for (const char16_t* name : names) set.Add({.description = name});
    return set;
}

TEST(HotSpotRules, ListAfterEachEdit) {
    HotSpots set = setOf({u"b", u"d", u"c"});
    HotSpot copy = set.spots.front();
    copy.description = u"a";
    EXPECT_EQ(ApplyCopiedHotSpot(set, copy), 3);  // copying does not sort
    EXPECT_EQ(order(set), u"b,d,c,a,");
    HotSpot edited = *set.Find(2);
    edited.description = u"E";
    EXPECT_EQ(ApplyEditedHotSpot(set, 2, edited), 3);  // an edit sorts, the edited one stays selected
    EXPECT_EQ(order(set), u"a,b,c,E,");
    EXPECT_EQ(set.Find(2)->description, u"E");
    EXPECT_EQ(ApplyNewHotSpot(set, {.description = u"bb"}), 2);
    EXPECT_TRUE(set.dirty);

    struct Del { int index; int selected; const char16_t* left; };
    const Del deletes[] = {{1, 1, u"a,bb,c,E,"}, {9, -1, u"a,bb,c,E,"}, {3, 2, u"a,bb,c,"},
                           {0, 0, u"bb,c,"},    {1, 0, u"bb,"},        {0, -1, u""}};
    set = setOf({u"a", u"b", u"bb", u"c", u"E"});
    set.Sort();
    for (const Del& d : deletes) {
        EXPECT_EQ(ApplyDeleteHotSpot(set, d.index), d.selected) << d.index;
        EXPECT_EQ(order(set), d.left);
    }
}

TEST(HotSpotRules, SaveQuestion) {
    HotSpots set;
    EXPECT_EQ(SaveOnYesFor(set), SaveOnYes::SaveAs);
    set.setName = u"VT220";
    EXPECT_EQ(SaveOnYesFor(set), SaveOnYes::Write);
}

TEST(HotSpotRules, ColourBars) {
    struct Case { int position, code, thumb, target; };
    const Case cases[] = {{100, 0, 0, 75}, {10, 0, 0, 0},    {100, 1, 0, 125}, {250, 1, 0, 255}, {100, 2, 0, 40},
                          {100, 3, 0, 160}, {100, 4, 17, 17}, {100, 5, 300, 255}, {100, 6, 0, 0}, {100, 7, 0, 255},
                          {100, 8, 0, 100}};
    for (const Case& c : cases) EXPECT_EQ(ColourScrollTarget(c.position, c.code, c.thumb), c.target) << c.code;
    EXPECT_EQ(PaletteRelativeColour(1, 2, 3), 0x02030201u);
    EXPECT_TRUE(IsEmulationColour(0xFFFFFFFEu));
    EXPECT_FALSE(IsEmulationColour(0x00FFFFFFu));
}

TEST(HotSpotRules, StyleSample) {
    using D = Decoration;
    const TDecorationStep light{D::LightEdge, 0, 0}, dark{D::DarkEdge, 0, 0}, corners{D::Corners, 0, 0},
        border{D::Border, 0, kSampleBlack};
    auto in = [](TDecorationStep s, int inset) { s.inset = inset; return s; };
    struct Case { int32_t style; bool held; bool system; std::vector<TDecorationStep> steps; };
    const Case cases[] = {
        {0, false, false, {}},
        {1, false, false, {light, corners}},
        {2, false, false, {dark, corners}},
        {3, false, false, {light, dark, corners}},
        {4, false, false, {border}},
        {5, false, false, {border, in(light, 1), in(dark, 1), in(corners, 1)}},
        {6, false, false, {border, in(light, 2), in(dark, 2), in(corners, 2)}},
        {7, false, false, {light, dark, corners, in(light, 1), in(dark, 1), in(corners, 1)}},
        {8, false, true, {}},
        {3, true, false, {border}},
        {263, true, true, {}},
        {259, true, false, {{D::Border, 0, kSampleLightGrey}}},
    };
    for (const Case& c : cases) {
        const TStyleSample s = StyleSampleFor(c.style, c.held, 0x123456, 0x654321);
        EXPECT_EQ(s.systemFill, c.system) << c.style << c.held;
        EXPECT_EQ(s.decorations, c.steps) << c.style << c.held;
    }
    const TStyleSample unset = StyleSampleFor(3, false, kDefaultColour, kDefaultColour);
    EXPECT_EQ(std::pair(unset.fill, unset.text), std::pair(kSampleGrey, 0u));
    const TStyleSample own = StyleSampleFor(3, false, 0x123456, 0x654321);
    EXPECT_EQ(std::pair(own.fill, own.text), std::pair(0x123456u, 0x654321u));
}

}  // namespace
}  // namespace qrl
