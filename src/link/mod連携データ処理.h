#pragma once

#include "shell/context.h"

#include "platform/db/recordset.h"

#include <QString>

// The link to an outside system: one slot of the table of outside systems
// (ctx.others), with its own environment and main database connections.

// Finds the linked system by its name among the slots read from M他業務連携
// and makes it the slot in use (連携番号). False when none is linked.
bool 連携有無chk(Context& ctx, const QString& 業務名);

// Opens what the slot in use needs: its environment when it names an
// application folder, then its main database.
bool 連携DBopen(Context& ctx);
// Closes both connections of the slot in use.
void 連携DBclose(Context& ctx);

// The steps of opening.
bool 連携環境DBopen(Context& ctx);
bool 連携環境DBreopen(Context& ctx);
bool 連携業務DBopen(Context& ctx);
bool 連携ユーザ情報read(Context& ctx);
void 連携利用者環境copy(Context& ctx);

// Statements on the slot's main and environment connections. As the shell's
// statement routines: an error becomes a row of the run history and the answer
// False; the open routines answer True when the recordset stands on a row, and
// the caller closes it in every case.
bool 連携SQLopen(Context& ctx, db::Recordset& rs, const QString& sql, bool 履歴 = false);
bool 連携環境SQLopen(Context& ctx, db::Recordset& rs, const QString& sql);
bool 連携環境SQLexec(Context& ctx, const QString& sql);
