// Compares the reader of lines with a plain search over the whole content, on files of three kinds.

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <memory>

#include "kortavin/textimport/geotextfile.h"
#include "tests/textimport/fuzz.h"
#include "tests/textimport/hostfile.h"

namespace {

using namespace std::string_view_literals;

constexpr std::array kPieces{"\r\n"sv, "\r"sv, "\n"sv, "\0"sv, "\xB4\xF3"sv, ","sv, "a"sv, "0123456789"sv};

// What a file and its reader are, without chunks.
struct PlainReader {
    std::string content;
    std::size_t length = 0;    // when it was attached
    std::size_t fileAt = 0;    // where the next line begins
    std::size_t readerAt = 0;  // behind the current line
    std::string line = {};

    void Attach() {
        length = content.size();
        fileAt = readerAt = 0;
    }
    bool Next() {
        if (readerAt >= length)
            return false;
        const std::size_t begin = fileAt;
        const std::size_t end = content.find('\r', begin);
        const std::size_t size = std::max(content.size(), begin);
        fileAt = readerAt = end == std::string::npos ? size : std::min(end + 2, size);
        if (fileAt == begin && begin < length)
            return false;
        const std::string text = begin < content.size() ? content.substr(begin, end - begin) : "";
        line = text.substr(0, text.find('\0'));
        return true;
    }
};

std::string MakeContent(Random& random) {
    std::string content = random.Join(kPieces, random.Below(40));
    if (random.OnceIn(500))  // beyond what a file reads ahead
        for (int i = 0; i < 3; ++i)
            content += std::string(65520 + random.Below(32), random.OnceIn(4) ? '\0' : 'x') +
                       random.Join(kPieces, random.Below(20));
    return content;
}

std::unique_ptr<CFile> MakeFile(Random& random, const std::string& content) {
    static const int descriptor = memfd_create("fuzz", 0);
    switch (random.Below(3)) {
        case 0: {
            Require(ftruncate(descriptor, 0) == 0, "ftruncate");
            auto file = std::make_unique<CFile>(dup(descriptor));
            file->Seek(0, CFile::begin);
            file->Write(content.data(), static_cast<UINT>(content.size()));
            return file;
        }
        case 1: {
            auto file = std::make_unique<CMemFile>();
            file->Write(content.data(), static_cast<UINT>(content.size()));
            return file;
        }
        default:
            return std::make_unique<HostFile>(content);
    }
}

void Cut(CFile& file, PlainReader& plain, std::size_t length) {
    if (auto* host = dynamic_cast<HostFile*>(&file))
        host->content.resize(length);
    else if (dynamic_cast<CMemFile*>(&file) != nullptr)
        file.SetLength(length);
    else
        return;  // a CFile still has what it read ahead
    plain.content.resize(length);
}

// Something between two lines that a host may do.
void Disturb(Random& random, CGeoTextFile& reader, CFile& file, PlainReader& plain) {
    switch (random.Below(6)) {
        case 0:
            CGeoTextFile::m_MaxBufSize = static_cast<UINT>(random.Below(41));
            break;
        case 1:
            plain.fileAt = random.Below(plain.content.size() + 3);
            file.Seek(static_cast<LONGLONG>(plain.fileAt), CFile::begin);
            break;
        case 2: {
            const CGeoTextFile copy(reader);
            reader = random.OnceIn(2) ? CGeoTextFile() : reader;
            reader = copy;
            break;
        }
        case 3:
            reader.SetFile(&file);
            plain.Attach();
            break;
        case 4:
            Cut(file, plain, random.Below(plain.content.size() + 1));
            break;
        default:
            break;
    }
}

void ReadOneFile(Random random) {
    CGeoTextFile::m_MaxBufSize = static_cast<UINT>(random.Below(41));
    PlainReader plain{MakeContent(random)};
    plain.Attach();
    const std::unique_ptr<CFile> file = MakeFile(random, plain.content);
    CGeoTextFile reader(file.get());
    bool isCalm = random.OnceIn(2);
    for (int i = 0; i < 60; ++i) {
        const bool expected = plain.Next();
        Require((reader.NextLine() != FALSE) == expected, "whether there is a line");
        Require(reader.GetLine().View() == plain.line, "the line");
        Require(file->GetPosition() == plain.fileAt, "the file's position");
        if (!expected && (isCalm || random.OnceIn(3)))
            break;
        if (!isCalm && random.OnceIn(4))
            Disturb(random, reader, *file, plain);
    }
}

}  // namespace

int main(int argc, char** argv) {
    return Fuzz(argc, argv, ReadOneFile);
}
