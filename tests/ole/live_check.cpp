#include <gtest/gtest.h>

#include "ole/live.h"

namespace {

/// Looks after each test whether objects, windows or handles of src/ole are left.
class LiveCheck : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { before_ = ole::LiveCounts(); }

    void OnTestEnd(const testing::TestInfo&) override {
        const ole::Live& now = ole::LiveCounts();
        EXPECT_EQ(now.objects, before_.objects) << "objects are left";
        EXPECT_EQ(now.locks, before_.locks) << "locks are left";
        EXPECT_EQ(now.windows, before_.windows) << "windows are left";
        EXPECT_EQ(now.handles, before_.handles) << "handles are left";
    }

    ole::Live before_;
};

[[maybe_unused]] const bool watching = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LiveCheck);
    return true;
}();

}  // namespace
