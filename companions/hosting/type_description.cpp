#include "hosting/type_description.h"

#include "hosting/error.h"

#include <comdef.h>

#include <memory>
#include <optional>
#include <vector>

namespace hosting {

namespace {

struct ReleaseAttributes {
    Ref<ITypeInfo> info;
    void operator()(TYPEATTR* attributes) const { info->ReleaseTypeAttr(attributes); }
};

struct ReleaseFunction {
    Ref<ITypeInfo> info;
    void operator()(FUNCDESC* function) const { info->ReleaseFuncDesc(function); }
};

using Attributes = std::unique_ptr<TYPEATTR, ReleaseAttributes>;
using Function = std::unique_ptr<FUNCDESC, ReleaseFunction>;

Attributes AttributesOf(const Ref<ITypeInfo>& info) {
    TYPEATTR* attributes = nullptr;
    if (info) info->GetTypeAttr(&attributes);
    return Attributes(attributes, {info});
}

Ref<ITypeLib> LibraryOf(const Ref<ITypeInfo>& info) {
    Ref<ITypeLib> library;
    UINT index = 0;
    if (info) info->GetContainingTypeLib(library.GetAddressOf(), &index);
    return library;
}

Ref<ITypeInfo> ClassOf(IUnknown* object) {
    Ref<ITypeInfo> info;
    if (const auto provider = Query<IProvideClassInfo>(object))
        provider->GetClassInfo(info.GetAddressOf());
    return info;
}

Ref<ITypeInfo> DispatchDescription(IUnknown* object) {
    Ref<ITypeInfo> info;
    if (const auto dispatch = Query<IDispatch>(object))
        dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf());
    return info;
}

/// The interface of a class that carries these flags and no others.
Ref<ITypeInfo> InterfaceWithFlags(const Ref<ITypeInfo>& classInfo, INT flags) {
    const Attributes attributes = AttributesOf(classInfo);
    if (!attributes || attributes->typekind != TKIND_COCLASS) return nullptr;
    constexpr INT mask = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    for (UINT i = 0; i < attributes->cImplTypes; ++i) {
        INT present = 0;
        HREFTYPE reference = 0;
        Ref<ITypeInfo> info;
        if (SUCCEEDED(classInfo->GetImplTypeFlags(i, &present)) && (present & mask) == flags &&
            SUCCEEDED(classInfo->GetRefTypeOfImplType(i, &reference)) &&
            SUCCEEDED(classInfo->GetRefTypeInfo(reference, info.GetAddressOf())))
            return info;
    }
    return nullptr;
}

Ref<ITypeInfo> DefaultSource(const Ref<ITypeInfo>& classInfo) {
    return InterfaceWithFlags(classInfo, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
}

IID IdOf(const Ref<ITypeInfo>& info) {
    const Attributes attributes = AttributesOf(info);
    return attributes ? attributes->guid : IID_NULL;
}

/// The source interface of the class whose default interface is the one the object dispatches by.
Ref<ITypeInfo> SourceByDefaultInterface(IUnknown* object) {
    const Ref<ITypeInfo> mine = DispatchDescription(object);
    const Ref<ITypeLib> library = LibraryOf(mine);
    const IID myId = IdOf(mine);
    if (!library) return nullptr;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        Ref<ITypeInfo> info;
        if (FAILED(library->GetTypeInfo(i, info.GetAddressOf()))) continue;
        if (IdOf(InterfaceWithFlags(info, IMPLTYPEFLAG_FDEFAULT)) != myId) continue;
        if (auto source = DefaultSource(info)) return source;
    }
    return nullptr;
}

std::optional<IID> OnlyConnectionPoint(IUnknown* object) {
    const auto container = Query<IConnectionPointContainer>(object);
    Ref<IEnumConnectionPoints> points;
    if (!container || FAILED(container->EnumConnectionPoints(points.GetAddressOf())))
        return std::nullopt;
    std::optional<IID> found;
    Ref<IConnectionPoint> point;
    while (points->Next(1, point.ReleaseAndGetAddressOf(), nullptr) == S_OK) {
        IID id{};
        if (FAILED(point->GetConnectionInterface(&id)) || id == IID_IPropertyNotifySink) continue;
        if (found) return std::nullopt;
        found = id;
    }
    return found;
}

std::optional<SourceInterface> FindSource(IUnknown* object) {
    if (const auto provider = Query<IProvideClassInfo2>(object)) {
        GUID id{};
        if (SUCCEEDED(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id)) && id != IID_NULL)
            return SourceInterface{id, FindDescription(object, id)};
    }
    if (auto source = DefaultSource(ClassOf(object))) return SourceInterface{IdOf(source), source};
    if (auto source = SourceByDefaultInterface(object))
        return SourceInterface{IdOf(source), source};
    if (const auto id = OnlyConnectionPoint(object))
        return SourceInterface{*id, FindDescription(object, *id)};
    return std::nullopt;
}

}  // namespace

SourceInterface FindSourceInterface(IUnknown* object) {
    const auto found = FindSource(object);
    if (!found) throw Error(CONNECT_E_NOCONNECTION, L"The object has no events.");
    return *found;
}

bool HasEvents(IUnknown* object) {
    return FindSource(object).has_value();
}

Ref<ITypeInfo> FindDescription(IUnknown* object, REFIID interfaceId) {
    for (const auto& info : {ClassOf(object), DispatchDescription(object)}) {
        Ref<ITypeInfo> found;
        if (const auto library = LibraryOf(info))
            if (SUCCEEDED(library->GetTypeInfoOfGuid(interfaceId, found.GetAddressOf())))
                return found;
    }
    return nullptr;
}

std::map<DISPID, std::wstring> MemberNames(ITypeInfo* description) {
    std::map<DISPID, std::wstring> names;
    const Ref<ITypeInfo> info(description);
    const Attributes attributes = AttributesOf(info);
    if (!attributes) return names;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* raw = nullptr;
        if (FAILED(info->GetFuncDesc(i, &raw))) continue;
        const Function function(raw, {info});
        if (function->wFuncFlags & FUNCFLAG_FRESTRICTED) continue;
        _bstr_t name;
        if (SUCCEEDED(info->GetDocumentation(function->memid, name.GetAddress(), nullptr, nullptr,
                                             nullptr)) &&
            name.length())
            names.emplace(function->memid, std::wstring(name, name.length()));
    }
    return names;
}

}  // namespace hosting
