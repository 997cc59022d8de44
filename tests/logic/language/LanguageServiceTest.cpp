#include "fakes/MemoryReader.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nib::test::language_service_test {

const MemoryItems kAccount{
    {u"BP",
     {{u"MAIN", u"* Totals.\nPROGRAM MAIN\n$INCLUDE BP SHARED.INC\nDIM CELL(12)\n* What is owed.\nTOTAL = 0\n"
                u"GOSUB ADD.UP\nCALL PRICE(TOTAL, RATE, \"A|B\")\nCELL(1) = TOTAL; PRINT CELL(1):GEN.USER\nSTOP\n"
                u"ADD.UP:\nTOTAL += 1\nRETURN\nEND\n"},
      {u"PRICE", u"SUBROUTINE PRICE(AMOUNT, BY, KIND)\n* Works out a price.\nAMOUNT = AMOUNT * BY:KIND\nRETURN\nEND\n"},
      {u"OPEN.ENDED", u"SUBROUTINE OPEN.ENDED(A, B) VAR.ARGS\nA = B\nRETURN\nEND\n"},
      {u"OTHER",
       u"PROGRAM OTHER\n$INCLUDE BP SHARED.INC\nGEN.USER = \"me\"\nA = 1\nCALL PRICE(A, 2, 3)\nPRINT A\nEND\n"},
      {u"SHARED.INC", u"* Shared.\nCOMMON /GEN/ GEN.USER, GEN.LIST(10)\nEQU RATE TO 3\n"}}},
    {u"DATA", {{u"C1", u"SMITH\n12 HIGH STREET"}}},
    {u"VOC", {{u"BP", u"F\nBP"}, {u"CENTRAL", u"V\nCS\nELSEWHERE.BP.OUT/CENTRAL"}}}};

/// A program and what is told of it; "code@line" from 1.
struct FindingCase {
    const char16_t* program;
    const char16_t* expected;
};

TEST(LanguageService, TellsWhatOnlyTheAccountKnows)
{
    const FindingCase cases[] = {
        {u"CALL PRICE(A)", u"argument-count@4"},
        {u"CALL PRICE(A, 1, 2)", u""},
        {u"CALL price(A, 1)", u"argument-count@4"},
        {u"DEFFUN PRICE(B, C); PRINT PRICE(A, 1)", u""}, // the first parameter is the value
        {u"DEFFUN PRICE(B, C); PRINT PRICE(A)", u"argument-count@4"},
        {u"CALL OPEN.ENDED(A)", u""},
        {u"CALL OPEN.ENDED(A, A, A)", u"argument-count@4"},
        {u"CALL NOWHERE(A)", u"unknown-call@4"},
        {u"CALL CENTRAL(A)", u""}, // VOC knows it
        {u"CALL !NOWHERE(A)", u""},
        {u"CALL NOWHERE(A) ;* nib: ignore unknown-call", u""},
        {u"COMMON /GEN/ X, Y(10)", u""},
        {u"COMMON /GEN/ X, Y(12)", u"common-shape@4"},
        {u"COMMON /GEN/ X", u"common-shape@4"},
        {u"COMMON /MINE/ X", u""},
    };
    for (const FindingCase& one : cases) {
        MemoryItems items = kAccount;
        items[u"BP"][u"NEW"] = u"PROGRAM NEW\nA = 1\nPRINT A\n" + Text(one.program) + u"\nEND\n";
        ServedItems served(items);
        served.Open(u"BP", u"NEW");
        Text told;
        for (const ProgramFinding& finding : served.service.Findings(ServedItems::Path(u"BP", u"NEW")))
            told += (told.empty() ? u"" : u" ") + finding.code + u"@" + Decimal(finding.at.start.line + 1);
        EXPECT_EQ(told, one.expected) << ToUtf8(one.program);
    }
}

TEST(LanguageService, AnAccountMaySilenceFindings)
{
    MemoryItems items = kAccount;
    items[u"VOC"][u"NIB"] = u"Rules\r\n\r\n\r\n\r\n\r\n\r\nignore=argument-count\r\n";
    items[u"BP"][u"NEW"] = u"CALL PRICE(1)\nCALL NOWHERE\n";
    ServedItems served(items, {nullptr, {}, {u"UNKNOWN-CALL"}});
    served.Open(u"BP", u"NEW");
    EXPECT_TRUE(served.service.Findings(ServedItems::Path(u"BP", u"NEW")).empty());
}

/// Where "|" stands in an item, and all places of the name there: "ITEM:line" from 1.
struct PlaceCase {
    const char16_t* item;
    const char16_t* from; ///< text that the caret stands at the beginning of
    const char16_t* definition;
    const char16_t* references;
};

Text Places(const std::vector<PathRange>& ranges)
{
    Text text;
    for (const PathRange& one : ranges)
        text += (text.empty() ? u"" : u" ") + one.path.substr(one.path.rfind(u'/') + 1) + u":" +
                Decimal(one.range.start.line + 1);
    return text;
}

TEST(LanguageService, FollowsNamesThroughTheAccount)
{
    const PlaceCase cases[] = {
        {u"MAIN", u"TOTAL = 0", u"MAIN:6", u"MAIN:6 MAIN:8 MAIN:9 MAIN:12"},
        {u"MAIN", u"ADD.UP\n", u"MAIN:11", u"MAIN:7 MAIN:11"},
        {u"MAIN", u"GEN.USER", u"SHARED.INC:2", u"MAIN:9 OTHER:3 SHARED.INC:2"},
        {u"MAIN", u"RATE", u"SHARED.INC:3", u"MAIN:8 SHARED.INC:3"},
        {u"SHARED.INC", u"GEN.USER", u"SHARED.INC:2", u"MAIN:9 OTHER:3 SHARED.INC:2"},
        {u"MAIN", u"PRICE", u"PRICE:1", u"MAIN:8 OTHER:5 PRICE:1"},
        {u"PRICE", u"PRICE", u"PRICE:1", u"MAIN:8 OTHER:5 PRICE:1"},
        {u"PRICE", u"AMOUNT * ", u"PRICE:1", u"PRICE:1 PRICE:3 PRICE:3"},
        {u"MAIN", u"SHARED.INC", u"SHARED.INC:1", u"MAIN:3 OTHER:2"},
    };
    for (const PlaceCase& one : cases) {
        MemoryItems items = kAccount;
        Text& text = items[u"BP"][one.item];
        std::erase(text, u'|');
        text.insert(text.find(one.from), 1, u'|');
        ServedItems served(kAccount);
        served.items = items;
        const Position at = served.Open(u"BP", one.item);
        const Text path = ServedItems::Path(u"BP", one.item);
        EXPECT_EQ(Places(served.service.Definition(path, at)), one.definition) << ToUtf8(one.from);
        EXPECT_EQ(Places(served.service.References(path, at, true)), one.references) << ToUtf8(one.from);
    }
}

TEST(LanguageService, RenamesWhereverANameReaches)
{
    struct Case {
        const char16_t* item;
        const char16_t* from;
        const char16_t* name;
        const char16_t* result; ///< places, or why it is refused
    };
    const Case cases[] = {
        {u"MAIN", u"TOTAL = 0", u"SUM.ALL", u"MAIN:6 MAIN:8 MAIN:9 MAIN:12"},
        {u"MAIN", u"GEN.USER", u"GEN.WHO", u"MAIN:9 OTHER:3 SHARED.INC:2"},
        {u"PRICE", u"PRICE", u"PRICE.OF", u"MAIN:8 OTHER:5 PRICE:1"},
        {u"MAIN", u"ADD.UP\n", u"100", u"MAIN:7 MAIN:11"},
        {u"MAIN", u"TOTAL = 0", u"100", u"100 is no name."},
        {u"MAIN", u"TOTAL = 0", u"PRINT", u"PRINT is a word of the language."},
        {u"MAIN", u"TOTAL = 0", u"cell", u"BP MAIN has a name cell already."},
        {u"MAIN", u"GEN.USER", u"A", u"BP OTHER has a name A already."},
        {u"MAIN", u"PRICE", u"OTHER", u"There is a program OTHER already."},
        {u"MAIN", u"SHARED.INC", u"X", u"There is no name here."},
        {u"MAIN", u"STOP", u"X", u"There is no name here."},
    };
    for (const Case& one : cases) {
        MemoryItems items = kAccount;
        Text& text = items[u"BP"][one.item];
        std::erase(text, u'|');
        text.insert(text.find(one.from), 1, u'|');
        ServedItems served(kAccount);
        served.items = items;
        const Position at = served.Open(u"BP", one.item);
        const RenamePlan plan = served.service.Rename(ServedItems::Path(u"BP", one.item), at, one.name);
        std::vector<PathRange> ranges;
        for (const PathEdit& edit : plan.edits)
            for (const auto& range : edit.edits) ranges.push_back({edit.path, range.range, {}});
        EXPECT_EQ(plan.refusal.empty() ? Places(ranges) : plan.refusal, one.result)
            << ToUtf8(one.from) << " " << ToUtf8(one.name);
    }
}

TEST(LanguageService, OffersWhatMayFollow)
{
    struct Case {
        const char16_t* line;
        const char16_t* first;  ///< of the list, comes first
        const char16_t* absent; ///< is not offered
    };
    const Case cases[] = {
        {u"TOT|", u"TOTAL", u"PRICE"},
        {u"X = tot|", u"TOTAL", u"PRINT"},
        {u"GOSUB A|", u"ADD.UP", u"AMOUNT"},
        {u"GOTO |", u"ADD.UP", u"TOTAL"},
        {u"CALL PR|", u"PRICE", u"PRINT"},
        {u"OPEN \"DA|", u"DATA", u"DATE"},
        {u"$INCLUDE BP SH|", u"SHARED.INC", u"PRINT"},
        {u"wri|", u"write", u"WRITE"},
        {u"X = GEN.|", u"GEN.USER", u"GOSUB"},
        {u"X = 1 ;* TOT|", u"", u"TOTAL"},
        {u"X = \"TOT|", u"", u"TOTAL"},
        {u"FOR I = 1 TO 3\n|", u"NEXT I", u"RATE("},
        {u"  IF TOTAL THEN\n  E|", u"END", u""},
    };
    for (const Case& one : cases) {
        MemoryItems items = kAccount;
        Text& text = items[u"BP"][u"MAIN"];
        std::erase(text, u'|');
        text.insert(text.find(u"STOP"), Text(one.line) + u"\n");
        ServedItems served(kAccount);
        served.items = items;
        const Position at = served.Open(u"BP", u"MAIN");
        const Completions found = served.service.Complete(ServedItems::Path(u"BP", u"MAIN"), at);
        EXPECT_EQ(found.best.empty() ? u"" : found.best.front().label, one.first) << ToUtf8(one.line);
        EXPECT_TRUE(std::none_of(found.best.begin(), found.best.end(), [&](const Completion& what) {
            return what.label == one.absent;
        })) << ToUtf8(one.line);
    }
}

TEST(LanguageService, HelpsWithWordsAndParameters)
{
    ServedItems served(kAccount);
    const Position at = served.Open(u"BP", u"MAIN");
    const Text path = ServedItems::Path(u"BP", u"MAIN");
    const auto hover = [&](Position where) {
        const auto help = served.service.Hover(path, where);
        return help ? help->form + u"|" + help->help : Text();
    };
    EXPECT_EQ(hover({1, 11}), u"TOTAL = 0|What is owed.");
    EXPECT_EQ(hover({6, 7}), u"SUBROUTINE PRICE(AMOUNT, BY, KIND)|Works out a price.\nBP PRICE");
    EXPECT_TRUE(hover({17, 8}).starts_with(u"PRINT"));
    const auto signature = served.service.Signature(path, at);
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->form, u"PRICE(AMOUNT, BY, KIND)");
    EXPECT_EQ(signature->active, 2);
    EXPECT_EQ(signature->parameters, (std::vector<std::pair<int32_t, int32_t>>{{6, 12}, {14, 16}, {18, 22}}));
}

TEST(LanguageService, FindsNamesByTheirLetters)
{
    ServedItems served(kAccount);
    const auto names = [&](const Text& query) {
        Text text;
        for (const FoundSymbol& found : served.service.Find(query, 3)) text += found.name + u" ";
        return text;
    };
    EXPECT_EQ(names(u"pri"), u"PRICE ");
    EXPECT_EQ(names(u"si"), u"SHARED.INC ");
    EXPECT_EQ(names(u"@au"), u"ADD.UP ");
    EXPECT_EQ(names(u"zzz"), u"");
}

TEST(LanguageService, AFileIsOneOfProgramsWhenOneOfThemIsOpenedBeforeOrAfterItIsLookedAt)
{
    MemoryItems items = kAccount;
    for (int32_t i = 0; i < 200; ++i) items[u"MIXED"][u"A" + Decimal(1000 + i)] = u"a note";
    items[u"MIXED"][u"FIRST"] = items[u"MIXED"][u"SECOND"] = u"PROGRAM P\nPRINT 1\nEND\n";
    const auto second = [](LanguageService& service) { return service.Find(u"SECOND", 10).size(); };
    const Text path = ServedItems::Path(u"MIXED", u"FIRST");
    const std::vector<Text> lines = Split(items[u"MIXED"][u"FIRST"], u'\n');

    ServedItems served(items);
    EXPECT_EQ(second(served.service), 0U) << "nobody knows it by its first items";
    served.service.Open(path, lines);
    while (served.service.Work()) continue;
    EXPECT_EQ(second(served.service), 1U);

    LanguageService early{{served.dialects.Find(u"common"), {}}};
    early.Open(path, lines);
    AccountAccess access;
    access.reader = std::make_unique<MemoryReader>(served.items);
    early.AddAccount(u"mvdb:*/DEMO", std::move(access));
    while (early.Work()) continue;
    EXPECT_EQ(second(early), 1U);
}

TEST(LanguageService, AnOpenTextHidesWhatIsStored)
{
    ServedItems served(kAccount);
    served.Open(u"BP", u"MAIN");
    served.Open(u"BP", u"PRICE");
    const auto codes = [&] {
        Text text;
        for (const ProgramFinding& finding : served.service.Findings(ServedItems::Path(u"BP", u"MAIN")))
            text += finding.code;
        return text;
    };
    EXPECT_EQ(codes(), u"");
    served.service.Change(ServedItems::Path(u"BP", u"PRICE"), 0, 1, {u"SUBROUTINE PRICE(AMOUNT, BY)"});
    EXPECT_EQ(codes(), u"argument-count");
    served.service.Change(ServedItems::Path(u"BP", u"MAIN"), 7, 1, {u"CALL PRICES(TOTAL, RATE)"});
    EXPECT_EQ(codes(), u"unknown-call");
    served.service.Change(ServedItems::Path(u"BP", u"PRICE"), 0, 1, {u"SUBROUTINE PRICES(AMOUNT, BY)"});
    EXPECT_EQ(codes(), u"");
    served.service.Change(ServedItems::Path(u"BP", u"MAIN"), 7, 1, {u"CALL PRICE(TOTAL, RATE, 3)"});
    served.service.Close(ServedItems::Path(u"BP", u"PRICE"));
    EXPECT_EQ(codes(), u"");
    served.Open(u"BP", u"SHARED.INC");
    served.service.Change(ServedItems::Path(u"BP", u"SHARED.INC"), 1, 1, {u"COMMON /GEN/ GEN.WHO, GEN.LIST(10)"});
    EXPECT_EQ(codes(), u"unset-variable");
}

} // namespace nib::test::language_service_test
