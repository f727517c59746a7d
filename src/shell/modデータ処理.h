#pragma once

#include "shell/context.h"

#include "platform/db/recordset.h"

#include <QString>

#include <functional>

// Folders and database connections.
bool 環境DBopen(Context& ctx);
bool 環境DBreopen(Context& ctx);
bool 業務DBopen(Context& ctx);
void 利用者環境copy(Context& ctx);
// Points the linked tables of a report form file at a report database; every
// failure is handed to 報告 and the next step runs.
void 帳票リンクrefresh(Context& ctx, const QString& 帳票file, const QString& エンジン, const QString& データfile,
                   const std::function<void(const QString&)>& 報告);

// The five statement routines. They never fail loudly: an error becomes a row
// of the run history and the answer False. The open routines answer True when
// the recordset stands on a row; the caller closes it in every case.
bool 業務SQLopen(Context& ctx, db::Recordset& rs, const QString& sql, bool 履歴 = false);
bool 業務SQLexec(Context& ctx, const QString& sql, bool 履歴 = false);
bool 環境SQLopen(Context& ctx, db::Recordset& rs, const QString& sql);
bool 環境SQLexec(Context& ctx, const QString& sql);
bool 環境SQL記録exec(Context& ctx, const QString& sql);

// Operating environment.
bool 環境定義chk(Context& ctx);
// Reads the row 動作環境定義 '001': the first three columns, or all of them.
void 動作環境read(Context& ctx, bool 全項目);

// The remembered operator and the operator's record.
bool 起動担当者read(Context& ctx);
bool 操作担当者read(Context& ctx, const QString& コード);

// Run history and usage records.
void 開始履歴add(Context& ctx);
void 終了履歴add(Context& ctx);
void 出力終了履歴add(Context& ctx, const QString& 文);
void エラー履歴add(Context& ctx, const QString& 文);
void 使用状況開始set(Context& ctx);
void 使用状況終了set(Context& ctx);
void 使用状況整理(Context& ctx);
void 履歴purge(Context& ctx);

// Program link.
void 連携受信read(Context& ctx, const QString& コマンド, const QString& 基準日時);
// The same with its statements on another configuration connection, that of
// an outside system.
using 環境SQL読込 = std::function<bool(db::Recordset&, const QString&)>;
using 環境SQL実行 = std::function<bool(const QString&)>;
void 連携受信read(Context& ctx, const QString& コマンド, const QString& 基準日時, const 環境SQL読込& 読込,
                  const 環境SQL実行& 実行);
void 連携応答send(Context& ctx, const QString& 終了文);

// Shut-down: the answer owed to a link request, the end row, the connections.
void データ処理term(Context& ctx);

// Files and folders. The copies overwrite what stands at the target; the
// copies and the delete answer False on any failure and say nothing.
bool ファイル存在chk(const QString& パス);
bool フォルダ存在chk(const QString& パス);
bool ファイル複写copy(const QString& 元パス, const QString& 先パス);
bool フォルダ複写copy(const QString& 元パス, const QString& 先パス);
// Deletes a folder with everything in it, read-only contents included.
bool フォルダ削除del(const QString& パス);
// Makes every missing folder on the path of a file; the text behind the last
// separator is the file's name and is not made.
void フォルダ作成make(Context& ctx, const QString& パス);
// Hands a path (or a "mailto:" link) to the desktop, with its folder as the working folder.
void ファイル実行open(Context& ctx, const QString& パス);
// Opens this program's manual in the manual folder.
void マニュアルopen(Context& ctx);
// The name of a file without its folder and its extension, or the last part of
// a folder's path; "" when the file is not there.
QString ファイル名get(const QString& パス);

// The attachment store: an attached file or folder lies in ドキュメントフォルダ
// as <key>_<its own name>.
// Brings a file, or a folder as a tree, into the store (フォルダ名 names a folder there).
void 付属書類copy(Context& ctx, const QString& 元パス, const QString& キー, const QString& フォルダ名);
// Takes an attachment out of the store: the folder of that name, or every file
// whose name begins with it.
void 付属書類del(Context& ctx, const QString& 名前, const QString& キー);
// Opens the stored copy of the attachment picked from 元パス.
void 付属書類open(Context& ctx, const QString& 元パス, const QString& キー);

// The separator of the folder texts on this platform.
inline const QString& パス区切り() {
    static const QString separator = QStringLiteral("/");
    return separator;
}

// The text behind the last separator of a path: the own name of a file or folder.
inline QString パス末尾(const QString& パス) {
    return パス.mid(パス.lastIndexOf(パス区切り()) + 1);
}

// The company record, the installation's office and the outside systems.
bool ユーザ情報read(Context& ctx);
void 他業務連携read(Context& ctx);
void 事業所情報read(Context& ctx);
void 運用事業所set(Context& ctx, const QString& コード);
