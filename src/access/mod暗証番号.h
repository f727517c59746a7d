#pragma once

#include "shell/context.h"

#include <QString>

class msg暗証番号確認;

// The answer of the operator gate. Only 許可 lets the caller go on; the two
// others are refusals alike, and the caller shows "操作権限がありません。".
enum class 許可回答 : short {
    許可 = -1,    // True: the operator may do the operation
    未確認 = 0,   // False: no operator was accepted (the PIN dialog was given up)
    権限なし = 1, // a PIN was accepted, but that operator has no right to the operation
};

// The gate every action asks. Without PINs (暗証番号有無 other than 1) it
// answers 許可 at once. A remembered operator with the right passes quietly;
// otherwise the PIN dialog asks who is working, captioned メニュ名 + "/暗証確認".
許可回答 操作許可chk(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作);

// The quiet form of the gate: True, and 暗証確認済 set, when the remembered
// operator of the environment row exists and may do the operation.
bool 起動担当者chk(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作);

// Remembers 操作担当者コード in the environment row as the operator of the next
// start, then reads the operator's record. A failing write is shown and the
// record is not read.
void 起動担当者save(Context& ctx);

// Finds the staff member whose ログインID is the platform's user name and
// shows them on the form (code, name and the PIN to check against).
bool ログイン担当者read(Context& ctx, msg暗証番号確認& form, const QString& ログインID);

// Finds a present staff member of this office or the head office by code and
// shows them on the form; also fills the rights of the operator's record.
// When none is found the form stays as it was.
bool 確認担当者read(Context& ctx, msg暗証番号確認& form, const QString& コード);
