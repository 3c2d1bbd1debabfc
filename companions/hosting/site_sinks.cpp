#include "hosting/site_sinks.h"

#include "hosting/hosted_control.h"

namespace hosting {

void AdviseSink::OnDataChange(FORMATETC*, STGMEDIUM*) {
    link_->Tell("IAdviseSink", "OnDataChange");
}

void AdviseSink::OnViewChange(DWORD aspect, LONG) {
    link_->Tell("IAdviseSink", "OnViewChange", std::to_string(aspect));
}

void AdviseSink::OnRename(IMoniker*) {
    link_->Tell("IAdviseSink", "OnRename");
}

void AdviseSink::OnSave() {
    link_->Tell("IAdviseSink", "OnSave");
}

void AdviseSink::OnClose() {
    link_->Tell("IAdviseSink", "OnClose");
}

void AdviseSink::OnViewStatusChange(DWORD status) {
    link_->Tell("IAdviseSinkEx", "OnViewStatusChange", std::to_string(status));
}

HRESULT PropertyNotifySink::OnChanged(DISPID id) {
    return Answer("IPropertyNotifySink", "OnChanged", std::to_string(id),
                  [id](HostedControl& control) {
                      if (const auto tell = control.onPropertyChanged) tell(id);
                      return S_OK;
                  });
}

HRESULT PropertyNotifySink::OnRequestEdit(DISPID id) {
    return Answer("IPropertyNotifySink", "OnRequestEdit", std::to_string(id), S_OK);
}

}  // namespace hosting
