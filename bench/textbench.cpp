// Measures the reader of lines and the tokenizer beside plain loops and peers on the same texts and prints
// the ratios. Usage: textbench [OUT_JSON [MEGABYTES]]

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <boost/tokenizer.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "kortavin/textimport/geotextfile.h"
#include "kortavin/textimport/token.h"

namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr int kRuns = 7;

double Seconds(const std::function<std::size_t()>& body, std::size_t& result) {
    const auto start = std::chrono::steady_clock::now();
    result = body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Candidate {
    const char* name;
    std::function<std::size_t()> body;  // answers what all must agree on
};

// The fastest seconds of each, whom others on the machine disturbed least. They run in turn, and must agree.
std::vector<double> Fastest(const std::vector<Candidate>& candidates) {
    std::vector<double> fastest(candidates.size(), std::numeric_limits<double>::infinity());
    const std::size_t agreed = candidates[0].body();  // warms the caches
    for (int run = 0; run < kRuns; ++run) {
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            std::size_t result = 0;
            fastest[i] = std::min(fastest[i], Seconds(candidates[i].body, result));
            if (result != agreed)
                throw std::runtime_error(std::string(candidates[i].name) + " differs from the others");
        }
    }
    return fastest;
}

class Results {
  public:
    // `ratio`: ours over theirs, or theirs over ours where the goal is to be that many times as fast.
    void Add(const std::string& what, double ours, double theirs, double ratio, const std::string& goal) {
        std::printf("%-62s %10.4g %10.4g %7.2f   %s\n", what.c_str(), ours, theirs, ratio, goal.c_str());
        m_json[what] = {{"ours", ours}, {"theirs", theirs}, {"ratio", ratio}, {"goal", goal}};
    }
    void Write(const char* path) const { std::ofstream(path) << m_json.dump(2) << '\n'; }

  private:
    nlohmann::json m_json;
};

class TemporaryFile {
  public:
    explicit TemporaryFile(std::size_t bytes) {
        const int descriptor = mkstemp(m_path.data());
        if (descriptor < 0)
            throw std::runtime_error("no temporary file");
        Fill(CFile(descriptor), bytes);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { unlink(m_path.c_str()); }
    const char* Path() const { return m_path.c_str(); }
    std::size_t Lines() const { return m_lines; }

  private:
    // 76 bytes a line on the average, its end included.
    void Fill(CFile&& file, std::size_t bytes) {
        const std::string line =
            "1234567,Wuhan,\xCE\xE4\xBA\xBA,\"Hubei, China\",30.5928,114.3055,8494.41,"
            "2024-05-17,yes,a remark that makes it longer\r\n";
        for (std::size_t written = 0; written < bytes; ++m_lines) {
            const std::size_t length = 48 + m_lines * 7 % 57;
            file.Write(line.data(), static_cast<UINT>(length - 2));
            file.Write("\r\n", 2);
            written += length;
        }
        file.Close();
    }

    std::string m_path = (std::filesystem::temp_directory_path() / "kortavin_textbench_XXXXXX").native();
    std::size_t m_lines = 0;
};

// What is done to each line: it is had as a text of its own.
struct Taken {
    std::size_t lines = 0;
    std::size_t bytes = 0;
    void Take(std::string_view line) {
        ++lines;
        bytes += line.size();
    }
    std::size_t Sum() const { return lines + bytes; }
};

template <class File>
std::size_t ReadWithReader(const char* path) {
    File file(path, CFile::modeRead);
    Taken taken;
    for (CGeoTextFile reader(&file); reader.NextLine();)
        taken.Take(reader.GetLine().View());
    return taken.Sum();
}

// The line stays in the reader, as std::getline leaves it in its string.
std::size_t PassLines(const char* path) {
    class Passing : public CGeoTextFile {
      public:
        using CGeoTextFile::CGeoTextFile;
        std::string_view Line() const { return m_Line.View(); }
    };
    CFile file(path, CFile::modeRead);
    Taken taken;
    for (Passing reader(&file); reader.NextLine();)
        taken.Take(reader.Line());
    return taken.Sum();
}

// A host's own four operations, on a file that is mapped.
class HostFile : public CFile {
  public:
    HostFile(const char* path, UINT flags) {
        m_size = CFile(path, flags).GetLength();
        const int descriptor = open(path, O_RDONLY);
        m_bytes = static_cast<const char*>(mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, descriptor, 0));
        close(descriptor);
        if (m_bytes == MAP_FAILED)
            throw std::runtime_error("mmap");
    }
    ~HostFile() override { munmap(const_cast<char*>(m_bytes), m_size); }
    ULONGLONG GetPosition() const override { return m_position; }
    ULONGLONG Seek(LONGLONG offset, UINT) override { return m_position = static_cast<ULONGLONG>(offset); }
    ULONGLONG GetLength() const override { return m_size; }
    UINT Read(void* buffer, UINT count) override {
        const std::size_t read = std::min<std::size_t>(count, m_size - m_position);
        std::memcpy(buffer, m_bytes + m_position, read);
        m_position += read;
        return static_cast<UINT>(read);
    }

  private:
    const char* m_bytes;
    std::size_t m_size;
    std::size_t m_position = 0;
};

// A host's class whose operations are those of CFile, which cost twice through the library's border.
class DerivedFile : public CFile {
  public:
    using CFile::CFile;
    ULONGLONG GetPosition() const override { return CFile::GetPosition(); }
    ULONGLONG Seek(LONGLONG offset, UINT from) override { return CFile::Seek(offset, from); }
    ULONGLONG GetLength() const override { return CFile::GetLength(); }
    UINT Read(void* buffer, UINT count) override { return CFile::Read(buffer, count); }
};

std::size_t ReadInBlocks(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    std::setvbuf(file, nullptr, _IONBF, 0);
    std::vector<char> block(kBlock);
    Taken taken;
    std::size_t kept = 0;  // the beginning of a line that the last block cut
    while (const std::size_t count = std::fread(block.data() + kept, 1, block.size() - kept, file)) {
        const char* at = block.data();
        const char* const end = at + kept + count;
        while (const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            const char* const feed = static_cast<const char*>(found);
            taken.Take(CString(std::string_view(at, feed - 1)).View());
            at = feed + 1;
        }
        kept = static_cast<std::size_t>(end - at);
        std::memmove(block.data(), at, kept);
    }
    std::fclose(file);
    return taken.Sum();
}

std::size_t ReadWithGetline(const char* path) {
    std::vector<char> buffer(kBlock);
    std::ifstream file;
    file.rdbuf()->pubsetbuf(buffer.data(), kBlock);
    file.open(path, std::ios::binary);
    Taken taken;
    for (std::string line; std::getline(file, line);) {
        line.pop_back();
        taken.Take(line);
    }
    return taken.Sum();
}

void MeasureReading(Results& results, std::size_t megabytes) {
    const TemporaryFile file(megabytes * 1'000'000);
    std::printf("%zu MB of %zu lines\n", megabytes, file.Lines());
    const char* const path = file.Path();
    const std::vector<double> seconds = Fastest({
        {"reader", [&] { return ReadWithReader<CFile>(path); }},
        {"reader, lines not taken", [&] { return PassLines(path); }},
        {"reader of a host's file", [&] { return ReadWithReader<HostFile>(path); }},
        {"reader of a derived file", [&] { return ReadWithReader<DerivedFile>(path); }},
        {"blocks", [&] { return ReadInBlocks(path); }},
        {"getline", [&] { return ReadWithGetline(path); }},
    });
    const auto add = [&](const char* what, std::size_t ours, std::size_t theirs, const char* goal) {
        results.Add(what, seconds[ours], seconds[theirs], seconds[ours] / seconds[theirs], goal);
    };
    add("seconds to read and take lines, a block loop", 0, 4, "at most 1.5 of it");
    add("seconds to read lines, std::getline", 1, 5, "at most 1 of it");
    add("seconds to read and take lines of a host's file, a block loop", 2, 4, "at most 2.5 of it");
    add("seconds to read and take lines of a derived file, a block loop", 3, 4, "none");
}

std::string MakeLine(int fields) {
    std::string line;
    for (int i = 0; i < fields; ++i)
        line.append(i == 0 ? "" : ",")
            .append(1 + static_cast<std::size_t>(i) * 7 % 12, static_cast<char>('a' + i % 26));
    return line;
}

// Each splits a line of its own, as a reader gives it.
std::size_t SplitWithTokenizer(CString line) {
    Taken taken;
    for (CToken tokens(std::move(line)); tokens.MoreTokens();)
        taken.Take(tokens.GetNextToken().View());
    return taken.Sum();
}

bool IsQuote(char byte) {
    return byte == '\'' || byte == '"';
}

std::string_view WithoutQuotes(std::string_view token) {
    if (token.size() > 1 && IsQuote(token.front()))
        token.remove_prefix(1);
    if (token.size() > 1 && IsQuote(token.back()))
        token.remove_suffix(1);
    return token.size() == 1 && IsQuote(token[0]) ? "" : token;
}

// The same tokens, quotes and all, for whoever knows that no separator hides in a longer character.
std::size_t SplitWithViews(CString line, std::string_view separator) {
    Taken taken;
    std::string_view rest = line.View();
    for (std::size_t at; (at = rest.find(separator)) != std::string_view::npos;) {
        taken.Take(CString(WithoutQuotes(rest.substr(0, at))).View());
        rest.remove_prefix(at + separator.size());
    }
    taken.Take(CString(WithoutQuotes(rest)).View());
    return taken.Sum();
}

// As little as splitting can be: one known byte, and the quotes stay.
std::size_t SplitBarely(CString line) {
    Taken taken;
    std::string_view rest = line.View();
    for (std::size_t at; (at = rest.find(',')) != std::string_view::npos; rest.remove_prefix(at + 1))
        taken.Take(CString(rest.substr(0, at)).View());
    taken.Take(CString(rest).View());
    return taken.Sum();
}

std::size_t SplitWithBoost(std::string line) {
    const boost::char_separator<char> comma(",", "", boost::keep_empty_tokens);
    Taken taken;
    for (const std::string& token : boost::tokenizer<boost::char_separator<char>>(line, comma))
        taken.Take(token);
    return taken.Sum();
}

// Answers our nanoseconds a token.
double MeasureSplitting(Results& results, int fields) {
    constexpr int kTokens = 4'000'000;
    const std::string bytes = MakeLine(fields);
    const CString line{std::string_view(bytes)};
    const auto many = [&](auto split, const auto& text) {
        return [=, &text] {
            std::size_t sum = 0;
            for (int i = 0; i < kTokens / fields; ++i)
                sum += split(text);
            return sum;
        };
    };
    const std::string separator = ",";
    const auto splitWithViews = [&](CString text) { return SplitWithViews(std::move(text), separator); };
    const std::vector<double> seconds = Fastest({{"tokenizer", many(SplitWithTokenizer, line)},
                                                 {"loop over views", many(splitWithViews, line)},
                                                 {"bare loop", many(SplitBarely, line)},
                                                 {"boost::tokenizer", many(SplitWithBoost, bytes)}});
    const auto nanoseconds = [&](std::size_t i) { return seconds[i] / kTokens * 1e9; };
    const std::string what = "ns a token, " + std::to_string(fields) + " fields, ";
    const auto add = [&](const char* peer, std::size_t i, bool asFast, const char* goal) {
        const double ratio = asFast ? seconds[i] / seconds[0] : seconds[0] / seconds[i];
        results.Add(what + peer, nanoseconds(0), nanoseconds(i), ratio, goal);
    };
    add("a loop over views", 1, false, "at most 1.5 of it");
    add("without separator and quotes", 2, false, "none");
    add("boost::tokenizer", 3, true, "2.5 times as fast");
    return nanoseconds(0);
}

}  // namespace

int main(int argc, char** argv) {
    Results results;
    std::printf("%-62s %10s %10s %7s   goal\n", "", "ours", "theirs", "ratio");
    MeasureReading(results, argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 500);
    MeasureSplitting(results, 10);
    const double thousand = MeasureSplitting(results, 1'000);
    const double tenThousand = MeasureSplitting(results, 10'000);
    results.Add("ns a token, 10,000 fields beside 1,000", tenThousand, thousand, tenThousand / thousand,
                "at most 1.3 of it");
    if (argc > 1)
        results.Write(argv[1]);
}
