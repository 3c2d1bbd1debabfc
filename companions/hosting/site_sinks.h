#pragma once

#include "hosting/ref.h"
#include "hosting/site_link.h"

namespace hosting {

/// Hears of changes of a control's picture and life.
class AdviseSink : public IAdviseSinkEx, protected LinkedToControl {
public:
    using Interface = IAdviseSinkEx;
    explicit AdviseSink(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    void STDMETHODCALLTYPE OnDataChange(FORMATETC* format, STGMEDIUM* medium) override;
    void STDMETHODCALLTYPE OnViewChange(DWORD aspect, LONG index) override;
    void STDMETHODCALLTYPE OnRename(IMoniker* moniker) override;
    void STDMETHODCALLTYPE OnSave() override;
    void STDMETHODCALLTYPE OnClose() override;
    void STDMETHODCALLTYPE OnViewStatusChange(DWORD status) override;

protected:
    ~AdviseSink() = default;
};

/// Hears of changes of a control's bound properties.
class PropertyNotifySink : public IPropertyNotifySink, protected LinkedToControl {
public:
    using Interface = IPropertyNotifySink;
    explicit PropertyNotifySink(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override;
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID id) override;

protected:
    ~PropertyNotifySink() = default;
};

}  // namespace hosting
