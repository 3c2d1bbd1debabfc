#include "support/fake_object.h"

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace support {

namespace {

constexpr DISPID idsPerObject = 256;

DISPID NextFirstId() {
    static LONG objects = 0;
    return 1 + (InterlockedIncrement(&objects) % 0x700000) * idsPerObject;
}

bool Same(std::string_view a, std::string_view b) {
    return a.size() == b.size() && SameName(Wide(a), Wide(b));
}

}  // namespace

FakeObject::FakeObject(std::string label, SharedLog log)
    : FakeObject(std::move(label), std::move(log), {}) {}

FakeObject::FakeObject(std::string label, SharedLog log, std::span<const Member> shared)
    : Double(std::move(label)), log_(std::move(log)), shared_(shared), firstId_(NextFirstId()) {}

FakeObject& FakeObject::Define(Member member) {
    std::erase_if(own_, [&](const Member& old) { return Same(old.name, member.name); });
    std::erase_if(lacking_, [&](const std::string& name) { return Same(name, member.name); });
    own_.push_back(std::move(member));
    return *this;
}

FakeObject& FakeObject::Property(std::string_view name, Value value) {
    Member member;
    member.name = name;
    member.most = 0;
    member.get = [key = member.name](FakeObject& self, Arguments&) { return self.Stored(key); };
    member.put = [key = member.name](FakeObject& self, Arguments& arguments) {
        self.Store(key, arguments[0]);
        return Value();
    };
    Store(name, std::move(value));
    return Define(std::move(member));
}

FakeObject& FakeObject::Constant(std::string_view name, Value value) {
    Property(name, std::move(value));
    own_.back().put = nullptr;
    return *this;
}

FakeObject& FakeObject::Function(std::string_view name, std::function<Value(Arguments&)> body) {
    return Function(name, 0, Member::anyNumber, std::move(body));
}

FakeObject& FakeObject::Function(std::string_view name, int least, int most,
                                 std::function<Value(Arguments&)> body) {
    Member member;
    member.name = name;
    member.least = least;
    member.most = most;
    member.isMethod = true;
    // Shared, because members are copied for each call and a body may count its calls.
    auto work = std::make_shared<std::function<Value(Arguments&)>>(std::move(body));
    member.get = [work](FakeObject&, Arguments& arguments) { return (*work)(arguments); };
    return Define(std::move(member));
}

FakeObject& FakeObject::Lacks(std::string_view name) {
    lacking_.emplace_back(name);
    return *this;
}

Value FakeObject::Stored(std::string_view name) const {
    for (const auto& [key, value] : stored_)
        if (Same(key, name)) return value;
    return {};
}

void FakeObject::Store(std::string_view name, Value value) {
    for (auto& [key, old] : stored_) {
        if (!Same(key, name)) continue;
        // Letting go of the old value may call back into this object.
        std::swap(old, value);
        return;
    }
    stored_.emplace(name, std::move(value));
}

Disturbance& FakeObject::On(std::string_view member) {
    if (Find(member) == nullptr)
        throw std::invalid_argument(Name() + " has no member " + std::string(member));
    disturbances_.emplace_back(member, Disturbance());
    return disturbances_.back().second;
}

void FakeObject::Disconnect(HRESULT result) {
    dead_ = result;
}

void FakeObject::Dismantle() {
    if (dead_ == S_OK) dead_ = RPC_E_DISCONNECTED;
    Expire();
}

void FakeObject::Expire() {
    disturbances_.clear();
    // Out of the object first: whatever is released here may look at it again.
    const auto stored = std::exchange(stored_, {});
    const auto own = std::exchange(own_, {});
    Forget();
}

STDMETHODIMP FakeObject::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
    if (iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch)) {
        *object = static_cast<IDispatch*>(this);
    } else if (iid == __uuidof(Labelled)) {
        *object = static_cast<Labelled*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP FakeObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP FakeObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr) *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP FakeObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (!MayCall("GetIDsOfNames")) return RPC_E_DISCONNECTED;
    const Ref<FakeObject> alive(this);
    const std::string name = Utf8(std::wstring_view(names[0]));
    if (log_) log_->Names(Label() + ".GetIDsOfNames(\"" + name + "\")");
    if (dead_ != S_OK) return dead_;
    if (const auto struck = Struck(name, true, nullptr)) {
        const DISPPARAMS none{};
        struck->Work(Arguments(none, 0));
        return struck->TheFailure()->result;
    }
    const Member* member = name.starts_with('[') ? nullptr : Find(name);
    if (member == nullptr) return DISP_E_UNKNOWNNAME;
    if (Same(name, newEnumMember)) {
        ids[0] = DISPID_NEWENUM;
    } else {
        const auto known = std::find_if(asked_.begin(), asked_.end(),
                                        [&](const std::string& old) { return Same(old, name); });
        ids[0] = firstId_ + static_cast<DISPID>(known - asked_.begin());
        if (known == asked_.end()) asked_.push_back(member->name);
    }
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP FakeObject::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    if (result != nullptr) VariantInit(result);
    if (parameters == nullptr) return E_INVALIDARG;
    if (!MayCall("Invoke")) return RPC_E_DISCONNECTED;
    const Ref<FakeObject> alive(this);
    const std::string name = NameOf(id);
    if (name.empty()) return dead_ != S_OK ? dead_ : DISP_E_MEMBERNOTFOUND;
    Arguments arguments(*parameters, kind);
    if (log_) {
        if (id == DISPID_NEWENUM)
            log_->Enumeration(Label() + "._NewEnum");
        else
            log_->Call(Label(), name, DescribeCall(name, arguments));
    }
    if (dead_ != S_OK) return dead_;
    try {
        if (const auto struck = Struck(name, false, &arguments)) {
            struck->Work(arguments);
            if (struck->TheFailure()) return Raise(*struck->TheFailure(), exception, badArgument);
            if (dead_ != S_OK) return dead_;
            if (struck->TheAnswer())
                return result != nullptr ? VariantCopy(result, Source(*struck->TheAnswer())) : S_OK;
        }
        return Answer(name, arguments, result);
    } catch (const Failure& failure) {
        return Raise(failure, exception, badArgument);
    } catch (const _com_error& error) {
        return error.Error();
    } catch (const std::exception& error) {
        return Raise(Failure::Exception(E_UNEXPECTED, error.what()), exception, badArgument);
    }
}

HRESULT FakeObject::Answer(const std::string& name, Arguments& arguments, VARIANT* result) {
    const Member* found = Find(name);
    if (found == nullptr) return DISP_E_MEMBERNOTFOUND;
    // A copy: its body may redefine it.
    const Member member = *found;
    const bool put = arguments.IsPut();
    const int count = static_cast<int>(arguments.Count()) - (put ? 1 : 0);
    if (put) {
        const bool accepted =
            ((arguments.Kind() & DISPATCH_PROPERTYPUT) != 0 && member.byValue) ||
            ((arguments.Kind() & DISPATCH_PROPERTYPUTREF) != 0 && member.byReference);
        if (!member.put || !accepted) return DISP_E_MEMBERNOTFOUND;
    } else {
        const WORD needed = member.isMethod ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
        if (!member.get || (arguments.Kind() & needed) == 0) return DISP_E_MEMBERNOTFOUND;
    }
    if (count < member.least || count > member.most) return DISP_E_BADPARAMCOUNT;
    Value value = put ? member.put(*this, arguments) : member.get(*this, arguments);
    if (result != nullptr) std::swap(*result, static_cast<VARIANT&>(value));
    return S_OK;
}

const Member* FakeObject::Find(std::string_view name) const {
    const auto has = [name](const Member& member) { return Same(member.name, name); };
    for (const std::string& missing : lacking_)
        if (Same(missing, name)) return nullptr;
    if (const auto own = std::find_if(own_.begin(), own_.end(), has); own != own_.end())
        return &*own;
    if (const auto shared = std::find_if(shared_.begin(), shared_.end(), has);
        shared != shared_.end())
        return &*shared;
    return nullptr;
}

std::string FakeObject::NameOf(DISPID id) const {
    std::string_view fixed;
    if (id == DISPID_VALUE) fixed = defaultMember;
    if (id == DISPID_NEWENUM) fixed = newEnumMember;
    if (!fixed.empty()) return Find(fixed) != nullptr ? std::string(fixed) : std::string();
    const DISPID index = id - firstId_;
    if (index < 0 || index >= static_cast<DISPID>(asked_.size())) return {};
    return asked_[static_cast<std::size_t>(index)];
}

std::string FakeObject::DescribeCall(const std::string& member, const Arguments& arguments) const {
    const std::size_t count = arguments.Count();
    const bool put = arguments.IsPut() && count > 0;
    const std::size_t positional = put ? count - 1 : count;
    std::string text = Label() + '.' + member;
    if (positional > 0) text += '(' + arguments.Describe(0, positional) + ')';
    if (!put) return text;
    text += " = " + arguments.Describe(positional, 1);
    return (arguments.Kind() & DISPATCH_PROPERTYPUTREF) != 0 ? "Set " + text : text;
}

std::optional<Disturbance> FakeObject::Struck(std::string_view member, bool inNames,
                                              const Arguments* arguments) {
    for (auto entry = disturbances_.rbegin(); entry != disturbances_.rend(); ++entry) {
        auto& [name, disturbance] = *entry;
        const bool concernsNames = disturbance.TheFailure() && disturbance.TheFailure()->inNames;
        if (concernsNames != inNames || !Same(name, member)) continue;
        if (disturbance.Strikes(arguments)) return disturbance;
    }
    return std::nullopt;
}

}  // namespace support
