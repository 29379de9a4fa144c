#pragma once

#include <string>
#include <string_view>

#include "kortavin/base/file.h"

namespace kortavin::cli {

// Passes a text that is written here in GBK on to another file in UTF-8. It converts whole lines, so that a
// character may come in several writes. It only writes: there is nothing to read, seek or close.
class Utf8File : public CFile {
  public:
    explicit Utf8File(CFile& target) : m_target(target) {}

    // Throws Failure where a line is no GBK text, and what the target throws.
    void Write(const void* buffer, UINT count) override;
    void Flush() override { m_target.Flush(); }
    // Writes a last line that has no line break.
    void Finish();

    ULONGLONG GetBytesWritten() const { return m_bytesWritten; }
    ULONGLONG GetPosition() const override { return m_bytesWritten; }

  private:
    void PassOn(std::string_view line);

    CFile& m_target;
    std::string m_pending;
    std::string m_converted;
    ULONGLONG m_bytesWritten = 0;
    ULONGLONG m_lines = 0;
};

}  // namespace kortavin::cli
