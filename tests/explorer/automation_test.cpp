#include "explorer/automation.h"

#include "support/fake_repository.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

using hosting::LateBound;

TEST(AutomationTest, TwoObjectsAreTheSameOnlyWhereTheyAreOne) {
    const support::FakeRepository model;
    const LateBound first(model.FindMetaNode("MetaNode"));
    const LateBound second(model.FindMetaNode("MetaLink"));
    EXPECT_TRUE(IsSame(first, LateBound(model.FindMetaNode("MetaNode"))));
    EXPECT_FALSE(IsSame(first, second));
    EXPECT_FALSE(IsSame(first, {}));
    EXPECT_TRUE(IsSame({}, {}));
}

TEST(AutomationTest, EmptyAndNullAreEmptyTexts) {
    EXPECT_EQ(TextOf({}), L"");
    _variant_t null;
    null.vt = VT_NULL;
    EXPECT_EQ(TextOf(null), L"");
    EXPECT_EQ(TextOf(L"gr\u00fcn"), L"gr\u00fcn");
    EXPECT_EQ(TextOf(17L), L"17");
}

TEST(AutomationTest, EnumeratingEndsWhereTheWorkSaysSo) {
    support::FakeRepository model;
    std::vector<std::wstring> names;
    ForEach(LateBound(model.metaNodes.Get()), [&names](const LateBound& element) {
        names.push_back(TextOf(element.Get(L"name")));
        return names.size() < 2;
    });
    EXPECT_EQ(names, (std::vector<std::wstring>{L"MetaNode", L"MetaLink"}));
}

TEST(AutomationTest, EnumeratingWhatIsNoCollectionFails) {
    const support::FakeRepository model;
    EXPECT_THROW(ForEach(LateBound(model.Root()), [](const LateBound&) { return true; }),
                 hosting::Error);
    EXPECT_THROW(ForEach(LateBound(), [](const LateBound&) { return true; }), hosting::Error);
}

}  // namespace
}  // namespace explorer
