#include "search/wnd選択一覧.h"

#include "platform/controls/fields.h"
#include "shell/context.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "toolkit/mod項目編集.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

// ---- statements

QString 事業所一覧SQLmake(const QString& 検索条件) {
    QString sql = QStringLiteral("SELECT") + QStringLiteral(" M事業所.コード, M事業所.名称") +
                  QStringLiteral(" FROM M事業所") + QStringLiteral(" WHERE M事業所.コード <>'000'");
    if (!検索条件.trimmed().isEmpty())
        sql += QStringLiteral(" AND (") + 検索条件 + QStringLiteral(")");
    return sql + QStringLiteral(" ORDER BY M事業所.コード");
}

namespace {

QString 区分付きSQL(const QString& table, short 区分, short 最大) {
    QString sql = QStringLiteral("SELECT コード,名称 FROM ") + table;
    if (区分 != 最大)
        sql += QStringLiteral(" WHERE ") + table + QStringLiteral(".稼動状況区分 = '") + QString::number(区分) +
               QStringLiteral("'");
    return sql + QStringLiteral(" ORDER BY ") + table + QStringLiteral(".コード");
}

} // namespace

QString 部門一覧SQLmake(short 稼動状況区分, short 最大) {
    return 区分付きSQL(QStringLiteral("M部門"), 稼動状況区分, 最大);
}

QString セクション一覧SQLmake(short 稼動状況区分, short 最大) {
    return 区分付きSQL(QStringLiteral("Mセクション"), 稼動状況区分, 最大);
}

QString 役職一覧SQLmake(const QString& 検索条件) {
    if (!検索条件.trimmed().isEmpty())
        return QStringLiteral("SELECT コード,名称 FROM M役職 WHERE ") + 検索条件 + QStringLiteral(" ORDER BY M役職.コード");
    return QStringLiteral("SELECT コード,名称 FROM M役職 ORDER BY M役職.コード");
}

// ---- the common picker

選択一覧::選択一覧(Context& c, 検索窓群& g, const QString& name, const QString& 閉鎖語, const QString& 一覧名,
                   const QList<QPair<QString, int>>& columns, int 上限)
    : 検索窓(c, g, name, 閉鎖語), columns_(columns), 上限_(上限) {
    auto* outer = new QVBoxLayout(this);
    条件行 = new QHBoxLayout;
    outer->addLayout(条件行);
    一覧 = new controls::ReportList(this);
    一覧->setObjectName(一覧名);
    outer->addWidget(一覧, 1);
    auto* bottom = new QHBoxLayout;
    if (上限_ > 0) {
        lab_注意 = new QLabel(QStringLiteral("一回の検索で%1件までを表示します。").arg(上限_), this);
        lab_注意->setObjectName(QStringLiteral("lab_注意"));
        lab_注意->setVisible(false);
        bottom->addWidget(lab_注意);
    }
    bottom->addStretch(1);
    bottom->addWidget(btn_戻る);
    outer->addLayout(bottom);
    int width = 60;
    for (const auto& column : columns_)
        width += controls::twips(column.second);
    resize(width, 360);
    一覧wire(一覧);
}

void 選択一覧::読込() {
    一覧->setColumns(columns_);
    一覧fill();
    一覧->clearSelection();
}

void 選択一覧::一覧fill() {
    一覧->clear();
    一覧->beginFill();
    検索SQL_ = SQLmake();
    int taken = 0;
    db::Recordset rs;
    if (業務SQLopen(ctx, rs, 検索SQL_, false)) {
        while (!rs.eof() && (上限_ == 0 || taken < 上限_)) {
            const QString code = rs.field(QStringLiteral("コード")).text();
            一覧->addItem(code, QStringLiteral("C") + code, {rs.field(QStringLiteral("名称")).text()});
            ++taken;
            rs.moveNext();
        }
    }
    rs.close();
    一覧->endFill();
    if (lab_注意)
        lab_注意->setVisible(taken == 上限_);
}

// ---- offices

wnd事業所一覧::wnd事業所一覧(Context& c, 検索窓群& g)
    : 選択一覧(c, g, QStringLiteral("wnd事業所一覧"), QStringLiteral("事業所登録"), QStringLiteral("List事業所"),
               {{QStringLiteral("コード"), 850}, {QStringLiteral("名称"), 3250}}, 500),
      List事業所(一覧) {
    setWindowTitle(QStringLiteral("事業所一覧"));
}

QString wnd事業所一覧::SQLmake() {
    return 事業所一覧SQLmake(ctx.screen.検索条件);
}

// ---- departments and sections

区分付き一覧::区分付き一覧(Context& c, 検索窓群& g, const QString& name, const QString& 閉鎖語, const QString& 一覧名,
                           const QString& caption, const QString& 条件項目)
    : 選択一覧(c, g, name, 閉鎖語, 一覧名, {{QStringLiteral("コード"), 750}, {QStringLiteral("名称"), 2500}}, 0),
      条件項目_(条件項目) {
    setWindowTitle(caption);
    wnd_ttl = new QLabel(caption, this);
    wnd_ttl->setObjectName(QStringLiteral("wnd_ttl"));
    wnd_ttl->setFrameShape(QFrame::Panel);
    wnd_ttl->setAlignment(Qt::AlignCenter);
    itm_ttl_稼動状況区分 = new QLabel(QStringLiteral("稼動状況"), this);
    itm_ttl_稼動状況区分->setObjectName(QStringLiteral("itm_ttl_稼動状況区分"));
    稼動状況区分 = new controls::NumField(this);
    稼動状況区分->setObjectName(QStringLiteral("稼動状況区分"));
    稼動状況区分->setFixedWidth(40);
    稼動状況区分名称 = new QComboBox(this);
    稼動状況区分名称->setObjectName(QStringLiteral("稼動状況区分名称"));
    btn_画面クリア = new QPushButton(QStringLiteral("条件ｸﾘｱ"), this);
    btn_画面クリア->setObjectName(QStringLiteral("btn_画面クリア"));
    btn_画面クリア->setAutoDefault(false);
    auto* outer = static_cast<QVBoxLayout*>(layout());
    outer->insertWidget(0, wnd_ttl);
    for (QWidget* w : std::initializer_list<QWidget*>{itm_ttl_稼動状況区分, 稼動状況区分, 稼動状況区分名称})
        条件行->addWidget(w);
    条件行->addStretch(1);
    条件行->addWidget(btn_画面クリア);

    // The field and the list stay in step; a change only stores the index.
    connect(稼動状況区分, &controls::NumField::valueChanged, this, [this](int v) {
        if (表示中_)
            return;
        稼動状況区分名称->setCurrentIndex(v);
        区分_ = static_cast<short>(v);
    });
    connect(稼動状況区分名称, &QComboBox::activated, this, [this](int index) {
        if (!表示中_)
            稼動状況区分->setValue(index);
    });
    // Despite its caption the button clears nothing: it runs the fill.
    connect(btn_画面クリア, &QPushButton::clicked, this, [this] {
        一覧fill();
        一覧->setFocus(Qt::OtherFocusReason);
    });
}

void 区分付き一覧::読込() {
    稼動状況区分名称->clear();
    db::Recordset rs;
    short rows = 0;
    if (業務SQLopen(ctx, rs, QStringLiteral("SELECT * FROM K稼動状況区分 ORDER BY 区分"), false)) {
        while (!rs.eof()) {
            稼動状況区分名称->addItem(rs.field(QStringLiteral("名称")).text());
            ++rows;
            rs.moveNext();
        }
    }
    rs.close();
    稼動状況区分名称->addItem(QStringLiteral("全て"));
    稼動状況区分->setRange(0, rows);
    最大_ = rows;
    // The pickers open on the second row of the classes.
    区分_ = 1;
    QString& 条件 = ctx.screen.検索条件;
    if (条件.contains(条件項目_, Qt::CaseInsensitive)) {
        const QString value = 検索条件parse(条件項目_, 条件, 条件);
        区分_ = static_cast<short>(数値(value));
    }
    表示中_ = true;
    稼動状況区分->setValue(区分_);
    稼動状況区分名称->setCurrentIndex(区分_ <= 最大_ ? 区分_ : -1);
    表示中_ = false;
    選択一覧::読込();
}

wnd部門一覧::wnd部門一覧(Context& c, 検索窓群& g)
    : 区分付き一覧(c, g, QStringLiteral("wnd部門一覧"), QStringLiteral("部門登録"), QStringLiteral("List部門"),
                   QStringLiteral("部門一覧"), QStringLiteral("M部門.稼動状況区分")),
      List部門(一覧) {}

QString wnd部門一覧::SQLmake() {
    return 部門一覧SQLmake(区分_, 最大_);
}

wndセクション一覧::wndセクション一覧(Context& c, 検索窓群& g)
    : 区分付き一覧(c, g, QStringLiteral("wndセクション一覧"), QStringLiteral("セクション登録"),
                   QStringLiteral("Listセクション"), QStringLiteral("セクション一覧"),
                   QStringLiteral("Mセクション.稼動状況区分")),
      Listセクション(一覧) {}

QString wndセクション一覧::SQLmake() {
    return セクション一覧SQLmake(区分_, 最大_);
}

// ---- positions

wnd役職一覧::wnd役職一覧(Context& c, 検索窓群& g)
    : 選択一覧(c, g, QStringLiteral("wnd役職一覧"), QStringLiteral("役職登録"), QStringLiteral("List役職"),
               {{QStringLiteral("コード"), 750}, {QStringLiteral("名称"), 2500}}, 0),
      List役職(一覧) {
    setWindowTitle(QStringLiteral("役職一覧"));
    wnd_ttl = new QLabel(QStringLiteral("役職一覧"), this);
    wnd_ttl->setObjectName(QStringLiteral("wnd_ttl"));
    wnd_ttl->setFrameShape(QFrame::Panel);
    wnd_ttl->setAlignment(Qt::AlignCenter);
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, wnd_ttl);
}

QString wnd役職一覧::SQLmake() {
    return 役職一覧SQLmake(ctx.screen.検索条件);
}
