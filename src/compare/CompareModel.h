#pragma once
// A comparison that follows its two texts: what differs is found beside the thread of the windows, and shown as rows.

#include "compare/CompareRows.h"
#include "compare/CompareSide.h"
#include "compare/GitLibrary.h"
#include "compare/WordDifferences.h"
#include "persistence/store/SettingsStore.h"

#include <array>
#include <thread>
#include <unordered_map>

namespace nib {

enum class Beside : uint8_t { Left, Right };

class CompareModel {
public:
    using OnWindows = std::function<void(std::function<void()> call)>;

    /// `onWindows` has a call made on this thread, later; both others outlive the model.
    CompareModel(DocumentServices& services, SettingsStore& store, OnWindows onWindows,
                 std::array<std::unique_ptr<CompareSide>, 2> sides);
    ~CompareModel();
    CompareModel(const CompareModel&) = delete;
    CompareModel& operator=(const CompareModel&) = delete;

    CompareSide& Side(Beside side) const { return *sides_[static_cast<size_t>(side)]; }
    static Beside Other(Beside side) { return side == Beside::Left ? Beside::Right : Beside::Left; }
    /// False once a document has closed: nothing else may be asked then.
    bool IsThere() const { return Side(Beside::Left).IsThere() && Side(Beside::Right).IsThere(); }
    CompareRows& Rows() { return rows_; }
    const CompareRows& Rows() const { return rows_; }
    const CompareOptions& Options() const { return options_; }
    /// Kept for all comparisons from now on.
    void SetOptions(const CompareOptions& options);

    /// Begins anew with the texts as they are now.
    void Compare();
    /// What is being compared stays unknown.
    void Stop();
    /// Texts that have changed are compared again when this has been called twice without a change in between.
    void Tick();
    bool IsWorking() const { return working_; }
    bool IsStopped() const { return stopped_; }
    /// It is told, not shown.
    bool IsBinary() const { return binary_; }

    const WordDifferences& WordsOf(int32_t row);
    bool CanTake(Beside into) const { return !working_ && !stale_ && Side(into).CanEdit(); }
    /// The lines of a change on the other side, as one step of undo.
    bool Take(int32_t change, Beside into);
    /// Looks what has become of stored items.
    void Look();
    /// Reads them again, and compares.
    void LookAgain();

    /// A text was edited, with each edit: what was known of its lines is not true any more.
    std::function<void()> onEdit;
    /// Rows, state or captions are others now.
    std::function<void()> onChange;

private:
    struct Work;

    void Changed(Beside side, const TextChange* change);
    void Finish(Work& work);
    void Join();

    DocumentServices& services_;
    SettingsStore& store_;
    OnWindows onWindows_;
    std::array<std::unique_ptr<CompareSide>, 2> sides_;
    GitLibrary git_; ///< loaded as long as there is a comparison
    CompareOptions options_;
    CompareRows rows_;
    std::unordered_map<int32_t, WordDifferences> words_; ///< of rows that were looked at
    std::shared_ptr<Work> work_;                         ///< the last one
    std::thread thread_;
    bool working_ = false;
    bool again_ = false; ///< once that has ended
    bool stale_ = false;
    bool rested_ = false;
    bool stopped_ = false;
    bool binary_ = false;
};

} // namespace nib
