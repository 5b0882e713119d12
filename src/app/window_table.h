// The windows the menu opens: one line a window in window_table.cpp.
#pragma once
#include "core/mdi.h"

namespace vel {

// Menu entry name -> window. Entries not in the table open nothing yet.
const WindowTableMap& WindowTable();

} // namespace vel
