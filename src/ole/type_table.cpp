#include "ole/type_table.h"

#include <oleauto.h>

#include <algorithm>

#include "ole/class_info.h"
#include "ole/error.h"
#include "ole/lent.h"
#include "ole/text.h"
#include "ole/variant_memory.h"

namespace ole {

namespace {

constexpr int assigns = INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF;

int Resolve(ITypeInfo& info, const TYPEDESC& type, Parameter& parameter);

int ResolveNamed(ITypeInfo& named, Parameter& parameter) {
    LentTypeAttributes attributes(named);
    Check(named.GetTypeAttr(attributes.Address()));
    switch (attributes->typekind) {
        case TKIND_ENUM:
            parameter.type = VT_I4;
            return 0;
        case TKIND_ALIAS:
            return Resolve(named, attributes->tdescAlias, parameter);
        // The first pointer to an interface, or to the class that it is the default of, is the
        // object itself.
        case TKIND_COCLASS:
            parameter.type = VT_DISPATCH;
            parameter.interfaceId = DefaultInterface(named, false);
            return -1;
        case TKIND_INTERFACE:
        case TKIND_DISPATCH:
            parameter.type =
                (attributes->wTypeFlags & TYPEFLAG_FDISPATCHABLE) != 0 ? VT_DISPATCH : VT_UNKNOWN;
            parameter.interfaceId = attributes->guid;
            return -1;
        default:
            Check(TYPE_E_UNSUPFORMAT);
            return 0;
    }
}

/// Follows pointers, aliases and enumerations to the plain type, and names the interface of an
/// object type. Answers how many pointers lead to the value.
int Resolve(ITypeInfo& info, const TYPEDESC& type, Parameter& parameter) {
    switch (type.vt) {
        case VT_PTR:
            return 1 + Resolve(info, *type.lptdesc, parameter);
        case VT_SAFEARRAY:
            if (Resolve(info, *type.lptdesc, parameter) != 0) Check(TYPE_E_UNSUPFORMAT);
            parameter.type |= VT_ARRAY;
            return 0;
        case VT_INT:
            parameter.type = VT_I4;
            return 0;
        case VT_UINT:
            parameter.type = VT_UI4;
            return 0;
        case VT_USERDEFINED: {
            Ref<ITypeInfo> named;
            Check(info.GetRefTypeInfo(type.hreftype, named.GetAddressOf()));
            return ResolveNamed(*named.Get(), parameter);
        }
        default:
            if (type.vt != VT_VARIANT && SizeOf(type.vt) == 0) Check(TYPE_E_UNSUPFORMAT);
            parameter.type = type.vt;
            if (type.vt == VT_UNKNOWN) parameter.interfaceId = IID_IUnknown;
            return 0;
    }
}

Parameter ReadParameter(ITypeInfo& info, const ELEMDESC& element) {
    Parameter parameter;
    parameter.byReference = Resolve(info, element.tdesc, parameter) > 0;
    const USHORT flags = element.paramdesc.wParamFlags;
    parameter.result = (flags & PARAMFLAG_FRETVAL) != 0;
    parameter.optional = (flags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0;
    parameter.hasDefault = (flags & PARAMFLAG_FHASDEFAULT) != 0;
    if (parameter.hasDefault) {
        const VARIANT& value = element.paramdesc.pparamdescex->varDefaultValue;
        if (parameter.type == VT_VARIANT) {
            parameter.defaultValue = value;
        } else {
            Check(ChangeType(parameter.defaultValue, value, parameter.type));
        }
    }
    return parameter;
}

Member ReadMember(ITypeInfo& info, const FUNCDESC& function) {
    Member member;
    member.id = function.memid;
    member.kind = function.invkind;
    member.tableOffset = static_cast<ULONG_PTR>(function.oVft);
    const auto count = static_cast<UINT>(function.cParams);
    std::vector<BSTR> lent(count + 1, nullptr);
    UINT found = 0;
    Check(info.GetNames(function.memid, lent.data(), count + 1, &found));
    std::vector<std::wstring> names;
    for (BSTR name : lent) names.emplace_back(ToWide(_bstr_t(name, false)));
    member.name = names.at(0);
    for (UINT i = 0; i < count; ++i) {
        member.parameters.push_back(ReadParameter(info, function.lprgelemdescParam[i]));
        member.parameters.back().name = names.at(i + 1);
    }
    member.given = count;
    if (count > 0 && member.parameters.back().result) --member.given;
    return member;
}

/// The half of a dual interface that has the function offsets; it comes as its dispatch half.
Ref<ITypeInfo> FunctionTableOf(const Ref<ITypeInfo>& info) {
    LentTypeAttributes attributes(*info.Get());
    Check(info->GetTypeAttr(attributes.Address()));
    if (attributes->typekind != TKIND_DISPATCH) return info;
    HREFTYPE reference = 0;
    Ref<ITypeInfo> table;
    Check(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    Check(info->GetRefTypeInfo(reference, table.GetAddressOf()));
    return table;
}

/// Names in type libraries are identifiers: their case is that of the basic letters.
wchar_t Lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

}  // namespace

TypeTable::TypeTable(Ref<ITypeInfo> info) : info_(std::move(info)) {
    const Ref<ITypeInfo> table = FunctionTableOf(info_);
    LentTypeAttributes attributes(*table.Get());
    Check(table->GetTypeAttr(attributes.Address()));
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        LentFunction function(*table.Get());
        Check(table->GetFuncDesc(i, function.Address()));
        members_.push_back(ReadMember(*table.Get(), *function));
    }
    std::stable_sort(members_.begin(), members_.end(),
                     [](const Member& a, const Member& b) { return a.id < b.id; });
    for (const Member& member : members_) ids_.emplace(member.name, member.id);
}

const Member* TypeTable::Find(DISPID id, WORD flags) const {
    const auto range = std::ranges::equal_range(members_, id, {}, &Member::id);
    const Member* other = nullptr;
    for (const Member& member : range) {
        if ((member.kind & flags) != 0) return &member;
        if (((member.kind & assigns) != 0) == ((flags & assigns) != 0)) other = &member;
    }
    return other;
}

DISPID TypeTable::IdOf(std::wstring_view member) const {
    const auto found = ids_.find(member);
    return found == ids_.end() ? DISPID_UNKNOWN : found->second;
}

DISPID TypeTable::PositionOf(DISPID member, std::wstring_view argument) const {
    for (const Member& each : std::ranges::equal_range(members_, member, {}, &Member::id)) {
        for (UINT i = 0; i < each.given; ++i) {
            if (SameName()(each.parameters[i].name, argument)) return static_cast<DISPID>(i);
        }
    }
    return DISPID_UNKNOWN;
}

std::size_t TypeTable::NameHash::operator()(std::wstring_view name) const {
    std::size_t hash = 5381;
    for (wchar_t c : name) hash = hash * 33 ^ static_cast<std::size_t>(Lower(c));
    return hash;
}

bool TypeTable::SameName::operator()(std::wstring_view a, std::wstring_view b) const {
    return std::ranges::equal(a, b, {}, Lower, Lower);
}

}  // namespace ole
