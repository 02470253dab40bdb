#include <gtest/gtest.h>

#include "fakehost.h"
#include "locale/language.h"
#include "platform/tempfolder.h"
#include "request/hooks.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {
namespace {

// The text of the ECfgError that loading `request` throws, or "no error".
std::u16string loadError(std::u16string_view request) {
    TConfigSession session;
    try {
        session.LoadRequestText(request);
    } catch (const ECfgError& error) {
        return error.Text();
    }
    return u"no error";
}

// A session that has read `request`.
std::unique_ptr<TConfigSession> loaded(std::u16string_view request) {
    auto session = std::make_unique<TConfigSession>();
    session->LoadRequestText(request);
    return session;
}

// An element's fields as read from the request, in one text for one comparison: the type code,
// min, max and max_length, the six flags (hidden, rdonly, password, macro_assist, allow_emkeys,
// cencoded), then default, value, group, description, help_file, help_id and the default help file.
std::u16string fields(const TElementDef& e) {
    std::u16string text = e.name + u" " + decimal(static_cast<int>(e.type)) + u" " + decimal(e.min) + u" " +
                          decimal(e.max) + u" " + decimal(e.maxLength) + u" ";
    for (bool flag : {e.hidden, e.readOnly, e.password, e.macroAssist, e.allowEmKeys, e.cEncoded})
        text += flag ? u'1' : u'0';
    for (std::u16string_view part : {e.defaultValue.view(), std::u16string_view(e.value), e.group.view(),
                                     e.description.view(), e.helpFile.view(), e.helpId.view(), e.defaultHelpFile.view()})
        text.append(u"|").append(part);
    return text;
}

TEST(Loader, RootAttributesMatchExactlyWhileTagsFoldCase) {
    const auto s = loaded(u"<CONFIG MODULETYPE=\"x\" IniFile=\" a.ini \" LangId=\"de\" LangDir=\"\"/>");
    EXPECT_EQ(s->moduleType, u"");  // MODULETYPE is not ModuleType
    EXPECT_EQ(s->iniFile, u"a.ini");
    EXPECT_EQ(s->langId, u"de");
}

TEST(Loader, ErrorTexts) {
    EXPECT_EQ(loadError(u"<Konfig/>"), u"root node must be <Config>");
    EXPECT_EQ(loadError(u"<Config><DTD><Elem Name=\"a\"/></DTD></Config>"),
              u"expected tag <Element>, found <Elem> instead");
    EXPECT_EQ(loadError(u"<Config><Data><item Element=\"a\"/><Other/></Data></Config>"),
              u"expected tag <Item>, found <Other> instead");
    EXPECT_EQ(loadError(u"<Config><ModuleList><Module/><mod/></ModuleList></Config>"),
              u"expected tag <Module>, found <mod> instead");
    EXPECT_EQ(loadError(u"<Config><DTD><Element Type=\"int\"/></DTD></Config>"),
              u"tag <Element> : Name not specified");
    EXPECT_EQ(loadError(u"<Config><DTD><Element Name=\"  \"/></DTD></Config>"),
              u"tag <Element> : Name not specified");
    EXPECT_EQ(loadError(u"<Config>\n<DTD>\n<Element Name=\"a\">\n</DTD></Config>"), u"XML parsing error : line 4");
    EXPECT_EQ(loadError(u""), u"XML parsing error : line 1");  // no root at all is a syntax error
    // Unknown children of the root are passed over, unknown children of Data are not.
    EXPECT_EQ(loadError(u"<Config><Other><x/></Other><!-- c --><?pi x?>text</Config>"), u"no error");
}

TEST(Loader, ElementAttributes) {
    const auto s = loaded(
        u"<Config><DTD>"
        u"<Element Name=\"Speed\" Type=\"INTEGER\" Min=\"10x\" Max=\"-20\" Default=\" 12 \" descr=\"Speed\""
        u" max_length=\"8\" hidden=\"1\" rdonly=\"true\" password=\"2\" macro_assist=\"1\" allow_emkeys=\"0\""
        u" cencoded=\"1\" group=\"Line.Speed\" help_file=\"h.hlp\" help_id=\"77\"/>"
        u"<Element Name=\"Other\" hidden=\"true\" rdonly=\"1\" Type=\"bools\" rdonly=\"0\"/>"
        u"</DTD></Config>");
    ASSERT_EQ(s->elements.size(), 2u);
    // Numbers are read leniently, "true" is 0 as an integer, only exactly "1" hides; the first of two
    // attributes of one name counts.
    EXPECT_EQ(fields(s->elements[0]), u"Speed 3 10 -20 8 101101|12|12|Line.Speed|Speed|h.hlp|77|");
    EXPECT_EQ(fields(s->elements[1]), u"Other 12 0 0 0 010000|||||||");
}

TEST(Loader, ChoiceLists) {
    const auto s = loaded(
        u"<Config><DTD>"
        u"<Element Name=\"a\" Type=\"set\" strings=\"Low,,High\"/>"
        u"<Element Name=\"b\" Type=\"set\" strings=\"x\" values=\"5,6,7\"/>"
        u"<Element Name=\"c\" Type=\"stringset\" strings=\"Red,Green\"/>"
        u"<Element Name=\"d\" Type=\"stringset\" strings=\"Red,Green\" values=\"r\"/>"
        u"<Element Name=\"f\" Type=\"filepath\" strings=\"Keys\" values=\"Key files|*.key,All|*.*\"/>"
        u"</DTD></Config>");
    using L = std::vector<std::u16string>;
    EXPECT_EQ(s->elements[0].strings, (L{u"Low", u"High"}));
    EXPECT_EQ(s->elements[0].values, (L{u"0", u"1"}));
    EXPECT_EQ(s->elements[1].strings, (L{u"x"}));
    EXPECT_EQ(s->elements[1].values, (L{u"5", u"6", u"7"}));
    EXPECT_EQ(s->elements[2].values, (L{u"Red", u"Green"}));
    EXPECT_EQ(s->elements[3].values, (L{u"r", u"Green"}));
    EXPECT_EQ(s->elements[4].fileFilter, u"Key files|*.key,All|*.*");
    EXPECT_EQ(s->elements[4].values, (L{u"0"}));
}

class LoaderLanguage : public ::testing::Test {
protected:
    void SetUp() override { languageTable().texts.clear(); }
    void TearDown() override { languageTable().texts.clear(); }
};

TEST_F(LoaderLanguage, ElementKeysUseTheHelpFileReadSoFar) {
    ParseLanguageText(
        "h.hlp.G.N_1=Eins\n"
        "h.hlp.G.N_2=\"Zwei\"\n"
        "h.hlp.G.N_0=Beschreibung\n"
        "h.hlp.G.M=Ohne Liste\n"
        ".G.L_0=Frueh\n");
    const auto s = loaded(
        u"<Config><Help help_file=\"h.hlp\" base_file=\"b\" topic_name=\"t\"/><DTD>"
        u"<Element Name=\"N\" group=\"G\" Type=\"stringset\" strings=\"one,two\" descr=\"Description\"/>"
        u"<Element Name=\"M\" group=\"G\" descr=\"Plain\"/>"
        u"</DTD><Help help_file=\"\" topic_name=\"u\"/></Config>");
    // A stringset stores the translated texts as its values.
    using L = std::vector<std::u16string>;
    EXPECT_EQ(s->elements[0].strings, (L{u"Eins", u"Zwei"}));
    EXPECT_EQ(s->elements[0].values, (L{u"Eins", u"Zwei"}));
    EXPECT_EQ(fields(s->elements[0]), u"N 5 0 0 0 000000|||G|Beschreibung|||h.hlp");
    EXPECT_EQ(fields(s->elements[1]), u"M 0 0 0 0 000000|||G|Ohne Liste|||h.hlp");
    EXPECT_EQ(s->helpFile, u"h.hlp");  // an empty attribute replaces nothing
    EXPECT_EQ(s->helpBaseFile, u"b");
    EXPECT_EQ(s->helpTopic, u"u");

    // Help after DTD: the keys begin with an empty part.
    const auto late = loaded(
        u"<Config><DTD><Element Name=\"L\" group=\"G\" strings=\"x\" descr=\"d\"/></DTD>"
        u"<Help help_file=\"h.hlp\"/></Config>");
    EXPECT_EQ(fields(late->elements[0]), u"L 0 0 0 0 000000|||G|Frueh|||");
}

TEST(Loader, ModuleLists) {
    const auto s = loaded(
        u"<Config><ModuleList Current=\"vt\" Type=\"Emul\" Connected=\" 1 \">"
        u"<Module Name=\"vt\" Description=\"VT 220\"/>text<Module Name=\"ibm\"/></ModuleList>"
        u"<ModuleList Current=\"tcp\" Connected=\"true\"/></Config>");
    ASSERT_EQ(s->moduleLists.size(), 2u);
    EXPECT_EQ(s->moduleLists[0].current, u"vt");
    EXPECT_EQ(s->moduleLists[0].type, u"Emul");
    ASSERT_EQ(s->moduleLists[0].modules.size(), 2u);
    EXPECT_EQ(s->moduleLists[0].modules[0].description, u"VT 220");
    EXPECT_EQ(s->moduleLists[0].modules[1].name, u"ibm");
    EXPECT_EQ(s->moduleLists[1].current, u"tcp");
    EXPECT_FALSE(s->connected);  // the last list decides, and only "1" counts

    EXPECT_TRUE(loaded(u"<Config><ModuleList Connected=\" 1 \"/></Config>")->connected);

    // A list that breaks off keeps its record, although the request fails.
    TConfigSession broken;
    EXPECT_THROW(broken.LoadRequestText(u"<Config><ModuleList Current=\"a\"><x/></ModuleList></Config>"),
                 ECfgError);
    ASSERT_EQ(broken.moduleLists.size(), 1u);
    EXPECT_EQ(broken.moduleLists[0].current, u"a");
}

TEST(Loader, DataValuesAndApply) {
    const auto s = loaded(
        u"<Config><DTD><Element Name=\"Host\" Default=\"d\"/><Element Name=\"host\" Default=\"second\"/></DTD>"
        u"<Data><Item Element=\"HOST\" Value=\"alpha\"/><Item Element=\"x\" Value=\"1\"/></Data>"
        u"<DTD><Element Name=\"Late\" Type=\"keymaplist\"/></DTD>"
        u"<Data><Item Element=\"late\" Value=\"v\"/></Data></Config>");
    ASSERT_EQ(s->dataValues.size(), 2u);  // the item of Late is a list item, not a value
    EXPECT_EQ(s->dataValues[0].name, u"HOST");
    EXPECT_TRUE(s->keyDataPresent);

    EXPECT_EQ(s->elements[0].value, u"d");  // not yet applied
    s->ApplyDataValues();
    // Host takes the first of two equal names; an item of no element becomes a text element.
    ASSERT_EQ(s->elements.size(), 4u);
    EXPECT_EQ(fields(s->elements[0]), u"Host 0 0 0 0 000000|d|alpha|||||");
    EXPECT_EQ(fields(s->elements[1]), u"host 0 0 0 0 000000|second|second|||||");
    EXPECT_EQ(s->FindElement(u"X"), &s->elements[3]);
    EXPECT_EQ(fields(s->elements[3]), u"x 0 0 0 0 000000||1|||||");
    EXPECT_EQ(s->FindElement(u"nothing"), nullptr);
}

// Texts read from a request live in the session's pool: a copy of an element must own its own, and
// elements past the first chunks of the list must keep their addresses as more are added.
TEST(Loader, ElementsKeepTheirPlaceAndCopiesOutliveTheSession) {
    TElementDef copy;
    {
        TConfigSession s;
        s.LoadRequestText(u"<Config><DTD><Element Name=\"LongElementName\" group=\"A.Group.Path\" "
                          u"descr=\"A description of it\" Default=\"the default value\"/></DTD></Config>");
        const TElementDef* first = &s.elements[0];
        for (int i = 0; i < 1000; ++i) s.AddElement(u"Added" + decimal(i));
        EXPECT_EQ(first, &s.elements[0]);
        EXPECT_EQ(s.FindElement(u"ADDED700"), &s.elements[701]);
        copy = s.elements[0];
    }
    EXPECT_EQ(fields(copy),
              u"LongElementName 0 0 0 0 000000|the default value|the default value|A.Group.Path|A description of it|||");
}

// Hooks that note what reached them, for the list types of Data and the form engine's children.
struct THookLog {
    std::vector<std::u16string> seen;
};
THookLog g_hookLog;

void noteItem(TConfigSession&, const TElementDef& def, const AdvXMLParser::Element& item) {
    g_hookLog.seen.push_back(def.name + u"=" + item.GetAttribute(u"Value").GetText());
}
void noteChild(TConfigSession&, const AdvXMLParser::Element& node) {
    g_hookLog.seen.push_back(std::u16string(node.GetName()));
}
void readStartForm(TConfigSession& session, const AdvXMLParser::Element& node) {
    noteChild(session, node);
    session.startForm = node.GetAttribute(u"StartForm").GetText();
}

TEST(Loader, ListItemsGoToTheirHooksAndSetTheirFlags) {
    TRequestHooks hooks;
    EXPECT_FALSE(hooks.SetDataKind(u"text", TDataKind{&noteItem, nullptr}));
    EXPECT_FALSE(hooks.SetDataKind(u"nonsense", TDataKind{&noteItem, nullptr}));
    EXPECT_TRUE(hooks.SetDataKind(u"KEYLIST", TDataKind{&noteItem, nullptr}));
    EXPECT_TRUE(hooks.SetDataKind(u"mousemap", TDataKind{&noteItem, nullptr}));
    hooks.interfaceReader = &readStartForm;
    hooks.groupsReader = &noteChild;
    g_hookLog.seen.clear();

    TConfigSession s;
    s.hooks = &hooks;
    s.LoadRequestText(
        u"<Config><Data><Item Element=\"PhysicalKeys\" Value=\"early\"/></Data>"
        u"<DTD><Element Name=\"PhysicalKeys\" Type=\"keylist\"/><Element Name=\"Mouse\" Type=\"mousemap\"/>"
        u"<Element Name=\"Spots\" Type=\"hotspots\"/><Element Name=\"Schemes\" Type=\"colourschemelist\"/>"
        u"<Element Name=\"Plain\" Type=\"int\"/></DTD>"
        u"<interface StartForm=\"Main\"/><GROUPS/>"
        u"<Data><Item Element=\"physicalkeys\" Value=\"k\"/><Item Element=\"Mouse\" Value=\"m\"/>"
        u"<Item Element=\"Spots\" Value=\"s\"/><Item Element=\"Plain\" Value=\"3\"/></Data></Config>");
    using L = std::vector<std::u16string>;
    EXPECT_EQ(g_hookLog.seen, (L{u"interface", u"GROUPS", u"PhysicalKeys=k", u"Mouse=m"}));
    EXPECT_EQ(s.startForm, u"Main");
    // Before its definition a list item is a plain value and its content is lost.
    ASSERT_EQ(s.dataValues.size(), 2u);
    EXPECT_EQ(s.dataValues[0].name, u"PhysicalKeys");
    EXPECT_EQ(s.dataValues[1].value, u"3");
    EXPECT_FALSE(s.keyDataPresent);  // keylist sets no flag
    EXPECT_TRUE(s.mouseDataPresent);
    EXPECT_TRUE(s.hotspotDataPresent);  // set even with no reader installed
    EXPECT_FALSE(s.attrDataPresent);
}

TEST(Loader, LinkAttributes) {
    const struct Case { std::u16string_view links; uint64_t window; uint32_t message; } cases[] = {
        {u"<Link type=\"HWND\" value=\" 0x1A2b \" msgid=\"400\"/>", 0x1A2B, 0x400},
        {u"<Link type=\"hwnd\" value=\"1234\" msgid=\"400\"/>", 0, 0},
        // A later Link with an empty field keeps what the earlier one gave.
        {u"<Link type=\"HWND\" value=\"10\" msgid=\"20\"/><Link type=\"HWND\" value=\"\" msgid=\"30\"/>"
         u"<Link type=\"other\" value=\"99\" msgid=\"99\"/>",
         0x10, 0x30},
    };
    for (const Case& c : cases) {
        const auto s = loaded(u"<Config>" + std::u16string(c.links) + u"</Config>");
        EXPECT_EQ(std::pair(s->link.window, s->link.message), std::pair(c.window, c.message));
    }
}

TEST(Loader, AuthFilesComeFromTheHostsDirectory) {
    const test::TempFolder dir;
    std::filesystem::create_directories(dir.path() / "sub");
    for (const char* name : {"b_key", "a_key", "C_key", ".hidden"}) dir.write(name, "x");

    testing::TFakeHost host;
    host.authDirectory = dir.path().u16string();
    TConfigSession s;
    s.link.channel = &host;
    s.LoadRequestText(u"<Config><Link type=\"HWND\" value=\"5\" msgid=\"7\"/></Config>");
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(testing::TFakeHost::Key(host.calls[0]), testing::TFakeHost::Key({5, 7, {123, 260, 0}}));
    EXPECT_EQ(s.authFileDirectory, dir.path().u16string());
    EXPECT_EQ(s.authFiles, (std::vector<std::u16string>{u"C_key", u"a_key", u"b_key"}));
    // Listing again (after a key file was imported) takes the directory as it now stands.
    dir.write("B_new", "x");
    s.ReadAuthFiles();
    EXPECT_EQ(s.authFiles, (std::vector<std::u16string>{u"B_new", u"C_key", u"a_key", u"b_key"}));
    EXPECT_EQ(host.calls.size(), 1u);

    // No link: nothing is asked, both stay empty.
    TConfigSession none;
    none.link.channel = &host;
    none.LoadRequestText(u"<Config/>");
    EXPECT_EQ(host.calls.size(), 1u);
    EXPECT_TRUE(none.authFiles.empty());
}

}  // namespace
}  // namespace qrl
