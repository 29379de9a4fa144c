#pragma once

#include <QComboBox>

namespace kortavin::qt {

// While attached, screen readers that ask for the box's value hear the accessible name of its current item in
// place of its text, which may be no more than a blank.
void AttachComboAccess(QComboBox& combo);
void DetachComboAccess(QComboBox& combo);

// Another item is current, or its name changed: the box is described by that name.
void AnnounceComboItem(QComboBox& combo);

}  // namespace kortavin::qt
