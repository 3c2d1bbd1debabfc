#pragma once

#include "hosting/ref.h"

#include <activscp.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace scripthost {

/// An error that a script did not handle, and where.
struct ScriptError {
    HRESULT number = E_FAIL;
    std::wstring description;
    std::wstring source;
    unsigned line = 0;    ///< from 1; 0 where the place is not known
    unsigned column = 0;  ///< from 1; 0 where the place is not known
};

enum class Language { vbScript, jScript };

/// By the ending of the file's name. Throws hosting::Error for another one.
[[nodiscard]] Language LanguageOf(const std::filesystem::path& script);

/// One script and the engine that runs it.
class ScriptEngine {
public:
    using ErrorHandler = std::function<void(const ScriptError&)>;

    /// `onError` is told of each error that the script does not handle. `window` answers whose
    /// child a message box of the script is; it may answer null.
    ScriptEngine(Language language, ErrorHandler onError, std::function<HWND()> window);
    ~ScriptEngine();
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;

    [[nodiscard]] Language GetLanguage() const noexcept { return language_; }

    /// Makes an object known to the script by a name, at any time.
    void AddItem(const std::wstring& name, IUnknown* object);
    /// Forgets the object; an engine that knows it already keeps it until it ends.
    void RemoveItem(const std::wstring& name);

    /// Runs the script's text from the top. Errors go to the handler.
    void Run(const std::wstring& source);

    /// Calls a procedure of the script by name; without one of that name nothing happens. Errors
    /// of the script go to the handler; the result says whether there was one.
    HRESULT CallProcedure(const std::wstring& name, DISPPARAMS& parameters, VARIANT* result);

    /// Ends the engine: the script lets go of everything. Safe to repeat.
    void Close() noexcept;

private:
    class Site;

    Language language_;
    hosting::Ref<Site> site_;
    hosting::Ref<IActiveScript> engine_;
};

}  // namespace scripthost
