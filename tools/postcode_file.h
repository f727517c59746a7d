#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// The postal service's all-Japan postcode file, as it is published: one CSV
// record of 15 columns per line (local government code, old postcode, postcode,
// three kana names, prefecture, municipality, town area, six flags), text in
// double quotes, code page 932, CRLF.
namespace setup {

struct AllJapanRows {
    bool ok = false;
    QString error;           // why the file was refused; nothing of it is to be used then
    QList<QStringList> rows; // postcode "nnn-nnnn", 住所A, 住所B, in file order, not de-duplicated
    qsizetype records = 0;   // CSV records read
};

// Reads the contents of the file. `name` only goes into the messages.
//
// - The text is code page 932; a file that is valid UTF-8 throughout (or starts
//   with its byte order mark) is taken as UTF-8, the form in which the file is
//   also passed around converted.
// - A town area too long for one record goes on over the next records of the
//   same postcode: it opens with "（" in the first and closes with "）" in a later
//   one. Those records are joined into one row.
// - The town area is stored as published, with its parentheses, except where
//   the text only says that the municipality has no town areas listed (see
//   townArea).
// - A file that ends inside such a town area, a record that is not 15 columns,
//   a postcode that is not seven digits or text that is not code page 932 make
//   the whole file refused, with the line named.
AllJapanRows readAllJapanCsv(const QByteArray& content, const QString& name);

// The town area as M郵便番号 keeps it: empty for the texts that stand for "no
// town area" rather than naming one: "以下に掲載がない場合" (the postcode of the
// municipality where no town below is listed), "…の次に番地がくる場合" (the
// block number follows the municipality's name directly) and "…一円" (the whole
// municipality). A town area that is named "一円" itself is a real place and
// is kept.
QString townArea(const QString& published);

} // namespace setup
