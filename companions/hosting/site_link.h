#pragma once

#include "hosting/site_observer.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace hosting {

class HostedControl;

/// What ties the site's objects, which a control may keep for as long as it likes, to the hosted
/// control, which the host may destroy at any time.
struct SiteLink {
    HostedControl* control = nullptr;  ///< null once the host has destroyed it
    SiteObserver* observer = nullptr;

    /// Tells the observer of a call. A result is the observer's answer in the site's place.
    std::optional<HRESULT> Tell(const char* interfaceName, const char* method,
                                std::string details = {}) const {
        if (!observer) return std::nullopt;
        return observer->Called({interfaceName, method, std::move(details)});
    }
};

/// What the pieces of a site and its frame have in common. The observer is told first, since it
/// may destroy the hosted control.
class LinkedToControl {
protected:
    explicit LinkedToControl(std::shared_ptr<SiteLink> link) : link_(std::move(link)) {}
    ~LinkedToControl() = default;

    /// Answers a call for which the site has nothing to do.
    HRESULT Answer(const char* interfaceName, const char* method, std::string details,
                   HRESULT result) const {
        return link_->Tell(interfaceName, method, std::move(details)).value_or(result);
    }

    /// Answers a call by `work` on the hosted control, E_UNEXPECTED once that is gone.
    template <class Work>
    HRESULT Answer(const char* interfaceName, const char* method, std::string details,
                   Work&& work) const {
        const std::shared_ptr<SiteLink> link = link_;
        if (const auto answer = link->Tell(interfaceName, method, std::move(details)))
            return *answer;
        return link->control ? work(*link->control) : E_UNEXPECTED;
    }

    std::shared_ptr<SiteLink> link_;
};

}  // namespace hosting
