#include "kortavin/query/savedquery.h"

#include <algorithm>
#include <array>
#include <climits>
#include <string>
#include <string_view>
#include <utility>

#include "kortavin/base/endian.h"
#include "kortavin/base/replacement.h"
#include "kortavin/base/texts.h"

namespace kortavin::query {
namespace {

constexpr std::string_view kHeader = "VESKARDO QUERY FILE";

// The length is not trusted: room is made only for what the file goes on to deliver, up to a zero byte.
CString ReadText(CFile& file, DWORD size) {
    std::string text;
    std::array<char, 65536> block;
    bool ended = false;
    for (DWORD left = size; left > 0;) {
        const UINT wanted = std::min<UINT>(block.size(), left);
        if (file.Read(block.data(), wanted) < wanted)
            throw SavedQueryFormatError();
        const std::string_view bytes(block.data(), wanted);
        const std::size_t end = std::min(bytes.find('\0'), bytes.size());
        if (!ended)
            text += bytes.substr(0, end);
        ended = ended || end < bytes.size();
        left -= wanted;
    }
    return CString(std::move(text));
}

}  // namespace

SavedQueryFormatError::~SavedQueryFormatError() = default;

CString SavedQueryFormatError::GetErrorMessage() const {
    return base::Text(base::TextId::WrongFileFormat);
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
    if (size > INT_MAX)
        throw SavedQueryFormatError();
    return WithMemoryErrors([&] { return ReadText(file, size); });
}

}  // namespace kortavin::query
