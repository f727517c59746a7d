// One client of the concurrency test: the program started on an installation
// tree as a start opens it (databases, company record, the card), then saving
// staff records through the card's own save button at moments shared with the
// other clients.
//
//   staff_save_client ROOT CLIENT ROUNDS INTERVAL_MS FOLDER
//
// The client writes FOLDER/ready-CLIENT when its card is up, waits for
// FOLDER/go (which holds the start time in milliseconds since the epoch), and
// saves once per round at start + round * INTERVAL_MS: in even rounds a new
// record under the round's code, which every client asks for at the same
// moment; in odd rounds staff 00001, which every client changes at the same
// moment. Each save leaves one line in FOLDER/client-CLIENT.txt:
//   round|kind|asked code|処理結果区分|お知らせ|tag|late ms|message boxes
// The tag is what the save wrote into 担当者メモ; the other written texts are
// made from it, so that a row written half by one save and half by another
// can be told.

#include "shell/modデータ処理.h"
#include "shell/mod起動.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QTextStream>
#include <QThread>

#include <cstdio>

namespace {

class ClientSystem : public os::System {
public:
    QString folder;
    QString user;
    QString userName() const override { return user; }
    QString computerName() const override { return QStringLiteral("PC-") + user; }
    QString programFolder() const override { return folder; }
};

// Answers every question with Yes, and keeps what was shown.
class YesMessages : public ui::Messages {
public:
    QStringList shown;
    ui::Answer show(const QString& text, ui::Buttons buttons, int) override {
        shown.append(text);
        return buttons == ui::Buttons::YesNo ? ui::Answer::Yes : ui::Answer::Ok;
    }
};

class NoWaitBox : public ui::WaitBox {
public:
    void show() override {}
    void close() override {}
};

QString pad(long value, int width) { return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0')); }

int fail(const char* what) {
    std::fprintf(stderr, "save client: %s\n", what);
    return 3;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 6)
        return fail("usage: staff_save_client ROOT CLIENT ROUNDS INTERVAL_MS FOLDER");
    const QString root = args.at(1);
    const int client = args.at(2).toInt();
    const int rounds = args.at(3).toInt();
    const int interval = args.at(4).toInt();
    const QString folder = args.at(5);

    ClientSystem system;
    system.folder = root + QStringLiteral("/prgbin");
    system.user = QStringLiteral("client%1").arg(client);
    YesMessages messages;
    NoWaitBox wait;
    Context ctx(system, messages, wait);
    if (!データ処理init(ctx) || !ユーザ情報read(ctx))
        return fail("the program cannot start on the tree");
    frm担当者登録 form(ctx);
    form.表示();
    form.先頭項目focus();

    QFile ready(folder + QStringLiteral("/ready-%1").arg(client));
    if (!ready.open(QIODevice::WriteOnly))
        return fail("cannot write the ready file");
    ready.close();
    qint64 start = 0;
    for (int i = 0; i < 600 && start == 0; ++i) {
        QFile go(folder + QStringLiteral("/go"));
        if (go.open(QIODevice::ReadOnly))
            start = go.readAll().trimmed().toLongLong();
        if (start == 0)
            QThread::msleep(50);
    }
    if (start == 0)
        return fail("no go file within half a minute");

    QFile out(folder + QStringLiteral("/client-%1.txt").arg(client));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Text))
        return fail("cannot write the outcome file");
    QTextStream lines(&out);

    for (int round = 0; round < rounds; ++round) {
        const bool insert = round % 2 == 0;
        const QString asked = insert ? pad(20000 + round * 10, 5) : QStringLiteral("00001");
        const QString tag = QStringLiteral("C%1 R%2").arg(client).arg(round);

        // The record as the card holds it before the button: a new one typed
        // in, or the row read by its code and changed.
        if (insert) {
            担当者clear(ctx);
            ctx.担当者情報.コード = asked;
            ctx.担当者情報.事業所コード = QStringLiteral("000");
            ctx.担当者情報.電話 = QStringLiteral("03-%1-%2").arg(pad(client, 4), pad(round, 4));
        } else {
            if (!担当者get(ctx, asked))
                return fail("staff 00001 is not on file");
            担当者set(ctx);
            ctx.担当者行.close();
            ctx.screen.新規フラグ = false;
        }
        担当者情報型& r = ctx.担当者情報;
        r.姓 = QStringLiteral("C%1").arg(client);
        r.名 = QStringLiteral("R%1").arg(round);
        r.氏名 = tag;
        r.住所A = tag;
        r.担当者メモ = tag;
        r.EMAIL = QStringLiteral("c%1r%2@example.jp").arg(client).arg(round);
        ctx.screen.入力フラグ = true;
        messages.shown.clear();

        const qint64 moment = start + qint64(round) * interval;
        while (QDateTime::currentMSecsSinceEpoch() < moment)
            QThread::usleep(200);
        const qint64 late = QDateTime::currentMSecsSinceEpoch() - moment;
        btn_登録_Click(ctx, form);

        lines << round << '|' << (insert ? "insert" : "update") << '|' << asked << '|' << ctx.screen.処理結果区分 << '|'
              << form.お知らせ->text() << '|' << tag << '|' << late << '|' << messages.shown.join(QLatin1Char('/'))
              << '\n';
        lines.flush();
    }
    out.close();
    データ処理term(ctx);
    return 0;
}
