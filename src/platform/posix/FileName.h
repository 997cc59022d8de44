#pragma once
// File names between the system's bytes and text. A byte that is no UTF-8 becomes a lone surrogate U+DC80..U+DCFF, so
// that a file with any name at all can be shown, opened and saved.

#include "base/Text.h"

#include <optional>
#include <string>
#include <string_view>

namespace nib {

Text FromFileName(std::string_view bytes);
std::string ToFileName(TextView text);

/// The folder of a path, "/" for what stands in the root and "." for a bare name.
std::string FolderOf(const std::string& path);
std::string LastPart(const std::string& path);
/// `path` from the root of the file system, without "." and ".." and doubled slashes; links are not followed.
std::string AbsolutePath(const std::string& path);
/// Makes the folder and those above it that are missing, for the user alone, and brings them to disk. Answers 0 or the
/// system's error.
int MakeFolders(const std::string& path);
/// Brings the names in a folder to disk. Answers 0, also where a folder cannot be, or the system's error.
int SyncFolder(const std::string& folder);
/// Never over something that is there, not even an empty folder. Answers 0 or the system's error.
int RenameNew(const std::string& from, const std::string& to);
inline constexpr std::string_view kTemporaryName = ".nib-"; ///< eight random letters follow
/// Eight random letters for names of temporary files.
std::string RandomSuffix();

/// Each byte that `keeps(byte, index)` refuses becomes %XX.
template <typename Keeps>
std::string PercentEncode(std::string_view bytes, Keeps&& keeps)
{
    static constexpr char kHexDigits[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (keeps(c, i)) {
            out.push_back(bytes[i]);
        } else {
            out += {'%', kHexDigits[c >> 4], kHexDigits[c & 15]};
        }
    }
    return out;
}

/// No answer when a "%" is not followed by two hexadecimal digits.
inline std::optional<std::string> PercentDecode(std::string_view text)
{
    const auto value = [](char c) {
        constexpr std::string_view kDigits = "0123456789ABCDEFabcdef";
        const size_t at = kDigits.find(c);
        return at == std::string_view::npos ? -1 : static_cast<int>(at < 16 ? at : at - 6);
    };
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out.push_back(text[i]);
            continue;
        }
        const int high = i + 2 < text.size() ? value(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? value(text[i + 2]) : -1;
        if (high < 0 || low < 0) return std::nullopt;
        out.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return out;
}

/// $HOME, "/" when it is no path from the root.
std::string HomeFolder();
/// The folder that an environment variable names; `below` (with its slash) the home folder unless that is an absolute
/// path.
std::string UserFolder(const char* variable, const char* below);
/// Data of the user on this machine: $XDG_DATA_HOME or ~/.local/share.
std::string LocalDataFolder();

/// Where the things lie that come with the program.
struct ProgramPlaces {
    Text programs; ///< the editor and the programs that verbs of accounts run
    Text data;     ///< the sample account, the private fonts
    Text settings; ///< the switch file of the settings store

    /// A program beside which the sample account lies has everything there: the tree of a build, or a folder that is
    /// carried about. An installed one has its data in share/nibpad71 of the same prefix, and what the machine's
    /// administrator says about it in etc/nibpad71.
    static ProgramPlaces Around(TextView programFolder);
};

} // namespace nib
