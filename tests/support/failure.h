#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace support {

/// One way for a late-bound call to fail. A member's body may also throw it.
struct Failure {
    HRESULT result = E_FAIL;  ///< what the call returns
    bool inNames = false;     ///< GetIDsOfNames fails, not Invoke
    UINT badArgument = 0;     ///< index as IDispatch counts it, for type mismatches

    // The rest is for DISP_E_EXCEPTION.
    HRESULT number = 0;
    WORD code = 0;  ///< for an error that has a 16-bit code instead of a number
    std::string description;
    std::string source;
    bool deferred = false;          ///< filled in only when the caller asks for it
    HRESULT deferredResult = S_OK;  ///< what the deferred fill-in returns
    bool leavesErrorInfo = false;   ///< sets the thread's error object as well
    bool fillsInOnSuccess = false;  ///< hostile: EXCEPINFO filled although the call succeeds

    /// The member's name is not known.
    static Failure UnknownName() { return Names(DISP_E_UNKNOWNNAME); }
    static Failure Names(HRESULT result);
    /// The call returns `result` and says nothing else.
    static Failure Result(HRESULT result, UINT badArgument = 0);
    /// The rich error that a script sees as Err.Number, Err.Description, Err.Source.
    static Failure Exception(HRESULT number, std::string description = "it failed",
                             std::string source = "FakeRepository");
    static Failure Code(WORD code, std::string description = "it failed",
                        std::string source = "FakeRepository");
    /// As `Exception`, filled in when the caller asks.
    static Failure Deferred(HRESULT number, std::string description = "it failed",
                            std::string source = "FakeRepository");
};

/// How often a deferred fill-in was asked for since the last call of this function.
int TakeDeferredFillIns();

/// Fills the caller's EXCEPINFO, which may be null, and returns the failure's result.
HRESULT Raise(const Failure& failure, EXCEPINFO* exception, UINT* badArgument);

}  // namespace support
