#include "fuzz/members.h"

#include "support/text.h"

namespace fuzz {

using support::Ref;

namespace {

VARTYPE PlainType(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return PlainType(info, *type.lptdesc);
    if (type.vt != VT_USERDEFINED) return type.vt;
    Ref<ITypeInfo> referred;
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.GetAddressOf())) ||
        FAILED(referred->GetTypeAttr(&attributes)))
        return VT_VARIANT;
    const TYPEKIND kind = attributes->typekind;
    referred->ReleaseTypeAttr(attributes);
    return kind == TKIND_ENUM ? VT_I4 : VT_DISPATCH;
}

Member Describe(ITypeInfo& info, const FUNCDESC& function) {
    Member member;
    member.id = function.memid;
    member.kind = static_cast<WORD>(function.invkind);
    std::vector<BSTR> names(static_cast<std::size_t>(function.cParams) + 1);
    UINT count = 0;
    info.GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count);
    member.name = support::Utf8(names.front());
    for (SHORT index = 0; index < function.cParams; ++index) {
        const ELEMDESC& element = function.lprgelemdescParam[index];
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) continue;
        Parameter parameter;
        parameter.name = support::Utf8(names[static_cast<std::size_t>(index) + 1]);
        parameter.type = PlainType(info, element.tdesc);
        parameter.optional = (element.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0;
        member.parameters.push_back(std::move(parameter));
    }
    for (const BSTR name : names) SysFreeString(name);
    return member;
}

}  // namespace

std::string Member::Title() const {
    if ((kind & DISPATCH_PROPERTYPUT) != 0) return "put " + name;
    if ((kind & DISPATCH_PROPERTYPUTREF) != 0) return "putref " + name;
    return (kind & DISPATCH_PROPERTYGET) != 0 ? "get " + name : name;
}

std::vector<Member> ReadMembers(IDispatch& object) {
    std::vector<Member> members;
    Ref<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(object.GetTypeInfo(0, 0, info.GetAddressOf())) ||
        FAILED(info->GetTypeAttr(&attributes)))
        return members;
    const UINT count = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    for (UINT index = 0; index < count; ++index) {
        FUNCDESC* function = nullptr;
        if (FAILED(info->GetFuncDesc(index, &function))) continue;
        // IUnknown's and IDispatch's own members are no members for late-bound callers.
        const bool plumbing =
            (function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0 && function->memid >= 0x60000000;
        if (!plumbing) members.push_back(Describe(*info.Get(), *function));
        info->ReleaseFuncDesc(function);
    }
    return members;
}

namespace {

/// The classes that have all of these flags.
std::vector<std::string> ClassesWith(ITypeLib& library, int flags) {
    std::vector<std::string> names;
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        Ref<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        if (FAILED(library.GetTypeInfo(index, info.GetAddressOf())) ||
            FAILED(info->GetTypeAttr(&attributes)))
            continue;
        const bool meant =
            attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & flags) == flags;
        info->ReleaseTypeAttr(attributes);
        BSTR name = nullptr;
        if (meant &&
            SUCCEEDED(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr)))
            names.push_back(support::Utf8(name));
        SysFreeString(name);
    }
    return names;
}

}  // namespace

std::vector<std::string> CreatableClasses(ITypeLib& library) {
    return ClassesWith(library, TYPEFLAG_FCANCREATE);
}

std::vector<std::string> ControlClasses(ITypeLib& library) {
    return ClassesWith(library, TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL);
}

}  // namespace fuzz
