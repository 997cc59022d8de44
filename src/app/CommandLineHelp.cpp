#include "app/CommandLineHelp.h"

#include <cstdio>
#include <string_view>

namespace nib {

namespace {

constexpr const char* kHelp = "Usage: nibpad71 [SWITCH | FILE]...\n"
                              "Edits items of MultiValue files, and local files.\n"
                              "\n"
                              "Switches and files act from left to right; what they set holds for what follows:\n"
                              "  /T=TYPE      connection type, mvdb by default\n"
                              "  /H=HOST      host connection, \"*\" for the default one\n"
                              "  /A=ACCOUNT   account\n"
                              "  /F=FILE      MultiValue file\n"
                              "  /I=ITEM      opens this item of the file\n"
                              "  /L           opens all that follows read-only\n"
                              "  FILE         opens a local file\n"
                              "  --help       shows this text\n"
                              "  --version    shows the version\n"
                              "\n"
                              "Example: nibpad71 '/H=*' /A=DEMO /F=BP /I=INVOICE\n";

} // namespace

bool AnswersOnTerminal(int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        std::string_view argument = argv[i];
        if (argument == "--help") {
            std::fputs(kHelp, stdout);
            return true;
        }
        if (argument == "--version") {
            std::puts("nibpad71 " NIB_VERSION);
            return true;
        }
    }
    return false;
}

} // namespace nib
