#include <gtest/gtest.h>

#include <algorithm>

#include "app/moduletexts.h"
#include "locale/language.h"
#include "locale/languagefile.h"
#include "locale/languageline.h"
#include "text/textutil.h"

namespace qrl {
namespace {

// Where a lookup gets a key that its source does not write out beside it.
enum class KeyFrom {
    Request,   // an element or group of the request: no key of the module's own
    Caller,    // a key and default written out where the caller names them, gathered there
    Recorded,  // a numbered family, gathered by running the code that builds it
    Lookup,    // the lookup itself
};

struct TReviewedSite {
    const char* source;
    const char* keyExpression;
    KeyFrom from;
    const char16_t* firstKey;  // of a recorded family
};

// Every lookup whose key is not written at the call. A new one fails the test until its keys
// reach the template and it is added here.
constexpr TReviewedSite kReviewedSites[] = {
    {"charmap/charmapdlg.cpp", "text", KeyFrom::Caller, nullptr},
    {"colours/colourtexts.cpp", "key", KeyFrom::Recorded, u"attrmapdlg_cpp_49"},
    {"forms/builtinform.cpp", "key", KeyFrom::Caller, nullptr},
    {"forms/builtinform.cpp", "change . key", KeyFrom::Caller, nullptr},
    {"forms/formtree.cpp", "session_ . helpFile + u\".\" + name", KeyFrom::Request, nullptr},
    {"hotspots/hotspoteditdlg.cpp", "text", KeyFrom::Caller, nullptr},
    {"keyboard/graphickeymap.cpp", "key", KeyFrom::Caller, nullptr},
    {"keyboard/keymapfiledlg.cpp", "title", KeyFrom::Caller, nullptr},
    {"keyboard/keymapfiledlg.cpp", "filter", KeyFrom::Caller, nullptr},
    {"kit/dialogkit_win.cpp", "row . text", KeyFrom::Caller, nullptr},
    {"locale/language.cpp", "std::u16string_view key", KeyFrom::Lookup, nullptr},
    {"locale/language.cpp", "kSharedTexts [ i ] . key", KeyFrom::Caller, nullptr},
    {"locale/language.h", "std::u16string_view key", KeyFrom::Lookup, nullptr},
    {"locale/language.h", "const TTextKey & text", KeyFrom::Lookup, nullptr},
    {"locale/language.h", "text . key", KeyFrom::Lookup, nullptr},
    {"mouse/mousedlg.cpp", "view . labelKey", KeyFrom::Caller, nullptr},
    {"mouse/mousenames.cpp", "key", KeyFrom::Recorded, u"mousecfg_cpp_57"},
    {"request/session.cpp", "key", KeyFrom::Request, nullptr},
};

TEST(ModuleTexts, EveryLookupWithoutAWrittenKeyIsReviewed) {
    const TTextCatalogue catalogue = ModuleTextCatalogue();
    std::vector<bool> used(std::size(kReviewedSites));
    for (std::size_t i = 0; i < kLookupSiteCount; ++i) {
        const TLookupSite& site = kLookupSites[i];
        const auto reviewed = std::find_if(std::begin(kReviewedSites), std::end(kReviewedSites), [&](const TReviewedSite& r) {
            return std::string_view(r.source) == site.source && std::string_view(r.keyExpression) == site.keyExpression;
        });
        if (reviewed == std::end(kReviewedSites)) {
            ADD_FAILURE() << site.source << ":" << site.line << ": Translate(" << site.keyExpression
                          << ", ...) looks up a key the template may lack";
            continue;
        }
        used[static_cast<std::size_t>(reviewed - std::begin(kReviewedSites))] = true;
        if (reviewed->from == KeyFrom::Recorded) {
            EXPECT_NE(catalogue.Find(reviewed->firstKey), nullptr) << site.source;
        }
    }
    for (std::size_t i = 0; i < used.size(); ++i) EXPECT_TRUE(used[i]) << "no longer a lookup: " << kReviewedSites[i].source;
}

// Both files are read by the module's own reader: every text must come back as its English one
// (template) or visibly changed (pseudo), and neither may give the check anything to report.
TEST(ModuleTexts, TemplateAndPseudoLanguageHoldEveryText) {
    const TTextCatalogue catalogue = ModuleTextCatalogue();
    for (const bool pseudo : {false, true}) {
        const std::string file = pseudo ? PseudoLanguage(catalogue) : LanguageTemplate(catalogue);
        const TLanguageSource source{"f.lang", file};
        EXPECT_EQ(CheckLanguage({&source, 1}, "f", catalogue).size(), 0u) << pseudo;
        languageTable() = TLanguageTable{};
        ParseLanguageText(file);
        for (const TCatalogueText& text : catalogue.Texts()) {
            const std::u16string& english = text.defaults.front();
            if (english.empty() || (!pseudo && !LanguageFileValue(english))) continue;
            const std::string key = utf16ToUtf8(text.key);
            ASSERT_EQ(languageTable().texts.count(key), 1u) << key;
            const std::u16string shown = Translate(text.key, english);
            EXPECT_EQ(shown == UndoLanguageEscapes(english), !pseudo) << key << " " << utf16ToUtf8(shown);
        }
    }
    languageTable() = TLanguageTable{};
}

// A translator keys a dialog's title by the dialog's name as the language files have always had it.
TEST(ModuleTexts, EachTranslatedDialogsTitleKey) {
    const std::pair<const char16_t*, const char16_t*> titles[] = {
        {u"IDD_ATTR_CONFIG", u"Colour Configuration"},
        {u"IDD_ATTR_CHANGE", u"Edit Attribute"},
        {u"IDD_ATTR_ADVANCED_PPC", u"Advanced Attribute Configuration"},
        {u"IDD_ATTR_PALCFG", u"Configure Palette"},
        {u"IDD_5250COLOUR", u"IBM5250 Attribute Configuration"},
        {u"IDD_TANDEMCOLOUR", u"T653X Colour Mapping Defaults"},
        {u"IDD_KBD_KEYBOARDS", u"Keyboard Selection"},
        {u"IDD_GKEYMAP", u"Configure Keyboard"},
        {u"IDD_KBD_ADVANCED", u"Advanced Keyboard Configuration"},
        {u"IDD_KEYMAP_BYPHYS", u"Keyboard Configuration"},
        {u"IDD_KBD_SELPKEY", u"Select a Physical Key"},
        {u"IDD_HOTSPOTS", u"Configure HotSpots"},
        {u"IDD_CFG_HOTSPOT", u"Configure HotSpot"},
        {u"IDD_HS_MATCHSTRING", u"Configure HotSpot Match String"},
        {u"IDD_CFG_HOTSPOTS_COLOURS", u"Configure HotSpots Colours"},
        {u"IDD_MACRO_ASSIST", u"Macro Assistant"},
        {u"IDD_MOUSECFG", u"Configure Mouse"},
        {u"IDD_SELECTMODULE", u"Module Selection"},
        {u"IDD_SSL_CERTIFICATE", u"SSL Certificate"},
    };
    const TTextCatalogue catalogue = ModuleTextCatalogue();
    for (const auto& [key, title] : titles) {
        const TCatalogueText* text = catalogue.Find(key);
        ASSERT_NE(text, nullptr) << utf16ToUtf8(key);
        EXPECT_EQ(text->defaults, std::vector<std::u16string>{title}) << utf16ToUtf8(key);
    }
}

}  // namespace
}  // namespace qrl
