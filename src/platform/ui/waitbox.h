#pragma once

#include <memory>

class QWidget;

namespace ui {

// The modeless "please wait" box shown during long file work.
class WaitBox {
public:
    virtual ~WaitBox() = default;
    // Shows the box on top of all windows and lets the screen paint once.
    virtual void show() = 0;
    virtual void close() = 0;
};

// The box on the screen.
class ScreenWaitBox : public WaitBox {
public:
    ScreenWaitBox();
    ~ScreenWaitBox() override;
    void show() override;
    void close() override;

private:
    std::unique_ptr<QWidget> window_;
};

} // namespace ui
