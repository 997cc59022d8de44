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
    /// it from then on, and shows it.
    QtCompareWindows(DocumentServices& services, SettingsStore& store, QWidget* owner,
                     std::function<void(QWidget* content)> host);
    ~QtCompareWindows();
    QtCompareWindows(const QtCompareWindows&) = delete;
    QtCompareWindows& operator=(const QtCompareWindows&) = delete;

    /// Asks what with where that is not clear. Throws Error when the other text cannot be had; nothing is shown then.
    void Show(CompareWith other, mvDocument& document);
    /// The text on the left, the document on the right.
    void Compare(CompareText left, mvDocument& right);
    /// Two texts of no documents.
    void Compare(CompareText left, CompareText right);
    /// The same over a dialog, until the user closes it.
    void CompareOver(QWidget& owner, CompareText left, CompareText right);

    std::function<void(mvDocument& document)> onSave;

private:
    void WithDocument(mvDocument& document);
    void WithItem(mvDocument& document);
    void Open(std::unique_ptr<CompareSide> left, std::unique_ptr<CompareSide> right);

    DocumentServices& services_;
    SettingsStore& store_;
    QWidget* owner_;
    std::function<void(QWidget*)> host_;
    std::vector<QPointer<frmCompare>> windows_;
};

} // namespace nib
