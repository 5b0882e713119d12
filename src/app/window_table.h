// The windows the menu opens: one line a window in window_table.cpp.
#pragma once
#include "runtime/forms.h"
#include <QString>
#include <functional>
#include <map>

namespace vel {

using WindowFactory = std::function<vb::Form*()>;
struct WindowEntry {
    QString window; // the window's name, its objectName: "Ftienda"
    WindowFactory create;
};

// Menu entry name -> window. Entries not in the table open nothing yet.
const std::map<QString, WindowEntry>& WindowTable();

} // namespace vel
