#pragma once

#include <QString>

// The staff card report program and the one argument text it is started with:
// fixed-width fields, made by the staff card and read back by the report
// program through these two routines only.
//
//   field                  width  value
//   操作事業所コード        1-3    the office of the run, as held
//   モード                  1      "0" print, "1" preview
//   事業所コード from, to   3 + 3  left-aligned, padded with blanks
//   部門コード from, to     3 + 3  "000", "999"
//   セクションコード        3 + 3  "000", "999"
//   役職コード from, to     2 + 2  "00", "99"
//   担当者コード from, to   5 + 5  left-aligned, padded with blanks
//   在籍区分, 社員区分      1 + 1  a digit each; "*" takes every class
//
// The office of the run is what stands before the last 35 characters.

struct 担当者カード条件 {
    QString 操作事業所コード;
    QString モード = QStringLiteral("0");
    QString 事業所コード自, 事業所コード至;
    QString 部門コード自 = QStringLiteral("000"), 部門コード至 = QStringLiteral("999");
    QString セクションコード自 = QStringLiteral("000"), セクションコード至 = QStringLiteral("999");
    QString 役職コード自 = QStringLiteral("00"), 役職コード至 = QStringLiteral("99");
    QString 担当者コード自, 担当者コード至;
    QString 在籍区分 = QStringLiteral("0"), 社員区分 = QStringLiteral("1");
};

// The report program's file name in the program folder.
QString 担当者カードプログラム名();

// The argument text of the conditions. Codes longer than their field are cut.
QString 担当者カード引数make(const 担当者カード条件& 条件);

// Reads an argument text back; the codes come out without their padding.
// False, with a message for the user in エラー, for a text that is not of the
// form above; 条件 is then not written.
bool 担当者カード引数parse(const QString& 引数, 担当者カード条件& 条件, QString& エラー);
