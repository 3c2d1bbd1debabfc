#include "repository/import/importer.h"

#include <oleauto.h>

#include <optional>
#include <utility>

#include "ole/error.h"
#include "ole/lent.h"
#include "repository/com/text.h"
#include "repository/com/variant.h"
#include "repository/import/type_text.h"
#include "repository/store/error.h"

namespace repository::type_library {

namespace {

using LentVariable = ole::Lent<VARDESC, ITypeInfo, &ITypeInfo::ReleaseVarDesc>;

std::string Text(const _bstr_t& text) {
    return text.length() == 0 ? std::string()
                              : com::Narrow({static_cast<const wchar_t*>(text), text.length()});
}

/// What the documentation of a library, type or member says.
struct Documentation {
    std::string name;
    std::string help;
    long context = 0;
    std::string file;
};

template <class From>
Documentation DocumentationOf(From& from, MEMBERID member) {
    _bstr_t name;
    _bstr_t help;
    _bstr_t file;
    DWORD context = 0;
    ole::Check(from.GetDocumentation(member, name.GetAddress(), help.GetAddress(), &context,
                                     file.GetAddress()));
    return {Text(name), Text(help), static_cast<long>(context), Text(file)};
}

std::string GuidText(const GUID& guid) {
    return guid == GUID_NULL ? std::string() : com::Narrow(ole::GuidText(guid));
}

std::string VersionText(unsigned major, unsigned minor) {
    return std::to_string(major) + "." + std::to_string(minor);
}

const char* SystemOf(SYSKIND kind) {
    constexpr const char* names[] = {"Win16", "Win32", "Mac", "Win64"};
    return kind >= SYS_WIN16 && kind <= SYS_WIN64 ? names[kind] : nullptr;
}

const char* MetaNodeOf(TYPEKIND kind) {
    switch (kind) {
        case TKIND_ENUM:
            return kind::enumeration;
        case TKIND_RECORD:
        case TKIND_UNION:
            return kind::record;
        case TKIND_MODULE:
            return kind::module_;
        case TKIND_INTERFACE:
        case TKIND_DISPATCH:
            return kind::interface_;
        case TKIND_COCLASS:
            return kind::coclass;
        case TKIND_ALIAS:
            return kind::alias;
        default:
            return nullptr;
    }
}

store::Value Number(long number) {
    return static_cast<std::int32_t>(number);
}

store::Value Position(int index) {
    return static_cast<std::int16_t>(index + 1);
}

store::Value Flag(unsigned flags, unsigned flag) {
    return (flags & flag) != 0;
}

/// Nothing for an empty text or the number 0: what a library does not say.
store::Value Said(const std::string& text) {
    return text.empty() ? store::Value() : store::Value(text);
}
store::Value Said(long number) {
    return number == 0 ? store::Value() : Number(number);
}

/// The half with the function table of a dual interface; none for another type.
ole::Ref<ITypeInfo> TableOf(ITypeInfo& info, const TYPEATTR& attributes) {
    HREFTYPE reference = 0;
    ole::Ref<ITypeInfo> table;
    const bool isDual =
        attributes.typekind == TKIND_DISPATCH && (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0;
    if (isDual && SUCCEEDED(info.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference))) {
        info.GetRefTypeInfo(reference, table.GetAddressOf());
    }
    return table;
}

/// The flags that only that half has.
unsigned TableFlags(ITypeInfo& info, const TYPEATTR& attributes) {
    const ole::Ref<ITypeInfo> table = TableOf(info, attributes);
    if (!table) return 0;
    ole::LentTypeAttributes tableAttributes(*table.Get());
    ole::Check(table->GetTypeAttr(tableAttributes.Address()));
    return tableAttributes->wTypeFlags;
}

/// A constant as it stands; none for what is no plain value.
store::Value Constant(const VARIANT* value) {
    if (value == nullptr) return store::Empty();
    switch (V_VT(value)) {
        case VT_BOOL:
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_I8:
        case VT_UI8:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_BSTR:
        case VT_DECIMAL:
            return com::ValueAsGiven(*value);
        default:
            return store::Empty();
    }
}

}  // namespace

struct Importer::Function {
    Function(ITypeInfo& info, UINT index) : description(info), position(static_cast<int>(index)) {
        ole::Check(info.GetFuncDesc(index, description.Address()));
        documentation = DocumentationOf(info, description->memid);
        const auto count = static_cast<UINT>(description->cParams) + 1;
        std::vector<BSTR> found(count, nullptr);
        UINT named = 0;
        ole::Check(info.GetNames(description->memid, found.data(), count, &named));
        for (const BSTR name : found) names.push_back(Text(_bstr_t(name, false)));
    }

    /// The number of parameters that a caller gives: all but the result, if the last one is that.
    int Given() const {
        const int count = description->cParams;
        if (count == 0) return 0;
        const USHORT flags = description->lprgelemdescParam[count - 1].paramdesc.wParamFlags;
        return (flags & PARAMFLAG_FRETVAL) != 0 ? count - 1 : count;
    }

    /// The type of the result.
    const TYPEDESC& Result() const {
        if (Given() == description->cParams) return description->elemdescFunc.tdesc;
        const TYPEDESC& last = description->lprgelemdescParam[description->cParams - 1].tdesc;
        return last.vt == VT_PTR ? *last.lptdesc : last;
    }

    const std::string& Name() const { return documentation.name; }

    ole::LentFunction description;
    Documentation documentation;
    std::vector<std::string> names;
    int position;
};

void Importer::Import(ITypeLib& library, const std::string& file) {
    const store::ObjectRef node = LibraryOf(library);
    const auto referenced = node->meta->properties.Find("Referenced");
    if (store_.GetValue(*node, *referenced) != store::Value(true)) {
        throw store::Error(store::Number::keyInUse,
                           "The type library \"" + node->name + "\" is in the repository already");
    }
    model_.Set(node, "Referenced", false);
    model_.Set(node, "File", file);
    const UINT count = library.GetTypeInfoCount();
    std::vector<std::pair<ole::Ref<ITypeInfo>, store::ObjectRef>> types;
    for (UINT i = 0; i < count; ++i) {
        ole::Ref<ITypeInfo> info;
        if (FAILED(library.GetTypeInfo(i, info.GetAddressOf()))) {
            messages_.push_back(node->name + ": type " + std::to_string(i + 1) + " cannot be read");
            continue;
        }
        const store::ObjectRef type = TypeOf(*info.Get());
        if (!type) continue;
        if (!used_.insert(type->identifier).second) {
            messages_.push_back(node->name + ": a second type " + type->name + " was left out");
            continue;
        }
        types.emplace_back(std::move(info), type);
    }
    for (const auto& [info, type] : types) ImportType(*info.Get());
}

store::ObjectRef Importer::LibraryOf(ITypeLib& library) {
    ole::LentLibraryAttributes attributes(library);
    ole::Check(library.GetLibAttr(attributes.Address()));
    const std::string version = VersionText(attributes->wMajorVerNum, attributes->wMinorVerNum);
    const std::string guid = GuidText(attributes->guid);
    std::string identifier = guid + " " + version;
    if (attributes->lcid != 0) identifier += " " + std::to_string(attributes->lcid);
    if (store::ObjectRef known = store_.Find(identifier)) return known;

    const Documentation documentation = DocumentationOf(library, MEMBERID_NIL);
    const store::ObjectRef node =
        MakeNode(kind::library, identifier, documentation.name, documentation.help);
    model_.Set(node, "Guid", guid);
    model_.Set(node, "Version", version);
    model_.Set(node, "Locale", Number(static_cast<long>(attributes->lcid)));
    if (const char* system = SystemOf(attributes->syskind)) {
        model_.Set(node, "System", std::string(system));
    }
    model_.Set(node, "HelpFile", Said(documentation.file));
    model_.Set(node, "HelpContext", Said(documentation.context));
    model_.Set(node, "Hidden", Flag(attributes->wLibFlags, LIBFLAG_FHIDDEN));
    model_.Set(node, "Restricted", Flag(attributes->wLibFlags, LIBFLAG_FRESTRICTED));
    model_.Set(node, "Control", Flag(attributes->wLibFlags, LIBFLAG_FCONTROL));
    model_.Set(node, "Referenced", true);
    return node;
}

store::ObjectRef Importer::TypeOf(ITypeInfo& info) {
    ole::LentTypeAttributes attributes(info);
    ole::Check(info.GetTypeAttr(attributes.Address()));
    const Documentation documentation = DocumentationOf(info, MEMBERID_NIL);
    const char* metaNode = MetaNodeOf(attributes->typekind);
    ole::Ref<ITypeLib> owner;
    UINT index = 0;
    if (metaNode == nullptr || FAILED(info.GetContainingTypeLib(owner.GetAddressOf(), &index))) {
        messages_.push_back(documentation.name + ": a type of an unknown kind or without library");
        return nullptr;
    }
    const store::ObjectRef library = LibraryOf(*owner.Get());
    const std::string identifier = library->identifier + "/" + documentation.name;
    if (store::ObjectRef known = store_.Find(identifier)) return known;

    const store::ObjectRef node =
        MakeNode(metaNode, identifier, documentation.name, documentation.help);
    model_.Set(node, "HelpContext", Said(documentation.context));
    SetTypeProperties(node, info, *attributes);
    Link(library, "contains", node);
    return node;
}

void Importer::SetTypeProperties(const store::ObjectRef& node, ITypeInfo& info,
                                 const TYPEATTR& attributes) {
    const bool isDual = (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0;
    const unsigned flags = attributes.wTypeFlags | TableFlags(info, attributes);
    model_.Set(node, "Guid", Said(GuidText(attributes.guid)));
    const auto set = [&](const char* property, unsigned flag) {
        model_.Set(node, property, Flag(flags, flag));
    };
    const auto setVersion = [&] {
        model_.Set(node, "Version", VersionText(attributes.wMajorVerNum, attributes.wMinorVerNum));
    };
    switch (attributes.typekind) {
        case TKIND_COCLASS:
            setVersion();
            set("Creatable", TYPEFLAG_FCANCREATE);
            set("Control", TYPEFLAG_FCONTROL);
            set("ApplicationObject", TYPEFLAG_FAPPOBJECT);
            set("Licensed", TYPEFLAG_FLICENSED);
            set("Hidden", TYPEFLAG_FHIDDEN);
            set("Restricted", TYPEFLAG_FRESTRICTED);
            break;
        case TKIND_INTERFACE:
        case TKIND_DISPATCH:
            setVersion();
            model_.Set(node, "Kind",
                       std::string(isDual                                  ? "Dual"
                                   : attributes.typekind == TKIND_DISPATCH ? "Dispatch"
                                                                           : "Interface"));
            set("Automation", TYPEFLAG_FOLEAUTOMATION);
            model_.Set(node, "Extensible", (flags & TYPEFLAG_FNONEXTENSIBLE) == 0);
            set("Hidden", TYPEFLAG_FHIDDEN);
            set("Restricted", TYPEFLAG_FRESTRICTED);
            break;
        case TKIND_ENUM:
            setVersion();
            set("Hidden", TYPEFLAG_FHIDDEN);
            break;
        case TKIND_RECORD:
        case TKIND_UNION:
            model_.Set(node, "Kind",
                       std::string(attributes.typekind == TKIND_UNION ? "Union" : "Structure"));
            model_.Set(node, "Size", Number(static_cast<long>(attributes.cbSizeInstance)));
            break;
        case TKIND_ALIAS:
            model_.Set(node, "Type", TextOfType(info, attributes.tdescAlias));
            set("Hidden", TYPEFLAG_FHIDDEN);
            break;
        case TKIND_MODULE:
            set("Hidden", TYPEFLAG_FHIDDEN);
            break;
        default:
            break;
    }
}

void Importer::ImportType(ITypeInfo& info) {
    ole::LentTypeAttributes attributes(info);
    ole::Check(info.GetTypeAttr(attributes.Address()));
    const store::ObjectRef node = TypeOf(info);
    switch (attributes->typekind) {
        case TKIND_COCLASS:
            ImportClass(node, info, *attributes);
            break;
        case TKIND_INTERFACE:
        case TKIND_DISPATCH:
            ImportInterface(node, info, *attributes);
            break;
        case TKIND_ALIAS:
            LinkToType(node, "stands for", info, attributes->tdescAlias);
            break;
        case TKIND_MODULE: {
            ImportFunctions(node, info, *attributes);
            ImportVariables(node, info, *attributes);
            break;
        }
        default:
            ImportVariables(node, info, *attributes);
            break;
    }
}

void Importer::ImportClass(const store::ObjectRef& node, ITypeInfo& info,
                           const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        int flags = 0;
        ole::Ref<ITypeInfo> implemented;
        if (FAILED(info.GetRefTypeOfImplType(i, &reference)) ||
            FAILED(info.GetImplTypeFlags(i, &flags)) ||
            FAILED(info.GetRefTypeInfo(reference, implemented.GetAddressOf()))) {
            messages_.push_back(node->name + ": interface " + std::to_string(i + 1) +
                                " was not found");
            continue;
        }
        const store::ObjectRef target = TypeOf(*implemented.Get());
        if (!target) continue;
        const bool isSource = (flags & IMPLTYPEFLAG_FSOURCE) != 0;
        const store::ObjectRef link = Link(node, isSource ? "raises" : "implements", target);
        store_.SetValue(link, *link->meta->properties.Find("Default"),
                        (flags & IMPLTYPEFLAG_FDEFAULT) != 0);
    }
}

void Importer::ImportInterface(const store::ObjectRef& node, ITypeInfo& info,
                               const TYPEATTR& attributes) {
    // The dispatch half of a dual interface repeats the members that it inherits; the half behind
    // it has only its own.
    if (const ole::Ref<ITypeInfo> table = TableOf(info, attributes)) {
        ole::LentTypeAttributes tableAttributes(*table.Get());
        ole::Check(table->GetTypeAttr(tableAttributes.Address()));
        ImportBases(node, *table.Get(), *tableAttributes);
        ImportFunctions(node, *table.Get(), *tableAttributes);
        return;
    }
    ImportBases(node, info, attributes);
    ImportFunctions(node, info, attributes);
    ImportVariables(node, info, attributes);
}

void Importer::ImportBases(const store::ObjectRef& node, ITypeInfo& info,
                           const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        ole::Ref<ITypeInfo> base;
        if (FAILED(info.GetRefTypeOfImplType(i, &reference)) ||
            FAILED(info.GetRefTypeInfo(reference, base.GetAddressOf()))) {
            messages_.push_back(node->name + ": the inherited interface was not found");
            continue;
        }
        if (const store::ObjectRef target = TypeOf(*base.Get())) Link(node, "inherits", target);
    }
}

void Importer::ImportFunctions(const store::ObjectRef& node, ITypeInfo& info,
                               const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
        const Function function(info, i);
        if (function.description->invkind == INVOKE_FUNC) {
            ImportMethod(node, info, function);
        } else {
            ImportProperty(node, info, function);
        }
    }
}

void Importer::ImportMethod(const store::ObjectRef& node, ITypeInfo& info,
                            const Function& function) {
    const FUNCDESC& description = *function.description;
    const store::ObjectRef method =
        MakeNode(kind::method, Unique(node->identifier + "." + function.Name()), function.Name(),
                 function.documentation.help);
    model_.Set(method, "MemberId", Number(description.memid));
    model_.Set(method, "ReturnType", TextOfType(info, function.Result()));
    model_.Set(method, "Position", Position(function.position));
    if (description.funckind == FUNC_VIRTUAL || description.funckind == FUNC_PUREVIRTUAL) {
        model_.Set(method, "TableOffset", Number(description.oVft));
    }
    model_.Set(method, "Hidden", Flag(description.wFuncFlags, FUNCFLAG_FHIDDEN));
    model_.Set(method, "Restricted", Flag(description.wFuncFlags, FUNCFLAG_FRESTRICTED));
    model_.Set(method, "HelpContext", Said(function.documentation.context));
    Link(node, "has", method);
    LinkToType(method, "returns", info, function.Result());
    ImportParameters(method, info, function, function.Given());
}

void Importer::ImportProperty(const store::ObjectRef& node, ITypeInfo& info,
                              const Function& function) {
    const FUNCDESC& description = *function.description;
    const bool reads = description.invkind == INVOKE_PROPERTYGET;
    const int given = function.Given();
    const std::string identifier = node->identifier + "." + function.Name();
    store::ObjectRef property = store_.Find(identifier);
    const bool isNew = !property || property->meta->name != kind::property;
    if (isNew) {
        property = MakeNode(kind::property, Unique(identifier), function.Name(),
                            function.documentation.help);
        const TYPEDESC& type = reads || given == 0 ? function.Result()
                                                   : description.lprgelemdescParam[given - 1].tdesc;
        model_.Set(property, "MemberId", Number(description.memid));
        model_.Set(property, "Type", TextOfType(info, type));
        for (const char* access : {"Readable", "Writable", "WritableByReference"}) {
            model_.Set(property, access, false);
        }
        model_.Set(property, "Position", Position(function.position));
        if (description.funckind != FUNC_DISPATCH) {
            model_.Set(property, "TableOffset", Number(description.oVft));
        }
        model_.Set(property, "Hidden", Flag(description.wFuncFlags, FUNCFLAG_FHIDDEN));
        model_.Set(property, "Restricted", Flag(description.wFuncFlags, FUNCFLAG_FRESTRICTED));
        model_.Set(property, "Bindable", Flag(description.wFuncFlags, FUNCFLAG_FBINDABLE));
        model_.Set(property, "HelpContext", Said(function.documentation.context));
        Link(node, "has", property);
        LinkToType(property, "is of type", info, type);
        ImportParameters(property, info, function, reads || given == 0 ? given : given - 1);
    }
    model_.Set(property,
               reads                                          ? "Readable"
               : description.invkind == INVOKE_PROPERTYPUTREF ? "WritableByReference"
                                                              : "Writable",
               true);
}

void Importer::ImportParameters(const store::ObjectRef& member, ITypeInfo& info,
                                const Function& function, int count) {
    for (int i = 0; i < count; ++i) {
        const ELEMDESC& element = function.description->lprgelemdescParam[i];
        const USHORT flags = element.paramdesc.wParamFlags;
        std::string name = function.names[static_cast<std::size_t>(i) + 1];
        if (name.empty()) name = "#" + std::to_string(i + 1);
        const store::ObjectRef parameter =
            MakeNode(kind::parameter, Unique(member->identifier + "(" + name + ")"), name, "");
        const bool out = (flags & PARAMFLAG_FOUT) != 0;
        const bool in = (flags & PARAMFLAG_FIN) != 0 || !out;
        model_.Set(parameter, "Type", TextOfType(info, element.tdesc));
        model_.Set(parameter, "Direction", std::string(in && out ? "InOut" : out ? "Out" : "In"));
        model_.Set(parameter, "Optional", Flag(flags, PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT));
        if ((flags & PARAMFLAG_FHASDEFAULT) != 0 && element.paramdesc.pparamdescex != nullptr) {
            model_.Set(parameter, "DefaultValue",
                       Constant(&element.paramdesc.pparamdescex->varDefaultValue));
        }
        model_.Set(parameter, "Position", Position(i));
        Link(member, "has", parameter);
        LinkToType(parameter, "is of type", info, element.tdesc);
    }
}

void Importer::ImportVariables(const store::ObjectRef& node, ITypeInfo& info,
                               const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cVars; ++i) {
        LentVariable variable(info);
        ole::Check(info.GetVarDesc(i, variable.Address()));
        const Documentation documentation = DocumentationOf(info, variable->memid);
        const TYPEDESC& type = variable->elemdescVar.tdesc;
        const char* metaNode = variable->varkind == VAR_CONST         ? kind::constant
                               : variable->varkind == VAR_PERINSTANCE ? kind::field
                               : variable->varkind == VAR_DISPATCH    ? kind::property
                                                                      : nullptr;
        if (metaNode == nullptr) {
            messages_.push_back(node->name + "." + documentation.name + ": a static variable");
            continue;
        }
        const store::ObjectRef member =
            MakeNode(metaNode, Unique(node->identifier + "." + documentation.name),
                     documentation.name, documentation.help);
        model_.Set(member, "Type", TextOfType(info, type));
        model_.Set(member, "Position", Position(static_cast<int>(i)));
        if (variable->varkind == VAR_PERINSTANCE) {
            model_.Set(member, "Offset", Number(static_cast<long>(variable->oInst)));
        } else {
            model_.Set(member, "HelpContext", Said(documentation.context));
            model_.Set(member, "Hidden", Flag(variable->wVarFlags, VARFLAG_FHIDDEN));
        }
        if (variable->varkind == VAR_CONST) {
            model_.Set(member, "Value", Constant(variable->lpvarValue));
        } else if (variable->varkind == VAR_DISPATCH) {
            const bool readOnly = (variable->wVarFlags & VARFLAG_FREADONLY) != 0;
            model_.Set(member, "MemberId", Number(variable->memid));
            model_.Set(member, "Readable", true);
            model_.Set(member, "Writable", !readOnly);
            model_.Set(member, "WritableByReference", false);
            model_.Set(member, "Restricted", Flag(variable->wVarFlags, VARFLAG_FRESTRICTED));
            model_.Set(member, "Bindable", Flag(variable->wVarFlags, VARFLAG_FBINDABLE));
        }
        Link(node, "has", member);
        LinkToType(member, "is of type", info, type);
    }
}

store::ObjectRef Importer::MakeNode(const char* metaNode, const std::string& identifier,
                                    const std::string& name, const std::string& description) {
    const store::ObjectRef node = store_.MakeNode(model_.MetaNode(metaNode), identifier, name);
    if (!description.empty()) store_.Describe(node, description);
    return node;
}

store::ObjectRef Importer::Link(const store::ObjectRef& source, const std::string& verb,
                                const store::ObjectRef& target) {
    const auto sourceMeta = std::dynamic_pointer_cast<store::MetaNode>(source->meta);
    const auto targetMeta = std::dynamic_pointer_cast<store::MetaNode>(target->meta);
    return store_.MakeLink(model_.MetaLink(sourceMeta, verb, targetMeta), source, target,
                           Unique(source->identifier + " " + verb + " " + target->identifier),
                           target->name);
}

void Importer::LinkToType(const store::ObjectRef& node, const std::string& verb, ITypeInfo& info,
                          const TYPEDESC& type) {
    bool isMissing = false;
    const ole::Ref<ITypeInfo> referred = ReferredType(info, type, isMissing);
    if (isMissing) {
        messages_.push_back(node->identifier + ": the library of its type was not found");
    }
    if (!referred) return;
    if (const store::ObjectRef target = TypeOf(*referred.Get())) Link(node, verb, target);
}

std::string Importer::Unique(const std::string& identifier) {
    std::string unique = identifier;
    for (int i = 2; !used_.insert(unique).second; ++i) {
        unique = identifier + "#" + std::to_string(i);
    }
    return unique;
}

}  // namespace repository::type_library
