#pragma once

#include "hosting/event_sink.h"
#include "scripthost/script_engine.h"

#include <functional>
#include <string>

namespace scripthost {

/// Delivers the events of one object to the script's procedures PrefixEvent, while it lives.
///
/// VBScript gets every argument by reference, and what a handler assigns goes back to the source.
/// JScript has no such parameters: there the value that a handler returns, unless it is undefined,
/// goes back in the event's last by-reference argument.
class EventBridge {
public:
    /// Throws hosting::Error where the object has no events. `onError` is told where an argument
    /// cannot go back.
    EventBridge(ScriptEngine& engine, IUnknown* source, std::wstring prefix,
                std::function<void(const ScriptError&)> onError);

    [[nodiscard]] IUnknown* Source() const noexcept { return source_.Get(); }

private:
    hosting::Ref<IUnknown> source_;
    hosting::EventSink sink_;
};

}  // namespace scripthost
