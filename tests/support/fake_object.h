#pragma once

#include "support/call_log.h"
#include "support/disturbance.h"
#include "support/double.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class FakeObject;

/// What a member does. `self` is the object that is called.
using MemberBody = std::function<Value(FakeObject& self, Arguments& arguments)>;

/// One member of a double.
struct Member {
    static constexpr int anyNumber = 1000;

    std::string name;
    int least = 0;  ///< arguments, without the value of a put
    int most = anyNumber;
    bool isMethod = false;  ///< answers method calls, otherwise property gets (both may be asked)
    MemberBody get{};
    MemberBody put{};         ///< null where it cannot be set
    bool byValue = true;      ///< can be put
    bool byReference = true;  ///< can be put by reference
};

/// The names of a collection's members that scripts never spell.
inline constexpr std::string_view defaultMember = "[default]";
inline constexpr std::string_view newEnumMember = "_NewEnum";

/// A late-bound object without type information, built member by member. Its dispatch ids are its
/// own: no two objects share one, and none says anything about the name behind it. Names are
/// compared without case. Every call is noted in its log under its label.
class FakeObject : public IDispatch, public Labelled, public Double {
public:
    explicit FakeObject(std::string label, SharedLog log = nullptr);
    [[nodiscard]] static Ref<FakeObject> Make(std::string label, SharedLog log = nullptr) {
        return support::Make<FakeObject>(std::move(label), std::move(log));
    }

    /// A stored value that can be read and set.
    FakeObject& Property(std::string_view name, Value value = {});
    /// A stored value that can be read only.
    FakeObject& Constant(std::string_view name, Value value);
    /// A method with any number of arguments, or with as many as said.
    FakeObject& Function(std::string_view name, std::function<Value(Arguments&)> body);
    FakeObject& Function(std::string_view name, int least, int most,
                         std::function<Value(Arguments&)> body);
    FakeObject& Define(Member member);
    /// As if the object never had had it.
    FakeObject& Lacks(std::string_view name);

    /// What a stored property holds at present.
    [[nodiscard]] Value Stored(std::string_view name) const;
    void Store(std::string_view name, Value value);

    /// Adds a disturbance of a member's calls; the one added last that strikes decides. The member
    /// may be `defaultMember` or `newEnumMember`. The reference stays good until `Calm`.
    Disturbance& On(std::string_view member);
    /// Ends all disturbances.
    void Calm() { disturbances_.clear(); }
    /// From now on every call fails like this, as if the object's process had died.
    void Disconnect(HRESULT result = RPC_E_DISCONNECTED);
    /// What every call fails with, S_OK as long as the object is well.
    [[nodiscard]] HRESULT Death() const { return dead_; }
    /// Disconnects and lets go of everything that the object refers to.
    void Dismantle();

    [[nodiscard]] const std::string& Label() const override { return Name(); }
    /// The object as COM knows it.
    [[nodiscard]] IUnknown* Identity() { return static_cast<IDispatch*>(this); }
    [[nodiscard]] const SharedLog& Log() const { return log_; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID riid, LCID locale, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

protected:
    /// `shared` outlives the object: the members that all objects of a kind have.
    FakeObject(std::string label, SharedLog log, std::span<const Member> shared);
    ~FakeObject() override = default;

    void Expire() override;
    /// Lets go of what a derived object refers to.
    virtual void Forget() {}

private:
    [[nodiscard]] const Member* Find(std::string_view name) const;
    [[nodiscard]] std::string NameOf(DISPID id) const;
    [[nodiscard]] std::string DescribeCall(const std::string& member,
                                           const Arguments& arguments) const;
    /// The last disturbance that strikes this call, as it is now: what it runs may add others.
    std::optional<Disturbance> Struck(std::string_view member, bool inNames,
                                      const Arguments* arguments);
    HRESULT Answer(const std::string& name, Arguments& arguments, VARIANT* result);

    SharedLog log_;
    std::vector<Member> own_;
    std::span<const Member> shared_;
    std::map<std::string, Value, std::less<>> stored_;
    std::vector<std::string> lacking_;
    std::deque<std::pair<std::string, Disturbance>> disturbances_;
    std::vector<std::string> asked_;  // the names whose ids are firstId_, firstId_ + 1, ...
    DISPID firstId_;
    HRESULT dead_ = S_OK;
};

}  // namespace support
