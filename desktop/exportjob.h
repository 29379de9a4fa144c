#pragma once

#include <QtCore/QString>

#include "kortavin/service/exportrows.h"
#include "kortavin/service/statement.h"

namespace kortavin::desktop {

class Progress;

struct ExportRequest {
    QString path;
    service::ExportOptions options;
};

// Executes the statement and writes all its rows; answers how many. The file is either complete in the end or
// as it was. Throws CException, and Cancelled when the user does not want to wait.
ULONGLONG ExportStatement(CGeoDatabase& database, const CString& statement, const ExportRequest& request,
                          Progress& progress);

}  // namespace kortavin::desktop
