#pragma once

#include "hosting/activation_context.h"
#include "hosting/host_window.h"
#include "scripthost/command_line.h"
#include "scripthost/event_bridge.h"
#include "scripthost/script_engine.h"
#include "scripthost/script_object.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace scripthost {

/// One run of one script: its engine, its window with controls, its objects with events.
class ScriptHost {
public:
    explicit ScriptHost(CommandLine commandLine);
    ~ScriptHost();
    ScriptHost(const ScriptHost&) = delete;
    ScriptHost& operator=(const ScriptHost&) = delete;

    /// Runs the script to its end; the result is the exit code.
    int Run();

    // What the script's objects do. Each throws hosting::Error.

    [[nodiscard]] const CommandLine& Command() const noexcept { return commandLine_; }
    /// A control in the window, which the script then knows by `name`; events go to name_Event.
    hosting::Ref<IUnknown> CreateControl(const std::wstring& progId, const std::wstring& name,
                                         const RECT& bounds);
    /// An object without a window, known and heard in the same way where it has a name.
    hosting::Ref<IUnknown> CreateObject(const std::wstring& progId, const std::wstring& name);
    /// Delivers the events of an object to the procedures that begin with `prefix`.
    void ConnectEvents(IUnknown* object, const std::wstring& prefix);
    void DisconnectEvents(IUnknown* object);
    /// Destroys a control by its name.
    void RemoveControl(const std::wstring& name);
    /// Handles messages for some time, at least those that wait, until somebody quits.
    void PumpMessages(DWORD milliseconds);
    /// Ends the message loop, and sets the exit code; the script goes on.
    void Quit(int code);
    /// Ends the program at once, after everything is closed.
    [[noreturn]] void Exit(int code);

private:
    void Report(const ScriptError& error);
    hosting::HostWindow& Window();
    void Close() noexcept;

    CommandLine commandLine_;
    std::wstring source_;
    std::optional<hosting::ActivationContext> context_;
    std::unique_ptr<hosting::HostWindow> window_;
    std::unique_ptr<ScriptEngine> engine_;
    std::vector<hosting::Ref<ScriptObject>> objects_;
    std::vector<std::unique_ptr<EventBridge>> bridges_;
    std::optional<int> quitCode_;
    bool failed_ = false;
};

/// The script's `Host`: controls, events, message loop.
[[nodiscard]] hosting::Ref<ScriptObject> MakeHostObject(ScriptHost& host);

/// The script's `WScript`, with the members that plain scripts use.
[[nodiscard]] hosting::Ref<ScriptObject> MakeWScriptObject(ScriptHost& host);

}  // namespace scripthost
