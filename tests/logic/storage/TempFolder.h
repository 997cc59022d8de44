#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace nib::test {

/// A folder of its own for one test, gone afterwards.
class TempFolder {
public:
    TempFolder()
    {
        char name[] = "/tmp/nib-storage-XXXXXX";
        path_ = mkdtemp(name);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    std::string Folder(const std::string& name) const
    {
        std::filesystem::create_directories(path_ + "/" + name);
        return path_ + "/" + name;
    }
    std::string File(const std::string& name, const std::string& bytes) const
    {
        std::filesystem::create_directories(std::filesystem::path(path_ + "/" + name).parent_path());
        std::ofstream(path_ + "/" + name, std::ios::binary) << bytes;
        return path_ + "/" + name;
    }

private:
    std::string path_;
};

inline std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace nib::test
