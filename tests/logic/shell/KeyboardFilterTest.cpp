// The keys that the frame takes.

#include "shell/menus/FrameKeys.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

constexpr FrameKey kTab = FrameKey::Tab;
constexpr FrameKey kF6 = FrameKey::F6;

// Where the keys go.
constexpr KeyboardState kElsewhere{false, true, true};
constexpr KeyboardState kToolBar{true, false, false};
constexpr KeyboardState kText{true, true, false};
constexpr KeyboardState kLines{true, true, true};

struct Row {
    FrameKey key;
    bool shift, ctrl, alt;
    KeyboardState state;
    KeyAction action;
};

TEST(KeyboardFilterTest, KeysAndPlaces)
{
    using A = KeyAction;
    const Row rows[] = {{kTab, false, true, false, kText, A::NextDocument},
                        {kTab, false, true, true, kToolBar, A::NextDocument},
                        {kTab, true, true, false, kLines, A::PreviousDocument},
                        {kTab, true, true, false, kElsewhere, A::Pass},
                        {kTab, false, false, false, kText, A::Pass},
                        {kTab, false, false, false, kLines, A::IndentBlock},
                        {kTab, true, false, false, kLines, A::OutdentBlock},
                        {kTab, true, false, false, kText, A::Pass},
                        {kTab, true, false, false, kToolBar, A::Pass},
                        {kTab, false, false, true, kLines, A::Pass},
                        {kTab, true, false, true, kText, A::Pass},
                        {kTab, false, false, false, kElsewhere, A::Pass},
                        {kF6, false, true, false, kText, A::NextDocument},
                        {kF6, false, true, false, kToolBar, A::NextDocument},
                        {kF6, true, true, false, kText, A::Pass},
                        {kF6, false, true, true, kText, A::Pass},
                        {kF6, false, false, false, kText, A::Pass},
                        {kF6, false, true, false, kElsewhere, A::Pass},
                        {FrameKey::Other, false, true, false, kText, A::Pass}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(FilterKey({row.key, true, row.shift, row.ctrl, row.alt}, row.state), row.action);
        // What was taken going down is not seen going up either.
        EXPECT_EQ(FilterKey({row.key, false, row.shift, row.ctrl, row.alt}, row.state),
                  row.action == A::Pass ? A::Pass : A::Swallow);
    }
}

} // namespace
} // namespace nib::test
