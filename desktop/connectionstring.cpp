#include "desktop/connectionstring.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

#include "desktop/report.h"

namespace kortavin::desktop {
namespace {

// Behind the value that begins at `start`: at its semicolon or at the end.
qsizetype EndOfValue(const QString& connection, qsizetype start) {
    qsizetype end = start;
    while (end < connection.size() && connection[end] == QLatin1Char(' '))
        ++end;
    if (end < connection.size() && connection[end] == QLatin1Char('{'))
        for (++end; end < connection.size() && connection[end] != QLatin1Char('}'); ++end)
            if (connection.mid(end + 1, 2) == QLatin1String("}}"))  // stands for one
                end += 2;
    const qsizetype semicolon = connection.indexOf(QLatin1Char(';'), end);
    return semicolon < 0 ? connection.size() : semicolon;
}

QStringList Pairs(const QString& connection) {
    QStringList pairs;
    for (qsizetype start = 0; start < connection.size();) {
        const qsizetype equals = connection.indexOf(QLatin1Char('='), start);
        const qsizetype end = equals < 0 ? connection.size() : EndOfValue(connection, equals + 1);
        pairs.push_back(connection.mid(start, end - start));
        start = end + 1;
    }
    return pairs;
}

bool HasKey(const QString& pair, const QString& key) {
    return pair.section(QLatin1Char('='), 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0;
}

QString ValueIn(const QString& pair) {
    QString value = pair.section(QLatin1Char('='), 1).trimmed();
    if (value.startsWith(QLatin1Char('{')) && value.endsWith(QLatin1Char('}')))
        value = value.mid(1, value.size() - 2).replace(QLatin1String("}}"), QLatin1String("}"));
    return value;
}

QString Braced(const QString& value) {
    const bool isPlain =
        value == value.trimmed() && !value.contains(QLatin1Char(';')) && !value.startsWith(QLatin1Char('{'));
    return isPlain ? value
                   : QLatin1Char('{') + QString(value).replace(QLatin1String("}"), QLatin1String("}}")) +
                         QLatin1Char('}');
}

}  // namespace

std::optional<QString> ValueOf(const QString& connection, const QString& key) {
    for (const QString& pair : Pairs(connection))
        if (HasKey(pair, key))
            return ValueIn(pair);
    return std::nullopt;
}

std::optional<QString> TakeValue(QString& connection, const QString& key) {
    QStringList pairs = Pairs(connection);
    std::optional<QString> value;
    for (qsizetype i = pairs.size() - 1; i >= 0; --i)
        if (HasKey(pairs[i], key))
            value = ValueIn(pairs.takeAt(i));
    if (value)
        connection = pairs.join(QLatin1Char(';'));
    return value;
}

QString WithValue(const QString& connection, const QString& key, const QString& value) {
    QString others = connection.trimmed();
    TakeValue(others, key);
    while (others.endsWith(QLatin1Char(';')))
        others.chop(1);
    return others + QLatin1Char(';') + key + QLatin1Char('=') + Braced(value);
}

QString TitleOf(const QString& connection) {
    QStringList told;
    for (const char* key : {"Database", "DSN", "Server"})
        if (const auto value = ValueOf(connection, QLatin1String(key)); value && !value->isEmpty())
            told.push_back(*value);
    return told.isEmpty() ? QStringLiteral("ODBC") : told.join(QStringLiteral(" @ "));
}

// An absolute path begins with '/', so blanks and braces at its beginning mean nothing to the driver manager.
QString SqliteConnection(const QString& path) {
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (absolute.contains(QLatin1Char(';')))
        throw Failure("路径中有分号，无法写进连接串。");
    return QStringLiteral("Driver=SQLite3;Database=%1;StepAPI=1;NoCreat=1").arg(absolute);
}

}  // namespace kortavin::desktop
