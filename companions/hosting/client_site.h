#pragma once

#include "hosting/ref.h"
#include "hosting/site_link.h"

namespace hosting {

/// What a control asks of its place in a document. A form is none: it has no monikers, saves
/// nothing by itself and leads to no other objects.
class ClientSite : public IOleClientSite, protected LinkedToControl {
public:
    using Interface = IOleClientSite;
    explicit ClientSite(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE SaveObject() override;
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override;
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL shown) override;
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

protected:
    ~ClientSite() = default;
};

/// Hands out services to a control; this container has none.
class ServiceProvider : public IServiceProvider, protected LinkedToControl {
public:
    using Interface = IServiceProvider;
    explicit ServiceProvider(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** result) override;

protected:
    ~ServiceProvider() = default;
};

}  // namespace hosting
