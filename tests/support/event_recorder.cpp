#include "support/event_recorder.h"

#include "support/double.h"

#include "hosting/error.h"
#include "hosting/type_description.h"

#include <deque>
#include <exception>
#include <stdexcept>
#include <utility>

namespace support {

/// The object that the source holds.
class EventRecorder::Sink : public IDispatch, public Double {
public:
    Sink(SharedLog log, std::string label)
        : Double(label.empty() ? "event sink" : label + " event sink"),
          log_(std::move(log)),
          label_(std::move(label)) {}

    void Listen(const IID& interfaceId, std::map<DISPID, std::string> names) {
        interfaceId_ = interfaceId;
        names_ = std::move(names);
    }
    [[nodiscard]] bool Knows(const std::string& event) const {
        for (const auto& [id, name] : names_)
            if (name == event) return true;
        return names_.empty();
    }
    std::deque<std::pair<std::string, Disturbance>> disturbances;
    bool deaf = false;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
        if (iid != __uuidof(IUnknown) && iid != __uuidof(IDispatch) && iid != interfaceId_)
            return E_NOINTERFACE;
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP Invoke(DISPID id, REFIID riid, LCID, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        if (!MayCall("Invoke")) return RPC_E_DISCONNECTED;
        if (result != nullptr) VariantInit(result);
        if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (parameters == nullptr || (kind & DISPATCH_METHOD) == 0) return E_INVALIDARG;
        const Ref<Sink> alive(this);
        const auto known = names_.find(id);
        const std::string name =
            known != names_.end() ? known->second : "event " + std::to_string(id);
        const Arguments arguments(*parameters, kind);
        const std::string prefix = label_.empty() ? "" : label_ + '.';
        log_->Call(label_, name,
                   prefix + name + '(' + arguments.Describe(0, arguments.Count()) + ')');
        if (deaf) return S_OK;
        return Answer(name, arguments, exception, badArgument);
    }

private:
    HRESULT Answer(const std::string& name, const Arguments& arguments, EXCEPINFO* exception,
                   UINT* badArgument) {
        try {
            for (auto entry = disturbances.rbegin(); entry != disturbances.rend(); ++entry) {
                if (entry->first != name || !entry->second.Strikes(&arguments)) continue;
                // A copy, because what it runs may end all disturbances.
                const Disturbance struck = entry->second;
                struck.Work(arguments);
                return struck.TheFailure() ? Raise(*struck.TheFailure(), exception, badArgument)
                                           : S_OK;
            }
            return S_OK;
        } catch (const Failure& failure) {
            return Raise(failure, exception, badArgument);
        } catch (const std::exception& error) {
            return Raise(Failure::Exception(E_UNEXPECTED, error.what()), exception, badArgument);
        }
    }

    void Expire() override { disturbances.clear(); }

    SharedLog log_;
    std::string label_;
    IID interfaceId_{};
    std::map<DISPID, std::string> names_;
};

EventRecorder::EventRecorder(SharedLog log, std::string label)
    : log_(std::move(log)), label_(std::move(label)), sink_(Make<Sink>(log_, label_)) {}

EventRecorder::~EventRecorder() {
    sink_->deaf = true;
    Disconnect();
}

void EventRecorder::Connect(IUnknown* source) {
    const hosting::SourceInterface found = hosting::FindSourceInterface(source);
    std::map<DISPID, std::string> names;
    for (const auto& [id, name] : hosting::MemberNames(found.description.Get()))
        names[id] = Utf8(name);
    Connect(source, found.id, std::move(names));
}

void EventRecorder::Connect(IUnknown* source, REFIID interfaceId,
                            std::map<DISPID, std::string> names) {
    Disconnect();
    const auto container = Query<IConnectionPointContainer>(source);
    if (!container) throw hosting::Error(E_NOINTERFACE, L"The object has no events.");
    Ref<IConnectionPoint> point;
    hosting::Check(container->FindConnectionPoint(interfaceId, point.GetAddressOf()),
                   L"finding the connection point");
    sink_->Listen(interfaceId, std::move(names));
    hosting::Check(point->Advise(sink_.Get(), &cookie_), L"connecting to events");
    point_ = point;
}

void EventRecorder::Disconnect() {
    const Ref<IConnectionPoint> point = std::exchange(point_, {});
    if (point) point->Unadvise(std::exchange(cookie_, 0));
}

void EventRecorder::Abandon() {
    sink_->deaf = true;
    point_.Reset();
    cookie_ = 0;
    sink_ = Make<Sink>(log_, label_);
}

Disturbance& EventRecorder::On(const std::string& event) {
    if (!sink_->Knows(event)) throw std::invalid_argument("there is no event " + event);
    sink_->disturbances.emplace_back(event, Disturbance());
    return sink_->disturbances.back().second;
}

void EventRecorder::Calm() {
    sink_->disturbances.clear();
}

}  // namespace support
