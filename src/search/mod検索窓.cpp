#include "search/mod検索窓.h"

#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"
#include "search/wnd担当者一覧.h"
#include "search/wnd社員一覧.h"
#include "search/wnd郵便番号一覧.h"
#include "search/wnd選択一覧.h"
#include "shell/context.h"
#include "toolkit/項目移動.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

// ---- one window

検索窓::検索窓(Context& c, 検索窓群& g, const QString& name, const QString& 閉鎖語)
    : QDialog(nullptr), ctx(c), 群(g), 閉鎖語_(閉鎖語) {
    setObjectName(name);
    setModal(true);
    btn_戻る = new QPushButton(QStringLiteral("戻る"), this);
    btn_戻る->setObjectName(QStringLiteral("btn_戻る"));
    btn_戻る->setAutoDefault(false);
    connect(btn_戻る, &QPushButton::clicked, this, [this] { 取消(); });
}

検索窓::~検索窓() {
    // The shared controls must not outlive the window they lie on. Only this
    // window's own widgets are looked at: the others may be gone already.
    QList<QWidget*> own = findChildren<QWidget*>();
    own.append(this);
    画面情報& s = ctx.screen;
    for (QWidget** p : {&s.現在項目, &s.直前項目, &s.先頭項目, &s.検索対象項目, &s.検索次項目, &s.検索元ウィンドウ}) {
        if (own.contains(*p))
            *p = nullptr;
    }
}

void 検索窓::表示準備() {
    選択済_ = false;
    破棄予定_ = false;
}

void 検索窓::一覧wire(controls::ReportList* list) {
    // Enter in the list, which would otherwise reach the dialog, and the click.
    struct Keys : QObject {
        Keys(QObject* parent, controls::ReportList* l, std::function<void(const QString&)> f)
            : QObject(parent), list(l), choose(std::move(f)) {}
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (watched == list && event->type() == QEvent::KeyPress) {
                const int key = static_cast<QKeyEvent*>(event)->key();
                if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                    if (!list->selectedItems().isEmpty())
                        choose(list->selectedItems().first()->text(0));
                    return true;
                }
            }
            // One click chooses: the list reacts to the click, not to a double click.
            if (watched == list->viewport() && event->type() == QEvent::MouseButtonRelease &&
                static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
                if (!list->selectedItems().isEmpty())
                    choose(list->selectedItems().first()->text(0));
            }
            return false;
        }
        controls::ReportList* list;
        std::function<void(const QString&)> choose;
    };
    auto* keys = new Keys(list, list, [this](const QString& code) { 選択(code); });
    list->installEventFilter(keys);
    list->viewport()->installEventFilter(keys);
}

void 検索窓::選択(const QString& コード) {
    QWidget* target = ctx.screen.検索対象項目;
    if (auto* zip = qobject_cast<controls::ZipField*>(target))
        zip->setPostcode(コード);
    else if (auto* line = qobject_cast<QLineEdit*>(target))
        line->setText(コード);
    選択済_ = true;
    閉じる();
}

void 検索窓::取消() {
    選択済_ = false;
    閉じる();
}

void 検索窓::reject() {
    btn_戻る->click();
}

void 検索窓::閉じる() {
    // The calling form is the one that holds the target field.
    const QWidget* target = ctx.screen.検索対象項目;
    const QString 呼出元 = target ? target->window()->objectName() : QString();
    破棄予定_ = 閉鎖語_.isEmpty() || 呼出元.contains(閉鎖語_, Qt::CaseInsensitive);
    done(選択済_ ? QDialog::Accepted : QDialog::Rejected);
}

// ---- the instances

検索窓群::検索窓群(Context& ctx, QObject* parent) : QObject(parent), ctx_(ctx) {}

検索窓群::~検索窓群() = default;

std::unique_ptr<検索窓> 検索窓群::make(窓種別 kind) {
    switch (kind) {
    case 窓種別::担当者一覧:
        return std::make_unique<wnd担当者一覧>(ctx_, *this);
    case 窓種別::社員一覧:
        return std::make_unique<wnd社員一覧>(ctx_, *this);
    case 窓種別::郵便番号一覧:
        return std::make_unique<wnd郵便番号一覧>(ctx_, *this);
    case 窓種別::事業所一覧:
        return std::make_unique<wnd事業所一覧>(ctx_, *this);
    case 窓種別::部門一覧:
        return std::make_unique<wnd部門一覧>(ctx_, *this);
    case 窓種別::セクション一覧:
        return std::make_unique<wndセクション一覧>(ctx_, *this);
    case 窓種別::役職一覧:
        break;
    }
    return std::make_unique<wnd役職一覧>(ctx_, *this);
}

検索窓* 検索窓群::窓(窓種別 kind) const {
    const auto it = 窓_.find(kind);
    return it == 窓_.end() ? nullptr : it->second.get();
}

void 検索窓群::open(窓種別 kind, QWidget* 対象, QWidget* 次, const QString& 条件, bool 呼出元無効化) {
    ctx_.screen.検索条件 = 条件;
    ctx_.screen.検索対象項目 = 対象;
    ctx_.screen.検索次項目 = 次;
    if (呼出元無効化 && 対象)
        対象->window()->setEnabled(false);
    表示(kind);
}

void 検索窓群::表示(窓種別 kind) {
    std::unique_ptr<検索窓>& slot = 窓_[kind];
    if (!slot) {
        slot = make(kind);
        slot->読込();
    }
    slot->表示準備();
    slot->exec();
    const bool chosen = slot->選択済();
    if (slot->破棄予定())
        slot.reset();
    後処理(chosen);
}

void 検索窓群::後処理(bool 選択済) {
    画面情報& s = ctx_.screen;
    QWidget* target = s.検索対象項目;
    // The form to enable: the list window that opened a picker, else the calling form.
    QWidget* caller = s.検索元区分 == 1 ? s.検索元ウィンドウ : (target ? target->window() : nullptr);
    if (caller) {
        caller->setEnabled(true);
        QApplication::setActiveWindow(caller->window());
    }
    s.検索条件.clear();
    if (!target)
        return;
    if (target->isEnabled() && target->isVisible())
        target->setFocus(Qt::OtherFocusReason);
    if (!選択済)
        return;
    // The target's own gate may have aimed 検索次項目 elsewhere: it is read afresh.
    QWidget* next = s.検索次項目;
    if (!next)
        return;
    if (s.検索元区分 == 1) {
        if (next->isEnabled() && next->isVisible())
            next->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (const auto* table = target->window()->findChild<controls::TabTable*>())
        項目focus(*table, next);
    else if (next->isEnabled() && next->isVisible())
        next->setFocus(Qt::OtherFocusReason);
}

// ---- keys and clicks in fields

void 項目操作監視::onCtrlKey(QWidget* target, std::function<void()> handler) {
    target->installEventFilter(this);
    ctrl_.emplace(target, std::move(handler));
}

void 項目操作監視::onClick(QWidget* target, std::function<void()> handler) {
    target->installEventFilter(this);
    click_.emplace(target, std::move(handler));
}

void 項目操作監視::onDoubleClick(QWidget* target, std::function<void()> handler) {
    target->installEventFilter(this);
    doubleClick_.emplace(target, std::move(handler));
}

bool 項目操作監視::eventFilter(QObject* watched, QEvent* event) {
    const std::multimap<QObject*, std::function<void()>>* handlers = nullptr;
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Control && !key->isAutoRepeat())
            handlers = &ctrl_;
    } else if (event->type() == QEvent::MouseButtonRelease &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        handlers = &click_;
    } else if (event->type() == QEvent::MouseButtonDblClick &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        handlers = &doubleClick_;
    }
    if (!handlers)
        return false;
    // The handler may run a modal window: copy it first.
    const auto range = handlers->equal_range(watched);
    QList<std::function<void()>> run;
    for (auto it = range.first; it != range.second; ++it)
        run.append(it->second);
    for (const auto& handler : run)
        handler();
    return false;
}
