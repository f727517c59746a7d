// The personnel link on the staff card: the employee list on the link
// database, the employee's status on a date, and an employee taken over into
// a staff record with photos and seal. The link here points at the tree's own
// main database, which holds the personnel tables as the suite keeps them.

#include "search_fixture.h"

#include "link/mod連携データ処理.h"
#include "platform/os/files.h"
#include "search/wnd社員一覧.h"
#include "search/wnd選択一覧.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QInputMethodEvent>

using testdb::Engine;

namespace {

const QString kPersonnel = QStringLiteral("人事就業管理");

// A statement as its output-end row in the run history holds it.
QString outputRow(const QString& sql) {
    return QStringLiteral("出力終了 ") + QString(sql).replace(QLatin1Char('\''), QStringLiteral("''"));
}

class Employees : public SearchWindows {
protected:
    void SetUp() override {
        SearchWindows::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        linkToOwnDatabase();
        employee(QStringLiteral("00101"), QStringLiteral("山本"), QStringLiteral("一郎"), QStringLiteral("ﾔﾏﾓﾄ"),
                 QStringLiteral("ｲﾁﾛｳ"), QStringLiteral("000"), QStringLiteral("003"), QStringLiteral("003"),
                 QStringLiteral("05"), QStringLiteral("0"), QStringLiteral("1"));
        employee(QStringLiteral("00102"), QStringLiteral("山田"), QStringLiteral("花子"), QStringLiteral("ﾔﾏﾀﾞ"),
                 QStringLiteral("ﾊﾅｺ"), QStringLiteral("001"), QStringLiteral("001"), QStringLiteral("001"),
                 QStringLiteral("08"), QStringLiteral("0"), QStringLiteral("2"));
        employee(QStringLiteral("00103"), QStringLiteral("川口"), QStringLiteral("三郎"), QStringLiteral("ｶﾜｸﾞﾁ"),
                 QStringLiteral("ｻﾌﾞﾛｳ"), QStringLiteral("002"), QStringLiteral("004"), QStringLiteral("005"),
                 QStringLiteral("03"), QStringLiteral("2"), QStringLiteral("1"));
    }

    // The personnel row linked to the tree's own main database, as a site
    // keeps the personnel tables reachable from it.
    void linkToOwnDatabase() {
        Context& probe = tree->newContext();
        ASSERT_TRUE(環境DBopen(probe));
        const auto& c = probe.conn;
        main(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = '%1', 連携データソース名 = '%2', "
                            "連携サーバー名 = '%3', 連携データベース名 = '%4', 連携ユーザーID = '%5', "
                            "連携パスワード = '%6' WHERE 業務名 = '人事就業管理'")
                 .arg(c.db, c.データソース名, c.サーバー名, c.データベース名, c.ユーザーID, c.パスワード));
        データ処理term(probe);
        ASSERT_TRUE(tree->configExecute(QStringLiteral("DELETE FROM プログラム稼動履歴")));
        tree->newContext();
    }
    void main(const QString& sql) { ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString(); }
    void employee(const QString& code, const QString& family, const QString& given, const QString& familyKana,
                  const QString& givenKana, const QString& office, const QString& department,
                  const QString& section, const QString& position, const QString& status, const QString& klass) {
        main(QStringLiteral("INSERT INTO M社員 (コード,姓,名,氏名,カナ姓,カナ名,カナ,性別区分,生年月日,郵便番号,住所A,"
                            "住所B,住所C,電話,携帯電話,EMAIL,社員メモ,事業所コード,部門コード,セクションコード,役職コード,"
                            "職責,就業形態コード,社員区分,在籍区分,入社日付,退社日付) VALUES ('%1','%2','%3','%2 %3',"
                            "'%4','%5','%4 %5','1','19750310','100-0001','東京都千代田区','千代田1-1','社員寮2号',"
                            "'03-3333-4444','090-5555-6666','%1@example.jp','人事からの申し送り','%6','%7','%8','%9',"
                            "'営業担当','001','%10','%11','20000401','')")
                 .arg(code, family, given, familyKana, givenKana, office, department, section, position, klass,
                      status));
    }

    // Japanese text typed through the input method, replacing the field's text.
    static void compose(QLineEdit* field, const QString& text) {
        field->setFocus(Qt::MouseFocusReason);
        field->selectAll();
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QCoreApplication::sendEvent(field, &commit);
    }

    // The card with the link open, as a start with the personnel link does.
    void startLinked() {
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ASSERT_TRUE(ユーザ情報read(ctx()));
        ctx().人事連携フラグ = 連携有無chk(ctx(), kPersonnel);
        ASSERT_TRUE(ctx().人事連携フラグ);
        ASSERT_TRUE(連携DBopen(ctx())) << tree->history().join(QLatin1Char('\n')).toStdString();
        form = std::make_unique<frm担当者登録>(ctx());
        form->表示();
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        form->先頭項目focus();
    }

    // The run history's texts without their counters.
    QStringList history() const {
        QStringList out;
        for (const QString& row : tree->history())
            out.append(row.section(QLatin1Char('|'), 1));
        return out;
    }
    qsizetype historySize() const { return tree->history().size(); }
    QStringList historySince(qsizetype from) const { return history().mid(from); }

    // A picture file of one colour.
    QString picture(const QString& relative, const QColor& colour, const char* format = "PNG") {
        QImage image(QSize(40, 30), QImage::Format_RGB32);
        image.fill(colour);
        const QString path = tree->path(relative);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).absolutePath()));
        EXPECT_TRUE(image.save(path, format)) << relative.toStdString();
        return path;
    }
    static QByteArray bytes(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QStringList photosOf(const QString& code) const {
        return os::listFolder(tree->path(QStringLiteral("photo/担当者")), code + QStringLiteral("*"));
    }

    // A new staff record under code 00009, the card ready for the employee code.
    void newRecord() {
        type(form->コード, QStringLiteral("9"));
        tab();
        ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    }
};

// ---- the statement of the list

class EmployeeStatements : public ::testing::TestWithParam<const char*> {};

TEST_P(EmployeeStatements, EveryPieceNamesTheEmployeesAndTheFirstClauseOpensWithWhereInEveryDialect) {
    const QString db = QString::fromLatin1(GetParam());
    人員一覧状態 s;
    s.検索区分 = 0;
    s.コード = QStringLiteral("00010");
    s.名称 = QStringLiteral("山");
    s.在籍区分 = 0;
    s.在籍区分最大 = 3;
    s.社員区分 = 8;
    s.社員区分最大 = 8;
    const QString columns = QStringLiteral(
        "SELECT TOP 1000 M社員.コード,M社員.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS "
        "セクション名");
    const QString from =
        db == QLatin1String("O")
            ? QStringLiteral(" FROM Mセクション,M部門,M事業所,M社員") +
                  QStringLiteral(" WHERE M事業所.コード(+) = M社員.事業所コード AND M部門.コード(+) = M社員.部門コード "
                                 "AND Mセクション.コード(+) = M社員.セクションコード")
            : QStringLiteral(" FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M社員 ON "
                             "M事業所.コード = M社員.事業所コード) ON M部門.コード = M社員.部門コード) ON "
                             "Mセクション.コード = M社員.セクションコード");
    EXPECT_EQ(社員一覧SQLmake(s, db, QString(), QStringLiteral("000"), QStringLiteral("000")),
              columns + from + QStringLiteral(" WHERE M社員.コード >= '00010'") +
                  QStringLiteral(" AND M社員.氏名 LIKE '%山%'") + QStringLiteral(" AND M社員.在籍区分 = '0'") +
                  QStringLiteral(" ORDER BY M社員.コード"));

    // The window's fixed condition comes before the caller's and the office's.
    s.固定条件 = QStringLiteral("M社員.就業形態コード = '001'");
    s.検索区分 = 2;
    s.カナ = QStringLiteral("ﾔﾏ");
    EXPECT_EQ(社員一覧SQLmake(s, db, QStringLiteral("M社員.役職コード = '05'"), QStringLiteral("001"),
                              QStringLiteral("001")),
              columns + from + QStringLiteral(" WHERE (M社員.就業形態コード = '001')") +
                  QStringLiteral(" AND (M社員.役職コード = '05')") +
                  QStringLiteral(" AND (M社員.事業所コード = '001' OR M社員.事業所コード = '000')") +
                  QStringLiteral(" AND M社員.カナ LIKE '%ﾔﾏ%'") + QStringLiteral(" AND M社員.在籍区分 = '0'") +
                  QStringLiteral(" ORDER BY M社員.カナ"));

    // The negative search negates the same clauses.
    s = 人員一覧状態();
    s.検索区分 = -1;
    s.部門コード = QStringLiteral("003");
    s.在籍区分 = 1;
    s.在籍区分最大 = 3;
    s.社員区分最大 = 8;
    s.社員区分 = 8;
    EXPECT_EQ(社員一覧SQLmake(s, db, QString(), QStringLiteral("000"), QStringLiteral("000")),
              columns + from + QStringLiteral(" WHERE M社員.部門コード <> '003'") +
                  QStringLiteral(" AND M社員.在籍区分 <> '1'") + QStringLiteral(" ORDER BY M社員.コード"));
}

TEST(EmployeeStatementsOther, AnyOtherDialectBuildsNothing) {
    EXPECT_EQ(社員一覧SQLmake(人員一覧状態(), QStringLiteral("X"), QString(), QStringLiteral("000"), QString()),
              QString());
}

INSTANTIATE_TEST_SUITE_P(Dialects, EmployeeStatements, ::testing::Values("A", "S", "O"));

// ---- the window

TEST_P(Employees, TheListOpensFromTheButtonOnTheLinkDatabaseAndAChoiceFillsTheCard) {
    startLinked();
    ASSERT_TRUE(form->社員コード->isVisible());
    ASSERT_TRUE(form->btn_社員コード->isVisible());
    newRecord();
    const qsizetype before = historySize();
    bool disabledWhileOpen = false;
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        disabledWhileOpen = !form->isEnabled();
        EXPECT_EQ(w.wnd_ttl->text(), QStringLiteral("社員一覧"));
        EXPECT_EQ(w.List社員->objectName(), QStringLiteral("List社員"));
        // The default: the first enrolment class, all employee classes.
        EXPECT_EQ(codes(w.List社員), (QStringList{QStringLiteral("00101"), QStringLiteral("00102")}));
        EXPECT_EQ(w.List社員->topLevelItem(0)->text(1), QStringLiteral("山本 一郎"));
        EXPECT_EQ(w.List社員->topLevelItem(0)->text(2), QStringLiteral("本社"));
        EXPECT_EQ(w.List社員->topLevelItem(0)->text(3), QStringLiteral("営業部"));
        EXPECT_EQ(w.List社員->topLevelItem(0)->text(4), QStringLiteral("営業一課"));
        // Each statement of the link leaves its history row: the class lists, then the list.
        const QStringList rows = historySince(before);
        EXPECT_EQ(rows.value(0), outputRow(QStringLiteral("SELECT * FROM K在籍区分 ORDER BY 区分")));
        EXPECT_EQ(rows.value(1), outputRow(QStringLiteral("SELECT * FROM K社員区分 ORDER BY 区分")));
        EXPECT_EQ(rows.value(2), outputRow(w.検索SQL()));
        EXPECT_TRUE(w.検索SQL().startsWith(QStringLiteral("SELECT TOP 1000 M社員.コード,M社員.氏名")));
        clickItem(w.List社員, item(w.List社員, QStringLiteral("00101")));
    });
    QTest::mouseClick(form->btn_社員コード, Qt::LeftButton);
    EXPECT_TRUE(disabledWhileOpen);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->社員コード->text(), QStringLiteral("00101"));
    EXPECT_EQ(focused(), QStringLiteral("カナ姓"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山本"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山本 一郎"));
    EXPECT_EQ(form->コード->text(), QStringLiteral("00009"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    // Hidden, not unloaded.
    int kept = 0;
    for (QWidget* w : QApplication::allWidgets())
        kept += dynamic_cast<wnd社員一覧*>(w) && w->isHidden() ? 1 : 0;
    EXPECT_EQ(kept, 1);
}

TEST_P(Employees, TheSecondOpeningShowsTheListAsItWasLeftWithoutAQuery) {
    startLinked();
    newRecord();
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        compose(w.名称, QStringLiteral("山田"));
        QTest::mouseClick(w.btn_名称検索, Qt::LeftButton);
        EXPECT_EQ(codes(w.List社員), QStringList{QStringLiteral("00102")});
        // Sorted by name, descending.
        w.List社員->columnClick(1);
        w.btn_戻る->click();
    });
    QTest::keyClick(form->社員コード, Qt::Key_Control);
    EXPECT_EQ(focused(), QStringLiteral("社員コード"));
    EXPECT_EQ(form->社員コード->text(), QString());

    const qsizetype before = historySize();
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        EXPECT_EQ(historySince(before), QStringList());
        EXPECT_EQ(w.名称->text(), QStringLiteral("山田"));
        EXPECT_EQ(codes(w.List社員), QStringList{QStringLiteral("00102")});
        EXPECT_EQ(w.List社員->sortKey(), 1);
        clickItem(w.List社員, item(w.List社員, QStringLiteral("00102")));
    });
    QTest::keyClick(form->社員コード, Qt::Key_Control);
    EXPECT_EQ(form->社員コード->text(), QStringLiteral("00102"));
    EXPECT_EQ(form->名->text(), QStringLiteral("花子"));
}

TEST_P(Employees, ClearingTheConditionsKeepsBothClasses) {
    startLinked();
    newRecord();
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        type(w.在籍区分, QStringLiteral("2"));
        tab();
        type(w.社員区分, QStringLiteral("1"));
        tab();
        compose(w.名称, QStringLiteral("川"));
        QTest::mouseClick(w.btn_複合検索, Qt::LeftButton);
        EXPECT_EQ(codes(w.List社員), QStringList{QStringLiteral("00103")});
        QTest::mouseClick(w.btn_画面クリア, Qt::LeftButton);
        EXPECT_EQ(w.名称->text(), QString());
        EXPECT_EQ(w.在籍区分->value(), 2);
        EXPECT_EQ(w.在籍区分名称->currentText(), QStringLiteral("退職"));
        EXPECT_EQ(w.社員区分->value(), 1);
        EXPECT_EQ(codes(w.List社員), QStringList{QStringLiteral("00103")});
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_社員コード, Qt::LeftButton);
}

TEST_P(Employees, ASingleClickInTheDepartmentOpensThePickerWhenItsNameWasLeftThere) {
    startLinked();
    newRecord();
    // The card's department field was the last to record itself.
    type(form->事業所コード, QStringLiteral("0"));
    form->部門コード->setFocus(Qt::MouseFocusReason);
    ASSERT_EQ(ctx().screen.現在項目, form->部門コード);
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        whenShown<wnd部門一覧>([&](wnd部門一覧& p) {
            EXPECT_EQ(ctx().screen.検索元区分, 1);
            clickItem(p.List部門, item(p.List部門, QStringLiteral("004")));
        });
        QTest::mouseClick(w.部門コード, Qt::LeftButton);
        EXPECT_EQ(w.部門コード->text(), QStringLiteral("004"));
        EXPECT_EQ(w.部門名->text(), QStringLiteral("技術部"));
        // A double click is no way in here.
        w.名称->setFocus(Qt::MouseFocusReason);
        QTest::mouseDClick(w.部門コード, Qt::LeftButton);
        QTest::mouseClick(w.btn_部門コード検索, Qt::LeftButton);
        EXPECT_EQ(codes(w.List社員), QStringList());
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_社員コード, Qt::LeftButton);
}

TEST_P(Employees, ADoubleClickInTheEmployeeCodeMeetsGateCFirst) {
    startLinked();
    // No staff code: the gate sends the focus there and opens nothing.
    QTest::mouseDClick(form->社員コード, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    newRecord();
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) { QTest::keyClick(w.List社員, Qt::Key_Escape); });
    QTest::mouseDClick(form->社員コード, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("社員コード"));
}

// ---- the employee code on the card

TEST_P(Employees, ATypedEmployeeCodeCopiesTheEmployeeAndKeepsTheRecordsOwnColumns) {
    main(QStringLiteral("UPDATE M社員 SET 暗証番号 = '' WHERE コード = '00101'"));
    startLinked();
    type(form->コード, QStringLiteral("1"));
    tab();
    ASSERT_FALSE(ctx().screen.新規フラグ);
    ctx().担当者情報.ログインID = QStringLiteral("yamada");
    type(form->社員コード, QStringLiteral("101"));
    tab();
    const 担当者情報型& r = ctx().担当者情報;
    EXPECT_EQ(r.社員コード, QStringLiteral("00101"));
    EXPECT_EQ(r.コード, QStringLiteral("00001"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_EQ(r.姓, QStringLiteral("山本"));
    EXPECT_EQ(r.カナ, QStringLiteral("ﾔﾏﾓﾄ ｲﾁﾛｳ"));
    EXPECT_EQ(r.生年月日, QStringLiteral("19750310"));
    EXPECT_EQ(r.生年月日年号区分, 3);
    EXPECT_EQ(r.生年月日年, QStringLiteral("50"));
    EXPECT_EQ(r.入社日付, QStringLiteral("20000401"));
    EXPECT_EQ(r.住所C, QStringLiteral("社員寮2号"));
    EXPECT_EQ(r.携帯電話, QStringLiteral("090-5555-6666"));
    EXPECT_EQ(r.担当者メモ, QStringLiteral("人事からの申し送り"));
    EXPECT_EQ(r.事業所名, QStringLiteral("本社"));
    EXPECT_EQ(r.役職名, QStringLiteral("課長"));
    EXPECT_EQ(r.職責, QStringLiteral("営業担当"));
    EXPECT_EQ(r.ログインID, QStringLiteral("yamada"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山本 一郎"));
    EXPECT_EQ(form->お知らせ->text(), QString());
}

TEST_P(Employees, AnUnknownEmployeeCodeIsEmptiedAndWhatAnEarlierCopyBroughtStays) {
    startLinked();
    newRecord();
    type(form->社員コード, QStringLiteral("101"));
    tab();
    ASSERT_EQ(form->姓->text(), QStringLiteral("山本"));
    type(form->社員コード, QStringLiteral("999"));
    tab();
    EXPECT_EQ(form->社員コード->text(), QString());
    EXPECT_EQ(ctx().担当者情報.社員コード, QString());
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("該当情報がありません。"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山本"));
    // Emptied by hand: nothing is read, the copy stays.
    type(form->社員コード, QStringLiteral("101"));
    tab();
    form->社員コード->setFocus(Qt::MouseFocusReason);
    form->社員コード->selectAll();
    QTest::keyClick(form->社員コード, Qt::Key_Delete);
    tab();
    EXPECT_EQ(ctx().担当者情報.社員コード, QString());
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(form->姓->text(), QStringLiteral("山本"));
}

TEST_P(Employees, TheEmployeesPhotosAreCopiedUnderTheStaffCodeAndTheSealOnSave) {
    const QString first = picture(QStringLiteral("photo/社員/00101.jpg"), Qt::red, "JPEG");
    const QString second = picture(QStringLiteral("photo/社員/00101_1.png"), Qt::green);
    const QString seal = picture(QStringLiteral("photo/社員印/00101.png"), Qt::blue);
    picture(QStringLiteral("photo/社員/00102.png"), Qt::black);
    startLinked();
    newRecord();
    type(form->社員コード, QStringLiteral("101"));
    tab();
    EXPECT_EQ(photosOf(QStringLiteral("00009")),
              (QStringList{QStringLiteral("00009.jpg"), QStringLiteral("00009_001.png")}));
    EXPECT_EQ(bytes(tree->path(QStringLiteral("photo/担当者/00009.jpg"))), bytes(first));
    EXPECT_EQ(bytes(tree->path(QStringLiteral("photo/担当者/00009_001.png"))), bytes(second));
    EXPECT_EQ(ctx().担当者情報.写真file, QStringLiteral("00009.jpg"));
    EXPECT_FALSE(form->img_写真->pixmap().isNull());
    // The seal is named at once and copied with the record.
    EXPECT_EQ(ctx().担当者情報.担当者印file, QStringLiteral("00009.png"));
    EXPECT_EQ(ctx().担当者情報.取込担当者印path, seal);
    EXPECT_FALSE(os::fileExists(tree->path(QStringLiteral("photo/担当者印/00009.png"))));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(bytes(tree->path(QStringLiteral("photo/担当者印/00009.png"))), bytes(seal));
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 社員コード, 担当者印file, 氏名 FROM M担当者 WHERE コード = '00009'"),
                             {QStringLiteral("社員コード"), QStringLiteral("担当者印file"), QStringLiteral("氏名")}),
              QStringList{QStringLiteral("00101|00009.png|山本 一郎")});
}

TEST_P(Employees, ARoundTripTypeLeaveOpenSearchChooseAndSave) {
    picture(QStringLiteral("photo/社員/00102.png"), Qt::green);
    startLinked();
    newRecord();
    // Typed and left: the card fills.
    type(form->社員コード, QStringLiteral("101"));
    tab();
    ASSERT_EQ(form->姓->text(), QStringLiteral("山本"));
    // The list, searched by name; the choice replaces the copy.
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        compose(w.名称, QStringLiteral("花子"));
        QTest::mouseClick(w.btn_名称検索, Qt::LeftButton);
        ASSERT_EQ(codes(w.List社員), QStringList{QStringLiteral("00102")});
        clickItem(w.List社員, item(w.List社員, QStringLiteral("00102")));
    });
    QTest::mouseClick(form->btn_社員コード, Qt::LeftButton);
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 花子"));
    EXPECT_EQ(form->事業所コード->text(), QStringLiteral("001"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 社員コード, 氏名, カナ, 事業所コード, 社員区分, 担当者メモ FROM "
                                            "M担当者 WHERE コード = '00009'"),
                             {QStringLiteral("社員コード"), QStringLiteral("氏名"), QStringLiteral("カナ"),
                              QStringLiteral("事業所コード"), QStringLiteral("社員区分"), QStringLiteral("担当者メモ")}),
              QStringList{QStringLiteral("00102|山田 花子|ﾔﾏﾀﾞ ﾊﾅｺ|001|2|人事からの申し送り")});
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 赤黒区分, 社員コード FROM L担当者 WHERE コード = '00009'"),
                             {QStringLiteral("赤黒区分"), QStringLiteral("社員コード")}),
              QStringList{QStringLiteral("1|00102")});
    // The photos of both employees came over under the staff code, in order.
    EXPECT_EQ(photosOf(QStringLiteral("00009")), QStringList{QStringLiteral("00009.png")});
}

TEST_P(Employees, WithTheLinkDatabaseGoneTheListIsEmptyTheCardWorksOnAndTheHistorySaysWhy) {
    startLinked();
    newRecord();
    // The link's connection is lost.
    ctx().others.slot[ctx().others.連携番号].業務DB接続.close();
    const qsizetype before = historySize();
    whenShown<wnd社員一覧>([&](wnd社員一覧& w) {
        EXPECT_EQ(w.List社員->topLevelItemCount(), 0);
        EXPECT_FALSE(w.lab_注意->isVisible());
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_社員コード, Qt::LeftButton);
    const QStringList rows = historySince(before);
    ASSERT_EQ(rows.size(), 3) << rows.join(QLatin1Char('\n')).toStdString();
    for (const QString& row : rows)
        EXPECT_TRUE(row.startsWith(QStringLiteral("エラー SELECT"))) << row.toStdString();
    // The card goes on: the employee code reads on the main connection.
    type(form->社員コード, QStringLiteral("101"));
    tab();
    EXPECT_EQ(form->姓->text(), QStringLiteral("山本"));
    type(form->事業所コード, QStringLiteral("1"));
    tab();
    EXPECT_EQ(form->事業所名->text(), QStringLiteral("大阪支店"));
}

// ---- the employee on a date (today is 2026-11-21 on the test clock)

class EmployeeStatus : public Employees {
protected:
    void SetUp() override {
        Employees::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ASSERT_TRUE(ユーザ情報read(ctx()));
        // The window's class lists come from the link database.
        ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
        ASSERT_TRUE(連携DBopen(ctx()));
        windows = std::make_unique<検索窓群>(ctx(), nullptr);
        window = std::make_unique<wnd社員一覧>(ctx(), *windows);
        window->読込();
        // Shown beside, so that its fields take the focus and store their conditions.
        window->show();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void TearDown() override {
        window.reset();
        windows.reset();
        Employees::TearDown();
    }
    // Reads the view and gives the statements it ran, as the history holds them.
    QStringList read(const QString& code) {
        const qsizetype before = historySize();
        window->社員状態read(code);
        return historySince(before);
    }
    const 社員状態情報& v() const { return window->社員状態; }
    QString organisation() const {
        return QStringList{v().事業所コード, v().事業所名, v().部門コード, v().部門名, v().セクションコード,
                           v().セクション名, v().役職コード, v().役職名, v().職責, v().就業形態コード, v().就業形態名,
                           QString::number(v().社員区分), v().社員区分名}
            .join(QLatin1Char('|'));
    }
    QString status() const { return QString::number(v().在籍区分) + QLatin1Char('|') + v().在籍区分名; }
    void transfer(const QString& code, const QString& date, const QString& no, const QString& office,
                  const QString& before, const QString& klass = QStringLiteral("1")) {
        main(QStringLiteral("INSERT INTO T異動 (社員コード,異動日付,異動No,異動事業所コード,異動部門コード,"
                            "異動セクションコード,異動役職コード,異動職責,異動就業形態コード,異動社員区分,前事業所コード,"
                            "前部門コード,前セクションコード,前役職コード,前職責,前就業形態コード,前社員区分) VALUES "
                            "('%1','%2','%3','%4','004','005','03','移動後','002','%6','%5','001','001','08','移動前',"
                            "'001','2')")
                 .arg(code, date, no, office, before, klass));
    }

    // The statements, as written for today and employee C.
    static QString transferSql(const QString& w, const QString& C, bool past) {
        const auto r = [&w](QString t) { return t.replace(QStringLiteral("@"), w); };
        QString sql =
            QStringLiteral("SELECT T異動.*,  M社員.氏名 AS 社員名,M社員.カナ AS カナ,") +
            r(QStringLiteral(" M@事業所.名称 AS @事業所名, M@部門.名称 AS @部門名, M@セクション.名称 AS @セクション名,"
                             " M@役職.名称 AS @役職名, M@就業形態.名称 AS @就業形態名, K@社員区分.名称 AS @社員区分名")) +
            QStringLiteral(" FROM  M社員 RIGHT JOIN (") +
            r(QStringLiteral(" M事業所 AS M@事業所 RIGHT JOIN ( M部門 AS M@部門 RIGHT JOIN ( Mセクション AS M@セクション "
                             "RIGHT JOIN ( M役職 AS M@役職 RIGHT JOIN ( M就業形態 AS M@就業形態 RIGHT JOIN ( K社員区分 "
                             "AS K@社員区分 RIGHT JOIN  T異動  ON K@社員区分.区分 = T異動.@社員区分) ON "
                             "M@就業形態.コード = T異動.@就業形態コード) ON M@役職.コード = T異動.@役職コード) ON "
                             "M@セクション.コード = T異動.@セクションコード) ON M@部門.コード = T異動.@部門コード) ON "
                             "M@事業所.コード = T異動.@事業所コード)")) +
            QStringLiteral(" ON M社員.コード = T異動.社員コード WHERE T異動.社員コード = '") + C + QStringLiteral("'");
        return sql + (past ? QStringLiteral(" AND T異動.異動日付 <= '20261121' ORDER BY T異動.異動日付 "
                                            "DESC,T異動.異動No DESC")
                           : QStringLiteral(" AND T異動.異動日付 > '20261121' ORDER BY T異動.異動日付,T異動.異動No"));
    }
    static QString retirementSql(const QString& C) {
        return QStringLiteral("SELECT T退職.退職日付 FROM  T退職  WHERE T退職.社員コード = '") + C +
               QStringLiteral("' AND T退職.退職日付 <= '20261121'");
    }
    static QString leaveSql(const QString& C) {
        return QStringLiteral("SELECT T休職.休職開始日付,T休職.休職終了日付 FROM  T休職  WHERE T休職.社員コード = '") +
               C + QStringLiteral("' AND T休職.休職開始日付 <= '20261121' AND T休職.休職終了日付 >= '20261121'");
    }
    static QString noticeSql(const QString& C) {
        return QStringLiteral("SELECT T諸届.諸届氏名 AS 社員名,T諸届.諸届カナ氏名 AS カナ FROM  T諸届  WHERE "
                              "T諸届.社員コード = '") +
               C +
               QStringLiteral("' AND T諸届.諸届日付 <= '20261121' AND T諸届.諸届区分 = '1' ORDER BY T諸届.諸届日付 "
                              "DESC,T諸届.諸届No DESC");
    }
    static QString masterSql(const QString& C) {
        return QStringLiteral(
                   "SELECT M社員.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名, "
                   "M役職.名称 AS 役職名, M就業形態.名称 AS 就業形態名, K在籍区分.名称 AS 在籍区分名, K社員区分.名称 "
                   "AS 社員区分名 FROM  M事業所 RIGHT JOIN ( M部門 RIGHT JOIN ( Mセクション RIGHT JOIN ( M役職 RIGHT "
                   "JOIN ( M就業形態 RIGHT JOIN ( K在籍区分 RIGHT JOIN ( K社員区分 RIGHT JOIN  M社員 ON K社員区分.区分 = "
                   "M社員.社員区分) ON K在籍区分.区分 = M社員.在籍区分) ON M就業形態.コード = M社員.就業形態コード) ON "
                   "M役職.コード = M社員.役職コード) ON Mセクション.コード = M社員.セクションコード) ON M部門.コード = "
                   "M社員.部門コード) ON M事業所.コード = M社員.事業所コード WHERE M社員.コード = '") +
               C + QStringLiteral("'");
    }

    std::unique_ptr<検索窓群> windows;
    std::unique_ptr<wnd社員一覧> window;
};

TEST_P(EmployeeStatus, WithNoHistoryTheMasterGivesTheStateAndEveryStatementIsInTheHistory) {
    const QStringList ran = read(QStringLiteral("00101"));
    EXPECT_EQ(status(), QStringLiteral("0|在籍"));
    EXPECT_EQ(v().社員名, QStringLiteral("山本 一郎"));
    EXPECT_EQ(v().カナ, QStringLiteral("ﾔﾏﾓﾄ ｲﾁﾛｳ"));
    EXPECT_EQ(organisation(), QStringLiteral("000|本社|003|営業部|003|営業一課|05|課長|営業担当|001|常勤|1|正社員"));
    // In order: retirement, leave, past and future transfers, the master for its
    // hiring number (none), the master with its names, the notices of a name.
    EXPECT_EQ(ran, (QStringList{outputRow(retirementSql(QStringLiteral("00101"))),
                                outputRow(leaveSql(QStringLiteral("00101"))),
                                outputRow(transferSql(QStringLiteral("異動"), QStringLiteral("00101"), true)),
                                outputRow(transferSql(QStringLiteral("前"), QStringLiteral("00101"), false)),
                                outputRow(QStringLiteral("SELECT * FROM M社員 WHERE コード = '00101'")),
                                outputRow(masterSql(QStringLiteral("00101"))),
                                outputRow(noticeSql(QStringLiteral("00101")))}));
}

TEST_P(EmployeeStatus, ATransferDatedTodayBelongsToThePast) {
    transfer(QStringLiteral("00101"), QStringLiteral("20261121"), QStringLiteral("001"), QStringLiteral("002"),
             QStringLiteral("000"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(organisation(), QStringLiteral("002|名古屋支店|004|技術部|005|開発課|03|部長|移動後|002|短時間勤務|1|正社員"));
    EXPECT_EQ(v().社員名, QStringLiteral("山本 一郎"));
}

TEST_P(EmployeeStatus, TwoTransfersOnOneDateThePastTakesTheHigherNumberTheFutureTheLower) {
    transfer(QStringLiteral("00101"), QStringLiteral("20250401"), QStringLiteral("001"), QStringLiteral("001"),
             QStringLiteral("000"));
    transfer(QStringLiteral("00101"), QStringLiteral("20250401"), QStringLiteral("002"), QStringLiteral("002"),
             QStringLiteral("001"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(v().事業所コード, QStringLiteral("002"));
    transfer(QStringLiteral("00102"), QStringLiteral("20270401"), QStringLiteral("001"), QStringLiteral("002"),
             QStringLiteral("000"));
    transfer(QStringLiteral("00102"), QStringLiteral("20270401"), QStringLiteral("002"), QStringLiteral("000"),
             QStringLiteral("001"));
    read(QStringLiteral("00102"));
    EXPECT_EQ(v().事業所コード, QStringLiteral("000"));
}

TEST_P(EmployeeStatus, OnlyFutureTransfersGiveTheStateBeforeTheEarliest) {
    transfer(QStringLiteral("00102"), QStringLiteral("20280401"), QStringLiteral("001"), QStringLiteral("000"),
             QStringLiteral("002"));
    transfer(QStringLiteral("00102"), QStringLiteral("20270401"), QStringLiteral("001"), QStringLiteral("002"),
             QStringLiteral("000"));
    read(QStringLiteral("00102"));
    EXPECT_EQ(organisation(), QStringLiteral("000|本社|001|総務部|001|総務課|08|一般|移動前|001|常勤|2|契約社員"));
    EXPECT_EQ(v().社員名, QStringLiteral("山田 花子"));
}

TEST_P(EmployeeStatus, RetirementTomorrowWithNoLeaveIsEnrolled) {
    main(QStringLiteral("INSERT INTO T退職 (社員コード,退職日付) VALUES ('00101','20261122')"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(status(), QStringLiteral("0|在籍"));
}

TEST_P(EmployeeStatus, RetirementInThePastOutranksALeaveThatCoversToday) {
    main(QStringLiteral("INSERT INTO T退職 (社員コード,退職日付) VALUES ('00101','20261121')"));
    main(QStringLiteral("INSERT INTO T休職 (社員コード,休職開始日付,休職終了日付) VALUES ('00101','20261101','20261231')"));
    const QStringList ran = read(QStringLiteral("00101"));
    EXPECT_EQ(status(), QStringLiteral("2|退職"));
    // No leave is asked after a retirement.
    EXPECT_FALSE(ran.contains(outputRow(leaveSql(QStringLiteral("00101")))));
}

TEST_P(EmployeeStatus, ALeaveFromTodayUntilTodayIsOnLeaveAndAClosedOneCountsForNothing) {
    main(QStringLiteral("INSERT INTO T休職 (社員コード,休職開始日付,休職終了日付) VALUES ('00101','20261121','20261121')"));
    main(QStringLiteral("INSERT INTO T休職 (社員コード,休職開始日付,休職終了日付) VALUES ('00102','20250101','20261120')"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(status(), QStringLiteral("1|休職"));
    read(QStringLiteral("00102"));
    EXPECT_EQ(status(), QStringLiteral("0|在籍"));
}

TEST_P(EmployeeStatus, OnlyANoticeOfAChangeOfNameUpToTodayChangesTheName) {
    main(QStringLiteral("INSERT INTO T諸届 (社員コード,諸届日付,諸届No,諸届区分,諸届氏名,諸届カナ氏名) VALUES "
                        "('00102','20261122','001','1','明日 花子','ｱｽ ﾊﾅｺ'),"
                        "('00102','20240101','001','2','住所 花子','ｼﾞｭｳｼｮ ﾊﾅｺ')"));
    read(QStringLiteral("00102"));
    EXPECT_EQ(v().社員名, QStringLiteral("山田 花子"));
    main(QStringLiteral("INSERT INTO T諸届 (社員コード,諸届日付,諸届No,諸届区分,諸届氏名,諸届カナ氏名) VALUES "
                        "('00102','20250601','001','1','高橋 花子','ﾀｶﾊｼ ﾊﾅｺ'),"
                        "('00102','20250601','002','1','高橋 はな子',NULL)"));
    read(QStringLiteral("00102"));
    // The latest of one day by number; a null blanks the kana.
    EXPECT_EQ(v().社員名, QStringLiteral("高橋 はな子"));
    EXPECT_EQ(v().カナ, QString());
}

TEST_P(EmployeeStatus, ANullClassInTheSourceGivesOneAndNoSourceAtAllGivesTheUnknownValues) {
    main(QStringLiteral("UPDATE M社員 SET 社員区分 = NULL WHERE コード = '00101'"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(v().社員区分, 1);
    EXPECT_EQ(v().社員区分名, QString());

    // A code no source knows: the unknown organisation, the names kept from before.
    read(QStringLiteral("00999"));
    EXPECT_EQ(v().社員コード, QStringLiteral("00999"));
    EXPECT_EQ(status(), QStringLiteral("0|在籍"));
    EXPECT_EQ(organisation(), QStringLiteral("999|不明事業所|999|不明部門|999|不明セクション|99|不明役職|不明職責|999|"
                                             "不明就業形態|7|その他"));
    EXPECT_EQ(v().社員名, QStringLiteral("山本 一郎"));
}

TEST_P(EmployeeStatus, AHiringNumberReadsTheHiringAndAnEmptyOneGoesToTheMaster) {
    main(QStringLiteral("UPDATE M社員 SET 採用事業所コード = '000', 採用番号基準日付 = '99999999', 採用No = '00000007' "
                        "WHERE コード = '00101'"));
    main(QStringLiteral("INSERT INTO T採用 (事業所コード,番号基準日付,採用No,社員コード,採用日付,氏名,カナ氏名,"
                        "採用事業所コード,採用部門コード,採用セクションコード,採用就業形態コード,採用社員区分,採用役職コード,"
                        "採用職責) VALUES ('000','99999999','00000007','00101','20000401','山本 一朗','ﾔﾏﾓﾄ ｲﾁﾛｳ','001',"
                        "'005','007','003','0','07','新任研修')"));
    const QStringList ran = read(QStringLiteral("00101"));
    EXPECT_EQ(organisation(), QStringLiteral("001|大阪支店|005|人事部|007|人事課|07|主任|新任研修|003|交替勤務|0|役員"));
    EXPECT_EQ(v().社員名, QStringLiteral("山本 一朗"));
    EXPECT_TRUE(ran.contains(outputRow(
        QStringLiteral("SELECT  T採用.氏名 AS 社員名,T採用.カナ氏名 AS カナ,T採用.採用事業所コード,T採用.採用部門コード,"
                       "T採用.採用セクションコード,T採用.採用就業形態コード,T採用.採用社員区分,T採用.採用役職コード,"
                       "T採用.採用職責, M採用事業所.名称 AS 採用事業所名, M採用部門.名称 AS 採用部門名, "
                       "M採用セクション.名称 AS 採用セクション名, M採用役職.名称 AS 採用役職名, M採用就業形態.名称 AS "
                       "採用就業形態名, K採用社員区分.名称 AS 採用社員区分名 FROM  M事業所 AS M採用事業所 RIGHT JOIN ( "
                       "M部門 AS M採用部門 RIGHT JOIN ( Mセクション AS M採用セクション RIGHT JOIN ( M役職 AS M採用役職 "
                       "RIGHT JOIN ( M就業形態 AS M採用就業形態 RIGHT JOIN ( K社員区分 AS K採用社員区分 RIGHT JOIN  "
                       "T採用  ON K採用社員区分.区分 = T採用.採用社員区分) ON M採用就業形態.コード = "
                       "T採用.採用就業形態コード) ON M採用役職.コード = T採用.採用役職コード) ON M採用セクション.コード = "
                       "T採用.採用セクションコード) ON M採用部門.コード = T採用.採用部門コード) ON M採用事業所.コード = "
                       "T採用.採用事業所コード WHERE T採用.事業所コード = '000' AND T採用.番号基準日付 = '99999999' AND "
                       "T採用.採用No = '00000007'"))));
    EXPECT_FALSE(ran.contains(outputRow(masterSql(QStringLiteral("00101")))));

    main(QStringLiteral("UPDATE M社員 SET 採用No = '' WHERE コード = '00101'"));
    read(QStringLiteral("00101"));
    EXPECT_EQ(v().事業所コード, QStringLiteral("000"));
    EXPECT_EQ(v().社員名, QStringLiteral("山本 一郎"));
}

TEST_P(EmployeeStatus, TheMastersOwnStatusIsReadByNobody) {
    // 00103 is marked retired in the master, with no retirement row.
    read(QStringLiteral("00103"));
    EXPECT_EQ(status(), QStringLiteral("0|在籍"));
}

TEST_P(EmployeeStatus, TheViewIsTestedAgainstTheWindowsConditionsInOrder) {
    read(QStringLiteral("00101"));
    // The defaults: the first enrolment class, all employee classes.
    EXPECT_TRUE(window->社員条件chk());
    // Enrolment: the view is enrolled, the window asks for retired.
    window->在籍区分->setValue(2);
    EXPECT_FALSE(window->社員条件chk());
    window->在籍区分->setValue(3); // 全て
    window->社員区分->setValue(2);
    EXPECT_FALSE(window->社員条件chk());
    window->社員区分->setValue(1);
    EXPECT_TRUE(window->社員条件chk());
    // The name, ignoring case, in the composite and the name search; not in the negative one.
    compose(window->名称, QStringLiteral("本"));
    window->カナ->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(window->社員条件chk());
    compose(window->名称, QStringLiteral("佐藤"));
    window->カナ->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(window->社員条件chk());
    QTest::mouseClick(window->btn_否定検索, Qt::LeftButton);
    EXPECT_TRUE(window->社員条件chk());
    QTest::mouseClick(window->btn_複合検索, Qt::LeftButton);
    type(window->名称, QString());
    // The department and the section.
    type(window->部門コード, QStringLiteral("4"));
    type(window->セクションコード, QStringLiteral("3"));
    window->名称->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(window->社員条件chk());
    QTest::mouseClick(window->btn_セクションコード検索, Qt::LeftButton);
    EXPECT_TRUE(window->社員条件chk()); // the section search asks no department
    QTest::mouseClick(window->btn_部門コード検索, Qt::LeftButton);
    EXPECT_FALSE(window->社員条件chk());

    // An employee of the Nagoya branch on a branch installation: only its own
    // office and the head office pass.
    QTest::mouseClick(window->btn_画面クリア, Qt::LeftButton);
    read(QStringLiteral("00103"));
    EXPECT_TRUE(window->社員条件chk());
    ctx().env.運用事業所コード = QStringLiteral("001");
    EXPECT_FALSE(window->社員条件chk());
    ctx().env.運用事業所コード = QStringLiteral("002");
    EXPECT_TRUE(window->社員条件chk());
}

INSTANTIATE_TEST_SUITE_P(Engines, EmployeeStatus, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

INSTANTIATE_TEST_SUITE_P(Engines, Employees, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
