#pragma once
// The windows that compare the texts of documents with others.

#include "compare/CompareSources.h"
#include "persistence/store/SettingsStore.h"

#include <QCoreApplication>
#include <QPointer>

#include <vector>

class QWidget;

namespace nib {

class frmCompare;

class QtCompareWindows {
    Q_DECLARE_TR_FUNCTIONS(QtCompareWindows)
public:
    /// `owner` is the window for questions; all outlive it. `host` makes the widget a window of the frame, which owns
    /// it from then on, and shows it, or brings it to the front when it is one already.
    QtCompareWindows(DocumentServices& services, SettingsStore& store, QWidget* owner,
                     std::function<void(QWidget* content)> host);
    ~QtCompareWindows();
    QtCompareWindows(const QtCompareWindows&) = delete;
    QtCompareWindows& operator=(const QtCompareWindows&) = delete;

    // What is compared already comes to the front, and is looked at again.

    /// Asks what with where that is not clear. Throws Error when the other text cannot be had; nothing is shown then.
    void Show(CompareWith other, mvDocument& document);
    void Compare(mvDocument& left, mvDocument& right);
    /// The text on the left, the document on the right.
    void Compare(CompareText left, mvDocument& right);
    /// Two texts of no documents.
    void Compare(CompareText left, CompareText right);
    /// The same over a dialog, until the user closes it.
    void CompareOver(QWidget& owner, CompareText left, CompareText right);

    /// Also where it is a side of the comparison in front, the chosen one rather than the other. 0 when there is none.
    int32_t DocumentInFront() const;

    std::function<void(mvDocument& document)> onSave;
    /// DocumentInFront may be another one.
    std::function<void()> onSide;

private:
    void WithDocument(mvDocument& document);
    void WithItem(mvDocument& document);
    frmCompare* ToFront(const Text& pair);
    void Open(Text pair, std::unique_ptr<CompareSide> left, std::unique_ptr<CompareSide> right);

    DocumentServices& services_;
    SettingsStore& store_;
    QWidget* owner_;
    std::function<void(QWidget*)> host_;
    struct Shown {
        QPointer<frmCompare> window;
        Text pair; ///< of which texts; empty where that is not known
    };
    std::vector<Shown> windows_;
};

} // namespace nib
