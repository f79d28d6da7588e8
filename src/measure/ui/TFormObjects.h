// The icons form: the tactical icons of the installation to choose from,
// the text and height of the next icon billboard, and "Change Color".
// It stays open beside the main window while the icon mode is on.
#pragma once

#include <QWidget>

class QGridLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QToolButton;

class TFormObjects : public QWidget {
    Q_OBJECT
public:
    explicit TFormObjects(QWidget* parent = nullptr);
    // Fills the icons (SetSatamim), chooses the first and shows the form.
    void showIcons();
    // Chooses icon index: the logic's IM01Click, then the form shows it.
    void IM01Click(int index);

    QLineEdit* TextEdit = nullptr;
    QLineEdit* NameEdit = nullptr;
    QSpinBox* SizeEdit = nullptr;
    QLabel* SelectedPicture = nullptr;

private:
    void showSelection();
    QGridLayout* icons_ = nullptr;
};
