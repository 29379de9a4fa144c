#pragma once

#include <QtCore/QString>
#include <optional>

// ODBC connection strings: KEY=VALUE pairs between semicolons, a value in braces where it has semicolons
// itself.
namespace kortavin::desktop {

// By its key in any letter case, without braces.
std::optional<QString> ValueOf(const QString& connection, const QString& key);

// Takes the pair out of the string, and answers its value.
std::optional<QString> TakeValue(QString& connection, const QString& key);

// With the pair at the end, in place of one that is there.
QString WithValue(const QString& connection, const QString& key, const QString& value);

// What a window may tell of a connection: its database and its source, never a password.
QString TitleOf(const QString& connection);

// The string for the path of an SQLite file, which is opened and never made. Throws Failure for a path that
// no string can hold.
QString SqliteConnection(const QString& path);

}  // namespace kortavin::desktop
