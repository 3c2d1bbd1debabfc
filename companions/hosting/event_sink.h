#pragma once

#include "hosting/ref.h"
#include "hosting/type_description.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace hosting {

/// One event as it arrives.
struct Event {
    std::wstring name;  ///< as the type library spells it, empty for an unknown id
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS* parameters = nullptr;  ///< as they came: in reverse order, by reference where so
    VARIANT* result = nullptr;         ///< null where the source wants none

    [[nodiscard]] std::size_t Count() const { return parameters->cArgs; }
    /// The argument at `index` from 0 in the order of the declaration.
    [[nodiscard]] VARIANT& Argument(std::size_t index) const {
        return parameters->rgvarg[parameters->cArgs - 1 - index];
    }
};

/// What the handler returns goes back to the source.
using EventHandler = std::function<HRESULT(const Event&)>;

/// Receives the events of one object's default source interface, while it lives.
class EventSink {
public:
    EventSink();
    ~EventSink();
    EventSink(const EventSink&) = delete;
    EventSink& operator=(const EventSink&) = delete;

    /// Finds the default source interface by the object's class information, else by its only
    /// connection point, and connects. Throws Error where there is none.
    void Connect(IUnknown* source, EventHandler handler);
    /// Connects to one source interface; names come from the object's type library if it has one.
    void Connect(IUnknown* source, REFIID interfaceId, EventHandler handler);
    /// Safe at any time: within an event, when the source is gone, or twice.
    void Disconnect() noexcept;

    [[nodiscard]] bool IsConnected() const noexcept { return point_ != nullptr; }
    /// The source interface that is connected.
    [[nodiscard]] const IID& InterfaceId() const noexcept { return interfaceId_; }
    /// The names of all events that the type library declares.
    [[nodiscard]] std::vector<std::wstring> Names() const;

private:
    class Sink;

    void Connect(IUnknown* source, const SourceInterface& found, EventHandler handler);

    Ref<Sink> sink_;
    Ref<IConnectionPoint> point_;
    IID interfaceId_{};
    DWORD cookie_ = 0;
};

}  // namespace hosting
