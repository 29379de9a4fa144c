#pragma once

#include <QtCore/QDir>

namespace kortavin::desktop {

class DataPage;
class Driver;
class GridPage;
class MainWindow;
class SymbolPage;

// Without a screen and a session, Qt remarks on what it cannot do there; nobody need see that. To be called
// before there is an application.
void DropRemarksOfQt();

// Goes through all pages without a person, in light and in dark colours, and leaves pictures in the folder.
// TourFailure when a step has not the effect that it should have.
void RunTour(MainWindow& window, const QDir& folder);

// A page's part: what is done there once, and the pictures of each set of colours. The data page's makes a
// sample database, composes a query in the wizard, tells its statement on the standard output, and exports
// its rows, the files in the folder.
void UseDataPage(Driver& driver, const DataPage& page, const QDir& folder);
void ShootDataPage(Driver& driver, const DataPage& page);
// Imports a text, which it leaves in the folder, into a table of the sample database; keeps pictures as well.
void UseImport(Driver& driver, const DataPage& page, const QDir& folder);
void UseSymbolPage(Driver& driver, const SymbolPage& page);
void ShootSymbolPage(Driver& driver, const SymbolPage& page);
void UseGridPage(Driver& driver, const GridPage& page);
void ShootGridPage(Driver& driver, const GridPage& page);

}  // namespace kortavin::desktop
