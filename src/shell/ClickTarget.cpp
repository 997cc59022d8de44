#include "shell/ClickTarget.h"

#include "documents/CompilerOutput.h"
#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "editing/LexClass.h"
#include "shell/Program.h"
#include "text/SourceView.h"

#include <algorithm>
#include <optional>

namespace nib {

namespace {

/// The tokens of one line round a click.
class ClickedLine {
public:
    ClickedLine(SourceView& view, Position at) : view_(view), line_(at.line), text_(view.Document().GetLine(at.line))
    {
        Token token;
        if (view_.NextToken(line_, at.col, token)) clicked_ = token;
    }

    TextView Content() const { return text_; }
    const std::optional<Token>& Clicked() const { return clicked_; }
    TextView TextOf(const Token& token) const
    {
        auto start = std::min(static_cast<size_t>(token.start), text_.size());
        return TextView(text_).substr(start, static_cast<size_t>(token.length));
    }
    /// All of them, with the clicked one's place in `clicked`: the size of the list for a click behind the text.
    std::vector<Token> Tokens(size_t& clicked) const
    {
        std::vector<Token> tokens;
        Token token;
        for (int32_t at = 0; view_.NextToken(line_, at, token); at = std::max(at + 1, token.start + token.length))
            tokens.push_back(token);
        clicked = tokens.size();
        if (clicked_) {
            auto found = std::find_if(tokens.begin(), tokens.end(),
                                      [&](const Token& t) { return t.start + t.length > clicked_->start; });
            clicked = static_cast<size_t>(found - tokens.begin());
        }
        return tokens;
    }

private:
    SourceView& view_;
    int32_t line_;
    Text text_;
    std::optional<Token> clicked_;
};

bool EndsName(const Token& token)
{
    return token.type == token_type::kEndOfLine || token.type == token_type::kBlank ||
           token.type == token_type::kSeparator;
}

/// Walks backward over a line, one blank-separated word at a time.
class WordsBackward {
public:
    WordsBackward(const ClickedLine& line, bool stopAtParenthesis) : line_(line)
    {
        size_t clicked = 0;
        tokens_ = line.Tokens(clicked);
        at_ = clicked;
        while (at_ < tokens_.size() && !EndsName(tokens_[at_])) {
            if (stopAtParenthesis && line_.TextOf(tokens_[at_]) == u"(") break;
            ++at_;
        }
    }
    /// The word that ends where the walk stands; empty at the front of the line, behind a label or behind a ";".
    TextView Next()
    {
        if (!first_ && at_ > 0 && tokens_[at_ - 1].type == token_type::kBlank) --at_;
        first_ = false;
        size_t end = at_;
        while (at_ > 0 && !EndsName(tokens_[at_ - 1]) && tokens_[at_ - 1].type != token_type::kLabel) --at_;
        if (at_ == end) return {};
        const Token& last = tokens_[end - 1];
        auto start = static_cast<size_t>(tokens_[at_].start);
        return line_.Content().substr(start, static_cast<size_t>(last.start + last.length) - start);
    }

private:
    const ClickedLine& line_;
    std::vector<Token> tokens_;
    size_t at_ = 0;
    bool first_ = true;
};

bool Contains(TextView text, TextView part)
{
    return text.find(part) != TextView::npos;
}

/// A label is settled either way: a click on its definition means nothing else either.
bool FindLabel(const ClickedLine& line, uint32_t lineState, Hit& hit)
{
    if (!line.Clicked() || line.Clicked()->type != token_type::kLabel) return false;
    const Token& token = *line.Clicked();
    bool first = Trim(line.Content().substr(0, static_cast<size_t>(token.start))).empty();
    if (first && (lineState & line_flag::kLabel)) return true;
    TextView name = line.TextOf(token);
    if (name.ends_with(u':')) name.remove_suffix(1);
    hit.kind = HitKind::Label;
    hit.Target = name;
    return true;
}

bool FindCall(const ClickedLine& line, Hit& hit)
{
    if (!Contains(ToUpper(line.Content()), u"CALL")) return false;
    WordsBackward words(line, true);
    TextView name = words.Next();
    if (name.empty() || Contains(name, u"(") || !EqualsNoCase(words.Next(), u"CALL")) return false;
    hit.kind = HitKind::Call;
    hit.Target = name;
    return true;
}

bool IsInclude(TextView word)
{
    for (TextView keyword : {u"$INCLUDE", u"INCLUDE", u"$INSERT"})
        if (EqualsNoCase(word, keyword)) return true;
    return false;
}

bool FindInclude(const ClickedLine& line, Hit& hit)
{
    const Text content = ToUpper(line.Content());
    if (!Contains(content, u"$INSERT") && !Contains(content, u"INCLUDE")) return false;
    WordsBackward words(line, false);
    Text name(words.Next());
    if (name.empty()) return false;
    TextView keyword = words.Next();
    if (!IsInclude(keyword)) {
        // The file's name may stand in front of the item's.
        if (keyword.empty()) return false;
        name = Text(keyword) + u" " + name;
        if (!IsInclude(words.Next())) return false;
    }
    hit.kind = HitKind::Include;
    hit.Target = name;
    return true;
}

void FindBlock(BlockPart block, Hit& hit)
{
    if (block.Any()) hit.kind = block.IsCollapsed() ? HitKind::ClosedBlock : HitKind::OpenBlock;
}

SourceView* ViewOfDocument(mvDocument* document)
{
    return document && document->View() ? &document->View()->txtText() : nullptr;
}

/// The head of the innermost block round `line`, which may be the head itself; -1 when it is in none.
int32_t HeadOf(SourceDocument& text, int32_t line)
{
    int32_t closed = 0;
    for (int32_t at = line; at >= 0; --at) {
        BlockPart block = text.BlockAt(at);
        if (block.IsHead() && closed-- == 0) return at;
        if (block.kind == BlockPart::Kind::End && at != line) ++closed;
    }
    return -1;
}

ItemPlace HomeOf(Program& program, mvItem* item)
{
    if (item) return {item->Provider(), item->ServerName(), item->Database(), item->Folder(), {}};
    const Location& location = program.Place().host;
    return {location.Provider, location.ServerName, location.Database, {}, {}};
}

Text FolderOf(const Text& name)
{
    return name.substr(0, name.find_last_of(u'/'));
}

/// What the clicked text names, as it stands in the document's own host and account or beside its local file.
Text TargetPath(Program& program, mvDocument& document)
{
    TextView target = Trim(program.Target().Target);
    ItemPlace place = HomeOf(program, document.ItemObject().get());
    bool local = EqualsNoCase(place.provider, u"file");
    if (CountFields(target, u' ') > 1) {
        Text file(Field(target, u' ', 1));
        target = Trim(target.substr(file.size()));
        target = Field(target, u' ', 1);
        // Beside the folder of a local file stand the other folders of its account.
        place.folder = local && file.front() != u'/' ? FolderOf(place.folder) + u"/" + file : file;
    }
    place.itemId = target;
    return local ? ComposeFilePath(place.folder + u"/" + place.itemId) : ComposeHostPath(place);
}

} // namespace

Hit HitTest(SourceView& view, Position at, LexClass* lexer)
{
    if (lexer && !lexer->Highlight()) {
        // Without colours the lexer tells nothing of a line.
        const struct Colours {
            LexClass& of;
            ~Colours() { of.SetHighlight(false); }
        } colours{*lexer};
        lexer->SetHighlight(true);
        return HitTest(view, at, lexer);
    }
    SourceDocument& document = view.Document();
    at.line = std::clamp(at.line, 0, document.LineCount() - 1);
    Hit hit;
    hit.TargetLine = at.line + 1;
    ClickedLine line(view, at);
    if (FindLabel(line, document.GetLineData(at.line, LineWord::Lexer), hit)) return hit;
    if (!FindCall(line, hit) && !FindInclude(line, hit)) FindBlock(document.BlockAt(at.line), hit);
    return hit;
}

void HandleBookmarkToggle(Program& program, mvDocument* document)
{
    int32_t line = program.Target().TargetLine;
    if (SourceView* view = ViewOfDocument(document); view && line > 0) view->Document().ToggleBookmark(line - 1);
}

void HandleBlockToggle(Program& program, mvDocument* document)
{
    SourceView* view = ViewOfDocument(document);
    const Hit& target = program.Target();
    if (!view) return;
    SourceDocument& text = view->Document();
    int32_t line = std::min(target.TargetLine, text.LineCount()) - 1;
    if (target.kind == HitKind::ClosedBlock) text.ExpandBlock(line);
    if (target.kind != HitKind::OpenBlock) return;
    while (line >= 0 && text.BlockAt(line).kind != BlockPart::Kind::Head) --line;
    if (line >= 0) text.CollapseBlock(line);
}

void HandleBlockCollapse(mvDocument* document, bool collapse, bool all)
{
    SourceView* view = ViewOfDocument(document);
    if (!view) return;
    SourceDocument& text = view->Document();
    if (all) return collapse ? text.CollapseAll() : text.ExpandAll();
    int32_t line = view->CaretLine();
    BlockPart block = text.BlockAt(line);
    if (block.IsCollapsed() && !collapse) text.ExpandBlock(line);
    if (block.IsCollapsed() || !block.Any() || !collapse) return;
    if (int32_t head = HeadOf(text, line); head >= 0) text.CollapseBlock(head);
}

void HandleGoto(Program& program, mvDocument* document, bool alwaysAsk)
{
    Text& target = program.Target().Target;
    if (target.empty() || alwaysAsk || !program.EditorSettings().NoGotoDialog) {
        program.Forms().Goto(target);
    } else if (document) {
        document->GotoLabel(target);
    }
}

void HandleOpen(Program& program, mvDocument* document)
{
    if (!document || Trim(program.Target().Target).empty()) return;
    if (program.Target().kind == HitKind::Call) {
        const ItemPlace home = HomeOf(program, document->ItemObject().get());
        const auto catalogued = FindCatalogued(program.Services(), home, Trim(program.Target().Target));
        if (catalogued) {
            program.OpenPath(catalogued->Path(), false);
            return;
        }
    }
    auto item = program.Connection().OpenServerForPath(TargetPath(program, *document), true, false);
    if (program.ActivateOpen(*item)) return;
    SelectedItem picked;
    {
        AutoSaveHold hold(program.Shell());
        SelectRequest request{.mode = u"Open", .extension = {}, .offerReadOnly = true};
        request.startNamed = true;
        picked = program.Connection().SelectItem(request, item.get());
    }
    if (picked.item) program.OpenPath(picked.item->Path(), picked.readOnly);
}

} // namespace nib
