#include "support/leaks.h"
#include "support/fake_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Each detector is shown a planted leak, and then that there is none without it.

TEST(Leaks, OfNothingAreNone) {
    EXPECT_THAT(FindLeaks([] {}), IsEmpty());
}

TEST(Leaks, OfMemoryThatIsFreedAreNone) {
    EXPECT_THAT(FindLeaks([] {
                    const std::vector<int> numbers(1000);
                    const Value text = std::string(numbers.size(), 'x');
                    CoTaskMemFree(CoTaskMemRealloc(CoTaskMemAlloc(10), 1000));
                }),
                IsEmpty());
}

TEST(Leaks, OfDoublesAreFound) {
    std::vector<Ref<FakeObject>> held;
    const auto leaks = FindLeaks([&] { held.push_back(FakeObject::Make("held")); }, nullptr, 1);
    EXPECT_THAT(leaks, testing::Contains("double held"));
}

TEST(Leaks, OfWindowsAreFound) {
    std::vector<HWND> held;
    const auto leaks = FindLeaks(
        [&] {
            held.push_back(CreateWindowW(L"STATIC", L"lost", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                         nullptr, nullptr));
        },
        nullptr, 1);
    for (const HWND window : held) DestroyWindow(window);
    EXPECT_THAT(leaks, testing::Contains("window Static \"lost\""));
}

TEST(Leaks, OfChildAndMessageWindowsAreFound) {
    const HWND parent =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const WindowCensus before = WindowCensus::Take();
    const HWND child =
        CreateWindowW(L"EDIT", L"", WS_CHILD, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
    const HWND message =
        CreateWindowW(L"STATIC", L"unseen", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    EXPECT_EQ(WindowCensus::Take().Since(before).size(), 2u);
    DestroyWindow(message);
    DestroyWindow(child);
    EXPECT_THAT(WindowCensus::Take().Since(before), IsEmpty());
    DestroyWindow(parent);
}

TEST(Leaks, OfTaskMemoryAreFound) {
    std::vector<void*> held;
    const auto leaks = FindLeaks([&] { held.push_back(CoTaskMemAlloc(100)); });
    for (void* block : held) CoTaskMemFree(block);
    EXPECT_THAT(leaks, testing::Contains("20 task memory blocks"));
}

TEST(Leaks, OfAutomationStringsAreFound) {
    std::vector<BSTR> held;
    held.reserve(100);
    const auto leaks = FindLeaks([&] { held.push_back(SysAllocString(L"lost")); });
    for (const BSTR text : held) SysFreeString(text);
    EXPECT_THAT(leaks, testing::Contains("20 task memory blocks"));
}

TEST(Leaks, OfHeapMemoryAreFound) {
    std::vector<int*> held;
    held.reserve(100);
    const auto leaks = FindLeaks([&] { held.push_back(new int[25]); });
    for (const int* block : held) delete[] block;
    EXPECT_THAT(leaks, ElementsAre(HasSubstr("heap blocks")));
}

TEST(Leaks, OfAServersObjectsAreFoundInDebugBuilds) {
    const Server server;
    std::vector<Ref<IDispatch>> held;
    const auto leaks = FindLeaks([&] { held.push_back(server.Create("Combo")); }, &server, 2);
#ifdef ORVANE_DEBUG
    EXPECT_THAT(leaks, testing::Contains(HasSubstr("server: ")));
#else
    EXPECT_THAT(leaks, testing::Contains(HasSubstr("heap blocks")));
#endif
}

TEST(Leaks, OfAServersObjectsThatGoAreNone) {
    const Server server;
    EXPECT_THAT(FindLeaks([&] { const auto gone = server.Create("Combo"); }, &server), IsEmpty());
}

}  // namespace
}  // namespace support
