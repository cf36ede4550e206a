#include <brannock/gui/ViewHistory.h>
#include <gtest/gtest.h>

namespace {

using namespace brannock;

TEST(ViewHistoryTest, GoesBackAndForthAndForgetsWhatWasAhead)
{
    MapView v;
    v.size = QSizeF(400, 300);
    ViewHistory history;
    history.clear(v);
    EXPECT_FALSE(history.canGoBack());
    const auto at = [&](double scale) {
        v.scale = scale;
        return v;
    };
    history.add({at(2)}, false);
    history.add({at(3)}, false);
    history.add({at(4)}, true);  // part of the step before
    history.add({at(4)}, false); // nothing new
    EXPECT_EQ(history.back().view.scale, 2);
    EXPECT_EQ(history.forward().view.scale, 4);
    EXPECT_FALSE(history.canGoForward());
    history.back();
    history.add({at(9)}, false);
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.back().view.scale, 2);
    for (int i = 0; i < 500; ++i)
        history.add({at(10 + i)}, false);
    int steps = 0;
    for (; history.canGoBack(); ++steps)
        history.back();
    EXPECT_EQ(steps, int(ViewHistory::kMost) - 1);
    history.setOrientation(-1, 1);
    EXPECT_EQ(history.forward().view.xOrientation, -1);
    EXPECT_EQ(history.back().view.xOrientation, -1);
    EXPECT_FALSE(history.canGoBack()) << "a flip is no view of its own";
}

} // namespace
