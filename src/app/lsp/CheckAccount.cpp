#include "app/lsp/CheckAccount.h"

#include "base/Error.h"
#include "hosts/TextCoding.h"
#include "language/Dialect.h"
#include "language/account/ProgramShape.h"
#include "language/server/ClientPlaces.h"
#include "language/service/LanguageService.h"
#include "platform/posix/FileName.h"

#include <cstdio>

namespace nib {

namespace {

constexpr const char* kLevels[] = {"error", "warning", "hint"}; ///< by FindingLevel

class Check {
public:
    explicit Check(const CheckOptions& options)
        : options_(options), service_({options.dialect, options.indexFolder}),
          account_(places_.AddAccount(AbsolutePath(options.account)))
    {
        if (account_.empty())
            throw Error(error_number::kStorage, FromFileName(options.account) + u" is no folder of an account.");
        reader_ = places_.Reader(account_);
        AccountAccess access;
        access.reader = places_.Reader(account_);
        service_.AddAccount(account_, std::move(access));
        while (service_.Work()) continue;
    }

    int64_t Run()
    {
        if (options_.file.empty()) {
            for (const Text& file : reader_->Files())
                if (MayHoldPrograms(file)) All(file);
        } else if (options_.items.empty()) {
            All(options_.file);
        } else {
            for (const Text& item : options_.items) One(options_.file, item, true);
        }
        return count_;
    }

private:
    void All(const Text& file)
    {
        for (const Text& item : reader_->Ids(file)) One(file, item, false);
    }
    void One(const Text& file, const Text& item, bool named)
    {
        const std::optional<Text> text = reader_->Read(file, item);
        if (!text && named) throw Error(error_number::kStorage, file + u" " + item + u" is no text.");
        if (!text || (!named && !LooksLikeProgram(*text, *options_.dialect))) return;
        std::vector<Text> lines;
        ForEachLine(TextView(*text), true, [&](TextView line, bool) { lines.emplace_back(line); });
        ItemPlace place = ParsePath(account_);
        place.folder = file;
        place.itemId = item;
        const Text path = ComposeHostPath(place);
        service_.Open(path, std::move(lines));
        for (const ProgramFinding& finding : service_.Findings(path)) Print(file, item, finding);
        service_.Close(path);
    }
    void Print(const Text& file, const Text& item, const ProgramFinding& finding)
    {
        ++count_;
        std::printf("%s %s:%d:%d: %s: %s [%s]\n", ToUtf8(file).c_str(), ToUtf8(item).c_str(), finding.at.start.line + 1,
                    finding.at.start.col + 1, kLevels[static_cast<size_t>(finding.level)],
                    ToUtf8(English(finding.message)).c_str(), ToUtf8(finding.code).c_str());
    }

    const CheckOptions& options_;
    ClientPlaces places_;
    LanguageService service_;
    Text account_;
    std::unique_ptr<ItemReader> reader_;
    int64_t count_ = 0;
};

} // namespace

int64_t CheckAccount(const CheckOptions& options)
{
    return Check(options).Run();
}

} // namespace nib
