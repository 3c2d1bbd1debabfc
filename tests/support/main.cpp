#include "hosting/apartment.h"
#include "support/double.h"

#include <gtest/gtest.h>

namespace {

/// Looks after each test whether it left doubles behind, or called one that it must not call.
class DoublesCheck : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        support::BuryDoubles();
        support::TakeViolations();
        before_ = support::LiveDoubles();
    }

    void OnTestEnd(const testing::TestInfo&) override {
        for (const std::string& complaint : support::TakeComplaints(before_))
            ADD_FAILURE() << complaint;
    }

    long before_ = 0;
};

}  // namespace

/// The main function of every test program of automation code.
int wmain(int count, wchar_t** arguments) {
    const hosting::Apartment apartment;
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    testing::InitGoogleTest(&count, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new DoublesCheck);
    return RUN_ALL_TESTS();
}
