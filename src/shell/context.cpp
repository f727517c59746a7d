#include "shell/context.h"

#include "platform/pin/pin_codec.h"

Context::Context(os::System& system, ui::Messages& messages, ui::WaitBox& waitBox)
    : sys(system), msg(messages), wait(waitBox) {}

Context::~Context() = default;
