#pragma once

#include <vector>

#include "desktop/textsource.h"
#include "kortavin/db/geodatabase.h"

namespace kortavin::desktop {

class Progress;

// The pieces of one line, each without one enclosing quote at either end. A line without the separator is one
// piece.
std::vector<CString> SplitLine(const CString& line, const CString& separator);

// What the user matches against the fields of a table.
struct TextHead {
    std::vector<CString> columns;  // the first line
    std::vector<CString> samples;  // the second; empty in a file of one line
};
// Throws Failure for an empty file.
TextHead ReadHead(TextSource& text, const CString& separator);

// The fields of a table as the data source names them. Throws CException.
std::vector<CString> FieldsOf(CGeoDatabase& database, const CString& table);

struct ImportRequest {
    CString table;
    std::vector<CString> fields;
    std::vector<WORD> positions;  // of each field's column in the text, from 1
    CString separator;
};

// Inserts every line but the first and empty ones, in one transaction; answers how many. When any of them is
// refused nothing is imported, and the Failure tells its line number, the line and the reason. Throws
// Cancelled too.
ULONGLONG ImportText(CGeoDatabase& database, TextSource& text, const ImportRequest& request,
                     Progress& progress);

}  // namespace kortavin::desktop
