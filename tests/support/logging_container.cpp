#include "support/logging_container.h"

#include "support/text.h"

#include "hosting/hosted_control.h"

#include <algorithm>

namespace support {

LoggingContainer::LoggingContainer(IUnknown* control, SIZE size)
    : window_(L"Container", size.cx, size.cy),
      control_(control),
      hosted_(&window_.GetForm().Add(L"Control1", this)) {
    hosted_->Take(control);
}

LoggingContainer::~LoggingContainer() {
    disturbances_.clear();
    window_.GetForm().Clear();
}

Disturbance& LoggingContainer::On(const std::string& call) {
    disturbances_.emplace_back(call, Disturbance());
    return disturbances_.back().second;
}

void LoggingContainer::SetUserMode(bool running) {
    hosted_->Ambients().Set(DISPID_AMBIENT_USERMODE, running);
}

HRESULT LoggingContainer::Step(const std::string& name, HRESULT result) {
    log_.Note("> " + name + ' ' + DescribeResult(result));
    return result;
}

bool LoggingContainer::Offers(REFIID iid) {
    return std::find(withheld_.begin(), withheld_.end(), iid) == withheld_.end();
}

std::optional<HRESULT> LoggingContainer::Called(const hosting::SiteCall& call) {
    const std::string name = std::string(call.interfaceName) + '.' + std::string(call.method);
    if (name == "IDispatch.Invoke") {
        ambients_.push_back(static_cast<DISPID>(std::stol(call.details)));
    } else {
        log_.Call(std::string(call.interfaceName), std::string(call.method),
                  call.details.empty() ? name : name + '(' + call.details + ')');
    }
    const DISPPARAMS none{};
    const Arguments arguments(none, 0);
    for (auto entry = disturbances_.rbegin(); entry != disturbances_.rend(); ++entry) {
        if (entry->first != name || !entry->second.Strikes(&arguments)) continue;
        // A copy, because what it runs may end all disturbances.
        const Disturbance struck = entry->second;
        struck.Work(arguments);
        if (struck.TheFailure()) return struck.TheFailure()->result;
        return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace support
