#pragma once

#include <QDialog>

struct Context;
class QLabel;

// A photo at full size. A double click on the picture prints it, for an
// operator who may print in this program.
class wnd写真 : public QDialog {
public:
    wnd写真(Context& ctx, QWidget* parent);

    Context& ctx;
    QLabel* img_写真;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void img_写真_DblClick();
};
