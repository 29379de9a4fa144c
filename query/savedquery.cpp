#include "query/savedquery.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "framework/base/endian.h"
#include "framework/base/replacement.h"
#include "resources/texts.h"

namespace kortavin::query {
namespace {

constexpr std::string_view kHeader = "VESKARDO QUERY FILE";

}  // namespace

SavedQueryFormatError::~SavedQueryFormatError() = default;

CString SavedQueryFormatError::GetErrorMessage() const {
    return resources::Text(resources::TextId::WrongFileFormat);
}

const char* SavedQueryFormatError::what() const noexcept {
    return "not a saved query";
}

void WriteSavedQuery(const CString& path, const CString& sql) {
    base::FileReplacement replacement(path);
    WriteSavedQuery(replacement.File(), sql);
    replacement.Commit();
}

void WriteSavedQuery(CFile& file, const CString& sql) {
    file.Write(kHeader.data(), static_cast<UINT>(kHeader.size()));
    base::WriteLittleEndian(file, static_cast<DWORD>(sql.GetLength()));
    file.Write(sql.GetString(), static_cast<UINT>(sql.GetLength()));
}

CString ReadSavedQuery(const CString& path) {
    CFile file(path, CFile::modeRead);
    return ReadSavedQuery(file);
}

CString ReadSavedQuery(CFile& file) {
    std::array<char, kHeader.size()> header{};
    if (file.Read(header.data(), header.size()) < header.size() ||
        std::string_view(header.data(), header.size()) != kHeader)
        throw SavedQueryFormatError();

    std::array<BYTE, 4> length{};
    if (file.Read(length.data(), length.size()) < length.size())
        throw SavedQueryFormatError();
    const DWORD size = base::FromLittleEndian<DWORD>(length);

    // The length is not trusted: room is made only for what the file goes on to deliver.
    std::string text;
    std::array<char, 65536> block;
    while (text.size() < size) {
        const auto wanted = static_cast<UINT>(std::min<std::size_t>(block.size(), size - text.size()));
        const UINT got = file.Read(block.data(), wanted);
        text.append(block.data(), got);
        if (got < wanted)
            throw SavedQueryFormatError();
    }
    text.resize(std::min(text.find('\0'), text.size()));
    return CString(std::move(text));
}

}  // namespace kortavin::query
