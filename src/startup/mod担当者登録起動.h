#pragma once

#include "shell/context.h"
#include "shell/主画面.h"

#include "platform/os/os.h"

#include <QString>

#include <functional>

// The start of the program, in its fixed order: the databases, the company
// record, the personnel link, the menu row, the right to run, the command line
// and the previous-instance rule, then the main form. Each refused gate shows
// its message and ends the process.
//
// 起動許可 answers whether the operator may run this program (it may ask for
// the PIN). 前回起動 is held for the life of the process: it announces this
// instance at once, and is how a start without a staff code finds an earlier
// instance still running.
void 担当者登録main(Context& ctx, 主画面& form, const std::function<bool(Context&)>& 起動許可,
                    os::SingleInstance& 前回起動);

// The register of the running instances, beside the program.
QString 起動登録フォルダ(const Context& ctx);
