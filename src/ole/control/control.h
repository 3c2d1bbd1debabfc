#pragma once

#include <memory>
#include <string>

#include "ole/automation.h"
#include "ole/connection_point.h"
#include "ole/control/site.h"
#include "ole/window.h"

namespace ole {

class ControlParts;

/// The windowed OLE control that a classic container expects, without the members of its class. It
/// keeps site, window and size; the interfaces of a control are parts around it (src/ole/control).
/// Without a container it works as well: its window is then a hidden one.
class Control : private Window {
public:
    /// What differs between control classes besides their members.
    struct Traits {
        const CLSID& classId;
        const IID& events;
        /// The size of a new control, in twips.
        SIZE size;
    };

    const Traits& Class() const { return traits_; }
    DWORD MiscStatus() const;
    Site& Container() { return site_; }
    ConnectionPoints& Events() { return events_; }

    /// The control's window, made when first asked for.
    HWND OuterWindow();
    int Dpi() { return DotsPerInchOf(OuterWindow()); }

    /// The size in pixels. `Resize` gives the control the size that it takes when offered `wanted`,
    /// and tells the container when that is another one.
    SIZE Size();
    void Resize(SIZE wanted);

    /// The size as containers and files have it, in 1/100 millimetre.
    SIZE Extent();
    void SetExtent(SIZE extent);

    bool IsDirty() const { return dirty_; }
    void SetDirty(bool dirty) { dirty_ = dirty; }

    void SetSite(IOleClientSite* client);
    /// Reads what the container says of font, colours and mode again.
    void RefreshAmbient(DISPID property);
    /// Lets go of site and sinks.
    void LetGo();

    /// Draws the control as it looks inactive, into logical coordinates of any device context.
    virtual void Draw(HDC context, const RECT& bounds) = 0;
    /// Whether an inner window wants a key that the container might take.
    virtual bool UsesKey(const MSG& message) = 0;
    /// The inner window that gets the focus.
    virtual HWND FocusWindow() = 0;

protected:
    Control(IUnknown& whole, const Traits& traits);
    ~Control() override;

    void* FindPart(REFIID id);

    /// Makes the inner windows.
    virtual void CreateInner(HWND outer) = 0;
    /// The size that the control takes when offered `wanted`, in pixels.
    virtual SIZE Fit(SIZE wanted) { return wanted; }
    /// Lays out the inner windows.
    virtual void Arrange(SIZE size) = 0;
    /// Font or colours of the surroundings changed.
    virtual void AmbientChanged() = 0;
    /// A message from an inner window; true when it was answered.
    virtual bool OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) = 0;

    /// Fires an event; `arguments` in the order of its parameters. In design mode nothing is fired.
    void Fire(DISPID event, VARIANT* arguments, UINT count);
    /// To be called when an inner window gets or loses the focus.
    void FocusChanged(bool focused);

private:
    static int DotsPerInchOf(HWND window);
    LRESULT OnMessage(UINT message, WPARAM wide, LPARAM large) override;

    IUnknown& whole_;
    Traits traits_;
    Site site_;
    ConnectionPoints events_;
    SIZE extent_;
    bool dirty_ = false;
    bool hasInner_ = false;
    std::unique_ptr<ControlParts> parts_;
};

/// A control class: the members of its dual interface `I` on top of the control shell.
template <class I, const GUID& classId, const IID& events>
class ControlObject : public Automation<I, classId>, public Control {
protected:
    explicit ControlObject(SIZE twips)
        : Control(*static_cast<I*>(this), Traits{classId, events, twips}) {}

    void* FindInterface(REFIID id) override {
        void* own = Automation<I, classId>::FindInterface(id);
        return own != nullptr ? own : FindPart(id);
    }
};

}  // namespace ole
