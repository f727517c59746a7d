#pragma once

#include "shell/context.h"

#include <QTextStream>

// The installation check of "担当者登録 --check": every database as the start
// needs it (it opens, the tables the program reads are there with their
// columns, a desktop file passes the engine's integrity check, what the
// program writes can be written) and the folders the program writes into.
// One line per check goes to out, "ok" or "FAILED" with what was found, and a
// last line sums up. The answer is the exit code: 0 when every check passed,
// 1 when any failed.
int 導入点検(Context& ctx, QTextStream& out);
