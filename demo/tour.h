#pragma once

#include <QtCore/QDir>

namespace kortavin::demo {

class Driver;
class MainWindow;
class SymbolPage;

// Goes through all pages without a person, in light and in dark colours, and leaves pictures in the folder.
// TourFailure when a step has not the effect that it should have.
void RunTour(MainWindow& window, const QDir& folder);

// A page's part: what is done there once, and the pictures of each set of colours.
void UseSymbolPage(Driver& driver, const SymbolPage& page);
void ShootSymbolPage(Driver& driver, const SymbolPage& page);

}  // namespace kortavin::demo
