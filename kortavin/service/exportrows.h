#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "kortavin/base/file.h"
#include "kortavin/db/recordsetex.h"

// The export of a result's rows. docs/formats/query-data.md has the layouts.
namespace kortavin::service {

enum class ExportLayout : int { Comma = 1, Blank = 2, Tab = 3, Binary = 10 };
enum class ExportQuote : int { Unquoted = 1, Single = 2, Double = 3 };

// As the host gave them: a layout or quote mode that is none of the above is carried along. Such a layout
// writes nothing, such a quote mode quotes nothing.
struct ExportOptions {
    ExportLayout layout = ExportLayout::Comma;
    ExportQuote quote = ExportQuote::Unquoted;
    bool header = true;
};

struct ExportProgress {
    ULONGLONG rows = 0;   // begun
    ULONGLONG bytes = 0;  // written, the header included
};

// Called after each row. What it throws ends the export there and reaches the caller.
using ExportCallback = std::function<void(const ExportProgress&)>;

// One value and what follows it: the layout's separator, or the line end behind a line's last value. The
// binary layout has the value's length before it and nothing behind. Answers the number of bytes. Throws what
// the file throws.
KORTAVIN_API std::size_t WriteValue(CFile& file, std::string_view value, ExportLayout layout, bool isLast);

// Writes a statement's rows from the recordset's current one on, and what stands before them. The file and
// the recordset are the caller's and outlive this object: the file is written at its present position and
// stays open.
class KORTAVIN_API RowExport {
  public:
    RowExport(CFile& file, const ExportOptions& options, _CRecordsetEx& recordset);

    // The two steps, to be called in this order; each flushes what it wrote. Both throw what the file and the
    // database throw.
    void WriteHeader();
    // After an error, too, the binary header gets the number of rows, the one begun included; the file then
    // stands behind that number. Throws CNotSupportedException for more rows than the header can count.
    void WriteRows(const ExportCallback& callback = {});

    const ExportProgress& GetProgress() const { return m_progress; }

  private:
    bool HasBinaryHeader() const { return m_options.header && m_options.layout == ExportLayout::Binary; }
    void WriteNameLine();
    void WriteBinaryHeader();
    void WriteEachRow(const ExportCallback& callback);
    void WriteRow();
    void FinishHeader();
    std::string_view Quoted(std::string_view value);

    CFile& m_file;
    ExportOptions m_options;
    _CRecordsetEx& m_recordset;
    std::vector<CODBCFieldInfo> m_columns;
    ULONGLONG m_countPosition = 0;
    ExportProgress m_progress;
    CString m_value;  // these two are kept from value to value for the room they have
    std::string m_quoted;
};

// Both steps. Answers the number of rows.
KORTAVIN_API ULONGLONG ExportRows(CFile& file, const ExportOptions& options, _CRecordsetEx& recordset,
                                  const ExportCallback& callback = {});

}  // namespace kortavin::service
