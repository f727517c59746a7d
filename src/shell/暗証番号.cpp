#include "shell/暗証番号.h"

#include "platform/pin/pin_codec.h"
#include "shell/modデータ処理.h"

namespace {

const pin::Codec& codec(Context& ctx) {
    if (!ctx.pinCodec)
        ctx.pinCodec = std::make_unique<pin::Codec>(暗証番号鍵ファイル(ctx.folders.共通confフォルダ));
    return *ctx.pinCodec;
}

} // namespace

QString 暗証番号鍵ファイル(const QString& 共通confフォルダ) {
    return 共通confフォルダ + パス区切り() + QStringLiteral("pin.key");
}

QString 暗証番号encode(Context& ctx, const QString& 暗証番号) {
    QString stored;
    QString error;
    if (!codec(ctx).encode(暗証番号, &stored, &error))
        エラー履歴add(ctx, QStringLiteral("PIN_ENCODE ERROR ") + error);
    return stored;
}

QString 暗証番号decode(Context& ctx, const QString& 格納値) {
    QString plain;
    QString error;
    if (!codec(ctx).decode(格納値, &plain, &error))
        エラー履歴add(ctx, QStringLiteral("PIN_DECODE ERROR ") + error);
    return plain;
}
