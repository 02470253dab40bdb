#include "text/searchfold.h"

#include <gtest/gtest.h>

TEST(TextSearchFold, LowerCaseWithoutAccents) {
    using qrl::foldForSearch;
    EXPECT_EQ(foldForSearch(u"\u00C9cran \u00C5SE \u0141\u00F3d\u017A Stra\u00DFe"), u"ecran ase lodz stra\u00DFe");
    EXPECT_EQ(foldForSearch(u"e\u0301t\u00E9"), u"ete");  // a combining accent goes
    EXPECT_EQ(foldForSearch(u"\u0394\u0416\u0401 \u00D7"), u"\u03B4\u0436\u0451 \u00D7");
}
