#pragma once

#include <QByteArray>
#include <memory>

namespace kortavin::qt {

struct Platform {
    QByteArray name;  // as Qt is to be told it, with its arguments
    // The connection by which its display was found, to be kept until Qt has its own: an X server may restart
    // when its last client leaves.
    std::shared_ptr<void> connection;
};

// What to name to Qt as its platform, so that making an application succeeds: Qt ends the process where it
// has none. The first of what QT_QPA_PLATFORM lists (of the desktop's usual ones without it) that has a
// display; CResourceException where none has.
Platform UsablePlatform();

}  // namespace kortavin::qt
