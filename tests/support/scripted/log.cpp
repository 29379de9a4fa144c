#include "handles.h"

namespace kortavin::testing {

void Log::Open(const std::string& path) {
    m_file = std::ofstream(path, std::ios::app | std::ios::binary);
}

// One line a call, whatever bytes it holds: control characters are written as \xNN.
void Log::Line(const std::string& text) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string line;
    for (const unsigned char byte : text) {
        if (byte < 0x20) {
            line += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            line += static_cast<char>(byte);
        }
    }
    m_file << line + '\n' << std::flush;
}

}  // namespace kortavin::testing
