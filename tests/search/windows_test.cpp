// The list windows through the staff card: the openings, the choices and
// cancels of the window contract, the searches and the pickers' memory.

#include "search/msgお待ち.h"
#include "search/wnd担当者一覧.h"
#include "search/wnd選択一覧.h"
#include "search/wnd郵便番号一覧.h"
#include "search_fixture.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>

using testdb::Engine;

namespace {

using Staff = wnd担当者一覧;

// ---- the window contract from the card

TEST_P(SearchWindows, StaffListChosenByAClickWritesTheCodeAndMovesOnToTheSurname) {
    start();
    bool disabledWhileOpen = false;
    whenShown<Staff>([&](Staff& w) {
        disabledWhileOpen = !form->isEnabled();
        EXPECT_EQ(codes(w.List担当者), (QStringList{"00001", "00002"}));
        EXPECT_TRUE(w.List担当者->selectedItems().isEmpty());
        clickItem(w.List担当者, item(w.List担当者, QStringLiteral("00002")));
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    EXPECT_TRUE(disabledWhileOpen);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
    EXPECT_EQ(focused(), QStringLiteral("姓"));
    // The code field's own leaving rule read the record.
    EXPECT_EQ(form->姓->text(), QStringLiteral("佐藤"));
    EXPECT_TRUE(ctx().screen.検索条件.isEmpty());
}

TEST_P(SearchWindows, StaffListCancelledByEscLeavesTheCodeAndFocusesIt) {
    start();
    whenShown<Staff>([&](Staff& w) { QTest::keyClick(w.List担当者, Qt::Key_Escape); });
    QTest::keyClick(form->コード, Qt::Key_Control);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    EXPECT_TRUE(ctx().screen.検索条件.isEmpty());
}

TEST_P(SearchWindows, StaffListOpensAtTheCodeTypedInTheCard) {
    start();
    form->コード->setText(QStringLiteral("2"));
    whenShown<Staff>([&](Staff& w) {
        EXPECT_EQ(w.コード->text(), QStringLiteral("00002"));
        EXPECT_TRUE(w.検索SQL().contains(QStringLiteral(" WHERE M担当者.コード >= '00002'")));
        EXPECT_EQ(codes(w.List担当者), QStringList{"00002"});
        // The clause went from the condition into the field.
        EXPECT_TRUE(ctx().screen.検索条件.isEmpty());
        w.btn_戻る->click();
    });
    QTest::mouseDClick(form->コード, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(SearchWindows, OfficePickerChoiceFillsTheNameAndMovesToTheDepartment) {
    start();
    readExisting();
    whenShown<wnd事業所一覧>([&](wnd事業所一覧& w) {
        EXPECT_EQ(codes(w.List事業所), (QStringList{"001", "002"}));
        EXPECT_FALSE(w.lab_注意->isVisible());
        w.List事業所->setCurrentItem(item(w.List事業所, QStringLiteral("002")));
        QTest::keyClick(w.List事業所, Qt::Key_Return);
    });
    QTest::mouseClick(form->btn_事業所コード, Qt::LeftButton);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->事業所コード->text(), QStringLiteral("002"));
    EXPECT_EQ(form->事業所名->text(), QStringLiteral("名古屋支店"));
    EXPECT_EQ(focused(), QStringLiteral("部門コード"));
}

TEST_P(SearchWindows, DepartmentPickerByCtrlKeyChoiceMovesToTheSection) {
    start();
    readExisting();
    whenShown<wnd部門一覧>([&](wnd部門一覧& w) {
        clickItem(w.List部門, item(w.List部門, QStringLiteral("004")));
    });
    QTest::keyClick(form->部門コード, Qt::Key_Control);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->部門コード->text(), QStringLiteral("004"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("技術部"));
    EXPECT_EQ(focused(), QStringLiteral("セクションコード"));
}

TEST_P(SearchWindows, SectionPickerByDoubleClickCancelledFocusesTheSectionAlone) {
    start();
    readExisting();
    whenShown<wndセクション一覧>([&](wndセクション一覧& w) { QTest::keyClick(w.Listセクション, Qt::Key_Escape); });
    QTest::mouseDClick(form->セクションコード, Qt::LeftButton);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->セクションコード->text(), QStringLiteral("003"));
    EXPECT_EQ(focused(), QStringLiteral("セクションコード"));
}

TEST_P(SearchWindows, PositionPickerChoiceMovesToTheDuty) {
    start();
    readExisting();
    whenShown<wnd役職一覧>([&](wnd役職一覧& w) {
        EXPECT_EQ(w.List役職->topLevelItemCount(), 8);
        clickItem(w.List役職, item(w.List役職, QStringLiteral("03")));
    });
    QTest::mouseClick(form->btn_役職コード, Qt::LeftButton);
    EXPECT_EQ(form->役職コード->text(), QStringLiteral("03"));
    EXPECT_EQ(form->役職名->text(), QStringLiteral("部長"));
    EXPECT_EQ(focused(), QStringLiteral("職責"));
}

TEST_P(SearchWindows, PostcodeByCtrlKeyFillsTheAddressAndMovesToIt) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    whenShown<wnd郵便番号一覧>([&](wnd郵便番号一覧& w) {
        // No postcode on the card: the company's head.
        EXPECT_EQ(w.郵便番号->text(), QStringLiteral("100"));
        for (const QString& code : codes(w.List郵便番号))
            EXPECT_TRUE(code.startsWith(QStringLiteral("100"))) << code.toStdString();
        w.List郵便番号->setCurrentItem(item(w.List郵便番号, QStringLiteral("100-0005")));
        QTest::keyClick(w.List郵便番号, Qt::Key_Return);
    });
    QTest::keyClick(form->郵便番号, Qt::Key_Control);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("100-0005"));
    EXPECT_TRUE(form->住所A->text().contains(QStringLiteral("丸の内")));
    EXPECT_EQ(focused(), QStringLiteral("住所A"));
}

TEST_P(SearchWindows, PostcodeByCtrlKeyOpensOnTheEmptyCardAndTheChoiceStopsAtTheGate) {
    start();
    ASSERT_EQ(form->コード->text(), QString());
    ASSERT_FALSE(form->tab_詳細->isEnabled());
    // The focus away from the code, on the last button of the card.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focused(), QStringLiteral("btn_終了"));
    bool shown = false;
    whenShown<wnd郵便番号一覧>([&](wnd郵便番号一覧& w) {
        shown = true;
        EXPECT_FALSE(form->isEnabled());
        w.List郵便番号->setCurrentItem(item(w.List郵便番号, QStringLiteral("100-0005")));
        QTest::keyClick(w.List郵便番号, Qt::Key_Return);
    });
    // The Ctrl key has no gate of its own: the list opens with the code empty.
    QTest::keyClick(form->郵便番号, Qt::Key_Control);
    EXPECT_TRUE(shown);
    EXPECT_TRUE(form->isEnabled());
    // The postcode's own rules stand behind the gate of the code: the focus is at
    // the code, and nothing was looked up or taken into the card.
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    EXPECT_EQ(form->住所A->text(), QString());
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_FALSE(ctx().screen.入力フラグ);
    // Once a code is typed, the card shows its own postcode again.
    type(form->コード, QStringLiteral("1"));
    tab();
    ASSERT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->郵便番号->postcode(), QString());
}

TEST_P(SearchWindows, DoubleClickGatesStopAndOpenNothing) {
    start();
    readExisting();
    form->事業所コード->setText(QString());
    // Nothing may open: a window that does is closed and reported.
    QTimer::singleShot(0, [] {
        if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            ADD_FAILURE() << "a window opened";
            d->done(QDialog::Rejected);
        }
    });
    QTest::mouseDClick(form->部門コード, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("事業所コード"));
    form->事業所コード->setText(QStringLiteral("000"));
    form->役職コード->setText(QString());
    QTest::mouseDClick(form->役職コード, Qt::LeftButton);
    // The position's gate counts the field itself.
    EXPECT_EQ(focused(), QStringLiteral("役職コード"));
    QTest::qWait(0);
}

// ---- the staff list

TEST_P(SearchWindows, StaffListLoadsTheClassListsWithAllLastAndItsDefaults) {
    start();
    whenShown<Staff>([&](Staff& w) {
        EXPECT_EQ(w.在籍区分名称->count(), 4);
        EXPECT_EQ(w.在籍区分名称->itemText(3), QStringLiteral("全て"));
        EXPECT_EQ(w.在籍区分->maximum(), 3);
        EXPECT_EQ(w.在籍区分->value(), 0);
        EXPECT_EQ(w.社員区分名称->itemText(8), QStringLiteral("全て"));
        EXPECT_EQ(w.社員区分->value(), 8);
        EXPECT_EQ(w.社員区分名称->currentIndex(), 8);
        EXPECT_EQ(w.wnd_ttl->text(), QStringLiteral("担当者一覧"));
        EXPECT_FALSE(w.btn_コード検索->isEnabled());
        EXPECT_TRUE(w.btn_複合検索->isEnabled());
        EXPECT_EQ(w.List担当者->headerItem()->text(4), QStringLiteral("セクション"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}


TEST_P(SearchWindows, StaffList1001RowsShow1000AndTheNotice) {
    start();
    addStaff(10, 10 + 999 - 1); // with 00001 and 00002: 1001 rows
    whenShown<Staff>([&](Staff& w) {
        EXPECT_EQ(w.List担当者->topLevelItemCount(), 1000);
        EXPECT_TRUE(w.lab_注意->isVisible());
        EXPECT_EQ(w.lab_注意->text(), QStringLiteral("一回の検索で1000件までを表示します。"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, StaffListExactly1000RowsShowTheNotice) {
    start();
    addStaff(10, 10 + 998 - 1);
    whenShown<Staff>([&](Staff& w) {
        EXPECT_EQ(w.List担当者->topLevelItemCount(), 1000);
        EXPECT_TRUE(w.lab_注意->isVisible());
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, StaffList999RowsShowNoNotice) {
    start();
    addStaff(10, 10 + 997 - 1);
    whenShown<Staff>([&](Staff& w) {
        EXPECT_EQ(w.List担当者->topLevelItemCount(), 999);
        EXPECT_FALSE(w.lab_注意->isVisible());
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, OfficeRestrictionKeepsHeadOfficeRowsVisible) {
    start();
    ctx().env.運用事業所コード = QStringLiteral("001");
    ctx().run.操作事業所コード = QStringLiteral("001");
    whenShown<Staff>([&](Staff& w) {
        type(w.在籍区分, QStringLiteral("3"));
        w.btn_複合検索->click();
        EXPECT_EQ(codes(w.List担当者), (QStringList{"00001", "00002"}));
        EXPECT_TRUE(w.検索SQL().contains(
            QStringLiteral("(M担当者.事業所コード = '001' OR M担当者.事業所コード = '000')")));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, HeadOfficeInstallationAddsNoOfficeClause) {
    start();
    whenShown<Staff>([&](Staff& w) {
        type(w.在籍区分, QStringLiteral("3"));
        w.btn_複合検索->click();
        EXPECT_EQ(codes(w.List担当者), (QStringList{"00001", "00002", "00003"}));
        EXPECT_FALSE(w.検索SQL().contains(QStringLiteral("(M担当者.事業所コード = '")));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, ANameWithAQuoteFindsItsRow) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,氏名,事業所コード,在籍区分,社員区分) VALUES ('00050','O''Neil Ann','000','0','1')")));
    start();
    whenShown<Staff>([&](Staff& w) {
        type(w.名称, QStringLiteral("o'neil"));
        EXPECT_TRUE(w.btn_名称検索->isEnabled());
        QTest::mouseClick(w.btn_名称検索, Qt::LeftButton);
        EXPECT_TRUE(w.検索SQL().contains(QStringLiteral("M担当者.氏名 LIKE '%o''neil%'")));
        EXPECT_EQ(codes(w.List担当者), QStringList{"00050"});
        EXPECT_EQ(focused(), QStringLiteral("List担当者"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, ClearKeepsTheEnrolmentIndex) {
    start();
    form->コード->setText(QStringLiteral("2"));
    whenShown<Staff>([&](Staff& w) {
        type(w.在籍区分, QStringLiteral("2"));
        EXPECT_EQ(w.在籍区分名称->currentIndex(), 2);
        w.btn_画面クリア->click();
        EXPECT_EQ(w.コード->text(), QString());
        EXPECT_EQ(w.在籍区分->value(), 2);
        EXPECT_EQ(codes(w.List担当者), QStringList{"00003"});
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, AllInBothListsMakesTheNegativeSearchListWhatTheCompositeLists) {
    start();
    whenShown<Staff>([&](Staff& w) {
        // "全て" chosen in the drop-down lists: the numeric fields follow.
        w.在籍区分名称->setCurrentIndex(3);
        Q_EMIT w.在籍区分名称->activated(3);
        EXPECT_EQ(w.在籍区分->value(), 3);
        w.btn_複合検索->click();
        const QStringList composite = codes(w.List担当者);
        EXPECT_FALSE(w.検索SQL().contains(QStringLiteral("在籍区分")));
        w.btn_否定検索->click();
        EXPECT_FALSE(w.検索SQL().contains(QStringLiteral("在籍区分")));
        EXPECT_EQ(codes(w.List担当者), composite);
        EXPECT_EQ(composite, (QStringList{"00001", "00002", "00003"}));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, AClickOnAnEmptyPartWithNothingSelectedDoesNothing) {
    start();
    whenShown<Staff>([&](Staff& w) {
        QTest::mouseClick(w.List担当者->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(5, w.List担当者->viewport()->height() - 5));
        EXPECT_TRUE(w.isVisible());
        QTest::keyClick(w.List担当者, Qt::Key_Return);
        EXPECT_TRUE(w.isVisible());
        clickItem(w.List担当者, item(w.List担当者, QStringLiteral("00001")));
        EXPECT_FALSE(w.isVisible());
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
}

TEST_P(SearchWindows, DialectOStatementsListTheRowsOfTheNativeDialect) {
    start();
    QStringList native, oracle;
    QStringList nativeNegative, oracleNegative;
    for (const QString& dialect : {ctx().conn.db, QStringLiteral("O")}) {
        ctx().conn.db = dialect;
        const bool isO = dialect == QLatin1String("O");
        whenShown<Staff>([&](Staff& w) {
            EXPECT_EQ(w.検索SQL().contains(QStringLiteral("(+)")), isO);
            (isO ? oracle : native) = codes(w.List担当者);
            type(w.部門コード, QStringLiteral("3"));
            w.在籍区分名称->setCurrentIndex(3);
            Q_EMIT w.在籍区分名称->activated(3);
            QTest::mouseClick(w.btn_否定検索, Qt::LeftButton);
            EXPECT_TRUE(w.検索SQL().contains(QStringLiteral("M担当者.部門コード <> '003'")));
            (isO ? oracleNegative : nativeNegative) = codes(w.List担当者);
            // The joined names come through the outer joins.
            if (auto* row = item(w.List担当者, QStringLiteral("00002")))
                EXPECT_EQ(row->text(2), QStringLiteral("大阪支店"));
            else
                ADD_FAILURE() << "00002 not listed";
            w.btn_戻る->click();
        });
        QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    }
    EXPECT_EQ(native, (QStringList{"00001", "00002"}));
    EXPECT_EQ(oracle, native);
    EXPECT_EQ(nativeNegative, (QStringList{"00002", "00003"}));
    EXPECT_EQ(oracleNegative, nativeNegative);
}

TEST_P(SearchWindows, ColumnClicksSortAndTurnTheOrder) {
    start();
    whenShown<Staff>([&](Staff& w) {
        w.List担当者->header()->sectionClicked(1);
        EXPECT_EQ(w.List担当者->sortKey(), 1);
        EXPECT_EQ(codes(w.List担当者), (QStringList{"00002", "00001"})); // 佐藤 before 山田
        w.List担当者->header()->sectionClicked(1);
        EXPECT_EQ(w.List担当者->sortOrder(), Qt::DescendingOrder);
        EXPECT_EQ(codes(w.List担当者), (QStringList{"00001", "00002"}));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST_P(SearchWindows, DepartmentPickerFromTheStaffListFillsItsFieldBehindTheGate) {
    start();
    readExisting();
    // The card's department field is the last one that recorded itself.
    form->部門コード->setFocus(Qt::MouseFocusReason);
    ASSERT_EQ(ctx().screen.現在項目, form->部門コード);
    whenShown<Staff>([&](Staff& w) {
        whenShown<wnd部門一覧>([&](wnd部門一覧& p) {
            EXPECT_FALSE(w.isEnabled());
            EXPECT_EQ(ctx().screen.検索元区分, 1);
            clickItem(p.List部門, item(p.List部門, QStringLiteral("004")));
        });
        QTest::keyClick(w.部門コード, Qt::Key_Control);
        EXPECT_TRUE(w.isEnabled());
        EXPECT_EQ(ctx().screen.検索元区分, 0);
        EXPECT_EQ(w.部門コード->text(), QStringLiteral("004"));
        EXPECT_EQ(w.部門名->text(), QStringLiteral("技術部"));
        EXPECT_EQ(w.状態().部門コード, QStringLiteral("004"));
        EXPECT_EQ(focused(), QStringLiteral("btn_部門コード検索"));
        // The contract of the card's opening is back in place.
        EXPECT_EQ(ctx().screen.検索対象項目, form->コード);
        // Once the user has been in 名称 the gate stays shut.
        w.名称->setFocus(Qt::MouseFocusReason);
        QTimer::singleShot(0, [] {
            if (auto* d = dynamic_cast<wnd部門一覧*>(QApplication::activeModalWidget())) {
                ADD_FAILURE() << "the picker opened behind a shut gate";
                d->done(QDialog::Rejected);
            }
        });
        QTest::mouseDClick(w.部門コード, Qt::LeftButton);
        QTest::keyClick(w.List担当者, Qt::Key_Escape);
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

// ---- the postcode list

TEST_P(SearchWindows, PostcodeListOpensOnTheHeadOfTheCallersPostcode) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    form->郵便番号->setPostcode(QStringLiteral("060-0001"));
    whenShown<wnd郵便番号一覧>([&](wnd郵便番号一覧& w) {
        EXPECT_EQ(w.郵便番号->text(), QStringLiteral("060"));
        EXPECT_GT(w.List郵便番号->topLevelItemCount(), 0);
        for (const QString& code : codes(w.List郵便番号))
            EXPECT_TRUE(code.startsWith(QStringLiteral("060"))) << code.toStdString();
        // The composite statement of the load has no ordering.
        EXPECT_FALSE(w.検索SQL().contains(QStringLiteral("ORDER BY")));
        w.btn_戻る->click();
    });
    QTest::keyClick(form->郵便番号, Qt::Key_Control);
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("060-0001"));
    EXPECT_EQ(focused(), QStringLiteral("郵便番号"));
}

TEST_P(SearchWindows, PostcodeListWithoutAnyPostcodeOpensOn100) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    ctx().company.郵便番号.clear();
    whenShown<wnd郵便番号一覧>([&](wnd郵便番号一覧& w) {
        EXPECT_EQ(w.郵便番号->text(), QStringLiteral("100"));
        EXPECT_TRUE(w.検索SQL().contains(QStringLiteral(" WHERE 郵便番号 >= '100' AND 郵便番号 < '101'")));
        // An empty condition disables the postcode search.
        type(w.郵便番号, QString());
        w.郵便番号->clear();
        EXPECT_FALSE(w.btn_郵便番号検索->isEnabled());
        EXPECT_FALSE(w.btn_町域名検索->isEnabled());
        type(w.町域名, QStringLiteral("a'b"));
        EXPECT_TRUE(w.btn_町域名検索->isEnabled());
        QTest::mouseClick(w.btn_町域名検索, Qt::LeftButton);
        EXPECT_TRUE(w.検索SQL().contains(QStringLiteral(" WHERE 住所B LIKE '%a''b%'")));
        EXPECT_EQ(w.List郵便番号->topLevelItemCount(), 0);
        type(w.郵便番号, QStringLiteral("060"));
        QTest::mouseClick(w.btn_郵便番号検索, Qt::LeftButton);
        EXPECT_TRUE(w.検索SQL().contains(QStringLiteral(" WHERE 郵便番号 >= '060' AND 郵便番号 < '061'")));
        EXPECT_GT(w.List郵便番号->topLevelItemCount(), 0);
        w.btn_戻る->click();
    });
    QTest::keyClick(form->郵便番号, Qt::Key_Control);
    // Always unloaded: the next opening starts from the load again.
    whenShown<wnd郵便番号一覧>([&](wnd郵便番号一覧& w) {
        EXPECT_EQ(w.郵便番号->text(), QStringLiteral("100"));
        EXPECT_EQ(w.町域名->text(), QString());
        w.btn_戻る->click();
    });
    QTest::keyClick(form->郵便番号, Qt::Key_Control);
}

// ---- the pickers

TEST_P(SearchWindows, OfficePickerWith500RowsOrMoreShows500AndTheNotice) {
    QString sql = QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ");
    for (int i = 100; i < 610; ++i)
        sql += QStringLiteral("%1('%2','支所%2')").arg(i == 100 ? QString() : QStringLiteral(",")).arg(i);
    ASSERT_TRUE(tree->mainExecute(sql));
    start();
    readExisting();
    whenShown<wnd事業所一覧>([&](wnd事業所一覧& w) {
        EXPECT_EQ(w.List事業所->topLevelItemCount(), 500);
        EXPECT_EQ(w.List事業所->topLevelItem(0)->text(0), QStringLiteral("001"));
        EXPECT_TRUE(w.lab_注意->isVisible());
        EXPECT_EQ(w.lab_注意->text(), QStringLiteral("一回の検索で500件までを表示します。"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_事業所コード, Qt::LeftButton);
}

TEST_P(SearchWindows, DepartmentPickerWithAllAndTheClearButtonListsEveryClass) {
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('006','企画部','3')")));
    start();
    readExisting();
    whenShown<wnd部門一覧>([&](wnd部門一覧& w) {
        EXPECT_EQ(w.稼動状況区分->value(), 1);
        EXPECT_EQ(w.稼動状況区分名称->itemText(4), QStringLiteral("全て"));
        EXPECT_EQ(codes(w.List部門), (QStringList{"001", "002", "003", "004", "005"}));
        type(w.稼動状況区分, QStringLiteral("4"));
        // A change only stores the index; the button runs the fill.
        EXPECT_EQ(w.List部門->topLevelItemCount(), 5);
        w.btn_画面クリア->click();
        EXPECT_EQ(codes(w.List部門), (QStringList{"001", "002", "003", "004", "005", "006"}));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_部門コード, Qt::LeftButton);
}

TEST_P(SearchWindows, APickerComesBackAsItWasLeftWithoutAQuery) {
    start();
    readExisting();
    QDialog* first = nullptr;
    whenShown<wnd部門一覧>([&](wnd部門一覧& w) {
        first = &w;
        w.List部門->header()->sectionClicked(1); // by name
        w.List部門->header()->sectionClicked(1); // descending
        clickItem(w.List部門, item(w.List部門, QStringLiteral("002")));
    });
    QTest::mouseClick(form->btn_部門コード, Qt::LeftButton);
    ASSERT_EQ(form->部門コード->text(), QStringLiteral("002"));
    // Another user adds a department meanwhile.
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('009','監査部','1')")));
    const QStringList historyBefore = tree->history();
    whenShown<wnd部門一覧>([&](wnd部門一覧& w) {
        EXPECT_EQ(&w, first);
        EXPECT_EQ(w.List部門->topLevelItemCount(), 5);
        EXPECT_EQ(item(w.List部門, QStringLiteral("009")), nullptr);
        EXPECT_EQ(w.List部門->sortKey(), 1);
        EXPECT_EQ(w.List部門->sortOrder(), Qt::DescendingOrder);
        ASSERT_EQ(w.List部門->selectedItems().size(), 1);
        EXPECT_EQ(w.List部門->selectedItems().first()->text(0), QStringLiteral("002"));
        EXPECT_EQ(w.検索SQL(), QStringLiteral("SELECT コード,名称 FROM M部門 WHERE M部門.稼動状況区分 = '1' ORDER BY "
                                             "M部門.コード"));
        QTest::keyClick(w.List部門, Qt::Key_Escape);
    });
    QTest::keyClick(form->部門コード, Qt::Key_Control);
    EXPECT_EQ(tree->history(), historyBefore);
    EXPECT_EQ(focused(), QStringLiteral("部門コード"));
}

// ---- the wait box

TEST(WaitBox, ShowsItsMessageOnTopAndIsUnloadedWhenClosed) {
    msgお待ち box;
    box.show();
    ASSERT_NE(box.form(), nullptr);
    EXPECT_TRUE(box.form()->isVisible());
    EXPECT_EQ(box.form()->objectName(), QStringLiteral("msgお待ち"));
    ASSERT_NE(box.lab_msg, nullptr);
    EXPECT_EQ(box.lab_msg->text(), QStringLiteral("しばらくお待ちください。"));
    EXPECT_EQ(box.lab_msg->objectName(), QStringLiteral("lab_msg"));
    box.close();
    EXPECT_EQ(box.form(), nullptr);
    box.show();
    EXPECT_TRUE(box.form()->isVisible());
    box.close();
}

INSTANTIATE_TEST_SUITE_P(Engines, SearchWindows, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
