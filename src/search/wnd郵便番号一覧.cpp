#include "search/wnd郵便番号一覧.h"

#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"
#include "shell/context.h"
#include "shell/modデータ処理.h"
#include "toolkit/mod項目編集.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

bool 空白(const QString& text) {
    return text.trimmed().isEmpty();
}

// The number a text begins with, blanks skipped; 0 when it begins otherwise.
qlonglong 先頭数値(const QString& text) {
    qlonglong value = 0;
    for (const QChar ch : text.trimmed()) {
        if (!ch.isDigit() || ch.unicode() > 0x7F)
            break;
        if (value > 99999999999LL)
            break;
        value = value * 10 + (ch.unicode() - u'0');
    }
    return value;
}

// The half-open range of the postcodes that begin with the head: the upper
// end is the head's number plus one, at least three digits.
QString 範囲句(const QString& head) {
    const QString upper = QStringLiteral("%1").arg(先頭数値(head) + 1, 3, 10, QLatin1Char('0'));
    return QStringLiteral(" WHERE 郵便番号 >= '") + head + QStringLiteral("' AND 郵便番号 < '") + upper +
           QStringLiteral("'");
}

} // namespace

QString 郵便番号一覧SQLmake(const 郵便番号一覧状態& s) {
    QString sql = QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号");
    const QString order = QStringLiteral(" ORDER BY M郵便番号.郵便番号");
    switch (s.検索区分) {
    case 1:
        return sql + 範囲句(s.郵便番号) + order;
    case 2:
        return sql + QStringLiteral(" WHERE 住所A LIKE '%") + 引用符conv(s.都道府県市町村) + QStringLiteral("%'") +
               order;
    case 3:
        return sql + QStringLiteral(" WHERE 住所B LIKE '%") + 引用符conv(s.町域名) + QStringLiteral("%'") + order;
    default:
        break;
    }
    // The composite search keeps the master's own order: no ORDER BY.
    bool 結合済 = false;
    if (!空白(s.郵便番号)) {
        sql += 範囲句(s.郵便番号);
        結合済 = true;
    }
    if (!空白(s.都道府県市町村)) {
        sql += (結合済 ? QStringLiteral(" AND 住所A LIKE '%") : QStringLiteral(" WHERE 住所A LIKE '%")) +
               引用符conv(s.都道府県市町村) + QStringLiteral("%'");
        結合済 = true;
    }
    if (!空白(s.町域名))
        sql += (結合済 ? QStringLiteral(" AND 住所B LIKE '%") : QStringLiteral(" WHERE 住所B LIKE '%")) +
               引用符conv(s.町域名) + QStringLiteral("%'");
    return sql;
}

wnd郵便番号一覧::wnd郵便番号一覧(Context& c, 検索窓群& g)
    : 検索窓(c, g, QStringLiteral("wnd郵便番号一覧"), QString()) {
    build();
    wire();
}

void wnd郵便番号一覧::build() {
    setWindowTitle(QStringLiteral("郵便番号一覧"));
    const auto make = [this](auto* w, const QString& name) {
        w->setObjectName(name);
        return w;
    };
    const auto button = [this, make](const QString& name, const QString& caption) {
        auto* b = make(new QPushButton(caption, this), name);
        b->setAutoDefault(false);
        return b;
    };
    wnd_ttl = make(new QLabel(QStringLiteral("郵便番号一覧"), this), QStringLiteral("wnd_ttl"));
    wnd_ttl->setFrameShape(QFrame::Panel);
    wnd_ttl->setAlignment(Qt::AlignCenter);
    郵便番号 = make(new controls::TextField(this), QStringLiteral("郵便番号"));
    郵便番号->setDirectInput(true);
    郵便番号->setDigitsOnly(true);
    郵便番号->setMaxLength(7);
    都道府県市町村 = make(new controls::TextField(this), QStringLiteral("都道府県市町村"));
    町域名 = make(new controls::TextField(this), QStringLiteral("町域名"));
    btn_郵便番号検索 = button(QStringLiteral("btn_郵便番号検索"), QStringLiteral("郵便番号頭３桁"));
    btn_都道府県市町村検索 = button(QStringLiteral("btn_都道府県市町村検索"), QStringLiteral("都道府県市町村"));
    btn_町域名検索 = button(QStringLiteral("btn_町域名検索"), QStringLiteral("町域名"));
    btn_複合検索 = button(QStringLiteral("btn_複合検索"), QStringLiteral("複合検索"));
    btn_画面クリア = button(QStringLiteral("btn_画面クリア"), QStringLiteral("条件ｸﾘｱ"));
    List郵便番号 = make(new controls::ReportList(this), QStringLiteral("List郵便番号"));

    auto* outer = new QVBoxLayout(this);
    outer->addWidget(wnd_ttl);
    auto* g = new QGridLayout;
    g->addWidget(btn_郵便番号検索, 0, 0);
    g->addWidget(郵便番号, 0, 1);
    g->addWidget(btn_都道府県市町村検索, 1, 0);
    g->addWidget(都道府県市町村, 1, 1);
    g->addWidget(btn_町域名検索, 2, 0);
    g->addWidget(町域名, 2, 1);
    outer->addLayout(g);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QWidget* w : std::initializer_list<QWidget*>{btn_複合検索, btn_画面クリア, btn_戻る})
        buttons->addWidget(w);
    outer->addLayout(buttons);
    outer->addWidget(List郵便番号, 1);
    resize(controls::twips(8800), controls::twips(6500));

    tabTable = new controls::TabTable(this);
    int index = 0;
    for (QWidget* w : std::initializer_list<QWidget*>{郵便番号, 都道府県市町村, 町域名, btn_郵便番号検索,
                                                      btn_都道府県市町村検索, btn_町域名検索, btn_複合検索,
                                                      btn_画面クリア, btn_戻る, List郵便番号})
        tabTable->add(w, index++);
    focusEvents = new controls::FocusEvents(this);
}

void wnd郵便番号一覧::wire() {
    // Each field enables its own button while it holds anything.
    for (auto [field, btn] : {std::pair{郵便番号, btn_郵便番号検索}, std::pair{都道府県市町村, btn_都道府県市町村検索},
                              std::pair{町域名, btn_町域名検索}}) {
        connect(field, &QLineEdit::textChanged, this, [b = btn](const QString& text) { b->setEnabled(!空白(text)); });
    }
    for (auto [field, into] : {std::pair{郵便番号, &郵便番号一覧状態::郵便番号},
                               std::pair{都道府県市町村, &郵便番号一覧状態::都道府県市町村},
                               std::pair{町域名, &郵便番号一覧状態::町域名}}) {
        focusEvents->onLostFocus(field, [this, field, into] {
            if (表示中_ || field->text() == s_.*into)
                return;
            s_.*into = field->text();
            条件show();
        });
    }
    connect(btn_郵便番号検索, &QPushButton::clicked, this, [this] { 検索(1); });
    connect(btn_都道府県市町村検索, &QPushButton::clicked, this, [this] { 検索(2); });
    connect(btn_町域名検索, &QPushButton::clicked, this, [this] { 検索(3); });
    connect(btn_複合検索, &QPushButton::clicked, this, [this] { 検索(0); });
    // Clears the conditions; the list stays as it is.
    connect(btn_画面クリア, &QPushButton::clicked, this, [this] {
        ctx.screen.検索条件.clear();
        s_.郵便番号.clear();
        s_.都道府県市町村.clear();
        s_.町域名.clear();
        条件show();
    });
    一覧wire(List郵便番号);
}

void wnd郵便番号一覧::読込() {
    btn_郵便番号検索->setEnabled(true);
    btn_都道府県市町村検索->setEnabled(false);
    btn_町域名検索->setEnabled(false);
    s_ = 郵便番号一覧状態();
    // The head of the caller's postcode, else of the company's, else "100".
    QString target;
    if (const auto* zip = qobject_cast<const controls::ZipField*>(ctx.screen.検索対象項目))
        target = zip->postcode();
    else if (const auto* line = qobject_cast<const QLineEdit*>(ctx.screen.検索対象項目))
        target = line->text();
    if (target.trimmed().size() >= 3)
        s_.郵便番号 = target.left(3);
    else if (ctx.company.郵便番号.trimmed().size() >= 3)
        s_.郵便番号 = ctx.company.郵便番号.left(3);
    else
        s_.郵便番号 = QStringLiteral("100");
    条件show();
    List郵便番号->setColumns(
        {{QStringLiteral("番号"), 1050}, {QStringLiteral("都道府県市町村"), 3500}, {QStringLiteral("町域名"), 3500}});
    一覧fill();
    List郵便番号->clearSelection();
}

void wnd郵便番号一覧::条件show() {
    表示中_ = true;
    郵便番号->setText(s_.郵便番号);
    都道府県市町村->setText(s_.都道府県市町村);
    町域名->setText(s_.町域名);
    表示中_ = false;
}

void wnd郵便番号一覧::一覧fill() {
    List郵便番号->clear();
    List郵便番号->beginFill();
    検索SQL_ = 郵便番号一覧SQLmake(s_);
    db::Recordset rs;
    if (業務SQLopen(ctx, rs, 検索SQL_, false)) {
        while (!rs.eof()) {
            const QString code = rs.field(QStringLiteral("郵便番号")).text();
            List郵便番号->addItem(code, QStringLiteral("C") + code,
                                  {rs.field(QStringLiteral("住所A")).text(), rs.field(QStringLiteral("住所B")).text()});
            rs.moveNext();
        }
    }
    rs.close();
    List郵便番号->endFill();
    条件show();
}

void wnd郵便番号一覧::検索(short 区分) {
    s_.検索区分 = 区分;
    一覧fill();
    List郵便番号->setFocus(Qt::OtherFocusReason);
}
