#include "desktop/exportjob.h"

#include <QtCore/QFile>

#include "desktop/progress.h"
#include "kortavin/base/replacement.h"

namespace kortavin::desktop {

// The file comes first, so that no statement runs for one that cannot be written.
ULONGLONG ExportStatement(CGeoDatabase& database, const CString& statement, const ExportRequest& request,
                          Progress& progress) {
    base::FileReplacement output(CString(QFile::encodeName(request.path).toStdString()));
    const auto rows = service::OpenStatement(database, statement);
    const auto tell = [&progress](const service::ExportProgress& now) {
        progress.Update(
            [&now] { return QStringLiteral("已导出 %L1 行，%L2 字节…").arg(now.rows).arg(now.bytes); });
    };
    const ULONGLONG count = service::ExportRows(output.File(), request.options, *rows, tell);
    output.Commit();
    return count;
}

}  // namespace kortavin::desktop
