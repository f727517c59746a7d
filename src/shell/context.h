#pragma once

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/table_links.h"
#include "platform/os/os.h"
#include "platform/os/registry.h"
#include "platform/ui/desktop.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/messages.h"
#include "platform/ui/waitbox.h"

#include <QString>

#include <functional>
#include <memory>

namespace pin {
class Codec;
}
class QWidget;

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
    QString Access実行パス; // the desktop database tool's folder, as the registry names it
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


// The company row of Mユーザ. Numbers are kept as the program reads them from
// their text columns; most of these are common to the suite and only kept here.
struct 会社情報 {
    QString ID, 名称, 郵便番号, 住所A, 住所B, 住所C, 代表者名, 電話, FAX, HOMEPAGE, EMAIL, 会社ロゴfile, 社印file;
    QString 銀行口座A, 銀行口座B, 銀行口座C, 銀行口座D;
    short 決算月 = 0, 決算日 = 0, 締日区分 = 0, 締日 = 0, 決済方法 = 0, 決済月 = 0, 決済日 = 0;
    double 現金決済金額 = 0;
    short 手形サイト = 0, 売上金額丸め方法 = 0, 仕入金額丸め方法 = 0, 在庫評価方法 = 0;
    short 売上単価少数以下桁数 = 0, 売上数量少数以下桁数 = 0, 仕入単価少数以下桁数 = 0, 仕入数量少数以下桁数 = 0;
    short 在庫単価少数以下桁数 = 0, 在庫数量少数以下桁数 = 0, 重量少数以下桁数 = 0;
    short 得意先単価自動更新区分 = 0, 納品先単価自動更新区分 = 0, 仕入先単価自動更新区分 = 0;
    QString 写真フォルダ, ドキュメントフォルダ, 総合振込ファイル, 基本読込フォルダ, 帳票イメージフォルダ, その他読込ファイル;
    QString 本支店連携フォルダ, テキスト出力フォルダ, BACKUPフォルダ;
    short 明細保存月数 = 0, 統計保存年数 = 0, 整理実施可能日自 = 0, 整理実施可能日至 = 0, 整理実施可能時刻 = 0;
    QString 明細整理実行日, 統計整理実行日;
    short 伝票番号管理区分 = 0, 暗証番号有無 = 0;
    QString 特権暗証番号; // decoded
    short 更新実行区分 = 0;
    QString システム特権暗証番号; // decoded
    QString 登録日付, 更新日付;

    // Decimal places per kind of document, derived from the columns above.
    short 売上単価桁数[3] = {}, 売上数量桁数[3] = {}, 仕入単価桁数[2] = {}, 仕入数量桁数[2] = {};
    short 在庫単価桁数 = 0, 在庫数量桁数 = 0, 重量桁数 = 0;
};

// The row of M事業所 of the office this installation works for.
struct 事業所情報 {
    QString コード, 名称, 郵便番号, 住所A, 住所B, 住所C, 代表者名, 電話, FAX, 登録番号, HOMEPAGE, EMAIL;
    QString 銀行口座A, 銀行口座B, 銀行口座C, 銀行口座D;
    QString 総合振込ファイル, 基本読込フォルダ, 帳票イメージフォルダ, その他読込ファイル, 本支店連携フォルダ;
    QString テキスト出力フォルダ, BACKUPフォルダ, 地区コード;
    short 暗証番号有無 = 0;
    QString 特権暗証番号; // decoded
    short 更新実行区分 = 0;
};

// One outside system of M他業務連携, a slot of the link table.
struct 他業務情報型 {
    QString コード, 業務名;
    short 連携有無区分 = 0;
    QString 連携DB, 連携DBMW, 連携データソース名, 連携ドライバ名, 連携接続文字列, 連携データベース名, 連携サーバー名;
    QString 連携ユーザーID, 連携パスワード, 連携アプリフォルダ;
    short 顧客更新有無区分 = 0, 得意先更新有無区分 = 0, 納品先更新有無区分 = 0, 仕入先更新有無区分 = 0;
    short メーカ更新有無区分 = 0, 対応先更新有無区分 = 0, 商品更新有無区分 = 0, 社員更新有無区分 = 0;

    // Filled when the link is opened: the outside system's own environment,
    // folders and company row, and the slot's two connections.
    QString プロバイダ名;
    QString prgbinフォルダ, 共通confフォルダ, gnrdbパス, manualフォルダ, 共通reportフォルダ;
    QString confフォルダ, reportフォルダ;
    QString 運用事業所コード;
    short インストール区分 = 0, CL更新実行区分 = 0, 更新実行区分 = 0;
    QString 写真フォルダ, ドキュメントフォルダ, 総合振込ファイル, 基本読込フォルダ, 帳票イメージフォルダ;
    QString その他読込ファイル, 本支店連携フォルダ, テキスト出力フォルダ, BACKUPフォルダ;
    ::db::Connection 環境DB接続;
    bool 環境DB接続中 = false;
    ::db::Connection 業務DB接続;
    bool 業務DB接続中 = false;
};

// The outside systems: ten slots, of which the first 他業務件数 are read.
struct 他業務連携情報 {
    他業務情報型 slot[10];
    int 他業務件数 = 5;
    int 連携番号 = -1;
};

// The PIN gate.
struct 暗証情報 {
    bool 暗証確認済 = false;
    short 暗証番号有無 = 0;
    QString 特権暗証番号; // the office's, decoded
};

// The staff record on the screen: one field per column of M担当者, the joined
// names, the screen form of the three dates, and the photo and seal state.
struct 担当者情報型 {
    QString コード, 姓, 名, 氏名, カナ姓, カナ名, カナ;
    short 性別区分 = 1;
    QString 生年月日;
    short 生年月日年号区分 = 0;
    QString 生年月日年, 生年月日月, 生年月日日, 生年月日表示;
    QString 郵便番号, 住所A, 住所B, 住所C, 電話, 携帯電話, 職責, EMAIL, 担当者メモ;
    QString 事業所コード, 事業所名, 部門コード, 部門名, セクションコード, セクション名, 役職コード, 役職名;
    QString ログインID;
    short 在籍区分 = 0, 社員区分 = 1;
    QString 入社日付;
    short 入社日付年号区分 = 0;
    QString 入社日付年, 入社日付月, 入社日付日, 入社日付表示;
    QString 退社日付;
    short 退社日付年号区分 = 0;
    QString 退社日付年, 退社日付月, 退社日付日, 退社日付表示;
    QString 担当者印file, 電話番号, 携帯電話番号, 社員コード, 暗証番号;
    QString 処理分類操作許可[10];
    QString 操作許可, 入力許可, 修正許可, 削除許可, 印刷許可, プレビュ許可, テキスト出力許可, イメージ出力許可;
    QString ユーザID, 登録日付, 更新日付;
    // Photos and seal.
    QString 写真file, 表示写真file, 取込写真path, 取込担当者印path;
};

// The state of the staff screen and the window contract of the search windows.
struct 画面情報 {
    bool 新規フラグ = true;
    bool 入力フラグ = false;
    bool 単独起動フラグ = false;
    bool 画面表示中フラグ = false;
    short 処理結果区分 = 0;
    QString 処理結果文;
    QString お知らせ文;
    QWidget* 現在項目 = nullptr;
    QWidget* 直前項目 = nullptr;
    QWidget* 先頭項目 = nullptr;
    QString 検索条件;
    QWidget* 検索対象項目 = nullptr;
    QWidget* 検索次項目 = nullptr;
    QWidget* 検索元ウィンドウ = nullptr;
    short 検索元区分 = 0;
    short 画面幅 = 0;
    short 画面高 = 0;
};

struct Context {
    // プログラムID names the program of the run; the staff registration program by default.
    Context(os::System& system, ui::Messages& messages, ui::WaitBox& waitBox,
            const QString& プログラムID = QStringLiteral("担当者登録"));
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    // The platform seams.
    os::System& sys;
    ui::Messages& msg;
    ui::WaitBox& wait;
    ui::Desktop* desktop = &ui::SystemDesktop::instance();
    ui::Dialogs* dialogs = &ui::ScreenDialogs::instance();
    os::Registry* registry = &os::SystemRegistry::instance();
    // The desktop database engine that points the linked tables of a report form file at its data.
    ::db::TableLinks* tableLinks = &::db::DesktopTableLinks::instance();

    // Registers the desktop database tool for the report folder; True lets the
    // per-user report forms be relinked. Set by the program's entry; left empty
    // it counts as False.
    std::function<bool(Context&)> DBツール登録;

    // The name of this program, as the history, the link and the menu know it.
    const QString プログラムID;

    フォルダ情報 folders;
    接続情報 conn;
    端末情報 terminal;
    動作環境情報 env;
    稼動情報 run;
    操作担当者情報 op;
    連携情報 link;
    会社情報 company;
    事業所情報 office;
    他業務連携情報 others;
    暗証情報 pin;
    int 事業所件数 = 0;    // offices other than "000"
    QString 運用事業所名;  // the name of the installation's office, for the title line
    bool 人事連携フラグ = false;
    担当者情報型 担当者情報;
    画面情報 screen;
    // The staff row just read, open until it is taken over into the record, and
    // the row of a lookup of the card (a master, a postcode, an employee), open
    // until the routine that follows takes it over.
    ::db::Recordset 担当者行;
    ::db::Recordset 参照行;
    QWidget* 主画面 = nullptr; // the staff screen, once it exists

    // The PIN codec, made at its first use and kept for the run.
    std::unique_ptr<pin::Codec> pinCodec;
};
