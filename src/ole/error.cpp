#include "ole/error.h"

#include <oleauto.h>

#include <new>
#include <string>

namespace ole {

namespace {

struct Text {
    Number number;
    const wchar_t* description;
};

constexpr Text texts[] = {
    {Number::invalidCall, L"Invalid procedure call or argument"},
    {Number::overflow, L"Overflow"},
    {Number::subscriptOutOfRange, L"Subscript out of range"},
    {Number::typeMismatch, L"Type mismatch"},
    {Number::fileNotFound, L"File not found"},
    {Number::permissionDenied, L"Permission denied"},
    {Number::pathFileAccess, L"Path/File access error"},
    {Number::pathNotFound, L"Path not found"},
    {Number::objectNotSet, L"Object variable not set"},
    {Number::invalidUseOfNull, L"Invalid use of Null"},
    {Number::invalidPropertyValue, L"Invalid property value"},
    {Number::objectRequired, L"Object required"},
    {Number::noSuchMember, L"Object doesn't support this property or method"},
    {Number::noNamedArguments, L"Object doesn't support named arguments"},
    {Number::namedArgumentNotFound, L"Named argument not found"},
    {Number::argumentNotOptional, L"Argument not optional"},
    {Number::wrongArgumentCount, L"Wrong number of arguments or invalid property assignment"},
    {Number::keyInUse, L"This key is already associated with an element of this collection"},
    {Number::invalidPicture, L"Invalid picture"},
    {Number::indexOutOfBounds, L"Index out of bounds"},
    {Number::elementNotFound, L"Element not found"},
    {Number::keyNotUnique, L"Key is not unique in collection"},
};

const wchar_t* TextOf(HRESULT result) {
    for (const Text& text : texts) {
        if (ToHresult(text.number) == result) return text.description;
    }
    return nullptr;
}

struct Translation {
    HRESULT result;
    Number number;
};

// What the platform answers when a call did not take place, or a value could not be converted.
constexpr Translation translations[] = {
    {DISP_E_UNKNOWNNAME, Number::noSuchMember},
    {DISP_E_MEMBERNOTFOUND, Number::noSuchMember},
    {DISP_E_TYPEMISMATCH, Number::typeMismatch},
    {DISP_E_BADVARTYPE, Number::typeMismatch},
    {DISP_E_OVERFLOW, Number::overflow},
    {DISP_E_BADINDEX, Number::subscriptOutOfRange},
    {DISP_E_NONAMEDARGS, Number::noNamedArguments},
    {DISP_E_PARAMNOTFOUND, Number::namedArgumentNotFound},
    {DISP_E_PARAMNOTOPTIONAL, Number::argumentNotOptional},
    {DISP_E_BADPARAMCOUNT, Number::wrongArgumentCount},
};

HRESULT Translate(HRESULT result) {
    for (const Translation& translation : translations) {
        if (translation.result == result) return ToHresult(translation.number);
    }
    return result;
}

Ref<IErrorInfo> MakeErrorInfo(const wchar_t* description, const wchar_t* source,
                              const wchar_t* helpFile, DWORD helpContext, REFIID interfaceId) {
    Ref<ICreateErrorInfo> made;
    if (FAILED(CreateErrorInfo(made.GetAddressOf()))) return {};
    made->SetGUID(interfaceId);
    if (description != nullptr) made->SetDescription(const_cast<wchar_t*>(description));
    if (source != nullptr) made->SetSource(const_cast<wchar_t*>(source));
    if (helpFile != nullptr) made->SetHelpFile(const_cast<wchar_t*>(helpFile));
    made->SetHelpContext(helpContext);
    return Query<IErrorInfo>(made.Get());
}

/// A callee's own error, which has an error information, keeps its number whatever it is.
HRESULT NumberOf(HRESULT result, IErrorInfo* info) {
    return info == nullptr ? Translate(result) : result;
}

[[noreturn]] void Raise(HRESULT result, const Ref<IErrorInfo>& info) {
    throw _com_error(NumberOf(result, info.Get()), info.Get(), true);
}

std::wstring SystemText(HRESULT result) {
    if (const wchar_t* known = TextOf(result)) return known;
    return _com_error(result).ErrorMessage();
}

HRESULT Report(HRESULT result, IErrorInfo* info, std::wstring_view ourSource, REFIID interfaceId) {
    result = NumberOf(result, info);
    _bstr_t description;
    _bstr_t source;
    _bstr_t helpFile;
    DWORD helpContext = 0;
    if (info != nullptr) {
        info->GetDescription(description.GetAddress());
        info->GetSource(source.GetAddress());
        info->GetHelpFile(helpFile.GetAddress());
        info->GetHelpContext(&helpContext);
    }
    const std::wstring text =
        description.length() != 0 ? std::wstring(description) : SystemText(result);
    const std::wstring from = source.length() != 0 ? std::wstring(source) : std::wstring(ourSource);
    SetErrorInfo(
        0, MakeErrorInfo(text.c_str(), from.c_str(), helpFile, helpContext, interfaceId).Get());
    return result;
}

}  // namespace

void Throw(Number number) {
    Throw(ToHresult(number), TextOf(ToHresult(number)));
}

void Throw(HRESULT result, const wchar_t* description, const wchar_t* source) {
    Raise(result, MakeErrorInfo(description, source, nullptr, 0, GUID_NULL));
}

void Check(HRESULT result) {
    if (FAILED(result)) Raise(result, {});
}

void Check(HRESULT result, IUnknown& callee, REFIID interfaceId) {
    if (SUCCEEDED(result)) return;
    Ref<IErrorInfo> info;
    const auto rich = Query<ISupportErrorInfo>(&callee);
    if (rich && rich->InterfaceSupportsErrorInfo(interfaceId) == S_OK) {
        GetErrorInfo(0, info.GetAddressOf());
    }
    Raise(result, info);
}

void ThrowLateBound(HRESULT result, EXCEPINFO& exception) {
    if (result != DISP_E_EXCEPTION) Raise(result, {});
    if (exception.pfnDeferredFillIn != nullptr) {
        const auto fillIn = exception.pfnDeferredFillIn;
        exception.pfnDeferredFillIn = nullptr;
        fillIn(&exception);
    }
    HRESULT number = exception.scode;
    if (number == 0 && exception.wCode != 0) {
        number = static_cast<HRESULT>(0x800A0000u + exception.wCode);
    }
    if (SUCCEEDED(number)) number = DISP_E_EXCEPTION;
    Raise(number, MakeErrorInfo(exception.bstrDescription, exception.bstrSource,
                                exception.bstrHelpFile, exception.dwHelpContext, GUID_NULL));
}

HRESULT ReportCurrentException(std::wstring_view source, REFIID interfaceId) noexcept {
    try {
        try {
            throw;
        } catch (const _com_error& error) {
            return Report(error.Error(), Adopt(error.ErrorInfo()).Get(), source, interfaceId);
        } catch (const std::bad_alloc&) {
            return Report(E_OUTOFMEMORY, nullptr, source, interfaceId);
        } catch (...) {
            return Report(E_UNEXPECTED, nullptr, source, interfaceId);
        }
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

void TakeErrorInfo(HRESULT result, EXCEPINFO& exception) noexcept {
    exception = {};
    exception.scode = result;
    Ref<IErrorInfo> info;
    if (GetErrorInfo(0, info.GetAddressOf()) == S_OK && info) {
        info->GetDescription(&exception.bstrDescription);
        info->GetSource(&exception.bstrSource);
        info->GetHelpFile(&exception.bstrHelpFile);
        info->GetHelpContext(&exception.dwHelpContext);
    }
}

void NoteErrorWithoutCaller() noexcept {
    OutputDebugStringW(L"An error that has no caller ends here.\n");
}

ExceptionInfo::~ExceptionInfo() {
    SysFreeString(bstrDescription);
    SysFreeString(bstrSource);
    SysFreeString(bstrHelpFile);
}

}  // namespace ole
