#include "kortavin/service/exportrows.h"

#include <climits>

#include "kortavin/base/endian.h"
#include "kortavin/service/statement.h"

namespace kortavin::service {
namespace {

constexpr std::string_view kMagic = "VESKARDO CORP QUERY DATA";
constexpr std::size_t kNameSize = 32;
constexpr std::size_t kTypeNameSize = 20;
constexpr std::size_t kReservedSize = 64;

std::string_view Separator(ExportLayout layout) {
    switch (layout) {
        case ExportLayout::Comma:
            return ",";
        case ExportLayout::Blank:
            return " ";
        case ExportLayout::Tab:
            return "\t";
        default:
            return {};
    }
}

std::string_view QuoteMark(ExportQuote quote) {
    if (quote == ExportQuote::Single)
        return "'";
    if (quote == ExportQuote::Double)
        return "\"";
    return {};
}

bool IsCharacterType(SWORD sqlType) {
    return sqlType == odbc::kChar || sqlType == odbc::kVarChar || sqlType == odbc::kLongVarChar;
}

std::string Padded(std::string_view text, std::size_t size, char filler) {
    std::string padded(text.substr(0, size));
    padded.resize(size, filler);
    return padded;
}

std::size_t WriteBytes(CFile& file, std::string_view bytes) {
    if (!bytes.empty())
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes.size();
}

template <class T>
std::size_t WriteNumber(CFile& file, T value) {
    base::WriteLittleEndian(file, value);
    return sizeof value;
}

}  // namespace

std::size_t WriteValue(CFile& file, std::string_view value, ExportLayout layout, bool isLast) {
    if (layout == ExportLayout::Binary)
        return WriteNumber(file, static_cast<LONG>(value.size())) + WriteBytes(file, value);
    const std::string_view separator = Separator(layout);
    if (separator.empty())
        return 0;
    return WriteBytes(file, value) + WriteBytes(file, isLast ? "\r\n" : separator);
}

RowExport::RowExport(CFile& file, const ExportOptions& options, _CRecordsetEx& recordset)
    : m_file(file), m_options(options), m_recordset(recordset), m_columns(DescribeResult(recordset)) {}

void RowExport::WriteHeader() {
    m_recordset.RequireOpen();
    if (HasBinaryHeader())
        WriteBinaryHeader();
    else if (m_options.header)
        WriteNameLine();
    if (m_progress.bytes > 0)
        m_file.Flush();
}

void RowExport::WriteNameLine() {
    for (const CODBCFieldInfo& column : m_columns)
        m_progress.bytes += WriteValue(m_file, Quoted(column.m_strName.View()), m_options.layout,
                                       &column == &m_columns.back());
}

void RowExport::WriteBinaryHeader() {
    std::string header(kMagic);
    const auto append = [&header](auto number) {
        const auto bytes = base::ToLittleEndian(number);
        header.append(bytes.begin(), bytes.end());
    };
    append(LONG{1});
    append(static_cast<LONG>(m_columns.size()));
    for (const CODBCFieldInfo& column : m_columns)
        header += Padded(column.m_strName.View(), kNameSize, ' ');
    for (const CODBCFieldInfo& column : m_columns)
        append(column.m_nSQLType);
    for (const CODBCFieldInfo& column : m_columns)
        header += Padded(FieldTypeName(column.m_nSQLType).View(), kTypeNameSize, '\0');
    header.append(kReservedSize * m_columns.size(), ' ');
    append(LONG{0});
    append(static_cast<LONG>(m_options.layout));
    append(static_cast<LONG>(m_options.quote));
    m_progress.bytes += WriteBytes(m_file, header);
    m_countPosition = m_file.GetPosition();
    m_progress.bytes += WriteNumber(m_file, LONG{0});
}

void RowExport::WriteRows(const ExportCallback& callback) {
    try {
        WriteEachRow(callback);
    } catch (...) {
        try {
            FinishHeader();
        } catch (...) {  // the first error tells more
        }
        throw;
    }
    FinishHeader();
}

void RowExport::WriteEachRow(const ExportCallback& callback) {
    m_recordset.RequireOpen();
    while (!m_recordset.IsBOF() && !m_recordset.IsEOF()) {
        if (HasBinaryHeader() && m_progress.rows == INT_MAX)
            throw CNotSupportedException("The binary header cannot count more rows.");
        ++m_progress.rows;
        WriteRow();
        if (callback)
            callback(m_progress);
        m_recordset.MoveNext();
    }
    m_file.Flush();
}

void RowExport::WriteRow() {
    const std::size_t count = m_columns.size();
    for (std::size_t i = 0; i < count; ++i) {
        m_value.Empty();
        m_recordset.ReadFieldText(static_cast<short>(i), m_value);
        const bool quoted =
            m_options.layout != ExportLayout::Binary && IsCharacterType(m_columns[i].m_nSQLType);
        m_progress.bytes += WriteValue(m_file, quoted ? Quoted(m_value.View()) : m_value.View(),
                                       m_options.layout, i + 1 == count);
    }
}

// Valid until the next call.
std::string_view RowExport::Quoted(std::string_view value) {
    const std::string_view mark = QuoteMark(m_options.quote);
    if (mark.empty())
        return value;
    m_quoted.clear();
    m_quoted += mark;
    m_quoted += value;
    m_quoted += mark;
    return m_quoted;
}

void RowExport::FinishHeader() {
    if (!HasBinaryHeader())
        return;
    m_file.Seek(static_cast<LONGLONG>(m_countPosition), CFile::begin);
    WriteNumber(m_file, static_cast<LONG>(m_progress.rows));
    m_file.Flush();
}

ULONGLONG ExportRows(CFile& file, const ExportOptions& options, _CRecordsetEx& recordset,
                     const ExportCallback& callback) {
    RowExport rowExport(file, options, recordset);
    rowExport.WriteHeader();
    rowExport.WriteRows(callback);
    return rowExport.GetProgress().rows;
}

}  // namespace kortavin::service
