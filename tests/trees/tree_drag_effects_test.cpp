#include "trees/tree_drag_fixture.h"

namespace support {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;

class TreeDragEffects : public TreeDragTest {
protected:
    /// What the host of a source answers to OLEStartDrag.
    static void AllowOnly(EventRecorder& source, DWORD effects) {
        source.On("OLEStartDrag").Run([=](const Arguments& arguments) {
            EXPECT_EQ(arguments[1], Value(long{DROPEFFECT_COPY | DROPEFFECT_MOVE}));
            EXPECT_TRUE(arguments.Write(1, static_cast<long>(effects)));
        });
    }
    static void AnswerDrop(EventRecorder& target, DWORD effect) {
        target.On("OLEDragDrop").Run([=](const Arguments& arguments) {
            EXPECT_TRUE(arguments.Write(1, static_cast<long>(effect)));
        });
    }
    static void ExpectNoDrag(const Texts& all, const std::string& source) {
        EXPECT_EQ(all.size(), 2u) << testing::PrintToString(all);
        EXPECT_EQ(Of(all, source + "OLEStartDrag").size(), 1u);
        EXPECT_THAT(Of(all, source + "OLECompleteDrag"),
                    ElementsAre(source + "OLECompleteDrag(0)"));
    }
};

TEST_F(TreeDragEffects, AreThePlatforms) {
    static_assert(DROPEFFECT_COPY == 1 && DROPEFFECT_MOVE == 2 && DROPEFFECT_LINK == 4);
    DragTreeToDescribed();
    auto all = Events();
    EXPECT_EQ(all.front(), "OLEStartDrag(HTNodeInfo ID:3, 3)");
    EXPECT_THAT(all, Contains("described.OLEDragDrop(NodeInfo Root, 1)"));
    EXPECT_THAT(all, Contains("OLECompleteDrag(1)"));
    DragDescribedToTree();
    all = Events();
    EXPECT_EQ(all.front(), "described.OLEStartDrag(NodeInfo ID:5, 3)");
    EXPECT_THAT(all, Contains("OLEDragDrop(HTNodeInfo ID:1, 1)"));
    EXPECT_THAT(all, Contains("described.OLECompleteDrag(1)"));
}

TEST_F(TreeDragEffects, ThatTheHostAllowsAreAllThatTheTargetSees) {
    AllowOnly(events, DROPEFFECT_MOVE);
    DragTreeToDescribed();
    auto all = Events();
    EXPECT_THAT(Of(all, "OLEDragDrop"), ElementsAre("described.OLEDragDrop(NodeInfo Root, 2)"));
    EXPECT_THAT(Of(all, "OLEGiveFeedback"),
                Each(AnyOf("OLEGiveFeedback(0, True)", "OLEGiveFeedback(2, True)")));
    EXPECT_THAT(all, Contains("OLEGiveFeedback(2, True)"));
    EXPECT_THAT(all, Contains("OLECompleteDrag(2)"));
    AnswerDrop(describedEvents, DROPEFFECT_COPY);
    DragTreeToDescribed();
    EXPECT_THAT(Events(), Contains("OLECompleteDrag(0)")) << "a copy was not allowed";
    AllowOnly(describedEvents, DROPEFFECT_LINK);
    DragDescribedToTree();
    all = Events();
    EXPECT_THAT(Of(all, "OLEDragDrop"), ElementsAre("OLEDragDrop(HTNodeInfo ID:1, 4)"));
    EXPECT_THAT(all, Contains("described.OLECompleteDrag(4)"));
}

TEST_F(TreeDragEffects, OfNoneKeepTheDragFromBeginning) {
    AllowOnly(events, DROPEFFECT_NONE);
    DragTreeToDescribed();
    ExpectNoDrag(Events(), "");
    AllowOnly(describedEvents, DROPEFFECT_NONE);
    DragDescribedToTree();
    ExpectNoDrag(Events(), "described.");
}

TEST_F(TreeDragEffects, ThatTheHostGivesToADropReachTheSource) {
    AnswerDrop(describedEvents, DROPEFFECT_MOVE);
    DragTreeToDescribed();
    EXPECT_THAT(Events(), Contains("OLECompleteDrag(2)"));
    AnswerDrop(events, DROPEFFECT_NONE);
    DragDescribedToTree();
    EXPECT_THAT(Events(), Contains("described.OLECompleteDrag(0)"));
}

TEST_F(TreeDragEffects, AreShownWhileTheMouseMoves) {
    described.Put("dropAllowed", false);
    DragTreeToDescribed();
    EXPECT_THAT(Of(Events(), "OLEGiveFeedback"), Contains("OLEGiveFeedback(0, True)"));
    described.Put("dropAllowed", true);
    DragTreeToDescribed();
    auto shown = Of(Events(), "OLEGiveFeedback");
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.back(), "OLEGiveFeedback(1, True)");
    AllowOnly(describedEvents, DROPEFFECT_LINK);
    DragDescribedToTree();
    shown = Of(Events(), "OLEGiveFeedback");
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.back(), "described.OLEGiveFeedback(4, True)");
}

TEST_F(TreeDragEffects, MayBeShownByCursorsOfTheHosts) {
    const HCURSOR own = LoadCursorW(nullptr, MAKEINTRESOURCEW(32515));
    const auto replaced = [&](EventRecorder& source, bool systemCursors, auto drag) {
        int times = 0;
        source.On("OLEGiveFeedback").Run([&, systemCursors](const Arguments& arguments) {
            if (GetCursor() != own) ++times;
            SetCursor(own);
            EXPECT_TRUE(arguments.Write(0, 77L)) << "which has no effect";
            EXPECT_TRUE(arguments.Write(1, systemCursors));
        });
        drag();
        source.Calm();
        EXPECT_GT(Of(Events(), "OLEGiveFeedback").size(), 1u);
        return times;
    };
    const auto fromTree = [this] { DragTreeToDescribed(); };
    EXPECT_LE(replaced(events, false, fromTree), 1) << "before the first time";
    EXPECT_GT(replaced(events, true, fromTree), 1);
    const auto fromDescribed = [this] { DragDescribedToTree(); };
    EXPECT_LE(replaced(describedEvents, false, fromDescribed), 1);
    EXPECT_GT(replaced(describedEvents, true, fromDescribed), 1);
}

}  // namespace
}  // namespace support
