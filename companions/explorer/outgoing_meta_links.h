#pragma once

#include "hosting/com_class.h"
#include "hosting/late_bound.h"

namespace explorer {

/// A repository as one meta node sees it: its MetaLinks are those that leave the meta node. A list
/// of meta links takes it in the place of the whole repository.
class OutgoingMetaLinks : public hosting::ComClass<IDispatch> {
public:
    explicit OutgoingMetaLinks(const hosting::LateBound& metaNode) : metaNode_(metaNode) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

private:
    hosting::LateBound metaNode_;
};

}  // namespace explorer
