#pragma once

#include "hosting/client_site.h"
#include "hosting/com_class.h"
#include "hosting/control_site.h"
#include "hosting/in_place_site.h"
#include "hosting/site_sinks.h"

namespace hosting {

/// The one object that a control sees as its site, its ambient properties and its sinks.
class Site : public ComClass<ClientSite, InPlaceSite, ControlSite, AmbientDispatch, AdviseSink,
                             PropertyNotifySink, ServiceProvider> {
public:
    explicit Site(const std::shared_ptr<SiteLink>& link) : ComClass(link), siteLink_(link) {}

protected:
    bool Offers(REFIID iid) override {
        return !siteLink_->observer || siteLink_->observer->Offers(iid);
    }

private:
    std::shared_ptr<SiteLink> siteLink_;
};

}  // namespace hosting
