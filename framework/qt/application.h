#pragma once

namespace kortavin::qt {

// Makes sure that windows can be made on this thread: by the host's QApplication, else by one that is made
// here and kept. CResourceException where they cannot.
void RequireApplication();

}  // namespace kortavin::qt
