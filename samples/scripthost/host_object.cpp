#include "hosting/error.h"
#include "scripthost/output.h"
#include "scripthost/script_host.h"

namespace scripthost {

namespace {

_variant_t AsVariant(const hosting::Ref<IUnknown>& object) {
    const auto dispatch = hosting::Query<IDispatch>(object.Get());
    if (!dispatch) throw hosting::Error(E_NOINTERFACE, L"The object has no automation interface.");
    return dispatch.Get();
}

}  // namespace

hosting::Ref<ScriptObject> MakeHostObject(ScriptHost& host) {
    auto object = hosting::Make<ScriptObject>(L"Host");
    object->Add(L"Echo", [](const Arguments& arguments) -> _variant_t {
        WriteLine(Joined(arguments));
        return {};
    });
    object->Add(L"CreateControl", [&host](const Arguments& arguments) {
        const long left = arguments.Number(2);
        const long top = arguments.Number(3);
        const RECT bounds{left, top, left + arguments.Number(4), top + arguments.Number(5)};
        return AsVariant(host.CreateControl(arguments.Text(0), arguments.Text(1), bounds));
    });
    object->Add(L"CreateObject", [&host](const Arguments& arguments) {
        return AsVariant(host.CreateObject(arguments.Text(0), arguments.Text(1, L"")));
    });
    object->Add(L"RemoveControl", [&host](const Arguments& arguments) -> _variant_t {
        host.RemoveControl(arguments.Text(0));
        return {};
    });
    object->Add(L"PumpMessages", [&host](const Arguments& arguments) -> _variant_t {
        host.PumpMessages(static_cast<DWORD>(arguments.Number(0, 0)));
        return {};
    });
    object->Add(L"Run", [&host](const Arguments&) -> _variant_t {
        host.PumpMessages(INFINITE);
        return {};
    });
    object->Add(L"Quit", [&host](const Arguments& arguments) -> _variant_t {
        host.Quit(static_cast<int>(arguments.Number(0, 0)));
        return {};
    });
    return object;
}

}  // namespace scripthost
