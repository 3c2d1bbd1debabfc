#pragma once

#include "support/call_log.h"
#include "support/disturbance.h"
#include "support/ref.h"

#include <map>
#include <string>
#include <vector>

namespace support {

/// Receives the events of one object and notes each as text, in order: `Click("b1")`. What is done
/// in an event is set with `On`, as with the members of doubles: veto by reference, call the source
/// again, disconnect, destroy, fail.
///
///     EventRecorder events(control);
///     events.On("AddingNode").Run([](const Arguments& arguments) { arguments.Write(1, true); });
class EventRecorder {
public:
    /// With a log of its own; or in the log of a repository, so that calls and events stand in
    /// their order, under a label if there are several sources.
    explicit EventRecorder(SharedLog log = std::make_shared<CallLog>(), std::string label = {});
    explicit EventRecorder(IUnknown* source) : EventRecorder() { Connect(source); }
    ~EventRecorder();
    EventRecorder(const EventRecorder&) = delete;
    EventRecorder& operator=(const EventRecorder&) = delete;

    /// To the default source interface. Throws hosting::Error where there is none.
    void Connect(IUnknown* source);
    /// To a source interface that has no type information.
    void Connect(IUnknown* source, REFIID interfaceId, std::map<DISPID, std::string> names);
    /// Within an event too, and when the source is gone.
    void Disconnect();
    /// Forgets the source without a word to it, as a host that ends badly does.
    void Abandon();
    [[nodiscard]] bool IsConnected() const { return point_ != nullptr; }
    /// What the source gave for the connection.
    [[nodiscard]] DWORD Cookie() const { return cookie_; }

    /// What happens in an event; the last that strikes decides.
    Disturbance& On(const std::string& event);
    void Calm();

    std::vector<std::string> Take() { return log_->Take(); }
    [[nodiscard]] const std::vector<std::string>& Events() const { return log_->Calls(); }
    [[nodiscard]] std::size_t Count(std::string_view event) const { return log_->Count(event); }

private:
    class Sink;

    SharedLog log_;
    std::string label_;
    Ref<Sink> sink_;
    Ref<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

}  // namespace support
