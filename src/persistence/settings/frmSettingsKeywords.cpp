#include "persistence/settings/frmSettingsKeywords.h"

#include "persistence/settings/frmSettingsFields.h"
#include "platform/qt/QtText.h"

#include <QAbstractListModel>
#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kListChars = 24;
constexpr int kStepIn = 3;

} // namespace

/// The rows as Qt's views want them: asked for what is in sight alone, however many there are.
class KeywordListModel final : public QAbstractListModel {
public:
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(rows_.Count());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
        return ToQString(rows_.Word(static_cast<size_t>(index.row())));
    }
    const KeywordRows& Rows() const { return rows_; }
    void Fill(const clsKeywords& keywords, int32_t Class)
    {
        beginResetModel();
        rows_.Fill(keywords, Class);
        endResetModel();
    }
    void Insert(const Text& word)
    {
        KeywordRows::Place place = rows_.Find(word);
        if (place.held) return;
        int row = static_cast<int>(place.row);
        beginInsertRows({}, row, row);
        rows_.Insert(place.row, word);
        endInsertRows();
    }
    void Remove(const Text& word)
    {
        KeywordRows::Place place = rows_.Find(word);
        if (!place.held) return;
        int row = static_cast<int>(place.row);
        beginRemoveRows({}, row, row);
        rows_.Remove(place.row);
        endRemoveRows();
    }

private:
    KeywordRows rows_;
};

KeywordsPage::KeywordsPage(SettingsModel& model, std::function<void()> imported)
    : model_(model), imported_(std::move(imported)), words_(std::make_unique<KeywordListModel>())
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(BuildList(), 1);
    auto* side = new QVBoxLayout;
    txtKeyword_ = new QLineEdit;
    side->addWidget(LabelFor(model_, u"txtKeyword", *txtKeyword_));
    side->addWidget(txtKeyword_);
    side->addWidget(BuildBlock());
    cmdAdd_ = BuildButton(u"cmdAdd", *side, [this] { Add(); });
    cmdAdd_->setToolTip(tr("Adds the keyword, or gives a keyword of the list the block indent chosen here"));
    cmdRemove_ = BuildButton(u"cmdRemove", *side, [this] { Remove(); });
    side->addStretch(1);
    BuildButton(u"cmdImport", *side, [this] {
        if (!model_.ImportKeywords(class_)) return;
        Fill();
        imported_();
    });
    BuildButton(u"cmdExport", *side, [this] { model_.ExportKeywords(class_); });
    row->addLayout(side);
    txtKeyword_->installEventFilter(this);
    lstKeywords_->installEventFilter(this);
    setFocusProxy(lstKeywords_);
    connect(txtKeyword_, &QLineEdit::textChanged, this, [this] { ShowWord(); });
    Fill();
}

KeywordsPage::~KeywordsPage()
{
    lstKeywords_->setModel(nullptr);
}

QWidget* KeywordsPage::BuildList()
{
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    lstKeywords_ = new QListView;
    lstKeywords_->setUniformItemSizes(true);
    lstKeywords_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstKeywords_->setMinimumWidth(fontMetrics().averageCharWidth() * kListChars);
    lstKeywords_->setModel(words_.get());
    column->addWidget(LabelFor(model_, u"lstKeywords", *lstKeywords_));
    column->addWidget(lstKeywords_, 1);
    connect(lstKeywords_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& now) {
        if (!selecting_ && now.isValid()) txtKeyword_->setText(now.data().toString());
    });
    return side;
}

QPushButton* KeywordsPage::BuildButton(TextView name, QVBoxLayout& column, std::function<void()> clicked)
{
    auto* button = new QPushButton;
    CaptionButton(model_, name, *button);
    button->setAutoDefault(false);
    column.addWidget(button);
    connect(button, &QPushButton::clicked, this, std::move(clicked));
    return button;
}

QRadioButton* KeywordsPage::BuildOption(TextView name)
{
    auto* option = new QRadioButton;
    CaptionButton(model_, name, *option);
    return option;
}

QGroupBox* KeywordsPage::BuildBlock()
{
    frBlock_ = new QGroupBox;
    frBlock_->setObjectName(QStringLiteral("frBlock"));
    auto* column = new QVBoxLayout(frBlock_);
    auto* styles = new QButtonGroup(this);
    auto* places = new QButtonGroup(this);
    auto add = [&](TextView name, QButtonGroup& group) {
        QRadioButton* option = BuildOption(name);
        group.addButton(option);
        column->addWidget(option);
        return option;
    };
    optNone_ = add(u"optNone", *styles);
    optBegin_ = add(u"optBegin", *styles);
    auto* inner = new QVBoxLayout;
    inner->setContentsMargins(fontMetrics().averageCharWidth() * kStepIn, 0, 0, 0);
    for (auto [name, option] :
         {std::pair(u"optAny", &optAny_), std::pair(u"optFirst", &optFirst_), std::pair(u"optLast", &optLast_)}) {
        *option = BuildOption(name);
        places->addButton(*option);
        inner->addWidget(*option);
    }
    column->addLayout(inner);
    optEnd_ = add(u"optEnd", *styles);
    optMid_ = add(u"optMid", *styles);
    connect(styles, &QButtonGroup::idClicked, this, [this] { EnableOptions(false); });
    return frBlock_;
}

void KeywordsPage::ShowClass(int32_t Class)
{
    if (class_ == Class) return;
    class_ = Class;
    Fill();
}

Text KeywordsPage::Typed() const
{
    return Text(Trim(ToText(txtKeyword_->text())));
}

void KeywordsPage::Fill()
{
    words_->Fill(model_.Clone().Keywords, class_);
    txtKeyword_->clear();
    ShowWord();
}

void KeywordsPage::ShowWord()
{
    Text word = Typed();
    KeywordState state = model_.StateOf(word, class_);
    frBlock_->setTitle(state.reserved ? tr("Block indent for reserved keyword") : tr("Block indent for keyword"));
    if (state.listed || state.reserved)
        ShowChoice(state.choice, state.reserved);
    else
        EnableOptions(false);
    cmdAdd_->setEnabled(!word.empty());
    cmdRemove_->setEnabled(state.listed);
    SelectRow(state.listed ? word : Text());
}

/// The row of the word, without an echo; of no word when it is empty.
void KeywordsPage::SelectRow(const Text& word)
{
    KeywordRows::Place place = words_->Rows().Find(word);
    QModelIndex row = place.held ? words_->index(static_cast<int>(place.row)) : QModelIndex();
    if (row == lstKeywords_->currentIndex()) return;
    selecting_ = true;
    lstKeywords_->setCurrentIndex(row);
    selecting_ = false;
}

void KeywordsPage::ShowChoice(BlockChoice choice, bool reserved)
{
    QRadioButton* const styles[] = {optNone_, optBegin_, optEnd_, optMid_};
    QRadioButton* const places[] = {optAny_, optFirst_, optLast_};
    styles[choice.style]->setChecked(true);
    places[static_cast<size_t>(choice.place)]->setChecked(true);
    EnableOptions(reserved);
}

/// A reserved word leaves nothing to choose; places are for words that begin a block.
void KeywordsPage::EnableOptions(bool reserved)
{
    if (!optNone_->isChecked() && !optBegin_->isChecked() && !optEnd_->isChecked() && !optMid_->isChecked())
        ShowChoice({}, reserved);
    for (QRadioButton* option : {optNone_, optBegin_, optEnd_, optMid_})
        option->setEnabled(!reserved || option->isChecked());
    for (QRadioButton* option : {optAny_, optFirst_, optLast_})
        option->setEnabled(optBegin_->isChecked() && (!reserved || option->isChecked()));
}

BlockChoice KeywordsPage::Choice() const
{
    BlockChoice choice;
    if (optBegin_->isChecked()) choice.style = block_style::kBegin;
    if (optEnd_->isChecked()) choice.style = block_style::kEnd;
    if (optMid_->isChecked()) choice.style = block_style::kMiddle;
    if (optFirst_->isChecked()) choice.place = BlockPlace::StatementStart;
    if (optLast_->isChecked()) choice.place = BlockPlace::LineEnd;
    return choice;
}

void KeywordsPage::Add()
{
    Text word = Typed();
    if (!model_.AddKeyword(word, class_, Choice())) return;
    words_->Insert(word);
    ShowWord();
    txtKeyword_->setFocus();
    txtKeyword_->selectAll();
}

void KeywordsPage::Remove()
{
    Text word = Typed();
    if (!model_.RemoveKeyword(word, class_)) return;
    selecting_ = true;
    words_->Remove(word);
    selecting_ = false;
    if (QModelIndex next = lstKeywords_->currentIndex(); lstKeywords_->hasFocus() && next.isValid())
        txtKeyword_->setText(next.data().toString());
    else
        txtKeyword_->clear();
    ShowWord();
}

/// Return adds the word that is being typed, Delete takes the chosen one away; neither closes the dialog.
bool KeywordsPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        int key = static_cast<QKeyEvent*>(event)->key();
        bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (watched == txtKeyword_ && isReturn && cmdAdd_->isEnabled()) {
            Add();
            return true;
        }
        if (watched == lstKeywords_ && key == Qt::Key_Delete && cmdRemove_->isEnabled()) {
            Remove();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace nib
