#include "fakes/AssistedProgram.h"
#include "shell/assist/ProblemList.h"

namespace nib::test::assistance_test {

const Text kWrong = u"      X = 1\r\n      GOSUB NOWHERE\r\n      PRINT X\r\n      STOP\r\n";
const Text kSound = u"      X = 1\r\n      PRINT X\r\n      STOP\r\n";
constexpr size_t kGosub = 1;

bool AnyIn(const std::vector<ProgramFinding>& findings, int32_t line)
{
    return std::any_of(findings.begin(), findings.end(), [&](auto& f) { return f.at.start.line == line; });
}

struct AssistanceTest : testing::Test, AssistedProgram {
    bool Told(const std::shared_ptr<mvDocument>& document, int32_t line)
    {
        return Wait([&] { return AnyIn(FindingsOf(document), line); });
    }
};

TEST_F(AssistanceTest, FindingsComeMoveAndGo)
{
    auto document = Open(kMain, kWrong);
    ASSERT_TRUE(Told(document, kGosub));
    SourceView& view = View(*document);
    view.SetCaret({0, 0});
    view.TypeText(u"*");
    view.NewLine();
    EXPECT_TRUE(AnyIn(FindingsOf(document), kGosub + 1)) << "before any answer";
    view.Document().InsertText(view.Document().End(), u"NOWHERE: RETURN");
    EXPECT_TRUE(Wait([&] { return !AnyIn(FindingsOf(document), kGosub + 1); }));
}

TEST_F(AssistanceTest, TheLineThatIsTypedInIsJudgedAfterAPause)
{
    auto document = Open(kMain, kSound);
    ASSERT_TRUE(Wait([&] { return assist.OpenDocument(kMain) != nullptr; }));
    SourceView& view = View(*document);
    view.SetCaret({0, 1});
    view.TypeText(u"      GOSUB NOWHERE ;");
    const int64_t typed = clock.now;
    ASSERT_TRUE(Told(document, 1));
    EXPECT_GE(clock.now - typed, 150);
}

TEST_F(AssistanceTest, WhoeverIsNotToBeJudgedIsLeftAlone)
{
    auto document = Open(kMain, kWrong);
    ASSERT_TRUE(Told(document, kGosub));
    const auto gone = [&] { return FindingsOf(document).empty(); };
    program.EditorSettings().CheckAsYouType = false;
    assist.SettingsChanged();
    EXPECT_TRUE(Wait(gone)) << "switched off";
    program.EditorSettings().CheckAsYouType = true;
    assist.SettingsChanged();
    ASSERT_TRUE(Told(document, kGosub));
    document->SetHighlight(false);
    assist.DocumentChanged(*document);
    EXPECT_TRUE(Wait(gone)) << "without colours it is a text";
    document->SetHighlight(true);
    assist.DocumentChanged(*document);
    ASSERT_TRUE(Told(document, kGosub));
    assist.Forget(document->DocumentID());
    EXPECT_TRUE(gone());
}

TEST_F(AssistanceTest, TheNextProblemIsFoundRoundAllDocuments)
{
    auto first = Open(kMain, kWrong);
    auto sound = Open(kOther, kSound);
    auto last = Open(u"mvdb:*/DEMO/BP/LAST", kWrong);
    ASSERT_TRUE(Told(first, kGosub) && Told(last, kGosub));
    const auto go = [&](bool backward) {
        assist.GoToFinding(window.activeDocument, backward);
        const auto document = program.OpenDocuments().ById(window.activeDocument);
        return std::pair(document->Path(), View(*document).CaretLine());
    };
    const size_t count = FindingsOf(first).size();
    first->Activate();
    View(*first).SetCaret({0, 0});
    EXPECT_EQ(go(false), std::pair(first->Path(), FindingsOf(first).front().at.start.line));
    EXPECT_EQ(window.status[1], English(FindingsOf(first).front().message));
    for (size_t i = 1; i < count; ++i) EXPECT_EQ(go(false).first, first->Path());
    EXPECT_EQ(go(false).first, last->Path());
    EXPECT_EQ(go(true).first, first->Path()) << "back from the first one there";

    ProblemList list(assist);
    EXPECT_TRUE(list.Refresh());
    EXPECT_EQ(list.Rows().size(), FindingsOf(first).size() + FindingsOf(last).size());
    EXPECT_EQ(list.Rows().front().document, u"BP MAIN");
    const int32_t errors = list.Count(FindingLevel::Error);
    list.SetShown(FindingLevel::Error, false);
    EXPECT_EQ(list.Refresh(), errors > 0);
    EXPECT_EQ(list.Count(FindingLevel::Error), errors) << "counted all the same";
}

TEST_F(AssistanceTest, AnAnswerToATextThatHasChangedIsDropped)
{
    auto document = Open(kMain, kSound);
    int answers = 0;
    const auto ask = [&] {
        return assist.Ask(
            *document, [](LanguageService& service, const Text& path) { return service.Findings(path); },
            [&](auto&) { ++answers; });
    };
    ASSERT_TRUE(ask());
    View(*document).TypeText(u"X");
    ASSERT_TRUE(ask());
    EXPECT_TRUE(Wait([&] { return answers > 0; }));
    queue->Take();
    EXPECT_EQ(answers, 1);
    assist.Stop();
    EXPECT_FALSE(ask());
}

TEST_F(AssistanceTest, AFindingCanBeSilencedWhereItIs)
{
    auto document = Open(kMain, kWrong);
    ASSERT_TRUE(Told(document, kGosub));
    EXPECT_TRUE(assist.Mends(*document, 0).empty());
    const std::vector<QuickMend> mends = assist.Mends(*document, kGosub);
    ASSERT_FALSE(mends.empty());
    EXPECT_EQ(English(mends.back().caption), u"Silence missing-label here");
    program.Names().Mend(*document, mends.back());
    EXPECT_EQ(View(*document).Document().GetLine(1), u"      * nib: ignore missing-label");
    EXPECT_TRUE(Wait([&] { return !AnyIn(FindingsOf(document), kGosub + 1); }));
}

TEST_F(AssistanceTest, AQuestionThatFailsIsLoggedAndHarmsNoOther)
{
    auto document = Open(kMain, kWrong);
    assist.Ask(
        *document,
        [](LanguageService&, const Text&) -> int {
            throw Error{1, u"broken"};
        },
        [](int) { FAIL(); });
    EXPECT_TRUE(Told(document, kGosub));
}

struct NameCommandsTest : AssistanceTest {
    NameCommands& names = program.Names();
    Text Line(mvDocument& document, int32_t line) { return View(document).Document().GetLine(line); }
};

TEST_F(NameCommandsTest, ALabelIsFoundAndRenamed)
{
    auto document = Open(kMain, u"      GOSUB DONE\r\n      GOSUB DONE\r\n      STOP\r\nDONE:\r\n      RETURN\r\n");
    document->Activate();
    SourceView& view = View(*document);
    view.SetCaret({13, 0});
    names.GoToDefinition(*document);
    EXPECT_TRUE(Wait([&] { return view.Caret() == Position{0, 3}; }));

    std::optional<RenamePreview> preview;
    names.AskRename(*document, [&](const NameCommands::Renamed& renamed) {
        EXPECT_EQ(renamed.name, u"DONE");
        names.Preview(*document, u"READY", [&](RenamePreview answer) { preview = std::move(answer); });
    });
    ASSERT_TRUE(Wait([&] { return preview.has_value(); }));
    ASSERT_EQ(preview->rows.size(), 3U) << ToUtf8(preview->refusal);
    EXPECT_EQ(preview->rows.front().item, u"BP MAIN");
    preview->rows[1].chosen = false;
    EXPECT_EQ(names.Rename(*preview, u"DONE"), 2);
    EXPECT_EQ(Line(*document, 0), u"      GOSUB READY");
    EXPECT_EQ(Line(*document, 1), u"      GOSUB DONE");
    EXPECT_EQ(Line(*document, 3), u"READY:");
    document->Undo();
    EXPECT_EQ(Line(*document, 0), u"      GOSUB DONE");
    EXPECT_FALSE(document->IsDirty()) << "one step";
}

RenamePreview PreviewOf(const Text& path, Position at)
{
    RenamePlan plan;
    plan.edits.push_back({path, {{{at, {at.col + 1, at.line}}, u"NEW"}}, {u"X = 1"}});
    return RenamePreview::Of(plan);
}

TEST_F(NameCommandsTest, ItemsThatAreNotOpenAreChangedOnlyWhenTheUserAgrees)
{
    connection.store.items[kOther] = {u"X = 1", false};
    auto document = Open(kMain, kSound);
    boxes.Answer({message_box::kAnswerNo, message_box::kAnswerYes});
    EXPECT_EQ(names.Rename(PreviewOf(kOther, {0, 0}), u"X"), 0);
    EXPECT_EQ(program.OpenDocuments().Count(), 1);
    EXPECT_EQ(names.Rename(PreviewOf(kOther, {0, 0}), u"X"), 1);
    auto opened = program.OpenDocuments().Item(2);
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->GetText(), u"NEW = 1");
    EXPECT_TRUE(opened->IsDirty());
    EXPECT_EQ(connection.store.items[kOther].text, u"X = 1") << "nothing is written";
    EXPECT_EQ(boxes.Take().size(), 2U);
}

TEST_F(NameCommandsTest, WhatStandsThereByNowIsNotOverwritten)
{
    auto document = Open(kMain, u"Y = 1");
    ASSERT_TRUE(Wait([&] { return assist.OpenDocument(kMain) != nullptr; }));
    EXPECT_EQ(names.Rename(PreviewOf(kMain, {0, 0}), u"X"), 0);
    EXPECT_EQ(document->GetText(), u"Y = 1");
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(NameCommandsTest, AMendIsOneStepOfUndo)
{
    auto document = Open(kMain, u"A\r\nB");
    QuickMend mend{{}, {{{{0, 0}, {0, 0}}, u"X = 1\r\n"}, {{{0, 1}, {1, 1}}, u"C"}}};
    names.Mend(*document, mend);
    EXPECT_EQ(document->GetText(), u"X = 1\r\nA\r\nC");
    document->Undo();
    EXPECT_EQ(document->GetText(), u"A\r\nB");
}

TEST(ShownNameTest, IsThatOfLists)
{
    EXPECT_EQ(ShownName(u"mvdb:*/DEMO/BP/INVOICE"), u"BP INVOICE");
    EXPECT_EQ(ShownName(u"file:/home/x/prog.b"), u"prog.b");
    EXPECT_EQ(ShownName(u"new:7"), u"new:7");
}

TEST_F(AssistanceTest, LinesOfTheLastCompileAreMarked)
{
    using Lines = std::vector<int32_t>;
    const Text account = u"mvdb:*/DEMO/";
    auto main = Open(kMain, u"A\r\n$INCLUDE INC DEFS\r\nC\r\nD");
    auto other = Open(account + u"BP/OTHER", u"A\r\nB");
    const auto marks = [&](const std::shared_ptr<mvDocument>& document) {
        Lines lines;
        for (const CompileMark& mark : assist.Marks(document->DocumentID())) lines.push_back(mark.line);
        return lines;
    };
    const auto compiled = [&](TextView item, TextView output) {
        program.Services().compiled = {u"mvdb", u"*", u"DEMO", u"BP", Text(item)};
        program.Services().onCompiled(output);
    };
    compiled(u"MAIN", u"Line 3: C is wrong\r\nLine 900: the end\r\nLine 3: and more\r\ndone");
    EXPECT_EQ(marks(main), (Lines{2, 2, 3}));
    EXPECT_EQ(assist.Marks(main->DocumentID()).front().message, u"Line 3: C is wrong");
    View(*main).Document().InsertText({0, 0}, u"new\r\n");
    EXPECT_EQ(marks(main), (Lines{3, 3, 4}));
    EXPECT_EQ(program.Services().compiledLine(*main, 3), 4);
    EXPECT_EQ(program.Services().compiledLine(*other, 3), 3);
    View(*main).Document().Undo();

    compiled(u"OTHER", u"Compiling BP other\r\n2: no\r\n1 error(s)");
    EXPECT_EQ(marks(other), Lines{1}) << "whatever the case of its name";
    EXPECT_EQ(marks(main).size(), 3U) << "another's compile";
    compiled(u"MAIN", u"Compiling BP MAIN\r\n2.3: in the include\r\n1 error(s)");
    EXPECT_EQ(marks(main), Lines{1});
    auto defs = Open(account + u"INC/DEFS", u"1\r\n2\r\n3");
    EXPECT_TRUE(Wait([&] { return marks(defs) == Lines{2}; })) << "opened later";
    compiled(u"MAIN", u"0 error(s)");
    EXPECT_EQ(marks(main), Lines());
    EXPECT_EQ(marks(defs), Lines());
    EXPECT_EQ(marks(other), Lines{1});
}

} // namespace nib::test::assistance_test
