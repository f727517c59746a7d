#pragma once

#include "platform/db/connection.h"
#include "platform/os/os.h"
#include "platform/ui/messages.h"
#include "platform/ui/waitbox.h"

#include <QString>

// The program's shared state, grouped by area. One Context lives for the run;
// main creates it, tests make a fresh one per test.

// The folder tree under the suite's root, and the kinds of the desktop database files.
struct フォルダ情報 {
    QString 基準フォルダ;
    QString prgbinフォルダ;
    QString gnrdbパス;
    QString 共通confフォルダ;
    QString 共通reportフォルダ;
    QString manualフォルダ;
    QString confフォルダ;
    QString reportフォルダ;
    QString Accessデータパス;
    short gnrdb種別 = 0;   // 1 ".accdb", 2 ".mdb", 0 none
    short usrcnfg種別 = 0;
    short repdb種別 = 0;
};

// The two connections of the run and the row データベース定義 'GNR'.
struct 接続情報 {
    ::db::Connection 環境DB接続;
    bool 環境DB接続中 = false;
    ::db::Connection 業務DB接続;
    bool 業務DB接続中 = false;

    QString db; // the SQL dialect: "A", "S" or "O"
    QString dbmw;
    QString プロバイダ名;
    QString データベース名;
    QString ドライバ名;
    QString ユーザーID;
    QString パスワード;
    QString データソース名;
    QString サーバー名;
    QString 接続文字列;
};

// The user and the machine.
struct 端末情報 {
    QString ユーザ名;
    QString コンピュータ名;
    QString ユーザID;
};

// The row 動作環境定義 '001'.
struct 動作環境情報 {
    QString 運用事業所コード = QStringLiteral("000");
    short インストール区分 = 0;
    short CL更新実行区分 = 0;
    QString バックアップ日付;
    QString 運用条件切替日付;
    short バックアップ方法 = 0;
    short バックアップ日指定 = 0;
    short 月曜バックアップ = 0;
    short 火曜バックアップ = 0;
    short 水曜バックアップ = 0;
    short 木曜バックアップ = 0;
    short 金曜バックアップ = 0;
    short 土曜バックアップ = 0;
    short 日曜バックアップ = 0;
    QString バックアップ開始時刻;
    QString バックアップフォルダ;
    QString 起動担当者コード;
};

// The state of this run: its history counter, command line and office.
struct 稼動情報 {
    double 稼動連番 = 0;       // number of the last history row of this run
    QString 起動コマンド;      // the trimmed command line
    QString 操作事業所コード;  // the office of the run
};

// The operator: who is working the program.
struct 操作担当者情報 {
    QString 操作担当者コード;
    QString 氏名;
    QString 事業所コード;
    QString 部門コード;
    QString セクションコード;
    QString 役職コード;
    QString ログインID;
    short 社員区分 = 0;
    short アクセス権限 = 0;
    QString 処理分類操作許可[10];
    QString 操作許可;
    QString 入力許可;
    QString 修正許可;
    QString 削除許可;
    QString 印刷許可;
    QString プレビュ許可;
    QString テキスト出力許可;
    QString イメージ出力許可;
};

// The program link: a request taken at start and the answer owed at the end.
struct 連携情報 {
    QString 発信プログラムID;
    QString 起動連携情報;
    QString 終了連携情報;
};

struct Context {
    Context(os::System& system, ui::Messages& messages, ui::WaitBox& waitBox)
        : sys(system), msg(messages), wait(waitBox) {}
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    // The platform seams.
    os::System& sys;
    ui::Messages& msg;
    ui::WaitBox& wait;

    // The name of this program, as the history, the link and the menu know it.
    const QString プログラムID = QStringLiteral("担当者登録");

    フォルダ情報 folders;
    接続情報 conn;
    端末情報 terminal;
    動作環境情報 env;
    稼動情報 run;
    操作担当者情報 op;
    連携情報 link;
};
