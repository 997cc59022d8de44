#pragma once
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "platform/qt/QtClipboard.h"
#include "text/SourceDocument.h"

#include <QCoreApplication>
#include <QFrame>

namespace nib {

class SourceViewWidget;

/// A sample program in the colours being chosen; it is for looking at alone.
class StylePreview final : public QFrame {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    StylePreview();
    ~StylePreview() override;
    void Show(const MvEdit& settings);

private:
    MvEdit sample_;
    LexClass lexer_;
    SourceDocument buffer_;
    QtClipboard clipboard_;
    std::unique_ptr<SourceViewWidget> view_;
};

} // namespace nib
