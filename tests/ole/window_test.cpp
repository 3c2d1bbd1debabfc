#include "ole/window.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "ole/live.h"

namespace {

constexpr UINT probe = WM_APP + 1;

/// A window whose answers to `probe` are set by the test.
class ProbedWindow : public ole::Window {
public:
    using Window::Create;
    using Window::Destroy;
    std::function<LRESULT(WPARAM, LPARAM)> onProbe;
    int messages = 0;

private:
    LRESULT OnMessage(UINT message, WPARAM wide, LPARAM large) override {
        ++messages;
        if (message == probe && onProbe) {
            // The answer may destroy this object.
            const auto answer = onProbe;
            return answer(wide, large);
        }
        return DefaultAnswer(message, wide, large);
    }
};

TEST(Window, IsHiddenAndWithoutParentAtFirst) {
    ProbedWindow window;
    EXPECT_EQ(window.Handle(), nullptr);
    window.Create();
    EXPECT_TRUE(IsWindow(window.Handle()));
    EXPECT_FALSE(IsWindowVisible(window.Handle()));
    EXPECT_EQ(GetParent(window.Handle()), nullptr);
}

TEST(Window, AnswersMessages) {
    ProbedWindow window;
    window.Create();
    window.onProbe = [](WPARAM wide, LPARAM large) { return static_cast<LRESULT>(wide) + large; };
    EXPECT_EQ(SendMessageW(window.Handle(), probe, 3, 4), 7);
}

TEST(Window, GoesWithItsObject) {
    HWND handle = nullptr;
    {
        ProbedWindow window;
        window.Create();
        handle = window.Handle();
    }
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, ForgetsAWindowThatSomebodyElseDestroys) {
    ProbedWindow window;
    window.Create();
    DestroyWindow(window.Handle());
    EXPECT_EQ(window.Handle(), nullptr);
    window.Create();
    EXPECT_TRUE(IsWindow(window.Handle()));
}

TEST(Window, ObjectGetsNoMessagesWhileItGoes) {
    ProbedWindow window;
    window.Create();
    const int before = window.messages;
    window.Destroy();
    EXPECT_EQ(window.messages, before);
}

TEST(Window, ExceptionsStayInside) {
    ProbedWindow window;
    window.Create();
    window.onProbe = [](WPARAM, LPARAM) -> LRESULT { throw std::runtime_error("x"); };
    EXPECT_EQ(SendMessageW(window.Handle(), probe, 0, 0), 0);
    window.onProbe = [](WPARAM, LPARAM) -> LRESULT { throw 5; };
    EXPECT_EQ(SendMessageW(window.Handle(), probe, 0, 0), 0);
    EXPECT_TRUE(IsWindow(window.Handle()));
}

TEST(Window, MayBeDestroyedInTheMiddleOfAMessage) {
    ProbedWindow window;
    window.Create();
    const HWND handle = window.Handle();
    window.onProbe = [&](WPARAM, LPARAM) -> LRESULT {
        window.Destroy();
        return 5;
    };
    EXPECT_EQ(SendMessageW(handle, probe, 0, 0), 5);
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, ItsObjectMayBeDestroyedInTheMiddleOfAMessage) {
    auto window = std::make_unique<ProbedWindow>();
    window->Create();
    const HWND handle = window->Handle();
    window->onProbe = [&](WPARAM, LPARAM) -> LRESULT {
        window.reset();
        return 6;
    };
    EXPECT_EQ(SendMessageW(handle, probe, 0, 0), 6);
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, IsCountedWhileItIsThere) {
    const long before = ole::LiveCounts().windows;
    {
        ProbedWindow window;
        EXPECT_EQ(ole::LiveCounts().windows, before) << "an object without a window";
        window.Create();
        EXPECT_EQ(ole::LiveCounts().windows, before + 1);
        window.Destroy();
        EXPECT_EQ(ole::LiveCounts().windows, before);
        window.Create();
        DestroyWindow(window.Handle());
        EXPECT_EQ(ole::LiveCounts().windows, before);
        window.Create();
    }
    EXPECT_EQ(ole::LiveCounts().windows, before);
}

}  // namespace
