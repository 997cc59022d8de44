#pragma once
// What frmAutoRecover shows and does, without a screen.

#include "persistence/recovery/modAutoRecover.h"

#include <optional>

namespace nib {

struct RecoveryRow {
    Text text;
    int32_t position = 0; ///< in the list of names
    bool checked = false;
};

/// How the form was left.
enum class RecoveryChoice { Cancel, Recover, Delete };

class RecoveryList {
public:
    explicit RecoveryList(modAutoRecover& recovery) : recovery_(recovery) {}

    /// A row for each file that can be read. Rows are numbered by themselves: behind a file that cannot be read a row
    /// stands for the name before its own.
    void Load(TextView folder, const DynamicArray& names);
    /// Shows the form for as long as there are rows and it is not cancelled.
    void Run(const std::function<RecoveryChoice()>& showModal);

    const std::vector<RecoveryRow>& Rows() const { return rows_; }
    void SetChecked(size_t row, bool checked) { rows_.at(row).checked = checked; }
    void CheckAll(bool checked);
    bool AnyChecked() const;
    /// Asks the user; true for Yes.
    bool ConfirmDelete();

    /// Opens each checked one as a new document. Those that fail stay in the list.
    void RecoverChecked();
    /// Takes all rows off. The files become this session's and go at its clean end; a crash brings them back.
    void DeleteListed();

private:
    bool Recover(TextView name);
    Text TakeName(int32_t position);
    std::optional<Text> ReadCopy(TextView name);
    Text PathOf(TextView name) const { return folder_ + u"/" + Text(name); }
    DocumentServices& Documents() { return recovery_.Ports().documents; }

    modAutoRecover& recovery_;
    Text folder_;
    DynamicArray names_;
    std::vector<RecoveryRow> rows_;
};

} // namespace nib
