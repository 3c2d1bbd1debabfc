#pragma once

#include "hosting/activation_context.h"
#include "hosting/host_window.h"
#include "hosting/late_bound.h"
#include "hosting/site_observer.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// The double's manifest beside the test program.
std::filesystem::path DoubleManifest();

/// Records a control's calls to its site as "Interface.Method details", and answers those that it
/// is told to.
class RecordingObserver : public hosting::SiteObserver {
public:
    bool Offers(REFIID iid) override { return !hidden || iid != *hidden; }
    std::optional<HRESULT> Called(const hosting::SiteCall& call) override {
        const std::string name = std::string(call.interfaceName) + "." + std::string(call.method);
        calls.push_back(name + (call.details.empty() ? "" : " " + call.details));
        if (onCall) onCall(name);
        return name == refused ? std::optional<HRESULT>(refusal) : std::nullopt;
    }

    std::vector<std::string> calls;
    std::optional<IID> hidden;
    std::string refused;
    HRESULT refusal = E_FAIL;
    std::function<void(const std::string&)> onCall;
};

/// A window with a form, and the double usable by its ProgID.
class DoubleForm : public testing::Test {
protected:
    static constexpr RECT bounds{10, 20, 110, 70};

    hosting::HostedControl& AddDouble(const wchar_t* name,
                                      const hosting::Activation& activation = {}) {
        hosting::HostedControl& control = form.Add(name, &observer);
        control.Create(L"HostDouble.Control");
        control.Activate(bounds, activation);
        return control;
    }

    static hosting::LateBound Late(const hosting::HostedControl& control) {
        return hosting::LateBound(control.Object());
    }

    /// The container's calls that the double has noted.
    static std::vector<std::string> Log(const hosting::LateBound& control);
    static std::vector<std::string> Log(const hosting::HostedControl& control) {
        return Log(Late(control));
    }

    hosting::ActivationContext context{{DoubleManifest()}};
    RecordingObserver observer;
    hosting::HostWindow window{L"Test", 300, 200};
    hosting::Form& form = window.GetForm();
};
