#include "TFormOrvoMsg.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

TFormOrvoMsg::TFormOrvoMsg(int buttonCount, QWidget* parent) : QDialog(parent) {
    // Above every other window, top-most ones included, so the question is never hidden.
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto* layout = new QVBoxLayout(this);
    text_ = new QLabel(this);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(false);
    layout->addWidget(text_);
    auto* row = new QHBoxLayout;
    for (int number = 1; number <= buttonCount; ++number) {
        auto* button = new QPushButton(this);
        button->setAutoDefault(false);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this, [this, number] { done(number); });
        row->addWidget(button, 1);
        buttons_.append(button);
    }
    layout->addLayout(row);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void TFormOrvoMsg::setup(const QString& mess, const QString& Title, const QStringList& buttonTexts, int DefButon) {
    setWindowTitle(Title);
    text_->setText(mess);
    for (int at = 0; at < buttons_.size(); ++at) {
        QPushButton* button = buttons_[at];
        const QString caption = buttonTexts.value(at);
        button->setText(caption);
        button->setVisible(!caption.isEmpty());
        button->setDefault(at + 1 == DefButon);
        if (at + 1 == DefButon) button->setFocus();
    }
}

QPushButton* TFormOrvoMsg::button(int number) const { return buttons_.value(number - 1); }
