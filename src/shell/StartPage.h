#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

class Program;

/// One thing to begin with.
struct StartRow {
    enum class Kind : uint8_t { Command, Sample, Place, LastSession, Recent, Help };
    Kind kind = Kind::Command;
    Text caption;
    Text detail; ///< where it is, or its keys
    Text target; ///< the command, path, entry of the recent files, or page of the help

    friend bool operator==(const StartRow&, const StartRow&) = default;
};

/// What stands in the frame while no document is open.
struct StartRows {
    std::vector<StartRow> begin;
    std::vector<StartRow> steps;
    std::vector<StartRow> recent;
    std::vector<StartRow> places;

    friend bool operator==(const StartRows&, const StartRows&) = default;
};

class StartPage {
public:
    /// `program` outlives it.
    explicit StartPage(Program& program) : program_(program) {}

    /// Asks no server, and looks at no file but the folder of accounts and the list of the last session.
    StartRows Rows() const;
    /// Failures are told to the user.
    void Run(const StartRow& row);

private:
    void OpenRecent(TextView entry);
    void OpenLastSession();

    Program& program_;
};

} // namespace nib
