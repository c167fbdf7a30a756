#pragma once

#include <QString>

class DenHelp;
class QWidget;

// How the program opens a patient's treatment window, from whichever screen the patient is
// chosen in. The window belongs to `owner` (the main window), which also hears it close.
namespace treatmentui {

// Opens the window in `openMode`: "New" after a new card, "Edit" for a patient found in a list.
// Opened as "Edit", closing it closes the name search too. nullptr when it could not open.
DenHelp *openTreatment(const QString &egn, const QString &name, const QString &openMode, QWidget *owner);

// A patient chosen from a list ("Стоматологична помощ", the claims check): opened as "Edit".
DenHelp *openChosenPatient(const QString &egn, const QString &name, QWidget *owner);

} // namespace treatmentui
