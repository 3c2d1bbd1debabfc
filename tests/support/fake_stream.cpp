#include "support/fake_stream.h"

#include <algorithm>

namespace support {

STDMETHODIMP FakeStream::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(ISequentialStream) && iid != __uuidof(IStream))
        return E_NOINTERFACE;
    *object = static_cast<IStream*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP FakeStream::Read(void* target, ULONG size, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (target == nullptr) return STG_E_INVALIDPOINTER;
    if (!MayCall("Read")) return RPC_E_DISCONNECTED;
    if (readFailsAfter && position + size > *readFailsAfter) return failure;
    const std::size_t left = bytes.size() - std::min(position, bytes.size());
    const std::size_t count = std::min<std::size_t>(size, left);
    const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(position);
    std::copy_n(first, count, static_cast<BYTE*>(target));
    position += count;
    if (read != nullptr) *read = static_cast<ULONG>(count);
    return count == size ? S_OK : S_FALSE;
}

STDMETHODIMP FakeStream::Write(const void* source, ULONG size, ULONG* written) {
    if (written != nullptr) *written = 0;
    if (source == nullptr) return STG_E_INVALIDPOINTER;
    if (!MayCall("Write")) return RPC_E_DISCONNECTED;
    if (writeFailsAfter && position + size > *writeFailsAfter) return failure;
    const ULONG count = std::min(size, writesAtMost.value_or(size));
    bytes.resize(std::max<std::size_t>(bytes.size(), position + count));
    const auto* const from = static_cast<const BYTE*>(source);
    std::copy_n(from, count, bytes.begin() + static_cast<std::ptrdiff_t>(position));
    position += count;
    if (written != nullptr) *written = count;
    return S_OK;
}

STDMETHODIMP FakeStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* now) {
    if (!MayCall("Seek")) return RPC_E_DISCONNECTED;
    long long base = 0;
    if (origin == STREAM_SEEK_CUR) base = static_cast<long long>(position);
    if (origin == STREAM_SEEK_END) base = static_cast<long long>(bytes.size());
    if (base + move.QuadPart < 0) return STG_E_INVALIDFUNCTION;
    position = static_cast<std::size_t>(base + move.QuadPart);
    if (now != nullptr) now->QuadPart = position;
    return S_OK;
}

STDMETHODIMP FakeStream::SetSize(ULARGE_INTEGER size) {
    if (!MayCall("SetSize")) return RPC_E_DISCONNECTED;
    bytes.resize(static_cast<std::size_t>(size.QuadPart));
    return S_OK;
}

STDMETHODIMP FakeStream::Stat(STATSTG* statistics, DWORD) {
    if (statistics == nullptr) return STG_E_INVALIDPOINTER;
    *statistics = {};
    statistics->type = STGTY_STREAM;
    statistics->cbSize.QuadPart = bytes.size();
    return S_OK;
}

STDMETHODIMP FakeStream::Clone(IStream** copy) {
    if (copy == nullptr) return STG_E_INVALIDPOINTER;
    auto clone = Make<FakeStream>(bytes);
    clone->position = position;
    *copy = clone.Detach();
    return S_OK;
}

}  // namespace support
