#include "scripthost/script_host.h"

#include "hosting/class_id.h"
#include "hosting/error.h"
#include "scripthost/output.h"
#include "scripthost/source_text.h"

#include <algorithm>

namespace scripthost {

using hosting::Ref;

namespace {

/// file(line, column): error 0x800A000D (13): Type mismatch [source]
///     the line
std::wstring InWords(const ScriptError& error, const std::filesystem::path& script,
                     const std::wstring& source) {
    wchar_t number[16];
    std::swprintf(number, std::size(number), L"0x%08lX", static_cast<unsigned long>(error.number));
    std::wstring text = script.wstring();
    if (error.line)
        text += L"(" + std::to_wstring(error.line) + L", " + std::to_wstring(error.column) + L")";
    text += std::wstring(L": error ") + number;
    if (HRESULT_FACILITY(error.number) == FACILITY_CONTROL)
        text += L" (" + std::to_wstring(HRESULT_CODE(error.number)) + L")";
    text += L": " + error.description;
    if (!error.source.empty()) text += L" [" + error.source + L"]";
    const std::wstring line = error.line ? LineOf(source, error.line - 1) : std::wstring();
    const auto start = line.find_first_not_of(L" \t");
    if (start != std::wstring::npos) text += L"\n    " + line.substr(start);
    return text;
}

}  // namespace

ScriptHost::ScriptHost(CommandLine commandLine)
    : commandLine_(std::move(commandLine)), source_(ReadSource(commandLine_.script)) {
    const Language language = LanguageOf(commandLine_.script);
    const auto manifests = commandLine_.manifests.empty()
                               ? hosting::ActivationContext::BesideProgram()
                               : commandLine_.manifests;
    if (!manifests.empty()) context_.emplace(manifests);
    engine_ = std::make_unique<ScriptEngine>(
        language, [this](const ScriptError& error) { Report(error); },
        [this]() { return window_ ? window_->Handle() : nullptr; });
    const std::pair<const wchar_t*, Ref<ScriptObject>> objects[] = {
        {L"Host", MakeHostObject(*this)}, {L"WScript", MakeWScriptObject(*this)}};
    for (const auto& [name, object] : objects) {
        engine_->AddItem(name, object->Identity());
        objects_.push_back(object);
    }
}

ScriptHost::~ScriptHost() {
    Close();
}

int ScriptHost::Run() {
    engine_->Run(source_);
    Close();
    if (failed_) return 1;
    return quitCode_.value_or(0);
}

Ref<IUnknown> ScriptHost::CreateControl(const std::wstring& progId, const std::wstring& name,
                                        const RECT& bounds) {
    if (name.empty()) throw hosting::Error(E_INVALIDARG, L"A control needs a name.");
    hosting::HostWindow& window = Window();
    hosting::Form& form = window.GetForm();
    if (form.Find(name))
        throw hosting::Error(E_INVALIDARG, L"There is a control " + name + L" already.");
    window.GrowTo(bounds.right, bounds.bottom);
    hosting::HostedControl& control = form.Add(name);
    try {
        control.Create(progId);
        const Ref<IUnknown> object = control.Control();
        engine_->AddItem(name, object.Get());
        // Connected before the activation, since that may raise events already.
        if (hosting::HasEvents(object.Get())) ConnectEvents(object.Get(), name + L"_");
        control.Activate(bounds);
        return object;
    } catch (const hosting::Error&) {
        RemoveControl(name);
        throw;
    }
}

Ref<IUnknown> ScriptHost::CreateObject(const std::wstring& progId, const std::wstring& name) {
    const Ref<IUnknown> object = hosting::CreateObject(progId);
    if (!name.empty()) {
        engine_->AddItem(name, object.Get());
        if (hosting::HasEvents(object.Get())) ConnectEvents(object.Get(), name + L"_");
    }
    return object;
}

void ScriptHost::ConnectEvents(IUnknown* object, const std::wstring& prefix) {
    bridges_.push_back(std::make_unique<EventBridge>(
        *engine_, object, prefix, [this](const ScriptError& error) { Report(error); }));
}

void ScriptHost::DisconnectEvents(IUnknown* object) {
    const auto identity = hosting::Query<IUnknown>(object);
    std::vector<std::unique_ptr<EventBridge>> removed;
    const auto kept =
        std::stable_partition(bridges_.begin(), bridges_.end(), [&](const auto& each) {
            return hosting::Query<IUnknown>(each->Source()).Get() != identity.Get();
        });
    std::move(kept, bridges_.end(), std::back_inserter(removed));
    bridges_.erase(kept, bridges_.end());
}

void ScriptHost::RemoveControl(const std::wstring& name) {
    hosting::HostedControl* const control = window_ ? window_->GetForm().Find(name) : nullptr;
    if (!control) throw hosting::Error(E_INVALIDARG, L"There is no control " + name + L".");
    if (control->Control()) DisconnectEvents(control->Control());
    engine_->RemoveItem(name);
    window_->GetForm().Remove(*control);
}

void ScriptHost::PumpMessages(DWORD milliseconds) {
    if (quitCode_) return;
    hosting::Form* const form = window_ ? &window_->GetForm() : nullptr;
    hosting::PumpUntil(
        form, [this] { return quitCode_.has_value(); }, milliseconds);
}

void ScriptHost::Quit(int code) {
    quitCode_ = code;
}

void ScriptHost::Exit(int code) {
    // The script is in the middle of a call; only the end of the process stops it for certain,
    // since an error can be ignored.
    bridges_.clear();
    window_.reset();
    ExitProcess(static_cast<UINT>(failed_ ? 1 : code));
}

void ScriptHost::Report(const ScriptError& error) {
    failed_ = true;
    WriteErrorLine(InWords(error, commandLine_.script, source_));
    if (!quitCode_) Quit(1);
}

hosting::HostWindow& ScriptHost::Window() {
    if (!window_) {
        window_ = std::make_unique<hosting::HostWindow>(commandLine_.script.filename().wstring(), 1,
                                                        1, !commandLine_.hidden);
        window_->onClose = [this] { Quit(0); };
    }
    return *window_;
}

void ScriptHost::Close() noexcept {
    bridges_.clear();
    if (engine_) engine_->Close();
    window_.reset();
    for (const auto& object : objects_) object->Clear();
    objects_.clear();
}

}  // namespace scripthost
