// A staff member typed in, saved, read back, changed, saved again and deleted,
// with every row the three steps leave; two clients on one new code; and input the
// card must survive: over-long texts, quotes, unknown codes, impossible dates.

#include "staff_fixture.h"

#include "staff/mod担当者保存.h"

using testdb::Engine;

namespace {

using RoundTrip = StaffFixture;

const QStringList kStaffColumns{
    QStringLiteral("コード"),           QStringLiteral("姓"),               QStringLiteral("名"),
    QStringLiteral("氏名"),             QStringLiteral("カナ姓"),           QStringLiteral("カナ名"),
    QStringLiteral("カナ"),             QStringLiteral("性別区分"),         QStringLiteral("生年月日"),
    QStringLiteral("郵便番号"),         QStringLiteral("住所A"),            QStringLiteral("住所B"),
    QStringLiteral("住所C"),            QStringLiteral("電話"),             QStringLiteral("携帯電話"),
    QStringLiteral("職責"),             QStringLiteral("EMAIL"),            QStringLiteral("担当者メモ"),
    QStringLiteral("事業所コード"),     QStringLiteral("部門コード"),       QStringLiteral("セクションコード"),
    QStringLiteral("役職コード"),       QStringLiteral("ログインID"),       QStringLiteral("在籍区分"),
    QStringLiteral("社員区分"),         QStringLiteral("入社日付"),         QStringLiteral("退社日付"),
    QStringLiteral("担当者印file"),     QStringLiteral("電話番号"),         QStringLiteral("携帯電話番号"),
    QStringLiteral("社員コード"),       QStringLiteral("暗証番号"),         QStringLiteral("処理分類0操作許可"),
    QStringLiteral("処理分類1操作許可"), QStringLiteral("処理分類2操作許可"), QStringLiteral("処理分類3操作許可"),
    QStringLiteral("処理分類4操作許可"), QStringLiteral("処理分類5操作許可"), QStringLiteral("処理分類6操作許可"),
    QStringLiteral("処理分類7操作許可"), QStringLiteral("処理分類8操作許可"), QStringLiteral("処理分類9操作許可"),
    QStringLiteral("操作許可"),         QStringLiteral("入力許可"),         QStringLiteral("修正許可"),
    QStringLiteral("削除許可"),         QStringLiteral("印刷許可"),         QStringLiteral("プレビュ許可"),
    QStringLiteral("テキスト出力許可"), QStringLiteral("イメージ出力許可"), QStringLiteral("ユーザID"),
    QStringLiteral("登録日付"),         QStringLiteral("更新日付")};

QString doubled(QString text) {
    return text.replace(QLatin1Char('\''), QStringLiteral("''"));
}

// The statement texts of a save, built from the values each column takes.
QString insertText(const QStringList& values) {
    QString sql = QStringLiteral("INSERT INTO M担当者 (") + kStaffColumns.join(QLatin1Char(',')) + QStringLiteral(") VALUES (");
    QStringList quoted;
    for (const QString& v : values)
        quoted.append(QLatin1Char('\'') + v + QLatin1Char('\''));
    return sql + quoted.join(QLatin1Char(',')) + QLatin1Char(')');
}

QString updateText(const QStringList& values) {
    QString sql = QStringLiteral("UPDATE M担当者 SET");
    for (qsizetype i = 0; i < kStaffColumns.size(); ++i) {
        if (kStaffColumns.at(i) == QStringLiteral("登録日付"))
            continue;
        sql += (i == 0 ? QStringLiteral(" ") : QStringLiteral(",")) + kStaffColumns.at(i) + QStringLiteral(" = '") +
               values.at(i) + QLatin1Char('\'');
    }
    return sql + QStringLiteral(" WHERE コード = '") + values.first() + QLatin1Char('\'');
}

class Typing : public RoundTrip {
protected:
    // A kanji field typed through the input method: the reading, then the converted text.
    void typeWithReading(QWidget* field, const QString& reading, const QString& kanji) {
        field->setFocus(Qt::MouseFocusReason);
        qobject_cast<QLineEdit*>(field)->selectAll();
        QInputMethodEvent preedit(reading, {});
        QCoreApplication::sendEvent(field, &preedit);
        QInputMethodEvent commit;
        commit.setCommitString(kanji);
        QCoreApplication::sendEvent(field, &commit);
    }
    bool historyHolds(const QString& statement) const {
        const QString tail = QStringLiteral("|出力終了 ") + doubled(statement);
        for (const QString& row : tree->history())
            if (row.endsWith(tail))
                return true;
        return false;
    }
};

TEST_P(Typing, ANewStaffMemberTypedSavedReadBackChangedSavedAgainAndDeleted) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "UPDATE M郵便番号 SET 住所A = '東京都千代田区', 住所B = '千代田' WHERE 郵便番号 = '100-0001'")));
    start();
    type(form->コード, QStringLiteral("20"));
    tab();
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    typeWithReading(form->姓, QStringLiteral("さとう"), QStringLiteral("佐藤"));
    tab();
    EXPECT_EQ(form->カナ姓->text(), QStringLiteral("ｻﾄｳ"));
    typeWithReading(form->名, QStringLiteral("はなこ"), QStringLiteral("花子"));
    tab();
    EXPECT_EQ(form->氏名->text(), QStringLiteral("佐藤 花子"));
    EXPECT_EQ(form->カナ->text(), QStringLiteral("ｻﾄｳ ﾊﾅｺ"));
    type(form->性別区分, QStringLiteral("2"));
    type(form->生年月日年号区分, QStringLiteral("4"));
    type(form->生年月日年, QStringLiteral("2"));
    type(form->生年月日月, QStringLiteral("3"));
    type(form->生年月日日, QStringLiteral("4"));
    tab();
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("02"));
    type(form->事業所コード, QStringLiteral("1"));
    type(form->部門コード, QStringLiteral("3"));
    type(form->セクションコード, QStringLiteral("3"));
    type(form->役職コード, QStringLiteral("8"));
    type(form->ログインID, QStringLiteral("hsato"));
    type(form->入社日付年号区分, QStringLiteral("5"));
    type(form->入社日付年, QStringLiteral("6"));
    type(form->入社日付月, QStringLiteral("4"));
    type(form->入社日付日, QStringLiteral("1"));
    tab();
    EXPECT_EQ(form->役職名->text(), QStringLiteral("一般"));
    form->tab_詳細->setCurrentIndex(1);
    type(form->郵便番号, QStringLiteral("1000001"));
    tab();
    EXPECT_EQ(form->住所A->text(), QStringLiteral("東京都千代田区千代田"));
    type(form->住所C, QStringLiteral("丸ビル'5F"));
    type(form->EMAIL, QStringLiteral("hanako@example.jp"));
    type(form->電話, QStringLiteral("(03)1234-5678"));
    type(form->携帯電話, QStringLiteral("090-1111-2222"));
    tab();
    ASSERT_TRUE(form->btn_登録->isEnabled());
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(form->コード->text(), QString());

    const QString now = QStringLiteral("20261121 093000");
    const QString user = ctx().terminal.ユーザID + ctx().op.操作担当者コード + ctx().terminal.コンピュータ名;
    const QStringList stored = rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00020'"), kStaffColumns);
    ASSERT_EQ(stored.size(), 1);
    const QString pin = stored.first().split(QLatin1Char('|')).at(31);
    QStringList values{QStringLiteral("00020"), QStringLiteral("佐藤"), QStringLiteral("花子"), QStringLiteral("佐藤 花子"),
                       QStringLiteral("ｻﾄｳ"), QStringLiteral("ﾊﾅｺ"), QStringLiteral("ｻﾄｳ ﾊﾅｺ"), QStringLiteral("2"),
                       QStringLiteral("19900304"), QStringLiteral("100-0001"), QStringLiteral("東京都千代田区千代田"),
                       QString(), QStringLiteral("丸ビル'5F"), QStringLiteral("(03)1234-5678"),
                       QStringLiteral("090-1111-2222"), QString(), QStringLiteral("hanako@example.jp"), QString(),
                       QStringLiteral("001"), QStringLiteral("003"), QStringLiteral("003"), QStringLiteral("08"),
                       QStringLiteral("hsato"), QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("20240401"),
                       QString(), QString(), QStringLiteral("0312345678"), QStringLiteral("09011112222"), QString(), pin};
    for (int i = 0; i < 10; ++i)
        values.append(QStringLiteral("1"));
    for (int i = 0; i < 8; ++i)
        values.append(QString());
    values << user << now << QString();
    EXPECT_EQ(stored.first(), values.join(QLatin1Char('|')));
    QStringList statementValues = values;
    statementValues[12] = doubled(values.at(12));
    EXPECT_TRUE(historyHolds(insertText(statementValues))) << insertText(statementValues).toStdString();

    const QStringList logColumns = QStringList{QStringLiteral("保守事業所コード"), QStringLiteral("保守番号基準日付"),
                                               QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分")} +
                                   kStaffColumns;
    const QString order = QStringLiteral(" ORDER BY 保守履歴No");
    QStringList log = rows(QStringLiteral("SELECT * FROM L担当者") + order, logColumns);
    ASSERT_EQ(log.size(), 1);
    const QString base = log.first().split(QLatin1Char('|')).at(1);
    EXPECT_EQ(log.first(), QStringLiteral("000|") + base + QStringLiteral("|00000001|1|") + values.join(QLatin1Char('|')));

    const QStringList directoryColumns{QStringLiteral("電話"), QStringLiteral("名称"), QStringLiteral("郵便番号"),
                                       QStringLiteral("住所A"), QStringLiteral("住所B"), QStringLiteral("住所C"),
                                       QStringLiteral("電話番号"), QStringLiteral("法人個人区分"), QStringLiteral("ユーザID"),
                                       QStringLiteral("登録日付")};
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M電話番号 ORDER BY 電話番号"), directoryColumns),
              (QStringList{QStringLiteral("(03)1234-5678|佐藤 花子|100-0001|東京都千代田区千代田||丸ビル'5F|0312345678|0|") +
                               user + QStringLiteral("|") + now,
                           QStringLiteral("090-1111-2222|佐藤 花子|100-0001|東京都千代田区千代田||丸ビル'5F|09011112222|0|") +
                               user + QStringLiteral("|") + now}));

    // Read back by its code.
    type(form->コード, QStringLiteral("20"));
    tab();
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_EQ(form->氏名->text(), QStringLiteral("佐藤 花子"));
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("4"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("02"));
    EXPECT_EQ(form->入社日付年号区分->text(), QStringLiteral("5"));
    EXPECT_EQ(form->入社日付年->text(), QStringLiteral("06"));
    EXPECT_EQ(form->事業所名->text(), QStringLiteral("大阪支店"));
    EXPECT_EQ(form->住所C->text(), QStringLiteral("丸ビル'5F"));
    const QStringList accessColumns{QStringLiteral("事業所コード"), QStringLiteral("閲覧No"),  QStringLiteral("閲覧日付"),
                                    QStringLiteral("閲覧時刻"),     QStringLiteral("担当者コード"), QStringLiteral("閲覧情報"),
                                    QStringLiteral("伝票事業所コード"), QStringLiteral("キー項目"), QStringLiteral("閲覧区分"),
                                    QStringLiteral("承認区分"),     QStringLiteral("ユーザID"), QStringLiteral("登録日付"),
                                    QStringLiteral("更新日付")};
    const QString op = ctx().op.操作担当者コード;
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM T閲覧 ORDER BY 閲覧No"), accessColumns),
              (QStringList{QStringLiteral("000|00000001|20261121|09:30:00|") + op + QStringLiteral("|担当者登録||00020|0|0|") +
                               user + QStringLiteral("|") + now + QStringLiteral("|"),
                           QStringLiteral("000|00000002|20261121|09:30:00|") + op + QStringLiteral("|担当者登録||00020|0|0|") +
                               user + QStringLiteral("|") + now + QStringLiteral("|")}));

    // Changed and saved again.
    tree->sys.clock = tree->sys.clock.addSecs(60);
    type(form->職責, QStringLiteral("主任代理"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts().last(), QStringLiteral("修正しますか"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    const QString later = QStringLiteral("20261121 093100");
    const QStringList updated = rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00020'"), kStaffColumns);
    ASSERT_EQ(updated.size(), 1);
    QStringList after = values;
    after[15] = QStringLiteral("主任代理");
    after[31] = updated.first().split(QLatin1Char('|')).at(31);
    after[52] = later;
    EXPECT_EQ(updated.first(), after.join(QLatin1Char('|')));
    QStringList updateValues = after;
    updateValues[12] = doubled(after.at(12));
    EXPECT_TRUE(historyHolds(updateText(updateValues))) << updateText(updateValues).toStdString();

    log = rows(QStringLiteral("SELECT * FROM L担当者") + order, logColumns);
    ASSERT_EQ(log.size(), 3);
    QStringList red = values;
    red[52] = later; // the moment of the change
    EXPECT_EQ(log.at(1), QStringLiteral("000|") + base + QStringLiteral("|00000002|0|") + red.join(QLatin1Char('|')));
    EXPECT_EQ(log.at(2), QStringLiteral("000|") + base + QStringLiteral("|00000003|1|") + after.join(QLatin1Char('|')));
    EXPECT_EQ(rows(QStringLiteral("SELECT 更新日付 FROM M電話番号 ORDER BY 電話番号"), {QStringLiteral("更新日付")}),
              (QStringList{later, later}));

    // Read back once more and deleted: a red row as the row stood, the row gone, the directory kept.
    tree->sys.clock = tree->sys.clock.addSecs(60);
    type(form->コード, QStringLiteral("20"));
    tab();
    ASSERT_FALSE(ctx().screen.新規フラグ);
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts().last(), QStringLiteral("削除しますか?"));
    EXPECT_EQ(tree->messages.shown.last().defaultButton, 2);
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_TRUE(rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00020'"), kStaffColumns).isEmpty());
    EXPECT_TRUE(historyHolds(QStringLiteral("DELETE FROM M担当者 WHERE コード = '00020'")));
    log = rows(QStringLiteral("SELECT * FROM L担当者") + order, logColumns);
    ASSERT_EQ(log.size(), 4);
    QStringList gone = after;
    gone[52] = QStringLiteral("20261121 093200");
    EXPECT_EQ(log.at(3), QStringLiteral("000|") + base + QStringLiteral("|00000004|0|") + gone.join(QLatin1Char('|')));
    EXPECT_EQ(rows(QStringLiteral("SELECT 電話番号 FROM M電話番号 ORDER BY 電話番号"), {QStringLiteral("電話番号")}),
              (QStringList{QStringLiteral("0312345678"), QStringLiteral("09011112222")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT 閲覧No FROM T閲覧 ORDER BY 閲覧No"), {QStringLiteral("閲覧No")}).size(), 3);
}

// ---- input the card must survive

TEST_P(RoundTrip, OverLongTextIsCutAtItsByteLimitWithoutSplittingACharacter) {
    start();
    readExisting();
    struct Case {
        controls::TextField* field;
        int page;
    };
    QStringList kept;
    for (const Case& c : {Case{form->姓, -1}, Case{form->名, -1}, Case{form->氏名, -1}, Case{form->職責, 0},
                          Case{form->ログインID, 0}, Case{form->住所A, 1}, Case{form->住所B, 1}, Case{form->住所C, 1},
                          Case{form->EMAIL, 1}}) {
        if (c.page >= 0)
            form->tab_詳細->setCurrentIndex(c.page);
        const int limit = c.field->byteLimit();
        // One byte over in the middle of the last full-width character, then two more characters.
        const QString fits = (limit % 2 == 0 ? QStringLiteral("a") : QStringLiteral("ab")) + QString(limit / 2 - 1, u'あ');
        const QString typed = fits + QStringLiteral("あいう");
        type(c.field, typed);
        EXPECT_EQ(form->お知らせ->text(), QStringLiteral("3文字オーバーです。")) << c.field->objectName().toStdString();
        form->コード->setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(c.field->text(), fits) << c.field->objectName().toStdString();
        kept.append(fits);
    }
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("姓"), QStringLiteral("名"), QStringLiteral("氏名"), QStringLiteral("職責"),
                    QStringLiteral("ログインID"), QStringLiteral("住所A"), QStringLiteral("住所B"), QStringLiteral("住所C"),
                    QStringLiteral("EMAIL")}),
              QStringList{kept.join(QLatin1Char('|'))});
}

TEST_P(RoundTrip, AQuoteInEveryQuotedFieldIsStoredAsTyped) {
    start();
    readExisting();
    const QList<std::pair<QWidget*, QString>> typed{
        {form->姓, QStringLiteral("O'Hara")},     {form->名, QStringLiteral("D'Arcy")},
        {form->氏名, QStringLiteral("O'H D'A")},  {form->カナ姓, QStringLiteral("ｵ'ﾊﾗ")},
        {form->カナ名, QStringLiteral("ﾀﾞ'ｰｼｰ")},  {form->カナ, QStringLiteral("ｵ'ﾊﾗ ﾀﾞ'ｰｼｰ")},
        {form->職責, QStringLiteral("'lead'")},   {form->ログインID, QStringLiteral("o'hara")},
        {form->住所A, QStringLiteral("St'A")},    {form->住所B, QStringLiteral("St'B")},
        {form->住所C, QStringLiteral("St'C")}};
    for (const auto& [field, text] : typed) {
        if (field == form->職責)
            form->tab_詳細->setCurrentIndex(0);
        if (field == form->住所A)
            form->tab_詳細->setCurrentIndex(1);
        type(field, text);
    }
    type(form->EMAIL, QStringLiteral("o'hara@example.jp"));
    form->tab_詳細->setCurrentIndex(3);
    form->担当者メモ->setFocus(Qt::MouseFocusReason);
    QTest::keyClicks(form->担当者メモ, QStringLiteral("it's"));
    form->コード->setFocus(Qt::MouseFocusReason);
    tree->messages.answers = {ui::Answer::Yes, ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    const QStringList columns{QStringLiteral("姓"),   QStringLiteral("名"),    QStringLiteral("氏名"),   QStringLiteral("カナ姓"),
                              QStringLiteral("カナ名"), QStringLiteral("カナ"),  QStringLiteral("職責"),   QStringLiteral("ログインID"),
                              QStringLiteral("住所A"), QStringLiteral("住所B"), QStringLiteral("住所C"), QStringLiteral("EMAIL"),
                              QStringLiteral("担当者メモ")};
    QStringList expected;
    for (const auto& [field, text] : typed)
        expected.append(text);
    expected << QStringLiteral("o'hara@example.jp") << QStringLiteral("it's");
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00001'"), columns),
              QStringList{expected.join(QLatin1Char('|'))});
    // A second change: the red row is read back from the table with its quotes.
    readExisting();
    type(form->姓, QStringLiteral("O'Neil"));
    tab();
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    const QStringList log = rows(QStringLiteral("SELECT * FROM L担当者 ORDER BY 保守履歴No"),
                                 QStringList{QStringLiteral("赤黒区分")} + columns);
    ASSERT_EQ(log.size(), 4);
    EXPECT_EQ(log.at(2), QStringLiteral("0|") + expected.join(QLatin1Char('|')));
    expected[0] = QStringLiteral("O'Neil");
    expected[2] = QStringLiteral("O'Neil D'Arcy");
    // The surname typed over without the input method takes the old reading
    // away and brings none: the kana of the surname is left empty to be typed.
    expected[3] = QString();
    expected[5] = QStringLiteral(" ") + expected[4];
    EXPECT_EQ(log.at(3), QStringLiteral("1|") + expected.join(QLatin1Char('|')));
}

TEST_P(RoundTrip, ACodeNotInItsMasterIsRefusedInEveryCodeField) {
    start();
    readExisting();
    for (auto [field, previous] : {std::pair{form->事業所コード, QStringLiteral("000")},
                                   std::pair{form->部門コード, QStringLiteral("003")},
                                   std::pair{form->セクションコード, QStringLiteral("003")},
                                   std::pair{form->役職コード, QStringLiteral("05")}}) {
        type(field, QStringLiteral("99"));
        form->コード->setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(field->text(), previous) << field->objectName().toStdString();
        EXPECT_EQ(form->お知らせ->text(), QStringLiteral("該当情報がありません。"));
    }
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("事業所コード"), QStringLiteral("部門コード"), QStringLiteral("セクションコード"),
                    QStringLiteral("役職コード")}),
              QStringList{QStringLiteral("000|003|003|05")});
}

TEST_P(RoundTrip, AnImpossibleDateIsStoredAsTyped) {
    start();
    readExisting();
    type(form->生年月日年号区分, QStringLiteral("0"));
    type(form->生年月日年, QStringLiteral("1998"));
    type(form->生年月日月, QStringLiteral("2"));
    type(form->生年月日日, QStringLiteral("31"));
    tab();
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("02"));
    EXPECT_EQ(form->生年月日日->text(), QStringLiteral("31"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT 生年月日 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("生年月日")}),
              QStringList{QStringLiteral("19980231")});
    // Read back, it comes up in its era as it stands.
    readExisting();
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("4"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("10"));
    EXPECT_EQ(form->生年月日日->text(), QStringLiteral("31"));
}

INSTANTIATE_TEST_SUITE_P(Engines, RoundTrip, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);
INSTANTIATE_TEST_SUITE_P(Engines, Typing, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

// ---- two clients on one server database

class TwoClients : public StaffFixture {};

TEST_P(TwoClients, TheSecondSaveOfOneNewCodeLandsOnTheNextAndNothingIsLost) {
    Context& first = ctx();
    Context second(tree->sys, tree->messages, tree->waitBox);
    for (Context* c : {&first, &second}) {
        ASSERT_TRUE(環境DBopen(*c));
        ASSERT_TRUE(業務DBopen(*c));
        ASSERT_TRUE(ユーザ情報read(*c));
        担当者clear(*c);
        c->担当者情報.コード = QStringLiteral("00080");
    }
    first.担当者情報.姓 = QStringLiteral("一番");
    second.担当者情報.姓 = QStringLiteral("二番");
    担当者save(first);
    担当者save(second);
    EXPECT_EQ(first.screen.処理結果区分, 1);
    EXPECT_EQ(second.screen.処理結果区分, 1);
    EXPECT_EQ(second.screen.処理結果文, QString());
    EXPECT_EQ(second.担当者情報.コード, QStringLiteral("00081"));
    EXPECT_EQ(rows(QStringLiteral("SELECT コード, 姓 FROM M担当者 WHERE コード >= '00080' ORDER BY コード"),
                   {QStringLiteral("コード"), QStringLiteral("姓")}),
              (QStringList{QStringLiteral("00080|一番"), QStringLiteral("00081|二番")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT 保守履歴No, 赤黒区分, コード, 姓 FROM L担当者 ORDER BY 保守履歴No"),
                   {QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分"), QStringLiteral("コード"), QStringLiteral("姓")}),
              (QStringList{QStringLiteral("00000001|1|00080|一番"), QStringLiteral("00000002|1|00081|二番")}));
    データ処理term(second);
}

INSTANTIATE_TEST_SUITE_P(Server, TwoClients, ::testing::Values(Engine::Postgres), testdb::engineParamName);

} // namespace
