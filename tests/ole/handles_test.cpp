#include "ole/handles.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

bool Exists(HBRUSH brush) {
    return GetObjectType(brush) == OBJ_BRUSH;
}

TEST(GdiObject, DeletesWhatItOwns) {
    HBRUSH handle = nullptr;
    {
        const ole::Brush brush(CreateSolidBrush(RGB(1, 2, 3)));
        handle = brush.Get();
        EXPECT_TRUE(Exists(handle));
    }
    EXPECT_FALSE(Exists(handle));
}

TEST(GdiObject, IsCountedOnceWhereverItIsMoved) {
    const long before = ole::LiveCounts().handles;
    {
        ole::Brush first(CreateSolidBrush(RGB(1, 2, 3)));
        const HBRUSH handle = first.Get();
        EXPECT_EQ(ole::LiveCounts().handles, before + 1);
        ole::Brush second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_EQ(second.Get(), handle);
        EXPECT_EQ(ole::LiveCounts().handles, before + 1);
        second = ole::Brush(CreateSolidBrush(RGB(4, 5, 6)));
        EXPECT_FALSE(Exists(handle));
        EXPECT_EQ(ole::LiveCounts().handles, before + 1);
        second = ole::Brush();
        EXPECT_EQ(ole::LiveCounts().handles, before);
    }
    EXPECT_EQ(ole::LiveCounts().handles, before);
}

TEST(GdiObject, FailedHandleIsNoneAndNotCounted) {
    const long before = ole::LiveCounts().handles;
    const ole::Brush none(nullptr);
    EXPECT_FALSE(none);
    EXPECT_EQ(ole::LiveCounts().handles, before);
}

TEST(Selected, PutsTheOldObjectBack) {
    const ole::ScreenContext screen;
    const ole::Brush brush(CreateSolidBrush(RGB(1, 2, 3)));
    const HGDIOBJ before = GetCurrentObject(screen.Get(), OBJ_BRUSH);
    {
        const ole::Selected selected(screen.Get(), brush.Get());
        EXPECT_EQ(GetCurrentObject(screen.Get(), OBJ_BRUSH), brush.Get());
    }
    EXPECT_EQ(GetCurrentObject(screen.Get(), OBJ_BRUSH), before);
}

}  // namespace
