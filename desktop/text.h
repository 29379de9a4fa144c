#pragma once

#include <QtCore/QString>

#include "kortavin/base/cstring.h"

// The border between the library's GBK and the host's own widgets.
namespace kortavin::desktop {

// To be shown, never to be taken back: what is no text shows as \xNN.
QString Shown(const CString& gbk);

// Of what the user typed. Throws Failure for half a character, which an input method may leave.
CString ToGbk(const QString& text);

}  // namespace kortavin::desktop
