#pragma once

class QCoreApplication;

// Qt's own words (the print preview, the file dialogs and their questions, the standard
// buttons) in Bulgarian, from the translations the system's Qt ships. False when they are not
// installed: the program still runs, with those words in English.
bool installQtTranslations(QCoreApplication &app);
