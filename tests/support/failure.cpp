#include "support/failure.h"

#include "support/ref.h"
#include "support/text.h"

#include <utility>

namespace support {

namespace {

// EXCEPINFO gives a deferred fill-in no place for its own data, so the failure waits here.
thread_local Failure pending;
thread_local int fillIns = 0;

BSTR NewText(const std::string& text) {
    const std::wstring wide = Wide(text);
    return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

void Fill(const Failure& failure, EXCEPINFO& exception) {
    exception.scode = failure.number;
    exception.wCode = failure.code;
    exception.bstrDescription = NewText(failure.description);
    exception.bstrSource = NewText(failure.source);
}

HRESULT STDMETHODCALLTYPE FillIn(EXCEPINFO* exception) {
    ++fillIns;
    exception->pfnDeferredFillIn = nullptr;
    if (SUCCEEDED(pending.deferredResult)) Fill(pending, *exception);
    return pending.deferredResult;
}

void LeaveErrorInfo(const Failure& failure) {
    Ref<ICreateErrorInfo> create;
    if (FAILED(CreateErrorInfo(create.GetAddressOf()))) return;
    std::wstring description = Wide(failure.description);
    std::wstring source = Wide(failure.source);
    create->SetDescription(description.data());
    create->SetSource(source.data());
    SetErrorInfo(0, Query<IErrorInfo>(create.Get()).Get());
}

}  // namespace

Failure Failure::Names(HRESULT result) {
    Failure failure;
    failure.result = result;
    failure.inNames = true;
    return failure;
}

Failure Failure::Result(HRESULT result, UINT badArgument) {
    Failure failure;
    failure.result = result;
    failure.badArgument = badArgument;
    return failure;
}

Failure Failure::Exception(HRESULT number, std::string description, std::string source) {
    Failure failure;
    failure.result = DISP_E_EXCEPTION;
    failure.number = number;
    failure.description = std::move(description);
    failure.source = std::move(source);
    return failure;
}

Failure Failure::Code(WORD code, std::string description, std::string source) {
    Failure failure = Exception(0, std::move(description), std::move(source));
    failure.code = code;
    return failure;
}

Failure Failure::Deferred(HRESULT number, std::string description, std::string source) {
    Failure failure = Exception(number, std::move(description), std::move(source));
    failure.deferred = true;
    return failure;
}

int TakeDeferredFillIns() {
    return std::exchange(fillIns, 0);
}

HRESULT Raise(const Failure& failure, EXCEPINFO* exception, UINT* badArgument) {
    if (badArgument != nullptr) *badArgument = failure.badArgument;
    if (failure.leavesErrorInfo) LeaveErrorInfo(failure);
    const bool fills = failure.result == DISP_E_EXCEPTION || failure.fillsInOnSuccess;
    if (fills && exception != nullptr) {
        if (failure.deferred) {
            pending = failure;
            exception->pfnDeferredFillIn = FillIn;
        } else {
            Fill(failure, *exception);
        }
    }
    return failure.result;
}

}  // namespace support
