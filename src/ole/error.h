#pragma once

#include <comdef.h>
#include <oaidl.h>

#include <exception>
#include <string_view>

#include "ole/ref.h"

namespace ole {

/// The automation errors that hosts test for. A host sees 0x800A0000 + number.
enum class Number : unsigned short {
    invalidCall = 5,
    overflow = 6,
    subscriptOutOfRange = 9,
    typeMismatch = 13,
    fileNotFound = 53,
    permissionDenied = 70,
    pathFileAccess = 75,
    pathNotFound = 76,
    objectNotSet = 91,
    invalidUseOfNull = 94,
    invalidPropertyValue = 380,
    objectRequired = 424,
    noSuchMember = 438,
    noNamedArguments = 446,
    namedArgumentNotFound = 448,
    argumentNotOptional = 449,
    wrongArgumentCount = 450,
    keyInUse = 457,
    invalidPicture = 481,
    indexOutOfBounds = 35600,
    elementNotFound = 35601,
    keyNotUnique = 35602,
};

constexpr HRESULT ToHresult(Number number) {
    return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned>(number));
}

/// The exception that carries an automation error inside: the platform's `_com_error`, with an
/// error information that holds the description and, where it is not our own, the source.
[[noreturn]] void Throw(Number number);
[[noreturn]] void Throw(HRESULT result, const wchar_t* description,
                        const wchar_t* source = nullptr);

/// Throws for a failed result of a system function.
void Check(HRESULT result);

/// Throws for a failed direct call of an object's interface, with the rich error that the object
/// left where it says that the interface has them.
void Check(HRESULT result, IUnknown& callee, REFIID interfaceId);

/// What a failed late-bound call becomes: the callee's own error with number, description and
/// source (deferred fill-in done), or the automation number for what kept the call from taking
/// place.
[[noreturn]] void ThrowLateBound(HRESULT result, EXCEPINFO& exception);

/// Inside a catch clause: leaves the present exception as the thread's rich error and returns its
/// result. An error that names no source gets `source`, one that has no text the system's.
HRESULT ReportCurrentException(std::wstring_view source, REFIID interfaceId) noexcept;

/// Moves the thread's rich error, or what is known of `result` when there is none, into
/// `exception`.
void TakeErrorInfo(HRESULT result, EXCEPINFO& exception) noexcept;

/// Runs `work`; an exception becomes a rich error and its result.
template <class Work>
HRESULT Guard(std::wstring_view source, REFIID interfaceId, Work&& work) noexcept {
    try {
        work();
        return S_OK;
    } catch (...) {
        return ReportCurrentException(source, interfaceId);
    }
}

/// Inside a catch clause: tells a debugger of an error that has no caller, where it ends.
void NoteErrorWithoutCaller() noexcept;

/// Owns the strings of an EXCEPINFO.
class ExceptionInfo : public EXCEPINFO {
public:
    ExceptionInfo() : EXCEPINFO{} {}
    ~ExceptionInfo();
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
};

}  // namespace ole
