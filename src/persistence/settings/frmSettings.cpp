#include "persistence/settings/frmSettings.h"

#include "persistence/settings/frmSettingsFields.h"
#include "persistence/settings/frmSettingsHighlight.h"
#include "persistence/settings/frmSettingsKeywords.h"
#include "platform/qt/QtText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr int kRows = 5;
constexpr int kPrefixChars = 8;

/// The order of the check boxes, column by column.
constexpr TextView kChecks[] = {u"chkLineWrap",      u"chkHighlight",   u"chkCollapseBlocks", u"chkCaseSensitive",
                                u"chkColorPrinting", u"chkAutoRecover", u"chkReopen",         u"chkLocking",
                                u"chkLargeIcons",    u"chkMinMaxClose"};

const SettingSwitch& SwitchNamed(TextView name)
{
    return *std::find_if(std::begin(kSettingSwitches), std::end(kSettingSwitches),
                         [&](const SettingSwitch& row) { return row.name == name; });
}

/// A line of text that goes into a setting as it is typed.
QLineEdit* BuildLine(const Text& present, std::function<void(const QString&)> typed)
{
    auto* line = new QLineEdit(ToQString(present));
    QObject::connect(line, &QLineEdit::textEdited, line, std::move(typed));
    return line;
}

} // namespace

GeneralPage::GeneralPage(SettingsModel& model, std::function<void()> changed, std::function<void(QWidget*)> connections)
    : model_(model), changed_(std::move(changed))
{
    auto* column = new QVBoxLayout(this);
    auto* hostConfig = AddCheck(u"chkHostConfig", model_.LoadsHostConfig(),
                                [this](QCheckBox& box, bool on) { box.setChecked(model_.ChangeHostConfig(on)); });
    column->addWidget(hostConfig);

    auto* files = new QHBoxLayout;
    auto* recent = new NumberField(model_.RecentLimit(), model_.RecentCapacity());
    files->addWidget(LabelFor(model_, u"txtRecentFiles", *recent));
    files->addWidget(recent);
    files->addStretch(1);
    if (connections) {
        auto* edit = new QPushButton(tr("Co&nnections..."));
        edit->setAutoDefault(false);
        files->addWidget(edit);
        connect(edit, &QPushButton::clicked, this, [this, open = std::move(connections)] { open(this); });
    }
    column->addLayout(files);
    column->addLayout(BuildDialect());
    connect(recent, &QSpinBox::valueChanged, this, [this](int value) { model_.SetRecentCapacity(value); });

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    int place = 0;
    for (TextView name : kChecks) {
        QCheckBox* box = nullptr;
        if (name == u"chkMinMaxClose") {
            box = AddCheck(name, model_.Clone().MinMaxClose,
                           [this](QCheckBox& self, bool on) { self.setChecked(model_.ChangeMinMaxClose(on)); });
        } else if (name == u"chkCaseSensitive") {
            box = AddCheck(name, model_.Clone().Keywords.CaseSensitive(),
                           [this](QCheckBox&, bool on) { model_.Clone().Keywords.SetCaseSensitive(on); });
            chkCaseSensitive_ = box;
        } else {
            bool MvEdit::*member = SwitchNamed(name).member;
            box = AddCheck(name, model_.Clone().*member, [this, member](QCheckBox&, bool on) {
                model_.Clone().*member = on;
                changed_();
            });
        }
        grid->addWidget(box, place % kRows, place / kRows);
        ++place;
    }
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    column->addWidget(BuildFont());
    column->addStretch(1);
}

QCheckBox* GeneralPage::AddCheck(TextView name, bool state, std::function<void(QCheckBox&, bool)> clicked)
{
    auto* box = new QCheckBox;
    CaptionButton(model_, name, *box);
    box->setChecked(state);
    // Heard when the user clicks alone, not when the box is put back.
    connect(box, &QCheckBox::clicked, this, [box, heard = std::move(clicked)](bool on) { heard(*box, on); });
    return box;
}

QHBoxLayout* GeneralPage::BuildDialect()
{
    auto* row = new QHBoxLayout;
    auto* names = new QComboBox;
    const Text& present = model_.Clone().Dialect;
    for (const Text& name : model_.DialectNames()) {
        names->addItem(ToQString(name));
        if (EqualsNoCase(name, present)) names->setCurrentIndex(names->count() - 1);
    }
    row->addWidget(LabelFor(model_, u"cboDialect", *names));
    row->addWidget(names);
    row->addStretch(1);
    connect(names, &QComboBox::currentTextChanged, this, [this](const QString& name) {
        model_.SetDialect(ViewOf(name));
        changed_();
    });
    return row;
}

QGroupBox* GeneralPage::BuildFont()
{
    auto* frame = new QGroupBox(tr("Font"));
    auto* grid = new QGridLayout(frame);
    lblFontName_ = new QLabel;
    lblFontName_->setObjectName(QStringLiteral("lblFontName"));
    lblFontName_->setTextFormat(Qt::PlainText);
    lblFontSize_ = new QLabel;
    lblFontSize_->setObjectName(QStringLiteral("lblFontSize"));
    auto* change = new QPushButton;
    CaptionButton(model_, u"cmdChangeFont", *change);
    change->setAutoDefault(false);
    connect(change, &QPushButton::clicked, this, &GeneralPage::ChooseFont);
    bool MvEdit::*member = SwitchNamed(u"chkMonospace").member;
    auto* monospace = AddCheck(u"chkMonospace", model_.Clone().*member,
                               [this, member](QCheckBox&, bool on) { model_.Clone().*member = on; });
    grid->addWidget(lblFontName_, 0, 0);
    grid->addWidget(lblFontSize_, 0, 1);
    grid->addWidget(change, 0, 2);
    grid->addWidget(monospace, 1, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    ShowFont();
    return frame;
}

namespace {

/// What texts are painted in, which the first style of the list need not be.
QString UprightStyle(const QString& family)
{
    for (const QString& style : QFontDatabase::styles(family)) {
        const QFont font = QFontDatabase::font(family, style, 10);
        if (font.style() == QFont::StyleNormal && font.weight() == QFont::Normal) return style;
    }
    return {};
}

} // namespace

void GeneralPage::ChooseFont()
{
    MvEdit& settings = model_.Clone();
    QFont font(ToQString(settings.FontName));
    if (double points = ToQString(settings.FontSize).toDouble(); points >= 1) font.setPointSizeF(points);
    font.setStyleName(UprightStyle(font.family()));
    QFontDialog dialog(font, this);
    dialog.setWindowTitle(tr("Font"));
    // Some desktops list fonts their own way, leave the filter aside and offer what does not count here.
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    dialog.setOption(QFontDialog::MonospacedFonts, settings.FontMono);
    dialog.setCurrentFont(font);
    for (const QCheckBox* effect : dialog.findChildren<QCheckBox*>()) effect->parentWidget()->hide();
    // They gave the sample its room.
    for (QGroupBox* sample : dialog.findChildren<QGroupBox*>()) sample->setMinimumHeight(fontMetrics().height() * 4);
    if (dialog.exec() != QDialog::Accepted) return;
    font = dialog.selectedFont();
    settings.FontName = ToText(font.family());
    settings.FontSize = ToText(QString::number(font.pointSizeF()));
    ShowFont();
    changed_();
}

void GeneralPage::ShowFont()
{
    const MvEdit& settings = model_.Clone();
    lblFontName_->setText(ToQString(settings.FontName));
    lblFontSize_->setText(ToQString(settings.FontSize));
    lblFontName_->setAccessibleName(tr("Font name") + QLatin1String(": ") + lblFontName_->text());
    lblFontSize_->setAccessibleName(tr("Font size") + QLatin1String(": ") + lblFontSize_->text());
}

void GeneralPage::Refresh()
{
    chkCaseSensitive_->setChecked(model_.Clone().Keywords.CaseSensitive());
}

ToolsPage::ToolsPage(SettingsModel& model, std::function<void()> changed) : model_(model), changed_(std::move(changed))
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildOptions(model_, u"optEOD", kSearchEodChoices, model_.Clone().SearchEOD,
                                   [this](int32_t id) { model_.Clone().SearchEOD = static_cast<int16_t>(id); }));
    column->addWidget(BuildCompile());
    column->addWidget(BuildFormat());
    column->addWidget(BuildUserComment());
    column->addWidget(BuildHistory());
    column->addStretch(1);
}

QGroupBox* ToolsPage::BuildCompile()
{
    auto* frame = new QGroupBox(tr("Compile"));
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
    add(u"txtCleanCommand", &MvEdit::CleanCompileCommand);
    return frame;
}

QGroupBox* ToolsPage::BuildFormat()
{
    auto* frame = new QGroupBox(tr("Format"));
    auto* column = new QVBoxLayout(frame);
    column->addLayout(BuildNumbers({{u"txtTabSize", &MvEdit::TabSize}, {u"txtMargin", &MvEdit::Margin}}));
    auto* indents = new QHBoxLayout;
    indents->addWidget(BuildIndent(u"optIndentStar", &MvEdit::IndentStar));
    indents->addWidget(BuildIndent(u"optIndentBang", &MvEdit::IndentBang));
    column->addLayout(indents);
    return frame;
}

QHBoxLayout* ToolsPage::BuildNumbers(std::initializer_list<std::pair<TextView, int16_t MvEdit::*>> fields)
{
    auto* row = new QHBoxLayout;
    for (const auto& [name, member] : fields) {
        QSpinBox* field = BuildNumber(member);
        row->addWidget(LabelFor(model_, name, *field));
        row->addWidget(field);
        row->addSpacing(fontMetrics().averageCharWidth() * 3);
    }
    row->addStretch(1);
    return row;
}

QGroupBox* ToolsPage::BuildHistory()
{
    auto* frame = new QGroupBox(tr("History"));
    frame->setLayout(
        BuildNumbers({{u"txtHistoryDays", &MvEdit::HistoryDays}, {u"txtHistoryMegabytes", &MvEdit::HistoryMegabytes}}));
    return frame;
}

QGroupBox* ToolsPage::BuildUserComment()
{
    auto* frame = new QGroupBox(tr("User-defined comment"));
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

bool frmSettings::ShowSettings(SettingsModel& model, QWidget* owner, int32_t page,
                               std::function<void(QWidget*)> connections)
{
    frmSettings form(model, owner, std::move(connections));
    form.ShowPage(page);
    return form.exec() == Accepted;
}

frmSettings::frmSettings(SettingsModel& model, QWidget* owner, std::function<void(QWidget*)> connections)
    : QDialog(owner), model_(model)
{
    setWindowTitle(tr("Nib Settings"));
    auto* column = new QVBoxLayout(this);
    tabStrip_ = new QTabWidget;
    tabStrip_->setObjectName(QStringLiteral("TabStrip"));
    column->addWidget(tabStrip_, 1);
    BuildTabs(std::move(connections));
    lbHostNote_ = new QLabel(Translated(kHostNote));
    lbHostNote_->setObjectName(QStringLiteral("lbHostNote"));
    lbHostNote_->setWordWrap(true);
    // Its room is kept while it is away, so that the pages do not jump.
    QSizePolicy keep = lbHostNote_->sizePolicy();
    keep.setRetainSizeWhenHidden(model_.ShowsHostNote(SettingsPage::General) ||
                                 model_.ShowsHostNote(SettingsPage::Tools));
    lbHostNote_->setSizePolicy(keep);
    column->addWidget(lbHostNote_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    column->addWidget(buttons);
    // Once it is in the dialog, which else would not know of it.
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmSettings::reject);
    PageShown(0);
}

void frmSettings::BuildTabs(std::function<void(QWidget*)> connections)
{
    auto preview = [this] {
        if (highlight_) highlight_->ShowPreview();
    };
    general_ = new GeneralPage(model_, preview, std::move(connections));
    highlight_ = new HighlightPage(model_);
    keywords_ = new KeywordsPage(model_, [this] { general_->Refresh(); });
    QWidget* const pages[] = {general_, highlight_, new ToolsPage(model_, preview)};
    for (size_t i = 0; i < std::size(kSettingsTabs); ++i) {
        auto* panel = new QWidget;
        panel->setObjectName(ToQString(kSettingsTabs[i].key));
        auto* room = new QVBoxLayout(panel);
        room->addWidget(i < std::size(pages) ? pages[i] : keywords_);
        if (i < std::size(pages)) room->setContentsMargins(0, 0, 0, 0);
        tabStrip_->addTab(panel, Translated(kSettingsTabs[i].caption));
    }
    connect(tabStrip_, &QTabWidget::currentChanged, this, &frmSettings::PageShown);
}

/// Both tabs of keywords have the one page, which goes where it is looked at.
void frmSettings::PageShown(int index)
{
    const SettingsTab& tab = kSettingsTabs[index];
    if (tab.keywordClass) {
        tabStrip_->widget(index)->layout()->addWidget(keywords_);
        keywords_->ShowClass(tab.keywordClass);
        // By keys the focus came to the room before the page was in it.
        if (tabStrip_->widget(index)->hasFocus()) keywords_->setFocus();
    }
    lbHostNote_->setVisible(model_.ShowsHostNote(static_cast<SettingsPage>(index)));
}

void frmSettings::ShowPage(int32_t page)
{
    tabStrip_->setCurrentIndex(std::clamp<int>(page, 1, tabStrip_->count()) - 1);
}

void frmSettings::accept()
{
    if (model_.Accept()) QDialog::accept();
}

} // namespace nib
