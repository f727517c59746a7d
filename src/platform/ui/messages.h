#pragma once

#include <QString>

namespace ui {

enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

// The program's message boxes: a text, OK or Yes/No, and which button is the
// default (1 the first, 2 the second). The caption is the program title; no icon.
class Messages {
public:
    virtual ~Messages() = default;
    virtual Answer show(const QString& text, Buttons buttons = Buttons::Ok, int defaultButton = 1) = 0;
};

// Message boxes on the screen.
class DialogMessages : public Messages {
public:
    explicit DialogMessages(QString title) : title_(std::move(title)) {}
    Answer show(const QString& text, Buttons buttons, int defaultButton) override;

private:
    QString title_;
};

} // namespace ui

namespace ui {

// Message boxes for a run without a screen: the text goes to the error stream
// and the default button is taken.
class ConsoleMessages : public Messages {
public:
    Answer show(const QString& text, Buttons buttons, int defaultButton) override;
};

} // namespace ui
