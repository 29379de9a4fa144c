#pragma once

#include "framework/base/export.h"

// The texts that people see, by name, in GBK. resources/texts.txt holds them in UTF-8; the build makes the
// bytes, so they are the same with every compiler and need no memory at run time.
namespace kortavin::resources {

// In the order of the file's lines.
enum class TextId {
    Ascending,
    WrongFileFormat,
    MemoryError,
    Ok,
    Cancel,
    NoWindows,
    NoDisplay,
    NoPlatform,
    NotForWindows,
    WrongThread,
    NoWindowForPainting,
    NoSuchDialog,
    NoSuchControlClass,
    NoSuchControl,
    ControlTaken,
    NoColorChooser,
    UnknownError,
    LineSolid,
    LineDash,
    LineDot,
    LineDashDot,
    LineDashDotDot,
    AreaHorizontal,
    AreaVertical,
    AreaFallingDiagonal,
    AreaRisingDiagonal,
    AreaCross,
    AreaDiagonalCross,
    AreaSolid,
    SymbolTiny,
    SymbolSmall,
    SymbolMedium,
    SymbolLarge,
    SymbolHuge,
    TextBlackCircle,
    TextWhiteStar,
    TextBlackStar,
    TextWhiteCircle,
    TextBullseye,
    TextWhiteDiamond,
    TextBlackDiamond,
    TextWhiteSquare,
    TextBlackSquare,
    TextWhiteTriangle,
    TextBlackTriangle,
    TextCircledDot,
    TextPlus,
    TextCross,
    DamagedModule,
    ProductDescription,
    Count,  // not a text
};

KORTAVIN_API const char* Text(TextId id);

}  // namespace kortavin::resources
