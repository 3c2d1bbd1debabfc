#include "explorer/errors.h"

#include "explorer/error_box.h"
#include "support/dialog_watcher.h"
#include "support/pump.h"

#include <comdef.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace explorer {
namespace {

hosting::Error Caught(const std::function<void()>& work) {
    hosting::Error caught(S_OK, {});
    Try([&caught](const std::wstring&, const hosting::Error& error) { caught = error; }, {}, work);
    return caught;
}

TEST(ErrorsTest, AutomationNumbersAreShownAsHostsKnowThem) {
    EXPECT_EQ(ErrorText({static_cast<HRESULT>(0x800A0035), L"File not found"}),
              L"Error 53: File not found");
    EXPECT_EQ(ErrorText({E_ACCESSDENIED, L"No"}), L"Error 0x80070005: No");
    EXPECT_EQ(ErrorText({E_FAIL, {}}), L"Error 0x80004005");
}

TEST(ErrorsTest, EveryKindOfExceptionBecomesAnError) {
    EXPECT_EQ(Caught([] { throw hosting::Error(E_ACCESSDENIED, L"No"); }).Description(), L"No");
    EXPECT_EQ(Caught([] { throw _com_error(E_INVALIDARG); }).Number(), E_INVALIDARG);
    EXPECT_EQ(Caught([] { throw std::runtime_error("broken"); }).Description(), L"broken");
    EXPECT_EQ(Caught([] { throw 7; }).Number(), E_UNEXPECTED);
    EXPECT_EQ(Caught([] {}).Number(), S_OK);
}

TEST(ErrorBoxTest, NobodyIsAskedToCloseABoxWhenUnattended) {
    EventLog log;
    ErrorBox box(log);
    box.SetUnattended();
    const support::DialogWatcher watcher;
    box.Report(L"Opening x", {static_cast<HRESULT>(0x800A0035), L"File not found"});
    support::Pump();
    EXPECT_EQ(box.Count(), 1);
    ASSERT_EQ(log.Entries().size(), 1u);
    EXPECT_EQ(log.Entries()[0].control, L"Explorer");
    EXPECT_EQ(log.Entries()[0].event, L"Error");
    EXPECT_EQ(log.Entries()[0].key, L"Opening x: Error 53: File not found");
}

}  // namespace
}  // namespace explorer
