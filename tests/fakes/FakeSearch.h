#pragma once
// What a search reaches outside, and a whole search on a program of fakes.

#include "fakes/TestProgram.h"
#include "search/HitLights.h"
#include "search/ResultsModel.h"

namespace nib::test {

/// The results as text: what is highlighted stands in brackets, a header after "# ", a title after "= ".
struct FakeResults final : ResultsWindow {
    void ShowResults(TextView text) override
    {
        if (!text.empty()) {
            lines = {Text(text)};
            ++lists;
        }
        ++shown;
    }
    void ResetResults(TextView title) override
    {
        lines = {u"= " + Text(title)};
        ++lists;
    }
    int32_t ListNumber() const override { return lists; }
    void AddResultLine(TextView text, int32_t start, int32_t length, bool emphasis) override
    {
        Text line(text);
        if (length > 0)
            line.insert(static_cast<size_t>(start + length), 1, u']').insert(static_cast<size_t>(start), 1, u'[');
        lines.push_back(emphasis ? u"# " + line : line);
    }

    std::vector<Text> lines;
    int32_t shown = 0;
    int32_t lists = 0;
};

struct TestSearch {
    TestSearch() { recent.SetListSize(10); }

    mvDocument& Add(TextView text, Position caret = {})
    {
        auto document = program.New();
        SourceView& view = document->EnsureView().txtText();
        view.SetText(text);
        view.SetCaret(caret);
        return *document;
    }
    SourceView& View(mvDocument& document) { return document.EnsureView().txtText(); }
    Text Line(mvDocument& document, int32_t line) { return View(document).Document().GetLine(line); }
    void Select(mvDocument& document, Position anchor, Position caret) { View(document).SetSelection(anchor, caret); }
    std::pair<Position, Position> Selection(mvDocument& document)
    {
        std::pair<Position, Position> ends;
        View(document).GetSelection(ends.first, ends.second);
        return ends;
    }
    FindDialog& Dialog() { return engine.Dialog(); }
    /// The dialog as it comes up, then what the user types into it.
    void OpenFind(TextView text)
    {
        ASSERT_TRUE(engine.Find());
        Dialog().findText = text;
    }
    void OpenReplace(TextView text, TextView with)
    {
        ASSERT_TRUE(engine.Replace());
        Dialog().findText = text;
        Dialog().replaceText = with;
    }
    /// The texts of the boxes shown since.
    std::vector<Text> Said()
    {
        std::vector<Text> texts;
        for (auto& box : program.boxes.Take()) texts.push_back(box.text);
        return texts;
    }
    MvEdit& Settings() { return program.program.EditorSettings(); }

    TestProgram program;
    FakeResults results;
    clsRecentList recent;
    FindEngine engine{program.program.Services(), results, recent};
    HitLights lights{program.program.Services(), engine, program.clock};
};

} // namespace nib::test
