#pragma once

#include "hosting/ref.h"

#include <map>
#include <string>

namespace hosting {

/// The default source interface of an object and its description, which may be null.
struct SourceInterface {
    IID id{};
    Ref<ITypeInfo> description;
};

/// Finds the default source interface: by the class information that the object gives, else by the
/// class of its type library with the same default interface, else its only connection point.
/// Throws Error where there is none.
[[nodiscard]] SourceInterface FindSourceInterface(IUnknown* object);

/// Whether FindSourceInterface would find one.
[[nodiscard]] bool HasEvents(IUnknown* object);

/// The description of one interface in the type library of an object, null where it has none.
[[nodiscard]] Ref<ITypeInfo> FindDescription(IUnknown* object, REFIID interfaceId);

/// The members that an interface declares, by dispatch id, without those of IUnknown and IDispatch.
[[nodiscard]] std::map<DISPID, std::wstring> MemberNames(ITypeInfo* description);

}  // namespace hosting
