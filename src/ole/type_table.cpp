#include "ole/type_table.h"

#include <oleauto.h>

#include "ole/error.h"
#include "ole/lent.h"

namespace ole {

namespace {

/// Follows pointers, aliases and enumerations to the plain type, and names the interface of an
/// object type. Answers how many pointers lead to the value.
int Resolve(ITypeInfo& info, const TYPEDESC& type, Parameter& parameter) {
    switch (type.vt) {
        case VT_PTR:
            return 1 + Resolve(info, *type.lptdesc, parameter);
        case VT_INT:
            parameter.type = VT_I4;
            return 0;
        case VT_UINT:
            parameter.type = VT_UI4;
            return 0;
        case VT_USERDEFINED:
            break;
        default:
            parameter.type = type.vt;
            return 0;
    }
    Ref<ITypeInfo> referred;
    Check(info.GetRefTypeInfo(type.hreftype, referred.GetAddressOf()));
    LentTypeAttributes attributes(*referred.Get());
    Check(referred->GetTypeAttr(attributes.Address()));
    switch (attributes->typekind) {
        case TKIND_ENUM:
            parameter.type = VT_I4;
            return 0;
        case TKIND_ALIAS:
            return Resolve(*referred.Get(), attributes->tdescAlias, parameter);
        default:
            // The first pointer to an interface is the object itself.
            parameter.type =
                (attributes->wTypeFlags & TYPEFLAG_FDISPATCHABLE) != 0 ? VT_DISPATCH : VT_UNKNOWN;
            parameter.interfaceId = attributes->guid;
            return -1;
    }
}

constexpr int assigns = INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF;

}  // namespace

TypeTable::TypeTable(Ref<ITypeInfo> info) : info_(std::move(info)) {
    // A dual interface comes as its dispatch half; the half with the function offsets is behind it.
    LentTypeAttributes attributes(*info_.Get());
    Check(info_->GetTypeAttr(attributes.Address()));
    Ref<ITypeInfo> table = info_;
    if (attributes->typekind == TKIND_DISPATCH) {
        HREFTYPE reference = 0;
        Check(info_->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
        Check(info_->GetRefTypeInfo(reference, table.ReleaseAndGetAddressOf()));
    }
    LentTypeAttributes tableAttributes(*table.Get());
    Check(table->GetTypeAttr(tableAttributes.Address()));
    std::swap(info_, table);
    for (UINT i = 0; i < tableAttributes->cFuncs; ++i) {
        LentFunction function(*info_.Get());
        Check(info_->GetFuncDesc(i, function.Address()));
        Read(*function);
    }
    std::swap(info_, table);
}

void TypeTable::Read(const FUNCDESC& function) {
    Member member;
    member.id = function.memid;
    member.kind = function.invkind;
    member.tableOffset = static_cast<ULONG_PTR>(function.oVft);
    const auto count = static_cast<UINT>(function.cParams);
    std::vector<BSTR> names(count + 1, nullptr);
    UINT named = 0;
    Check(info_->GetNames(function.memid, names.data(), count + 1, &named));
    std::vector<_bstr_t> owned;
    for (BSTR name : names) owned.emplace_back(name, false);
    for (UINT i = 0; i < count; ++i) {
        std::wstring name = i + 1 < named ? std::wstring(owned[i + 1]) : std::wstring();
        member.parameters.push_back(ReadParameter(function.lprgelemdescParam[i], std::move(name)));
    }
    member.given = count;
    if (count > 0 && member.parameters.back().result) --member.given;
    members_.push_back(std::move(member));
}

Parameter TypeTable::ReadParameter(const ELEMDESC& element, std::wstring name) const {
    Parameter parameter;
    parameter.name = std::move(name);
    parameter.byReference = Resolve(*info_.Get(), element.tdesc, parameter) > 0;
    if (parameter.type == VT_UNKNOWN && parameter.interfaceId == IID_IDispatch) {
        parameter.interfaceId = IID_IUnknown;
    }
    const USHORT flags = element.paramdesc.wParamFlags;
    parameter.result = (flags & PARAMFLAG_FRETVAL) != 0;
    parameter.optional = (flags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0;
    parameter.hasDefault = (flags & PARAMFLAG_FHASDEFAULT) != 0;
    if (parameter.hasDefault)
        parameter.defaultValue = element.paramdesc.pparamdescex->varDefaultValue;
    return parameter;
}

const Member* TypeTable::Find(DISPID id, WORD flags) const {
    const Member* other = nullptr;
    for (const Member& member : members_) {
        if (member.id != id) continue;
        if ((member.kind & flags) != 0) return &member;
        const bool bothAssign = (member.kind & assigns) != 0 && (flags & assigns) != 0;
        const bool bothRead = (member.kind & assigns) == 0 && (flags & assigns) == 0;
        if (bothAssign || bothRead) other = &member;
    }
    return other;
}

}  // namespace ole
