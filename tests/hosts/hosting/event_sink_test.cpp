#include "hosting/event_sink.h"
#include "hosts/hosting/double_form.h"

#include "hosting/com_class.h"
#include "hosting/error.h"

#include <gmock/gmock.h>

using hosting::Error;
using hosting::Event;
using hosting::EventSink;
using hosting::LateBound;
using hosting::Ref;
using testing::ElementsAre;

namespace {

class EventSinkTest : public DoubleForm {
protected:
    LateBound source = LateBound::Create(L"HostDouble.Control");
    EventSink sink;
};

TEST_F(EventSinkTest, EventsArriveWithTheirNamesIdsAndArguments) {
    std::vector<std::wstring> names;
    sink.Connect(source.Get(), [&names](const Event& event) {
        names.push_back(event.name);
        if (event.name == L"Plain") {
            EXPECT_EQ(event.id, 5);
            EXPECT_EQ(event.Count(), 3U);
            EXPECT_EQ(event.Argument(0).vt, VT_I4);
            EXPECT_EQ(event.Argument(0).lVal, 7);
            EXPECT_EQ(_bstr_t(event.Argument(1).bstrVal), _bstr_t(L"Ω"));
            EXPECT_EQ(event.Argument(2).boolVal, VARIANT_TRUE);
        }
        return S_OK;
    });
    source.Call(L"RaisePlain", 7, L"Ω", true);
    source.Call(L"RaiseDone");
    EXPECT_THAT(names, ElementsAre(L"Plain", L"Done"));
    EXPECT_THAT(sink.Names(),
                ElementsAre(L"Ask", L"Count", L"Pick", L"Anything", L"Plain", L"Done"));
}

TEST_F(EventSinkTest, ByReferenceArgumentsComeAsTheyAre) {
    sink.Connect(source.Get(), [](const Event& event) {
        EXPECT_EQ(event.Argument(1).vt, VT_BYREF | VT_BOOL);
        *event.Argument(1).pboolVal = VARIANT_FALSE;
        return S_OK;
    });
    EXPECT_EQ(_bstr_t(source.Call(L"RaiseAsk", L"go", true)), _bstr_t(L"go|no"));
}

TEST_F(EventSinkTest, ASinkMayDisconnectWithinItsEvent) {
    int calls = 0;
    sink.Connect(source.Get(), [&](const Event&) {
        ++calls;
        sink.Disconnect();
        return S_OK;
    });
    source.Call(L"RaiseDone");
    source.Call(L"RaiseDone");
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(sink.IsConnected());
    sink.Disconnect();
}

TEST_F(EventSinkTest, ASinkMayBeDestroyedWithinItsEvent) {
    auto mortal = std::make_unique<EventSink>();
    const auto last = std::make_shared<int>(0);
    mortal->Connect(source.Get(), [&mortal, last](const Event&) {
        const auto kept = last;
        mortal.reset();
        ++*kept;
        return S_OK;
    });
    source.Call(L"RaiseDone");
    EXPECT_EQ(*last, 1);
}

TEST_F(EventSinkTest, AnErrorInAHandlerStaysInTheSink) {
    sink.Connect(source.Get(), [](const Event&) -> HRESULT { throw Error(E_ACCESSDENIED, L"no"); });
    EXPECT_NO_THROW(source.Call(L"RaiseDone"));
}

TEST_F(EventSinkTest, AnObjectWithoutEventsIsRefused) {
    const auto font = hosting::MakeFont(L"Arial", 8);
    EXPECT_TRUE(hosting::HasEvents(source.Get()));
    EXPECT_FALSE(hosting::HasEvents(hosting::Query<IStream>(font.Get()).Get()));
    EXPECT_THROW(sink.Connect(nullptr, [](const Event&) { return S_OK; }), Error);
}

/// An object that gives no class information, so that only its type library helps.
class WithoutClassInfo : public hosting::ComClass<IDispatch, IConnectionPointContainer> {
public:
    explicit WithoutClassInfo(const LateBound& inner) : inner_(inner) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return inner_.Get()->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return inner_.Get()->GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        return inner_.Get()->GetIDsOfNames(iid, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrong) override {
        return inner_.Get()->Invoke(id, iid, locale, kind, parameters, result, exception, wrong);
    }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return hosting::Query<IConnectionPointContainer>(inner_.Get())
            ->EnumConnectionPoints(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        return hosting::Query<IConnectionPointContainer>(inner_.Get())
            ->FindConnectionPoint(id, point);
    }

private:
    LateBound inner_;
};

TEST_F(EventSinkTest, TheTypeLibraryNamesTheSourceWhereTheObjectDoesNot) {
    const auto object = hosting::Make<WithoutClassInfo>(source);
    std::wstring name;
    sink.Connect(object->Identity(), [&name](const Event& event) {
        name = event.name;
        return S_OK;
    });
    source.Call(L"RaiseDone");
    EXPECT_EQ(name, L"Done");
}

}  // namespace
