#pragma once
#include "base/Text.h"
#include "platform/posix/FileSaver.h"

#include <optional>
#include <string>
#include <vector>

namespace nib {

/// hosts.conf as it is written, without any defaults, edited in place: comments, order, unknown keys and every other
/// line stay byte for byte. Names and keys ignore case; the default connection "*" is always there.
///
/// What changes it throws Error, in words for the user, and leaves it as it was.
class HostsFile {
public:
    /// $XDG_CONFIG_HOME/Orlin/hosts.conf
    static std::string UsualPath();
    /// A file that is missing is empty. Throws SystemFailure, and Error for one that is too large.
    static std::string BytesAt(const std::string& path);
    /// Throws Error for a file that cannot be read or is no UTF-8: it could not be written back as it was.
    static HostsFile Read(std::string path);

    explicit HostsFile(TextView text = {});

    Text Content() const;
    const std::string& Path() const { return path_; }
    /// The default connection first, the others as they follow in the file.
    std::vector<Text> Names() const;
    bool Has(TextView name) const;
    /// Empty when the section does not have the key.
    Text Value(TextView name, TextView key) const;
    /// Blanks at the ends go. An empty value takes the key out of the section.
    void Set(TextView name, TextView key, TextView value);
    /// The name as it was taken.
    Text Add(TextView name);
    Text Rename(TextView name, TextView newName);
    /// Comments below its last key stay: they may be about the next section.
    void Remove(TextView name);
    /// Throws Error, and writes nothing, when another program has changed the file since it was read.
    void Save(const FileSaver& saver);

private:
    void Insert(size_t at, TextView line);
    void AppendSection(TextView name);
    Text CheckedName(TextView name) const;

    std::string path_;
    std::string read_;        ///< the bytes that it stands for
    std::vector<Text> lines_; ///< with their ends, which the last one may lack
};

} // namespace nib
