#include "TempFolder.h"
#include "platform/posix/FileName.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

struct Row {
    const char* there; ///< files and folders (with a slash at the end) below the prefix, between blanks
    const char* data;
    const char* settings;
};

constexpr Row kRows[] = {{"bin/", "bin", "bin"},
                         {"bin/accounts/", "bin", "bin"},
                         {"bin/ share/nibpad71/", "share/nibpad71", "share/nibpad71"},
                         {"bin/ share/nibpad71/ etc/nibpad71/", "share/nibpad71", "share/nibpad71"},
                         {"bin/ share/nibpad71/ etc/nibpad71/isolation.ini", "share/nibpad71", "etc/nibpad71"},
                         // A tree of a build below a prefix that has the program too.
                         {"bin/accounts/ share/nibpad71/ etc/nibpad71/isolation.ini", "bin", "bin"}};

TEST(ProgramPlacesTest, BesideTheProgramOrOfItsPrefix)
{
    for (const Row& row : kRows) {
        TempFolder prefix;
        for (const Text& name : Split(FromFileName(row.there), u' ')) {
            if (name.ends_with(u'/'))
                prefix.Folder(ToFileName(name));
            else
                prefix.File(ToFileName(name), "");
        }
        const Text root = FromFileName(prefix.Path()) + u"/";
        const ProgramPlaces places = ProgramPlaces::Around(root + u"bin");
        EXPECT_EQ(places.programs, root + u"bin");
        EXPECT_EQ(places.data, root + FromFileName(row.data)) << row.there;
        EXPECT_EQ(places.settings, root + FromFileName(row.settings)) << row.there;
    }
}

} // namespace
} // namespace nib::test
