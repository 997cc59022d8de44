#pragma once
// What finding, replacing and the list of hits want of the rooms above them.

#include "base/Text.h"

namespace nib {

class SearchHost {
public:
    virtual ~SearchHost() = default;
    /// The DocumentID of the main window's active child; 0 when there is none.
    virtual int32_t ActiveDocument() const = 0;
    virtual void Beep() = 0;
};

/// The window that a list of lines is shown in.
class ResultsWindow {
public:
    virtual ~ResultsWindow() = default;
    /// A text that is not empty replaces the contents; an empty one only shows the window.
    virtual void ShowResults(TextView text) = 0;
    /// Begins a list under a title, and shows the window.
    virtual void ResetResults(TextView title) = 0;
    /// Appends one line, highlighted from a column on or, where nothing is, emphasised as the header of a document.
    virtual void AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis) = 0;
};

} // namespace nib
