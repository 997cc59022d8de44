#include "shell/menus/MenuTable.h"

namespace nib {

namespace {

constexpr MenuRow kMenuRows[] = {
    {u"File", u"&File"},
    {u"Edit", u"&Edit"},
    {u"Lines", u"&Lines", u"Edit", true},
    {u"Carets", u"&Further Carets", u"Edit"},
    {u"Search", u"&Search"},
    {u"Bookmarks", u"Boo&kmark", u"Search", true},
    {u"Insert", u"&Insert"},
    {u"View", u"&View"},
    {u"Marks", u"&Marks", u"View", true},
    {u"Tools", u"&Tools"},
    {u"Window", u"&Window"},
    {u"Help", u"&Help"},
};

constexpr MenuToolRow kMainMenuRows[] = {
    {u"File", u"New", u"&New", u"Ctrl+N"},
    {u"File", u"Open", u"&Open", u"Ctrl+O"},
    {u"File", u"Close", u"&Close", u"Ctrl+F4", true},
    {u"File", u"Save", u"&Save", u"Ctrl+S"},
    {u"File", u"SaveAs", u"Save &As..."},
    {u"File", u"SaveAll", u"Sa&ve All", u"shift+ctrl+s"},
    {u"File", u"Print", u"&Print", u"Ctrl+P", true},
    {u"File", u"Properties", u"&Document Properties", u"Ctrl+L"},
    {u"File", u"Exit", u"E&xit", u"Ctrl+Q", true},

    {u"Edit", u"Undo", u"&Undo", u"Ctrl+Z"},
    {u"Edit", u"UndoReplacements", u"Undo E&very Replacement"},
    {u"Edit", u"Redo", u"&Redo"},
    {u"Edit", u"Cut", u"Cu&t", u"Ctrl+X", true},
    {u"Edit", u"Copy", u"&Copy", u"Ctrl+C"},
    {u"Edit", u"Paste", u"&Paste", u"Ctrl+V"},
    {u"Edit", u"Clear", u"C&lear", u"Delete"},
    {u"Edit", u"DeleteLine", u"&Delete Line", u"Ctrl+Y"},
    {u"Edit", u"SelectAll", u"Select &All", u"Ctrl+A"},
    {u"Edit", u"IndentBlock", u"&Indent", u"", true},
    {u"Edit", u"OutdentBlock", u"&Outdent"},
    {u"Lines", u"MoveLinesUp", u"Move &Up", u"Alt+Up"},
    {u"Lines", u"MoveLinesDown", u"Move &Down", u"Alt+Down"},
    {u"Lines", u"DuplicateLines", u"Du&plicate", u"Ctrl+Shift+D"},
    {u"Lines", u"JoinLines", u"&Join", u"Ctrl+J"},
    {u"Lines", u"IndentByBlocks", u"Indent by &Blocks", u"", true},
    {u"Edit", u"CommentBlock", u"Co&mment", u"Ctrl+K", true},
    {u"Edit", u"UncommentBlock", u"U&ncomment", u"Ctrl+Shift+K"},
    {u"Edit", u"CollapseBlock", u"Collapse &Block", u"F6", true},
    {u"Edit", u"ExpandBlock", u"&Expand Block", u"Shift+F6"},
    {u"Edit", u"CollapseAll", u"Collap&se All", u"Ctrl+F6"},
    {u"Edit", u"ExpandAll", u"E&xpand All", u"Ctrl+Shift+F6"},
    {u"Carets", u"AddCaretAbove", u"Caret &Above", u"Ctrl+Alt+Up"},
    {u"Carets", u"AddCaretBelow", u"Caret &Below", u"Ctrl+Alt+Down"},
    {u"Carets", u"SelectNextOccurrence", u"&Next Occurrence", u"Ctrl+D", true},
    {u"Carets", u"SelectAllOccurrences", u"All &Occurrences", u"Ctrl+Shift+L"},

    {u"Search", u"Find", u"&Find", u"Ctrl+F", true},
    {u"Search", u"FindNext", u"Find &Next", u"F3"},
    {u"Search", u"FindBar", u"Find as You &Type", u"Ctrl+I"},
    {u"Search", u"Replace", u"&Replace", u"Ctrl+H"},
    {u"Search", u"FindInAccount", u"Find in &Account...", u"Ctrl+Shift+F"},
    {u"Search", u"Goto", u"&Goto", u"Ctrl+G", true},
    {u"Search", u"MatchingWord", u"Go to &Matching Word", u"Ctrl+M"},
    {u"Search", u"NavBack", u"&Back", u"Alt+Left"},
    {u"Search", u"NavForward", u"&Forward", u"Alt+Right"},
    {u"Bookmarks", u"ToggleBookmark", u"&Toggle", u"Ctrl+F2", true},
    {u"Bookmarks", u"NextBookmark", u"&Next", u"F2"},
    {u"Bookmarks", u"PrevBookmark", u"&Previous", u"Shift+F2"},
    {u"Bookmarks", u"ClearBookmarks", u"&Clear Bookmarks (this document)"},
    {u"Bookmarks", u"ClearAllBookmarks", u"Clear Bookmarks (&all documents)"},

    {u"Insert", u"ValueMark", u"&Value Mark"},
    {u"Insert", u"SubValueMark", u"&SubValue Mark"},

    {u"View", u"ViewToolbar", u"&Tool Bar"},
    {u"View", u"ViewStatusbar", u"&Status Bar"},
    {u"View", u"Highlight", u"&Highlight"},
    {u"View", u"LineWrap", u"Line &Wrap"},
    {u"View", u"SplitView", u"S&plit", u"F7"},
    {u"View", u"OtherPane", u"&Other Pane", u"Shift+F7"},
    {u"Marks", u"CurrentLine", u"&Current Line"},
    {u"Marks", u"Matches", u"&Matches"},
    {u"Marks", u"ChangeBars", u"C&hange Bars"},
    {u"Marks", u"IndentGuides", u"&Indentation Guides"},
    {u"Marks", u"VisibleBlanks", u"&Visible Blanks"},
    {u"Marks", u"SmoothScrolling", u"&Smooth Scrolling", u"", true},
    {u"View", u"Results", u"&Results", u"", true},

    {u"Tools", u"Format", u"&Format", u"F12"},
    {u"Tools", u"Compile", u"&Compile", u"F11"},
    {u"Tools", u"ToggleCase", u"&Toggle Case", u"Shift+F3", true},
    {u"Tools", u"Settings", u"Settings...", u"", true},

    {u"Window", u"TileHorizontal", u"Tile &Horizontal"},
    {u"Window", u"TileVertical", u"Tile &Vertical"},
    {u"Window", u"Cascade", u"&Cascade"},
    {u"Window", u"Maximize", u"&Maximize", u"", true},

    {u"Help", u"HelpTopics", u"&Topics", u"F1"},
    {u"Help", u"HelpAbout", u"&About Nib"},
};

constexpr ToolBarRow kToolBarRows[] = {
    {u"New", u"Create a new document"},
    {u"Open", u"Open existing document"},
    {u"Save", u"Save current document"},
    {u"SaveAll", u""},
    {u"Print", u"Print the current document", true},
    {u"Undo", u"Undo last editing operation", true},
    {u"Redo", u"Redo last editing operation"},
    {u"Cut", u"Cut", true},
    {u"Copy", u"Copy"},
    {u"Paste", u"Paste"},
    {u"Clear", u"Clear"},
    {u"IndentBlock", u"", true},
    {u"OutdentBlock", u""},
    {u"CommentBlock", u"Comment selected lines", true},
    {u"UncommentBlock", u"Uncomment selected lines"},
    {u"Goto", u"", true},
    {u"Find", u"Search for text in document (press F3 to find next)", false, u"&Fine"},
    {u"NavBack", u"Navigate backward"},
    {u"NavForward", u"Navigate forward"},
    {u"ValueMark", u"", true},
    {u"SubValueMark", u""},
    {u"ToggleCase", u"Toggles case of selected text (upper, lower, mixed)"},
    {u"Highlight", u"", true},
    {u"Format", u"Format code"},
    {u"Compile", u"Compile code"},
};

constexpr PanelRow kPanelRows[] = {
    {u"Panel1", u"Starting up", u"Server status", false, true},
    {u"Panel2", u"Ln 1000, Col 100", u"Current insertion point", true, false},
    {u"Panel3", u"Ovr", u"Overwrite / Insert", true, false},
    {u"Panel4", u"", u"", false, true},
    {u"Panel5", u"", u"", false, true},
};

constexpr MenuToolRow kPopupRows[] = {
    {u"", u"Undo", u""},
    {u"", u"Cut", u"", u"", true},
    {u"", u"Copy", u""},
    {u"", u"Paste", u""},
    {u"", u"Clear", u""},
    {u"", u"DeleteLine", u""},
    {u"", u"SelectAll", u"", u"", true},
    {u"", u"Find", u"", u"", true},
    {u"", u"FindNext", u""},
    {u"", u"Replace", u""},
    {u"", u"ctxGoto", u"Goto", u"", true},
    {u"", u"ctxOpen", u"Open"},
    {u"", u"ctxToggleBookmark", u"Toggle Bookmark", u"", true},
    {u"", u"ctxToggleBlock", u"Collapse Block"},
    {u"", u"Highlight", u"", u"", true},
};

constexpr MenuToolRow kTabContextRows[] = {
    {u"", u"tab_activate", u"Activate"},
    {u"", u"tab_close", u"Close"},
    {u"", u"tab_min", u"Minimize", u"", true},
    {u"", u"tab_max", u"Maximize", u"", true},
};

// Names of the desktop's icon themes; those that begin with "nib-" are the program's own.
constexpr ToolLookRow kLookRows[] = {
    {u"New", u"document-new"},
    {u"Open", u"document-open"},
    {u"Close", u"document-close"},
    {u"Save", u"document-save"},
    {u"SaveAs", u"document-save-as"},
    {u"SaveAll", u"document-save-all"},
    {u"Print", u"document-print"},
    {u"Properties", u"document-properties"},
    {u"Exit", u"application-exit"},
    {u"Undo", u"edit-undo"},
    {u"Redo", u"edit-redo"},
    {u"Cut", u"edit-cut"},
    {u"Copy", u"edit-copy"},
    {u"Paste", u"edit-paste"},
    {u"Clear", u"edit-delete"},
    {u"SelectAll", u"edit-select-all"},
    {u"IndentBlock", u"format-indent-more"},
    {u"OutdentBlock", u"format-indent-less"},
    {u"CommentBlock", u"nib-comment"},
    {u"UncommentBlock", u"nib-uncomment"},
    {u"CollapseBlock", u"nib-collapse-block"},
    {u"ExpandBlock", u"nib-expand-block"},
    {u"Find", u"edit-find"},
    {u"Replace", u"edit-find-replace"},
    {u"Goto", u"go-jump"},
    {u"NavBack", u"go-previous"},
    {u"NavForward", u"go-next"},
    {u"ToggleBookmark", u"nib-bookmark"},
    {u"ValueMark", u"nib-value-mark"},
    {u"SubValueMark", u"nib-subvalue-mark"},
    {u"ViewToolbar", u"", true},
    {u"ViewStatusbar", u"", true},
    {u"IndentByBlocks", u"", true},
    {u"Highlight", u"nib-highlight", true},
    {u"LineWrap", u"", true},
    {u"SplitView", u"", true},
    {u"CurrentLine", u"", true},
    {u"Matches", u"", true},
    {u"ChangeBars", u"", true},
    {u"IndentGuides", u"", true},
    {u"VisibleBlanks", u"", true},
    {u"SmoothScrolling", u"", true},
    {u"Format", u"nib-format"},
    {u"Compile", u"run-build"},
    {u"ToggleCase", u"nib-toggle-case"},
    {u"Settings", u"configure"},
    {u"Maximize", u"", true},
    {u"HelpTopics", u"help-contents"},
    {u"HelpAbout", u"help-about"},
    {u"ctxToggleBookmark", u"nib-bookmark"},
    {u"tab_close", u"document-close"},
    {u"tab_min", u"", true},
    {u"tab_max", u"", true},
};

} // namespace

constinit const std::span<const MenuRow> kMenus{kMenuRows};
constinit const std::span<const MenuToolRow> kMainMenu{kMainMenuRows};
constinit const std::span<const MenuToolRow> kPopup{kPopupRows};
constinit const std::span<const MenuToolRow> kTabContext{kTabContextRows};
constinit const std::span<const ToolBarRow> kToolBar{kToolBarRows};
constinit const std::span<const PanelRow> kStatusBar{kPanelRows};
constinit const std::span<const ToolLookRow> kToolLooks{kLookRows};

} // namespace nib
