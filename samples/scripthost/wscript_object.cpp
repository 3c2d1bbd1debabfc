#include "hosting/error.h"
#include "scripthost/output.h"
#include "scripthost/script_host.h"

namespace scripthost {

namespace {

_variant_t Dispatch(const hosting::Ref<IUnknown>& object) {
    return hosting::Query<IDispatch>(object.Get()).Get();
}

/// Runs over fixed values for a For Each loop.
class Enumerator : public hosting::ComClass<IEnumVARIANT> {
public:
    explicit Enumerator(std::vector<std::wstring> values) : values_(std::move(values)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
        ULONG done = 0;
        for (; done < count && next_ < values_.size(); ++done, ++next_)
            values[done] = _variant_t(values_[next_].c_str()).Detach();
        if (fetched) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool there = count <= values_.size() - next_;
        next_ = there ? next_ + count : values_.size();
        return there ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
        auto made = hosting::Make<Enumerator>(values_);
        made->next_ = next_;
        *copy = made.Detach();
        return S_OK;
    }

private:
    std::vector<std::wstring> values_;
    std::size_t next_ = 0;
};

/// The script's arguments: called with a number the one at that place, else all as a collection.
ScriptObject::Member ArgumentsMember(const std::vector<std::wstring>& values) {
    const auto item = [values](const Arguments& arguments) -> _variant_t {
        const long index = arguments.Number(0);
        if (index < 0 || static_cast<std::size_t>(index) >= values.size())
            throw hosting::Error(DISP_E_BADINDEX, L"There is no argument with this number.");
        return values[static_cast<std::size_t>(index)].c_str();
    };
    const auto count = [values](const Arguments&) -> _variant_t {
        return static_cast<long>(values.size());
    };
    auto object = hosting::Make<ScriptObject>(L"WScript.Arguments");
    object->AddDefault(L"Item", item);
    object->Add(L"Count", count);
    object->Add(L"length", count);
    object->AddEnumerator([values](const Arguments&) -> _variant_t {
        return static_cast<IUnknown*>(hosting::Make<Enumerator>(values).Get());
    });
    return [item, object](const Arguments& arguments) -> _variant_t {
        if (arguments.Count()) return item(arguments);
        return static_cast<IDispatch*>(object.Get());
    };
}

hosting::Ref<ScriptObject> MakeStream(void (*write)(std::wstring_view)) {
    auto object = hosting::Make<ScriptObject>(L"WScript");
    object->Add(L"Write", [write](const Arguments& arguments) -> _variant_t {
        write(arguments.Text(0));
        return {};
    });
    object->Add(L"WriteLine", [write](const Arguments& arguments) -> _variant_t {
        write(arguments.Text(0, L"") + L"\n");
        return {};
    });
    return object;
}

ScriptObject::Member Always(const _variant_t& value) {
    return [value](const Arguments&) { return value; };
}

}  // namespace

hosting::Ref<ScriptObject> MakeWScriptObject(ScriptHost& host) {
    const CommandLine& command = host.Command();
    auto object = hosting::Make<ScriptObject>(L"WScript");
    object->Add(L"Echo", [](const Arguments& arguments) -> _variant_t {
        WriteLine(Joined(arguments));
        return {};
    });
    object->Add(L"Quit", [&host](const Arguments& arguments) -> _variant_t {
        host.Exit(static_cast<int>(arguments.Number(0, 0)));
    });
    object->Add(L"Sleep", [&host](const Arguments& arguments) -> _variant_t {
        host.PumpMessages(static_cast<DWORD>(arguments.Number(0)));
        return {};
    });
    object->Add(L"CreateObject", [&host](const Arguments& arguments) {
        const auto created = host.CreateObject(arguments.Text(0), L"");
        if (arguments.Has(1)) host.ConnectEvents(created.Get(), arguments.Text(1));
        return Dispatch(created);
    });
    object->Add(L"ConnectObject", [&host](const Arguments& arguments) -> _variant_t {
        host.ConnectEvents(arguments.Object(0).Get(), arguments.Text(1));
        return {};
    });
    object->Add(L"DisconnectObject", [&host](const Arguments& arguments) -> _variant_t {
        host.DisconnectEvents(arguments.Object(0).Get());
        return {};
    });
    object->Add(L"Arguments", ArgumentsMember(command.arguments));
    object->Add(L"StdOut", Always(MakeStream(Write).Get()));
    object->Add(L"StdErr", Always(MakeStream(WriteError).Get()));
    object->Add(L"ScriptName", Always(command.script.filename().c_str()));
    object->Add(L"ScriptFullName", Always(std::filesystem::absolute(command.script).c_str()));
    return object;
}

}  // namespace scripthost
