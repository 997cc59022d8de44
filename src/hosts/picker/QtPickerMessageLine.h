#pragma once
#include <QWidget>

class QLabel;

namespace nib {

/// One line that tells what went wrong, inside the dialog; takes no room while there is nothing to say.
class PickerMessageLine : public QWidget {
    Q_OBJECT

public:
    explicit PickerMessageLine(QWidget* parent = nullptr);
    void Say(const QString& text);

private:
    QLabel* text_;
};

} // namespace nib
