#pragma once

#include "shell/context.h"
#include "shell/主画面.h"

#include "platform/os/os.h"

#include <QString>

#include <functional>

// The start of the program, in its fixed order: the databases, the company
// record, the personnel link, the menu row, the right to run, the command line
// and the previous-instance rule, then the main form. Each refused gate shows
// its message and ends the process with its own exit code (終了コード).
//
// 起動許可 answers whether the operator may run this program (it may ask for
// the PIN). 前回起動 is held for the life of the process: it announces this
// instance at once, and is how a start without a staff code finds an earlier
// instance still running.
void 担当者登録main(Context& ctx, 主画面& form, const std::function<bool(Context&)>& 起動許可,
                    os::SingleInstance& 前回起動);

// The register of the running instances, beside the program.
QString 起動登録フォルダ(const Context& ctx);

// The exit status of the process, so that a calling script can tell a failed
// start from a normal end. A start that gives way to an earlier instance is a
// normal end.
namespace 終了コード {
constexpr int 正常 = 0;
constexpr int データベース = 1; // "データベースが使用できません。"
constexpr int 引数 = 2;         // an option of the command line is wrong
constexpr int ユーザ情報 = 3;   // "ユーザ情報が使用できません。"
constexpr int 人事連携 = 4;     // "人事就業管理連携データベースが使用できません。"
constexpr int 操作権限 = 5;     // "操作権限がありません。" at the start
constexpr int 画面保存 = 6;     // --screenshot could not write its picture
} // namespace 終了コード
