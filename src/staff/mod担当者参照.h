#pragma once

#include "shell/context.h"

#include <QString>

// The lookups of the staff card: a code typed into one of its fields fetches
// the row of its master. Each get routine opens the row and leaves it open in
// ctx.参照行 for the set routine that follows, which takes it over into the
// record and closes it; the caller closes it after a get that found nothing.

bool 事業所get(Context& ctx, const QString& コード);
void 事業所set(Context& ctx);
bool 部門get(Context& ctx, const QString& コード);
void 部門set(Context& ctx);
bool セクションget(Context& ctx, const QString& コード);
void セクションset(Context& ctx);
bool 役職get(Context& ctx, const QString& コード);
void 役職set(Context& ctx);

// A postcode as typed ("100-0001"); its set fills the address lines when they
// are empty.
bool 郵便番号get(Context& ctx, const QString& 郵便番号);
void 郵便番号set(Context& ctx);

// An employee of the personnel system with the names of its organisation, on
// the main connection; its set copies the employee over the record on the
// card, new or existing, and takes the employee's photos and seal over.
bool 社員get(Context& ctx, const QString& コード);
void 社員set(Context& ctx);
