#pragma once

namespace kortavin::window {

// What the mouse pointer looks like.
enum class PointerShape { Arrow, SizeHorizontal, SizeVertical, Wait };

}  // namespace kortavin::window
