#include "control_fixture.h"
#include "support/double.h"
#include "support/drawing.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A container's sink for views and data.
class AdviseSink final : public IAdviseSink, public Double {
public:
    AdviseSink() : Double("advise sink") {}

    std::vector<std::string> calls;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IAdviseSink;
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override { calls.push_back("data"); }
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { calls.push_back("view"); }
    STDMETHODIMP_(void) OnRename(IMoniker*) override {}
    STDMETHODIMP_(void) OnSave() override { calls.push_back("save"); }
    STDMETHODIMP_(void) OnClose() override { calls.push_back("close"); }

private:
    void Expire() override {}
};

class ControlView : public ControlTest {
protected:
    FORMATETC Format(CLIPFORMAT format, DWORD medium) const {
        return {format, nullptr, DVASPECT_CONTENT, -1, medium};
    }
    HRESULT GetData(CLIPFORMAT format, DWORD medium, STGMEDIUM& data) const {
        FORMATETC wanted = Format(format, medium);
        return As<IDataObject>()->GetData(&wanted, &data);
    }

    Ref<AdviseSink> sink = Make<AdviseSink>();
};

TEST_F(ControlView, InactiveControlIsDrawn) {
    HRESULT result = E_FAIL;
    const support::Picture picture = DrawInactive(control.Get(), {120, 24}, &result);
    EXPECT_EQ(result, S_OK);
    EXPECT_GT(picture.Colours(), 2u);
    EXPECT_GT(DrawIntoMetafile(control.Get(), {120, 24}), 0);
}

TEST_F(ControlView, DrawingShowsTheControlsColours) {
    EXPECT_TRUE(LateBound(control).Do("SetBackGroundColor", 0x00FF8020));
    EXPECT_TRUE(DrawInactive(control.Get(), {120, 24}).Has(0x002080FF));
}

TEST_F(ControlView, DrawingLeavesTheDeviceContextAsItWas) {
    const HDC context = CreateCompatibleDC(nullptr);
    SetTextColor(context, RGB(1, 2, 3));
    const HGDIOBJ font = GetCurrentObject(context, OBJ_FONT);
    const RECTL bounds = {0, 0, 1, 1};
    EXPECT_EQ(As<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context,
                                      &bounds, nullptr, nullptr, 0),
              S_OK);
    EXPECT_EQ(GetTextColor(context), RGB(1, 2, 3));
    EXPECT_EQ(GetCurrentObject(context, OBJ_FONT), font);
    DeleteDC(context);
}

TEST_F(ControlView, OtherAspectsAndMissingArgumentsAreRefused) {
    const auto view = As<IViewObject2>();
    const RECTL bounds = {0, 0, 10, 10};
    const HDC context = CreateCompatibleDC(nullptr);
    EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, context, &bounds, nullptr,
                         nullptr, 0),
              DV_E_DVASPECT);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr,
                         nullptr, 0),
              E_INVALIDARG);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, nullptr, nullptr,
                         nullptr, 0),
              E_INVALIDARG);
    DeleteDC(context);
    SIZEL size = {};
    EXPECT_EQ(view->GetExtent(DVASPECT_ICON, -1, nullptr, &size), DV_E_DVASPECT);
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(As<IOleObject>()->GetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
    EXPECT_EQ(As<IOleObject>()->SetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
}

TEST_F(ControlView, ExtentIsTheSameOnEveryWay) {
    SetExtent({7000, 1000});
    SIZEL viewed = {};
    RECTL rectangle = {};
    SIZEL quick = {};
    EXPECT_EQ(As<IViewObject2>()->GetExtent(DVASPECT_CONTENT, -1, nullptr, &viewed), S_OK);
    EXPECT_EQ(As<IViewObjectEx>()->GetRect(DVASPECT_CONTENT, &rectangle), S_OK);
    EXPECT_EQ(As<IQuickActivate>()->GetContentExtent(&quick), S_OK);
    const SIZEL extent = Extent();
    EXPECT_EQ(extent.cx, 7000) << "the width that was asked for, unrounded";
    EXPECT_EQ(viewed.cx, extent.cx);
    EXPECT_EQ(viewed.cy, extent.cy);
    EXPECT_EQ(rectangle.right, extent.cx);
    EXPECT_EQ(quick.cy, extent.cy);
}

TEST_F(ControlView, OpaqueRectangleTakesHits) {
    const auto view = As<IViewObjectEx>();
    const RECT bounds = {10, 10, 20, 20};
    DWORD hit = 99;
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {15, 15}, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {25, 15}, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
    const RECT touching = {18, 18, 30, 30};
    EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &touching, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    DWORD status = 0;
    EXPECT_EQ(view->GetViewStatus(&status), S_OK);
    EXPECT_EQ(status, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
}

TEST_F(ControlView, ViewSinkLearnsOfChanges) {
    const auto view = As<IViewObject>();
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, sink.Get()), S_OK);
    EXPECT_THAT(sink->calls, ElementsAre("view"));
    sink->calls.clear();
    SetExtent({7000, 1000});
    EXPECT_FALSE(sink->calls.empty());
    DWORD aspects = 0;
    DWORD flags = 0;
    Ref<IAdviseSink> found;
    EXPECT_EQ(view->GetAdvise(&aspects, &flags, found.GetAddressOf()), S_OK);
    EXPECT_EQ(found.Get(), sink.Get());
    EXPECT_EQ(aspects, static_cast<DWORD>(DVASPECT_CONTENT));
    found.Reset();
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, sink.Get()), S_OK);
    sink->calls.clear();
    SetExtent({6000, 1000});
    SetExtent({5000, 1000});
    EXPECT_THAT(sink->calls, ElementsAre("view"));
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, 0, nullptr), S_OK);
    EXPECT_EQ(sink->References(), 1u);
}

TEST_F(ControlView, PictureIsOfferedAsEnhancedAndAsOldMetafile) {
    STGMEDIUM data = {};
    ASSERT_EQ(GetData(CF_ENHMETAFILE, TYMED_ENHMF, data), S_OK);
    ENHMETAHEADER header = {};
    EXPECT_NE(GetEnhMetaFileHeader(data.hEnhMetaFile, sizeof(header), &header), 0u);
    EXPECT_GT(header.nRecords, 2u);
    ReleaseStgMedium(&data);
    ASSERT_EQ(GetData(CF_METAFILEPICT, TYMED_MFPICT | TYMED_ENHMF, data), S_OK);
    EXPECT_EQ(data.tymed, static_cast<DWORD>(TYMED_MFPICT));
    const auto picture = static_cast<METAFILEPICT*>(GlobalLock(data.hMetaFilePict));
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->xExt, Extent().cx);
    GlobalUnlock(data.hMetaFilePict);
    ReleaseStgMedium(&data);
}

TEST_F(ControlView, OtherFormatsAreRefused) {
    STGMEDIUM data = {};
    EXPECT_EQ(GetData(CF_UNICODETEXT, TYMED_HGLOBAL, data), DV_E_FORMATETC);
    EXPECT_EQ(GetData(CF_ENHMETAFILE, TYMED_HGLOBAL, data), DV_E_TYMED);
    FORMATETC icon = Format(CF_ENHMETAFILE, TYMED_ENHMF);
    icon.dwAspect = DVASPECT_ICON;
    EXPECT_EQ(As<IDataObject>()->QueryGetData(&icon), DV_E_DVASPECT);
    EXPECT_EQ(As<IDataObject>()->GetData(&icon, nullptr), E_POINTER);
    EXPECT_EQ(As<IDataObject>()->GetDataHere(&icon, &data), DV_E_FORMATETC);
    EXPECT_EQ(As<IDataObject>()->SetData(&icon, &data, FALSE), DV_E_FORMATETC);
}

TEST_F(ControlView, FormatsAreListed) {
    Ref<IEnumFORMATETC> formats;
    ASSERT_EQ(As<IDataObject>()->EnumFormatEtc(DATADIR_GET, formats.GetAddressOf()), S_OK);
    FORMATETC found[3] = {};
    ULONG count = 0;
    EXPECT_EQ(formats->Next(3, found, &count), S_FALSE);
    EXPECT_EQ(count, 2u);
    for (ULONG i = 0; i < count; ++i) {
        EXPECT_EQ(As<IDataObject>()->QueryGetData(&found[i]), S_OK);
    }
    EXPECT_EQ(As<IDataObject>()->EnumFormatEtc(DATADIR_SET, formats.ReleaseAndGetAddressOf()),
              E_NOTIMPL);
}

TEST_F(ControlView, DataSinkLearnsOfANewSize) {
    FORMATETC format = Format(CF_ENHMETAFILE, TYMED_ENHMF);
    DWORD cookie = 0;
    const auto data = As<IDataObject>();
    EXPECT_EQ(data->DAdvise(&format, ADVF_NODATA, sink.Get(), &cookie), S_OK);
    SetExtent({7000, 1000});
    EXPECT_THAT(sink->calls, ElementsAre("data"));
    Ref<IEnumSTATDATA> sinks;
    EXPECT_EQ(data->EnumDAdvise(sinks.GetAddressOf()), S_OK);
    EXPECT_TRUE(sinks);
    sinks.Reset();
    EXPECT_EQ(data->DUnadvise(cookie), S_OK);
    sink->calls.clear();
    SetExtent({6000, 1000});
    EXPECT_THAT(sink->calls, IsEmpty());
    EXPECT_EQ(sink->References(), 1u);
}

TEST_F(ControlView, ObjectSinkLearnsOfSavingAndClosing) {
    DWORD cookie = 0;
    const auto object = As<IOleObject>();
    EXPECT_EQ(object->Advise(sink.Get(), &cookie), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_THAT(sink->calls, ElementsAre("close"));
    EXPECT_EQ(sink->References(), 1u);
    EXPECT_EQ(object->Unadvise(cookie), OLE_E_NOCONNECTION);
    EXPECT_EQ(object->Advise(sink.Get(), nullptr), E_POINTER);
}

}  // namespace
