#pragma once
// Processor time, memory, and files to open.

#include "../BasicText.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include <malloc.h>
#include <unistd.h>

namespace nib::bench {

/// Gone at the end.
class SourceFile {
public:
    explicit SourceFile(const std::string& bytes)
        : path_("/tmp/nib_bench_" + std::to_string(getpid()) + "_" + std::to_string(bytes.size()))
    {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~SourceFile() { std::remove(path_.c_str()); }
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// A program; every 200th line holds a TAB, as many an accented letter.
inline std::string MixedBytes(int32_t lines)
{
    const std::string plain = BasicBytes(lines);
    std::string bytes;
    size_t at = 0;
    for (int32_t line = 0; line < lines; ++line) {
        const size_t end = plain.find('\n', at);
        bytes.append(plain, at, end - at);
        if (line % 200 == 50) bytes += "\t;* one";
        if (line % 200 == 150)
            bytes += " ;* Stra\xC3\x9F"
                     "e";
        bytes += '\n';
        at = end + 1;
    }
    return bytes;
}

inline double ProcessorMs()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// A line of the kernel's account of this process, in MiB.
inline double StatusMiB(const std::string& key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key)) return std::strtod(line.c_str() + key.size() + 1, nullptr) / 1024;
    return 0;
}

/// What was added since, now and at most meanwhile.
class MemoryWatch {
public:
    MemoryWatch()
    {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        before_ = StatusMiB("VmRSS");
    }
    double Now() const { return StatusMiB("VmRSS") - before_; }
    double Most() const { return StatusMiB("VmHWM") - before_; }

private:
    double before_ = 0;
};

} // namespace nib::bench
