#pragma once
#include <QTreeView>

namespace nib {

/// The picker's list of names: a plain table of rows that goes up on Backspace and says why it is empty.
class PickerListView : public QTreeView {
    Q_OBJECT

public:
    explicit PickerListView(QWidget* parent = nullptr);

    void SetEmptyText(const QString& text);
    /// The first and the last row in sight; the first is beyond the last when there are none.
    std::pair<int, int> RowsInSight() const;

signals:
    void UpWanted();
    void SightChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString emptyText_;
};

} // namespace nib
