#include "compare/CompareModel.h"

#include "compare/CompareSources.h"
#include "fakes/Failure.h"
#include "fakes/MemorySettings.h"
#include "fakes/TestProgram.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <mutex>

namespace nib::test::compare_test {

/// The thread of the windows, which is the test's own.
class Calls {
public:
    CompareModel::OnWindows Door()
    {
        return [this](std::function<void()> call) {
            const std::lock_guard guard(mutex_);
            calls_.push_back(std::move(call));
            come_.notify_one();
        };
    }
    void RunNext()
    {
        std::unique_lock guard(mutex_);
        come_.wait(guard, [this] { return !calls_.empty(); });
        const auto call = std::move(calls_.front());
        calls_.pop_front();
        guard.unlock();
        call();
    }

private:
    std::mutex mutex_;
    std::condition_variable come_;
    std::deque<std::function<void()>> calls_;
};

/// A program's text in twenty lines.
Text Numbered(const std::vector<std::pair<int, Text>>& others = {})
{
    Text text;
    for (int n = 0; n < 20; ++n) {
        Text line = u"LINE " + Decimal(n);
        for (const auto& [number, other] : others)
            if (number == n) line = other;
        text += (n ? u"\r\n" : u"") + line;
    }
    return text;
}

/// A document beside what is stored of it.
struct Compared : TestProgram {
    explicit Compared(const Text& stored, const Text& own) : document(StoreAndOpen(kMain, stored))
    {
        document->ReplaceText(own);
        Begin();
    }
    void Begin()
    {
        auto& services = program.Services();
        model = std::make_unique<CompareModel>(
            services, settings, calls.Door(),
            std::array{std::make_unique<CompareSide>(services, StoredTextOf(services, *document)),
                       std::make_unique<CompareSide>(services, *document)});
        Await();
    }
    void Await()
    {
        if (!model->IsWorking()) model->Compare();
        while (model->IsWorking()) calls.RunNext();
    }
    /// Each row's lines, 1-based.
    std::string Rows() const
    {
        std::string out;
        for (int32_t row = 0; row < model->Rows().Count(); ++row) {
            const CompareRow& at = model->Rows().At(row);
            out += row ? " " : "";
            if (at.folded) {
                out += "(" + std::to_string(at.folded) + ")";
                continue;
            }
            out += (at.left < 0 ? std::string() : std::to_string(at.left + 1)) +
                   (model->Rows().BlockOf(row).IsChange() ? "|" : "=") +
                   (at.right < 0 ? std::string() : std::to_string(at.right + 1));
        }
        return out;
    }

    Calls calls;
    MemorySettings settings;
    std::shared_ptr<mvDocument> document;
    std::unique_ptr<CompareModel> model;
};

TEST(CompareModelTest, RunsThatAreAlikeAreFoldedAndOpen)
{
    Compared t(Numbered(), Numbered({{10, u"LINE 10 other"}}));
    EXPECT_EQ(t.Rows(), "(7) 8=8 9=9 10=10 11|11 12=12 13=13 14=14 (6)");
    EXPECT_EQ(t.model->Rows().NextChange(0, false), 0);
    EXPECT_EQ(t.model->Rows().NextChange(4, false), -1);
    EXPECT_EQ(t.model->Rows().NextChange(5, true), 0);
    t.model->Rows().Open(8);
    EXPECT_EQ(t.Rows(), "(7) 8=8 9=9 10=10 11|11 12=12 13=13 14=14 15=15 16=16 17=17 18=18 19=19 20=20");
    EXPECT_EQ(t.model->WordsOf(4).right.size(), 1U);
}

TEST(CompareModelTest, AChangeIsTakenOverAsOneStepOfUndo)
{
    const Text own = Numbered({{3, u"A"}, {10, u"B\r\nC\r\nD"}, {15, u"E"}});
    Compared t(Numbered(), own);
    ASSERT_EQ(t.model->Rows().ChangeCount(), 3);
    EXPECT_FALSE(t.model->CanTake(Beside::Left)) << "what is stored is not written to";
    EXPECT_TRUE(t.model->Take(1, Beside::Right));
    EXPECT_EQ(t.document->GetText(), Numbered({{3, u"A"}, {15, u"E"}}));
    t.Await();
    EXPECT_EQ(t.model->Rows().ChangeCount(), 2);
    t.document->Undo();
    EXPECT_EQ(t.document->GetText(), own);
    t.Await();
    EXPECT_EQ(t.model->Rows().ChangeCount(), 3);
    // All of them, from the end, give what is stored.
    for (int32_t change = 2; change >= 0; --change) {
        EXPECT_TRUE(t.model->Take(change, Beside::Right));
        t.Await();
    }
    EXPECT_EQ(t.document->GetText(), Numbered());
    EXPECT_TRUE(t.model->Rows().Differences().AreSame());
}

TEST(CompareModelTest, AllOrNothingIsTakenOver)
{
    for (const auto& [stored, own] : std::vector<std::pair<Text, Text>>{
             {u"", u"A\r\nB"}, {u"A\r\nB", u""}, {u"A", u"B"}, {u"A\r\nB\r\nC", u"A"}, {u"C", u"A\r\nB\r\nC"}}) {
        Compared t(stored, own);
        EXPECT_TRUE(t.model->Take(0, Beside::Right));
        EXPECT_EQ(t.document->GetText(), stored) << ToUtf8(own);
        t.document->Undo();
        EXPECT_EQ(t.document->GetText(), own);
    }
}

struct TakenCase {
    Text read, own, stored; ///< at the first, in the window, by now
};

const TakenCase kTaken[] = {{u"A\r\nB\tC\r\n\tD\r\nE\tF", u"A\r\nother\r\nE       F", u"A\r\nB\tC\r\n\tD\r\nE\tF"},
                            {u"x\tOLD\r\nz", u"x\tOLD\r\nmine", u"x\ty\tNEW\r\nmine"},
                            {u"B\tC\r\nz", u"other\r\nz", u"B   C\r\nz"}};

TEST(CompareModelTest, WhatIsTakenIsStoredAsItWasAndSoIsItsUndo)
{
    for (const TakenCase& row : kTaken) {
        Compared t(row.read, row.own);
        t.Store().items[kMain].text = row.stored;
        t.Store().states[kMain] = StoredState::Changed;
        t.model->Look();
        t.Await();
        int takes = 0;
        for (; t.model->Rows().ChangeCount() > 0; ++takes) {
            ASSERT_TRUE(t.model->Take(0, Beside::Right));
            t.Await();
        }
        EXPECT_TRUE(t.document->FileSave());
        EXPECT_EQ(t.Stored(kMain), row.stored) << "TABs as well";
        for (; takes > 0; --takes) t.document->Undo();
        EXPECT_TRUE(t.document->FileSave());
        EXPECT_EQ(t.Stored(kMain), row.own);
    }
}

TEST(CompareModelTest, TabsThatWereShownWithAnotherWidthAreTakenAsBlanks)
{
    Compared t(u"A\tB", u"other");
    t.program.EditorSettings().TabSize = 8;
    ASSERT_TRUE(t.model->Take(0, Beside::Right));
    t.document->SetText(t.document->GetText() + u"\r\nmore");
    EXPECT_TRUE(t.document->FileSave());
    EXPECT_EQ(t.Stored(kMain), u"A   B\r\nmore");
}

TEST(CompareModelTest, FollowsItsTexts)
{
    Compared t(Numbered(), Numbered());
    t.document->View()->txtText().Document().InsertText({0, 5}, u"NEW\r\n");
    EXPECT_FALSE(t.model->CanTake(Beside::Right)) << "until it is known what differs";
    t.model->Tick();
    EXPECT_FALSE(t.model->IsWorking()) << "the user may be typing";
    t.model->Tick();
    EXPECT_TRUE(t.model->IsWorking());
    t.Await();
    EXPECT_EQ(t.model->Rows().ChangeCount(), 1);
    // Somebody else stores the same.
    t.Store().items[kMain].text = t.document->GetText();
    t.Store().states[kMain] = StoredState::Changed;
    t.model->Look();
    t.Await();
    EXPECT_TRUE(t.model->Rows().Differences().AreSame());
    t.Store().states[kMain] = StoredState::Same; // as a server's item says that nobody has looked at
    t.document->View()->txtText().Document().InsertText({0, 0}, u"MORE\r\n");
    t.Await();
    EXPECT_EQ(t.model->Rows().ChangeCount(), 1);
    EXPECT_TRUE(t.document->FileSave());
    t.Store().readFailure = Error{error_number::kDeviceUnavailable, u"Cancelled"};
    t.model->Look();
    t.Store().readFailure.reset();
    t.model->LookAgain();
    t.Await();
    EXPECT_TRUE(t.model->Rows().Differences().AreSame()) << "it was saved";
    t.Store().states[kMain] = StoredState::Gone;
    t.model->Look();
    EXPECT_EQ(t.model->Side(Beside::Left).Note(), u"deleted");
    EXPECT_EQ(t.model->Side(Beside::Left).Lines().LineCount(), 22) << "the text stays";
    t.document->FileClose(false);
    t.document.reset();
    EXPECT_FALSE(t.model->IsThere());
    t.model.reset();
}

TEST(CompareModelTest, OptionsLastAndBinaryIsTold)
{
    Compared t(u"  X  = 1\r\n* old", u"x = 1\r\n* new\r\n* more");
    EXPECT_FALSE(t.model->Rows().Differences().AreSame());
    t.model->SetOptions({true, true, true});
    t.Await();
    EXPECT_TRUE(t.model->Rows().Differences().AreSame());
    EXPECT_EQ(t.Rows(), "1=1 2=2 =3");
    t.Begin();
    EXPECT_EQ(t.model->Options(), (CompareOptions{true, true, true}));
    t.document->ReplaceText(Text(u"A\0B", 3));
    t.Await();
    EXPECT_TRUE(t.model->IsBinary());
    EXPECT_EQ(t.model->Rows().Count(), 0);
}

TEST(CompareModelTest, WhatCannotBeReadIsRefused)
{
    TestProgram t;
    auto& services = t.program.Services();
    const auto refused = [&](mvDocument& of) { return FailureOf([&] { StoredTextOf(services, of); }); };
    EXPECT_EQ(refused(*t.New())->description, u"NewItem1 has not been saved yet.");
    const auto document = t.StoreAndOpen(kMain, u"text");
    t.Store().readFailure = Error{error_number::kStorage, u"Broken"};
    EXPECT_EQ(refused(*document)->description, u"Broken");
    t.Store().readFailure.reset();
    t.Store().items.erase(kMain);
    EXPECT_EQ(refused(*document)->description, u"\"<BP MAIN>\" does not exist.");
    EXPECT_EQ(FailureOf([&] { CommittedTextOf(*document); })->number, error_number::kFileNotFound);
}

/// Each call to it is a wait that the user has to cancel, or one more question for a password.
struct HangingItem : FakeItem {
    using FakeItem::FakeItem;
    bool IsItem() override { return true; }
    bool Exists() override { return ++waits > 0; }
    Text ReadItem(int32_t, int32_t, int32_t) override
    {
        ++waits;
        throw Error(number, u"It was not read.");
    }
    int32_t number = 0;
    int32_t waits = 0;
};

TEST(CompareModelTest, AHostIsAskedOnce)
{
    TestProgram t;
    for (const int32_t number : {error_number::kDeviceUnavailable, error_number::kPathNotFound}) {
        const auto item = std::make_shared<HangingItem>(t.Store(), kMain);
        item->number = number;
        EXPECT_EQ(FailureOf([&] { TextOfItem(t.program.Services(), item); })->number, number);
        EXPECT_EQ(item->waits, 1);
    }
}

} // namespace nib::test::compare_test
