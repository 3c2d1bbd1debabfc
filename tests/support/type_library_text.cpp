#include "support/type_library_text.h"

#include "support/text.h"
#include "support/value.h"

#include <array>
#include <utility>
#include <vector>

namespace support {

namespace {

/// Owns one of the structures that a type description lends.
template <class T, class Release>
class Lent {
public:
    Lent(T* data, Release release) : data_(data), release_(release) {}
    ~Lent() {
        if (data_ != nullptr) release_(data_);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    const T* operator->() const { return data_; }
    const T& operator*() const { return *data_; }

private:
    T* data_;
    Release release_;
};

auto Attributes(ITypeInfo& info) {
    TYPEATTR* data = nullptr;
    info.GetTypeAttr(&data);
    return Lent(data, [&info](TYPEATTR* lent) { info.ReleaseTypeAttr(lent); });
}

auto Function(ITypeInfo& info, UINT index) {
    FUNCDESC* data = nullptr;
    info.GetFuncDesc(index, &data);
    return Lent(data, [&info](FUNCDESC* lent) { info.ReleaseFuncDesc(lent); });
}

auto Variable(ITypeInfo& info, UINT index) {
    VARDESC* data = nullptr;
    info.GetVarDesc(index, &data);
    return Lent(data, [&info](VARDESC* lent) { info.ReleaseVarDesc(lent); });
}

std::string GuidText(const GUID& guid) {
    std::array<wchar_t, 64> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return Utf8(std::wstring_view(text.data()));
}

struct Documentation {
    std::string name;
    std::string help;
    DWORD context = 0;
};

template <class Source>
Documentation DocumentationOf(Source& source, MEMBERID member) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    Documentation documentation;
    source.GetDocumentation(member, &name, &help, &documentation.context, nullptr);
    documentation.name = Utf8(name);
    documentation.help = Utf8(help);
    SysFreeString(name);
    SysFreeString(help);
    return documentation;
}

/// The names of the flags that are set, each after a blank; what has no name as a number.
template <class Names>
std::string FlagText(unsigned flags, const Names& names) {
    std::string text;
    for (const auto& [flag, name] : names) {
        if ((flags & static_cast<unsigned>(flag)) == 0) continue;
        text += ' ';
        text += name;
        flags &= ~static_cast<unsigned>(flag);
    }
    return flags == 0 ? text : text + " flags " + std::to_string(flags);
}

constexpr std::array typeFlags = {
    std::pair{TYPEFLAG_FAPPOBJECT, "appobject"},
    std::pair{TYPEFLAG_FCANCREATE, "creatable"},
    std::pair{TYPEFLAG_FLICENSED, "licensed"},
    std::pair{TYPEFLAG_FPREDECLID, "predeclid"},
    std::pair{TYPEFLAG_FHIDDEN, "hidden"},
    std::pair{TYPEFLAG_FCONTROL, "control"},
    std::pair{TYPEFLAG_FDUAL, "dual"},
    std::pair{TYPEFLAG_FNONEXTENSIBLE, "nonextensible"},
    std::pair{TYPEFLAG_FOLEAUTOMATION, "oleautomation"},
    std::pair{TYPEFLAG_FRESTRICTED, "restricted"},
    std::pair{TYPEFLAG_FDISPATCHABLE, "dispatchable"},
};
constexpr std::array functionFlags = {
    std::pair{FUNCFLAG_FRESTRICTED, "restricted"},
    std::pair{FUNCFLAG_FSOURCE, "source"},
    std::pair{FUNCFLAG_FBINDABLE, "bindable"},
    std::pair{FUNCFLAG_FREQUESTEDIT, "requestedit"},
    std::pair{FUNCFLAG_FDISPLAYBIND, "displaybind"},
    std::pair{FUNCFLAG_FDEFAULTBIND, "defaultbind"},
    std::pair{FUNCFLAG_FHIDDEN, "hidden"},
    std::pair{FUNCFLAG_FNONBROWSABLE, "nonbrowsable"},
};
constexpr std::array parameterFlags = {
    std::pair{PARAMFLAG_FIN, "in"},
    std::pair{PARAMFLAG_FOUT, "out"},
    std::pair{PARAMFLAG_FRETVAL, "retval"},
    std::pair{PARAMFLAG_FOPT, "optional"},
};
constexpr std::array implementationFlags = {
    std::pair{IMPLTYPEFLAG_FDEFAULT, "default"},
    std::pair{IMPLTYPEFLAG_FSOURCE, "source"},
    std::pair{IMPLTYPEFLAG_FRESTRICTED, "restricted"},
};

std::string TypeText(ITypeInfo& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_PTR:
            return TypeText(info, *type.lptdesc) + '*';
        case VT_SAFEARRAY:
            return "SAFEARRAY(" + TypeText(info, *type.lptdesc) + ')';
        case VT_USERDEFINED: {
            Ref<ITypeInfo> referred;
            if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.GetAddressOf())))
                return "unknown type";
            return DocumentationOf(*referred.Get(), MEMBERID_NIL).name;
        }
        default:
            return DescribeType(type.vt);
    }
}

std::string HelpText(const Documentation& documentation) {
    std::string text;
    if (!documentation.help.empty()) text += " \"" + documentation.help + '"';
    if (documentation.context != 0)
        text += " help context " + std::to_string(documentation.context);
    return text;
}

std::string ParameterText(ITypeInfo& info, const ELEMDESC& element, const std::string& name) {
    const PARAMDESC& parameter = element.paramdesc;
    const bool hasDefault = (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0;
    std::string flags = FlagText(
        parameter.wParamFlags & static_cast<unsigned>(~PARAMFLAG_FHASDEFAULT), parameterFlags);
    if (hasDefault) flags += " = " + DescribeExactly(parameter.pparamdescex->varDefaultValue);
    // What sets a property has no name.
    std::string text = flags.empty() ? "" : '[' + flags.substr(1) + "] ";
    if (!name.empty()) text += name + ' ';
    return text + "As " + TypeText(info, element.tdesc);
}

const char* KindText(INVOKEKIND kind) {
    switch (kind) {
        case INVOKE_PROPERTYGET:
            return "get";
        case INVOKE_PROPERTYPUT:
            return "put";
        case INVOKE_PROPERTYPUTREF:
            return "putref";
        default:
            return "method";
    }
}

std::string FunctionText(ITypeInfo& info, const FUNCDESC& function) {
    std::vector<BSTR> raw(static_cast<std::size_t>(function.cParams) + 1);
    UINT count = 0;
    info.GetNames(function.memid, raw.data(), static_cast<UINT>(raw.size()), &count);
    std::vector<std::string> names;
    for (const BSTR name : raw) {
        names.push_back(Utf8(name));
        SysFreeString(name);
    }
    const Documentation documentation = DocumentationOf(info, function.memid);
    std::string text = "  " + std::to_string(function.memid) + ' ' + KindText(function.invkind) +
                       ' ' + documentation.name + '(';
    for (SHORT index = 0; index < function.cParams; ++index) {
        const auto place = static_cast<std::size_t>(index);
        const std::string& name = names[place + 1];
        if (index > 0) text += ", ";
        text += ParameterText(info, function.lprgelemdescParam[index], name);
    }
    text += ") As " + TypeText(info, function.elemdescFunc.tdesc);
    text += FlagText(function.wFuncFlags, functionFlags);
    // The place in the vtable, in pointers, which is the same for both widths.
    if (function.funckind != FUNC_DISPATCH)
        text += " slot " + std::to_string(static_cast<unsigned>(function.oVft) / sizeof(void*));
    return text + HelpText(documentation);
}

std::string VariableText(ITypeInfo& info, const VARDESC& variable) {
    const Documentation documentation = DocumentationOf(info, variable.memid);
    std::string text = "  " + documentation.name;
    if (variable.varkind == VAR_CONST)
        text += " = " + Describe(*variable.lpvarValue);
    else
        text += " id " + std::to_string(variable.memid) + " As " +
                TypeText(info, variable.elemdescVar.tdesc);
    return text + HelpText(documentation);
}

const char* KindText(TYPEKIND kind) {
    constexpr std::array names = {"enum",          "record",  "module", "interface",
                                  "dispinterface", "coclass", "alias",  "union"};
    return names.at(static_cast<std::size_t>(kind));
}

/// The interfaces that a class offers, or the one that an interface extends.
std::string ImplementedText(ITypeInfo& info, UINT index, bool isClass) {
    HREFTYPE reference = 0;
    Ref<ITypeInfo> implemented;
    if (FAILED(info.GetRefTypeOfImplType(index, &reference)) ||
        FAILED(info.GetRefTypeInfo(reference, implemented.GetAddressOf())))
        return "  unknown interface\n";
    int flags = 0;
    info.GetImplTypeFlags(index, &flags);
    return std::string(isClass ? "  offers " : "  extends ") +
           DocumentationOf(*implemented.Get(), MEMBERID_NIL).name +
           FlagText(static_cast<unsigned>(flags), implementationFlags) + '\n';
}

std::string DescribeType(ITypeInfo& info) {
    const auto attributes = Attributes(info);
    const Documentation documentation = DocumentationOf(info, MEMBERID_NIL);
    std::string text = KindText(attributes->typekind);
    text += ' ' + documentation.name + ' ' + GuidText(attributes->guid);
    text += FlagText(attributes->wTypeFlags, typeFlags) + HelpText(documentation) + '\n';
    if (attributes->typekind == TKIND_ALIAS)
        text += "  As " + TypeText(info, attributes->tdescAlias) + '\n';
    for (UINT index = 0; index < attributes->cImplTypes; ++index)
        text += ImplementedText(info, index, attributes->typekind == TKIND_COCLASS);
    for (UINT index = 0; index < attributes->cVars; ++index)
        text += VariableText(info, *Variable(info, index)) + '\n';
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const auto function = Function(info, index);
        // What every dispatch interface inherits says nothing.
        constexpr unsigned plumbing = 0x60000000;
        if ((static_cast<unsigned>(function->memid) & plumbing) == plumbing && function->memid > 0)
            continue;
        text += FunctionText(info, *function) + '\n';
    }
    return text;
}

}  // namespace

std::string DescribeTypeLibrary(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    library.GetLibAttr(&attributes);
    const Documentation documentation = DocumentationOf(library, MEMBERID_NIL);
    std::string text = "library " + documentation.name + ' ' + GuidText(attributes->guid) + ' ' +
                       std::to_string(attributes->wMajorVerNum) + '.' +
                       std::to_string(attributes->wMinorVerNum) + " locale " +
                       std::to_string(attributes->lcid) + HelpText(documentation) + '\n';
    library.ReleaseTLibAttr(attributes);
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        Ref<ITypeInfo> info;
        if (FAILED(library.GetTypeInfo(index, info.GetAddressOf()))) continue;
        text += '\n' + DescribeType(*info.Get());
        // A dual interface has another face, with the slots that compiled hosts call.
        const bool dual = (Attributes(*info.Get())->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        HREFTYPE reference = 0;
        Ref<ITypeInfo> partner;
        if (dual && SUCCEEDED(info->GetRefTypeOfImplType(UINT(-1), &reference)) &&
            SUCCEEDED(info->GetRefTypeInfo(reference, partner.GetAddressOf())))
            text += '\n' + DescribeType(*partner.Get());
    }
    return text;
}

}  // namespace support
