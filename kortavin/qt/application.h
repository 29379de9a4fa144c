#pragma once

namespace kortavin::qt {

// Makes sure that windows can be made on this thread: by the host's QApplication, else by one that is made
// here and kept. CResourceException where they cannot.
void RequireApplication();

// Whether widgets can be hidden and deleted: neither without an application nor at the process's end, where
// the windows of a host's static objects go after much of Qt is gone.
bool CanTouchWidgets();

}  // namespace kortavin::qt
