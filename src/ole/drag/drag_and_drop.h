#pragma once

#include <functional>
#include <optional>
#include <string>

#include "ole/drag/drop_target.h"
#include "ole/object.h"

namespace ole {

/// Drag and drop of a control with an inner window of rows or nodes: begins drags, takes drops, and
/// tells the host by five events.
class DragAndDrop {
public:
    /// The ids that the events have in the control's event interface.
    struct Events {
        DISPID complete;
        DISPID drop;
        DISPID over;
        DISPID start;
        DISPID feedback;
    };
    /// What the events say of the row or node that is dragged, or dropped on.
    struct Subject {
        Object object;
        /// The kind of objects that the control shows, where its events tell that.
        std::optional<long> kind;
    };

    /// Fires an event of the control.
    std::function<void(DISPID event, VARIANT* arguments, UINT count)> fire;
    /// What is at a point of the screen; a drop on nothing is not reported, and has no effect.
    std::function<std::optional<Subject>(POINT screen)> subjectAt;

    /// `control` is kept alive while it is dragged from or dropped on.
    DragAndDrop(IUnknown& control, const Events& events);
    DragAndDrop(const DragAndDrop&) = delete;
    DragAndDrop& operator=(const DragAndDrop&) = delete;

    /// Whether things can be dropped on the inner window. Errors: the platform's.
    void SetDrops(bool drops, HWND window);
    /// The inner window was made.
    void Attach(HWND window);
    /// The inner window is about to go.
    void Detach() { target_.Close(); }

    /// Drags a text until the user lets go of it.
    void Drag(const Subject& subject, const std::wstring& text);

private:
    void Tell(DISPID event, const Subject& subject, long& effects) const;
    void OnFeedback(DWORD effect, bool& systemCursors) const;
    void OnDrop(POINT screen, DWORD& effect) const;

    IUnknown& control_;
    const Events events_;
    DropTarget target_;
    bool drops_ = false;
};

}  // namespace ole
