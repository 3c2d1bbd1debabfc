#include "scripthost/script_engine.h"

#include "hosting/class_id.h"
#include "hosting/com_class.h"
#include "hosting/error.h"

#include <comdef.h>

#include <utility>

namespace scripthost {

using hosting::Ref;

namespace {

bool SameName(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

struct ByName {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

ScriptError Describe(HRESULT result, EXCEPINFO& exception) {
    const auto error = hosting::Error::FromException(result, exception);
    return {error.Number(), error.Description(), error.Source()};
}

}  // namespace

/// What the engine sees of its host.
class ScriptEngine::Site : public hosting::ComClass<IActiveScriptSite, IActiveScriptSiteWindow> {
public:
    Site(ErrorHandler onError, std::function<HWND()> window)
        : onError_(std::move(onError)), window_(std::move(window)) {}

    void Report(const ScriptError& error) {
        ++reported_;
        if (onError_) onError_(error);
    }
    [[nodiscard]] int Reported() const noexcept { return reported_; }

    void AddItem(const std::wstring& name, IUnknown* object) { items_[name] = object; }
    void RemoveItem(const std::wstring& name) { items_.erase(name); }
    void Clear() noexcept { items_.clear(); }

    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                                          ITypeInfo** info) override {
        if (object) *object = nullptr;
        if (info) *info = nullptr;
        const auto item = items_.find(name);
        if (item == items_.end()) return TYPE_E_ELEMENTNOTFOUND;
        if ((wanted & SCRIPTINFO_IUNKNOWN) && object) {
            Ref<IUnknown> copy = item->second;
            *object = copy.Detach();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO exception{};
        error->GetExceptionInfo(&exception);
        ScriptError described = Describe(E_FAIL, exception);
        DWORD context = 0;
        ULONG line = 0;
        LONG column = -1;
        if (SUCCEEDED(error->GetSourcePosition(&context, &line, &column))) {
            described.line = static_cast<unsigned>(line + 1);
            described.column = static_cast<unsigned>(column + 1);
        }
        Report(described);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        if (!window) return E_POINTER;
        *window = window_ ? window_() : nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

private:
    ErrorHandler onError_;
    std::function<HWND()> window_;
    std::map<std::wstring, Ref<IUnknown>, ByName> items_;
    int reported_ = 0;
};

Language LanguageOf(const std::filesystem::path& script) {
    const std::wstring ending = script.extension().wstring();
    if (SameName(ending, L".vbs")) return Language::vbScript;
    if (SameName(ending, L".js")) return Language::jScript;
    throw hosting::Error(E_INVALIDARG, script.wstring() + L" is neither a .vbs nor a .js file.");
}

ScriptEngine::ScriptEngine(Language language, ErrorHandler onError, std::function<HWND()> window)
    : language_(language), site_(hosting::Make<Site>(std::move(onError), std::move(window))) {
    const wchar_t* const name = language == Language::vbScript ? L"VBScript" : L"JScript";
    engine_ = hosting::Query<IActiveScript>(hosting::CreateObject(name).Get());
    const auto parser = hosting::Query<IActiveScriptParse>(engine_.Get());
    if (!parser) throw hosting::Error(E_NOINTERFACE, std::wstring(name) + L" runs no scripts.");
    hosting::Check(engine_->SetScriptSite(site_.Get()), L"preparing the script engine");
    hosting::Check(parser->InitNew(), L"preparing the script engine");
}

ScriptEngine::~ScriptEngine() {
    Close();
}

void ScriptEngine::AddItem(const std::wstring& name, IUnknown* object) {
    site_->AddItem(name, object);
    hosting::Check(engine_->AddNamedItem(name.c_str(), SCRIPTITEM_ISVISIBLE),
                   L"naming an object for the script");
}

void ScriptEngine::RemoveItem(const std::wstring& name) {
    site_->RemoveItem(name);
}

void ScriptEngine::Run(const std::wstring& source) {
    const Ref<IActiveScript> engine = engine_;
    const Ref<Site> site = site_;
    const auto parser = hosting::Query<IActiveScriptParse>(engine.Get());
    const int before = site->Reported();
    EXCEPINFO exception{};
    const HRESULT result = parser->ParseScriptText(source.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                   SCRIPTTEXT_ISVISIBLE, nullptr, &exception);
    if (FAILED(result)) {
        if (site->Reported() == before) site->Report(Describe(result, exception));
        return;
    }
    const HRESULT connected = engine->SetScriptState(SCRIPTSTATE_CONNECTED);
    if (FAILED(connected) && site->Reported() == before) {
        EXCEPINFO none{};
        site->Report(Describe(connected, none));
    }
}

HRESULT ScriptEngine::CallProcedure(const std::wstring& name, DISPPARAMS& parameters,
                                    VARIANT* result) {
    const Ref<Site> site = site_;
    Ref<IDispatch> procedures;
    if (!engine_ || FAILED(engine_->GetScriptDispatch(nullptr, procedures.GetAddressOf())))
        return S_FALSE;
    auto* names = const_cast<wchar_t*>(name.c_str());
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(procedures->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)))
        return S_FALSE;
    const int before = site->Reported();
    EXCEPINFO exception{};
    const HRESULT code = procedures->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                            &parameters, result, &exception, nullptr);
    if (SUCCEEDED(code)) return S_OK;
    ScriptError error = Describe(code, exception);
    if (site->Reported() != before) return error.number;
    error.description = name + L": " + error.description;
    site->Report(error);
    return error.number;
}

void ScriptEngine::Close() noexcept {
    const Ref<IActiveScript> engine = std::move(engine_);
    if (engine) engine->Close();
    if (site_) site_->Clear();
}

}  // namespace scripthost
