#include "persistence/settings/frmSettingsHighlight.h"

#include "documents/DocumentSettings.h"
#include "persistence/settings/ColorTable.h"
#include "persistence/settings/frmSettingsFields.h"
#include "platform/qt/QtText.h"
#include "text/widget/SourceViewWidget.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kLeastLines = 7;

constexpr int kPreviewChars = 6;

constexpr double kHardToRead = 3;

QLabel* Heading(const QString& text)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

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

ScreenColors StylePreview::Painted() const
{
    ScreenColors colors;
    colors.Build(view_->palette(), view_->Model());
    return colors;
}

void StylePreview::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) paletteChanged();
}

HighlightPage::HighlightPage(SettingsModel& model) : model_(model)
{
    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->addWidget(Heading(StylePreview::tr("Code Element")), 0, 0);
    grid->addWidget(Heading(StylePreview::tr("Highlight Color")), 0, 1, 1, 2);
    grid->addWidget(Heading(StylePreview::tr("Style")), 0, 3, 1, 2);
    for (const HighlightRow& setting : kHighlightRows) AddRow(*grid, setting);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    auto* reset = new QPushButton;
    CaptionButton(model_, u"cmdDefaultColors", *reset);
    reset->setAutoDefault(false);
    connect(reset, &QPushButton::clicked, this, [this] {
        model_.ResetColors();
        ShowRows();
        ShowPreview();
    });
    column->addWidget(reset, 0, Qt::AlignLeft);
    preview_ = new StylePreview;
    preview_->paletteChanged = [this] { ShowPainted(); };
    column->addWidget(preview_, 1);
    ShowRows();
    ShowPreview();
}

void HighlightPage::AddRow(QGridLayout& grid, const HighlightRow& setting)
{
    const QString number = QString::number(rows_.size());
    const QString caption = Translated(setting.caption);
    int line = grid.rowCount();
    Row row;
    row.cbColor = new ColorCombo([this, color = setting.color](int32_t value) {
        model_.Clone().*color = value;
        ShowPreview();
    });
    row.cbColor->setObjectName(QStringLiteral("cbColor") + number);
    row.cbColor->setAccessibleName(caption);
    auto* label = new QLabel(caption);
    label->setBuddy(row.cbColor);
    auto* swatch = new QLabel;
    swatch->setObjectName(QStringLiteral("lblColor") + number);
    swatch->setAutoFillBackground(true);
    swatch->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    swatch->setMinimumWidth(fontMetrics().averageCharWidth() * kPreviewChars);
    row.cbColor->SetPreview(swatch);
    grid.addWidget(label, line, 0);
    grid.addWidget(row.cbColor, line, 1);
    grid.addWidget(swatch, line, 2);
    if (setting.style) {
        row.chkBold = AddStyle(setting, StylePreview::tr("Bold"), u"chkBold", token_style::kBold);
        row.chkItalic = AddStyle(setting, StylePreview::tr("Italic"), u"chkItalic", token_style::kItalic);
        grid.addWidget(row.chkBold, line, 3);
        grid.addWidget(row.chkItalic, line, 4);
        row.lblHard = new QLabel(StylePreview::tr("Hard to read"));
        row.lblHard->setObjectName(QStringLiteral("lblHard") + number);
        QSizePolicy kept = row.lblHard->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        row.lblHard->setSizePolicy(kept);
        grid.addWidget(row.lblHard, line, 5);
    }
    rows_.push_back(row);
}

QCheckBox* HighlightPage::AddStyle(const HighlightRow& setting, const QString& caption, TextView name, int32_t bit)
{
    auto* box = new QCheckBox(caption);
    box->setObjectName(ToQString(name) + QString::number(rows_.size()));
    box->setAccessibleName(Translated(setting.caption) + QLatin1String(", ") + caption);
    connect(box, &QCheckBox::clicked, this, [this, style = setting.style, bit](bool on) {
        int16_t& bits = model_.Clone().*style;
        bits = static_cast<int16_t>(on ? bits | bit : bits & ~bit);
        ShowPreview();
    });
    return box;
}

void HighlightPage::ShowRows()
{
    for (size_t i = 0; i < rows_.size(); ++i) {
        const HighlightRow& setting = kHighlightRows[i];
        rows_[i].cbColor->SetValue(model_.Clone().*setting.color);
        if (!setting.style) continue;
        int16_t style = model_.Clone().*setting.style;
        rows_[i].chkBold->setChecked(style & token_style::kBold);
        rows_[i].chkItalic->setChecked(style & token_style::kItalic);
    }
}

void HighlightPage::ShowPreview()
{
    preview_->Show(model_.Clone());
    ShowPainted();
}

/// A colour that follows the scheme is shown as the scheme has it.
void HighlightPage::ShowPainted()
{
    const ScreenColors painted = preview_->Painted();
    for (size_t i = 0; i < rows_.size(); ++i) {
        const HighlightRow& setting = kHighlightRows[i];
        const QColor color = setting.style ? painted.Style(setting.token).color : painted.base;
        rows_[i].cbColor->ShowPainted(color);
        if (rows_[i].lblHard) rows_[i].lblHard->setVisible(Contrast(color, painted.base) < kHardToRead);
    }
}

} // namespace nib
