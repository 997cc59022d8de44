// The lines that the last compiles found errors in; part of Assistance.

#include "documents/mvDocument.h"
#include "shell/assist/Assistance.h"

#include <algorithm>

namespace nib {

namespace {

/// Nobody looks at more.
constexpr size_t kMostMarks = 1000;

/// Some systems do not tell case in names.
bool IsItem(const mvItem& item, const ItemPlace& place, bool exactly)
{
    const auto same = [&](TextView a, TextView b) { return exactly ? a == b : EqualsNoCase(a, b); };
    return item.Provider() == place.provider && IsSameHost(item.ServerName(), place.serverName) &&
           same(item.Database(), place.database) && same(item.Folder(), place.folder) &&
           same(item.ItemID(), place.itemId);
}

} // namespace

const std::vector<CompileMark>& Assistance::Marks(int32_t documentId) const
{
    static const std::vector<CompileMark> none;
    const auto found = followed_.find(documentId);
    return found == followed_.end() ? none : found->second.text->Marks();
}

void Assistance::Compiled(TextView output)
{
    const Text compiled = ComposeHostPath(services_.compiled);
    std::erase_if(unplaced_, [&](const UnplacedMark& unplaced) { return unplaced.mark.compiled == compiled; });
    for (auto& [id, followed] : followed_) {
        std::vector<CompileMark> marks = followed.text->Marks();
        if (std::erase_if(marks, [&](const CompileMark& mark) { return mark.compiled == compiled; }) == 0) continue;
        followed.text->SetMarks(std::move(marks));
        if (FindingsChanged) FindingsChanged(id);
    }
    std::vector<CompilerError> errors = ErrorsIn(output);
    errors.resize(std::min(errors.size(), kMostMarks));
    for (const CompilerError& error : errors) MarkLines(services_.compiled, error, compiled);
    PlaceMarks();
}

void Assistance::MarkLines(ItemPlace item, const CompilerError& error, const Text& compiled)
{
    const ProgramName& program = error.target.program;
    if (!program.file.empty()) item.folder = program.file;
    if (!program.item.empty()) item.itemId = program.item;
    // An error in what a line includes is one of that line, too.
    for (const int32_t line : error.target.lines) {
        unplaced_.push_back({item, {line - 1, line - 1, Text(Trim(error.message)), compiled}});
        const Followed* followed = FollowedOn(item);
        const bool known = followed && line >= 1 && line <= followed->text->Document().LineCount();
        const ProgramName included = known ? IncludedBy(followed->text->Document().GetLine(line - 1)) : ProgramName();
        if (included.item.empty()) return;
        if (!included.file.empty()) item.folder = included.file;
        item.itemId = included.item;
    }
}

/// Those whose items are open by now.
void Assistance::PlaceMarks()
{
    std::map<Followed*, std::vector<CompileMark>> placed;
    std::erase_if(unplaced_, [&](UnplacedMark& unplaced) {
        Followed* followed = FollowedOn(unplaced.item);
        if (!followed) return false;
        CompileMark& mark = unplaced.mark;
        mark.line = mark.told = std::clamp(mark.told, 0, followed->text->Document().LineCount() - 1);
        placed[followed].push_back(std::move(mark));
        return true;
    });
    for (auto& [followed, marks] : placed) {
        marks.insert(marks.begin(), followed->text->Marks().begin(), followed->text->Marks().end());
        followed->text->SetMarks(std::move(marks));
        if (FindingsChanged) FindingsChanged(followed->id);
    }
}

Assistance::Followed* Assistance::FollowedOn(const ItemPlace& place)
{
    for (const bool exactly : {true, false})
        for (auto& [id, followed] : followed_) {
            const auto document = followed.document.lock();
            const auto item = document ? document->ItemObject() : nullptr;
            if (item && IsItem(*item, place, exactly)) return &followed;
        }
    return nullptr;
}

int32_t Assistance::CompiledLine(const mvDocument& document, int32_t line) const
{
    const auto& marks = Marks(document.DocumentID());
    const auto mark =
        std::find_if(marks.begin(), marks.end(), [&](const CompileMark& known) { return known.told == line - 1; });
    return mark == marks.end() ? line : mark->line + 1;
}

} // namespace nib
