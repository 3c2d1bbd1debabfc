#include "ole/drag/drag_and_drop.h"

#include <vector>

#include "ole/drag/drag_source.h"
#include "ole/event_arguments.h"
#include "ole/text.h"

namespace ole {

DragAndDrop::DragAndDrop(IUnknown& control, const Events& events)
    : control_(control), events_(events) {
    target_.onOver = [this] {
        const Ref<IUnknown> kept(&control_);
        fire(events_.over, nullptr, 0);
    };
    target_.onDrop = [this](POINT screen, DWORD& effect) { OnDrop(screen, effect); };
}

void DragAndDrop::SetDrops(bool drops, HWND window) {
    if (drops)
        target_.Open(window);
    else
        target_.Close();
    drops_ = drops;
}

void DragAndDrop::Attach(HWND window) {
    if (drops_) target_.Open(window);
}

void DragAndDrop::Drag(const Subject& subject, const std::wstring& text) {
    const Ref<IUnknown> kept(&control_);
    long allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    Tell(events_.start, subject, allowed);
    long effect = DROPEFFECT_NONE;
    if (allowed != DROPEFFECT_NONE) {
        const auto feedback = [this](DWORD now, bool& system) { OnFeedback(now, system); };
        effect = static_cast<long>(DragText(text, static_cast<DWORD>(allowed), feedback));
    }
    VARIANT complete = ByReference(effect);
    fire(events_.complete, &complete, 1);
}

void DragAndDrop::Tell(DISPID event, const Subject& subject, long& effects) const {
    ObjectVariable object(subject.object);
    long kind = subject.kind.value_or(0);
    std::vector<VARIANT> arguments = {object.ByReference()};
    if (subject.kind) arguments.push_back(ByReference(kind));
    arguments.push_back(ByReference(effects));
    fire(event, arguments.data(), static_cast<UINT>(arguments.size()));
}

void DragAndDrop::OnFeedback(DWORD effect, bool& systemCursors) const {
    auto shown = static_cast<long>(effect);
    VARIANT_BOOL standard = ToFlag(systemCursors);
    VARIANT arguments[] = {ByReference(shown), FlagByReference(standard)};
    fire(events_.feedback, arguments, 2);
    systemCursors = standard != VARIANT_FALSE;
}

void DragAndDrop::OnDrop(POINT screen, DWORD& effect) const {
    const Ref<IUnknown> kept(&control_);
    const std::optional<Subject> subject = subjectAt(screen);
    auto had = static_cast<long>(subject ? effect : DWORD{DROPEFFECT_NONE});
    if (subject) Tell(events_.drop, *subject, had);
    effect = static_cast<DWORD>(had);
}

}  // namespace ole
