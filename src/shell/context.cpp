#include "shell/context.h"

#include "platform/pin/pin_codec.h"

Context::Context(os::System& system, ui::Messages& messages, ui::WaitBox& waitBox, const QString& プログラムID)
    : sys(system), msg(messages), wait(waitBox), プログラムID(プログラムID) {}

Context::~Context() = default;
