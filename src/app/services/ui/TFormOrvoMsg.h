// The message boxes with free button texts: TFormOrvoMsg with three buttons,
// TFormOrvoMsg4 with four. The text grows the box line by line; buttons with
// empty texts are hidden and the rest share the row evenly. exec() gives the
// 1-based number of the button pressed, 0 when the box was closed.
#pragma once

#include <QDialog>
#include <QList>
#include <QStringList>

class QLabel;
class QPushButton;

class TFormOrvoMsg : public QDialog {
    Q_OBJECT
public:
    explicit TFormOrvoMsg(QWidget* parent = nullptr) : TFormOrvoMsg(3, parent) {}
    void setup(const QString& mess, const QString& Title, const QStringList& buttonTexts, int DefButon);
    // Button number (1-based), for tests and callers that press one.
    QPushButton* button(int number) const;
    int buttonCount() const { return static_cast<int>(buttons_.size()); }

protected:
    TFormOrvoMsg(int buttonCount, QWidget* parent);

private:
    QLabel* text_ = nullptr;
    QList<QPushButton*> buttons_;
};

class TFormOrvoMsg4 : public TFormOrvoMsg {
    Q_OBJECT
public:
    explicit TFormOrvoMsg4(QWidget* parent = nullptr) : TFormOrvoMsg(4, parent) {}
};
