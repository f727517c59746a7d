#pragma once

namespace ui {

// The modeless "please wait" box shown during long file work.
class WaitBox {
public:
    virtual ~WaitBox() = default;
    // Shows the box on top of all windows and lets the screen paint once.
    virtual void show() = 0;
    virtual void close() = 0;
};

} // namespace ui
