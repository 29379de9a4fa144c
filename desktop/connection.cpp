#include "desktop/connection.h"

#include <QtCore/QFileInfo>

#include "desktop/connectionstring.h"
#include "desktop/report.h"
#include "desktop/text.h"

namespace kortavin::desktop {
namespace {

std::unique_ptr<CGeoDatabase> OpenFile(const QString& path) {
    auto database = std::make_unique<CGeoDatabase>();
    database->SetNarrowCharset("UTF-8");  // as the file system has the path
    database->Open(ToGbk(SqliteConnection(path)));
    // With the SQLite driver any file opens, and its catalog is then just empty.
    database->ExecuteSQL("SELECT name FROM sqlite_master");
    return database;
}

std::unique_ptr<CGeoDatabase> OpenConnection(const QString& connection) {
    if (!connection.contains(QLatin1Char('=')))
        throw Failure("没有这个文件，也不是 ODBC 连接串。");
    auto database = std::make_unique<CGeoDatabase>();
    database->Open(ToGbk(connection));
    return database;
}

}  // namespace

void Connection::Open(const QString& source) {
    const QFileInfo file(source);
    if (file.isDir())
        throw Failure("这是一个文件夹，不是数据库文件。");
    auto opened = file.isFile() ? OpenFile(source) : OpenConnection(source);
    Close();
    m_database = std::move(opened);
    m_title = file.isFile() ? file.fileName() : TitleOf(source);
    m_file = file.isFile() ? file.absoluteFilePath() : QString();
}

void Connection::Close() {
    m_database.reset();
    m_title.clear();
    m_file.clear();
}

}  // namespace kortavin::desktop
