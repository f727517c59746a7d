#pragma once

#include "platform/ui/waitbox.h"

#include <memory>

class QDialog;
class QLabel;

// The modeless "please wait" box shown during long file work. It is made when
// shown and unloaded when closed.
class msgお待ち : public ui::WaitBox {
public:
    msgお待ち();
    ~msgお待ち() override;
    // Loads the box (brought to the top of the windows), shows it and lets
    // pending events run once.
    void show() override;
    // Unloads the box.
    void close() override;

    // The box while it is loaded, else null.
    QDialog* form() const { return form_.get(); }
    QLabel* lab_msg = nullptr;

private:
    void load();
    std::unique_ptr<QDialog> form_;
};
