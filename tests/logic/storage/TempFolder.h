#pragma once
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <sys/resource.h>
#include <unistd.h>

namespace nib::test {

/// A folder of its own for one test, gone afterwards.
class TempFolder {
public:
    /// "/dev/shm": where syncing costs nothing, and extended attributes are not to be had.
    explicit TempFolder(const std::string& where = "/tmp") : path_(where + "/nib-storage-XXXXXX")
    {
        if (!mkdtemp(path_.data())) throw std::system_error(errno, std::generic_category(), path_);
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

/// As long as it lives no file can be written beyond so many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t room = 0)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit full{room, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

inline std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace nib::test
