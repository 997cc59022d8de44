#include "hosts/picker/PickerModel.h"

#include "fakes/FakeBrowser.h"
#include "hosts/picker/PickerList.h"

#include <gtest/gtest.h>

namespace nib::picker_model_test {

using Outcome = PickerModel::Outcome;

constexpr TextView kBp{u"mvdb:LIVE/SALES/BP"};
constexpr TextView kHome{u"file:/home/ann"};

SelectRequest Request(TextView mode)
{
    SelectRequest request;
    request.mode = mode;
    return request;
}

struct PickerModelTest : testing::Test {
    PickerModelTest() { FillWithSample(browser); }

    PickerModel At(SelectRequest request, TextView start)
    {
        PickerModel model(std::move(request), browser);
        model.Start(start);
        return model;
    }
    static std::string Rows(const PickerModel& model)
    {
        std::vector<Text> names;
        for (int32_t row = 0; row < model.List().RowCount(); ++row) names.push_back(model.List().Row(row).name);
        std::string all;
        for (const Text& name : names) all += (all.empty() ? "" : " ") + ToUtf8(name);
        return all;
    }

    FakeBrowser browser;
};

TEST_F(PickerModelTest, StartsAtTheNearestPlaceThatCanBeRead)
{
    browser.denied.insert(u"file:/home/ann/work");
    const std::tuple<TextView, bool, TextView, TextView, bool> cases[] = {
        {u"", false, u"", u"", false},
        {kBp, false, kBp, u"", false},
        {u"mvdb:LIVE/SALES/BP/MAIN", false, kBp, u"", false},
        {u"mvdb:LIVE/SALES/BP/MAIN", true, kBp, u"MAIN", false},
        {u"mvdb:LIVE/SALES/BP/NEW%2FONE", true, kBp, u"NEW/ONE", false},
        {u"mvdb:LIVE/SALES/GONE", false, u"mvdb:LIVE/SALES", u"", true},
        {u"mvdb:DOWN/SALES/BP", false, u"", u"", true},
        {u"file:/home/ann/plain", false, kHome, u"", false},
        {u"file:/home/ann/work", false, kHome, u"", true},
        {u"file:/home/ann/gone/deeper/x", true, kHome, u"x", true}};
    for (const auto& [start, named, place, name, message] : cases) {
        SCOPED_TRACE(ToUtf8(start));
        SelectRequest request = Request(u"Open");
        request.startNamed = named;
        const PickerModel model = At(request, start);
        EXPECT_EQ(model.Place(), place);
        EXPECT_EQ(model.Name(), name);
        EXPECT_EQ(!model.Message().empty(), message) << ToUtf8(model.Message());
    }
}

TEST_F(PickerModelTest, OkOnTypedNames)
{
    struct Case {
        const char* why;
        TextView mode, place, typed;
        Outcome outcome;
        std::vector<Text> paths; ///< the answer, or the new place
        bool mustExist = false;
        bool several = false;
    };
    const Case cases[] = {
        {"an item", u"Open", kBp, u"MAIN", Outcome::Answers, {u"mvdb:LIVE/SALES/BP/MAIN"}},
        {"a new item is the document's affair", u"Open", kBp, u"NEW", Outcome::Answers, {u"mvdb:LIVE/SALES/BP/NEW"}},
        {"unless it must exist", u"Import", kBp, u"NEW", Outcome::Stays, {}, true},
        {"it does exist", u"Import", kBp, u"MAIN", Outcome::Answers, {u"mvdb:LIVE/SALES/BP/MAIN"}, true},
        {"a file of the account is gone into", u"Open", u"mvdb:LIVE/SALES", u"BP", Outcome::Moves, {Text(kBp)}},
        {"a folder too", u"Save", kHome, u"work/", Outcome::Moves, {u"file:/home/ann/work"}},
        {"up", u"Open", kBp, u"..", Outcome::Moves, {u"mvdb:LIVE/SALES"}},
        {"whole paths", u"Open", kBp, u"/home/ann/work/a.bas", Outcome::Answers, {u"file:/home/ann/work/a.bas"}},
        {"the root", u"Open", kBp, u"/", Outcome::Moves, {u"file:/"}},
        {"no such folder", u"Save", kHome, u"gone/x", Outcome::Stays, {}},
        {"no place yet", u"Open", u"", u"MAIN", Outcome::Stays, {}},
        {"only blanks", u"Open", kBp, u"   ", Outcome::Stays, {}},
        {"the extension", u"Export", kHome, u"list", Outcome::Answers, {u"file:/home/ann/list.txt"}},
        {"has one", u"Export", kHome, u"list.lst", Outcome::Answers, {u"file:/home/ann/list.lst"}},
        {"exists without one", u"Export", kHome, u"plain", Outcome::Answers, {u"file:/home/ann/plain"}},
        {"exists with one", u"Import", kHome, u"notes", Outcome::Answers, {u"file:/home/ann/notes.txt"}, true},
        {"no extension at a host", u"Export", kBp, u"OUT", Outcome::Answers, {u"mvdb:LIVE/SALES/BP/OUT"}},
        {"several",
         u"Open",
         kBp,
         u"\"MAIN\" \"A B\"",
         Outcome::Answers,
         {u"mvdb:LIVE/SALES/BP/MAIN", u"mvdb:LIVE/SALES/BP/A B"},
         false,
         true},
        {"no place among several", u"Open", kHome, u"\"plain\" \"work\"", Outcome::Stays, {}, false, true}};
    for (const Case& row : cases) {
        SCOPED_TRACE(row.why);
        SelectRequest request = Request(row.mode);
        request.mustExist = row.mustExist;
        request.several = row.several;
        if (request.mode == u"Export" || request.mode == u"Import") request.extension = u"txt";
        PickerModel model = At(request, row.place);
        model.TypeName(row.typed);
        ASSERT_EQ(model.Accept(), row.outcome) << ToUtf8(model.Message());
        EXPECT_EQ(model.Answer().paths, row.outcome == Outcome::Answers ? row.paths : std::vector<Text>());
        EXPECT_EQ(model.Place(), row.outcome == Outcome::Moves ? TextView(row.paths.front()) : row.place);
        EXPECT_EQ(model.Message().empty(), row.outcome != Outcome::Stays || Trim(row.typed).empty());
    }
}

TEST_F(PickerModelTest, AFolderThatMayNotBeListedStillGivesItsFiles)
{
    browser.denied.insert(u"file:/home/ann/work");
    SelectRequest request = Request(u"Open");
    request.mustExist = true;
    PickerModel model = At(request, kHome);
    model.TypeName(u"/home/ann/work/a.bas");
    EXPECT_EQ(model.Accept(), Outcome::Answers);
}

TEST_F(PickerModelTest, SelectionFillsTheNameAndTypingEndsTheSelection)
{
    SelectRequest request = Request(u"Open");
    request.several = true;
    PickerModel model = At(request, kBp);
    EXPECT_FALSE(model.CanAccept());
    model.SelectRows({0, 2});
    EXPECT_EQ(model.Name(), u"\"MAIN\" \"CUST*1\"");
    ASSERT_EQ(model.Accept(), Outcome::Answers);
    EXPECT_EQ(model.Answer().paths, (std::vector<Text>{u"mvdb:LIVE/SALES/BP/MAIN", u"mvdb:LIVE/SALES/BP/CUST*1"}));

    model.TypeName(u"MAIN2");
    EXPECT_TRUE(model.SelectedRows().empty());
    ASSERT_EQ(model.Accept(), Outcome::Answers);
    EXPECT_EQ(model.Answer().paths, (std::vector<Text>{u"mvdb:LIVE/SALES/BP/MAIN2"}));

    model.SelectRows({1});
    model.SetFilter(u"cust");
    EXPECT_FALSE(model.CanAccept()) << "what is filtered out is not opened";
    EXPECT_EQ(model.AcceptFilter(), Outcome::Answers);
    EXPECT_EQ(model.Answer().paths, (std::vector<Text>{u"mvdb:LIVE/SALES/BP/CUST*1"}));
}

TEST_F(PickerModelTest, ANameForSavingOutlivesTheWayThroughFolders)
{
    PickerModel model = At(Request(u"Save"), kHome);
    EXPECT_EQ(model.AcceptCaption(), u"&Save");
    model.TypeName(u"report.txt");
    model.SelectRows({model.List().RowOf(model.List().Find(u"file:/home/ann/work"))});
    EXPECT_EQ(model.AcceptCaption(), u"&Open");
    ASSERT_EQ(model.Accept(), Outcome::Moves);
    EXPECT_EQ(model.AcceptCaption(), u"&Save");
    ASSERT_EQ(model.Accept(), Outcome::Answers);
    EXPECT_EQ(model.Answer().paths, (std::vector<Text>{u"file:/home/ann/work/report.txt"}));
}

TEST_F(PickerModelTest, MovesUpBackAndStaysWhereAPlaceCannotBeRead)
{
    PickerModel model = At(Request(u"Open"), kBp);
    ASSERT_EQ(model.Trail().size(), 3U);
    EXPECT_EQ(model.Trail()[0].name, u"LIVE");
    EXPECT_FALSE(model.CanGoBack());
    model.GoUp();
    EXPECT_EQ(model.Place(), u"mvdb:LIVE/SALES");
    EXPECT_EQ(model.SelectedRows(), (std::vector<int32_t>{0})) << "the place left is selected";
    browser.denied.insert(u"mvdb:LIVE/SALES/VOC");
    EXPECT_FALSE(model.GoTo(u"mvdb:LIVE/SALES/VOC"));
    EXPECT_EQ(model.Place(), u"mvdb:LIVE/SALES");
    EXPECT_FALSE(model.Message().empty());
    model.GoBack();
    EXPECT_EQ(model.Place(), kBp);
    EXPECT_TRUE(model.Message().empty());
    browser.Remove(kBp);
    model.Refresh();
    EXPECT_EQ(model.List().RowCount(), 0);
    EXPECT_FALSE(model.Message().empty());
    for (int i = 0; i < 3; ++i) model.GoUp();
    EXPECT_EQ(Rows(model), "LIVE ann /");
    EXPECT_FALSE(model.CanGoUp());
}

TEST_F(PickerModelTest, FilterHiddenAndOrder)
{
    browser.At(u"mvdb:LIVE/SALES/BP/MAIN").size = 30;
    browser.At(u"mvdb:LIVE/SALES/BP/MAIN2").size = 10;
    browser.At(u"mvdb:LIVE/SALES/BP/CUST*1").size = 20;
    PickerModel model = At(Request(u"Open"), kBp);
    const std::pair<TextView, const char*> cases[] = {
        {u"main", "MAIN MAIN2"}, {u"MAIN?", "MAIN2"}, {u"t*1", "CUST*1"}, {u"a*n2", "MAIN2"}, {u"*n", "MAIN"},
        {u"ma*", "MAIN MAIN2"},  {u"n?", "MAIN2"},    {u"zzzz", ""},      {u"ain*", ""}};
    for (const auto& [filter, rows] : cases) {
        model.SetFilter(filter);
        EXPECT_EQ(Rows(model), rows) << ToUtf8(filter);
        EXPECT_EQ(model.List().EmptyText().empty(), model.List().RowCount() > 0);
    }
    for (TextView all : {u" ", u""}) EXPECT_EQ((model.SetFilter(all), Rows(model)), "MAIN MAIN2 CUST*1");
    model.SortBy(PickerList::Column::Size, false);
    EXPECT_EQ(Rows(model), "MAIN2 CUST*1 MAIN");
    model.SortBy(PickerList::Column::Size, true);
    EXPECT_EQ(Rows(model), "MAIN CUST*1 MAIN2");
    EXPECT_TRUE(model.List().Shows(PickerList::Column::Size));
    EXPECT_FALSE(model.List().Shows(PickerList::Column::Modified));

    model.SortBy(PickerList::Column::Name, false);
    model.GoTo(kHome);
    EXPECT_EQ(Rows(model), "work notes.txt plain") << "places first";
    model.SetShowHidden(true);
    EXPECT_EQ(Rows(model), "work notes.txt plain .profile");
    EXPECT_FALSE(model.List().Shows(PickerList::Column::LockedBy));
}

TEST_F(PickerModelTest, LocksAreAskedOncePerRowInSight)
{
    browser.locks[u"mvdb:LIVE/SALES/BP/MAIN2"] = u"bob";
    PickerModel model = At(Request(u"Open"), kBp);
    EXPECT_EQ(browser.lockQuestions, 0);
    EXPECT_EQ(model.AskNextLock(1, 5), 1);
    EXPECT_EQ(model.List().Row(1).lockedBy, u"bob");
    EXPECT_EQ(model.AskNextLock(1, 5), 2);
    EXPECT_EQ(model.AskNextLock(1, 5), -1);
    EXPECT_EQ(model.AskNextLock(0, 5), 0);
    model.SetFilter(u"main");
    EXPECT_EQ(model.AskNextLock(0, 5), -1) << "a filter asks nothing again";
    EXPECT_EQ(browser.lockQuestions, 3);
}

TEST_F(PickerModelTest, ManySelectedAreCounted)
{
    for (int i = 0; i < 5000; ++i) browser.Add(u"mvdb:LIVE/SALES/BIG/" + Decimal(i));
    SelectRequest request = Request(u"Open");
    request.several = true;
    PickerModel model = At(request, u"mvdb:LIVE/SALES/BIG");
    std::vector<int32_t> all;
    for (int32_t row = 0; row < model.List().RowCount(); ++row) all.push_back(row);
    model.SelectRows(all);
    EXPECT_TRUE(model.Name().empty());
    EXPECT_EQ(model.NameHint(), u"5000 selected");
    ASSERT_EQ(model.Accept(), Outcome::Answers);
    EXPECT_EQ(model.Answer().paths.size(), 5000U);
}

TEST(TypedNames, Split)
{
    const std::tuple<TextView, bool, std::vector<Text>> cases[] = {{u" A B ", true, {u"A B"}},
                                                                   {u"\"A B\"", false, {u"A B"}},
                                                                   {u"\"A\" \"B C\"", false, {u"\"A\" \"B C\""}},
                                                                   {u"\"A\" B  \"C D", true, {u"A", u"B", u"C D"}},
                                                                   {u"\"\" \"\"", true, {}},
                                                                   {u"\"", true, {}},
                                                                   {u"", true, {}}};
    for (const auto& [typed, several, names] : cases)
        EXPECT_EQ(SplitTypedNames(typed, several), names) << ToUtf8(typed);
    const std::vector<Text> several{u"A", u"B C"};
    EXPECT_EQ(SplitTypedNames(JoinTypedNames(several), true), several);
}

TEST(PlaceName, LastLevel)
{
    const std::pair<TextView, TextView> cases[] = {{u"file:/", u"/"},           {u"file:/home/a:b%20", u"a:b%20"},
                                                   {u"mvdb:LIVE", u"LIVE"},     {u"mvdb:LIVE/A%20B", u"A B"},
                                                   {u"mvdb:L/A/100%", u"100%"}, {u"", u""}};
    for (const auto& [path, name] : cases) EXPECT_EQ(PlaceName(path), name) << ToUtf8(path);
}

TEST(PlaceTree, ReadsLevelByLevelAndLeadsToAPlace)
{
    FakeBrowser browser;
    FillWithSample(browser);
    PlaceTree tree(browser);
    EXPECT_EQ(browser.listings, 0);
    ASSERT_EQ(tree.Root().children.size(), 2U);
    const PlaceTree::Node* node = &tree.Root();
    for (const Text& step : tree.WayTo(kBp)) {
        if (!node->read) tree.Adopt(*node, tree.Read(*node));
        node = PlaceTree::Child(*node, step);
        ASSERT_TRUE(node) << ToUtf8(step);
    }
    EXPECT_EQ(node->kind, PlaceTree::Kind::File);
    EXPECT_FALSE(PlaceTree::MayHaveChildren(*node));
    EXPECT_EQ(browser.listings, 2);
    EXPECT_EQ(tree.WayTo(u"file:/home/ann/work"), (std::vector<Text>{u"file:/home/ann", u"file:/home/ann/work"}));
    EXPECT_EQ(tree.WayTo(u"file:/etc"), (std::vector<Text>{u"file:/", u"file:/etc"}));
    EXPECT_TRUE(tree.WayTo(u"mvdb:OTHER/X").empty());
}

} // namespace nib::picker_model_test
