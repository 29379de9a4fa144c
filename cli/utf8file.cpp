#include "cli/utf8file.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/failure.h"
#include "framework/base/codepage.h"

namespace kortavin::cli {

void Utf8File::Write(const void* buffer, UINT count) {
    const std::size_t before = m_pending.size();
    m_pending.append(static_cast<const char*>(buffer), count);
    // A line feed is never part of a longer character.
    const std::size_t lineEnd = std::string_view(m_pending).substr(before).rfind('\n');
    if (lineEnd != std::string_view::npos)
        Convert(before + lineEnd + 1);
}

void Utf8File::Finish() {
    Convert(m_pending.size());
}

void Utf8File::Convert(std::size_t count) {
    const std::string_view lines = std::string_view(m_pending).substr(0, count);
    m_converted.clear();
    if (!base::AppendGbkAsUtf8(m_converted, lines))
        throw Failure(fmt::format(
            "line {} or one soon after it is no GBK text; --encoding gbk keeps its bytes", m_lines + 1));
    m_target.Write(m_converted.data(), static_cast<UINT>(m_converted.size()));
    m_bytesWritten += m_converted.size();
    m_lines += static_cast<ULONGLONG>(std::ranges::count(lines, '\n'));
    m_pending.erase(0, count);
}

}  // namespace kortavin::cli
