#include "ole/class_factory.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "ole/live.h"
#include "spy.h"

namespace {

ole::Ref<IClassFactory> SpyFactory() {
    ole::Ref<IClassFactory> factory;
    EXPECT_EQ(ole::GetClassObject(CLSID_Spy, IID_IClassFactory,
                                  reinterpret_cast<void**>(factory.GetAddressOf())),
              S_OK);
    return factory;
}

TEST(ClassFactory, MakesObjectsOfTheClassTable) {
    ole::Ref<_Spy> spy;
    EXPECT_EQ(SpyFactory()->CreateInstance(nullptr, __uuidof(_Spy),
                                           reinterpret_cast<void**>(spy.GetAddressOf())),
              S_OK);
    EXPECT_TRUE(spy);
}

TEST(ClassFactory, RefusesAggregation) {
    const auto outer = ole::Make<Spy>();
    void* object = outer.Get();
    EXPECT_EQ(SpyFactory()->CreateInstance(static_cast<_Spy*>(outer.Get()), IID_IUnknown, &object),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
}

TEST(ClassFactory, InterfaceThatIsNotThereIsRefusedAndTheObjectGoes) {
    void* object = reinterpret_cast<void*>(1);
    EXPECT_EQ(SpyFactory()->CreateInstance(nullptr, IID_IOleObject, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(SpyFactory()->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST(ClassFactory, UnknownClassIsNotAvailable) {
    void* object = reinterpret_cast<void*>(1);
    EXPECT_EQ(ole::GetClassObject(CLSID_Values, IID_IClassFactory, &object),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(ole::GetClassObject(CLSID_Spy, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(ole::GetClassObject(CLSID_Spy, IID_IOleObject, &object), E_NOINTERFACE);
}

TEST(ClassFactory, ObjectsAndLocksKeepTheServerLoaded) {
    EXPECT_EQ(ole::CanUnload(), S_OK);
    {
        const auto spy = ole::Make<Spy>();
        EXPECT_EQ(ole::CanUnload(), S_FALSE);
    }
    EXPECT_EQ(ole::CanUnload(), S_OK);
    SpyFactory()->LockServer(TRUE);
    EXPECT_EQ(ole::CanUnload(), S_FALSE);
    SpyFactory()->LockServer(FALSE);
    EXPECT_EQ(ole::CanUnload(), S_OK);
}

TEST(ClassFactory, PartHeldAloneKeepsTheServerLoaded) {
    ole::Ref<IConnectionPointContainer> part;
    EXPECT_EQ(SpyFactory()->CreateInstance(nullptr, IID_IConnectionPointContainer,
                                           reinterpret_cast<void**>(part.GetAddressOf())),
              S_OK);
    EXPECT_EQ(ole::CanUnload(), S_FALSE);
}

}  // namespace
