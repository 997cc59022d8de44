// Whatever is searched or replaced, in any scope, direction and rule, equals what a plain search by hand gives.

#include "fakes/FakeSearch.h"
#include "fakes/PlainSearch.h"

#include <random>

namespace nib::test::walk_property_test {

using Scope = PlainSearch::Scope;
using Hits = std::vector<std::pair<size_t, Position>>;

/// Three documents of random text with the second one in front, and the same by hand.
class AnySearch {
public:
    explicit AnySearch(unsigned seed) : random_(seed)
    {
        for (int i = 0; i < 3; ++i) documents.push_back(&search.Add(RandomText()));
        std::rotate(documents.begin(), documents.begin() + 1, documents.end());
        Front().Activate();
        for (mvDocument* document : documents) plain.texts.push_back(LinesOf(*document));
        plain.scope = static_cast<Scope>(Pick(3));
        plain.up = Pick(2) == 1;
        plain.matchCase = Pick(2) == 1;
        plain.wholeWord = Pick(3) == 0;
        plain.find = RandomPart(1, 3);
        with = RandomPart(0, 4);
        search.Settings().SearchEOD = static_cast<int16_t>(Pick(3));
        caret = RandomPlace();
        other = RandomPlace();
        if (plain.scope == Scope::Selection && caret == other) plain.scope = Scope::Document;
    }

    mvDocument& Front() { return *documents.front(); }
    /// The dialog comes up and is filled in, and the search by hand begins where that does.
    void Open(bool replace, bool fromCaret)
    {
        bool selected = plain.scope == Scope::Selection;
        search.Select(Front(), selected ? other : caret, caret);
        search.engine.SetSearchUp(plain.up);
        replace ? search.OpenReplace(plain.find, with) : search.OpenFind(plain.find);
        if (replace) plain.up = false;
        FindDialog& dialog = search.Dialog();
        dialog.lookIn = selected                         ? LookIn::Selection
                        : plain.scope == Scope::Document ? LookIn::Document
                                                         : LookIn::AllDocuments;
        dialog.matchCase = plain.matchCase;
        dialog.wholeWord = plain.wholeWord;
        if (selected)
            plain.InSelection(std::min(caret, other), std::max(caret, other));
        else
            fromCaret ? plain.FromCaret(caret) : plain.Whole();
    }
    /// The next hit by hand; what the program will ask on its way gets its answer.
    bool Next()
    {
        return plain.Next([&] {
            if (search.Settings().SearchEOD != 0) return true;
            bool goOn = Pick(4) > 0;
            search.program.boxes.Answer({goOn ? message_box::kAnswerYes : message_box::kAnswerNo});
            return goOn;
        });
    }
    std::vector<std::vector<Text>> Texts()
    {
        std::vector<std::vector<Text>> texts;
        for (mvDocument* document : documents) texts.push_back(LinesOf(*document));
        return texts;
    }

    TestSearch search;
    std::vector<mvDocument*> documents; ///< the one in front, then as their turn comes
    PlainSearch plain;
    Text with;
    Position caret;
    Position other;

private:
    size_t Pick(size_t below) { return random_() % below; }
    Text RandomPart(size_t least, size_t most)
    {
        Text part;
        for (size_t n = least + Pick(most - least + 1); n > 0; --n)
            part += u"aaAbB-.\u00E9\u00C9\u0416\u0436k\u212A"[Pick(13)];
        return part;
    }
    Text RandomText()
    {
        Text text;
        for (size_t n = Pick(40); n > 0; --n) text += Pick(6) == 0 ? Text(u"\r\n") : RandomPart(1, 1);
        return text;
    }
    std::vector<Text> LinesOf(mvDocument& document)
    {
        std::vector<Text> lines;
        for (int32_t i = 0; i < search.View(document).Document().LineCount(); ++i)
            lines.push_back(search.Line(document, i));
        return lines;
    }
    Position RandomPlace()
    {
        auto line = Pick(plain.texts[0].size());
        return {static_cast<int32_t>(Pick(plain.texts[0][line].size() + 1)), static_cast<int32_t>(line)};
    }

    std::mt19937 random_;
};

constexpr unsigned kRounds = 600;

TEST(WalkPropertyTest, Steps)
{
    for (unsigned round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        AnySearch any(round);
        any.Open(false, true);
        // A first step from text that is the match already goes on to the next one.
        if (any.plain.scope == Scope::Selection) any.search.Select(any.Front(), any.caret, any.other);
        for (int step = 0; step < 200; ++step) {
            bool found = any.Next();
            Position start = any.plain.hit;
            Position end{start.col + any.plain.Size(), start.line};
            Position first = std::min(any.caret, any.other);
            if (found && step == 0 && any.plain.scope == Scope::Selection && start == first &&
                end == std::max(any.caret, any.other)) {
                found = any.Next();
                start = any.plain.hit;
                end = {start.col + any.plain.Size(), start.line};
            }
            ASSERT_EQ(any.search.engine.FindNext(), found);
            if (!found) break;
            if (any.plain.up) std::swap(start, end);
            mvDocument& document = *any.documents[any.plain.text];
            ASSERT_EQ(any.search.program.window.activeDocument, document.DocumentID());
            ASSERT_EQ(any.search.Selection(document), std::make_pair(start, end)) << step;
        }
        any.search.Said();
    }
}

TEST(WalkPropertyTest, Lists)
{
    for (unsigned round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        AnySearch any(round);
        any.Open(false, false);
        Hits wanted = any.plain.All();
        auto count = static_cast<int32_t>(wanted.size());
        // Whatever steps were taken before, in whatever order.
        const bool stays = any.plain.scope != Scope::Everywhere; // else steps may bring another one to the front
        any.search.Settings().SearchEOD = 2;
        for (unsigned step = 0; stays && step < round % 7; ++step) {
            switch ((round / 7 + step) % 4) {
            case 0: any.search.engine.FindNext(); break;
            case 1: any.search.engine.SetSearchUp(any.plain.up); break;
            case 2: any.search.engine.FindAll(step % 2 ? FindMode::List : FindMode::Bookmark); break;
            default:
                any.search.Dialog().findText = u"a";
                any.search.engine.FindNext();
                any.search.Dialog().findText = any.plain.find;
            }
        }
        auto selection = any.search.Selection(any.Front());
        ASSERT_EQ(any.search.engine.FindAll(FindMode::List), count);
        ASSERT_EQ(any.search.Selection(any.Front()), selection);
        std::vector<Text> lines;
        const std::pair<size_t, Position>* before = nullptr;
        for (auto& hit : wanted) {
            auto [text, at] = hit;
            if (!before) lines.emplace_back(u"= Search Results");
            if (!before || before->first != text) {
                lines.emplace_back();
                lines.push_back(u"# " + any.documents[text]->ListName());
            }
            if (!before || before->first != text || before->second.line != at.line) {
                Text line = any.plain.texts[text][static_cast<size_t>(at.line)];
                line.insert(static_cast<size_t>(at.col + any.plain.Size()), u"]");
                line.insert(static_cast<size_t>(at.col), u"[");
                lines.push_back(u"000" + Decimal(at.line + 1) + u" " + line);
                if (at.line >= 9) lines.back().erase(0, 1);
            }
            before = &hit;
        }
        ASSERT_EQ(any.search.results.lines, lines);
        ASSERT_EQ(any.search.engine.FindAll(FindMode::Bookmark), count);
        for (size_t text = 0; text < any.documents.size(); ++text) {
            auto& document = any.search.View(*any.documents[text]).Document();
            for (int32_t line = 0; line < document.LineCount(); ++line) {
                bool marked = document.GetLineData(line, LineWord::Control) & line_bits::kBookmark;
                ASSERT_EQ(marked, std::any_of(wanted.begin(), wanted.end(),
                                              [&](auto& hit) { return hit.first == text && hit.second.line == line; }));
            }
        }
        any.search.Said();
    }
}

TEST(WalkPropertyTest, ReplaceAll)
{
    for (unsigned round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        AnySearch any(round);
        auto before = any.Texts();
        any.Open(true, true);
        std::vector<int32_t> counts(any.documents.size());
        int32_t count = 0;
        Position end = std::max(any.caret, any.other);
        for (; any.Next(); ++count, ++counts[any.plain.text]) {
            any.plain.Replace(any.with);
            if (any.plain.hit.line == end.line) end.col += static_cast<int32_t>(any.with.size()) - any.plain.Size();
        }
        ASSERT_EQ(any.search.engine.ReplaceAll(), count);
        ASSERT_EQ(any.Texts(), any.plain.texts);
        if (any.plain.scope == Scope::Selection) {
            auto length = static_cast<int32_t>(any.plain.texts[0][static_cast<size_t>(end.line)].size());
            end.col = std::clamp(end.col, 0, length);
            ASSERT_EQ(any.search.Selection(any.Front()), std::make_pair(std::min(any.caret, any.other), end));
        }
        any.search.Said();
        for (size_t text = 0; text < counts.size(); ++text)
            for (int32_t i = 0; i < counts[text]; ++i) any.documents[text]->Undo();
        ASSERT_EQ(any.Texts(), before);
        for (size_t text = 0; text < counts.size(); ++text)
            for (int32_t i = 0; i < counts[text]; ++i) any.documents[text]->Redo();
        ASSERT_EQ(any.Texts(), any.plain.texts);
    }
}

TEST(WalkPropertyTest, ReplaceOneByOne)
{
    for (unsigned round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        AnySearch any(round);
        if (any.plain.scope == Scope::Selection && any.caret.line == any.other.line) any.plain.scope = Scope::Document;
        any.Open(true, true);
        for (bool hit = false;;) {
            if (hit) any.plain.Replace(any.with);
            bool found = any.Next();
            ASSERT_EQ(any.search.engine.ReplaceNext(), found);
            ASSERT_EQ(any.Texts(), any.plain.texts);
            if (!found) break;
            hit = true;
        }
        any.search.Said();
    }
}

} // namespace nib::test::walk_property_test
