#pragma once

#include "shell/context.h"

// Makes the desktop database tool of this machine open the report databases
// without a security question: finds the tool through the registry, tells its
// version from its folder, and writes for the current user what that version
// needs (the file association, the security level, or a trusted location for
// the report folder). True when the version's steps ran; False when the tool or
// its version is not found, or when no key of the version's steps could be opened.
bool DBツール登録(Context& ctx);
