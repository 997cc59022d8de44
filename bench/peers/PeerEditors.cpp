#include "Editor.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <Qsci/qsciscintillabase.h>

#include <cstring>
#include <filesystem>
#include <fstream>

namespace nib::bench {
namespace {

using Sci = QsciScintillaBase;

/// Of the peer's own lexers the one for a BASIC that finds blocks in such programs, by their indentation.
constexpr unsigned long kBasic = 8;

class ScintillaEditor final : public Editor {
public:
    ScintillaEditor()
    {
        Send(Sci::SCI_SETCODEPAGE, Sci::SC_CP_UTF8);
        Send(Sci::SCI_SETLEXER, kBasic);
        view_.SendScintilla(Sci::SCI_SETPROPERTY, "fold", "1");
        view_.SendScintilla(Sci::SCI_SETKEYWORDS, 0UL,
                            "if then else end locked begin case go goto gosub to sub subroutine call loop until while "
                            "do repeat for next step include");
        // As its users have it: kept layouts, painted straight into the buffer of the toolkit, and with the margins
        // that ours has.
        Send(Sci::SCI_SETLAYOUTCACHE, Sci::SC_CACHE_PAGE);
        Send(Sci::SCI_SETBUFFEREDDRAW, 0);
        Send(Sci::SCI_SETTABWIDTH, 3);
        Send(Sci::SCI_SETMARGINTYPEN, 0, Sci::SC_MARGIN_NUMBER);
        Send(Sci::SCI_SETMARGINWIDTHN, 0, 50);
        Send(Sci::SCI_SETMARGINMASKN, 2, static_cast<long>(Sci::SC_MASK_FOLDERS));
        Send(Sci::SCI_SETMARGINWIDTHN, 2, 16);
        Send(Sci::SCI_SETSCROLLWIDTHTRACKING, 1);
        Send(Sci::SCI_STYLESETFONT, Sci::STYLE_DEFAULT, reinterpret_cast<long>("DejaVu Sans Mono"));
        Send(Sci::SCI_STYLECLEARALL);
        // What its wrapper tells screen readers counts the characters before each edit; here the component counts.
        Send(Sci::SCI_SETMODEVENTMASK, 0);
        bench::Show(view_);
    }

    QAbstractScrollArea& Widget() override { return view_; }
    void Open(const std::string& path) override
    {
        const std::string bytes = WholeFile(path);
        Send(Sci::SCI_SETUNDOCOLLECTION, 0);
        view_.SendScintilla(Sci::SCI_ADDTEXT, bytes.size(), bytes.data());
        Send(Sci::SCI_SETUNDOCOLLECTION, 1);
        Send(Sci::SCI_GOTOPOS, 0);
    }
    void ColourAll() override { Send(Sci::SCI_COLOURISE, 0, -1); }
    void PutCaret(int32_t line) override { Send(Sci::SCI_GOTOLINE, static_cast<unsigned long>(line)); }
    size_t FindAll(const char* text, bool matchCase) override
    {
        length_ = strlen(text);
        hits_.clear();
        Send(Sci::SCI_SETSEARCHFLAGS, matchCase ? Sci::SCFIND_MATCHCASE : 0);
        const auto end = static_cast<unsigned long>(Send(Sci::SCI_GETLENGTH));
        for (unsigned long from = 0;; from = hits_.back() + length_) {
            Send(Sci::SCI_SETTARGETSTART, from);
            Send(Sci::SCI_SETTARGETEND, end);
            const long at = view_.SendScintilla(Sci::SCI_SEARCHINTARGET, length_, text);
            if (at < 0) return hits_.size();
            hits_.push_back(static_cast<unsigned long>(at));
        }
    }
    void ReplaceHits(const char* text) override
    {
        const size_t put = strlen(text);
        unsigned long moved = 0;
        Send(Sci::SCI_BEGINUNDOACTION);
        for (const unsigned long hit : hits_) {
            Send(Sci::SCI_SETTARGETSTART, hit + moved);
            Send(Sci::SCI_SETTARGETEND, hit + moved + length_);
            view_.SendScintilla(Sci::SCI_REPLACETARGET, put, text);
            moved += put - length_;
        }
        Send(Sci::SCI_ENDUNDOACTION);
        Send(Sci::SCI_GOTOPOS, hits_.back() + moved);
    }
    void FoldAll(bool fold) override
    {
        Send(Sci::SCI_FOLDALL, fold ? Sci::SC_FOLDACTION_CONTRACT : Sci::SC_FOLDACTION_EXPAND);
    }
    void Reindent(const std::vector<BlankChange>& changes) override
    {
        Send(Sci::SCI_BEGINUNDOACTION);
        for (const BlankChange& change : changes) {
            const auto line = static_cast<unsigned long>(change.line);
            const auto at = static_cast<unsigned long>(Send(Sci::SCI_POSITIONFROMLINE, line) + change.column);
            if (change.removed > 0) Send(Sci::SCI_DELETERANGE, at, change.removed);
            if (change.inserted > 0)
                view_.SendScintilla(Sci::SCI_INSERTTEXT, at,
                                    std::string(static_cast<size_t>(change.inserted), ' ').c_str());
        }
        Send(Sci::SCI_ENDUNDOACTION);
        ColourAll();
    }
    void UndoReindent() override { Undo(), ColourAll(); }
    void Paste() override { Send(Sci::SCI_PASTE); }
    void Undo() override { Send(Sci::SCI_UNDO); }
    std::string Line(int32_t line) override
    {
        const auto number = static_cast<unsigned long>(line);
        std::string text(static_cast<size_t>(Send(Sci::SCI_LINELENGTH, number)), '\0');
        view_.SendScintilla(Sci::SCI_GETLINE, number, text.data());
        return text.substr(0, text.find('\n'));
    }

private:
    long Send(unsigned message, unsigned long first = 0, long second = 0)
    {
        return view_.SendScintilla(message, first, second);
    }

    Sci view_;
    size_t length_ = 0;
    std::vector<unsigned long> hits_;
};

/// Without any colours: the toolkit's highlighter takes seconds for what the others do in a tenth of one.
class PlainTextEditor final : public Editor {
public:
    PlainTextEditor()
    {
        view_.setLineWrapMode(QPlainTextEdit::NoWrap);
        QFont font(QStringLiteral("DejaVu Sans Mono"), 10);
        view_.setFont(font);
        bench::Show(view_);
    }

    QAbstractScrollArea& Widget() override { return view_; }
    void Open(const std::string& path) override
    {
        const std::string bytes = WholeFile(path);
        view_.setPlainText(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())));
    }
    void PutCaret(int32_t line) override
    {
        view_.setTextCursor(QTextCursor(view_.document()->findBlockByNumber(line)));
    }
    size_t FindAll(const char* text, bool matchCase) override
    {
        hits_.clear();
        const auto flags = matchCase ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
        const QString looked = QString::fromLatin1(text);
        for (QTextCursor at = view_.document()->find(looked, 0, flags); !at.isNull();
             at = view_.document()->find(looked, at, flags))
            hits_.push_back(at.selectionStart());
        length_ = static_cast<int>(looked.size());
        return hits_.size();
    }
    void ReplaceHits(const char* text) override
    {
        const QString put = QString::fromLatin1(text);
        int moved = 0;
        Edit([&](QTextCursor& cursor) {
            for (const int hit : hits_) {
                cursor.setPosition(hit + moved);
                cursor.setPosition(hit + moved + length_, QTextCursor::KeepAnchor);
                cursor.insertText(put);
                moved += static_cast<int>(put.size()) - length_;
            }
            view_.setTextCursor(cursor);
        });
    }
    void FoldAll(bool fold) override
    {
        for (QTextBlock block = view_.document()->begin(); block.isValid(); block = block.next())
            block.setVisible(!fold || !block.text().startsWith(QLatin1String("         ")));
        view_.document()->markContentsDirty(0, view_.document()->characterCount());
        view_.viewport()->update();
    }
    void Reindent(const std::vector<BlankChange>& changes) override
    {
        Edit([&](QTextCursor& cursor) {
            QTextBlock block = view_.document()->begin();
            for (const BlankChange& change : changes) {
                while (block.blockNumber() < change.line) block = block.next();
                cursor.setPosition(block.position() + change.column);
                cursor.setPosition(block.position() + change.column + change.removed, QTextCursor::KeepAnchor);
                cursor.insertText(QString(change.inserted, QLatin1Char(' ')));
            }
        });
    }
    void Paste() override { view_.paste(); }
    void Undo() override { view_.undo(); }
    std::string Line(int32_t line) override { return view_.document()->findBlockByNumber(line).text().toStdString(); }

private:
    template <typename Body>
    void Edit(Body&& body)
    {
        QTextCursor cursor(view_.document());
        cursor.beginEditBlock();
        body(cursor);
        cursor.endEditBlock();
    }

    QPlainTextEdit view_;
    int length_ = 0;
    std::vector<int> hits_;
};

} // namespace

std::unique_ptr<Editor> MakeScintilla()
{
    return std::make_unique<ScintillaEditor>();
}

std::unique_ptr<Editor> MakePlainText()
{
    return std::make_unique<PlainTextEditor>();
}

std::string WholeFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::filesystem::file_size(path), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

} // namespace nib::bench
