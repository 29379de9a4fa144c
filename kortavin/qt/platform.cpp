#include "kortavin/qt/platform.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "kortavin/base/codepage.h"
#include "kortavin/base/exception.h"
#include "kortavin/base/texts.h"

namespace kortavin::qt {
namespace {

using base::TextId;

[[noreturn]] void ThrowNoPlatform(TextId reason, const QByteArray& subject) {
    CString text;
    text.Format(Text(reason),
                base::Utf8ForMessage({subject.data(), static_cast<std::size_t>(subject.size())}).c_str());
    throw CResourceException(Text(TextId::NoWindows) + text);
}

// Null where there is none.
std::shared_ptr<void> ConnectToX() {
    std::shared_ptr<xcb_connection_t> connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    return xcb_connection_has_error(connection.get()) == 0 ? connection : nullptr;
}

QByteArray WaylandSocketPath() {
    const QByteArray display =
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ? "wayland-0" : qgetenv("WAYLAND_DISPLAY");
    return display.startsWith('/') ? display : qgetenv("XDG_RUNTIME_DIR") + '/' + display;
}

bool HasWaylandServer() {
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET"))  // connected already, by whoever started the process
        return true;
    const QByteArray path = WaylandSocketPath();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int socketHandle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socketHandle < 0)
        return false;
    const bool isConnected =
        connect(socketHandle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(socketHandle);
    return isConnected;
}

QStringList PluginFolders() {
    QStringList folders;
    if (const QString own = qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH"); !own.isEmpty())
        folders.append(own);
    for (const QString& folder : QCoreApplication::libraryPaths())  // QT_PLUGIN_PATH's and Qt's own
        folders.append(folder + "/platforms");
    return folders;
}

bool ServesPlatform(const QPluginLoader& plugin, const QString& name) {
    const QJsonArray keys = plugin.metaData()[QLatin1String("MetaData")][QLatin1String("Keys")].toArray();
    return std::any_of(keys.begin(), keys.end(), [&name](const QJsonValue& key) {
        return key.toString().compare(name, Qt::CaseInsensitive) == 0;
    });
}

// Loads it, since what it needs itself may be missing.
bool HasPlugin(const QString& name) {
    for (const QString& folder : PluginFolders())
        for (const QString& file : QDir(folder).entryList({"libq*.so"}, QDir::Files))
            if (QPluginLoader plugin(folder + '/' + file); ServesPlatform(plugin, name) && plugin.load())
                return true;
    return false;
}

// The order in which Qt tries them: X unless the session says Wayland, which GNOME's does not count for.
QList<QByteArray> UsualPlatforms() {
    const QByteArray desktop =
        qgetenv("XDG_CURRENT_DESKTOP").toLower() + qgetenv("XDG_SESSION_DESKTOP").toLower();
    const bool prefersWayland = qgetenv("XDG_SESSION_TYPE") == "wayland" && !desktop.contains("gnome");
    return prefersWayland ? QList<QByteArray>{"wayland", "xcb"} : QList<QByteArray>{"xcb", "wayland"};
}

QList<QByteArray> WantedPlatforms() {
    const QByteArray set = qgetenv("QT_QPA_PLATFORM");
    return set.isEmpty() ? UsualPlatforms() : set.split(';');
}

// The connection to the platform's display, or null; something else for a platform that needs none.
std::shared_ptr<void> ConnectTo(const QByteArray& name) {
    if (name == "xcb")
        return ConnectToX();
    return !name.startsWith("wayland") || HasWaylandServer() ? std::make_shared<bool>(true) : nullptr;
}

}  // namespace

Platform UsablePlatform() {
    const QList<QByteArray> wanted = WantedPlatforms();
    QByteArray withoutDisplay;
    for (const QByteArray& platform : wanted) {
        const QByteArray name = platform.split(':').first().toLower();  // the rest is for the plugin
        if (!HasPlugin(QString::fromUtf8(name)))
            continue;
        if (auto connection = ConnectTo(name); connection != nullptr)
            return {platform, std::move(connection)};
        withoutDisplay += (withoutDisplay.isEmpty() ? "" : ", ") + name;
    }
    if (!withoutDisplay.isEmpty())
        ThrowNoPlatform(TextId::NoDisplay, withoutDisplay);
    ThrowNoPlatform(TextId::NoPlatform, wanted.join(", "));
}

}  // namespace kortavin::qt
