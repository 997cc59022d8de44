#pragma once
#include "shell/help/HelpIndex.h"
#include "shell/help/QtHelpPages.h"

#include <QCoreApplication>
#include <QMainWindow>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;
class QWidget;

namespace nib {

/// The help: contents with a search field beside the page. It stays beside the work, so it is no dialog.
class HelpWindow final : public QMainWindow {
    Q_DECLARE_TR_FUNCTIONS(HelpWindow)
public:
    explicit HelpWindow(QWidget* owner = nullptr);

    /// Brings the window forward. `topic` is the key of a command to be told about, or the file of a page; empty for
    /// the page shown last.
    void ShowHelp(TextView topic = {});

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* BuildSide();
    void BuildTools();
    void BuildContents();
    void LoadPages();
    void Open(const QUrl& page);
    void PageShown(const QUrl& shown);
    void Search();
    void OpenFirstFound();
    void MarkMatches();
    void ApplyColors();
    void Zoom(int steps);

    const std::vector<ShownHelpPage> pages_ = ReadHelpPages();
    QLineEdit* search_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QLabel* nothing_ = nullptr;
    QTextBrowser* browser_ = nullptr;
    std::vector<QTreeWidgetItem*> items_; ///< of the pages, by number; owned by the tree
    HelpIndex index_;
    bool indexed_ = false;
    int zoom_ = 0;
};

/// Name and version of the program, and the licences of what it is built with; modal over `owner`.
void ShowAboutBox(QWidget* owner);

} // namespace nib
