#include "scripthost/event_bridge.h"

#include "hosting/error.h"
#include "scripthost/event_arguments.h"

namespace scripthost {

namespace {

HRESULT Deliver(ScriptEngine& engine, const std::wstring& procedure, const hosting::Event& event) {
    const bool byReference = engine.GetLanguage() == Language::vbScript;
    EventArguments arguments(*event.parameters, byReference);
    _variant_t answer;
    const HRESULT result = engine.CallProcedure(procedure, arguments.Parameters(), &answer);
    if (result != S_OK) return FAILED(result) ? result : S_OK;
    if (byReference)
        arguments.CopyBack();
    else if (answer.vt != VT_EMPTY)
        arguments.Answer(answer);
    return S_OK;
}

}  // namespace

EventBridge::EventBridge(ScriptEngine& engine, IUnknown* source, std::wstring prefix,
                         std::function<void(const ScriptError&)> onError)
    : source_(source) {
    // Nothing of this object is used in the handler: the script may disconnect in its event.
    sink_.Connect(
        source,
        [&engine, prefix = std::move(prefix),
         onError = std::move(onError)](const hosting::Event& event) -> HRESULT {
            if (event.name.empty()) return S_OK;
            const std::wstring procedure = prefix + event.name;
            try {
                return Deliver(engine, procedure, event);
            } catch (const hosting::Error& error) {
                onError({error.Number(), procedure + L": " + error.Description(), error.Source()});
                return error.Number();
            }
        });
}

}  // namespace scripthost
