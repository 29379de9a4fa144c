#include "cli/utf8file.h"

#include <fmt/format.h>

#include "cli/failure.h"
#include "kortavin/base/codepage.h"

namespace kortavin::cli {

void Utf8File::Write(const void* buffer, UINT count) {
    const std::size_t before = m_pending.size();
    m_pending.append(static_cast<const char*>(buffer), count);
    std::size_t done = 0;
    // A line feed is never part of a longer character, and was not in what is pending from before.
    for (std::size_t end = m_pending.find('\n', before); end != std::string::npos;
         end = m_pending.find('\n', done)) {
        PassOn(std::string_view(m_pending).substr(done, end + 1 - done));
        done = end + 1;
    }
    m_pending.erase(0, done);
}

void Utf8File::Finish() {
    PassOn(m_pending);
    m_pending.clear();
}

void Utf8File::PassOn(std::string_view line) {
    ++m_lines;
    m_converted.clear();
    if (!base::AppendGbkAsUtf8(m_converted, line))
        throw Failure(
            fmt::format("line {} of the output is no GBK text; --encoding gbk keeps its bytes", m_lines));
    m_target.Write(m_converted.data(), static_cast<UINT>(m_converted.size()));
    m_bytesWritten += m_converted.size();
}

}  // namespace kortavin::cli
