#pragma once

// What the start-up needs of the main form. The form object is made before
// any database is touched; showing it runs its load.
class 主画面 {
public:
    virtual ~主画面() = default;
    // Shows the form modeless; its load event runs inside this call.
    virtual void 表示() = 0;
    // Points 現在項目 at the form's first focus control, runs the focus walk
    // and sets the focus there.
    virtual void 先頭項目focus() = 0;
};
