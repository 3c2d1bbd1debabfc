#include "repository/import/type_text.h"

#include "ole/lent.h"
#include "repository/com/text.h"

namespace repository::type_library {

namespace {

const char* WordOf(VARTYPE type) {
    switch (type) {
        case VT_EMPTY:
        case VT_VOID:
            return "void";
        case VT_I1:
            return "char";
        case VT_UI1:
            return "unsigned char";
        case VT_I2:
            return "short";
        case VT_UI2:
            return "unsigned short";
        case VT_I4:
            return "long";
        case VT_UI4:
            return "unsigned long";
        case VT_I8:
            return "hyper";
        case VT_UI8:
            return "unsigned hyper";
        case VT_INT:
            return "int";
        case VT_UINT:
            return "unsigned int";
        case VT_R4:
            return "float";
        case VT_R8:
            return "double";
        case VT_CY:
            return "CURRENCY";
        case VT_DATE:
            return "DATE";
        case VT_BSTR:
            return "BSTR";
        case VT_DISPATCH:
            return "IDispatch*";
        case VT_UNKNOWN:
            return "IUnknown*";
        case VT_ERROR:
            return "SCODE";
        case VT_HRESULT:
            return "HRESULT";
        case VT_BOOL:
            return "VARIANT_BOOL";
        case VT_VARIANT:
            return "VARIANT";
        case VT_DECIMAL:
            return "DECIMAL";
        case VT_LPSTR:
            return "LPSTR";
        case VT_LPWSTR:
            return "LPWSTR";
        case VT_INT_PTR:
            return "INT_PTR";
        case VT_UINT_PTR:
            return "UINT_PTR";
        default:
            return "?";
    }
}

std::string NameOf(ITypeInfo& info) {
    _bstr_t name;
    if (FAILED(info.GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr))) {
        return "?";
    }
    return com::Narrow({static_cast<const wchar_t*>(name), name.length()});
}

}  // namespace

std::string TextOfType(ITypeInfo& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_PTR:
            return TextOfType(info, *type.lptdesc) + "*";
        case VT_SAFEARRAY:
            return "SAFEARRAY(" + TextOfType(info, *type.lptdesc) + ")";
        case VT_CARRAY: {
            std::string text = TextOfType(info, type.lpadesc->tdescElem);
            for (USHORT i = 0; i < type.lpadesc->cDims; ++i) {
                text += "[" + std::to_string(type.lpadesc->rgbounds[i].cElements) + "]";
            }
            return text;
        }
        case VT_USERDEFINED: {
            bool isMissing = false;
            const auto referred = ReferredType(info, type, isMissing);
            return referred ? NameOf(*referred.Get()) : "?";
        }
        default:
            return WordOf(type.vt);
    }
}

ole::Ref<ITypeInfo> ReferredType(ITypeInfo& info, const TYPEDESC& type, bool& isMissing) {
    switch (type.vt) {
        case VT_PTR:
        case VT_SAFEARRAY:
            return ReferredType(info, *type.lptdesc, isMissing);
        case VT_CARRAY:
            return ReferredType(info, type.lpadesc->tdescElem, isMissing);
        case VT_USERDEFINED: {
            ole::Ref<ITypeInfo> referred;
            isMissing = FAILED(info.GetRefTypeInfo(type.hreftype, referred.GetAddressOf()));
            return referred;
        }
        default:
            return nullptr;
    }
}

}  // namespace repository::type_library
