#pragma once

#include "shell/context.h"
#include "shell/担当者カード引数.h"

#include <QList>
#include <QMap>
#include <QString>

// The staff rows of a staff card run, with their joined names, their dates in
// the era form and the pictures that go on the card.

struct 担当者カード行 {
    QString コード, 氏名, カナ;
    QString 性別区分, 性別名;
    QString 生年月日, 生年月日表示; // stored form "yyyymmdd"; era form
    QString 郵便番号, 住所A, 住所B, 住所C;
    QString 電話, 携帯電話, EMAIL;
    QString 事業所コード, 事業所名, 部門コード, 部門名, セクションコード, セクション名, 役職コード, 役職名;
    QString 職責, ログインID;
    QString 在籍区分, 在籍区分名, 社員区分, 社員区分名;
    QString 入社日付, 入社日付表示, 退社日付, 退社日付表示;
    QString 担当者メモ;
    // Full paths of the first photo and of the seal image; "" when there is no such file.
    QString 写真path, 担当者印path;
};

// The statement that reads the staff of the conditions with the names of
// their office, department, section, position, sex and classes, in the
// dialect's join form, in code order; "" for a dialect the program does not know.
QString 担当者カードSQLmake(const 担当者カード条件& 条件, const QString& db);

// Era dates by the table K年号区分: "令和8年11月23日", "令和元年5月1日", or the
// Western "1868年1月1日" where no era applies. A text that is not a date
// "yyyymmdd" comes back as it stands.
class 和暦表示 {
public:
    explicit 和暦表示(Context& ctx);
    QString 日付(const QString& yyyymmdd) const;
    // Full years from the birth date to the date; -1 when either is no date.
    static int 満年齢(const QString& 生年月日, const QString& 基準日);

private:
    Context& ctx_;
    QMap<QString, QString> 年号名_; // era code to name
};

// Reads the rows. False when the statement could not be run; the statement
// routine has then written its error row. 文 receives the statement.
bool 担当者カード読込(Context& ctx, const 担当者カード条件& 条件, QList<担当者カード行>& 行, QString& 文);
