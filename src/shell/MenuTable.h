#pragma once
// The menus as data. A row names a command of the command table; the window draws it.

#include <cstdint>
#include <span>

namespace nib {

struct MenuRow {
    const char16_t* menu;     ///< caption of the menu it stands in
    const char16_t* key;      ///< of the command
    const char16_t* caption;  ///< "&" marks the access key
    const char16_t* shortcut; ///< "" for none
    bool beginsGroup = false; ///< a separator above
};

inline constexpr MenuRow kMainMenu[] = {
    {u"&File", u"New", u"&New", u"Ctrl+N"},
    {u"&File", u"Open", u"&Open", u"Ctrl+O"},
    {u"&File", u"Close", u"&Close", u"Ctrl+F4", true},
    {u"&File", u"Save", u"&Save", u"Ctrl+S"},
    {u"&File", u"SaveAs", u"Save &As...", u""},
    {u"&File", u"SaveAll", u"Sa&ve All", u"Ctrl+Shift+S"},
    {u"&File", u"Exit", u"E&xit", u"Ctrl+Q", true},
    {u"&Edit", u"Undo", u"&Undo", u"Ctrl+Z"},
    {u"&Edit", u"Redo", u"&Redo", u"Ctrl+Shift+Z"},
    {u"&Edit", u"Cut", u"Cu&t", u"Ctrl+X", true},
    {u"&Edit", u"Copy", u"&Copy", u"Ctrl+C"},
    {u"&Edit", u"Paste", u"&Paste", u"Ctrl+V"},
    {u"&Edit", u"Clear", u"C&lear", u"Delete"},
    {u"&Edit", u"DeleteLine", u"&Delete Line", u"Ctrl+Y"},
    {u"&Edit", u"SelectAll", u"Select &All", u"Ctrl+A"},
    {u"&Search", u"ToggleBookmark", u"&Toggle Bookmark", u"Ctrl+F2"},
    {u"&Search", u"NextBookmark", u"&Next Bookmark", u"F2"},
    {u"&Search", u"PrevBookmark", u"&Previous Bookmark", u"Shift+F2"},
    {u"&Search", u"ClearBookmarks", u"&Clear Bookmarks (this document)", u""},
    {u"&Insert", u"ValueMark", u"&Value Mark", u""},
    {u"&Insert", u"SubValueMark", u"&SubValue Mark", u""},
    {u"&View", u"LineWrap", u"Line &Wrap", u""},
    {u"&Window", u"Tile", u"&Tile", u""},
    {u"&Window", u"Cascade", u"&Cascade", u""},
    {u"&Window", u"Maximize", u"&Maximize", u"", true},
};

} // namespace nib
