#pragma once

#include "shell/context.h"

#include <QString>

// Saving the staff record: an INSERT for a new record under a free code, an
// UPDATE with red and black rows in the maintenance log for an existing one,
// then the telephone directory and the seal file. The outcome is in
// 処理結果区分 and 処理結果文 of the screen state.
void 担当者save(Context& ctx);
void 担当者insert(Context& ctx);
void 担当者update(Context& ctx);
// The first free code at or after the record's code; "" for an empty code.
QString コード重複chk(Context& ctx);

// The maintenance log L担当者: a black row from the screen record, a red row
// from the database as the row stands before the change.
void 担当者log黒(Context& ctx);
void 担当者log赤(Context& ctx);

// The telephone directory M電話番号, keyed by the digits of the number.
void 電話番号upsert(Context& ctx, const QString& 電話, const QString& 名称, const QString& 郵便番号,
                    const QString& 住所A, const QString& 住所B, const QString& 住所C, short 法人個人区分);

// A seal picked for the record is copied into place once the row is written.
void 担当者印save(Context& ctx);
void 担当者印delete(Context& ctx);
