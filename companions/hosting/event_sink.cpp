#include "hosting/event_sink.h"

#include "hosting/com_class.h"
#include "hosting/error.h"
#include "hosting/type_description.h"

#include <map>
#include <memory>

namespace hosting {

/// The object at the other end of the connection. It outlives the EventSink while the source still
/// holds it.
class EventSink::Sink : public ComClass<IDispatch> {
public:
    Sink(const IID& interfaceId, std::map<DISPID, std::wstring> names, EventHandler handler)
        : interfaceId_(interfaceId),
          names_(std::move(names)),
          handler_(std::make_shared<EventHandler>(std::move(handler))) {}

    void Forget() noexcept { handler_.reset(); }
    [[nodiscard]] const std::map<DISPID, std::wstring>& EventNames() const { return names_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        return ComClass::QueryInterface(iid == interfaceId_ ? IID_IDispatch : iid, result);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        const Ref<Sink> self(this);
        const std::shared_ptr<EventHandler> handler = handler_;
        if (!handler) return RPC_E_DISCONNECTED;
        DISPPARAMS none{};
        const auto name = names_.find(id);
        const Event event{name == names_.end() ? std::wstring() : name->second, id,
                          parameters ? parameters : &none, result};
        try {
            return (*handler)(event);
        } catch (const Error& error) {
            return error.Number();
        } catch (const std::exception&) {
            return E_FAIL;
        }
    }

private:
    IID interfaceId_;
    std::map<DISPID, std::wstring> names_;
    std::shared_ptr<EventHandler> handler_;
};

EventSink::EventSink() = default;

EventSink::~EventSink() {
    Disconnect();
}

void EventSink::Connect(IUnknown* source, EventHandler handler) {
    Connect(source, FindSourceInterface(source), std::move(handler));
}

void EventSink::Connect(IUnknown* source, REFIID interfaceId, EventHandler handler) {
    Connect(source, SourceInterface{interfaceId, FindDescription(source, interfaceId)},
            std::move(handler));
}

void EventSink::Connect(IUnknown* source, const SourceInterface& found, EventHandler handler) {
    Disconnect();
    const auto container = Query<IConnectionPointContainer>(source);
    if (!container) throw Error(E_NOINTERFACE, L"The object has no events.");
    Ref<IConnectionPoint> point;
    Check(container->FindConnectionPoint(found.id, point.GetAddressOf()),
          L"finding the connection point");
    const auto sink =
        Make<Sink>(found.id, MemberNames(found.description.Get()), std::move(handler));
    DWORD cookie = 0;
    Check(point->Advise(sink.Get(), &cookie), L"connecting to events");
    sink_ = sink;
    point_ = point;
    interfaceId_ = found.id;
    cookie_ = cookie;
}

void EventSink::Disconnect() noexcept {
    const Ref<IConnectionPoint> point = std::move(point_);
    const Ref<Sink> sink = std::move(sink_);
    const DWORD cookie = std::exchange(cookie_, 0);
    if (sink) sink->Forget();
    if (point) point->Unadvise(cookie);
}

std::vector<std::wstring> EventSink::Names() const {
    std::vector<std::wstring> result;
    if (sink_)
        for (const auto& [id, name] : sink_->EventNames()) result.push_back(name);
    return result;
}

}  // namespace hosting
