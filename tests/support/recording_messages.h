#pragma once

#include "platform/ui/desktop.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/messages.h"
#include "platform/ui/waitbox.h"

#include <QList>
#include <QString>
#include <QStringList>

// Message boxes answered from a queue; every text shown is kept.
class RecordingMessages : public ui::Messages {
public:
    struct Shown {
        QString text;
        ui::Buttons buttons;
        int defaultButton;
    };
    QList<Shown> shown;
    QList<ui::Answer> answers; // taken from the front; the default button when empty

    ui::Answer show(const QString& text, ui::Buttons buttons, int defaultButton) override {
        shown.append({text, buttons, defaultButton});
        if (!answers.isEmpty())
            return answers.takeFirst();
        if (buttons == ui::Buttons::Ok)
            return ui::Answer::Ok;
        return defaultButton == 2 ? ui::Answer::No : ui::Answer::Yes;
    }
    QStringList texts() const {
        QStringList out;
        for (const Shown& s : shown)
            out.append(s.text);
        return out;
    }
};

// A wait box that only counts how often it was shown.
class CountingWaitBox : public ui::WaitBox {
public:
    int shownCount = 0;
    bool visible = false;
    void show() override {
        ++shownCount;
        visible = true;
    }
    void close() override { visible = false; }
};

// A desktop that keeps what it was asked to open or start.
class RecordingDesktop : public ui::Desktop {
public:
    QStringList opened;  // "path|working folder"
    QStringList started; // "program|arguments"
    QList<QStringList> startedArguments; // the arguments of each start, one by one
    bool open(const QString& pathOrLink, const QString& workingFolder) override {
        opened.append(pathOrLink + QLatin1Char('|') + workingFolder);
        return true;
    }
    bool start(const QString& program, const QStringList& arguments) override {
        started.append(program + QLatin1Char('|') + arguments.join(QLatin1Char(' ')));
        startedArguments.append(arguments);
        return true;
    }
};

// Common dialogs answered from queues; what each was asked is kept.
class RecordingDialogs : public ui::Dialogs {
public:
    QStringList files;   // answers of openFile and saveFile, from the front; "" cancels
    QStringList folders; // answers of chooseFolder, from the front; "" cancels
    bool printAnswer = true;
    QStringList asked;   // "open|filter|index|folder", "save|...", "export|filter|path", "folder|title|folder", "print|WxH"

    QString openFile(QWidget*, const QString& filter, int filterIndex, const QString& folder) override {
        asked.append(QStringLiteral("open|%1|%2|%3").arg(filter).arg(filterIndex).arg(folder));
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    QString saveFile(QWidget*, const QString& filter, int filterIndex, const QString& folder) override {
        asked.append(QStringLiteral("save|%1|%2|%3").arg(filter).arg(filterIndex).arg(folder));
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    QString exportFile(QWidget*, const QString& filter, const QString& path) override {
        asked.append(QStringLiteral("export|%1|%2").arg(filter, path));
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    QString chooseFolder(QWidget*, const QString& title, const QString& folder) override {
        asked.append(QStringLiteral("folder|%1|%2").arg(title, folder));
        return folders.isEmpty() ? QString() : folders.takeFirst();
    }
    bool printPicture(QWidget*, const QPixmap& picture) override;
};
