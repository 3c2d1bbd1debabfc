#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// The late-bound calls that doubles received, in order, as text: `node1.identifier`,
/// `Class.GetProperty("Name")`, `visibility.Description = "x"`, `Set visibility.MetaType = String`.
/// A call is noted before it is answered, so a call that fails is in the log too.
class CallLog {
public:
    /// Whether the steps of enumerations (`_NewEnum`, `Next(32) -> 3`) stand among the calls too.
    bool withEnumeration = false;
    /// Whether look-ups of names (`node1.GetIDsOfNames("name")`) stand among the calls too.
    bool withNames = false;
    /// Turn it off where a hundred thousand calls are of no interest.
    bool enabled = true;

    [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }
    [[nodiscard]] const std::vector<std::string>& Enumerations() const { return enumerations_; }
    /// The calls so far; the log is empty afterwards.
    std::vector<std::string> Take();
    void Clear();
    /// How often a member was called, of any double ("GetProperty") or of one
    /// ("node1.GetProperty").
    [[nodiscard]] std::size_t Count(std::string_view member) const;

    /// A line of the test's own, for example from an event handler.
    void Note(std::string text);

    void Call(const std::string& label, const std::string& member, std::string text);
    void Enumeration(std::string text);
    void Names(std::string text);

private:
    std::vector<std::string> calls_;
    std::vector<std::string> enumerations_;
    std::vector<std::string> members_;  // "label.member" of each call
};

using SharedLog = std::shared_ptr<CallLog>;

}  // namespace support
