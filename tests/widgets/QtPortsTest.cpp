#include "platform/qt/QtDesktop.h"

#include <gtest/gtest.h>

namespace nib {
namespace {

TEST(QtClipboard, KeepsTextAsItIs)
{
    QtClipboard clipboard;
    const Text text = u"A\uF8FDB\r\n\u00e4\U0001F600";
    clipboard.SetText(text);
    EXPECT_TRUE(clipboard.HasText());
    EXPECT_EQ(clipboard.GetText(), text);
    clipboard.SetPrimary(u"primary");
    EXPECT_EQ(clipboard.GetText(), text) << "the two are apart";
}

TEST(QtFonts, OnlyWhatWasAddedIsAFont)
{
    QtFonts fonts(u"/folder");
    EXPECT_FALSE(fonts.Add(u"/nowhere/Font.ttf"));
    fonts.Remove(u"/nowhere/Font.ttf");
    EXPECT_EQ(fonts.ProgramFolder(), u"/folder");
}

} // namespace
} // namespace nib
