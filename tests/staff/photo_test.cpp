// Photos and the seal image of the staff card: files under the photo folder,
// the pictures on the card, the buttons of the page and the full-size viewer.

#include "staff_fixture.h"

#include "access/msg暗証番号確認.h"
#include "platform/os/files.h"
#include "staff/mod写真図面.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QScreen>
#include <QTimer>

using testdb::Engine;

namespace {

const QString pictureFilter = QStringLiteral(
    "全てのファイル(*.*)|*.*|JPEGファイル (*.jpg)|*.jpg|GIFファイル (*.gif)|*.gif|メタファイル (*.wmf)|*.wmf|"
    "拡張メタファイル (*.emf)|*.emf|Bitmap ファイル (*.bmp)|*.bmp");

class Photos : public StaffFixture {
protected:
    void SetUp() override {
        StaffFixture::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        ASSERT_TRUE(QDir().mkpath(tree->path(QStringLiteral("source"))));
        ASSERT_TRUE(QDir().mkpath(tree->path(QStringLiteral("profile"))));
        qputenv("USERPROFILE", tree->path(QStringLiteral("profile")).toUtf8());
    }
    void TearDown() override {
        qunsetenv("USERPROFILE");
        StaffFixture::TearDown();
    }

    // A real picture of one colour, written in the format given.
    QString picture(const QString& relative, const QColor& colour, QSize size = QSize(40, 30),
                    const char* format = "PNG") {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = tree->path(relative);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).absolutePath()));
        EXPECT_TRUE(image.save(path, format)) << relative.toStdString();
        return path;
    }
    QString staffPhoto(const QString& name) const { return tree->path(QStringLiteral("photo/担当者/") + name); }
    QString seal(const QString& name) const { return tree->path(QStringLiteral("photo/担当者印/") + name); }
    QStringList photosOf(const QString& code) const {
        return os::listFolder(tree->path(QStringLiteral("photo/担当者")), code + QStringLiteral("*"));
    }

    // The colour in the middle of a picture box; invalid when the box is empty.
    static QColor shown(const QLabel* box) {
        const QPixmap p = box->pixmap();
        if (p.isNull())
            return QColor();
        return p.toImage().pixelColor(p.width() / 2, p.height() / 2);
    }
    static bool near(const QColor& a, const QColor& b) {
        return a.isValid() && qAbs(a.red() - b.red()) < 40 && qAbs(a.green() - b.green()) < 40 &&
               qAbs(a.blue() - b.blue()) < 40;
    }

    void readCode(const QString& typed, const QString& expected) {
        type(form->コード, typed);
        tab();
        ASSERT_EQ(form->コード->text(), expected);
        form->tab_詳細->setCurrentIndex(2);
    }
    void addStaff(const QString& code, const QString& name) {
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral(
                "INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,"
                "社員区分) VALUES ('") +
            code + QStringLiteral("','") + name + QStringLiteral("','000','003','003','05','0','1')")));
    }
    void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    // The enabled state of buttons as the page sets them, "1" or "0" each.
    QString states(std::initializer_list<QPushButton*> buttons) const {
        QString out;
        for (QPushButton* b : buttons)
            out += b->isEnabledTo(form->tab_詳細) ? QLatin1Char('1') : QLatin1Char('0');
        return out;
    }
    QString photoButtons() const {
        return states(
            {form->btn_最初の写真, form->btn_次の写真, form->btn_新写真取込, form->btn_写真削除, form->btn_全写真削除});
    }
    QString sealButtons() const { return states({form->btn_担当者印クリア, form->btn_担当者印読込}); }

    static QByteArray bytes(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // The viewer while it is open: caption, window size, picture size, as "title|WxH|WxH".
    QString viewerSeen;
    void openViewer(const std::function<void(QWidget*)>& whileOpen = {}) {
        viewerSeen = QStringLiteral("(no viewer)");
        QTimer::singleShot(0, form.get(), [this, whileOpen] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w || w->objectName() != QStringLiteral("wnd写真"))
                return;
            const auto* img = w->findChild<QLabel*>(QStringLiteral("img_写真"));
            viewerSeen = QStringLiteral("%1|%2x%3|%4x%5")
                             .arg(w->windowTitle())
                             .arg(w->width())
                             .arg(w->height())
                             .arg(img->width())
                             .arg(img->height());
            if (whileOpen)
                whileOpen(w);
            w->close();
        });
        QTest::mouseClick(form->img_写真, Qt::LeftButton);
    }
};

TEST_P(Photos, ImportsTakeTheCodeThenNumbersFromTheLastFileListed) {
    addStaff(QStringLiteral("00012"), QStringLiteral("十二"));
    start();
    readCode(QStringLiteral("12"), QStringLiteral("00012"));
    ASSERT_EQ(photoButtons(), QStringLiteral("11100"));
    tree->dialogs.files = {picture(QStringLiteral("source/p.jpeg"), Qt::red, QSize(40, 30), "JPEG")};
    click(form->btn_新写真取込);
    EXPECT_EQ(tree->dialogs.asked, QStringList{QStringLiteral("save|") + pictureFilter + QStringLiteral("|1|") +
                                               tree->path(QStringLiteral("profile"))});
    EXPECT_EQ(photosOf(QStringLiteral("00012")), QStringList{QStringLiteral("00012.jpeg")});
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
    EXPECT_EQ(photoButtons(), QStringLiteral("11011"));
    // The import counts as a change of the record.
    EXPECT_TRUE(form->btn_登録->isEnabled());

    // Past the last photo to the empty frame, and the second one in.
    click(form->btn_次の写真);
    EXPECT_FALSE(shown(form->img_写真).isValid());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
    const QString q = picture(QStringLiteral("source/q.gif"), Qt::green);
    tree->dialogs.files = {q};
    click(form->btn_新写真取込);
    EXPECT_EQ(bytes(staffPhoto(QStringLiteral("00012_001.gif"))), bytes(q));
    EXPECT_TRUE(near(shown(form->img_写真), Qt::green));

    // The third takes its number from the last of the two by name: nothing is overwritten.
    click(form->btn_最初の写真);
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
    click(form->btn_次の写真);
    EXPECT_TRUE(near(shown(form->img_写真), Qt::green));
    click(form->btn_次の写真);
    ASSERT_FALSE(shown(form->img_写真).isValid());
    tree->dialogs.files = {picture(QStringLiteral("source/r.bmp"), Qt::blue, QSize(40, 30), "BMP")};
    click(form->btn_新写真取込);
    EXPECT_EQ(photosOf(QStringLiteral("00012")),
              (QStringList{QStringLiteral("00012.jpeg"), QStringLiteral("00012_001.gif"),
                           QStringLiteral("00012_002.bmp")}));
    EXPECT_EQ(bytes(staffPhoto(QStringLiteral("00012_001.gif"))), bytes(q));
}

TEST_P(Photos, TheNextNumberFollowsTheDigitsOfTheLastFile) {
    picture(QStringLiteral("photo/担当者/00001_007.png"), Qt::red);
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    click(form->btn_次の写真);
    tree->dialogs.files = {picture(QStringLiteral("source/next.jpg"), Qt::green, QSize(40, 30), "JPEG")};
    click(form->btn_新写真取込);
    EXPECT_TRUE(os::fileExists(staffPhoto(QStringLiteral("00001_008.jpg"))));
    // No renumbering: the gap below stays.
    EXPECT_EQ(photosOf(QStringLiteral("00001")).size(), 2);
}

TEST_P(Photos, MissingFoldersAreMadeForTheImport) {
    ASSERT_TRUE(QDir(tree->path(QStringLiteral("photo/担当者"))).removeRecursively());
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    tree->dialogs.files = {picture(QStringLiteral("source/p.png"), Qt::red)};
    click(form->btn_新写真取込);
    EXPECT_TRUE(os::fileExists(staffPhoto(QStringLiteral("00001.png"))));
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
}

TEST_P(Photos, DeletingTheLastOfTwoLeavesTheEmptyFrame) {
    picture(QStringLiteral("photo/担当者/00001.jpg"), Qt::red, QSize(40, 30), "JPEG");
    picture(QStringLiteral("photo/担当者/00001_001.jpg"), Qt::green, QSize(40, 30), "JPEG");
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    // The first photo is the base file, the second its follower.
    ASSERT_TRUE(near(shown(form->img_写真), Qt::red));
    click(form->btn_次の写真);
    ASSERT_TRUE(near(shown(form->img_写真), Qt::green));
    click(form->btn_写真削除);
    EXPECT_EQ(photosOf(QStringLiteral("00001")), QStringList{QStringLiteral("00001.jpg")});
    EXPECT_FALSE(shown(form->img_写真).isValid());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
    // The next step finds nothing either.
    click(form->btn_次の写真);
    EXPECT_FALSE(shown(form->img_写真).isValid());
    // The first step goes back to the one that is left.
    click(form->btn_最初の写真);
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
}

TEST_P(Photos, TheFirstPhotoIsTheBaseFileWhateverOrderTheFilesWereMadeIn) {
    // Followers made before the base file, several of them.
    for (int i = 9; i >= 1; --i)
        picture(QStringLiteral("photo/担当者/00001_%1.png").arg(i, 3, 10, QLatin1Char('0')), Qt::green);
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red);
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    EXPECT_EQ(ctx().担当者情報.写真file, QStringLiteral("00001.png"));
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
    click(form->btn_次の写真);
    EXPECT_EQ(ctx().担当者情報.写真file, QStringLiteral("00001_001.png"));
    // Past the last, the import numbers on from the highest.
    for (int i = 0; i < 9; ++i)
        click(form->btn_次の写真);
    ASSERT_EQ(ctx().担当者情報.写真file, QString());
    tree->dialogs.files = {picture(QStringLiteral("source/new.png"), Qt::blue)};
    click(form->btn_新写真取込);
    EXPECT_EQ(ctx().担当者情報.写真file, QStringLiteral("00001_010.png"));
}

TEST_P(Photos, APhotoThatCannotBeLoadedEndsTheDisplayBeforeTheSeal) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 担当者印file = '00001.png' WHERE コード = '00001'")));
    picture(QStringLiteral("photo/担当者印/00001.png"), Qt::blue);
    // A photo file that is no picture.
    QFile broken(tree->path(QStringLiteral("photo/担当者/00001.jpg")));
    ASSERT_TRUE(QDir().mkpath(tree->path(QStringLiteral("photo/担当者"))));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("not a picture at all");
    broken.close();
    start();
    readExisting();
    EXPECT_EQ(ctx().担当者情報.表示写真file, QStringLiteral("00001.jpg"));
    EXPECT_FALSE(shown(form->img_写真).isValid());
    EXPECT_FALSE(shown(form->img_担当者印).isValid());

    // With a photo that loads, the seal comes after it.
    picture(QStringLiteral("photo/担当者/00001.jpg"), Qt::red, QSize(40, 30), "JPEG");
    form->tab_詳細->setCurrentIndex(2);
    click(form->btn_最初の写真);
    EXPECT_TRUE(near(shown(form->img_写真), Qt::red));
    EXPECT_TRUE(near(shown(form->img_担当者印), Qt::blue));
}

TEST_P(Photos, ANewCodeForgetsTheSealOfTheRecordItWasTypedOver) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 担当者印file = '00001.png' WHERE コード = '00001'")));
    const QString sealOf1 = picture(QStringLiteral("photo/担当者印/00001.png"), Qt::blue);
    start();
    readExisting();
    ASSERT_EQ(ctx().担当者情報.担当者印file, QStringLiteral("00001.png"));
    // A new code typed over the record: its content becomes a new record's, its seal does not.
    type(form->コード, QStringLiteral("2"));
    tab();
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    EXPECT_EQ(ctx().担当者情報.担当者印file, QString());
    EXPECT_FALSE(shown(form->img_担当者印).isValid());
    tree->messages.answers = {ui::Answer::Yes};
    click(form->btn_登録);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 担当者印file FROM M担当者 WHERE コード = '00002'"), {QStringLiteral("担当者印file")}),
              QStringList{QString()});

    // Deleting the new record leaves the seal of 00001 where it is.
    tree->messages.shown.clear();
    type(form->コード, QStringLiteral("2"));
    tab();
    ASSERT_FALSE(ctx().screen.新規フラグ);
    tree->messages.answers = {ui::Answer::Yes};
    click(form->btn_削除);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("削除しますか?")});
    EXPECT_EQ(count(QStringLiteral("M担当者 WHERE コード = '00002'")), 0);
    EXPECT_TRUE(os::fileExists(sealOf1));
}

TEST_P(Photos, DeletingAllRemovesTheCodesPhotosOnlyAndAsksNothing) {
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red);
    picture(QStringLiteral("photo/担当者/00001_001.png"), Qt::green);
    picture(QStringLiteral("photo/担当者/00002.png"), Qt::blue);
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    ASSERT_TRUE(shown(form->img_写真).isValid());
    click(form->btn_全写真削除);
    EXPECT_TRUE(photosOf(QStringLiteral("00001")).isEmpty());
    EXPECT_TRUE(os::fileExists(staffPhoto(QStringLiteral("00002.png"))));
    EXPECT_FALSE(shown(form->img_写真).isValid());
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
    EXPECT_TRUE(form->btn_登録->isEnabled());
}

TEST_P(Photos, ASourceWithoutAPointImportsNothingWhenThereIsNoEarlierPhoto) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    tree->dialogs.files = {picture(QStringLiteral("source/nopoint"), Qt::red)};
    click(form->btn_新写真取込);
    EXPECT_TRUE(photosOf(QStringLiteral("00001")).isEmpty());
    EXPECT_FALSE(shown(form->img_写真).isValid());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
}

TEST_P(Photos, ANameThatDoesNotExistImportsNothing) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    tree->dialogs.files = {tree->path(QStringLiteral("source/typed.jpg"))};
    click(form->btn_新写真取込);
    EXPECT_TRUE(photosOf(QStringLiteral("00001")).isEmpty());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
}

TEST_P(Photos, ACancelledDialogChangesNothing) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    ASSERT_FALSE(form->btn_登録->isEnabled());
    tree->dialogs.files = {QString(), QString()};
    click(form->btn_新写真取込);
    click(form->btn_担当者印読込);
    EXPECT_EQ(tree->dialogs.asked, (QStringList{QStringLiteral("save|") + pictureFilter + QStringLiteral("|1|") +
                                                    tree->path(QStringLiteral("profile")),
                                                QStringLiteral("save|") + pictureFilter + QStringLiteral("|0|") +
                                                    tree->path(QStringLiteral("profile"))}));
    EXPECT_TRUE(photosOf(QStringLiteral("00001")).isEmpty());
    EXPECT_FALSE(shown(form->img_担当者印).isValid());
    EXPECT_FALSE(form->btn_登録->isEnabled());
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
    EXPECT_EQ(sealButtons(), QStringLiteral("01"));
}

TEST_P(Photos, WhileTheRecordIsPaintedTheButtonsDoNothing) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    ctx().screen.画面表示中フラグ = true;
    tree->dialogs.files = {picture(QStringLiteral("source/p.png"), Qt::red)};
    click(form->btn_新写真取込);
    click(form->btn_担当者印読込);
    ctx().screen.画面表示中フラグ = false;
    EXPECT_TRUE(tree->dialogs.asked.isEmpty());
    EXPECT_TRUE(photosOf(QStringLiteral("00001")).isEmpty());
}

TEST_P(Photos, AShorterCodeShowsThePhotosOfALongerOne) {
    addStaff(QStringLiteral("1"), QStringLiteral("一"));
    picture(QStringLiteral("photo/担当者/10.jpg"), Qt::blue, QSize(40, 30), "JPEG");
    start(QStringLiteral("0001"));
    ASSERT_EQ(form->コード->text(), QStringLiteral("1"));
    form->tab_詳細->setCurrentIndex(2);
    EXPECT_TRUE(near(shown(form->img_写真), Qt::blue));
    EXPECT_EQ(写真最初get(ctx(), QStringLiteral("担当者"), QStringLiteral("1")), QStringLiteral("10.jpg"));
}

TEST_P(Photos, PhotoButtonsFollowTheRecordAndTheCurrentPhoto) {
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red);
    start();
    readExisting();
    // Existing record on a photo: all but the import.
    EXPECT_EQ(photoButtons(), QStringLiteral("11011"));
    // On the empty frame: first, next and the import.
    click(form->btn_次の写真);
    EXPECT_EQ(photoButtons(), QStringLiteral("11100"));
    // A new record has no photos until it is saved.
    type(form->コード, QStringLiteral("50"));
    tab();
    ASSERT_TRUE(ctx().screen.新規フラグ);
    EXPECT_EQ(photoButtons(), QStringLiteral("00000"));
}

TEST_P(Photos, SealButtonsFollowTheCodeTheSealAndAPick) {
    ASSERT_TRUE(
        tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 担当者印file = '00001.png' WHERE コード = '00001'")));
    picture(QStringLiteral("photo/担当者印/00001.png"), Qt::red);
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    // Existing record with a seal: both.
    EXPECT_EQ(sealButtons(), QStringLiteral("11"));
    EXPECT_TRUE(near(shown(form->img_担当者印), Qt::red));
    // Cleared: the picture goes, the file stays until a save and after it.
    click(form->btn_担当者印クリア);
    EXPECT_EQ(sealButtons(), QStringLiteral("01"));
    EXPECT_FALSE(shown(form->img_担当者印).isValid());
    EXPECT_TRUE(os::fileExists(seal(QStringLiteral("00001.png"))));
    // Picked: clear only.
    tree->dialogs.files = {picture(QStringLiteral("source/hanko.png"), Qt::green)};
    click(form->btn_担当者印読込);
    EXPECT_EQ(sealButtons(), QStringLiteral("10"));
    EXPECT_TRUE(near(shown(form->img_担当者印), Qt::green));
    // No code: neither.
    erase(form->コード);
    tab();
    EXPECT_EQ(sealButtons(), QStringLiteral("00"));
}

TEST_P(Photos, ASealPickedForANewRecordIsNamedAtOnceAndCopiedOnSave) {
    start();
    type(form->コード, QStringLiteral("50"));
    tab();
    typeCodes();
    form->tab_詳細->setCurrentIndex(2);
    EXPECT_EQ(sealButtons(), QStringLiteral("01"));
    const QString source = picture(QStringLiteral("source/hanko.png"), Qt::green);
    tree->dialogs.files = {source};
    click(form->btn_担当者印読込);
    EXPECT_EQ(ctx().担当者情報.担当者印file, QStringLiteral("00050.png"));
    EXPECT_TRUE(near(shown(form->img_担当者印), Qt::green));
    EXPECT_EQ(sealButtons(), QStringLiteral("10"));
    EXPECT_FALSE(os::fileExists(seal(QStringLiteral("00050.png"))));
    tree->messages.answers = {ui::Answer::Yes};
    click(form->btn_登録);
    EXPECT_EQ(bytes(seal(QStringLiteral("00050.png"))), bytes(source));
    EXPECT_EQ(rows(QStringLiteral("SELECT 担当者印file FROM M担当者 WHERE コード = '00050'"),
                   {QStringLiteral("担当者印file")}),
              QStringList{QStringLiteral("00050.png")});
}

TEST_P(Photos, ThePickedSealTakesItsExtensionFromTheSixthLastCharacter) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    tree->dialogs.files = {picture(QStringLiteral("source/ab.c.png"), Qt::green)};
    click(form->btn_担当者印読込);
    EXPECT_EQ(ctx().担当者情報.担当者印file, QStringLiteral("00001.c.png"));
    // The row is written with that name; the file copied after it is named from
    // the fifth-last character of the source's name, so the two differ.
    tree->messages.answers = {ui::Answer::Yes};
    click(form->btn_登録);
    EXPECT_TRUE(os::fileExists(seal(QStringLiteral("00001.png"))));
    EXPECT_FALSE(os::fileExists(seal(QStringLiteral("00001.c.png"))));
    EXPECT_EQ(rows(QStringLiteral("SELECT 担当者印file FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("担当者印file")}),
              QStringList{QStringLiteral("00001.c.png")});
}

// The viewer's sizes assume the offscreen screen of the tests, 800 by 800.
TEST_P(Photos, TheViewerShowsThePhotoAtItsSizeCaptionedWithTheName) {
    ASSERT_EQ(QGuiApplication::primaryScreen()->size(), QSize(800, 800));
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red, QSize(40, 30));
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    const QString before = focused();
    openViewer();
    // The window is the picture plus 240 by 640 twips.
    EXPECT_EQ(viewerSeen, QStringLiteral("山田 太郎|56x73|40x30"));
    // The click is the picture's alone: the page behind it moves no focus. (The
    // card's own focus, for when it is active again after the viewer.)
    ASSERT_NE(form->focusWidget(), nullptr);
    EXPECT_EQ(form->focusWidget()->objectName(), before);
}

TEST_P(Photos, ATallPhotoIsFittedToTheScreenHeight) {
    ASSERT_EQ(QGuiApplication::primaryScreen()->size(), QSize(800, 800));
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red, QSize(100, 1000));
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    openViewer();
    // 12000 - 1440 twips high, 1056 twips wide.
    EXPECT_EQ(viewerSeen, QStringLiteral("山田 太郎|86x747|70x704"));
}

TEST_P(Photos, AWidePhotoIsFittedToTheScreenWidth) {
    ASSERT_EQ(QGuiApplication::primaryScreen()->size(), QSize(800, 800));
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red, QSize(2000, 100));
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    openViewer();
    // 12000 - 240 twips wide, 588 twips high.
    EXPECT_EQ(viewerSeen, QStringLiteral("山田 太郎|800x82|784x39"));
}

TEST_P(Photos, TheEmptyFrameOpensNoViewer) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    openViewer();
    EXPECT_EQ(viewerSeen, QStringLiteral("(no viewer)"));
}

TEST_P(Photos, ADoubleClickInTheViewerPrintsThePictureAtItsNaturalSize) {
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red, QSize(100, 1000));
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    openViewer(
        [](QWidget* w) { QTest::mouseDClick(w->findChild<QLabel*>(QStringLiteral("img_写真")), Qt::LeftButton); });
    EXPECT_EQ(tree->dialogs.asked, QStringList{QStringLiteral("print|100x1000")});
}

TEST_P(Photos, WithoutAnOperatorAcceptedTheViewerPrintsNothing) {
    picture(QStringLiteral("photo/担当者/00001.png"), Qt::red);
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(2);
    ctx().pin.暗証番号有無 = 1;
    bool gateShown = false;
    openViewer([&gateShown](QWidget* w) {
        QTimer::singleShot(0, w, [&gateShown] {
            for (QWidget* top : QApplication::topLevelWidgets())
                if (top->isVisible() && top->objectName() == QStringLiteral("msg暗証番号確認")) {
                    gateShown = true;
                    dynamic_cast<msg暗証番号確認*>(top)->reject();
                }
        });
        QTest::mouseDClick(w->findChild<QLabel*>(QStringLiteral("img_写真")), Qt::LeftButton);
    });
    EXPECT_TRUE(gateShown);
    EXPECT_TRUE(tree->dialogs.asked.isEmpty());
    // No box of its own.
    EXPECT_TRUE(tree->messages.texts().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, Photos, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
