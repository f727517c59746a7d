#include "staff/frm担当者登録.h"

#include "shell/context.h"
#include "shell/modデータ処理.h"
#include "staff/mod付属書類.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者検索.h"
#include "staff/mod担当者登録.h"
#include "staff/mod担当者印刷.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QVBoxLayout>

// ---- clicks on labels

void ClickEvents::onClick(QWidget* target, std::function<void()> handler) {
    target->installEventFilter(this);
    clicks_.append({target, std::move(handler)});
}

void ClickEvents::onDoubleClick(QWidget* target, std::function<void()> handler) {
    target->installEventFilter(this);
    doubleClicks_.append({target, std::move(handler)});
}

bool ClickEvents::eventFilter(QObject* watched, QEvent* event) {
    const QList<QPair<QWidget*, std::function<void()>>>* list = nullptr;
    if (event->type() == QEvent::MouseButtonPress)
        list = &clicks_;
    else if (event->type() == QEvent::MouseButtonDblClick)
        list = &doubleClicks_;
    if (!list || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
        return false;
    for (const auto& [target, handler] : *list) {
        if (target == watched) {
            handler();
            break;
        }
    }
    return false;
}

// ---- the form

namespace {

template <typename T>
T* make(QWidget* parent, const char* name) {
    T* w = new T(parent);
    w->setObjectName(QString::fromUtf8(name));
    return w;
}

QLabel* title(QWidget* parent, const char* name, const char* caption) {
    QLabel* l = make<QLabel>(parent, name);
    l->setText(QString::fromUtf8(caption));
    l->setObjectName(QString::fromUtf8(name));
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Raised);
    l->setAlignment(Qt::AlignCenter);
    l->setMinimumWidth(72);
    return l;
}

QPushButton* button(QWidget* parent, const char* name, const char* caption) {
    QPushButton* b = make<QPushButton>(parent, name);
    b->setText(QString::fromUtf8(caption));
    b->setAutoDefault(false);
    return b;
}

controls::TextField* text(QWidget* parent, const char* name, int bytes) {
    auto* f = make<controls::TextField>(parent, name);
    f->setByteLimit(bytes);
    return f;
}

controls::TextField* code(QWidget* parent, const char* name, int length) {
    auto* f = make<controls::TextField>(parent, name);
    f->setDigitsOnly(true);
    f->setMaxLength(length);
    f->setFixedWidth(16 + 10 * length);
    return f;
}

controls::TextField* nameOf(QWidget* parent, const char* name) {
    auto* f = text(parent, name, 20);
    f->setReadOnly(true);
    return f;
}

controls::NumField* number(QWidget* parent, const char* name, int minimum, int maximum, int width = 34) {
    auto* f = make<controls::NumField>(parent, name);
    f->setRange(minimum, maximum);
    f->setFixedWidth(width);
    return f;
}

QComboBox* list(QWidget* parent, const char* name) {
    QComboBox* c = make<QComboBox>(parent, name);
    c->setMinimumWidth(96);
    return c;
}

} // namespace

frm担当者登録::frm担当者登録(Context& context) : QWidget(nullptr), ctx(context) {
    setObjectName(QStringLiteral("frm担当者登録"));
    setWindowTitle(QStringLiteral("担当者登録"));
    tabTable = new controls::TabTable(this);
    focusEvents = new controls::FocusEvents(this);
    clickEvents = new ClickEvents(this);
    build();
    buildTabOrder();
    wire();
}

frm担当者登録::~frm担当者登録() {
    if (ctx.主画面 == this)
        ctx.主画面 = nullptr;
}

void frm担当者登録::build() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 6, 6, 6);
    outer->setSpacing(4);

    // Title bar of the card.
    auto* top = new QHBoxLayout;
    prg_ttl = make<QLabel>(this, "prg_ttl");
    prg_ttl->setText(QStringLiteral("担当者登録"));
    prg_ttl->setStyleSheet(QStringLiteral("background:#1f3b66;color:white;font-weight:bold;padding:4px;"));
    manualpanel = make<QLabel>(this, "manualpanel");
    manualpanel->setText(QStringLiteral("Manual"));
    manualpanel->setFrameShape(QFrame::Panel);
    manualpanel->setFrameShadow(QFrame::Raised);
    manualpanel->setAlignment(Qt::AlignCenter);
    manualpanel->setFixedWidth(72);
    top->addWidget(prg_ttl, 1);
    top->addWidget(manualpanel);
    outer->addLayout(top);

    // Code and buttons.
    auto* head = new QHBoxLayout;
    btn_担当者コード = button(this, "btn_担当者コード", "コード");
    コード = code(this, "コード", 5);
    btn_最新コード = button(this, "btn_最新コード", "最新コード");
    btn_後退 = button(this, "btn_後退", "前の担当者");
    btn_前進 = button(this, "btn_前進", "次の担当者");
    btn_画面クリア = button(this, "btn_画面クリア", "画面クリア");
    btn_登録 = button(this, "btn_登録", "登録");
    btn_削除 = button(this, "btn_削除", "削除");
    btn_印刷 = button(this, "btn_印刷", "印刷");
    btn_プレビュ = button(this, "btn_プレビュ", "プレビュ");
    btn_終了 = button(this, "btn_終了", "終了");
    for (QWidget* w : std::initializer_list<QWidget*>{btn_担当者コード, コード, btn_最新コード})
        head->addWidget(w);
    head->addSpacing(12);
    for (QWidget* w : std::initializer_list<QWidget*>{btn_後退, btn_前進, btn_画面クリア, btn_登録, btn_削除, btn_印刷,
                                                      btn_プレビュ, btn_終了})
        head->addWidget(w);
    head->addStretch(1);
    outer->addLayout(head);

    // Name block.
    auto* names = new QGridLayout;
    names->setHorizontalSpacing(4);
    itm_ttl_漢字 = title(this, "itm_ttl_漢字", "漢字");
    itm_ttl_姓 = title(this, "itm_ttl_姓", "姓");
    姓 = text(this, "姓", 30);
    itm_ttl_名 = title(this, "itm_ttl_名", "名");
    名 = text(this, "名", 30);
    itm_ttl_氏名 = title(this, "itm_ttl_氏名", "氏名");
    氏名 = text(this, "氏名", 40);
    itm_ttl_カナ氏名 = title(this, "itm_ttl_カナ氏名", "カナ");
    カナ姓 = make<controls::KanaField>(this, "カナ姓");
    カナ名 = make<controls::KanaField>(this, "カナ名");
    itm_ttl_カナ = title(this, "itm_ttl_カナ", "カナ氏名");
    カナ = make<controls::KanaField>(this, "カナ");
    btn_社員コード = button(this, "btn_社員コード", "社員コード");
    社員コード = code(this, "社員コード", 5);
    itm_ttl_暗証番号 = title(this, "itm_ttl_暗証番号", "暗証番号");
    暗証番号 = make<controls::TextField>(this, "暗証番号");
    暗証番号->setMaxLength(20);
    暗証番号->setDirectInput(true);
    itm_ttl_性別 = title(this, "itm_ttl_性別", "性別");
    性別区分 = number(this, "性別区分", 1, 1);
    性別区分名称 = list(this, "性別区分名称");
    itm_ttl_生年月日 = title(this, "itm_ttl_生年月日", "生年月日");
    生年月日年号区分 = number(this, "生年月日年号区分", 0, 0);
    生年月日年号区分名称 = list(this, "生年月日年号区分名称");
    生年月日年 = number(this, "生年月日年", 0, 9999, 48);
    Lab_生年月日年 = make<QLabel>(this, "Lab_生年月日年");
    Lab_生年月日年->setText(QStringLiteral("年"));
    生年月日月 = number(this, "生年月日月", 0, 12);
    Lab_生年月日月 = make<QLabel>(this, "Lab_生年月日月");
    Lab_生年月日月->setText(QStringLiteral("月"));
    生年月日日 = number(this, "生年月日日", 0, 31);
    lab_生年月日日 = make<QLabel>(this, "lab_生年月日日");
    lab_生年月日日->setText(QStringLiteral("日"));

    names->addWidget(itm_ttl_漢字, 0, 0);
    names->addWidget(itm_ttl_姓, 0, 1);
    names->addWidget(姓, 0, 2);
    names->addWidget(itm_ttl_名, 0, 3);
    names->addWidget(名, 0, 4);
    names->addWidget(btn_社員コード, 0, 5);
    names->addWidget(社員コード, 0, 6);
    names->addWidget(itm_ttl_氏名, 1, 0);
    names->addWidget(氏名, 1, 1, 1, 4);
    names->addWidget(itm_ttl_暗証番号, 1, 5);
    names->addWidget(暗証番号, 1, 6);
    names->addWidget(itm_ttl_カナ氏名, 2, 0);
    names->addWidget(カナ姓, 2, 1, 1, 2);
    names->addWidget(カナ名, 2, 3, 1, 2);
    names->addWidget(itm_ttl_カナ, 3, 0);
    names->addWidget(カナ, 3, 1, 1, 4);
    auto* sex = new QHBoxLayout;
    sex->addWidget(性別区分);
    sex->addWidget(性別区分名称);
    names->addWidget(itm_ttl_性別, 2, 5);
    names->addLayout(sex, 2, 6);
    auto* birth = new QHBoxLayout;
    for (QWidget* w : std::initializer_list<QWidget*>{生年月日年号区分, 生年月日年号区分名称, 生年月日年, Lab_生年月日年,
                                                      生年月日月, Lab_生年月日月, 生年月日日, lab_生年月日日})
        birth->addWidget(w);
    birth->addStretch(1);
    names->addWidget(itm_ttl_生年月日, 3, 5);
    names->addLayout(birth, 3, 6);
    names->setColumnStretch(2, 1);
    names->setColumnStretch(4, 1);
    outer->addLayout(names);

    // The five pages.
    tab_詳細 = make<QTabWidget>(this, "tab_詳細");

    bak_その他 = make<QWidget>(tab_詳細, "bak_その他");
    {
        auto* g = new QGridLayout(bak_その他);
        事業所コード = code(bak_その他, "事業所コード", 3);
        btn_事業所コード = button(bak_その他, "btn_事業所コード", "事業所");
        事業所名 = nameOf(bak_その他, "事業所名");
        部門コード = code(bak_その他, "部門コード", 3);
        btn_部門コード = button(bak_その他, "btn_部門コード", "部門");
        部門名 = nameOf(bak_その他, "部門名");
        セクションコード = code(bak_その他, "セクションコード", 3);
        btn_セクションコード = button(bak_その他, "btn_セクションコード", "セクション");
        セクション名 = nameOf(bak_その他, "セクション名");
        役職コード = code(bak_その他, "役職コード", 2);
        btn_役職コード = button(bak_その他, "btn_役職コード", "役職");
        役職名 = nameOf(bak_その他, "役職名");
        const QList<std::tuple<QPushButton*, controls::TextField*, controls::TextField*>> rows{
            {btn_事業所コード, 事業所コード, 事業所名},
            {btn_部門コード, 部門コード, 部門名},
            {btn_セクションコード, セクションコード, セクション名},
            {btn_役職コード, 役職コード, 役職名}};
        int r = 0;
        for (const auto& [b, c, n] : rows) {
            g->addWidget(b, r, 0);
            g->addWidget(c, r, 1);
            g->addWidget(n, r, 2, 1, 3);
            ++r;
        }
        itm_ttl_職責 = title(bak_その他, "itm_ttl_職責", "職責");
        職責 = text(bak_その他, "職責", 127);
        itm_ttl_ログインID = title(bak_その他, "itm_ttl_ログインID", "ログインID");
        ログインID = text(bak_その他, "ログインID", 127);
        ログインID->setDirectInput(true);
        g->addWidget(itm_ttl_職責, 4, 0);
        g->addWidget(職責, 4, 1, 1, 4);
        g->addWidget(itm_ttl_ログインID, 5, 0);
        g->addWidget(ログインID, 5, 1, 1, 4);

        itm_ttl_在籍区分 = title(bak_その他, "itm_ttl_在籍区分", "在籍区分");
        在籍区分 = number(bak_その他, "在籍区分", 0, 0);
        在籍区分名称 = list(bak_その他, "在籍区分名称");
        itm_ttl_社員区分 = title(bak_その他, "itm_ttl_社員区分", "社員区分");
        社員区分 = number(bak_その他, "社員区分", 0, 0);
        社員区分名称 = list(bak_その他, "社員区分名称");
        g->addWidget(itm_ttl_在籍区分, 0, 5);
        g->addWidget(在籍区分, 0, 6);
        g->addWidget(在籍区分名称, 0, 7);
        g->addWidget(itm_ttl_社員区分, 1, 5);
        g->addWidget(社員区分, 1, 6);
        g->addWidget(社員区分名称, 1, 7);

        itm_ttl_入社日付 = title(bak_その他, "itm_ttl_入社日付", "入社日付");
        入社日付年号区分 = number(bak_その他, "入社日付年号区分", 0, 0);
        入社日付年号区分名称 = list(bak_その他, "入社日付年号区分名称");
        入社日付年 = number(bak_その他, "入社日付年", 0, 9999, 48);
        入社日付月 = number(bak_その他, "入社日付月", 0, 12);
        入社日付日 = number(bak_その他, "入社日付日", 0, 31);
        itm_ttl_退社日付 = title(bak_その他, "itm_ttl_退社日付", "退職日付");
        退社日付年号区分 = number(bak_その他, "退社日付年号区分", 0, 0);
        退社日付年号区分名称 = list(bak_その他, "退社日付年号区分名称");
        退社日付年 = number(bak_その他, "退社日付年", 0, 9999, 48);
        退社日付月 = number(bak_その他, "退社日付月", 0, 12);
        退社日付日 = number(bak_その他, "退社日付日", 0, 31);
        const auto dateRow = [&](int row, QLabel* t, QWidget* era, QWidget* eraList, QWidget* y, QWidget* m, QWidget* d) {
            auto* h = new QHBoxLayout;
            h->addWidget(era);
            h->addWidget(eraList);
            h->addWidget(y);
            h->addWidget(new QLabel(QStringLiteral("年"), bak_その他));
            h->addWidget(m);
            h->addWidget(new QLabel(QStringLiteral("月"), bak_その他));
            h->addWidget(d);
            h->addWidget(new QLabel(QStringLiteral("日"), bak_その他));
            h->addStretch(1);
            g->addWidget(t, row, 5);
            g->addLayout(h, row, 6, 1, 3);
        };
        dateRow(2, itm_ttl_入社日付, 入社日付年号区分, 入社日付年号区分名称, 入社日付年, 入社日付月, 入社日付日);
        dateRow(3, itm_ttl_退社日付, 退社日付年号区分, 退社日付年号区分名称, 退社日付年, 退社日付月, 退社日付日);
        g->setRowStretch(6, 1);
        g->setColumnStretch(4, 1);
    }
    tab_詳細->addTab(bak_その他, QStringLiteral("所属"));

    bak_住所 = make<QWidget>(tab_詳細, "bak_住所");
    {
        auto* g = new QGridLayout(bak_住所);
        itm_ttl_住所 = title(bak_住所, "itm_ttl_住所", "住所");
        郵便番号 = make<controls::ZipField>(bak_住所, "郵便番号");
        郵便番号->setFixedWidth(90);
        住所A = text(bak_住所, "住所A", 40);
        住所B = text(bak_住所, "住所B", 40);
        住所C = text(bak_住所, "住所C", 40);
        itm_ttl_電話 = title(bak_住所, "itm_ttl_電話", "電話");
        電話 = make<controls::TelField>(bak_住所, "電話");
        itm_ttl_携帯電話 = title(bak_住所, "itm_ttl_携帯電話", "携帯電話");
        携帯電話 = make<controls::TelField>(bak_住所, "携帯電話");
        btn_EMAIL = button(bak_住所, "btn_EMAIL", "e-mail");
        EMAIL = text(bak_住所, "EMAIL", 127);
        EMAIL->setDirectInput(true);
        g->addWidget(itm_ttl_住所, 0, 0);
        g->addWidget(郵便番号, 0, 1, Qt::AlignLeft);
        g->addWidget(住所A, 1, 1, 1, 3);
        g->addWidget(住所B, 2, 1, 1, 3);
        g->addWidget(住所C, 3, 1, 1, 3);
        g->addWidget(itm_ttl_電話, 4, 0);
        g->addWidget(電話, 4, 1);
        g->addWidget(itm_ttl_携帯電話, 4, 2);
        g->addWidget(携帯電話, 4, 3);
        g->addWidget(btn_EMAIL, 5, 0);
        g->addWidget(EMAIL, 5, 1, 1, 3);
        g->setRowStretch(6, 1);
        g->setColumnStretch(3, 1);
    }
    tab_詳細->addTab(bak_住所, QStringLiteral("住所"));

    bak_写真 = make<QWidget>(tab_詳細, "bak_写真");
    {
        auto* g = new QGridLayout(bak_写真);
        img_写真 = make<QLabel>(bak_写真, "img_写真");
        img_担当者印 = make<QLabel>(bak_写真, "img_担当者印");
        for (QLabel* img : {img_写真, img_担当者印}) {
            img->setFrameShape(QFrame::Box);
            img->setAlignment(Qt::AlignCenter);
            img->setScaledContents(false);
        }
        img_写真->setFixedSize(160, 200);
        img_担当者印->setFixedSize(100, 100);
        btn_最初の写真 = button(bak_写真, "btn_最初の写真", "最初の写真");
        btn_次の写真 = button(bak_写真, "btn_次の写真", "次の写真");
        btn_新写真取込 = button(bak_写真, "btn_新写真取込", "新写真取込");
        btn_写真削除 = button(bak_写真, "btn_写真削除", "写真削除");
        btn_全写真削除 = button(bak_写真, "btn_全写真削除", "全写真削除");
        btn_担当者印読込 = button(bak_写真, "btn_担当者印読込", "担当者印読込");
        btn_担当者印クリア = button(bak_写真, "btn_担当者印クリア", "担当者印クリア");
        g->addWidget(img_写真, 0, 0, 6, 1);
        int r = 0;
        for (QPushButton* b : {btn_最初の写真, btn_次の写真, btn_新写真取込, btn_写真削除, btn_全写真削除})
            g->addWidget(b, r++, 1);
        g->addWidget(img_担当者印, 0, 2, 3, 1);
        g->addWidget(btn_担当者印読込, 3, 2);
        g->addWidget(btn_担当者印クリア, 4, 2);
        g->setColumnStretch(3, 1);
        g->setRowStretch(6, 1);
    }
    tab_詳細->addTab(bak_写真, QStringLiteral("写真・印鑑"));

    auto* memoPage = new QWidget(tab_詳細);
    {
        auto* v = new QVBoxLayout(memoPage);
        担当者メモ = make<QPlainTextEdit>(memoPage, "担当者メモ");
        担当者メモ->setTabChangesFocus(true);
        v->addWidget(担当者メモ);
    }
    tab_詳細->addTab(memoPage, QStringLiteral("メモ"));

    auto* documentPage = new QWidget(tab_詳細);
    {
        auto* g = new QGridLayout(documentPage);
        List付属書類 = make<controls::ReportList>(documentPage, "List付属書類");
        btn_付属書類追加 = button(documentPage, "btn_付属書類追加", "書類追加");
        btn_付属書類削除 = button(documentPage, "btn_付属書類削除", "書類削除");
        btn_フォルダ = button(documentPage, "btn_フォルダ", "フォルダ追加");
        g->addWidget(List付属書類, 0, 0, 4, 1);
        g->addWidget(btn_付属書類追加, 0, 1);
        g->addWidget(btn_付属書類削除, 1, 1);
        g->addWidget(btn_フォルダ, 2, 1);
        g->setColumnStretch(0, 1);
    }
    tab_詳細->addTab(documentPage, QStringLiteral("付属書類"));
    outer->addWidget(tab_詳細, 1);

    // The traps lie on the form itself, so that they can take the focus whichever page shows.
    頁1終了 = make<controls::Trap>(this, "頁1終了");
    頁2終了 = make<controls::Trap>(this, "頁2終了");
    頁3終了 = make<controls::Trap>(this, "頁3終了");

    お知らせ = make<QLabel>(this, "お知らせ");
    お知らせ->setFrameShape(QFrame::Panel);
    お知らせ->setFrameShadow(QFrame::Sunken);
    お知らせ->setMinimumHeight(24);
    outer->addWidget(お知らせ);
}

void frm担当者登録::buildTabOrder() {
    // The controls in tab order; buttons beside fields and in the header come last.
    const QList<QWidget*> order{
        コード, 姓, 名, 氏名, カナ姓, カナ名, カナ, 社員コード, 暗証番号, 性別区分, 性別区分名称, 生年月日年号区分,
        生年月日年号区分名称, 生年月日年, 生年月日月, 生年月日日, tab_詳細, 事業所コード, 事業所名, 部門コード, 部門名,
        セクションコード, セクション名, 役職コード, 役職名, 職責, ログインID, 在籍区分, 在籍区分名称, 社員区分,
        社員区分名称, 入社日付年号区分, 入社日付年号区分名称, 入社日付年, 入社日付月, 入社日付日, 退社日付年号区分,
        退社日付年号区分名称, 退社日付年, 退社日付月, 退社日付日, 頁1終了, 郵便番号, 住所A, 住所B, 住所C, 電話,
        携帯電話, EMAIL, 頁2終了, btn_最初の写真, btn_次の写真, btn_新写真取込, btn_写真削除, btn_全写真削除,
        btn_担当者印読込, btn_担当者印クリア, 頁3終了, 担当者メモ, List付属書類, btn_付属書類追加, btn_付属書類削除,
        btn_フォルダ, btn_登録, btn_削除, btn_画面クリア, btn_前進, btn_後退, btn_最新コード, btn_印刷, btn_プレビュ,
        btn_終了, btn_担当者コード, btn_社員コード, btn_事業所コード, btn_部門コード, btn_セクションコード,
        btn_役職コード, btn_EMAIL};
    int index = 0;
    for (QWidget* w : order)
        tabTable->add(w, index++);
    tabTable->setEnterMovesOn(true);
    // The pick buttons beside the fields and the mail button are reached by the mouse.
    for (QPushButton* b : {btn_担当者コード, btn_社員コード, btn_事業所コード, btn_部門コード, btn_セクションコード,
                           btn_役職コード, btn_EMAIL})
        b->setFocusPolicy(Qt::ClickFocus);
}

void frm担当者登録::wire() {
    担当者登録wire(ctx, *this);
    clickEvents->onClick(manualpanel, [this] { マニュアルopen(ctx); });
    connect(btn_印刷, &QPushButton::clicked, this, [this] { btn_印刷_Click(ctx, *this); });
    connect(btn_プレビュ, &QPushButton::clicked, this, [this] { btn_プレビュ_Click(ctx, *this); });
    connect(btn_EMAIL, &QPushButton::clicked, this, [this] { btn_EMAIL_Click(ctx, *this); });
    担当者検索wire(ctx, *this);
    connect(btn_最初の写真, &QPushButton::clicked, this, [this] { btn_最初の写真_Click(ctx, *this); });
    connect(btn_次の写真, &QPushButton::clicked, this, [this] { btn_次の写真_Click(ctx, *this); });
    connect(btn_新写真取込, &QPushButton::clicked, this, [this] { btn_新写真取込_Click(ctx, *this); });
    connect(btn_写真削除, &QPushButton::clicked, this, [this] { btn_写真削除_Click(ctx, *this); });
    connect(btn_全写真削除, &QPushButton::clicked, this, [this] { btn_全写真削除_Click(ctx, *this); });
    connect(btn_担当者印読込, &QPushButton::clicked, this, [this] { btn_担当者印読込_Click(ctx, *this); });
    connect(btn_担当者印クリア, &QPushButton::clicked, this, [this] { btn_担当者印クリア_Click(ctx, *this); });
    clickEvents->onClick(img_写真, [this] { img_写真_Click(ctx, *this); });
    // A click on a picture is its own, not the page's behind it.
    img_写真->setAttribute(Qt::WA_NoMousePropagation);
    img_担当者印->setAttribute(Qt::WA_NoMousePropagation);
    付属書類wire(ctx, *this);
}

void frm担当者登録::表示() {
    if (!loaded_) {
        loaded_ = true;
        load();
    }
    show();
}

void frm担当者登録::load() {
    担当者登録load(ctx, *this);
}

void frm担当者登録::先頭項目focus() {
    ctx.screen.現在項目 = コード;
    項目focus(ctx, ctx.screen.現在項目);
}

void frm担当者登録::お知らせset(const QString& text) {
    お知らせ->setText(text);
}

void frm担当者登録::closeEvent(QCloseEvent* event) {
    if (!担当者登録unload(ctx, *this))
        event->ignore();
}
