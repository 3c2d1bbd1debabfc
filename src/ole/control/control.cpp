#include "ole/control/control.h"

#include <olectl.h>

#include "ole/control/control_parts.h"
#include "ole/server.h"
#include "ole/units.h"

namespace ole {

Control::Control(IUnknown& whole, const Traits& traits)
    : whole_(whole),
      traits_(traits),
      events_(whole, traits.events),
      extent_{TwipsToHimetric(traits.size.cx), TwipsToHimetric(traits.size.cy)},
      parts_(std::make_unique<ControlParts>(whole, *this)) {}

Control::~Control() {
    Destroy();
}

DWORD Control::MiscStatus() const {
    for (const ole::Class& entry : server.classes) {
        if (entry.id == traits_.classId) return entry.miscStatus;
    }
    return 0;
}

HWND Control::OuterWindow() {
    if (Handle() == nullptr) {
        Window::Create();
        hasInner_ = false;
    }
    if (!hasInner_) {
        hasInner_ = true;
        try {
            CreateInner(Handle());
            AmbientChanged();
            Resize(Size());
        } catch (...) {
            // The next call begins anew, without half of a control.
            if (Handle() != nullptr) DestroyWindow(Handle());
            hasInner_ = false;
            throw;
        }
    }
    return Handle();
}

int Control::DotsPerInchOf(HWND window) {
    return DotsPerInch(window);
}

SIZE Control::Size() {
    const int dpi = Dpi();
    return {HimetricToPixels(extent_.cx, dpi), HimetricToPixels(extent_.cy, dpi)};
}

void Control::Resize(SIZE wanted) {
    const HWND window = OuterWindow();
    const SIZE taken = Fit(wanted);
    const SIZE before = Size();
    if (taken.cx != before.cx || taken.cy != before.cy) {
        const int dpi = Dpi();
        extent_ = {PixelsToHimetric(taken.cx, dpi), PixelsToHimetric(taken.cy, dpi)};
        dirty_ = true;
    }
    SetWindowPos(window, nullptr, 0, 0, taken.cx, taken.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Arrange(taken);
    if (taken.cx != wanted.cx || taken.cy != wanted.cy) parts_->inPlace.RequestSize(taken);
    parts_->view.SendChanged();
}

SIZE Control::Extent() {
    OuterWindow();
    return extent_;
}

void Control::SetExtent(SIZE extent) {
    const int dpi = Dpi();
    const SIZE wanted = {HimetricToPixels(extent.cx, dpi), HimetricToPixels(extent.cy, dpi)};
    const SIZE taken = Fit(wanted);
    if (parts_->inPlace.IsActive()) {
        parts_->inPlace.RequestSize(taken);
        return;
    }
    Resize(taken);
    // What the container asked for comes back unrounded.
    if (taken.cx == wanted.cx) extent_.cx = extent.cx;
    if (taken.cy == wanted.cy) extent_.cy = extent.cy;
    parts_->data.SendChanged();
}

void Control::SetSite(IOleClientSite* client) {
    site_.Set(client);
    if (client != nullptr && Handle() != nullptr) RefreshAmbient(DISPID_UNKNOWN);
}

void Control::RefreshAmbient(DISPID property) {
    if (property == DISPID_UNKNOWN || property == DISPID_AMBIENT_FONT) site_.ForgetFont();
    if (!hasInner_) return;
    AmbientChanged();
    Resize(Size());
}

void Control::LetGo() {
    site_.Set(nullptr);
    parts_->view.LetGo();
    parts_->data.LetGo();
    events_.DisconnectAll();
}

void* Control::FindPart(REFIID id) {
    void* events = events_.FindInterface(id);
    return events != nullptr ? events : parts_->Find(id);
}

void Control::Fire(DISPID event, VARIANT* arguments, UINT count) {
    if (!site_.IsUserMode() || site_.EventsFrozenByContainer()) return;
    events_.Fire(event, arguments, count);
}

void Control::FocusChanged(bool focused) {
    if (focused) parts_->inPlace.BecomeUiActive();
    if (const auto site = site_.As<IOleControlSite>()) site->OnFocus(focused);
}

LRESULT Control::OnMessage(UINT message, WPARAM wide, LPARAM large) {
    const Ref<IUnknown> kept = &whole_;
    LRESULT answer = 0;
    switch (message) {
        case WM_SETFOCUS:
            SetFocus(FocusWindow());
            return 0;
        case WM_ERASEBKGND: {
            RECT client = {};
            GetClientRect(Handle(), &client);
            const Brush brush(CreateSolidBrush(site_.BackColor()));
            FillRect(reinterpret_cast<HDC>(wide), &client, brush.Get());
            return 1;
        }
        default:
            if (OnInnerMessage(message, wide, large, answer)) return answer;
            return DefaultAnswer(message, wide, large);
    }
}

}  // namespace ole
