#include "hosts/CatalogueRecord.h"

#include "hosts/NameRules.h"
#include "platform/posix/FileName.h"

namespace nib {

namespace {

constexpr TextView kObjectFile{u".OUT"};

} // namespace

ProgramName ProgramOfObject(TextView path)
{
    const size_t slash = path.rfind(u'/');
    if (slash == TextView::npos) return {{}, Text(path)};
    TextView folder = path.substr(0, slash);
    folder.remove_prefix(folder.rfind(u'/') + 1); // npos + 1 is 0
    const bool isObject = folder.size() > kObjectFile.size() && folder.ends_with(kObjectFile);
    const std::string name = ToFileName(path.substr(slash + 1));
    return {isObject ? Text(folder.substr(0, folder.size() - kObjectFile.size())) : Text(),
            DecodeName(name, IdRule::Escaped).value_or(FromFileName(name))};
}

std::optional<ProgramName> CataloguedProgram(const std::function<Text(int32_t attribute)>& record)
{
    const Text kind = record(1);
    const Text type = kind.starts_with(u'V') ? record(2) : Text();
    if (type.size() != 2 || type.front() != u'C') return std::nullopt;
    const Text where(Trim(record(3)));
    if (where.find(u'/') != Text::npos) {
        ProgramName program = ProgramOfObject(where);
        return program.file.empty() ? std::nullopt : std::optional(std::move(program));
    }
    const size_t blank = where.find(u' ');
    ProgramName program{where.substr(0, blank),
                        blank == Text::npos ? record(4) : Text(Trim(TextView(where).substr(blank)))};
    return program.file.empty() || program.item.empty() ? std::nullopt : std::optional(std::move(program));
}

} // namespace nib
