#pragma once

#include "hosting/com_class.h"
#include "scripthost/arguments.h"

#include <functional>
#include <string>
#include <vector>

namespace scripthost {

/// An object that scripts see, with members that are functions of ours. What a member throws
/// reaches the script as an error.
class ScriptObject : public hosting::ComClass<IDispatch> {
public:
    using Member = std::function<_variant_t(const Arguments&)>;

    /// `name` is the source of its errors.
    explicit ScriptObject(std::wstring name) : name_(std::move(name)) {}

    /// Adds a member that a script may call or read. A name may be added only once.
    void Add(const wchar_t* name, Member member);
    /// Adds the default member, which is also there by its name.
    void AddDefault(const wchar_t* name, Member member);
    /// Adds the member that For Each asks for the enumerator.
    void AddEnumerator(Member member);
    /// Drops all members, and with them whatever they refer to.
    void Clear() { members_.clear(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override;

private:
    struct NamedMember {
        DISPID id;
        std::wstring name;
        Member function;
    };

    std::wstring name_;
    std::vector<NamedMember> members_;
};

}  // namespace scripthost
