#pragma once

#include "support/call_log.h"
#include "support/disturbance.h"
#include "support/drawing.h"
#include "support/pump.h"
#include "support/ref.h"

#include "hosting/host_window.h"
#include "hosting/site_observer.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace support {

/// A container of one control that notes each call the control makes to its site, and each step of
/// its own with the result, in one log:
///
///     > SetClientSite S_OK
///     IOleInPlaceSite.CanInPlaceActivate
///     IOleInPlaceSite.OnPosRectChange(10 10 110 31)
///
/// It can refuse, answer otherwise or do something in the middle of any of these calls, and plays
/// the sequences that classic hosts go through.
class LoggingContainer : private hosting::SiteObserver {
public:
    /// Makes a visible window of that size for the control; calls nothing of it yet.
    explicit LoggingContainer(IUnknown* control, SIZE size = {300, 200});
    ~LoggingContainer() override;
    LoggingContainer(const LoggingContainer&) = delete;
    LoggingContainer& operator=(const LoggingContainer&) = delete;

    [[nodiscard]] hosting::HostedControl& Hosted() { return *hosted_; }
    [[nodiscard]] hosting::Form& Form() { return window_.GetForm(); }
    [[nodiscard]] HWND Window() const { return window_.Handle(); }
    /// The control's own window, null while it has none.
    [[nodiscard]] HWND ControlWindow() const { return hosted_->Window(); }
    [[nodiscard]] IUnknown* Control() const { return control_.Get(); }

    std::vector<std::string> Take() { return log_.Take(); }
    [[nodiscard]] CallLog& Log() { return log_; }
    /// How often a call came: "IOleInPlaceSite.OnInPlaceActivate" or just its method.
    [[nodiscard]] std::size_t Count(std::string_view call) const { return log_.Count(call); }
    /// The ambient properties that were asked for, in order.
    [[nodiscard]] const std::vector<DISPID>& AmbientsAsked() const { return ambients_; }

    /// "IOleInPlaceSite.CanInPlaceActivate"; Fail gives its result to the control, S_FALSE too.
    Disturbance& On(const std::string& call);
    void Calm() { disturbances_.clear(); }
    /// The site does not have this interface.
    void Withhold(REFIID iid) { withheld_.push_back(iid); }
    /// Tells the control whether the form runs or is being designed.
    void SetUserMode(bool running);

    /// Notes a step of the container's own with its result, which it returns.
    HRESULT Step(const std::string& name, HRESULT result);

    static constexpr RECT place = {20, 10, 220, 110};

private:
    bool Offers(REFIID iid) override;
    std::optional<HRESULT> Called(const hosting::SiteCall& call) override;

    CallLog log_;
    hosting::HostWindow window_;
    Ref<IUnknown> control_;
    hosting::HostedControl* hosted_;
    std::deque<std::pair<std::string, Disturbance>> disturbances_;
    std::vector<IID> withheld_;
    std::vector<DISPID> ambients_;
};

/// A form that is being designed: user mode off, the control is never activated but drawn.
struct DesignedForm {
    Picture bitmap;
    HRESULT drawn = E_FAIL;
    int metafileRecords = 0;
    SIZEL extent{};  ///< as IViewObject2 tells it, in 1/100 mm
};
DesignedForm PlayFormDesigner(LoggingContainer& container);

/// A form at run time: quick activation, in-place activation, position; events frozen meanwhile.
void PlayRunningForm(LoggingContainer& container);

/// A document with embedded objects: state in storages, host names, the verbs "show" and "primary",
/// a look at formats and extents; the control is active afterwards.
void PlayDocument(LoggingContainer& container, IStorage* storage);

/// The least that a host may do: a site and the verb "show".
void PlayMinimalHost(LoggingContainer& container);

/// How a host ends with a control: IOleObject::Close with one of OLECLOSE_..., then the site goes.
void PlayClose(LoggingContainer& container, DWORD save = OLECLOSE_NOSAVE);

}  // namespace support
