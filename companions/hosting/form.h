#pragma once

#include "hosting/ambient_properties.h"
#include "hosting/hosted_control.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace hosting {

/// The controls of one host window: who is active, who comes next with Tab, who gets a key first.
class Form {
public:
    /// `window` is the host's and outlives the form.
    explicit Form(HWND window);
    ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] HWND Window() const noexcept { return window_; }
    /// What controls that are added later find as their ambient properties.
    AmbientProperties& Ambients() noexcept { return ambients_; }

    /// A place for one control; last in the tab order. The form owns it.
    HostedControl& Add(std::wstring name, SiteObserver* observer = nullptr);
    /// Closes and destroys one.
    void Remove(HostedControl& control);
    /// Closes and destroys all of them, last first.
    void Clear() noexcept;
    /// By name, without case; null where there is none.
    [[nodiscard]] HostedControl* Find(const std::wstring& name) const;
    [[nodiscard]] std::vector<HostedControl*> Controls() const;

    /// The control whose user interface is active, or null.
    [[nodiscard]] HostedControl* Active() const noexcept { return active_; }
    /// Moves the focus to the next (or previous) control that is a tab stop, around the end.
    /// False where neither a control is one nor onTabOut took the focus.
    bool FocusNext(bool backwards, MSG* message = nullptr);
    /// Asked when Tab passes the last control, or the first one backwards, for windows that are no
    /// controls: true where the host has put the focus elsewhere, false goes around.
    std::function<bool(bool backwards)> onTabOut;
    /// Puts the focus back to the active control, or to the first; call it on WM_SETFOCUS.
    void RestoreFocus();
    /// For the message loop: accelerators of the active control, Tab, mnemonics. True where the
    /// message is used up; otherwise translate and dispatch it.
    bool TranslateMessage(MSG& message);

private:
    friend class HostedControl;
    friend class InPlaceSite;
    friend class ControlSite;

    void Activated(HostedControl& control);
    void Deactivated(HostedControl& control);
    HostedControl* FocusOwner() const;
    bool TranslateKey(MSG& message);
    bool FocusByMnemonic(MSG& message);

    HWND window_;
    AmbientProperties ambients_;
    std::vector<std::unique_ptr<HostedControl>> controls_;
    HostedControl* active_ = nullptr;
};

}  // namespace hosting
