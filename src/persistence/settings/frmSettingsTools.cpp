#include "persistence/settings/frmSettingsTools.h"

#include "persistence/settings/frmSettingsFields.h"
#include "platform/qt/QtText.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace nib {

namespace {

constexpr int kPrefixChars = 8;

/// A line of text that goes into a setting as it is typed.
QLineEdit* BuildLine(const Text& present, std::function<void(const QString&)> typed)
{
    auto* line = new QLineEdit(ToQString(present));
    QObject::connect(line, &QLineEdit::textEdited, line, std::move(typed));
    return line;
}

} // namespace

ToolsPage::ToolsPage(SettingsModel& model, std::function<void()> changed) : model_(model), changed_(std::move(changed))
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildOptions(model_, u"optEOD", kSearchEodChoices, model_.Clone().SearchEOD,
                                   [this](int32_t id) { model_.Clone().SearchEOD = static_cast<int16_t>(id); }));
    column->addWidget(BuildCompile());
    column->addWidget(BuildFormat());
    column->addWidget(BuildUserComment());
    column->addStretch(1);
}

QGroupBox* ToolsPage::BuildCompile()
{
    auto* frame = new QGroupBox(QStringLiteral("Compile"));
    auto* inner = new QGroupBox(QStringLiteral("BASIC"));
    inner->setAccessibleName(inner->title()); // Qt would call it by the frame's
    (new QVBoxLayout(frame))->addWidget(inner);
    auto* form = new QFormLayout(inner);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto add = [&](TextView name, Text MvEdit::*member) {
        QLineEdit* line = BuildLine(model_.Clone().*member,
                                    [this, member](const QString& text) { model_.Clone().*member = ToText(text); });
        form->addRow(LabelFor(model_, name, *line), line);
    };
    add(u"txtCommand", &MvEdit::CompileCommand);
    add(u"txtOptions", &MvEdit::CompileOptions);
    return frame;
}

QGroupBox* ToolsPage::BuildFormat()
{
    auto* frame = new QGroupBox(tr("Format"));
    auto* column = new QVBoxLayout(frame);
    auto* row = new QHBoxLayout;
    auto add = [&](TextView name, int16_t MvEdit::*member) {
        QSpinBox* field = BuildNumber(member);
        row->addWidget(LabelFor(model_, name, *field));
        row->addWidget(field);
        row->addSpacing(fontMetrics().averageCharWidth() * 3);
    };
    add(u"txtTabSize", &MvEdit::TabSize);
    add(u"txtMargin", &MvEdit::Margin);
    row->addStretch(1);
    column->addLayout(row);
    auto* indents = new QHBoxLayout;
    indents->addWidget(BuildIndent(u"optIndentStar", &MvEdit::IndentStar));
    indents->addWidget(BuildIndent(u"optIndentBang", &MvEdit::IndentBang));
    column->addLayout(indents);
    return frame;
}

QGroupBox* ToolsPage::BuildUserComment()
{
    auto* frame = new QGroupBox(QStringLiteral("User-defined comment"));
    auto* row = new QHBoxLayout(frame);
    QLineEdit* prefix =
        BuildLine(model_.UserPrefix(), [this](const QString& text) { model_.SetUserPrefix(ViewOf(text)); });
    prefix->setMaximumWidth(prefix->fontMetrics().averageCharWidth() * (kPrefixChars + 4));
    row->addWidget(LabelFor(model_, u"txtUserPrefix", *prefix));
    row->addWidget(prefix);
    row->addWidget(BuildIndent(u"optIndentUser", &MvEdit::IndentUserComment), 1);
    return frame;
}

QGroupBox* ToolsPage::BuildIndent(TextView name, int16_t MvEdit::*member)
{
    return BuildOptions(model_, name, kIndentChoices, model_.Clone().*member,
                        [this, member](int32_t id) { model_.Clone().*member = static_cast<int16_t>(id); });
}

QSpinBox* ToolsPage::BuildNumber(int16_t MvEdit::*member)
{
    auto* field = new NumberField(kMostInField, model_.Clone().*member);
    connect(field, &QSpinBox::valueChanged, this, [this, member](int value) {
        model_.Clone().*member = static_cast<int16_t>(value);
        changed_();
    });
    return field;
}

} // namespace nib
