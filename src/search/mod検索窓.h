#pragma once

#include <QDialog>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>

struct Context;
class QPushButton;
class QTreeWidgetItem;
class QWidget;

namespace controls {
class ReportList;
}

// The list windows a caller opens to have a code written into one of its
// fields. The window contract: the caller names the condition (検索条件), the
// field that gets the code (検索対象項目) and the control that is to have the
// focus after a choice (検索次項目); the window writes the code and hands the
// focus back, so that the field's own leaving rule does the lookup.

enum class 窓種別 { 担当者一覧, 社員一覧, 郵便番号一覧, 事業所一覧, 部門一覧, セクション一覧, 役職一覧 };

class 検索窓群;

// One list window. A window is closed by a choice or a cancel; it is then
// unloaded (destroyed, made anew at the next opening) when the calling form's
// name contains the window's close word, and only hidden otherwise, keeping
// its rows, sort order and selection for the next opening.
class 検索窓 : public QDialog {
public:
    // An empty close word: the window is unloaded at every close.
    検索窓(Context& ctx, 検索窓群& 群, const QString& name, const QString& 閉鎖語);
    ~検索窓() override;

    // The window's load, run once after it is made.
    virtual void 読込() = 0;

    // Set by the last close.
    bool 選択済() const { return 選択済_; }
    bool 破棄予定() const { return 破棄予定_; }
    // Clears the outcome of the last close before the window is shown again.
    void 表示準備();

    QPushButton* btn_戻る;

protected:
    // Enter and a click on a selected item choose it.
    void 一覧wire(controls::ReportList* list);
    // Writes the code into 検索対象項目 and closes.
    void 選択(const QString& コード);
    // btn_戻る: closes without touching the caller's field.
    void 取消();
    // Esc clicks btn_戻る.
    void reject() override;

    Context& ctx;
    検索窓群& 群;

private:
    void 閉じる();
    QString 閉鎖語_;
    bool 選択済_ = false;
    bool 破棄予定_ = false;
};

// The instances of the list windows of one caller's run, by kind. A hidden
// window is kept; an unloaded one is destroyed after its modal run.
class 検索窓群 : public QObject {
public:
    検索窓群(Context& ctx, QObject* parent);
    ~検索窓群() override;

    // Sets the contract (condition, target, next control), disables the
    // calling form when asked, and shows the window.
    void open(窓種別 kind, QWidget* 対象, QWidget* 次, const QString& 条件, bool 呼出元無効化 = true);
    // Shows the window of the kind modally, making and loading it when no
    // instance exists, and after the close gives the caller back its focus.
    void 表示(窓種別 kind);

    // The loaded instance of a kind, or null.
    検索窓* 窓(窓種別 kind) const;

private:
    std::unique_ptr<検索窓> make(窓種別 kind);
    void 後処理(bool 選択済);

    Context& ctx_;
    std::map<窓種別, std::unique_ptr<検索窓>> 窓_;
};

// Watches fields for the Ctrl key pressed in them, for clicks and for double clicks.
class 項目操作監視 : public QObject {
public:
    explicit 項目操作監視(QObject* parent) : QObject(parent) {}
    void onCtrlKey(QWidget* target, std::function<void()> handler);
    // A click is the release of the left button in the field.
    void onClick(QWidget* target, std::function<void()> handler);
    void onDoubleClick(QWidget* target, std::function<void()> handler);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::multimap<QObject*, std::function<void()>> ctrl_;
    std::multimap<QObject*, std::function<void()>> click_;
    std::multimap<QObject*, std::function<void()>> doubleClick_;
};
