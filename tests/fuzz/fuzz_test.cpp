#include "fuzz/fuzz_run.h"
#include "fuzz/members.h"
#include "support/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fuzz {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

Trial Planted(const char* fault) {
    Trial trial;
    trial.target = std::string("planted ") + fault;
    trial.patience = 4000;
    trial.deaths = 2;
    return trial;
}

TEST(Fuzzer, FindsNothingInASoundObject) {
    long calls = 0;
    EXPECT_THAT(FindFaults(Planted("sound"), &calls), IsEmpty());
    EXPECT_GT(calls, 2000);
}

TEST(Fuzzer, NamesTheCallThatCrashesAndGoesOn) {
    const auto faults = FindFaults(Planted("crash"));
    ASSERT_EQ(faults.size(), 2u);
    EXPECT_THAT(faults[0], StartsWith("crash 0xC0000005 in Take(<"));
    EXPECT_THAT(faults[1], StartsWith("crash 0xC0000005 in Take("));
    EXPECT_NE(faults[0], faults[1]);
}

TEST(Fuzzer, NamesTheCallThatTraps) {
    EXPECT_THAT(FindFaults(Planted("trap")), Contains(StartsWith("crash 0xC000001D in Take(<")));
}

TEST(Fuzzer, NamesTheCallThatHangs) {
    Trial trial = Planted("hang");
    trial.deaths = 1;
    EXPECT_THAT(FindFaults(trial), Contains(StartsWith("hang in Take(<")));
}

TEST(Fuzzer, NamesTheMemberThatLeaks) {
    EXPECT_THAT(FindFaults(Planted("leak")), Contains(HasSubstr("still held after Take")));
}

TEST(Fuzzer, NamesTheCallThatReleasesTooOften) {
    EXPECT_THAT(FindFaults(Planted("overrelease")),
                Contains(HasSubstr("after the last Release in Take(")));
}

/// Every class that a host can create, and whatever classes will be added.
class Classes : public testing::TestWithParam<std::string> {};

std::vector<std::string> AllClasses() {
    return CreatableClasses(*support::Server().TypeLibrary().Get());
}

TEST_P(Classes, SurviveEveryCall) {
    Trial trial;
    trial.target = GetParam();
    EXPECT_THAT(FindFaults(trial), IsEmpty());
}

/// Those of them that a form can host.
class Controls : public testing::TestWithParam<std::string> {};

std::vector<std::string> AllControls() {
    return ControlClasses(*support::Server().TypeLibrary().Get());
}

TEST_P(Controls, SurviveRandomCallsOnAForm) {
    Trial trial;
    trial.target = GetParam();
    trial.mode = "hosted";
    EXPECT_THAT(FindFaults(trial), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Library, Classes, testing::ValuesIn(AllClasses()),
                         [](const auto& instance) { return instance.param; });
INSTANTIATE_TEST_SUITE_P(Library, Controls, testing::ValuesIn(AllControls()),
                         [](const auto& instance) { return instance.param; });

}  // namespace
}  // namespace fuzz
