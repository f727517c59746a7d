#pragma once

#include "shell/context.h"

// The shell's part of the start: the two databases and the environment, the
// menu row of this program, and the command line.

// The screen size, the start row of the run history, a waiting link request,
// the configuration and main databases and the environment. False when a
// database cannot be used; shows no message of its own.
bool データ処理init(Context& ctx);

// Tells the menu row of this program which two search conditions it takes when
// another program starts it. A failure shows its message and the start goes on.
void 担当者条件項目set(Context& ctx);

// The command line, taken anew and trimmed: characters 1 to 3 are the office of
// the run, 4 to 8 the staff code; a staff code makes a run for that one record.
void 起動コマンドparse(Context& ctx);
