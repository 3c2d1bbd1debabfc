#include "hosting/form.h"

#include <algorithm>
#include <utility>

namespace hosting {

namespace {

bool Contains(HWND outer, HWND inner) {
    return outer && inner && (outer == inner || IsChild(outer, inner));
}

bool IsPressed(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

Form::Form(HWND window) : window_(window), ambients_(AmbientProperties::OfRunningForm()) {}

Form::~Form() {
    Clear();
}

HostedControl& Form::Add(std::wstring name, SiteObserver* observer) {
    controls_.push_back(std::make_unique<HostedControl>(*this, std::move(name), observer));
    return *controls_.back();
}

void Form::Remove(HostedControl& control) {
    const auto place =
        std::find_if(controls_.begin(), controls_.end(),
                     [&control](const auto& each) { return each.get() == &control; });
    if (place == controls_.end()) return;
    const std::unique_ptr<HostedControl> removed = std::move(*place);
    controls_.erase(place);
}

void Form::Clear() noexcept {
    while (!controls_.empty()) {
        const std::unique_ptr<HostedControl> removed = std::move(controls_.back());
        controls_.pop_back();
    }
}

HostedControl* Form::Find(const std::wstring& name) const {
    for (const auto& control : controls_)
        if (CompareStringOrdinal(control->Name().c_str(), -1, name.c_str(), -1, TRUE) == CSTR_EQUAL)
            return control.get();
    return nullptr;
}

std::vector<HostedControl*> Form::Controls() const {
    std::vector<HostedControl*> result;
    for (const auto& control : controls_) result.push_back(control.get());
    return result;
}

void Form::Activated(HostedControl& control) {
    HostedControl* const before = std::exchange(active_, &control);
    if (before && before != &control) before->UIDeactivate();
}

void Form::Deactivated(HostedControl& control) {
    if (active_ == &control) active_ = nullptr;
}

HostedControl* Form::FocusOwner() const {
    if (active_) return active_;
    const HWND focus = GetFocus();
    for (const auto& control : controls_)
        if (Contains(control->Window(), focus)) return control.get();
    return nullptr;
}

bool Form::FocusNext(bool backwards, MSG* message) {
    const std::vector<HostedControl*> controls = Controls();
    const auto count = controls.size();
    const auto present = static_cast<std::size_t>(
        std::find(controls.begin(), controls.end(), FocusOwner()) - controls.begin());
    const bool none = present == count;
    auto tabOut = onTabOut;
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t index = backwards ? ((none ? 0 : present) + count - step) % count
                                            : (none ? step - 1 : (present + step) % count);
        const bool pastEnd = !none && (backwards ? index >= present : index <= present);
        if (const auto ask = pastEnd ? std::exchange(tabOut, nullptr) : nullptr;
            ask && ask(backwards))
            return true;
        if (!controls[index]->IsTabStop()) continue;
        controls[index]->Focus(message);
        return true;
    }
    return false;
}

void Form::RestoreFocus() {
    if (!active_ || !active_->IsTabStop())
        FocusNext(false);
    else if (!Contains(active_->Window(), GetFocus()))
        active_->Focus();
}

bool Form::TranslateMessage(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (!Contains(window_, message.hwnd)) return false;
    if (HostedControl* const owner = FocusOwner(); owner && owner->TranslateAccelerator(message))
        return true;
    return TranslateKey(message);
}

bool Form::TranslateKey(MSG& message) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB && !IsPressed(VK_CONTROL) &&
        !IsPressed(VK_MENU))
        return FocusNext(IsPressed(VK_SHIFT), &message);
    if (message.message == WM_SYSKEYDOWN || message.message == WM_SYSCHAR)
        return FocusByMnemonic(message);
    return false;
}

bool Form::FocusByMnemonic(MSG& message) {
    std::vector<Ref<IOleControl>> controls;
    for (const auto& hosted : controls_)
        if (auto control = Query<IOleControl>(hosted->Control())) controls.push_back(control);
    for (const auto& control : controls) {
        CONTROLINFO info{};
        info.cb = sizeof info;
        if (control->GetControlInfo(&info) != S_OK || !info.hAccel) continue;
        if (!IsAccelerator(info.hAccel, info.cAccel, &message, nullptr)) continue;
        control->OnMnemonic(&message);
        return true;
    }
    return false;
}

}  // namespace hosting
