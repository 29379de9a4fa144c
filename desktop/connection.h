#pragma once

#include <QtCore/QString>
#include <memory>

#include "kortavin/db/geodatabase.h"

namespace kortavin::desktop {

// The database that the window works on, and what it tells of it.
class Connection {
  public:
    // `source` is the path of an SQLite file or an ODBC connection string. Throws CException and Failure; the
    // former database is then still open.
    void Open(const QString& source);
    void Close();

    CGeoDatabase* Database() const { return m_database.get(); }  // null while none is open
    const QString& Title() const { return m_title; }  // without passwords; empty while none is open
    const QString& File() const { return m_file; }    // empty for other databases

  private:
    std::unique_ptr<CGeoDatabase> m_database;
    QString m_title;
    QString m_file;
};

}  // namespace kortavin::desktop
