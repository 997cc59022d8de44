#include "language/server/FindingsTold.h"

#include "language/FindingCodes.h"

namespace nib {

namespace {

using namespace std::chrono_literals;

constexpr auto kPause = 150ms;   ///< of typing
constexpr auto kLongest = 600ms; ///< for one who makes none
constexpr auto kSoon = 500ms;    ///< for what comes of the account by itself

constexpr int kSeverities[] = {1, 2, 4}; ///< by FindingLevel
constexpr int kUnnecessary = 1;          ///< a tag
constexpr TextView kUnused[] = {finding_code::kUnusedVariable, finding_code::kUnusedLabel, finding_code::kUnreachable};

} // namespace

Json DiagnosticOf(const ClientText& text, const ProgramFinding& finding)
{
    Json told{{"range", text.Write(finding.at)},
              {"severity", kSeverities[static_cast<size_t>(finding.level)]},
              {"code", ToJson(finding.code)},
              {"source", "nib"},
              {"message", ToJson(English(finding.message))}};
    if (std::find(std::begin(kUnused), std::end(kUnused), finding.code) != std::end(kUnused))
        told["tags"] = Json::array({kUnnecessary});
    return told;
}

void FindingsTold::Changed(Time now)
{
    if (due_ == Time::max()) latest_ = now + kLongest;
    due_ = std::min(now + kPause, latest_);
}

void FindingsTold::Closed(const std::string& uri)
{
    if (told_.erase(uri) > 0)
        workspace_.out.Tell("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}});
}

FindingsTold::Time FindingsTold::Step(Time now)
{
    const uint64_t revision = workspace_.service->Revision();
    if (revision != revision_ && due_ == Time::max()) due_ = now + kSoon;
    revision_ = revision;
    if (now < due_) return due_;
    due_ = Time::max();
    for (auto& [uri, open] : workspace_.texts) {
        Json list = Json::array();
        for (const ProgramFinding& finding : workspace_.service->Findings(open.path))
            list.push_back(DiagnosticOf(open.text, finding));
        Json message{{"uri", uri}, {"diagnostics", std::move(list)}};
        Json& last = told_[uri];
        // Versions differ with each key; what is told again says nothing new.
        if (message == last) continue;
        last = message;
        if (!open.text.Version().is_null()) message["version"] = open.text.Version();
        workspace_.out.Tell("textDocument/publishDiagnostics", std::move(message));
    }
    return due_;
}

} // namespace nib
