#pragma once

#include <algorithm>
#include <string>

#include "kortavin/base/file.h"

// A host's file of its own, with the four operations that a reader of lines needs.
class HostFile : public CFile {
  public:
    explicit HostFile(std::string bytes) : content(std::move(bytes)) {}

    ULONGLONG GetPosition() const override {
        log += "position ";
        return m_position;
    }
    ULONGLONG Seek(LONGLONG offset, UINT) override {
        log += "seek " + std::to_string(offset) + " ";
        return m_position = static_cast<ULONGLONG>(offset);
    }
    ULONGLONG GetLength() const override { return content.size(); }
    UINT Read(void* buffer, UINT count) override {
        log += "read " + std::to_string(count) + " ";
        const std::string read = m_position < content.size() ? content.substr(m_position, count) : "";
        std::ranges::copy(read, static_cast<char*>(buffer));
        m_position += read.size();
        content.resize(std::min(content.size(), cutBehindRead));
        return static_cast<UINT>(read.size());
    }

    std::string content;
    mutable std::string log;
    std::size_t cutBehindRead = std::string::npos;  // the length that is left after a Read

  private:
    ULONGLONG m_position = 0;
};
