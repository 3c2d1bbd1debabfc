#include "support/server.h"
#include "support/late_bound.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace support {
namespace {

TEST(Servers, MakeObjectsWithoutRegistration) {
    const Server server;
    const Ref<IDispatch> combo = server.Create("Combo");
    EXPECT_TRUE(LateBound(combo).Has("SetList_Nodes"));
}

TEST(Servers, WithoutAFileOrAClassAreRefused) {
    EXPECT_THROW(Server(L"NoSuchServer.dll"), std::runtime_error);
    const Server server;
    EXPECT_THROW(static_cast<void>(server.ClassId("NoSuchClass")), std::runtime_error);
    // An interface is no class.
    EXPECT_THROW(static_cast<void>(server.ClassId("_Combo")), std::runtime_error);
}

TEST(Servers, CountWhatTheyKeepAliveInDebugBuilds) {
    const Server server;
    const auto before = server.Live();
#ifndef ORVANE_DEBUG
    EXPECT_FALSE(before.has_value());
#else
    ASSERT_TRUE(before.has_value());
    Ref<IDispatch> combo = server.Create("Combo");
    EXPECT_GT(server.Live()->objects, before->objects);
    combo.Reset();
    EXPECT_EQ(server.Live(), before);
#endif
}

}  // namespace
}  // namespace support
