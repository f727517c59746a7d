#pragma once

#include <QString>

class QWidget;

namespace ui {

// Renders a window, once the screen has painted it, into a PNG file.
// Answers "" when the file was written, else what went wrong.
QString saveScreenshot(QWidget& window, const QString& file);

} // namespace ui
