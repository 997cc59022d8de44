#include "persistence/settings/frmSettingsPreview.h"

#include "documents/DocumentSettings.h"
#include "persistence/settings/SamplePreview.h"
#include "text/widget/SourceViewWidget.h"

#include <QVBoxLayout>

namespace nib {

namespace {
constexpr int kLeastLines = 7;
} // namespace

StylePreview::StylePreview() : sample_(SampleSettings())
{
    setObjectName(QStringLiteral("Preview"));
    setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    buffer_.SetLexer(&lexer_);
    view_ = std::make_unique<SourceViewWidget>(buffer_, clipboard_);
    setAccessibleName(tr("Preview"));
    view_->setAccessibleName(accessibleName());
    view_->setFocusPolicy(Qt::NoFocus);
    view_->viewport()->setFocusPolicy(Qt::NoFocus);
    view_->setAttribute(Qt::WA_TransparentForMouseEvents);
    view_->viewport()->setAttribute(Qt::WA_TransparentForMouseEvents);
    view_->viewport()->setAcceptDrops(false);
    view_->setAcceptDrops(false);
    view_->setAttribute(Qt::WA_InputMethodEnabled, false);
    view_->setMinimumHeight(fontMetrics().lineSpacing() * kLeastLines);
    auto* room = new QVBoxLayout(this);
    room->setContentsMargins(1, 1, 1, 1);
    room->addWidget(view_.get());
    view_->Model().SetText(kSampleProgram);
}

StylePreview::~StylePreview()
{
    // Before the buffer that it shows, and out of the hands of this widget's end.
    view_.reset();
    buffer_.SetLexer(nullptr);
}

void StylePreview::Show(const MvEdit& settings)
{
    ShowOnSample(settings, sample_);
    ApplyViewSettings(view_->Model(), sample_, &lexer_);
}

} // namespace nib
