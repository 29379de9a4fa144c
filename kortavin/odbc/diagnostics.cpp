#include "kortavin/odbc/diagnostics.h"

#include <array>
#include <climits>
#include <optional>

#include "kortavin/base/codepage.h"
#include "kortavin/odbc/database.h"

namespace kortavin::odbc {
namespace {

struct Record {
    std::string state;
    SQLINTEGER native = 0;
    std::string message;
};

std::optional<Record> ReadRecord(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number) {
    std::array<SQLCHAR, 6> state{};
    Record record;
    record.message.resize(1024);
    for (int attempt = 0; attempt < 2; ++attempt) {
        SQLSMALLINT length = 0;
        const auto size = static_cast<SQLSMALLINT>(record.message.size());
        const SQLRETURN code =
            SQLGetDiagRec(type, handle, number, state.data(), &record.native,
                          reinterpret_cast<SQLCHAR*>(record.message.data()), size, &length);
        if (!Succeeded(code))
            return std::nullopt;
        if (length >= size && length < SHRT_MAX && attempt == 0) {
            record.message.assign(static_cast<std::size_t>(length) + 1, '\0');
            continue;
        }
        record.message.resize(std::char_traits<char>::length(record.message.c_str()));
        break;
    }
    record.state.assign(reinterpret_cast<const char*>(state.data()));
    return record;
}

// Splits "[unixODBC][Driver]text" behind its last leading bracket.
std::size_t OriginLength(std::string_view message) {
    std::size_t length = 0;
    while (length < message.size() && message[length] == '[') {
        const auto close = message.find(']', length);
        if (close == message.npos)
            break;
        length = close + 1;
    }
    return length;
}

// Once a process has set its locale, the driver manager widens each byte of a connection's message from
// Latin-1 and writes the result as UTF-8: the original bytes are that text's Latin-1 ones.
std::optional<std::string> UndoSecondEncoding(std::string_view message) {
    std::string bytes;
    for (std::size_t i = 0; i < message.size(); ++i) {
        const auto byte = static_cast<unsigned char>(message[i]);
        if (byte < 0x80) {
            bytes += message[i];
            continue;
        }
        if ((byte != 0xC2 && byte != 0xC3) || i + 1 == message.size())
            return std::nullopt;
        const auto next = static_cast<unsigned char>(message[++i]);
        bytes += static_cast<char>((byte == 0xC3 ? 0x40 : 0) + next);
    }
    return bytes;
}

class ErrorText {
  public:
    explicit ErrorText(const CDatabase* database) : m_database(database) {}

    void AddRecordsOf(SQLSMALLINT type, SQLHANDLE handle) {
        if (handle == nullptr)
            return;
        // A driver that does not count its records up answers the first one for ever.
        static constexpr SQLSMALLINT kMostRecords = 64;
        for (SQLSMALLINT number = 1; number <= kMostRecords; ++number) {
            auto record = ReadRecord(type, handle, number);
            if (!record)
                break;
            if (type == SQL_HANDLE_DBC && m_database != nullptr) {
                const auto original = UndoSecondEncoding(record->message);
                if (original && m_database->FromNarrow(*original, false))
                    record->message = *original;
            }
            Add(*record);
        }
    }

    bool IsEmpty() const { return m_states.IsEmpty(); }
    CDBException Make(RETCODE code) const { return {code, m_messages, m_states}; }

  private:
    void Add(const Record& record) {
        const std::string_view message = record.message;
        const std::size_t origin = OriginLength(message);
        CString line;
        line.Format("State:%s,Native:%ld,Origin:", record.state.c_str(), static_cast<long>(record.native));
        m_states += line + Readable(message.substr(0, origin)) + "\n";
        if (origin < message.size())
            m_messages += Readable(message.substr(origin)) + "\n";
    }

    CString Readable(std::string_view narrow) const {
        if (m_database != nullptr)
            return m_database->MakeReadable(narrow);
        return CString(base::Utf8ForMessage(narrow));
    }

    const CDatabase* m_database;
    CString m_messages;
    CString m_states;
};

CDBException MakeErrorWithoutRecord(RETCODE code) {
    if (code == SQL_INVALID_HANDLE)
        return MakeOwnError(code, "08003", "The connection is not open.");
    if (code == SQL_NO_DATA)
        return MakeOwnError(code, "02000", "The data source has no data for this value.");
    return MakeOwnError(code, "HY000", "The data source reported a failure without giving a reason.");
}

}  // namespace

CDBException MakeError(RETCODE code, const CDatabase* database, HSTMT statement) {
    ErrorText text(database);
    text.AddRecordsOf(SQL_HANDLE_STMT, statement);
    if (text.IsEmpty() && database != nullptr)
        text.AddRecordsOf(SQL_HANDLE_DBC, database->m_hdbc);
    return text.IsEmpty() ? MakeErrorWithoutRecord(code) : text.Make(code);
}

CDBException MakeConnectError(RETCODE code, const CDatabase& database, HDBC connection) {
    ErrorText text(&database);
    text.AddRecordsOf(SQL_HANDLE_DBC, connection);
    if (text.IsEmpty())
        return MakeOwnError(code, "08001", "The connection was refused without giving a reason.");
    return text.Make(code);
}

CDBException MakeOwnError(RETCODE code, const char* state, const CString& text) {
    CString line;
    line.Format("State:%s,Native:0,Origin:[Kortavin]\n", state);
    return {code, text + "\n", line};
}

void RefuseZeroBytes(std::string_view text) {
    if (text.find('\0') != text.npos)
        throw MakeOwnError(CDBException::kTextNotConvertible, "22021", "The text holds a zero byte.");
}

CDBException MakeConversionError(const CString& what, const CDatabase& database) {
    const CString text =
        what + " is not valid text in the character set " + database.GetNarrowCharset().GetName().c_str();
    return MakeOwnError(CDBException::kTextNotConvertible, "22021", text);
}

}  // namespace kortavin::odbc
