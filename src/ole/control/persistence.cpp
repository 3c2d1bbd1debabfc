#include "ole/control/persistence.h"

#include <cstdint>

#include "ole/control/control.h"
#include "ole/control/ole_object.h"

namespace ole {

namespace {

constexpr std::uint32_t signature = 0x4356524F;  // "ORVC" in the file
constexpr std::uint32_t version = 1;
constexpr wchar_t streamName[] = L"Contents";

/// What a stream holds, little-endian; the size is in 1/100 millimetre.
struct Record {
    std::uint32_t signature;
    std::uint32_t version;
    std::int32_t width;
    std::int32_t height;
};

[[noreturn]] void ThrowNoState() {
    Throw(STG_E_INVALIDHEADER, L"This is not the saved state of a control.");
}

void Restore(Control& control, std::uint32_t writtenBy, SIZE extent) {
    if (writtenBy > version) {
        Throw(STG_E_OLDDLL, L"A newer version of the control wrote this; it cannot be read.");
    }
    if (extent.cx < 0 || extent.cy < 0) ThrowNoState();
    control.SetExtent(extent);
    control.SetDirty(false);
}

void ReadFrom(IStream& stream, Control& control) {
    Record record = {};
    ULONG read = 0;
    Check(stream.Read(&record, sizeof(record), &read));
    if (read != sizeof(record) || record.signature != signature) ThrowNoState();
    Restore(control, record.version, {record.width, record.height});
}

void WriteTo(IStream& stream, Control& control) {
    const SIZE extent = control.Extent();
    const Record record = {signature, version, extent.cx, extent.cy};
    ULONG written = 0;
    Check(stream.Write(&record, sizeof(record), &written));
    if (written != sizeof(record)) Check(STG_E_MEDIUMFULL);
}

/// A number of a property bag; `fallback` where the bag has none.
long ReadNumber(IPropertyBag& bag, IErrorLog* log, const wchar_t* name, long fallback) {
    _variant_t value(fallback);
    if (FAILED(bag.Read(name, &value, log))) return fallback;
    return static_cast<long>(value);
}

void WriteNumber(IPropertyBag& bag, const wchar_t* name, long number) {
    _variant_t value(number);
    Check(bag.Write(name, &value));
}

}  // namespace

HRESULT Persistence::GetClassID(CLSID* id) {
    if (id == nullptr) return E_POINTER;
    *id = control_.Class().classId;
    return S_OK;
}

HRESULT Persistence::IsDirty() {
    return control_.IsDirty() ? S_OK : S_FALSE;
}

HRESULT Persistence::InitNew() {
    return S_OK;
}

HRESULT Persistence::Load(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IPersistStreamInit, [&] { ReadFrom(*stream, control_); });
}

HRESULT Persistence::Save(IStream* stream, BOOL clearDirty) {
    if (stream == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IPersistStreamInit, [&] {
        WriteTo(*stream, control_);
        if (clearDirty) control_.SetDirty(false);
        object_.SendSaved();
    });
}

HRESULT Persistence::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr) return E_POINTER;
    size->QuadPart = sizeof(Record);
    return S_OK;
}

HRESULT Persistence::InitNew(IStorage*) {
    return InitNew();
}

HRESULT Persistence::Load(IStorage* storage) {
    if (storage == nullptr) return E_POINTER;
    Ref<IStream> stream;
    const HRESULT opened = storage->OpenStream(
        streamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.GetAddressOf());
    return FAILED(opened) ? opened : Load(stream.Get());
}

HRESULT Persistence::Save(IStorage* storage, BOOL sameAsLoad) {
    if (storage == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IPersistStorage, [&] {
        Ref<IStream> stream;
        Check(storage->CreateStream(streamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0,
                                    0, stream.GetAddressOf()));
        WriteTo(*stream.Get(), control_);
        savedWhole_ = sameAsLoad != FALSE;
    });
}

HRESULT Persistence::SaveCompleted(IStorage*) {
    const Ref<IUnknown> kept = &whole_;
    if (savedWhole_) control_.SetDirty(false);
    savedWhole_ = false;
    object_.SendSaved();
    return S_OK;
}

// Nothing of the storage is kept between calls.
HRESULT Persistence::HandsOffStorage() {
    return S_OK;
}

HRESULT Persistence::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IPersistPropertyBag, [&] {
        const SIZE extent = control_.Extent();
        const long writtenBy = ReadNumber(*bag, log, L"_Version", static_cast<long>(version));
        Restore(control_, static_cast<std::uint32_t>(writtenBy),
                {ReadNumber(*bag, log, L"_ExtentX", extent.cx),
                 ReadNumber(*bag, log, L"_ExtentY", extent.cy)});
    });
}

HRESULT Persistence::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (bag == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IPersistPropertyBag, [&] {
        const SIZE extent = control_.Extent();
        WriteNumber(*bag, L"_Version", static_cast<long>(version));
        WriteNumber(*bag, L"_ExtentX", extent.cx);
        WriteNumber(*bag, L"_ExtentY", extent.cy);
        if (clearDirty) control_.SetDirty(false);
    });
}

}  // namespace ole
