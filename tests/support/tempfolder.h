#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

// A folder of the test's own, gone with everything in it.
class TempFolder {
  public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kortavin_test_XXXXXX").native();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("mkdtemp");
        m_path = name;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() { std::filesystem::remove_all(m_path); }

    std::string operator/(std::string_view name) const { return (m_path / name).native(); }
    const std::filesystem::path& Path() const { return m_path; }
    std::ptrdiff_t CountEntries() const {
        return std::distance(std::filesystem::directory_iterator(m_path),
                             std::filesystem::directory_iterator());
    }

  private:
    std::filesystem::path m_path;
};

inline std::string ContentOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void MakeFile(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}
