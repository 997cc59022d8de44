// Find and Replace through the real dialog: every scope, direction and way to go on at the end, beside a search by
// hand.

#include "SearchFrame.h"
#include "fakes/Patience.h"
#include "fakes/PlainSearch.h"

#include <QClipboard>
#include <QTextBlock>

#include <map>
#include <set>

namespace nib::test {
namespace {

using Scope = PlainSearch::Scope;
using Boxes = std::vector<ShownBox>;

constexpr char16_t kNoMore[] = u"No more occurrences of search text found.";
constexpr char16_t kPastEnd[] = u"Searched past end of document";
constexpr char16_t kAskDown[] =
    u"Search has reached the end of the document. Do you want to continue searching at the beginning?";
constexpr char16_t kAskUp[] =
    u"Search has reached the beginning of the document. Do you want to continue searching at the end?";
const std::map<Scope, Text> kNotFound{{Scope::Selection, u"Search text not found in selection."},
                                      {Scope::Document, u"Search text not found in document."},
                                      {Scope::Everywhere, u"Search text not found in any document."}};
const std::map<Scope, const char*> kScopes{{Scope::Selection, "&Selected text"},
                                           {Scope::Document, "Curr&ent document"},
                                           {Scope::Everywhere, "All &open documents"}};

const Text kFront = u"PRINT print Print.X\r\n\r\nX = print\r\nPRINTER print print\r\nY\r\n  print, print";
const Text kOthers[] = {u"nothing here", u"print\r\nxprint PRINT"};
constexpr Position kSelected[] = {{4, 0}, {13, 3}};

/// How the end of a document is passed, and what the user answers when asked.
struct AtEnd {
    int16_t setting;
    int32_t answer;
};
constexpr AtEnd kEnds[] = {
    {0, message_box::kAnswerYes}, {0, message_box::kAnswerNo}, {0, message_box::kAnswerCancel}, {1, 0}, {2, 0}};

class FindReplaceTest : public SearchFrame {
protected:
    struct Case {
        Text find;
        Scope scope;
        bool up;
        AtEnd end;
        Position caret;
        bool matchCase;
        bool wholeWord;
    };

    void Start() override
    {
        SearchFrame::Start();
        forms = New(3);
        // The one in front, then the others as their turn comes.
        std::rotate(forms.begin(), forms.begin() + 1, forms.end());
    }

    /// Runs one of the ways to search for every case that can be set in the dialog.
    template <typename Run>
    void ForAll(bool replace, Run&& run)
    {
        int rules = 0;
        for (const auto& [scope, caption] : kScopes)
            for (bool up : {false, true})
                for (const AtEnd& end : kEnds)
                    for (TextView find : {u"print", u"Y", u"zzz"})
                        for (Position caret : {Position{12, 3}, Position{6, 0}, Position{14, 5}}) {
                            if (up && replace) continue;
                            if (scope == Scope::Selection && (caret.line != 3 || end.setting != 2)) continue;
                            ++rules;
                            Case now{Text(find), scope, up, end, caret, (rules & 1) != 0, (rules & 2) != 0};
                            SCOPED_TRACE(testing::Message()
                                         << ToUtf8(find) << ", " << caption << ", up " << up << ", at end "
                                         << end.setting << "/" << end.answer << ", from " << caret.line);
                            Prepare(now, replace);
                            run();
                            if (HasFatalFailure()) return;
                        }
    }

    void Prepare(const Case& now, bool replace)
    {
        Load(*forms[0], kFront);
        for (size_t i = 0; i < 2; ++i) Load(*forms[i + 1], kOthers[i]);
        bool selected = now.scope == Scope::Selection;
        SourceView& view = forms[0]->txtText();
        selected ? view.SetSelection(kSelected[0], kSelected[1]) : view.SetCaret(now.caret);
        program.EditorSettings().SearchEOD = now.end.setting;
        Open(*forms[0], replace);
        Type(FindField(), now.find);
        if (replace) Type(ReplaceField(), kWith);
        Click(kScopes.at(now.scope));
        if (!replace) Click(now.up ? "&Up" : "&Down");
        Check("Match &case", now.matchCase);
        Check("Match &whole word only", now.wholeWord);

        at_ = now;
        counted_ = 0;
        plain = {};
        plain.texts = Texts();
        plain.find = now.find;
        plain.scope = now.scope;
        plain.up = now.up;
        plain.matchCase = now.matchCase;
        plain.wholeWord = now.wholeWord;
        selected ? plain.InSelection(kSelected[0], kSelected[1]) : plain.FromCaret(now.caret);
        boxes.beeps = 0;
    }

    std::vector<std::vector<Text>> Texts()
    {
        std::vector<std::vector<Text>> texts(forms.size());
        for (size_t i = 0; i < forms.size(); ++i) {
            const SourceDocument& text = forms[i]->txtText().Document();
            for (int32_t line = 0; line < text.LineCount(); ++line) texts[i].push_back(text.GetLine(line));
        }
        return texts;
    }

    /// The next hit by hand; what will be asked and shown on the way is expected.
    bool NextByHand()
    {
        return plain.Next([&] {
            wanted_.beeps += at_.end.setting != 2;
            if (at_.end.setting != 0) {
                wanted_.status = kPastEnd;
                return true;
            }
            boxes.Answer({at_.end.answer});
            wanted_.boxes.push_back(Question(plain.up ? kAskUp : kAskDown, message_box::kYesNoCancel));
            return at_.end.answer == message_box::kAnswerYes;
        });
    }
    void Want(TextView text) { wanted_.boxes.push_back({Text(text), message_box::kInformation}); }
    void WantNoHit() { Want(counted_ > 0 ? TextView(kNoMore) : TextView(kNotFound.at(at_.scope))); }
    /// What was said in answer to the last click.
    void ExpectSaid()
    {
        Boxes said = boxes.Take();
        EXPECT_EQ(said, wanted_.boxes);
        EXPECT_EQ(Status(), ToQString(wanted_.status));
        EXPECT_EQ(boxes.beeps, wanted_.beeps);
        for (const ShownBox& box : said) seen_.insert(box.text);
        if (!wanted_.status.empty()) seen_.insert(wanted_.status);
        wanted_ = {};
        boxes.beeps = 0;
    }
    void ExpectHitShown()
    {
        Position start = plain.hit;
        Position end{start.col + plain.Size(), start.line};
        if (plain.up) std::swap(start, end);
        ASSERT_EQ(Title(frame.ActiveForm()), Title(forms[plain.text]));
        Position anchor;
        Position caret;
        forms[plain.text]->txtText().GetSelection(anchor, caret);
        ASSERT_EQ(std::make_pair(anchor, caret), std::make_pair(start, end));
    }

    /// Presses the button until no hit is left.
    void StepThrough(const char* button, bool replace)
    {
        for (bool found = true, hit = false; found; hit = true) {
            if (replace && hit) plain.Replace(kWith);
            found = NextByHand();
            if (!found) WantNoHit();
            counted_ += found;
            Click(button);
            ExpectSaid();
            ASSERT_TRUE(dialog->isVisible());
            ASSERT_EQ(Texts(), plain.texts);
            if (found) ExpectHitShown();
            if (HasFatalFailure()) return;
        }
    }

    QString ListOf(const std::vector<std::pair<size_t, Position>>& hits)
    {
        Text list = u"Search Results";
        std::pair<size_t, int32_t> before{forms.size(), -1};
        for (auto& [text, at] : hits) {
            if (text != before.first) list += u"\n \n" + forms[text]->ViewObject()->ListName() + u" ";
            if (before != std::make_pair(text, at.line))
                list += u"\n000" + Decimal(at.line + 1) + u" " + plain.texts[text][static_cast<size_t>(at.line)] + u" ";
            before = {text, at.line};
        }
        return ToQString(list);
    }

    static constexpr char16_t kWith[] = u"reprint";
    struct Wanted {
        Boxes boxes;
        Text status;
        int32_t beeps = 0;
    };

    std::vector<frmDocument*> forms;
    PlainSearch plain;
    Case at_{};
    int32_t counted_ = 0;
    Wanted wanted_;
    std::set<Text> seen_; ///< every message that was shown
};

TEST_F(FindReplaceTest, EveryWayAndEveryMessage)
{
    ForAll(false, [&] { StepThrough("&Find Next", false); });
    ForAll(true, [&] { StepThrough("&Replace", true); });
    ForAll(false, [&] {
        if (at_.scope != Scope::Selection) plain.Whole();
        auto hits = plain.All();
        if (hits.empty()) WantNoHit();
        Click("Find &All");
        ExpectSaid();
        EXPECT_FALSE(dialog->isVisible());
        ASSERT_EQ(results->isVisible(), !hits.empty());
        if (!hits.empty()) {
            ASSERT_EQ(Listed(), ListOf(hits));
        }
    });
    ForAll(false, [&] {
        if (at_.scope != Scope::Selection) plain.Whole();
        auto hits = plain.All();
        if (hits.empty()) WantNoHit();
        if (hits.size() == 1) Want(u"One occurrence found and bookmarked.");
        if (hits.size() > 1) Want(Decimal(static_cast<int64_t>(hits.size())) + u" occurrences found and bookmarked.");
        Click("Book&mark All");
        ExpectSaid();
        EXPECT_FALSE(dialog->isVisible());
        std::set<std::pair<size_t, int32_t>> lines;
        for (auto& [text, at] : hits) lines.emplace(text, at.line);
        size_t marked = 0;
        for (frmDocument* form : forms) marked += static_cast<size_t>(form->txtText().Document().BookmarkCount());
        ASSERT_EQ(marked, lines.size());
    });
    ForAll(true, [&] {
        int32_t count = 0;
        for (; NextByHand(); ++count) plain.Replace(kWith);
        count > 0 ? Want(Decimal(count) + u" occurrences replaced.") : WantNoHit();
        Click("Replace &All");
        ExpectSaid();
        ASSERT_EQ(Texts(), plain.texts);
    });

    for (const Text& message :
         {Text(kAskDown), Text(kAskUp), Text(kPastEnd), Text(kNoMore), kNotFound.at(Scope::Selection),
          kNotFound.at(Scope::Document), kNotFound.at(Scope::Everywhere), Text(u"One occurrence found and bookmarked."),
          Text(u"12 occurrences found and bookmarked."), Text(u"1 occurrences replaced."),
          Text(u"11 occurrences replaced.")})
        EXPECT_TRUE(seen_.contains(message)) << "never shown: " << ToUtf8(message);
}

/// Text that nobody types, but that a clipboard or a selection may hold.
TEST_F(FindReplaceTest, PastedText)
{
    const Text megabyte(size_t{1} << 20, u'x');
    const struct {
        Text pasted;
        Text text;
        int32_t found;
    } rows[] = {
        {u"print\r\nX", u"print\r\nX", 0}, // a hit lies in one line
        {u"print\nX", u"print\r\nX", 0},   {u"{\\b}", u"a{\\b}", 1},
        {megabyte, megabyte, 1},           {megabyte + u"y", megabyte, 0},
    };
    for (auto& row : rows) {
        for (bool replace : {false, true}) {
            if (replace && row.found == 0) continue;
            SCOPED_TRACE(testing::Message() << row.pasted.size() << " units, replace " << replace);
            Load(*forms[0], row.text);
            Open(*forms[0], replace);
            Click("Curr&ent document");
            Patience patience("a pasted text");
            QApplication::clipboard()->setText(ToQString(row.pasted));
            FindField().selectAll();
            QTest::keyClick(&FindField(), Qt::Key_V, Qt::ControlModifier);
            if (replace) {
                Type(ReplaceField(), u"-");
                Click("Replace &All");
                EXPECT_EQ(boxes.Take().back().text,
                          row.found ? Text(u"1 occurrences replaced.") : kNotFound.at(Scope::Document));
                EXPECT_EQ(forms[0]->txtText().GetText() == row.text, row.found == 0);
                ReplaceField().setFocus();
                ReplaceField().selectAll();
                QTest::keyClick(&ReplaceField(), Qt::Key_V, Qt::ControlModifier);
                Type(FindField(), u"-");
                forms[0]->txtText().SetCaret({0, 0});
                Click("Replace &All");
                boxes.Take();
                EXPECT_TRUE(forms[0]->txtText().GetText() == row.text) << "what is put in is all that was pasted";
            } else {
                Click("&Find Next");
                EXPECT_EQ(forms[0]->txtText().HasSelection(), row.found == 1);
                EXPECT_EQ(boxes.Take().size(), row.found ? 0U : 1U);
            }
        }
    }
}

/// Of the documents in a list one has been edited since, one closed; the third is as it was.
TEST_F(FindReplaceTest, ListsOutliveTheirDocuments)
{
    Prepare({u"print", Scope::Everywhere, false, kEnds[4], {}, false, false}, false);
    Click("Find &All");
    auto* box = results->findChild<QPlainTextEdit*>();
    auto doubleClick = [&](int line) {
        QTextCursor cursor(box->document()->findBlockByNumber(line));
        QTest::mouseDClick(box->viewport(), Qt::LeftButton, {}, box->cursorRect(cursor).center() + QPoint(3, 0));
        QTest::qWait(100);
    };
    const int last = box->document()->blockCount() - 1;
    ASSERT_EQ(box->document()->findBlockByNumber(last).text(), QStringLiteral("0002 xprint PRINT "));
    forms[2]->ViewObject()->FileClose(false);
    Load(*forms[0], u"one\r\ntwo");
    doubleClick(3);
    EXPECT_EQ(frame.ActiveForm(), forms[0]);
    EXPECT_EQ(forms[0]->txtText().CaretLine(), 0);
    doubleClick(5); // a line that is no more
    EXPECT_EQ(forms[0]->txtText().CaretLine(), 1);
    forms[0]->txtText().SetCaret({0, 0});
    doubleClick(last);
    EXPECT_EQ(frame.ActiveForm(), forms[0]) << "the nearest header above of a document that is open";
    EXPECT_EQ(forms[0]->txtText().CaretLine(), 1);
    forms[0]->ViewObject()->FileClose(false);
    doubleClick(last);
    EXPECT_EQ(frame.ActiveForm(), forms[1]) << "else the active one";
    forms[1]->ViewObject()->FileClose(false);
    doubleClick(last);
    EXPECT_EQ(boxes.Take().size(), 0U);
}

} // namespace
} // namespace nib::test
