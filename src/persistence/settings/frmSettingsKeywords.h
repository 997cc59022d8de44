#pragma once
#include "persistence/settings/SettingsModel.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>

class QGroupBox;
class QLineEdit;
class QListView;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace nib {

class KeywordListModel;

/// The one page that both tabs of keywords show.
class KeywordsPage final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// `imported` hears of each list that was read. The model outlives the page.
    KeywordsPage(SettingsModel& model, std::function<void()> imported);
    ~KeywordsPage() override;
    void ShowClass(int32_t Class);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* BuildList();
    QGroupBox* BuildBlock();
    QPushButton* BuildButton(TextView name, QVBoxLayout& column, std::function<void()> clicked);
    QRadioButton* BuildOption(TextView name);
    Text Typed() const;
    void Fill();
    void ShowWord();
    void ShowChoice(BlockChoice choice, bool reserved);
    void EnableOptions(bool reserved);
    BlockChoice Choice() const;
    void SelectRow(const Text& word);
    void Add();
    void Remove();

    SettingsModel& model_;
    std::function<void()> imported_;
    int32_t class_ = keyword_class::kLanguage;
    std::unique_ptr<KeywordListModel> words_;
    bool selecting_ = false;
    QListView* lstKeywords_ = nullptr;
    QLineEdit* txtKeyword_ = nullptr;
    QPushButton* cmdAdd_ = nullptr;
    QPushButton* cmdRemove_ = nullptr;
    QGroupBox* frBlock_ = nullptr;
    QRadioButton* optNone_ = nullptr;
    QRadioButton* optBegin_ = nullptr;
    QRadioButton* optAny_ = nullptr;
    QRadioButton* optFirst_ = nullptr;
    QRadioButton* optLast_ = nullptr;
    QRadioButton* optEnd_ = nullptr;
    QRadioButton* optMid_ = nullptr;
};

} // namespace nib
