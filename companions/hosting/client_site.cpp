#include "hosting/client_site.h"

namespace hosting {

HRESULT ClientSite::SaveObject() {
    return Answer("IOleClientSite", "SaveObject", {}, E_NOTIMPL);
}

HRESULT ClientSite::GetMoniker(DWORD, DWORD which, IMoniker** moniker) {
    if (!moniker) return E_POINTER;
    *moniker = nullptr;
    return Answer("IOleClientSite", "GetMoniker", std::to_string(which), E_NOTIMPL);
}

HRESULT ClientSite::GetContainer(IOleContainer** container) {
    if (!container) return E_POINTER;
    *container = nullptr;
    return Answer("IOleClientSite", "GetContainer", {}, E_NOINTERFACE);
}

HRESULT ClientSite::ShowObject() {
    return Answer("IOleClientSite", "ShowObject", {}, S_OK);
}

HRESULT ClientSite::OnShowWindow(BOOL shown) {
    return Answer("IOleClientSite", "OnShowWindow", shown ? "shown" : "hidden", S_OK);
}

HRESULT ClientSite::RequestNewObjectLayout() {
    return Answer("IOleClientSite", "RequestNewObjectLayout", {}, E_NOTIMPL);
}

HRESULT ServiceProvider::QueryService(REFGUID, REFIID, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    return Answer("IServiceProvider", "QueryService", {}, E_NOINTERFACE);
}

}  // namespace hosting
