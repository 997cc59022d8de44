#include "compare/CompareModel.h"

#include "text/TextSnapshot.h"

#include <utility>

namespace nib {

namespace {

struct OptionRow {
    TextView name;
    bool CompareOptions::*option;
};

constexpr OptionRow kOptions[] = {
    {u"CompareBlanks", &CompareOptions::blanks},
    {u"CompareCase", &CompareOptions::letterCase},
    {u"CompareComments", &CompareOptions::comments},
};

} // namespace

struct CompareModel::Work {
    std::array<std::shared_ptr<const TextSnapshot>, 2> texts;
    CompareOptions options;
    std::atomic<bool> cancelled = false;
    bool binary = false;
    std::optional<TextDifferences> found;
    std::optional<Error> failure;
};

CompareModel::CompareModel(DocumentServices& services, SettingsStore& store, OnWindows onWindows,
                           std::array<std::unique_ptr<CompareSide>, 2> sides)
    : services_(services), store_(store), onWindows_(std::move(onWindows)), sides_(std::move(sides))
{
    for (const OptionRow& row : kOptions) options_.*row.option = LeadingInt(store_.Get(row.name, u"0")) != 0;
    for (Beside side : {Beside::Left, Beside::Right}) {
        Side(side).onChange = [this, side](const TextChange* change) { Changed(side, change); };
        Side(side).onModified = [this] {
            if (onChange) onChange();
        };
    }
}

CompareModel::~CompareModel()
{
    if (work_) work_->cancelled = true;
    Join();
}

void CompareModel::Join()
{
    if (thread_.joinable()) thread_.join();
}

void CompareModel::SetOptions(const CompareOptions& options)
{
    if (options == options_) return;
    options_ = options;
    for (const OptionRow& row : kOptions) store_.Save(row.name, options.*row.option ? u"1" : u"0", u"0");
    Compare();
}

void CompareModel::Compare()
{
    again_ = working_;
    if (working_) {
        work_->cancelled = true;
        return;
    }
    Join();
    stale_ = stopped_ = false;
    working_ = true;
    work_ = std::make_shared<Work>();
    work_->options = options_;
    for (Beside side : {Beside::Left, Beside::Right})
        work_->texts[static_cast<size_t>(side)] = Side(side).Lines().Snapshot();
    thread_ = std::thread([this, work = work_] {
        work->failure = FailureOf([&] {
            const LinewiseText left = AsLines(work->texts[0]);
            const LinewiseText right = AsLines(work->texts[1]);
            work->binary = LooksBinary(left) || LooksBinary(right);
            if (!work->binary) work->found = CompareLines(left, right, work->options, &work->cancelled);
        });
        onWindows_([this, work = std::weak_ptr(work)] {
            // The model holds its last work as long as it lives.
            if (const auto done = work.lock()) Finish(*done);
        });
    });
    if (onChange) onChange();
}

void CompareModel::Finish(Work& work)
{
    Join();
    working_ = false;
    if (!IsThere()) return;
    if (std::exchange(again_, false)) return Compare();
    binary_ = work.binary;
    stopped_ = !work.binary && !work.found;
    words_.clear();
    if (work.found && !stale_) {
        Text scratch;
        const auto lineOf = [&](Beside side) {
            return [this, side, &scratch](int32_t line) { return Side(side).Lines().LineText(line, scratch); };
        };
        rows_.Build(std::move(*work.found), lineOf(Beside::Left), lineOf(Beside::Right));
    } else if (binary_ || stopped_) {
        rows_.Clear();
    }
    work.texts = {};
    if (onChange) onChange();
    if (work.failure) services_.shell.ReportError(work.failure->description);
}

void CompareModel::Stop()
{
    again_ = false;
    if (working_) work_->cancelled = true;
}

void CompareModel::Changed(Beside side, const TextChange* change)
{
    stale_ = true;
    rested_ = false;
    words_.clear();
    if (change) rows_.Follow(side == Beside::Right, *change);
    if (onEdit) onEdit();
}

void CompareModel::Tick()
{
    if (!stale_) return;
    if (std::exchange(rested_, true)) return Compare();
    if (onChange) onChange();
}

const WordDifferences& CompareModel::WordsOf(int32_t row)
{
    constexpr size_t kMost = 2000;
    if (words_.size() > kMost) words_.clear();
    const auto [found, fresh] = words_.try_emplace(row);
    if (fresh) {
        const CompareRow& shown = rows_.At(row);
        Text left;
        Text right;
        found->second = CompareWords(Side(Beside::Left).Lines().LineText(shown.left, left),
                                     Side(Beside::Right).Lines().LineText(shown.right, right), options_);
    }
    return found->second;
}

bool CompareModel::Take(int32_t change, Beside into)
{
    if (change < 0 || change >= rows_.ChangeCount() || !CanTake(into)) return false;
    const LineBlock block = rows_.BlockOfChange(change);
    const CompareSide& other = Side(Other(into));
    const bool taken = into == Beside::Right
                           ? Side(into).Replace(block.right, block.rightCount, other, block.left, block.leftCount)
                           : Side(into).Replace(block.left, block.leftCount, other, block.right, block.rightCount);
    if (taken) Compare();
    return taken;
}

void CompareModel::Look()
{
    bool changed = false;
    for (const auto& side : sides_) changed = side->Look() || changed;
    if (changed && onChange) onChange();
}

void CompareModel::LookAgain()
{
    // One that cannot be read is enough: the other one may be on the same server, which does not answer.
    for (const auto& side : sides_)
        if (!side->ReadAgain()) break;
    Compare();
}

} // namespace nib
