#include "support/call_log.h"

#include <algorithm>
#include <utility>

namespace support {

std::vector<std::string> CallLog::Take() {
    std::vector<std::string> calls = std::move(calls_);
    Clear();
    return calls;
}

void CallLog::Clear() {
    calls_.clear();
    enumerations_.clear();
    members_.clear();
}

std::size_t CallLog::Count(std::string_view member) const {
    const auto matches = [member](const std::string& called) {
        if (!called.ends_with(member)) return false;
        return called.size() == member.size() || called[called.size() - member.size() - 1] == '.';
    };
    return static_cast<std::size_t>(std::count_if(members_.begin(), members_.end(), matches));
}

void CallLog::Note(std::string text) {
    calls_.push_back(std::move(text));
}

void CallLog::Call(const std::string& label, const std::string& member, std::string text) {
    if (!enabled) return;
    members_.push_back(label + '.' + member);
    calls_.push_back(std::move(text));
}

void CallLog::Enumeration(std::string text) {
    if (!enabled) return;
    if (withEnumeration) calls_.push_back(text);
    enumerations_.push_back(std::move(text));
}

void CallLog::Names(std::string text) {
    if (enabled && withNames) calls_.push_back(std::move(text));
}

}  // namespace support
