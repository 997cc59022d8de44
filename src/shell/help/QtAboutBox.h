#pragma once

class QWidget;

namespace nib {

/// Name and version of the program, and the licences of what it is built with; modal over `owner`.
void ShowAboutBox(QWidget* owner);

} // namespace nib
