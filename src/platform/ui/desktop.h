#pragma once

#include <QString>
#include <QStringList>

namespace ui {

// The desktop's own programs: a document, a folder or a "mailto:" link opened
// with what the desktop has for it, and a program started without waiting.
class Desktop {
public:
    virtual ~Desktop() = default;
    // False when nothing could be started for it.
    virtual bool open(const QString& pathOrLink, const QString& workingFolder) = 0;
    virtual bool start(const QString& program, const QStringList& arguments) = 0;
};

// The desktop of the running session.
class SystemDesktop : public Desktop {
public:
    bool open(const QString& pathOrLink, const QString& workingFolder) override;
    bool start(const QString& program, const QStringList& arguments) override;
    static SystemDesktop& instance();
};

} // namespace ui
