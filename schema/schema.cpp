#include "schema/schema.h"

namespace schema {

namespace {

using DbList = QList<Database>;

const DbList kConfiguration{Database::Configuration};
const DbList kMain{Database::Main};
const DbList kMainAndPersonnel{Database::Main, Database::Personnel};

QList<Column> textColumns(const QStringList& names) {
    QList<Column> columns;
    columns.reserve(names.size());
    for (const QString& name : names)
        columns.append(Column{name, Column::Text});
    return columns;
}

Table table(const QString& name, const DbList& databases, const QStringList& columns, const QStringList& key,
            const QList<QStringList>& indexes = {}) {
    return Table{name, databases, textColumns(columns), key, indexes};
}

// The columns of a staff row, in the order the program writes them.
QStringList staffColumns() {
    QStringList names{
        QStringLiteral("コード"),       QStringLiteral("姓"),         QStringLiteral("名"),
        QStringLiteral("氏名"),         QStringLiteral("カナ姓"),     QStringLiteral("カナ名"),
        QStringLiteral("カナ"),         QStringLiteral("性別区分"),   QStringLiteral("生年月日"),
        QStringLiteral("郵便番号"),     QStringLiteral("住所A"),      QStringLiteral("住所B"),
        QStringLiteral("住所C"),        QStringLiteral("電話"),       QStringLiteral("携帯電話"),
        QStringLiteral("職責"),         QStringLiteral("EMAIL"),      QStringLiteral("担当者メモ"),
        QStringLiteral("事業所コード"), QStringLiteral("部門コード"), QStringLiteral("セクションコード"),
        QStringLiteral("役職コード"),   QStringLiteral("ログインID"), QStringLiteral("在籍区分"),
        QStringLiteral("社員区分"),     QStringLiteral("入社日付"),   QStringLiteral("退社日付"),
        QStringLiteral("担当者印file"), QStringLiteral("電話番号"),   QStringLiteral("携帯電話番号"),
        QStringLiteral("社員コード"),   QStringLiteral("暗証番号"),
    };
    for (int i = 0; i <= 9; ++i)
        names.append(QStringLiteral("処理分類%1操作許可").arg(i));
    names << QStringLiteral("操作許可") << QStringLiteral("入力許可") << QStringLiteral("修正許可")
          << QStringLiteral("削除許可") << QStringLiteral("印刷許可") << QStringLiteral("プレビュ許可")
          << QStringLiteral("テキスト出力許可") << QStringLiteral("イメージ出力許可") << QStringLiteral("ユーザID")
          << QStringLiteral("登録日付") << QStringLiteral("更新日付");
    return names;
}

QStringList rightsColumns() {
    return {QStringLiteral("操作許可"),         QStringLiteral("入力許可"),        QStringLiteral("修正許可"),
            QStringLiteral("削除許可"),         QStringLiteral("印刷許可"),        QStringLiteral("プレビュ許可"),
            QStringLiteral("テキスト出力許可"), QStringLiteral("イメージ出力許可")};
}

QStringList menuColumns() {
    QStringList names{QStringLiteral("プログラムID"), QStringLiteral("処理分類")};
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter)
        names.append(QStringLiteral("条件項目名") + QChar(letter));
    return names;
}

QStringList companyColumns() {
    return {
        QStringLiteral("ID"),
        QStringLiteral("名称"),
        QStringLiteral("郵便番号"),
        QStringLiteral("住所A"),
        QStringLiteral("住所B"),
        QStringLiteral("住所C"),
        QStringLiteral("代表者名"),
        QStringLiteral("電話"),
        QStringLiteral("FAX"),
        QStringLiteral("HOMEPAGE"),
        QStringLiteral("EMAIL"),
        QStringLiteral("会社ロゴfile"),
        QStringLiteral("社印file"),
        QStringLiteral("銀行口座A"),
        QStringLiteral("銀行口座B"),
        QStringLiteral("銀行口座C"),
        QStringLiteral("銀行口座D"),
        QStringLiteral("決算月"),
        QStringLiteral("決算日"),
        QStringLiteral("締日区分"),
        QStringLiteral("締日"),
        QStringLiteral("決済方法"),
        QStringLiteral("決済月"),
        QStringLiteral("決済日"),
        QStringLiteral("現金決済金額"),
        QStringLiteral("手形サイト"),
        QStringLiteral("売上金額丸め方法"),
        QStringLiteral("仕入金額丸め方法"),
        QStringLiteral("在庫評価方法"),
        QStringLiteral("売上単価少数以下桁数"),
        QStringLiteral("売上数量少数以下桁数"),
        QStringLiteral("仕入単価少数以下桁数"),
        QStringLiteral("仕入数量少数以下桁数"),
        QStringLiteral("在庫単価少数以下桁数"),
        QStringLiteral("在庫数量少数以下桁数"),
        QStringLiteral("重量少数以下桁数"),
        QStringLiteral("得意先単価自動更新区分"),
        QStringLiteral("納品先単価自動更新区分"),
        QStringLiteral("仕入先単価自動更新区分"),
        QStringLiteral("写真フォルダ"),
        QStringLiteral("ドキュメントフォルダ"),
        QStringLiteral("総合振込ファイル"),
        QStringLiteral("基本読込フォルダ"),
        QStringLiteral("帳票イメージフォルダ"),
        QStringLiteral("その他読込ファイル"),
        QStringLiteral("本支店連携フォルダ"),
        QStringLiteral("テキスト出力フォルダ"),
        QStringLiteral("BACKUPフォルダ"),
        QStringLiteral("明細保存月数"),
        QStringLiteral("統計保存年数"),
        QStringLiteral("整理実施可能日自"),
        QStringLiteral("整理実施可能日至"),
        QStringLiteral("整理実施可能時刻"),
        QStringLiteral("明細整理実行日"),
        QStringLiteral("統計整理実行日"),
        QStringLiteral("伝票番号管理区分"),
        QStringLiteral("暗証番号有無"),
        QStringLiteral("特権暗証番号"),
        QStringLiteral("更新実行区分"),
        QStringLiteral("システム特権暗証番号"),
        QStringLiteral("登録日付"),
        QStringLiteral("更新日付"),
    };
}

QStringList officeColumns() {
    return {
        QStringLiteral("コード"),
        QStringLiteral("名称"),
        QStringLiteral("郵便番号"),
        QStringLiteral("住所A"),
        QStringLiteral("住所B"),
        QStringLiteral("住所C"),
        QStringLiteral("代表者名"),
        QStringLiteral("電話"),
        QStringLiteral("FAX"),
        QStringLiteral("登録番号"),
        QStringLiteral("HOMEPAGE"),
        QStringLiteral("EMAIL"),
        QStringLiteral("銀行口座A"),
        QStringLiteral("銀行口座B"),
        QStringLiteral("銀行口座C"),
        QStringLiteral("銀行口座D"),
        QStringLiteral("総合振込ファイル"),
        QStringLiteral("基本読込フォルダ"),
        QStringLiteral("帳票イメージフォルダ"),
        QStringLiteral("その他読込ファイル"),
        QStringLiteral("本支店連携フォルダ"),
        QStringLiteral("テキスト出力フォルダ"),
        QStringLiteral("BACKUPフォルダ"),
        QStringLiteral("地区コード"),
        QStringLiteral("暗証番号有無"),
        QStringLiteral("特権暗証番号"),
        QStringLiteral("更新実行区分"),
        QStringLiteral("登録日付"),
        QStringLiteral("更新日付"),
    };
}

QStringList environmentColumns() {
    return {
        QStringLiteral("動作環境定義ID"),       QStringLiteral("運用事業所コード"),
        QStringLiteral("インストール区分"),     QStringLiteral("CL更新実行区分"),
        QStringLiteral("バックアップ日付"),     QStringLiteral("運用条件切替日付"),
        QStringLiteral("バックアップ方法"),     QStringLiteral("バックアップ日指定"),
        QStringLiteral("月曜バックアップ"),     QStringLiteral("火曜バックアップ"),
        QStringLiteral("水曜バックアップ"),     QStringLiteral("木曜バックアップ"),
        QStringLiteral("金曜バックアップ"),     QStringLiteral("土曜バックアップ"),
        QStringLiteral("日曜バックアップ"),     QStringLiteral("バックアップ開始時刻"),
        QStringLiteral("バックアップフォルダ"), QStringLiteral("起動担当者コード"),
    };
}

QStringList linkColumns() {
    return {
        QStringLiteral("コード"),
        QStringLiteral("業務名"),
        QStringLiteral("連携有無区分"),
        QStringLiteral("連携DB"),
        QStringLiteral("連携DBMW"),
        QStringLiteral("連携データソース名"),
        QStringLiteral("連携ドライバ名"),
        QStringLiteral("連携接続文字列"),
        QStringLiteral("連携データベース名"),
        QStringLiteral("連携サーバー名"),
        QStringLiteral("連携ユーザーID"),
        QStringLiteral("連携パスワード"),
        QStringLiteral("連携アプリフォルダ"),
        QStringLiteral("顧客更新有無区分"),
        QStringLiteral("得意先更新有無区分"),
        QStringLiteral("納品先更新有無区分"),
        QStringLiteral("仕入先更新有無区分"),
        QStringLiteral("メーカ更新有無区分"),
        QStringLiteral("対応先更新有無区分"),
        QStringLiteral("商品更新有無区分"),
        QStringLiteral("社員更新有無区分"),
    };
}

QStringList clipboardColumns(bool detail) {
    QStringList names{QStringLiteral("貼付日時"), QStringLiteral("貼付プログラムID")};
    if (detail)
        names << QStringLiteral("貼付連番");
    names << QStringLiteral("貼付情報区分") << QStringLiteral("伝票番号ID") << QStringLiteral("伝票事業所コード")
          << QStringLiteral("伝票番号基準日付") << QStringLiteral("伝票No");
    if (detail)
        names << QStringLiteral("伝票固有行No");
    names << QStringLiteral("伝票付加情報") << QStringLiteral("基本情報区分") << QStringLiteral("基本情報コード");
    if (detail)
        names << QStringLiteral("基本情報明細コード");
    names << QStringLiteral("基本付加情報");
    return names;
}

QList<Table> buildTables() {
    const QString code = QStringLiteral("コード");
    const QString name = QStringLiteral("名称");
    const QString staffCode = QStringLiteral("担当者コード");
    const QString employeeCode = QStringLiteral("社員コード");
    const QString klass = QStringLiteral("区分");
    const QString office = QStringLiteral("事業所コード");
    const QString baseDate = QStringLiteral("番号基準日付");
    const QString dueDate = QStringLiteral("期日");
    const QString numberId = QStringLiteral("番号ID");
    const QString basicId = QStringLiteral("基本ID");
    const QString serial = QStringLiteral("連番");
    const QString historySerial = QStringLiteral("履歴連番");
    const QString serialKind = QStringLiteral("連番種類");
    const QString department = QStringLiteral("部門コード");
    const QString section = QStringLiteral("セクションコード");
    const QString state = QStringLiteral("稼動状況区分");

    QList<Table> t;

    // Configuration database.
    t << table(QStringLiteral("データベース定義"), kConfiguration,
               {QStringLiteral("情報種類"), QStringLiteral("db"), QStringLiteral("dbmw"),
                QStringLiteral("プロバイダ名"), QStringLiteral("データベース名"), QStringLiteral("ドライバ名"),
                QStringLiteral("ユーザーID"), QStringLiteral("パスワード"), QStringLiteral("データソース名"),
                QStringLiteral("サーバー名"), QStringLiteral("接続文字列")},
               {QStringLiteral("情報種類")});
    t << table(QStringLiteral("動作環境定義"), kConfiguration, environmentColumns(),
               {QStringLiteral("動作環境定義ID")});
    t << table(QStringLiteral("プログラム稼動履歴"), kConfiguration,
               {QStringLiteral("実行日付"), QStringLiteral("プログラムID"), QStringLiteral("proccounter"),
                QStringLiteral("摘要"), QStringLiteral("運用事業所コード"), QStringLiteral("起動担当者コード"),
                QStringLiteral("ユーザID")},
               {}, {{QStringLiteral("実行日付")}});
    t << table(QStringLiteral("プログラム連携情報"), kConfiguration,
               {QStringLiteral("発信日時"), QStringLiteral("発信プログラムID"), QStringLiteral("受信プログラムID"),
                QStringLiteral("受信期限"), QStringLiteral("連携区分"), QStringLiteral("起動連携情報"),
                QStringLiteral("終了連携情報"), QStringLiteral("運用事業所コード"), QStringLiteral("起動担当者コード"),
                QStringLiteral("ユーザID")},
               {}, {{QStringLiteral("発信日時")}, {QStringLiteral("受信プログラムID"), QStringLiteral("連携区分")}});
    t << table(QStringLiteral("プログラムクリップボード"), kConfiguration, clipboardColumns(false), {},
               {{QStringLiteral("貼付日時")}});
    t << table(QStringLiteral("プログラムクリップボード明細"), kConfiguration, clipboardColumns(true), {},
               {{QStringLiteral("貼付日時")}});
    for (const char16_t* menu : {u"営業支援データ管理", u"営業支援", u"営業支援補助機能", u"営業支援サービスメニュ"})
        t << table(QString::fromUtf16(menu), kConfiguration, menuColumns(), {QStringLiteral("プログラムID")});

    // Main database: the staff master and its log.
    const QStringList staff = staffColumns();
    t << table(QStringLiteral("M担当者"), kMain, staff + QStringList{QStringLiteral("アクセス権限")}, {code},
               {{QStringLiteral("氏名")},
                {QStringLiteral("カナ")},
                {department},
                {section},
                {office},
                {QStringLiteral("ログインID")},
                {employeeCode}});
    t << table(QStringLiteral("L担当者"), kMain,
               QStringList{QStringLiteral("保守事業所コード"), QStringLiteral("保守番号基準日付"),
                           QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分")} +
                   staff,
               {QStringLiteral("保守事業所コード"), QStringLiteral("保守番号基準日付"), QStringLiteral("保守履歴No")},
               {{code}});

    // Company, offices and outside systems.
    t << table(QStringLiteral("Mユーザ"), kMainAndPersonnel, companyColumns(), {QStringLiteral("ID")});
    t << table(QStringLiteral("M事業所"), kMainAndPersonnel, officeColumns(), {code});
    t << table(QStringLiteral("M他業務連携"), kMain, linkColumns(), {code});
    t << table(QStringLiteral("使用状況"), kMain,
               {QStringLiteral("コンピュータID"), QStringLiteral("ユーザID"), QStringLiteral("プログラムID"),
                QStringLiteral("開始日時"), QStringLiteral("終了日時")},
               {QStringLiteral("コンピュータID"), QStringLiteral("ユーザID")}, {{QStringLiteral("終了日時")}});
    t << table(QStringLiteral("担当者別操作許可プログラム"), kMain,
               QStringList{staffCode, QStringLiteral("業務メニュ"), QStringLiteral("プログラムID")} + rightsColumns(),
               {staffCode, QStringLiteral("業務メニュ"), QStringLiteral("プログラムID")});

    // Attached documents, the telephone directory and the access records.
    {
        QList<Column> columns = textColumns({QStringLiteral("情報名"),
                                             QStringLiteral("情報識別ID"),
                                             QStringLiteral("SEQNo"),
                                             QStringLiteral("書類名"),
                                             QStringLiteral("タイトル"),
                                             QStringLiteral("伝票番号ID"),
                                             QStringLiteral("伝票事業所コード"),
                                             QStringLiteral("伝票番号基準日付"),
                                             QStringLiteral("伝票No"),
                                             QStringLiteral("伝票日付"),
                                             QStringLiteral("対応先コード"),
                                             QStringLiteral("得意先コード"),
                                             QStringLiteral("納品先コード"),
                                             QStringLiteral("仕入先コード"),
                                             QStringLiteral("銀行コード"),
                                             QStringLiteral("科目コード"),
                                             employeeCode,
                                             staffCode,
                                             department,
                                             section,
                                             QStringLiteral("商品コード"),
                                             QStringLiteral("メーカコード")});
        columns.append(Column{QStringLiteral("対象金額"), Column::Number});
        columns += textColumns({QStringLiteral("ユーザID"), QStringLiteral("登録日付")});
        t << Table{QStringLiteral("M付属書類"),
                   kMain,
                   columns,
                   {QStringLiteral("情報名"), QStringLiteral("情報識別ID"), QStringLiteral("SEQNo")},
                   {{staffCode}}};
    }
    t << table(QStringLiteral("M電話番号"), kMain,
               {QStringLiteral("電話"), name, QStringLiteral("郵便番号"), QStringLiteral("住所A"),
                QStringLiteral("住所B"), QStringLiteral("住所C"), QStringLiteral("電話番号"),
                QStringLiteral("法人個人区分"), QStringLiteral("ユーザID"), QStringLiteral("登録日付"),
                QStringLiteral("更新日付")},
               {QStringLiteral("電話番号")});

    // Number tables.
    t << table(QStringLiteral("A番号情報"), kMain, {numberId, name, serialKind, serial, historySerial}, {numberId});
    t << table(QStringLiteral("A期日別番号情報"), kMain, {numberId, dueDate, serial, historySerial},
               {numberId, dueDate});
    t << table(QStringLiteral("A事業所別番号情報"), kMain, {office, numberId, serial, historySerial},
               {office, numberId});
    t << table(QStringLiteral("A事業所別期日別番号情報"), kMain, {office, numberId, dueDate, serial, historySerial},
               {office, numberId, dueDate});
    t << table(QStringLiteral("B履歴番号情報"), kMain, {basicId, name, serialKind, historySerial}, {basicId});
    t << table(QStringLiteral("B期日別履歴番号情報"), kMain, {basicId, dueDate, historySerial}, {basicId, dueDate});
    t << table(QStringLiteral("B事業所別履歴番号情報"), kMain, {office, basicId, historySerial}, {office, basicId});
    t << table(QStringLiteral("B事業所別期日別履歴番号情報"), kMain, {office, basicId, dueDate, historySerial},
               {office, basicId, dueDate});

    t << table(QStringLiteral("T閲覧"), kMain,
               {office,
                baseDate,
                QStringLiteral("閲覧No"),
                QStringLiteral("閲覧日付"),
                QStringLiteral("閲覧時刻"),
                staffCode,
                QStringLiteral("担当者名"),
                QStringLiteral("閲覧情報"),
                QStringLiteral("伝票事業所コード"),
                QStringLiteral("伝票番号基準日付"),
                QStringLiteral("伝票No"),
                QStringLiteral("キー項目"),
                QStringLiteral("閲覧区分"),
                QStringLiteral("閲覧メモ"),
                QStringLiteral("承認日付"),
                QStringLiteral("承認者コード"),
                QStringLiteral("承認区分"),
                QStringLiteral("ユーザID"),
                QStringLiteral("登録日付"),
                QStringLiteral("更新日付")},
               {office, baseDate, QStringLiteral("閲覧No")}, {{staffCode}});

    // Organisation masters and class tables.
    t << table(QStringLiteral("M部門"), kMainAndPersonnel, {code, name, state}, {code}, {{state}});
    t << table(QStringLiteral("Mセクション"), kMainAndPersonnel, {code, name, state}, {code}, {{state}});
    t << table(QStringLiteral("M役職"), kMainAndPersonnel, {code, name}, {code});
    t << table(QStringLiteral("M就業形態"), kMainAndPersonnel, {code, name}, {code});
    t << table(QStringLiteral("M郵便番号"), kMain,
               {QStringLiteral("郵便番号"), QStringLiteral("住所A"), QStringLiteral("住所B")},
               {QStringLiteral("郵便番号"), QStringLiteral("住所A"), QStringLiteral("住所B")},
               {{QStringLiteral("郵便番号")}});
    t << table(QStringLiteral("K性別区分"), kMain, {klass, name}, {klass});
    t << table(QStringLiteral("K在籍区分"), kMainAndPersonnel, {klass, name}, {klass});
    t << table(QStringLiteral("K社員区分"), kMainAndPersonnel, {klass, name}, {klass});
    t << table(QStringLiteral("K稼動状況区分"), kMain, {klass, name}, {klass});
    t << table(QStringLiteral("K年号区分"), kMain, {klass, name, QStringLiteral("開始日付")}, {klass},
               {{QStringLiteral("開始日付")}});

    // Business tables that may refer to a staff member; a staff row in use there cannot be deleted.
    for (const char16_t* slip :
         {u"T営業請求", u"T営業納品", u"T営業発注", u"T顧客注文", u"T営業受注", u"T営業引合", u"T営業見積", u"T出金",
          u"T営業活動明細", u"T配送手配", u"T承認", u"T案件", u"T個人休日", u"T個人行事", u"T個人日暦"})
        t << table(QString::fromUtf16(slip), kMain,
                   {office, baseDate, QStringLiteral("伝票No"), QStringLiteral("伝票日付"), staffCode},
                   {office, baseDate, QStringLiteral("伝票No")}, {{staffCode}});
    for (const char16_t* master : {u"M得意先", u"M納品先", u"M仕入先", u"Mメーカ", u"M対応先"})
        t << table(QString::fromUtf16(master), kMain, {code, name, staffCode}, {code}, {{staffCode}});

    // The personnel system's employees and their history.
    t << table(QStringLiteral("M社員"), kMainAndPersonnel,
               {code,
                QStringLiteral("姓"),
                QStringLiteral("名"),
                QStringLiteral("氏名"),
                QStringLiteral("カナ姓"),
                QStringLiteral("カナ名"),
                QStringLiteral("カナ"),
                QStringLiteral("性別区分"),
                QStringLiteral("生年月日"),
                QStringLiteral("郵便番号"),
                QStringLiteral("住所A"),
                QStringLiteral("住所B"),
                QStringLiteral("住所C"),
                QStringLiteral("電話"),
                QStringLiteral("携帯電話"),
                QStringLiteral("EMAIL"),
                QStringLiteral("社員メモ"),
                office,
                department,
                section,
                QStringLiteral("役職コード"),
                QStringLiteral("職責"),
                QStringLiteral("就業形態コード"),
                QStringLiteral("社員区分"),
                QStringLiteral("在籍区分"),
                QStringLiteral("入社日付"),
                QStringLiteral("退社日付"),
                QStringLiteral("採用事業所コード"),
                QStringLiteral("採用番号基準日付"),
                QStringLiteral("採用No"),
                QStringLiteral("暗証番号"),
                QStringLiteral("ユーザID"),
                QStringLiteral("登録日付"),
                QStringLiteral("更新日付")},
               {code}, {{QStringLiteral("氏名")}, {QStringLiteral("カナ")}, {department}, {section}, {office}});
    t << table(QStringLiteral("T異動"), kMainAndPersonnel,
               {employeeCode, QStringLiteral("異動日付"), QStringLiteral("異動No"), QStringLiteral("異動事業所コード"),
                QStringLiteral("異動部門コード"), QStringLiteral("異動セクションコード"),
                QStringLiteral("異動役職コード"), QStringLiteral("異動職責"), QStringLiteral("異動就業形態コード"),
                QStringLiteral("異動社員区分"), QStringLiteral("前事業所コード"), QStringLiteral("前部門コード"),
                QStringLiteral("前セクションコード"), QStringLiteral("前役職コード"), QStringLiteral("前職責"),
                QStringLiteral("前就業形態コード"), QStringLiteral("前社員区分")},
               {employeeCode, QStringLiteral("異動日付"), QStringLiteral("異動No")});
    t << table(QStringLiteral("T採用"), kMainAndPersonnel,
               {office, baseDate, QStringLiteral("採用No"), employeeCode, QStringLiteral("採用日付"),
                QStringLiteral("氏名"), QStringLiteral("カナ氏名"), QStringLiteral("採用事業所コード"),
                QStringLiteral("採用部門コード"), QStringLiteral("採用セクションコード"),
                QStringLiteral("採用就業形態コード"), QStringLiteral("採用社員区分"), QStringLiteral("採用役職コード"),
                QStringLiteral("採用職責")},
               {office, baseDate, QStringLiteral("採用No")}, {{employeeCode}});
    t << table(QStringLiteral("T退職"), kMainAndPersonnel, {employeeCode, QStringLiteral("退職日付")},
               {employeeCode, QStringLiteral("退職日付")});
    t << table(QStringLiteral("T休職"), kMainAndPersonnel,
               {employeeCode, QStringLiteral("休職開始日付"), QStringLiteral("休職終了日付")},
               {employeeCode, QStringLiteral("休職開始日付")});
    t << table(QStringLiteral("T諸届"), kMainAndPersonnel,
               {employeeCode, QStringLiteral("諸届日付"), QStringLiteral("諸届No"), QStringLiteral("諸届区分"),
                QStringLiteral("諸届氏名"), QStringLiteral("諸届カナ氏名")},
               {employeeCode, QStringLiteral("諸届日付"), QStringLiteral("諸届No")});
    return t;
}

QString columnType(Column::Type type, Flavor flavor) {
    if (type == Column::Number)
        return flavor == Flavor::Sqlite ? QStringLiteral("NUMERIC") : QStringLiteral("numeric");
    return flavor == Flavor::Sqlite ? QStringLiteral("TEXT") : QStringLiteral("text");
}

} // namespace

const QList<Table>& tables() {
    static const QList<Table> all = buildTables();
    return all;
}

const Table* find(const QString& name) {
    for (const Table& t : tables()) {
        if (t.name.compare(name, Qt::CaseInsensitive) == 0)
            return &t;
    }
    return nullptr;
}

QStringList createStatements(Database database, Flavor flavor) {
    QStringList statements;
    for (const Table& t : tables()) {
        if (!t.databases.contains(database))
            continue;
        QStringList parts;
        for (const Column& c : t.columns)
            parts.append(c.name + QLatin1Char(' ') + columnType(c.type, flavor));
        if (!t.primaryKey.isEmpty())
            parts.append(QStringLiteral("PRIMARY KEY (") + t.primaryKey.join(QStringLiteral(", ")) + QLatin1Char(')'));
        statements.append(QStringLiteral("CREATE TABLE ") + t.name + QStringLiteral(" (") +
                          parts.join(QStringLiteral(", ")) + QLatin1Char(')'));
        int n = 0;
        for (const QStringList& index : t.indexes) {
            statements.append(QStringLiteral("CREATE INDEX ix_%1_%2 ON %1 (%3)")
                                  .arg(t.name)
                                  .arg(++n)
                                  .arg(index.join(QStringLiteral(", "))));
        }
    }
    return statements;
}

} // namespace schema
