#pragma once

#include "support/double.h"

#include <optional>
#include <vector>

namespace support {

/// A stream in memory that can be cut short or fail, to save into and to load from.
class FakeStream : public IStream, public Double {
public:
    explicit FakeStream(std::vector<BYTE> contents = {})
        : Double("stream"), bytes(std::move(contents)) {}

    std::vector<BYTE> bytes;
    std::size_t position = 0;
    /// Reading beyond this many bytes, or writing beyond, fails with `failure`.
    std::optional<std::size_t> readFailsAfter;
    std::optional<std::size_t> writeFailsAfter;
    HRESULT failure = STG_E_MEDIUMFULL;
    /// Writes no more than this at a time, and still succeeds.
    std::optional<ULONG> writesAtMost;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP Read(void* target, ULONG size, ULONG* read) override;
    STDMETHODIMP Write(const void* source, ULONG size, ULONG* written) override;
    STDMETHODIMP Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* now) override;
    STDMETHODIMP SetSize(ULARGE_INTEGER size) override;
    STDMETHODIMP CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Commit(DWORD) override { return S_OK; }
    STDMETHODIMP Revert() override { return E_NOTIMPL; }
    STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP Stat(STATSTG* statistics, DWORD) override;
    STDMETHODIMP Clone(IStream** copy) override;

private:
    void Expire() override {}
};

}  // namespace support
