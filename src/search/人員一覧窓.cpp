#include "search/人員一覧窓.h"

#include "access/mod暗証番号.h"
#include "access/mod操作許可.h"
#include "link/mod連携データ処理.h"
#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"
#include "platform/os/files.h"
#include "platform/os/os.h"
#include "shell/context.h"
#include "shell/modデータ処理.h"
#include "toolkit/mod項目編集.h"
#include "toolkit/項目移動.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

// ---- the statement

namespace {

bool 空白(const QString& text) {
    return text.trimmed().isEmpty();
}

// A statement with its flag: whether it has a WHERE yet.
struct 文 {
    QString sql;
    bool 結合済 = false;
    void add(const QString& whereForm, const QString& andForm, const QString& rest) {
        sql += 結合済 ? andForm : whereForm;
        sql += rest;
        結合済 = true;
    }
};

} // namespace

QString 人員一覧SQLmake(const 人員一覧定義& def, const 人員一覧状態& s, const QString& db, const QString& 検索条件,
                        const QString& 運用事業所コード, const QString& 操作事業所コード) {
    // Every piece names the window's master, written T below.
    const QString& T = def.表;
    const auto t = [&T](const QString& text) { return QString(text).replace(QStringLiteral("$T"), T); };
    const QString 項目 = t(QStringLiteral(" $T.コード,$T.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,"
                                           "Mセクション.名称 AS セクション名"));
    文 q;
    if (db == QLatin1String("A") || db == QLatin1String("S")) {
        q.sql = QStringLiteral("SELECT TOP 1000") + 項目 +
                t(QStringLiteral(" FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN $T ON "
                                 "M事業所.コード = $T.事業所コード) ON M部門.コード = $T.部門コード) ON "
                                 "Mセクション.コード = $T.セクションコード"));
    } else if (db == QLatin1String("O")) {
        // The TOP word stays in this dialect too; the translator makes it a limit.
        q.sql = QStringLiteral("SELECT TOP 1000") + 項目 + t(QStringLiteral(" FROM Mセクション,M部門,M事業所,$T")) +
                t(QStringLiteral(" WHERE M事業所.コード(+) = $T.事業所コード AND M部門.コード(+) = "
                                 "$T.部門コード AND Mセクション.コード(+) = $T.セクションコード"));
        // The employee list starts its clauses with " WHERE" all the same: so it is built.
        q.結合済 = !def.固定条件あり;
    } else {
        return QString();
    }

    if (def.固定条件あり && !空白(s.固定条件))
        q.add(QStringLiteral(" WHERE ("), QStringLiteral(" WHERE ("), s.固定条件 + QStringLiteral(")"));

    if (!空白(検索条件))
        q.add(QStringLiteral(" WHERE ("), QStringLiteral(" AND ("), 検索条件 + QStringLiteral(")"));
    if (運用事業所コード != QLatin1String("000"))
        q.add(t(QStringLiteral(" WHERE ($T.事業所コード = '")), t(QStringLiteral(" AND ($T.事業所コード = '")),
              操作事業所コード + t(QStringLiteral("' OR $T.事業所コード = '")) + QStringLiteral("000") +
                  QStringLiteral("')"));

    const bool 否定 = s.検索区分 == -1;
    const bool 複合 = s.検索区分 == 0 || 否定;
    const QString 名称値 = 引用符conv(s.名称.trimmed());
    const QString カナ値 = 引用符conv(s.カナ);
    if ((複合 || s.検索区分 == 1) && !空白(s.コード)) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.コード < '")), t(QStringLiteral(" AND $T.コード < '")),
                  s.コード + QStringLiteral("'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.コード >= '")), t(QStringLiteral(" AND $T.コード >= '")),
                  s.コード + QStringLiteral("'"));
    }
    if ((複合 || s.検索区分 == 3) && !空白(s.名称)) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.氏名 NOT LIKE '%")), t(QStringLiteral(" AND $T.氏名 NOT LIKE '%")),
                  名称値 + QStringLiteral("%'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.氏名 LIKE '%")), t(QStringLiteral(" AND $T.氏名 LIKE '%")),
                  名称値 + QStringLiteral("%'"));
    }
    if ((複合 || s.検索区分 == 2) && !空白(s.カナ)) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.カナ NOT LIKE '%")), t(QStringLiteral(" AND $T.カナ NOT LIKE '%")),
                  カナ値 + QStringLiteral("%'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.カナ LIKE '%")), t(QStringLiteral(" AND $T.カナ LIKE '%")),
                  カナ値 + QStringLiteral("%'"));
    }
    if ((複合 || s.検索区分 == 4) && !空白(s.部門コード)) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.部門コード <> '")), t(QStringLiteral(" AND $T.部門コード <> '")),
                  s.部門コード + QStringLiteral("'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.部門コード = '")), t(QStringLiteral(" AND $T.部門コード = '")),
                  s.部門コード + QStringLiteral("'"));
    }
    if ((複合 || s.検索区分 == 5) && !空白(s.セクションコード)) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.セクションコード <> '")),
                  t(QStringLiteral(" AND $T.セクションコード <> '")), s.セクションコード + QStringLiteral("'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.セクションコード = '")),
                  t(QStringLiteral(" AND $T.セクションコード = '")), s.セクションコード + QStringLiteral("'"));
    }

    if (s.在籍区分 != s.在籍区分最大) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.在籍区分 <> '")), t(QStringLiteral(" AND $T.在籍区分 <> '")),
                  QString::number(s.在籍区分) + QStringLiteral("'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.在籍区分 = '")), t(QStringLiteral(" AND $T.在籍区分 = '")),
                  QString::number(s.在籍区分) + QStringLiteral("'"));
    }
    if (s.社員区分 != s.社員区分最大) {
        if (否定)
            q.add(t(QStringLiteral(" WHERE $T.社員区分 <> '")), t(QStringLiteral(" AND $T.社員区分 <> '")),
                  QString::number(s.社員区分) + QStringLiteral("'"));
        else
            q.add(t(QStringLiteral(" WHERE $T.社員区分 = '")), t(QStringLiteral(" AND $T.社員区分 = '")),
                  QString::number(s.社員区分) + QStringLiteral("'"));
    }

    switch (s.検索区分) {
    case 3:
        q.sql += t(QStringLiteral(" ORDER BY $T.氏名"));
        break;
    case 2:
        q.sql += t(QStringLiteral(" ORDER BY $T.カナ"));
        break;
    default:
        q.sql += t(QStringLiteral(" ORDER BY $T.コード"));
        break;
    }
    return q.sql;
}

// ---- the window

namespace {

constexpr int kRowLimit = 1000;

template <typename T>
T* make(QWidget* parent, const QString& name) {
    T* w = new T(parent);
    w->setObjectName(name);
    return w;
}

QPushButton* button(QWidget* parent, const QString& name, const QString& caption) {
    auto* b = make<QPushButton>(parent, name);
    b->setText(caption);
    b->setAutoDefault(false);
    return b;
}

controls::TextField* codeField(QWidget* parent, const QString& name, int length) {
    auto* f = make<controls::TextField>(parent, name);
    f->setDigitsOnly(true);
    f->setMaxLength(length);
    return f;
}

controls::TextField* nameField(QWidget* parent, const QString& name) {
    auto* f = make<controls::TextField>(parent, name);
    f->setReadOnly(true);
    f->setTabStop(false);
    return f;
}

QLabel* label(QWidget* parent, const QString& name, const QString& caption) {
    auto* l = make<QLabel>(parent, name);
    l->setText(caption);
    return l;
}

} // namespace

人員一覧窓::人員一覧窓(Context& c, 検索窓群& g, 人員一覧定義 def)
    : 検索窓(c, g, def.窓名, def.閉鎖語), def_(std::move(def)) {
    build();
    wire();
}

void 人員一覧窓::build() {
    setWindowTitle(def_.題);
    wnd_ttl = label(this, QStringLiteral("wnd_ttl"), def_.題);
    wnd_ttl->setFrameShape(QFrame::Panel);
    wnd_ttl->setFrameShadow(QFrame::Raised);
    wnd_ttl->setAlignment(Qt::AlignCenter);
    コード = codeField(this, QStringLiteral("コード"), 5);
    lab_コード = label(this, QStringLiteral("lab_コード"), QStringLiteral("以降"));
    名称 = make<controls::TextField>(this, QStringLiteral("名称"));
    カナ = make<controls::KanaField>(this, QStringLiteral("カナ"));
    部門コード = codeField(this, QStringLiteral("部門コード"), 3);
    部門名 = nameField(this, QStringLiteral("部門名"));
    セクションコード = codeField(this, QStringLiteral("セクションコード"), 3);
    セクション名 = nameField(this, QStringLiteral("セクション名"));
    itm_ttl_在籍区分 = label(this, QStringLiteral("itm_ttl_在籍区分"), QStringLiteral("在籍区分"));
    在籍区分 = make<controls::NumField>(this, QStringLiteral("在籍区分"));
    在籍区分名称 = make<QComboBox>(this, QStringLiteral("在籍区分名称"));
    itm_ttl_社員区分 = label(this, QStringLiteral("itm_ttl_社員区分"), QStringLiteral("社員区分"));
    社員区分 = make<controls::NumField>(this, QStringLiteral("社員区分"));
    社員区分名称 = make<QComboBox>(this, QStringLiteral("社員区分名称"));
    btn_コード検索 = button(this, QStringLiteral("btn_コード検索"), QStringLiteral("コード検索"));
    btn_カナ検索 = button(this, QStringLiteral("btn_カナ検索"), QStringLiteral("カナ検索"));
    btn_名称検索 = button(this, QStringLiteral("btn_名称検索"), QStringLiteral("名称検索"));
    btn_部門コード検索 = button(this, QStringLiteral("btn_部門コード検索"), QStringLiteral("部門検索"));
    btn_セクションコード検索 = button(this, QStringLiteral("btn_セクションコード検索"), QStringLiteral("部署検索"));
    btn_複合検索 = button(this, QStringLiteral("btn_複合検索"), QStringLiteral("検索"));
    btn_否定検索 = button(this, QStringLiteral("btn_否定検索"), QStringLiteral("否検索"));
    btn_画面クリア = button(this, QStringLiteral("btn_画面クリア"), QStringLiteral("条件ｸﾘｱ"));
    lab_注意 = label(this, QStringLiteral("lab_注意"), QStringLiteral("一回の検索で1000件までを表示します。"));
    lab_注意->setVisible(false);
    一覧 = make<controls::ReportList>(this, def_.一覧名);
    for (QComboBox* list : {在籍区分名称, 社員区分名称})
        list->setMinimumContentsLength(8);
    for (controls::NumField* field : {在籍区分, 社員区分})
        field->setFixedWidth(40);

    auto* outer = new QVBoxLayout(this);
    outer->addWidget(wnd_ttl);
    auto* g = new QGridLayout;
    g->addWidget(btn_コード検索, 0, 0);
    auto* code = new QHBoxLayout;
    code->addWidget(コード);
    code->addWidget(lab_コード);
    code->addStretch(1);
    g->addLayout(code, 0, 1);
    g->addWidget(btn_名称検索, 1, 0);
    g->addWidget(名称, 1, 1);
    g->addWidget(btn_カナ検索, 2, 0);
    g->addWidget(カナ, 2, 1);
    g->addWidget(btn_部門コード検索, 0, 2);
    g->addWidget(部門コード, 0, 3);
    g->addWidget(部門名, 0, 4);
    g->addWidget(btn_セクションコード検索, 1, 2);
    g->addWidget(セクションコード, 1, 3);
    g->addWidget(セクション名, 1, 4);
    auto* classes = new QHBoxLayout;
    for (QWidget* w : std::initializer_list<QWidget*>{itm_ttl_在籍区分, 在籍区分, 在籍区分名称, itm_ttl_社員区分, 社員区分,
                                                      社員区分名称})
        classes->addWidget(w);
    classes->addStretch(1);
    g->addLayout(classes, 2, 2, 1, 3);
    outer->addLayout(g);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lab_注意);
    buttons->addStretch(1);
    for (QWidget* w : std::initializer_list<QWidget*>{btn_複合検索, btn_否定検索, btn_画面クリア, btn_戻る})
        buttons->addWidget(w);
    outer->addLayout(buttons);
    outer->addWidget(一覧, 1);
    // The window's notices: what became of an export.
    lab_お知らせ = label(this, QStringLiteral("lab_お知らせ"), QString());
    lab_お知らせ->setFrameShape(QFrame::Panel);
    lab_お知らせ->setFrameShadow(QFrame::Sunken);
    outer->addWidget(lab_お知らせ);
    resize(controls::twips(10500), controls::twips(7000));

    tabTable = new controls::TabTable(this);
    int index = 0;
    for (QWidget* w : std::initializer_list<QWidget*>{
             コード, 名称, カナ, 部門コード, 部門名, セクションコード, セクション名, 在籍区分, 在籍区分名称, 社員区分,
             社員区分名称, btn_コード検索, btn_名称検索, btn_カナ検索, btn_部門コード検索, btn_セクションコード検索,
             btn_複合検索, btn_否定検索, btn_画面クリア, btn_戻る, 一覧})
        tabTable->add(w, index++);
    focusEvents = new controls::FocusEvents(this);
    操作監視 = new 項目操作監視(this);
}

void 人員一覧窓::wire() {
    // Typing refreshes the buttons of the five searches.
    for (controls::Field* field : std::initializer_list<controls::Field*>{コード, 名称, カナ, 部門コード, セクションコード})
        connect(field, &QLineEdit::textChanged, this, [this] { ボタン状態set(); });

    // Leaving a field stores its condition.
    const auto stored = [this](QString& into, const QString& value) {
        if (value == into)
            return false;
        into = value;
        return true;
    };
    focusEvents->onLostFocus(名称, [this, stored] {
        if (!表示中_ && stored(s_.名称, 名称->text()))
            状態show();
    });
    focusEvents->onLostFocus(カナ, [this, stored] {
        if (!表示中_ && stored(s_.カナ, カナ->text()))
            状態show();
    });
    focusEvents->onLostFocus(コード, [this, stored] {
        if (!表示中_ && stored(s_.コード, コードfmt(コード->text(), QStringLiteral("00000"))))
            状態show();
    });
    focusEvents->onLostFocus(部門コード, [this, stored] {
        if (表示中_ || !stored(s_.部門コード, コードfmt(部門コード->text(), QStringLiteral("000"))))
            return;
        s_.部門名 = 名称get(QStringLiteral("M部門"), s_.部門コード);
        状態show();
    });
    focusEvents->onLostFocus(セクションコード, [this, stored] {
        if (表示中_ || !stored(s_.セクションコード, コードfmt(セクションコード->text(), QStringLiteral("000"))))
            return;
        s_.セクション名 = 名称get(QStringLiteral("Mセクション"), s_.セクションコード);
        状態show();
    });

    // 名称, カナ and the class fields record themselves; the code fields do not.
    for (QWidget* w : std::initializer_list<QWidget*>{名称, カナ, 在籍区分, 在籍区分名称, 社員区分, 社員区分名称}) {
        focusEvents->onGotFocus(w, [this, w] {
            if (!表示中_)
                ctx.screen.現在項目 = w;
        });
    }
    // The names beside the codes hand the focus on.
    for (controls::TextField* name : {部門名, セクション名}) {
        focusEvents->onGotFocus(name, [this, name] {
            if (!表示中_)
                項目focus(*tabTable, name);
        });
    }

    // A class field and its list stay in step.
    const auto classPair = [this](controls::NumField* field, QComboBox* list, short 人員一覧状態::*into) {
        connect(field, &controls::NumField::valueChanged, this, [this, list, into](int v) {
            if (表示中_)
                return;
            list->setCurrentIndex(v);
            s_.*into = static_cast<short>(v);
        });
        connect(list, &QComboBox::activated, this, [this, field](int index) {
            if (!表示中_)
                field->setValue(index);
        });
    };
    classPair(在籍区分, 在籍区分名称, &人員一覧状態::在籍区分);
    classPair(社員区分, 社員区分名称, &人員一覧状態::社員区分);

    // The pickers of department and section.
    for (auto [field, btn, kind] : {std::tuple{部門コード, btn_部門コード検索, 窓種別::部門一覧},
                                    std::tuple{セクションコード, btn_セクションコード検索, 窓種別::セクション一覧}}) {
        const auto openPicker = [this, field, btn, kind] { 選択窓open(field, btn, kind); };
        操作監視->onCtrlKey(field, openPicker);
        if (def_.選択窓単一クリック)
            操作監視->onClick(field, openPicker);
        else
            操作監視->onDoubleClick(field, openPicker);
    }

    connect(btn_コード検索, &QPushButton::clicked, this, [this] { 検索(1); });
    connect(btn_カナ検索, &QPushButton::clicked, this, [this] { 検索(2); });
    connect(btn_名称検索, &QPushButton::clicked, this, [this] { 検索(3); });
    connect(btn_部門コード検索, &QPushButton::clicked, this, [this] { 検索(4); });
    connect(btn_セクションコード検索, &QPushButton::clicked, this, [this] { 検索(5); });
    connect(btn_複合検索, &QPushButton::clicked, this, [this] { 検索(0); });
    connect(btn_否定検索, &QPushButton::clicked, this, [this] { 検索(-1); });
    connect(btn_画面クリア, &QPushButton::clicked, this, [this] { btn_画面クリア_Click(); });
    一覧wire(一覧);

    // The rows shown, to a file: from the list's menu or with Ctrl+E.
    一覧->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(一覧, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        QAction* csv = menu.addAction(QStringLiteral("CSV出力…"));
        if (menu.exec(一覧->viewport()->mapToGlobal(at)) == csv)
            CSV出力();
    });
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_E), this);
    connect(shortcut, &QShortcut::activated, this, [this] { CSV出力(); });
}

void 人員一覧窓::読込() {
    s_ = 人員一覧状態();
    区分一覧fill(在籍区分名称, 在籍区分, QStringLiteral("SELECT * FROM K在籍区分 ORDER BY 区分"), s_.在籍区分最大);
    区分一覧fill(社員区分名称, 社員区分, QStringLiteral("SELECT * FROM K社員区分 ORDER BY 区分"), s_.社員区分最大);
    // The staff list opens on the first enrolment class and on all employee classes.
    s_.在籍区分 = 0;
    s_.社員区分 = s_.社員区分最大;
    条件seed();
    状態show();
    一覧->setColumns({{QStringLiteral("コード"), 750},
                             {QStringLiteral("氏名"), 2500},
                             {QStringLiteral("事業所"), 2300},
                             {QStringLiteral("部門"), 2300},
                             {QStringLiteral("セクション"), 2300}});
    s_.検索区分 = 0;
    一覧fill();
    一覧->clearSelection();
}

bool 人員一覧窓::一覧open(db::Recordset& rs, const QString& sql) {
    return def_.連携 ? 連携SQLopen(ctx, rs, sql, true) : 業務SQLopen(ctx, rs, sql, false);
}

void 人員一覧窓::区分一覧fill(QComboBox* list, controls::NumField* field, const QString& sql, short& 最大) {
    list->clear();
    db::Recordset rs;
    short rows = 0;
    if (一覧open(rs, sql)) {
        while (!rs.eof()) {
            list->addItem(rs.field(QStringLiteral("名称")).text());
            ++rows;
            rs.moveNext();
        }
    }
    rs.close();
    list->addItem(QStringLiteral("全て"));
    field->setRange(0, rows);
    最大 = rows;
}

void 人員一覧窓::条件seed() {
    s_.コード.clear();
    s_.カナ.clear();
    s_.名称.clear();
    s_.部門コード.clear();
    s_.部門名.clear();
    s_.セクションコード.clear();
    s_.セクション名.clear();
    QString& 条件 = ctx.screen.検索条件;
    const QString コード鍵 = def_.表 + QStringLiteral(".コード");
    const QString 部門鍵 = def_.表 + QStringLiteral(".部門コード");
    const QString セクション鍵 = def_.表 + QStringLiteral(".セクションコード");
    if (条件.contains(コード鍵, Qt::CaseInsensitive))
        s_.コード = 検索条件parse(コード鍵, 条件, 条件);
    if (条件.contains(部門鍵, Qt::CaseInsensitive)) {
        s_.部門コード = 検索条件parse(部門鍵, 条件, 条件);
        s_.部門名 = 名称get(QStringLiteral("M部門"), s_.部門コード);
    }
    if (条件.contains(セクション鍵, Qt::CaseInsensitive)) {
        s_.セクションコード = 検索条件parse(セクション鍵, 条件, 条件);
        s_.セクション名 = 名称get(QStringLiteral("Mセクション"), s_.セクションコード);
    }
}

QString 人員一覧窓::名称get(const QString& table, const QString& code) {
    db::Recordset rs;
    QString name;
    if (業務SQLopen(ctx, rs,
                    QStringLiteral("SELECT 名称 FROM ") + table + QStringLiteral(" WHERE コード = '") + code +
                        QStringLiteral("'"),
                    false))
        name = rs.field(QStringLiteral("名称")).text();
    rs.close();
    return name;
}

void 人員一覧窓::状態show() {
    表示中_ = true;
    コード->setText(s_.コード);
    名称->setText(s_.名称);
    カナ->setText(s_.カナ);
    部門コード->setText(s_.部門コード);
    部門名->setText(s_.部門名);
    セクションコード->setText(s_.セクションコード);
    セクション名->setText(s_.セクション名);
    在籍区分->setValue(s_.在籍区分);
    在籍区分名称->setCurrentIndex(s_.在籍区分);
    社員区分->setValue(s_.社員区分);
    社員区分名称->setCurrentIndex(s_.社員区分);
    表示中_ = false;
    ボタン状態set();
}

void 人員一覧窓::一覧fill() {
    一覧->clear();
    一覧->beginFill();
    検索SQL_ = 人員一覧SQLmake(def_, s_, ctx.conn.db, ctx.screen.検索条件, ctx.env.運用事業所コード,
                               ctx.run.操作事業所コード);
    int taken = 0;
    if (!検索SQL_.isEmpty()) {
        db::Recordset rs;
        if (一覧open(rs, 検索SQL_)) {
            while (!rs.eof() && taken < kRowLimit) {
                const QString code = rs.field(QStringLiteral("コード")).text();
                QStringList sub;
                for (const char16_t* column : {u"氏名", u"事業所名", u"部門名", u"セクション名"})
                    sub << rs.field(QString::fromUtf16(column)).text();
                一覧->addItem(code, QStringLiteral("C") + code, sub);
                ++taken;
                rs.moveNext();
            }
        }
        rs.close();
    }
    一覧->endFill();
    lab_注意->setVisible(taken == kRowLimit);
    ボタン状態set();
}

void 人員一覧窓::ボタン状態set() {
    btn_コード検索->setEnabled(!空白(コード->text()));
    btn_カナ検索->setEnabled(!空白(カナ->text()));
    btn_名称検索->setEnabled(!空白(名称->text()));
    btn_部門コード検索->setEnabled(!空白(部門コード->text()));
    btn_セクションコード検索->setEnabled(!空白(セクションコード->text()));
    btn_複合検索->setEnabled(true);
}

void 人員一覧窓::検索(short 区分) {
    s_.検索区分 = 区分;
    一覧fill();
    一覧->setFocus(Qt::OtherFocusReason);
}

void 人員一覧窓::btn_画面クリア_Click() {
    // The two classes stay as they stand. The employee list clears its own
    // condition and keeps what the seed left of the caller's.
    if (def_.固定条件あり)
        s_.固定条件.clear();
    else
        ctx.screen.検索条件.clear();
    s_.検索区分 = 0;
    条件seed();
    状態show();
    一覧fill();
    一覧->setFocus(Qt::OtherFocusReason);
}

QString 一覧CSVmake(const QTreeWidget& list) {
    // RFC 4180: a field with a comma, a quote or a line break goes in quotes,
    // its quotes doubled; lines end in CR LF.
    const auto field = [](const QString& text) {
        if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
            !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r')))
            return text;
        return QLatin1Char('"') + QString(text).replace(QStringLiteral("\""), QStringLiteral("\"\"")) +
               QLatin1Char('"');
    };
    const auto line = [&field](const QStringList& texts) {
        QStringList fields;
        for (const QString& text : texts)
            fields.append(field(text));
        return fields.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    };
    QStringList captions;
    for (int c = 0; c < list.columnCount(); ++c)
        captions.append(list.headerItem()->text(c));
    QString csv = line(captions);
    for (int r = 0; r < list.topLevelItemCount(); ++r) {
        QStringList texts;
        for (int c = 0; c < list.columnCount(); ++c)
            texts.append(list.topLevelItem(r)->text(c));
        csv += line(texts);
    }
    return csv;
}

void 人員一覧窓::CSV出力() {
    lab_お知らせ->clear();
    const 許可回答 answer =
        操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID, 操作番号::テキスト出力);
    if (answer != 許可回答::許可) {
        lab_お知らせ->setText(QStringLiteral("操作権限がありません。"));
        return;
    }
    const QString folder = 空白(ctx.company.テキスト出力フォルダ) ? os::homeFolder() : ctx.company.テキスト出力フォルダ;
    const QString name = def_.題 + QLatin1Char('_') + ctx.sys.now().toString(QStringLiteral("yyyyMMdd")) +
                         QStringLiteral(".csv");
    const QString path = ctx.dialogs->exportFile(this, QStringLiteral("CSVファイル (*.csv)|*.csv"),
                                                 folder + パス区切り() + name);
    if (path.isEmpty())
        return;
    int replaced = 0;
    QString error;
    if (!os::writeFile(path, CP932conv(一覧CSVmake(*一覧), &replaced), &error)) {
        lab_お知らせ->setText(QStringLiteral("CSV出力できませんでした: ") + error);
        return;
    }
    出力終了履歴add(ctx, QStringLiteral("CSV出力 ") + path);
    QString notice = QStringLiteral("CSV出力しました: ") + path;
    if (replaced > 0)
        notice += QStringLiteral("（出力できない文字 %1 字を ? にしました）").arg(replaced);
    lab_お知らせ->setText(notice);
}

void 人員一覧窓::選択窓open(controls::TextField* field, QPushButton* button, 窓種別 kind) {
    // The gate reads the name left in 現在項目: the code fields do not record
    // themselves, so it is open only when the caller or an earlier picker of
    // this window left that name there.
    画面情報& s = ctx.screen;
    if (!s.現在項目 || s.現在項目->objectName() != field->objectName())
        return;
    QWidget* 保存対象 = s.検索対象項目;
    QWidget* 保存次 = s.検索次項目;
    s.検索元ウィンドウ = this;
    s.検索元区分 = 1;
    setEnabled(false);
    s.検索条件.clear();
    s.検索対象項目 = field;
    s.検索次項目 = button;
    群.表示(kind);
    s.検索元区分 = 0;
    s.検索元ウィンドウ = nullptr;
    s.検索対象項目 = 保存対象;
    s.検索次項目 = 保存次;
    s.現在項目 = field;
}
