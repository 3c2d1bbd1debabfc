#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleidl.h>

#include "support/late_bound.h"
#include "support/logging_container.h"
#include "support/server.h"

#include "hosting/hosted_control.h"

/// A control of the library, which stands for all of them: what is tested is the shell.
class ControlTest : public testing::Test {
protected:
    template <class I>
    support::Ref<I> As() const {
        return support::Query<I>(control.Get());
    }

    /// The control's own window, hidden where no container shows it.
    HWND Outer() const {
        HWND window = nullptr;
        As<IOleInPlaceObject>()->GetWindow(&window);
        return window;
    }
    HWND Inner() const { return GetWindow(Outer(), GW_CHILD); }

    SIZEL Extent() const {
        SIZEL extent = {};
        EXPECT_EQ(As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
        return extent;
    }
    HRESULT SetExtent(SIZEL extent) const {
        return As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent);
    }

    /// The control's calls to its site, without the container's own steps and without ambients.
    static std::vector<std::string> SiteCalls(support::LoggingContainer& container) {
        std::vector<std::string> calls;
        for (const std::string& call : container.Take()) {
            if (call.starts_with('>')) continue;
            const std::string name = call.substr(0, call.find('('));
            calls.push_back(name.substr(name.find('.') + 1));
        }
        return calls;
    }

    support::Server server;
    support::Ref<IDispatch> control = server.Create("Combo");
};
