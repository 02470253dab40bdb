#include "forms/moduleorder.h"
#include "request/session.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(ModuleOrder, SortedByDescriptionCaseIgnored) {
    TModuleList list{u"Comms", u"TCP", {{u"b", u"beta"}, {u"tcp", u"Alpha"}, {u"c", u"GAMMA"}}};
    SortModules(list.modules);
    EXPECT_EQ(list.modules[0].name, u"tcp");
    EXPECT_EQ(list.modules[1].name, u"b");
    EXPECT_EQ(list.modules[2].name, u"c");
    EXPECT_EQ(CurrentModulePosition(list), 0);
    list.current = u"none";
    EXPECT_EQ(CurrentModulePosition(list), -1);
    // Each row of the current name is selected as it is added, so of two the later one stays.
    list.modules.push_back({u"TCP", u"Zeta"});
    list.current = u"Tcp";
    EXPECT_EQ(CurrentModulePosition(list), 3);
}

}  // namespace
}  // namespace qrl
