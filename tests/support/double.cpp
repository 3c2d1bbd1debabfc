#include "support/double.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

namespace support {

namespace {

struct Registry {
    std::mutex mutex;
    std::vector<Double*> expired;
    std::set<const Double*> live;
    std::vector<std::string> violations;
};

Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

}  // namespace

Double::Double(std::string name) : name_(std::move(name)), thread_(GetCurrentThreadId()) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.live.insert(this);
}

Double::~Double() = default;

ULONG Double::Retain() {
    MayCall("AddRef");
    return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG Double::Drop() {
    if (!MayCall("Release") && expired_) return 0;
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
        expired_ = true;
        Registry& registry = TheRegistry();
        {
            const std::lock_guard lock(registry.mutex);
            registry.live.erase(this);
            registry.expired.push_back(this);
        }
        Expire();
    }
    return static_cast<ULONG>(left);
}

bool Double::MayCall(const char* what) {
    const bool wrongThread = GetCurrentThreadId() != thread_;
    if (!wrongThread && !expired_) return true;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.violations.push_back(name_ + '.' + what +
                                  (wrongThread ? " on another thread" : " after the last Release"));
    return false;
}

long LiveDoubles() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return static_cast<long>(registry.live.size());
}

std::vector<std::string> LiveDoubleLabels() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    std::vector<std::string> labels;
    for (const Double* object : registry.live) labels.push_back(object->name_);
    std::sort(labels.begin(), labels.end());
    return labels;
}

std::vector<std::string> TakeViolations() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return std::exchange(registry.violations, {});
}

std::vector<std::string> TakeComplaints(long before) {
    std::vector<std::string> complaints;
    if (LiveDoubles() > before)
        for (const std::string& label : LiveDoubleLabels())
            complaints.push_back("still held: " + label);
    for (const std::string& violation : TakeViolations())
        complaints.push_back("a call that must not be: " + violation);
    return complaints;
}

void BuryDoubles() {
    Registry& registry = TheRegistry();
    for (;;) {
        std::vector<Double*> expired;
        {
            const std::lock_guard lock(registry.mutex);
            expired = std::exchange(registry.expired, {});
        }
        if (expired.empty()) return;
        // These may hold the last references to others.
        for (Double* dead : expired) delete dead;
    }
}

}  // namespace support
