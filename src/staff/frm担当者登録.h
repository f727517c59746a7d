#pragma once

#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"
#include "shell/主画面.h"
#include "toolkit/mod項目編集.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QWidget>

#include <functional>

struct Context;

// Clicks and double clicks on titles, panels and pictures, which are plain labels.
class ClickEvents : public QObject {
public:
    explicit ClickEvents(QObject* parent) : QObject(parent) {}
    void onClick(QWidget* target, std::function<void()> handler);
    void onDoubleClick(QWidget* target, std::function<void()> handler);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QPair<QWidget*, std::function<void()>>> clicks_;
    QList<QPair<QWidget*, std::function<void()>>> doubleClicks_;
};

// The staff card: one staff member of M担当者 at a time. The controls bear the
// names the program's rules use; the rules themselves live in the modules.
class frm担当者登録 : public QWidget, public 主画面, public お知らせ先 {
public:
    explicit frm担当者登録(Context& ctx);
    ~frm担当者登録() override;

    // The start-up's side of the form.
    void 表示() override;
    void 先頭項目focus() override;
    // The status line, for the notices of the field limits.
    void お知らせset(const QString& text) override;

    Context& ctx;
    controls::TabTable* tabTable;
    controls::FocusEvents* focusEvents;
    ClickEvents* clickEvents;

    // Header.
    QLabel* prg_ttl;
    QLabel* manualpanel;
    QLabel* お知らせ;
    controls::TextField* コード;
    QPushButton* btn_担当者コード;
    QPushButton* btn_最新コード;
    QPushButton* btn_前進;
    QPushButton* btn_後退;
    QPushButton* btn_画面クリア;
    QPushButton* btn_登録;
    QPushButton* btn_削除;
    QPushButton* btn_終了;
    QPushButton* btn_印刷;
    QPushButton* btn_プレビュ;

    // Name block.
    QLabel* itm_ttl_漢字;
    QLabel* itm_ttl_姓;
    QLabel* itm_ttl_名;
    controls::TextField* 姓;
    controls::TextField* 名;
    QLabel* itm_ttl_氏名;
    controls::TextField* 氏名;
    QLabel* itm_ttl_カナ氏名;
    controls::KanaField* カナ姓;
    controls::KanaField* カナ名;
    QLabel* itm_ttl_カナ;
    controls::KanaField* カナ;
    QPushButton* btn_社員コード;
    controls::TextField* 社員コード;
    QLabel* itm_ttl_暗証番号;
    controls::TextField* 暗証番号;
    QLabel* itm_ttl_性別;
    controls::NumField* 性別区分;
    QComboBox* 性別区分名称;
    QLabel* itm_ttl_生年月日;
    controls::NumField* 生年月日年号区分;
    QComboBox* 生年月日年号区分名称;
    controls::NumField* 生年月日年;
    QLabel* Lab_生年月日年;
    controls::NumField* 生年月日月;
    QLabel* Lab_生年月日月;
    controls::NumField* 生年月日日;
    QLabel* lab_生年月日日;

    QTabWidget* tab_詳細;

    // Page 0, 所属.
    QWidget* bak_その他;
    controls::TextField* 事業所コード;
    QPushButton* btn_事業所コード;
    controls::TextField* 事業所名;
    controls::TextField* 部門コード;
    QPushButton* btn_部門コード;
    controls::TextField* 部門名;
    controls::TextField* セクションコード;
    QPushButton* btn_セクションコード;
    controls::TextField* セクション名;
    controls::TextField* 役職コード;
    QPushButton* btn_役職コード;
    controls::TextField* 役職名;
    QLabel* itm_ttl_職責;
    controls::TextField* 職責;
    QLabel* itm_ttl_ログインID;
    controls::TextField* ログインID;
    QLabel* itm_ttl_在籍区分;
    controls::NumField* 在籍区分;
    QComboBox* 在籍区分名称;
    QLabel* itm_ttl_社員区分;
    controls::NumField* 社員区分;
    QComboBox* 社員区分名称;
    QLabel* itm_ttl_入社日付;
    controls::NumField* 入社日付年号区分;
    QComboBox* 入社日付年号区分名称;
    controls::NumField* 入社日付年;
    controls::NumField* 入社日付月;
    controls::NumField* 入社日付日;
    QLabel* itm_ttl_退社日付;
    controls::NumField* 退社日付年号区分;
    QComboBox* 退社日付年号区分名称;
    controls::NumField* 退社日付年;
    controls::NumField* 退社日付月;
    controls::NumField* 退社日付日;
    controls::Trap* 頁1終了;

    // Page 1, 住所.
    QWidget* bak_住所;
    QLabel* itm_ttl_住所;
    controls::ZipField* 郵便番号;
    controls::TextField* 住所A;
    controls::TextField* 住所B;
    controls::TextField* 住所C;
    QLabel* itm_ttl_電話;
    controls::TelField* 電話;
    QLabel* itm_ttl_携帯電話;
    controls::TelField* 携帯電話;
    QPushButton* btn_EMAIL;
    controls::TextField* EMAIL;
    controls::Trap* 頁2終了;

    // Page 2, 写真・印鑑.
    QWidget* bak_写真;
    QLabel* img_写真;
    QLabel* img_担当者印;
    QPushButton* btn_最初の写真;
    QPushButton* btn_次の写真;
    QPushButton* btn_新写真取込;
    QPushButton* btn_写真削除;
    QPushButton* btn_全写真削除;
    QPushButton* btn_担当者印読込;
    QPushButton* btn_担当者印クリア;
    controls::Trap* 頁3終了;

    // Page 3, メモ.
    QPlainTextEdit* 担当者メモ;

    // Page 4, 付属書類.
    controls::ReportList* List付属書類;
    QPushButton* btn_付属書類追加;
    QPushButton* btn_付属書類削除;
    QPushButton* btn_フォルダ;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build();
    void buildTabOrder();
    void wire();
    void load();
    bool loaded_ = false;
};
