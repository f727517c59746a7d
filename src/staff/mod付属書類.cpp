// The attachments page of the staff card: the list, its three buttons and the
// rows of M付属書類 behind them.

#include "staff/mod付属書類.h"

#include "platform/os/files.h"
#include "platform/os/os.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

namespace {

const QString& 書類filter() {
    static const QString filter = QStringLiteral(
        "全てのファイル(*.*)|*.*|JPEGファイル (*.jpg)|*.jpg|GIFファイル (*.gif)|*.gif|メタファイル (*.wmf)|*.wmf|"
        "拡張メタファイル (*.emf)|*.emf|Bitmap ファイル (*.bmp)|*.bmp");
    return filter;
}

QString quoted(const QString& value) { return QStringLiteral("'") + value + QStringLiteral("'"); }

QString ownerCondition(const QString& 情報名, const QString& 情報識別ID) {
    return QStringLiteral(" WHERE 情報名 = '") + 情報名 + QStringLiteral("'") + QStringLiteral(" AND 情報識別ID = '") +
           情報識別ID + QStringLiteral("'");
}

// The prefix of the stored names of one attachment.
QString storeKey(const QString& 情報名, const QString& 情報識別ID, const QString& SEQNo) {
    return 情報名 + QLatin1Char('_') + 情報識別ID + QLatin1Char('_') + SEQNo;
}

// A list item's key is "C", the owner's ID and the three digits of its number.
QString idOfKey(const QString& key) { return key.mid(1, key.size() - 4); }

QString seqOfKey(const QString& key) { return key.right(3); }

// Whole kilobytes, rounded, with thousands separators.
QString kilobytes(qint64 bytes) {
    QString digits = QString::number(qRound64(static_cast<double>(bytes) / 1024.0));
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, QLatin1Char(','));
    return digits + QStringLiteral("KB");
}

QString dateOf(const QString& path) {
    const QDateTime at = os::modifiedAt(path);
    return at.isValid() ? at.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")).left(10) : QString();
}

QTreeWidgetItem* selectedItem(const frm担当者登録& f) {
    const QList<QTreeWidgetItem*> items = f.List付属書類->selectedItems();
    return items.isEmpty() ? nullptr : items.first();
}

// Steps shared by the file and the folder buttons, from the picked path on.
void attach(Context& ctx, frm担当者登録& f, const QString& path) {
    付属書類明細 明細;
    明細.タイトル = ファイル名get(path);
    if (明細.タイトル.isEmpty())
        return;
    const QString code = f.コード->text();
    明細.伝票事業所コード = ctx.run.操作事業所コード;
    明細.社員コード = f.社員コード->text();
    明細.担当者コード = code;
    明細.部門コード = f.部門コード->text();
    明細.セクションコード = f.セクションコード->text();
    付属書類insert(ctx, ctx.プログラムID, code, path, 明細);
    付属書類listint(ctx, f);
}

} // namespace

void 付属書類listint(Context& ctx, frm担当者登録& f) {
    controls::ReportList* list = f.List付属書類;
    list->clear();
    list->setColumns(
        {{QStringLiteral("書類名"), 3600}, {QStringLiteral("サイズ"), 1200}, {QStringLiteral("更新日付"), 1500}});
    const QString code = f.コード->text();
    if (!空白(code)) {
        db::Recordset rs;
        list->beginFill();
        for (bool row =
                 業務SQLopen(ctx, rs,
                             QStringLiteral("SELECT ") + QStringLiteral(" *") + QStringLiteral(" FROM M付属書類") +
                                 ownerCondition(ctx.プログラムID, code) + QStringLiteral(" ORDER BY SEQNo"));
             row && !rs.eof(); rs.moveNext()) {
            const QString id = rs.field(QStringLiteral("情報識別ID")).text();
            const QString seq = rs.field(QStringLiteral("SEQNo")).text();
            const QString stored = ctx.company.ドキュメントフォルダ + パス区切り() +
                                   storeKey(ctx.プログラムID, id, seq) + QLatin1Char('_') +
                                   パス末尾(rs.field(QStringLiteral("書類名")).text());
            QString size;
            QString date;
            bool found = false;
            if (フォルダ存在chk(stored)) {
                found = true;
                size = QStringLiteral("フォルダ");
                date = dateOf(stored);
            } else if (ファイル存在chk(stored)) {
                found = true;
                size = kilobytes(os::fileSize(stored));
                date = dateOf(stored);
            }
            QTreeWidgetItem* item = list->addItem(rs.field(QStringLiteral("タイトル")).text(),
                                                  QStringLiteral("C") + id + seq, {size, date});
            // The mark tells whether the copy is in the store; the user does not set it.
            item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
            item->setCheckState(0, found ? Qt::Checked : Qt::Unchecked);
        }
        rs.close();
        list->endFill();
    }
    付属書類ボタン設定(ctx, f);
}

void 付属書類ボタン設定(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.新規フラグ) {
        f.btn_付属書類追加->setEnabled(false);
        f.btn_付属書類削除->setEnabled(false);
        f.btn_フォルダ->setEnabled(false);
        return;
    }
    f.btn_付属書類追加->setEnabled(true);
    f.btn_フォルダ->setEnabled(true);
    f.btn_付属書類削除->setEnabled(付属書類有無chk(ctx, ctx.プログラムID, f.コード->text()));
}

bool 付属書類有無chk(Context& ctx, const QString& 情報名, const QString& 情報識別ID) {
    db::Recordset rs;
    const bool found =
        業務SQLopen(ctx, rs, QStringLiteral("SELECT SEQNo FROM M付属書類") + ownerCondition(情報名, 情報識別ID));
    rs.close();
    return found;
}

void 付属書類insert(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& 書類名,
                    const 付属書類明細& 明細) {
    // The highest number decides: numbers freed below it are not taken again.
    QString seq = QStringLiteral("001");
    db::Recordset rs;
    if (業務SQLopen(ctx, rs,
                    QStringLiteral("SELECT SEQNo FROM M付属書類") + ownerCondition(情報名, 情報識別ID) +
                        QStringLiteral(" ORDER BY SEQNo DESC")))
        seq = QStringLiteral("%1").arg(rs.field(QStringLiteral("SEQNo")).text().trimmed().toInt() + 1, 3, 10,
                                       QLatin1Char('0'));
    rs.close();

    // The values go in as they are, quotes and all: a quote in a name makes the
    // statement fail, and the database's error is what the run history keeps.
    const QStringList texts{情報名,
                            情報識別ID,
                            seq,
                            書類名,
                            明細.タイトル,
                            明細.伝票番号ID,
                            明細.伝票事業所コード,
                            明細.伝票番号基準日付,
                            明細.伝票No,
                            明細.伝票日付,
                            明細.対応先コード,
                            明細.得意先コード,
                            明細.納品先コード,
                            明細.仕入先コード,
                            明細.銀行コード,
                            明細.科目コード,
                            明細.社員コード,
                            明細.担当者コード,
                            明細.部門コード,
                            明細.セクションコード,
                            明細.商品コード,
                            明細.メーカコード};
    QStringList values;
    for (const QString& text : texts)
        values.append(quoted(text));
    values.append(QString::number(qRound64(明細.対象金額)));
    values.append(quoted(ctx.terminal.ユーザID + ctx.op.操作担当者コード + ctx.terminal.コンピュータ名));
    values.append(quoted(ctx.sys.now().toString(QStringLiteral("yyyyMMdd HHmmss"))));
    const QString sql =
        QStringLiteral("INSERT INTO M付属書類 ") + QStringLiteral("(情報名") + QStringLiteral(",情報識別ID") +
        QStringLiteral(",SEQNo") + QStringLiteral(",書類名") + QStringLiteral(",タイトル") +
        QStringLiteral(",伝票番号ID") + QStringLiteral(",伝票事業所コード") + QStringLiteral(",伝票番号基準日付") +
        QStringLiteral(",伝票No") + QStringLiteral(",伝票日付") + QStringLiteral(",対応先コード") +
        QStringLiteral(",得意先コード") + QStringLiteral(",納品先コード") + QStringLiteral(",仕入先コード") +
        QStringLiteral(",銀行コード") + QStringLiteral(",科目コード") + QStringLiteral(",社員コード") +
        QStringLiteral(",担当者コード") + QStringLiteral(",部門コード") + QStringLiteral(",セクションコード") +
        QStringLiteral(",商品コード") + QStringLiteral(",メーカコード") + QStringLiteral(",対象金額") +
        QStringLiteral(",ユーザID") + QStringLiteral(",登録日付)") + QStringLiteral(" VALUES (") +
        values.join(QLatin1Char(',')) + QStringLiteral(")");
    if (!業務SQLexec(ctx, sql))
        return;
    // A path without a folder names nothing to copy.
    if (書類名.contains(パス区切り()))
        付属書類copy(ctx, 書類名, storeKey(情報名, 情報識別ID, seq), パス末尾(書類名));
}

void 付属書類delete(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& SEQNo) {
    業務SQLexec(ctx, QStringLiteral("DELETE FROM M付属書類") + ownerCondition(情報名, 情報識別ID) +
                         QStringLiteral(" AND SEQNo = '") + SEQNo + QStringLiteral("'"));
}

bool 付属書類名get(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& SEQNo,
                   QString& 書類名) {
    db::Recordset rs;
    const bool found = 業務SQLopen(ctx, rs,
                                   QStringLiteral("SELECT") + QStringLiteral(" 書類名") +
                                       QStringLiteral(" FROM M付属書類") + ownerCondition(情報名, 情報識別ID) +
                                       QStringLiteral(" AND SEQNo = '") + SEQNo + QStringLiteral("'"));
    if (found)
        書類名 = rs.field(QStringLiteral("書類名")).text();
    rs.close();
    return found;
}

void btn_付属書類追加_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    const QString path = ctx.dialogs->openFile(&f, 書類filter(), 0, os::homeFolder());
    // A cancelled dialog ends the click quietly.
    if (path.isEmpty())
        return;
    attach(ctx, f, path);
}

void btn_フォルダ_Click(Context& ctx, frm担当者登録& f) {
    const QString start = os::homeFolder();
    const QString path = ctx.dialogs->chooseFolder(&f, QStringLiteral("書類を選択して下さい"), start);
    if (path.isEmpty() || path == start)
        return;
    attach(ctx, f, path);
}

void btn_付属書類削除_Click(Context& ctx, frm担当者登録& f) {
    QTreeWidgetItem* item = selectedItem(f);
    if (!item)
        return;
    if (ctx.msg.show(QStringLiteral("付属書類から削除しますか？"), ui::Buttons::YesNo, 1) != ui::Answer::Yes)
        return;
    const QString key = controls::ReportList::key(item);
    const QString id = idOfKey(key);
    const QString seq = seqOfKey(key);
    付属書類delete(ctx, ctx.プログラムID, id, seq);
    // The stored copy is found by the title: a file under it with any extension,
    // or the folder of that name.
    const QString title = item->text(0);
    delete item;
    付属書類del(ctx, title, storeKey(ctx.プログラムID, id, seq));
    付属書類listint(ctx, f);
}

void List付属書類_DblClick(Context& ctx, frm担当者登録& f) {
    const QTreeWidgetItem* item = selectedItem(f);
    if (!item)
        return;
    const QString key = controls::ReportList::key(item);
    const QString id = idOfKey(key);
    const QString seq = seqOfKey(key);
    QString 書類名;
    // A row another client has taken away since the list was filled opens nothing.
    if (!付属書類名get(ctx, ctx.プログラムID, id, seq, 書類名))
        return;
    付属書類open(ctx, 書類名, storeKey(ctx.プログラムID, id, seq));
}

void 付属書類wire(Context& ctx, frm担当者登録& f) {
    Context* c = &ctx;
    frm担当者登録* form = &f;
    QObject::connect(f.btn_付属書類追加, &QPushButton::clicked, &f, [c, form] { btn_付属書類追加_Click(*c, *form); });
    QObject::connect(f.btn_フォルダ, &QPushButton::clicked, &f, [c, form] { btn_フォルダ_Click(*c, *form); });
    QObject::connect(f.btn_付属書類削除, &QPushButton::clicked, &f, [c, form] { btn_付属書類削除_Click(*c, *form); });
    QObject::connect(f.List付属書類, &QTreeWidget::itemDoubleClicked, &f,
                     [c, form] { List付属書類_DblClick(*c, *form); });
}
