#pragma once

#include <string>
#include <string_view>

namespace kortavin::cli {

// Writes all bytes to the standard output now; throws ClosedPipe, or Failure with the reason.
void WriteOutput(std::string_view bytes);

// The same for a text that ends without a line break: on a terminal it gets one, elsewhere the bytes are
// exact.
void WriteExactly(std::string_view bytes);

// "kortavin: TEXT" on the standard error, controls escaped except line breaks, values of PWD and PASSWORD
// hidden. Never fails.
void WriteMessage(std::string_view text);

bool OutputIsTerminal();

}  // namespace kortavin::cli
