#include "ole/drag/drop_target.h"

#include <ole2.h>

#include <utility>

#include "ole/error.h"
#include "ole/unknown.h"

namespace ole {

namespace {

/// What a drop does when the user holds no key: a copy where that is allowed, because a text that
/// was dropped on a row is not taken away from where it came from.
DWORD EffectFor(DWORD keys, DWORD allowed) {
    DWORD wanted = DROPEFFECT_COPY;
    if ((keys & MK_SHIFT) != 0)
        wanted = (keys & MK_CONTROL) != 0 ? DROPEFFECT_LINK : DROPEFFECT_MOVE;
    if ((allowed & wanted) != 0) return wanted;
    for (const DWORD effect : {DROPEFFECT_COPY, DROPEFFECT_MOVE, DROPEFFECT_LINK}) {
        if ((allowed & effect) != 0) return effect;
    }
    return DROPEFFECT_NONE;
}

}  // namespace

/// The platform may hold it longer than its window lives.
class DropTarget::Part final : public Unknown<IDropTarget> {
public:
    explicit Part(DropTarget& target) : target_(&target) {}

    void LetGo() { target_ = nullptr; }

    STDMETHODIMP DragEnter(IDataObject*, DWORD keys, POINTL point, DWORD* effect) override {
        return DragOver(keys, point, effect);
    }
    STDMETHODIMP DragOver(DWORD keys, POINTL, DWORD* effect) override {
        if (effect == nullptr) return E_POINTER;
        *effect = EffectFor(keys, *effect);
        return Tell([](const DropTarget& target) {
            if (const auto over = target.onOver) over();
        });
    }
    STDMETHODIMP DragLeave() override { return S_OK; }
    STDMETHODIMP Drop(IDataObject*, DWORD keys, POINTL point, DWORD* effect) override {
        if (effect == nullptr) return E_POINTER;
        const DWORD allowed = *effect;
        DWORD had = EffectFor(keys, allowed);
        const HRESULT result = Tell([&](const DropTarget& target) {
            if (const auto drop = target.onDrop) drop({point.x, point.y}, had);
        });
        *effect = SUCCEEDED(result) ? had & allowed : DROPEFFECT_NONE;
        return result;
    }

private:
    template <class Work>
    HRESULT Tell(Work&& work) {
        const Ref<Part> kept = this;
        return Guard({}, IID_IDropTarget, [&] {
            if (target_ != nullptr) work(*target_);
        });
    }

    DropTarget* target_;
};

DropTarget::DropTarget() = default;

DropTarget::~DropTarget() {
    Close();
}

void DropTarget::Open(HWND window) {
    if (IsOpen()) return;
    services_.emplace();
    auto part = Make<Part>(*this);
    const HRESULT registered = RegisterDragDrop(window, part.Get());
    if (FAILED(registered)) {
        services_.reset();
        Check(registered);
    }
    part_ = std::move(part);
    window_ = window;
}

void DropTarget::Close() {
    if (!IsOpen()) return;
    part_->LetGo();
    RevokeDragDrop(std::exchange(window_, nullptr));
    part_.Reset();
    services_.reset();
}

}  // namespace ole
