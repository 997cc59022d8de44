#pragma once
// What a line that a host printed leads to: its compiler's errors, and messages of programs that broke off.

#include "hosts/CatalogueRecord.h"
#include "hosts/mvConnect.h"

#include <optional>
#include <vector>

namespace nib {

struct DocumentServices;

/// What the catalogue of the session's account calls by the name, where its VOC tells.
std::optional<ProgramName> CataloguedProgram(mvSession& session, TextView name);

struct OutputTarget {
    enum class Kind : uint8_t {
        AnyNumber, ///< nothing is known of the line: a number in it will be one of a line
        Nowhere,
        Program,
    };
    Kind kind = Kind::AnyNumber;
    ProgramName program;
    std::vector<int32_t> lines; ///< of the program, then of what that line includes, and so on
};

/// `output` has LF between lines; `lineStart` is where the line begins.
OutputTarget TargetOfOutput(TextView output, size_t lineStart);

/// An error that a compiler has printed. `target` has at least one line; where it names no program, the line is one of
/// the item that was compiled.
struct CompilerError {
    TextView message; ///< the line, of the output
    OutputTarget target;
};

/// In the order of the output, whatever ends its lines.
std::vector<CompilerError> ErrorsIn(TextView output);
/// What a line of a program includes; of an item without a file that of the program is meant. No item when it includes
/// nothing.
ProgramName IncludedBy(TextView line);

struct SourcePlace {
    Text path;
    int32_t line = 0;
};

/// Where the target is, in the account of the item that was compiled. Includes are followed as far as they are found;
/// none when the program is not.
std::optional<SourcePlace> FindSource(DocumentServices& services, const OutputTarget& target,
                                      const ItemPlace& compiled);
/// The program that an account's catalogue calls by the name, as an item that is there; null when it tells of none.
std::shared_ptr<mvItem> FindCatalogued(DocumentServices& services, const ItemPlace& account, TextView name);

} // namespace nib
